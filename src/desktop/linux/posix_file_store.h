#pragma once

#include <QByteArray>
#include <QString>
#include <string>

#include "platform/file_store.h"

namespace kestrum {

class PosixFileStore : public FileStore {
 public:
  explicit PosixFileStore(const QString& folder);

  bool Exists(const std::string& path) const override;
  FileFault Read(const std::string& path, std::string& bytes) const override;
  FileFault Replace(const std::string& path, std::string_view bytes) override;
  FileFault Append(const std::string& path, std::string_view bytes) override;

 private:
  // The file's name for the system. The application folder may hold characters that the 8-bit text of a path
  // cannot, so that its beginning is put back.
  std::string NativePath(const std::string& path) const;

  std::string folder_text_;
  QByteArray native_folder_;
};

}  // namespace kestrum
