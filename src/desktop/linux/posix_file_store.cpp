#include "desktop/linux/posix_file_store.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <QFile>
#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <limits>
#include <memory>
#include <optional>
#include <utility>

#include "desktop/linux/posix_file.h"
#include "desktop/text_convert.h"

namespace kestrum {
namespace {

using posix::Descriptor;
using posix::Reason;

FileFault FaultOf(int error) {
  return error == 0 ? FileFault() : FileFault(Reason(error));
}

// Zero, or the error of the first step that fails.
int WriteSyncClose(Descriptor& file, std::string_view bytes) {
  if (const int error = posix::WriteAll(file.number(), bytes)) return error;
  if (const int error = posix::SyncFile(file.number())) return error;
  return file.Close();
}

FileFault WriteInPlace(const std::string& path, std::string_view bytes) {
  posix::Opened opened = posix::Open(path, O_WRONLY | O_CREAT | O_TRUNC);
  if (opened.fault) return opened.fault;
  return FaultOf(WriteSyncClose(opened.file, bytes));
}

// The file behind a chain of links, so that a rename replaces it and not the link.
std::string Resolved(const std::string& path) {
  const std::unique_ptr<char, decltype(&std::free)> real(::realpath(path.c_str(), nullptr), &std::free);
  return real ? std::string(real.get()) : path;
}

struct Beside {
  Descriptor file;
  std::string path;
  int error = 0;
};

// A new file beside `path`. The system takes the user's mask off its rights, which only the creation of a
// file can do while other threads run.
Beside MakeBeside(const std::string& path, mode_t rights) {
  constexpr int kAttempts = 1000;  // names that an earlier process of this number has left
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    const std::string name = path + "." + std::to_string(::getpid()) + "-" + std::to_string(attempt);
    const int number = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, rights);
    const int error = errno;
    if (number >= 0) return {Descriptor(number), name, 0};
    if (error != EEXIST) return {Descriptor(), name, error};
  }
  return {Descriptor(), path, EEXIST};
}

// Only the owner or root may hand a file over; otherwise it stays the user's own.
void TakeOverRights(int file, const struct stat& old) {
  [[maybe_unused]] const int handed_over = ::fchown(file, old.st_uid, old.st_gid);
  ::fchmod(file, old.st_mode & 07777U);
}

struct Attempt {
  FileFault fault;
  bool folder_forbids = false;  // no new file may be made beside the old one
};

Attempt WriteBesideAndRename(const std::string& path, std::string_view bytes, const struct stat* old) {
  constexpr mode_t kAsTheUserHasIt = 0666;
  constexpr mode_t kPrivate = 0600;  // until it has the rights of the old one
  Beside beside = MakeBeside(path, old == nullptr ? kAsTheUserHasIt : kPrivate);
  if (!beside.file.valid()) {
    constexpr std::array kForbidden = {EACCES, EPERM, EROFS, ENAMETOOLONG};
    return {Reason(beside.error),
            std::find(kForbidden.begin(), kForbidden.end(), beside.error) != kForbidden.end()};
  }
  if (old != nullptr) TakeOverRights(beside.file.number(), *old);
  Attempt result{FaultOf(WriteSyncClose(beside.file, bytes))};
  if (!result.fault && ::rename(beside.path.c_str(), path.c_str()) != 0) {
    const int error = errno;
    // A file that is itself a mount point cannot be renamed over, a sticky folder may refuse it.
    constexpr std::array kForbidden = {EBUSY, EXDEV, EPERM, EACCES};
    result.folder_forbids = std::find(kForbidden.begin(), kForbidden.end(), error) != kForbidden.end();
    result.fault = Reason(error);
  }
  if (result.fault) {
    ::unlink(beside.path.c_str());
  } else {
    posix::SyncFolderOf(path);
  }
  return result;
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
  const int error = posix::LookAt(NativePath(path)).error;
  return error != ENOENT && error != ENOTDIR;
}

std::optional<std::uint64_t> PosixFileStore::Size(const std::string& path) const {
  const posix::Found found = posix::LookAt(NativePath(path));
  if (!found.regular()) return std::nullopt;
  return static_cast<std::uint64_t>(found.about.st_size);
}

FileFault PosixFileStore::Read(const std::string& path, std::string& bytes, std::uint64_t most_bytes) const {
  std::string content;
  // One byte more tells a file that is too long, also one that grows or does not tell its size.
  const std::uint64_t most =
      most_bytes < std::numeric_limits<std::uint64_t>::max() ? most_bytes + 1 : most_bytes;
  if (FileFault fault = ReadFrom(path, 0, content, most)) return fault;
  if (content.size() > most_bytes) return Reason(EFBIG);
  bytes = std::move(content);
  return std::nullopt;
}

