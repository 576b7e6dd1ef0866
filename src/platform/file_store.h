#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kestrum {

// Description of a failed file operation in the system's words; nothing when it worked.
using FileFault = std::optional<std::string>;

// Whole files. Paths are full paths in the 8-bit code page.
class FileStore {
 public:
  virtual ~FileStore() = default;

  virtual bool Exists(const std::string& path) const = 0;
  // Puts the whole content into `bytes`, which stays untouched on a fault.
  virtual FileFault Read(const std::string& path, std::string& bytes) const = 0;
  // Replaces the file: after a power cut the old or the new content stands there, never half of one. Where
  // the folder does not allow that, it is written in place.
  virtual FileFault Replace(const std::string& path, std::string_view bytes) = 0;
  // Appends with one write and returns once the bytes are on the disk. Creates the file if needed.
  virtual FileFault Append(const std::string& path, std::string_view bytes) = 0;
};

}  // namespace kestrum
