#pragma once

#include <string>

#include "platform/file_store.h"

namespace kestrum {

// Files by the system's own calls. What is no regular file (a folder, a device as "NUL" or "COM1", a pipe) is
// refused.
class Win32FileStore : public FileStore {
 public:
  // `folder` is the application folder with backslashes and without one at its end, `text` how it stands at
  // the beginning of a path.
  Win32FileStore(std::string text, std::wstring folder);

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
  // cannot, so that its beginning is put back; a long path gets the prefix that lets it be long.
  std::wstring NativePath(const std::string& path) const;

  std::string folder_text_;
  std::wstring folder_;
};

}  // namespace kestrum
