#include "desktop/linux/posix_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <QString>
#include <array>
#include <cerrno>
#include <cstring>
#include <utility>

#include "desktop/text_convert.h"

namespace kestrum::posix {
namespace {

constexpr mode_t kNewFile = 0666;  // less the user's mask
constexpr const char* kNoFile = "Not a regular file";

}  // namespace

std::error_code LastError() {
  return {errno, std::generic_category()};
}

std::string Reason(std::error_code error) {
  std::array<char, 256> room{};
  return FromQt(QString::fromLocal8Bit(::strerror_r(error.value(), room.data(), room.size())));
}

Fault FaultOf(const std::string& path, std::error_code error) {
  return {path, Reason(error)};
}

Outcome OutcomeOf(const std::string& path, std::error_code error) {
  if (error) return FaultOf(path, error);
  return Done{};
}

Descriptor::~Descriptor() {
  if (number_ >= 0) ::close(number_);
}

std::error_code Descriptor::Close() {
  const int number = std::exchange(number_, -1);
  if (::close(number) == 0 || LastError() == std::errc::interrupted) return {};
  return LastError();
}

Found LookAt(const std::string& path) {
  Found found;
  if (::stat(path.c_str(), &found.about) != 0) found.error = LastError();
  return found;
}

Outcome CheckKind(const std::string& path, const Found& found) {
  if (found.nothing()) return Done{};
  if (found.error) return FaultOf(path, found.error);
  if (S_ISDIR(found.about.st_mode)) return FaultOf(path, std::make_error_code(std::errc::is_a_directory));
  if (S_ISREG(found.about.st_mode) || S_ISCHR(found.about.st_mode)) return Done{};
  return Fault{path, kNoFile};
}

// Asked by name first, since opening alone may already do something to a device. What has come in its place
// since then is seen by the second look.
Result<Opened> Open(const std::string& path, int flags) {
  const bool reads = (flags & O_ACCMODE) == O_RDONLY;
  const auto check = [&path, reads](const Found& found) -> Outcome {
    if (Outcome kind = CheckKind(path, found); !kind) return kind;
    if (reads && found.nothing()) return FaultOf(path, found.error);
    if (reads && !found.regular()) return Fault{path, kNoFile};
    return Done{};
  };
  if (const Outcome by_name = check(LookAt(path)); !by_name) return by_name.fault();
  Opened result{Descriptor(::open(path.c_str(), flags | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, kNewFile)), {}};
  if (!result.file.valid()) return FaultOf(path, LastError());
  Found opened;
  if (::fstat(result.file.number(), &opened.about) != 0) opened.error = LastError();
  if (const Outcome as_opened = check(opened); !as_opened) return as_opened.fault();
  result.about = opened.about;
  return result;
}

std::error_code WriteAll(int file, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(file, bytes.data(), bytes.size());
    if (written < 0 && LastError() == std::errc::interrupted) continue;
    if (written < 0) return LastError();
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return {};
}

// A device has nothing to sync.
std::error_code SyncFile(int file) {
  if (::fsync(file) == 0) return {};
  const std::error_code error = LastError();
  const bool no_disk = error == std::errc::invalid_argument || error == std::errc::read_only_file_system;
  return no_disk ? std::error_code() : error;
}

void SyncFolderOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  const std::string folder = slash == std::string::npos ? "." : path.substr(0, slash + 1);
  const Descriptor directory(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (directory.valid()) ::fsync(directory.number());
}

}  // namespace kestrum::posix
