// A library for LD_PRELOAD that makes the disk below one folder slow, full or broken, or writes down what a
// program asks it to do, so that a power cut at any moment can be replayed. Told by the environment:
//   KESTRUM_DISK_FOLDER   the folder; other files are left alone
//   KESTRUM_DISK_SYNC_MS  every fsync takes this long
//   KESTRUM_DISK_FULL     after so many bytes written there is no space left
//   KESTRUM_DISK_EIO      after so many bytes written every write is an input/output error
//   KESTRUM_DISK_TRACE    the file that takes the account, see disk_trace.h
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <climits>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <string>
#include <string_view>

#include "support_process/waits.h"

namespace {

template <class Function>
Function* Real(const char* name) {
  return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

std::string Told(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? std::string() : std::string(value);
}

const std::string& Folder() {
  static const std::string folder = Told("KESTRUM_DISK_FOLDER");
  return folder;
}

// The name inside the folder; empty for a file elsewhere.
std::string Inside(std::string_view path) {
  const std::string& folder = Folder();
  if (folder.empty() || !path.starts_with(folder)) return {};
  path.remove_prefix(folder.size());
  if (path.empty() || path == "/") return ".";
  return path.front() == '/' ? std::string(path.substr(1)) : std::string();
}

std::string Inside(int file) {
  std::array<char, PATH_MAX> name{};
  const std::string link = "/proc/self/fd/" + std::to_string(file);
  const ssize_t length = ::readlink(link.c_str(), name.data(), name.size());
  return length > 0 ? Inside(std::string_view(name.data(), static_cast<std::size_t>(length))) : std::string();
}

// One operation at a time, so that the account has the order of the disk.
std::recursive_mutex& Disk() {
  static std::recursive_mutex disk;
  return disk;
}

void Account(const std::string& line, std::string_view bytes = {}) {
  static const std::string path = Told("KESTRUM_DISK_TRACE");
  if (path.empty()) return;
  static const int trace = Real<int(const char*, int, mode_t)>("open")(
      path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
  const std::string entry = line + "\n" + std::string(bytes);
  [[maybe_unused]] const ssize_t written =
      Real<ssize_t(int, const void*, size_t)>("write")(trace, entry.data(), entry.size());
}

std::string Number(const struct stat& about) {
  return std::to_string(about.st_ino);
}

// Zero while there is place, else the error.
int FaultAfter(size_t bytes) {
  static size_t so_far = 0;
  struct Limit {
    const char* name;
    int error;
  };
  for (const Limit& limit : {Limit{"KESTRUM_DISK_FULL", ENOSPC}, Limit{"KESTRUM_DISK_EIO", EIO}}) {
    const std::string most = Told(limit.name);
    if (!most.empty() && so_far + bytes > std::strtoull(most.c_str(), nullptr, 10)) return limit.error;
  }
  so_far += bytes;
  return 0;
}

void AccountWrite(int file, off_t offset, const void* bytes, ssize_t written) {
  struct stat about {};
  if (written <= 0 || ::fstat(file, &about) != 0) return;
  Account("W " + Number(about) + " " + std::to_string(offset) + " " + std::to_string(written),
          std::string_view(static_cast<const char*>(bytes), static_cast<size_t>(written)));
}

int OpenAs(const char* name, const char* path, int flags, mode_t rights) {
  const auto open = Real<int(const char*, int, mode_t)>(name);
  const std::string inside = Inside(path);
  if (inside.empty()) return open(path, flags, rights);
  const std::lock_guard lock(Disk());
  struct stat about {};
  const bool was_there = ::stat(path, &about) == 0;
  const int file = open(path, flags, rights);
  const int error = errno;
  if (file >= 0 && ::fstat(file, &about) == 0 && S_ISREG(about.st_mode)) {
    if (!was_there) Account("C " + Number(about) + " " + inside);
    if (was_there && (flags & O_TRUNC) != 0) Account("T " + Number(about) + " 0");
  }
  errno = error;
  return file;
}

int SyncAs(const char* name, int file) {
  const std::string inside = Inside(file);
  const auto sync = Real<int(int)>(name);
  if (inside.empty()) return sync(file);
  static const std::string slow = Told("KESTRUM_DISK_SYNC_MS");
  if (!slow.empty()) kestrum::process::DeviceIsQuietFor(std::chrono::milliseconds(std::atol(slow.c_str())));
  const std::lock_guard lock(Disk());
  const int result = sync(file);
  struct stat about {};
  if (result == 0 && ::fstat(file, &about) == 0) {
    Account(S_ISDIR(about.st_mode) ? std::string("D .") : "S " + Number(about));
  }
  return result;
}

}  // namespace

extern "C" {

int open(const char* path, int flags, ...) {
  va_list arguments;
  va_start(arguments, flags);
  const mode_t rights = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
  va_end(arguments);
  return OpenAs("open", path, flags, rights);
}

int open64(const char* path, int flags, ...) {
  va_list arguments;
  va_start(arguments, flags);
  const mode_t rights = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
  va_end(arguments);
  return OpenAs("open64", path, flags, rights);
}

ssize_t write(int file, const void* bytes, size_t count) {
  const auto write = Real<ssize_t(int, const void*, size_t)>("write");
  if (Inside(file).empty()) return write(file, bytes, count);
  const std::lock_guard lock(Disk());
  if (const int fault = FaultAfter(count)) {
    errno = fault;
    return -1;
  }
  struct stat about {};
  ::fstat(file, &about);
  const bool appends = (::fcntl(file, F_GETFL) & O_APPEND) != 0;
  const off_t offset = appends ? about.st_size : ::lseek(file, 0, SEEK_CUR);
  const ssize_t written = write(file, bytes, count);
  AccountWrite(file, offset, bytes, written);
  return written;
}

ssize_t pwrite(int file, const void* bytes, size_t count, off_t offset) {
  const auto pwrite = Real<ssize_t(int, const void*, size_t, off_t)>("pwrite");
  if (Inside(file).empty()) return pwrite(file, bytes, count, offset);
  const std::lock_guard lock(Disk());
  const ssize_t written = pwrite(file, bytes, count, offset);
  AccountWrite(file, offset, bytes, written);
  return written;
}

int ftruncate(int file, off_t size) {
  const auto truncate = Real<int(int, off_t)>("ftruncate");
  if (Inside(file).empty()) return truncate(file, size);
  const std::lock_guard lock(Disk());
  const int result = truncate(file, size);
  struct stat about {};
  if (result == 0 && ::fstat(file, &about) == 0) Account("T " + Number(about) + " " + std::to_string(size));
  return result;
}

int fsync(int file) {
  return SyncAs("fsync", file);
}

int fdatasync(int file) {
  return SyncAs("fdatasync", file);
}

int rename(const char* from, const char* to) {
  const auto rename = Real<int(const char*, const char*)>("rename");
  const std::string inside_from = Inside(from);
  const std::string inside_to = Inside(to);
  if (inside_from.empty() || inside_to.empty()) return rename(from, to);
  const std::lock_guard lock(Disk());
  const int result = rename(from, to);
  if (result == 0) Account("R " + inside_from + "|" + inside_to);
  return result;
}

int unlink(const char* path) {
  const auto unlink = Real<int(const char*)>("unlink");
  const std::string inside = Inside(path);
  if (inside.empty()) return unlink(path);
  const std::lock_guard lock(Disk());
  const int result = unlink(path);
  if (result == 0) Account("U " + inside);
  return result;
}

}  // extern "C"
