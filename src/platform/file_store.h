#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

#include "common/fault.h"

namespace kestrum {

// Whole files. A fault names the path and the system's reason. Paths are full paths in the 8-bit code page.
// The functions may be called from the worker's thread too; none waits for a reader or a writer at the other
// end of a pipe or device.
class FileStore {
 public:
  virtual ~FileStore() = default;

  // Whether something stands there, readable or not. A link that leads nowhere is nothing.
  virtual bool Exists(const std::string& path) const = 0;
  // Size in bytes of a regular file; nothing when there is none.
  virtual std::optional<std::uint64_t> Size(const std::string& path) const = 0;
  // The whole content. What is no regular file, or is longer than `most_bytes`, is a fault.
  virtual Result<std::string> Read(
      const std::string& path,
      std::uint64_t most_bytes = std::numeric_limits<std::uint64_t>::max()) const = 0;
  // At most `most_bytes` of what stands behind the first `offset` bytes: empty at or beyond the end.
  virtual Result<std::string> ReadFrom(const std::string& path, std::uint64_t offset,
                                       std::uint64_t most_bytes) const = 0;
  // Replaces the file: after a power cut the old or the new content stands there, never half of one. Where
  // the folder does not allow that, it is written in place.
  virtual Outcome Replace(const std::string& path, std::string_view bytes) = 0;
  // Appends with one write and returns once the bytes are on the disk. Creates the file if needed. After a
  // fault the file has its old length again.
  virtual Outcome Append(const std::string& path, std::string_view bytes) = 0;
  // Whether an append to this file would work now; else why it would fail: no such folder, no right to write,
  // a disk that is as good as full. Writes nothing.
  virtual Outcome CheckAppend(const std::string& path) const = 0;
  // Returns once the removal is on the disk. A file that is not there is no fault.
  virtual Outcome Remove(const std::string& path) = 0;
  // Replaces what stands at `to`.
  virtual Outcome Rename(const std::string& from, const std::string& to) = 0;
};

}  // namespace kestrum
