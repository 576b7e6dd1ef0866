#pragma once

#include <QByteArray>
#include <QString>
#include <string>

#include "platform/file_store.h"

namespace kestrum {

// Files are opened without waiting for anybody: a pipe, a socket or a disk in a file's place is refused. A
// character device takes what is appended, as far as it does so at once.
class PosixFileStore : public FileStore {
 public:
  explicit PosixFileStore(const QString& folder);

  bool Exists(const std::string& path) const override;
  std::optional<std::uint64_t> Size(const std::string& path) const override;
  Result<std::string> Read(const std::string& path, std::uint64_t most_bytes) const override;
  Result<std::string> ReadFrom(const std::string& path, std::uint64_t offset,
                               std::uint64_t most_bytes) const override;
  Outcome Replace(const std::string& path, std::string_view bytes) override;
  Outcome Append(const std::string& path, std::string_view bytes) override;
  Outcome CheckAppend(const std::string& path) const override;
  Outcome Remove(const std::string& path) override;
  Outcome Rename(const std::string& from, const std::string& to) override;

 private:
  // The file's name for the system. The application folder may hold characters that the 8-bit text of a path
  // cannot, so that its beginning is put back.
  std::string NativePath(const std::string& path) const;

  std::string folder_text_;
  QByteArray native_folder_;
};

}  // namespace kestrum
