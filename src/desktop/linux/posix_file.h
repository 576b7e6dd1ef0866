#pragma once

#include <sys/stat.h>

#include <string>
#include <string_view>
#include <system_error>

#include "common/fault.h"

namespace kestrum::posix {

// Why the system call just made has failed.
std::error_code LastError();
// The system's description of an error, in the program's 8-bit text whatever the locale is. Usable from any
// thread.
std::string Reason(std::error_code error);
Fault FaultOf(const std::string& path, std::error_code error);
// Done without an error.
Outcome OutcomeOf(const std::string& path, std::error_code error);

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
  // A deferred write may only now tell its error.
  std::error_code Close();

 private:
  int number_;
};

// What stands at a path, links followed.
struct Found {
  std::error_code error;  // why it is not known
  struct stat about {};
  bool regular() const { return !error && S_ISREG(about.st_mode); }
  bool nothing() const { return error == std::errc::no_such_file_or_directory; }
};
Found LookAt(const std::string& path);

// Whether something can be written to what was found, judged by its kind alone: not to a folder, a pipe, a
// socket or a disk, but to a file, a character device or a name not yet taken.
Outcome CheckKind(const std::string& path, const Found& found);

struct Opened {
  Descriptor file;
  struct stat about {};
};
// Never waits for the other end of what stands there. `flags` as for open(2).
Result<Opened> Open(const std::string& path, int flags);

// What takes no bytes now is an error, not a reason to wait.
std::error_code WriteAll(int file, std::string_view bytes);
std::error_code SyncFile(int file);
// A name in a folder is on the disk only when the folder is.
void SyncFolderOf(const std::string& path);

}  // namespace kestrum::posix
