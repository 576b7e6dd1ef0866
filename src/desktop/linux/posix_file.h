#pragma once

#include <sys/stat.h>

#include <optional>
#include <string>
#include <string_view>

#include "platform/file_store.h"

namespace kestrum::posix {

// The system's description of an error number, in the program's 8-bit text whatever the locale is. Usable
// from any thread.
std::string Reason(int error);

// An open file; closed at the end.
class Descriptor {
 public:
  explicit Descriptor(int number = -1) : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(other.number_) { other.number_ = -1; }
  ~Descriptor();
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  Descriptor& operator=(Descriptor&&) = delete;

  int number() const { return number_; }
  bool valid() const { return number_ >= 0; }
  // Zero, or the error that a deferred write may only tell now.
  int Close();

 private:
  int number_;
};

// What stands at a path, links followed.
struct Found {
  int error = 0;  // zero, or why it is not known; ENOENT when nothing stands there
  struct stat about {};
  bool regular() const { return error == 0 && S_ISREG(about.st_mode); }
};
Found LookAt(const std::string& path);

// Why nothing can be written to what was found, judged by its kind alone: a folder, a pipe, a socket or a
// disk. Nothing when it is a file, a character device or not there yet.
FileFault KindFault(const Found& found);

// An opened file, or why it is none.
struct Opened {
  Descriptor file;
  FileFault fault;
  struct stat about {};
};
// Never waits for the other end of what stands there. `flags` as for open(2).
Opened Open(const std::string& path, int flags);

// Zero, or the error. What takes no bytes now is an error, not a reason to wait.
int WriteAll(int file, std::string_view bytes);
int SyncFile(int file);
// A name in a folder is on the disk only when the folder is.
void SyncFolderOf(const std::string& path);

}  // namespace kestrum::posix
