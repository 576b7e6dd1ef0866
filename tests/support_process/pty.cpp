#include "support_process/pty.h"

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cstdio>

namespace kestrum::process {

Pty::Pty() {
  std::array<char, 128> name{};
  termios raw{};
  ::cfmakeraw(&raw);
  if (::openpty(&line_, &device_end_, name.data(), &raw, nullptr) != 0) {
    std::perror("no pseudo-terminal");
    return;
  }
  ::fcntl(line_, F_SETFL, O_NONBLOCK);
  for (const int end : {line_, device_end_}) ::fcntl(end, F_SETFD, FD_CLOEXEC);
  device_ = name.data();
  // gpsd gives up being root before it opens its receiver.
  ::chmod(name.data(), 0666);
}

std::size_t Pty::Write(std::string_view bytes) const {
  const ssize_t written = ::write(line_, bytes.data(), bytes.size());
  return written > 0 ? static_cast<std::size_t>(written) : 0;
}

std::size_t Pty::Arrived() const {
  int count = 0;
  return ::ioctl(device_end_, FIONREAD, &count) == 0 ? static_cast<std::size_t>(count) : 0;
}

std::string Pty::ReadSome(std::size_t most, std::chrono::milliseconds patience) const {
  std::string bytes(most, '\0');
  pollfd ready{line_, POLLIN, 0};
  if (::poll(&ready, 1, static_cast<int>(patience.count())) <= 0) return {};
  const ssize_t got = ::read(line_, bytes.data(), bytes.size());
  bytes.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
  return bytes;
}

std::string Pty::Read(std::size_t count, std::chrono::milliseconds patience) const {
  std::string bytes;
  while (bytes.size() < count) {
    const std::string piece = ReadSome(count - bytes.size(), patience);
    if (piece.empty()) break;
    bytes += piece;
  }
  return bytes;
}

std::string Pty::ReadAll() const {
  constexpr std::size_t kPiece = 4096;
  std::string bytes;
  for (std::string piece = ReadSome(kPiece, {}); !piece.empty(); piece = ReadSome(kPiece, {})) bytes += piece;
  return bytes;
}

void Pty::Unplug() {
  for (int* end : {&device_end_, &line_}) {
    if (*end >= 0) ::close(*end);
    *end = -1;
  }
}

}  // namespace kestrum::process
