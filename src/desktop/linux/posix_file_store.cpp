#include "desktop/linux/posix_file_store.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QFile>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>

#include "desktop/text_convert.h"

namespace kestrum {
namespace {

constexpr mode_t kNewFile = 0666;  // less the user's mask

FileFault LastFault() {
  return std::string(std::strerror(errno));
}

class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() {
    if (number_ >= 0) ::close(number_);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int number() const { return number_; }
  bool valid() const { return number_ >= 0; }
  // Reports what a deferred write may only tell now.
  bool Close() {
    const int number = number_;
    number_ = -1;
    return ::close(number) == 0 || errno == EINTR;
  }

 private:
  int number_;
};

bool WriteAll(int file, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(file, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

// Devices and pipes have nothing to sync.
bool SyncFile(int file) {
  return ::fsync(file) == 0 || errno == EINVAL || errno == EROFS;
}

void SyncFolderOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  const std::string folder = slash == std::string::npos ? "." : path.substr(0, slash + 1);
  const Descriptor directory(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (directory.valid()) ::fsync(directory.number());
}

FileFault WriteInPlace(const std::string& path, std::string_view bytes) {
  Descriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, kNewFile));
  if (!file.valid()) return LastFault();
  if (!WriteAll(file.number(), bytes) || !SyncFile(file.number()) || !file.Close()) return LastFault();
  return std::nullopt;
}

// The file behind a chain of links, so that a rename replaces it and not the link.
std::string Resolved(const std::string& path) {
  const std::unique_ptr<char, decltype(&std::free)> real(::realpath(path.c_str(), nullptr), &std::free);
  return real ? std::string(real.get()) : path;
}

// Gives a new file the rights of the one that it will replace.
void TakeOverRights(int file, const struct stat* old) {
  if (old == nullptr) {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    ::fchmod(file, kNewFile & ~mask);
    return;
  }
  // Only the owner or root may hand a file over; otherwise it stays the user's own.
  if (::fchown(file, old->st_uid, old->st_gid) != 0) errno = 0;
  ::fchmod(file, old->st_mode & 07777U);
}

struct Attempt {
  FileFault fault;
  bool folder_forbids = false;  // no new file may be made beside the old one
};

Attempt WriteBesideAndRename(const std::string& path, std::string_view bytes, const struct stat* old) {
  std::string beside = path + ".XXXXXX";
  Descriptor file(::mkostemp(beside.data(), O_CLOEXEC));
  if (!file.valid()) {
    const bool forbidden = errno == EACCES || errno == EPERM || errno == EROFS || errno == ENAMETOOLONG;
    return {LastFault(), forbidden};
  }
  TakeOverRights(file.number(), old);
  Attempt result;
  if (!WriteAll(file.number(), bytes) || !SyncFile(file.number()) || !file.Close()) {
    result.fault = LastFault();
  } else if (::rename(beside.c_str(), path.c_str()) != 0) {
    // A file that is itself a mount point cannot be renamed over, a sticky folder may refuse it.
    result.folder_forbids = errno == EBUSY || errno == EXDEV || errno == EPERM || errno == EACCES;
    result.fault = LastFault();
  }
  if (result.fault) {
    ::unlink(beside.c_str());
  } else {
    SyncFolderOf(path);
  }
  return result;
}

// Zero, or the number of the error; the file then has its old size again: half a block must not stand there,
// the next one would begin in the middle of a line. Calls nothing that a forked child may not.
int AppendOrUndo(int file, std::string_view bytes, std::optional<off_t> old_size) {
  if (WriteAll(file, bytes) && SyncFile(file)) return 0;
  const int fault = errno;
  if (old_size && ::ftruncate(file, *old_size) != 0) errno = 0;
  return fault;
}

// The kernel cuts a write short when the process is killed. So a child does it: killing the program leaves
// the child alone, and the block is whole or not there.
int AppendUnkillably(int file, std::string_view bytes, off_t old_size) {
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) return AppendOrUndo(file, bytes, old_size);
  const Descriptor answer(ends[0]);
  Descriptor teller(ends[1]);
  const pid_t child = ::fork();
  if (child < 0) return AppendOrUndo(file, bytes, old_size);
  if (child == 0) {
    const int fault = AppendOrUndo(file, bytes, old_size);
    // When nobody listens any more there is nothing to be done about it.
    [[maybe_unused]] const ssize_t told = ::write(teller.number(), &fault, sizeof(fault));
    ::_exit(0);
  }
  teller.Close();
  int fault = EIO;
  ssize_t got = 0;
  do {
    got = ::read(answer.number(), &fault, sizeof(fault));
  } while (got < 0 && errno == EINTR);
  while (::waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
  }
  return got == static_cast<ssize_t>(sizeof(fault)) ? fault : EIO;
}

}  // namespace

PosixFileStore::PosixFileStore(const QString& folder)
    : folder_text_(FromQt(folder)), native_folder_(QFile::encodeName(folder)) {}

std::string PosixFileStore::NativePath(const std::string& path) const {
  const bool in_folder =
      path.size() > folder_text_.size() && path.starts_with(folder_text_) && path[folder_text_.size()] == '/';
  if (!in_folder) return QFile::encodeName(ToQt(path)).toStdString();
  return (native_folder_ + QFile::encodeName(ToQt(path.substr(folder_text_.size())))).toStdString();
}

bool PosixFileStore::Exists(const std::string& path) const {
  return ::access(NativePath(path).c_str(), F_OK) == 0;
}

FileFault PosixFileStore::Read(const std::string& path, std::string& bytes) const {
  const Descriptor file(::open(NativePath(path).c_str(), O_RDONLY | O_CLOEXEC));
  if (!file.valid()) return LastFault();
  std::string content;
  std::array<char, 65536> piece{};
  for (;;) {
    const ssize_t got = ::read(file.number(), piece.data(), piece.size());
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return LastFault();
    if (got == 0) break;
    content.append(piece.data(), static_cast<std::size_t>(got));
  }
  bytes = std::move(content);
  return std::nullopt;
}

FileFault PosixFileStore::Replace(const std::string& path, std::string_view bytes) {
  const std::string target = Resolved(NativePath(path));
  struct stat old {};
  const bool exists = ::lstat(target.c_str(), &old) == 0;
  if (exists && !S_ISREG(old.st_mode)) return WriteInPlace(target, bytes);
  const Attempt attempt = WriteBesideAndRename(target, bytes, exists ? &old : nullptr);
  if (!attempt.fault || !attempt.folder_forbids) return attempt.fault;
  return WriteInPlace(target, bytes);
}

FileFault PosixFileStore::Append(const std::string& path, std::string_view bytes) {
  const std::string target = NativePath(path);
  const bool is_new = !Exists(path);
  Descriptor file(::open(target.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, kNewFile));
  if (!file.valid()) return LastFault();
  struct stat before {};
  if (::fstat(file.number(), &before) != 0) return LastFault();
  errno = S_ISREG(before.st_mode) ? AppendUnkillably(file.number(), bytes, before.st_size)
                                  : AppendOrUndo(file.number(), bytes, std::nullopt);
  if (errno != 0 || !file.Close()) return LastFault();
  if (is_new) SyncFolderOf(target);
  return std::nullopt;
}

}  // namespace kestrum
