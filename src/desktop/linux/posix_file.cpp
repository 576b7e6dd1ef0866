#include "desktop/linux/posix_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <QString>
#include <array>
#include <cerrno>
#include <cstring>

#include "desktop/text_convert.h"

namespace kestrum::posix {
namespace {

constexpr mode_t kNewFile = 0666;  // less the user's mask
constexpr const char* kNoFile = "Not a regular file";

}  // namespace

std::string Reason(int error) {
  std::array<char, 256> room{};
  return FromQt(QString::fromLocal8Bit(::strerror_r(error, room.data(), room.size())));
}

Descriptor::~Descriptor() {
  if (number_ >= 0) ::close(number_);
}

int Descriptor::Close() {
  const int number = number_;
  number_ = -1;
  const int error = ::close(number) == 0 ? 0 : errno;
  return error == EINTR ? 0 : error;
}

Found LookAt(const std::string& path) {
  Found found;
  if (::stat(path.c_str(), &found.about) != 0) found.error = errno;
  return found;
}

FileFault KindFault(const Found& found) {
  if (found.error == ENOENT) return std::nullopt;
  if (found.error != 0) return Reason(found.error);
  if (S_ISDIR(found.about.st_mode)) return Reason(EISDIR);
  if (S_ISREG(found.about.st_mode) || S_ISCHR(found.about.st_mode)) return std::nullopt;
  return kNoFile;
}

// Asked by name first, since opening alone may already do something to a device. What has come in its place
// since then is seen by the second look.
Opened Open(const std::string& path, int flags) {
  const bool reads = (flags & O_ACCMODE) == O_RDONLY;
  const auto fault_of = [reads](const Found& found) -> FileFault {
    if (FileFault fault = KindFault(found)) return fault;
    if (reads && found.error == ENOENT) return Reason(ENOENT);
    if (reads && !found.regular()) return kNoFile;
    return std::nullopt;
  };
  if (FileFault fault = fault_of(LookAt(path))) return {Descriptor(), fault, {}};
  Opened result{
      Descriptor(::open(path.c_str(), flags | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, kNewFile)), {}, {}};
  const int open_error = errno;
  if (!result.file.valid()) {
    result.fault = Reason(open_error);
    return result;
  }
  Found opened;
  if (::fstat(result.file.number(), &opened.about) != 0) opened.error = errno;
  result.fault = fault_of(opened);
  result.about = opened.about;
  return result;
}

int WriteAll(int file, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(file, bytes.data(), bytes.size());
    const int error = errno;
    if (written < 0 && error == EINTR) continue;
    if (written < 0) return error;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return 0;
}

// A device has nothing to sync.
int SyncFile(int file) {
  const int error = ::fsync(file) == 0 ? 0 : errno;
  return error == EINVAL || error == EROFS ? 0 : error;
}

void SyncFolderOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  const std::string folder = slash == std::string::npos ? "." : path.substr(0, slash + 1);
  const Descriptor directory(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (directory.valid()) ::fsync(directory.number());
}

}  // namespace kestrum::posix
