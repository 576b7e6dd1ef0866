#include "desktop/linux/posix_file_store.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <QFile>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <initializer_list>
#include <limits>
#include <memory>
#include <optional>
#include <system_error>
#include <utility>

#include "desktop/linux/posix_file.h"
#include "desktop/text_convert.h"

namespace kestrum {
namespace {

using posix::Descriptor;
using posix::FaultOf;
using posix::LastError;
using posix::OutcomeOf;

// The first step that fails tells.
std::error_code WriteSyncClose(Descriptor& file, std::string_view bytes) {
  if (const std::error_code error = posix::WriteAll(file.number(), bytes)) return error;
  if (const std::error_code error = posix::SyncFile(file.number())) return error;
  return file.Close();
}

Outcome WriteInPlace(const std::string& path, std::string_view bytes) {
  Result<posix::Opened> opened = posix::Open(path, O_WRONLY | O_CREAT | O_TRUNC);
  if (!opened) return opened.fault();
  posix::Opened target = std::move(opened).value();
  return OutcomeOf(path, WriteSyncClose(target.file, bytes));
}

// The file behind a chain of links, so that a rename replaces it and not the link.
std::string Resolved(const std::string& path) {
  const std::unique_ptr<char, decltype(&std::free)> real(::realpath(path.c_str(), nullptr), &std::free);
  return real ? std::string(real.get()) : path;
}

struct Beside {
  Descriptor file;
  std::string path;
  std::error_code error;
};

// A new file beside `path`. The system takes the user's mask off its rights, which only the creation of a
// file can do while other threads run.
Beside MakeBeside(const std::string& path, mode_t rights) {
  constexpr int kAttempts = 1000;  // names that an earlier process of this number has left
  Beside beside;
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    beside.path = path + "." + std::to_string(::getpid()) + "-" + std::to_string(attempt);
    const int number =
        ::open(beside.path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, rights);
    if (number >= 0) return {Descriptor(number), beside.path, {}};
    beside.error = LastError();
    if (beside.error != std::errc::file_exists) break;
  }
  return beside;
}

// Only the owner or root may hand a file over; otherwise it stays the user's own.
void TakeOverRights(int file, const struct stat& old) {
  [[maybe_unused]] const int handed_over = ::fchown(file, old.st_uid, old.st_gid);
  ::fchmod(file, old.st_mode & 07777U);
}

bool IsOneOf(std::error_code error, std::initializer_list<std::errc> conditions) {
  return std::any_of(conditions.begin(), conditions.end(),
                     [error](std::errc condition) { return error == condition; });
}

struct Attempt {
  std::error_code error;
  bool folder_forbids = false;  // no new file may be made beside the old one
};

Attempt WriteBesideAndRename(const std::string& path, std::string_view bytes, const struct stat* old) {
  constexpr mode_t kAsTheUserHasIt = 0666;
  constexpr mode_t kPrivate = 0600;  // until it has the rights of the old one
  Beside beside = MakeBeside(path, old == nullptr ? kAsTheUserHasIt : kPrivate);
  if (!beside.file.valid()) {
    return {beside.error,
            IsOneOf(beside.error, {std::errc::permission_denied, std::errc::operation_not_permitted,
                                   std::errc::read_only_file_system, std::errc::filename_too_long})};
  }
  if (old != nullptr) TakeOverRights(beside.file.number(), *old);
  Attempt result{WriteSyncClose(beside.file, bytes)};
  if (!result.error && ::rename(beside.path.c_str(), path.c_str()) != 0) {
    result.error = LastError();
    // A file that is itself a mount point cannot be renamed over, a sticky folder may refuse it.
    result.folder_forbids =
        IsOneOf(result.error, {std::errc::device_or_resource_busy, std::errc::cross_device_link,
                               std::errc::operation_not_permitted, std::errc::permission_denied});
  }
  if (result.error) {
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
  const posix::Found found = posix::LookAt(NativePath(path));
  return !found.nothing() && found.error != std::errc::not_a_directory;
}

std::optional<std::uint64_t> PosixFileStore::Size(const std::string& path) const {
  const posix::Found found = posix::LookAt(NativePath(path));
  if (!found.regular()) return std::nullopt;
  return static_cast<std::uint64_t>(found.about.st_size);
}

Result<std::string> PosixFileStore::Read(const std::string& path, std::uint64_t most_bytes) const {
  // One byte more tells a file that is too long, also one that grows or does not tell its size.
  const std::uint64_t most =
      most_bytes < std::numeric_limits<std::uint64_t>::max() ? most_bytes + 1 : most_bytes;
  Result<std::string> content = ReadFrom(path, 0, most);
  if (content && content.value().size() > most_bytes) {
    return FaultOf(path, std::make_error_code(std::errc::file_too_large));
  }
  return content;
}

Result<std::string> PosixFileStore::ReadFrom(const std::string& path, std::uint64_t offset,
                                             std::uint64_t most_bytes) const {
  const Result<posix::Opened> opened = posix::Open(NativePath(path), O_RDONLY);
  if (!opened) return Fault{path, opened.fault().reason};
  const int file = opened.value().file.number();
  std::string content;
  std::array<char, 65536> piece{};
  while (content.size() < most_bytes) {
    const std::uint64_t wanted = std::min<std::uint64_t>(piece.size(), most_bytes - content.size());
    const ssize_t got = ::pread(file, piece.data(), wanted, static_cast<off_t>(offset + content.size()));
    if (got < 0 && LastError() == std::errc::interrupted) continue;
    if (got < 0) return FaultOf(path, LastError());
    if (got == 0) break;
    content.append(piece.data(), static_cast<std::size_t>(got));
  }
  return content;
}

Outcome PosixFileStore::Replace(const std::string& path, std::string_view bytes) {
  const std::string target = Resolved(NativePath(path));
  const posix::Found found = posix::LookAt(target);
  if (Outcome kind = posix::CheckKind(path, found); !kind) return kind;
  struct stat name {};
  const bool taken = ::lstat(target.c_str(), &name) == 0;
  // A device, or a link to a file that is still to be made.
  if (taken && !S_ISREG(name.st_mode)) return WriteInPlace(target, bytes);
  const Attempt attempt = WriteBesideAndRename(target, bytes, taken ? &name : nullptr);
  if (!attempt.error || !attempt.folder_forbids) return OutcomeOf(path, attempt.error);
  return WriteInPlace(target, bytes);
}

Outcome PosixFileStore::CheckAppend(const std::string& path) const {
  constexpr std::uint64_t kLeastFree = 1U << 20U;  // a block has about 10 kB
  const std::string target = NativePath(path);
  const auto slash = target.rfind('/');
  const std::string folder = slash == std::string::npos ? "." : target.substr(0, slash + 1);
  const posix::Found found = posix::LookAt(target);
  if (Outcome kind = posix::CheckKind(path, found); !kind) return kind;
  // A new log needs a folder that takes it; one that is there must take more.
  const bool is_new = found.nothing();
  const int wanted = is_new ? W_OK | X_OK : W_OK;
  if (::faccessat(AT_FDCWD, is_new ? folder.c_str() : target.c_str(), wanted, AT_EACCESS) != 0) {
    return FaultOf(path, LastError());
  }
  struct statvfs disk {};
  if (::statvfs(folder.c_str(), &disk) != 0) return FaultOf(path, LastError());
  const bool read_only = (disk.f_flag & ST_RDONLY) != 0;
  if (read_only) return FaultOf(path, std::make_error_code(std::errc::read_only_file_system));
  const bool full = std::uint64_t{disk.f_bavail} * disk.f_frsize < kLeastFree;
  if (full) return FaultOf(path, std::make_error_code(std::errc::no_space_on_device));
  return Done{};
}

Outcome PosixFileStore::Append(const std::string& path, std::string_view bytes) {
  const std::string target = NativePath(path);
  const bool is_new = posix::LookAt(target).nothing();
  Result<posix::Opened> result = posix::Open(target, O_WRONLY | O_APPEND | O_CREAT);
  if (!result) return Fault{path, result.fault().reason};
  posix::Opened opened = std::move(result).value();
  std::error_code error = posix::WriteAll(opened.file.number(), bytes);
  if (!error) error = posix::SyncFile(opened.file.number());
  if (error) {
    // Half a block must not stay: the next one would begin in the middle of a line.
    if (S_ISREG(opened.about.st_mode)) {
      [[maybe_unused]] const int cut = ::ftruncate(opened.file.number(), opened.about.st_size);
    }
    return FaultOf(path, error);
  }
  if (const std::error_code late = opened.file.Close()) return FaultOf(path, late);
  if (is_new) posix::SyncFolderOf(target);
  return Done{};
}

Outcome PosixFileStore::Remove(const std::string& path) {
  const std::string target = NativePath(path);
  if (::unlink(target.c_str()) != 0) {
    const std::error_code error = LastError();
    if (error == std::errc::no_such_file_or_directory) return Done{};
    return FaultOf(path, error);
  }
  posix::SyncFolderOf(target);
  return Done{};
}

Outcome PosixFileStore::Rename(const std::string& from, const std::string& to) {
  const std::string target = NativePath(to);
  if (::rename(NativePath(from).c_str(), target.c_str()) != 0) return FaultOf(from, LastError());
  posix::SyncFolderOf(target);
  return Done{};
}

}  // namespace kestrum
