#include "sets/pty_port.h"

#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <termios.h>

#include <array>
#include <cerrno>
#include <system_error>

#include "common/fault_text.h"

namespace kestrum::sets {
namespace {

UniqueFd OpenDevice(const std::string& device) {
  return UniqueFd(::open(device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
}

bool IsPseudoTerminal(const std::filesystem::path& device) {
  return device.parent_path() == "/dev/pts";
}

// Raw, and nothing left in the input.
bool MakeRaw(int fd) {
  termios settings{};
  if (::tcgetattr(fd, &settings) != 0) return false;
  ::cfmakeraw(&settings);
  return ::tcsetattr(fd, TCSANOW, &settings) == 0 && ::tcflush(fd, TCIFLUSH) == 0;
}

}  // namespace

Outcome PtyPort::Open() {
  Close();
  Outcome made = OpenTerminal();
  if (made) made = MakeLink();
  if (!made) master_.Reset();
  return made;
}

Outcome PtyPort::OpenTerminal() {
  master_ = UniqueFd(::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
  if (!master_) return SystemFault("no pseudo-terminal");
  std::array<char, 128> name{};
  if (::grantpt(Fd()) != 0 || ::unlockpt(Fd()) != 0 || ::ptsname_r(Fd(), name.data(), name.size()) != 0) {
    return SystemFault("no pseudo-terminal");
  }
  device_ = name.data();
  const UniqueFd slave = OpenDevice(device_);
  if (!slave || !MakeRaw(slave.Get())) return SystemFault(device_);
  used_ = false;
  return Done{};
}

Outcome PtyPort::MakeLink() const {
  std::error_code error;
  const auto status = std::filesystem::symlink_status(link_, error);
  if (std::filesystem::exists(status) && !std::filesystem::is_symlink(status)) {
    return Fault{link_.string(), "there is a file of that name that is no link"};
  }
  if (const auto old = std::filesystem::read_symlink(link_, error); !error && !IsPseudoTerminal(old)) {
    return Fault{link_.string(), "there is a link of that name to " + old.string()};
  }
  // Made beside it and renamed over it, so that the name is never missing while it is replaced.
  std::filesystem::path fresh = link_;
  fresh += ".";
  fresh += std::to_string(::getpid());
  std::filesystem::remove(fresh, error);
  std::filesystem::create_symlink(device_, fresh, error);
  if (!error) std::filesystem::rename(fresh, link_, error);
  if (error) return Fault{link_.string(), error.message()};
  return Done{};
}

void PtyPort::Close() {
  if (!master_) return;
  std::error_code error;
  if (std::filesystem::read_symlink(link_, error) == device_) std::filesystem::remove(link_, error);
  master_.Reset();
}

Bytes PtyPort::Read() {
  Bytes bytes;
  std::array<std::uint8_t, 512> piece{};
  while (master_) {
    const ssize_t count = ::read(Fd(), piece.data(), piece.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) break;  // nothing more, or nobody there
    bytes.insert(bytes.end(), piece.begin(), piece.begin() + count);
  }
  if (!bytes.empty()) used_ = true;
  return bytes;
}

void PtyPort::Write(std::span<const std::uint8_t> bytes) {
  if (!master_ || bytes.empty() || !ClientPresent()) return;
  used_ = true;
  while (!bytes.empty()) {
    const ssize_t count = ::write(Fd(), bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return;
    bytes = bytes.subspan(static_cast<std::size_t>(count));
  }
}

bool PtyPort::ClientPresent() const {
  if (!master_) return false;
  pollfd state{Fd(), 0, 0};
  return ::poll(&state, 1, 0) >= 0 && (state.revents & POLLHUP) == 0;
}

Result<bool> PtyPort::TidyAfterClient() {
  // Tidying opens and closes the terminal, which is a hang-up too: without `used_` it would never end.
  if (!master_ || !used_ || ClientPresent()) return false;
  used_ = false;
  const UniqueFd slave = OpenDevice(device_);
  if (slave) {
    MakeRaw(slave.Get());
    return false;
  }
  if (const Outcome made = Open(); !made) return made.fault();
  return true;
}

}  // namespace kestrum::sets