FileFault PosixFileStore::ReadFrom(const std::string& path, std::uint64_t offset, std::string& bytes,
                                   std::uint64_t most_bytes) const {
  const posix::Opened opened = posix::Open(NativePath(path), O_RDONLY);
  if (opened.fault) return opened.fault;
  std::string content;
  std::array<char, 65536> piece{};
  while (content.size() < most_bytes) {
    const std::uint64_t wanted = std::min<std::uint64_t>(piece.size(), most_bytes - content.size());
    const ssize_t got =
        ::pread(opened.file.number(), piece.data(), wanted, static_cast<off_t>(offset + content.size()));
    const int error = errno;
    if (got < 0 && error == EINTR) continue;
    if (got < 0) return Reason(error);
    if (got == 0) break;
    content.append(piece.data(), static_cast<std::size_t>(got));
  }
  bytes = std::move(content);
  return std::nullopt;
}

FileFault PosixFileStore::Replace(const std::string& path, std::string_view bytes) {
  const std::string target = Resolved(NativePath(path));
  const posix::Found found = posix::LookAt(target);
  if (FileFault fault = posix::KindFault(found)) return fault;
  struct stat name {};
  const bool taken = ::lstat(target.c_str(), &name) == 0;
  // A device, or a link to a file that is still to be made.
  if (taken && !S_ISREG(name.st_mode)) return WriteInPlace(target, bytes);
  const Attempt attempt = WriteBesideAndRename(target, bytes, taken ? &name : nullptr);
  if (!attempt.fault || !attempt.folder_forbids) return attempt.fault;
  return WriteInPlace(target, bytes);
}

FileFault PosixFileStore::WhyNotAppend(const std::string& path) const {
  constexpr std::uint64_t kLeastFree = 1U << 20U;  // a block has about 10 kB
  const std::string target = NativePath(path);
  const auto slash = target.rfind('/');
  const std::string folder = slash == std::string::npos ? "." : target.substr(0, slash + 1);
  const posix::Found found = posix::LookAt(target);
  if (found.error != ENOENT) {
    if (FileFault fault = posix::KindFault(found)) return fault;
  }
  // A new log needs a folder that takes it; one that is there must take more.
  const bool is_new = found.error == ENOENT;
  const int wanted = is_new ? W_OK | X_OK : W_OK;
  if (::faccessat(AT_FDCWD, is_new ? folder.c_str() : target.c_str(), wanted, AT_EACCESS) != 0)
    return Reason(errno);
  struct statvfs disk {};
  if (::statvfs(folder.c_str(), &disk) != 0) return Reason(errno);
  if ((disk.f_flag & ST_RDONLY) != 0) return Reason(EROFS);
  if (std::uint64_t{disk.f_bavail} * disk.f_frsize < kLeastFree) return Reason(ENOSPC);
  return std::nullopt;
}

FileFault PosixFileStore::Append(const std::string& path, std::string_view bytes) {
  const std::string target = NativePath(path);
  const bool is_new = posix::LookAt(target).error == ENOENT;
  posix::Opened opened = posix::Open(target, O_WRONLY | O_APPEND | O_CREAT);
  if (opened.fault) return opened.fault;
  int error = posix::WriteAll(opened.file.number(), bytes);
  if (error == 0) error = posix::SyncFile(opened.file.number());
  if (error != 0) {
    // Half a block must not stay: the next one would begin in the middle of a line.
    if (S_ISREG(opened.about.st_mode)) {
      [[maybe_unused]] const int cut = ::ftruncate(opened.file.number(), opened.about.st_size);
    }
    return Reason(error);
  }
  if (const int close_error = opened.file.Close()) return Reason(close_error);
  if (is_new) posix::SyncFolderOf(target);
  return std::nullopt;
}

FileFault PosixFileStore::Remove(const std::string& path) {
  const std::string target = NativePath(path);
  if (::unlink(target.c_str()) != 0) {
    const int error = errno;
    return error == ENOENT ? FileFault() : FileFault(Reason(error));
  }
  posix::SyncFolderOf(target);
  return std::nullopt;
}

FileFault PosixFileStore::Rename(const std::string& from, const std::string& to) {
  const std::string target = NativePath(to);
  if (::rename(NativePath(from).c_str(), target.c_str()) != 0) return Reason(errno);
  posix::SyncFolderOf(target);
  return std::nullopt;
}

}  // namespace kestrum
