#include "gps_tap.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <filesystem>

#include "support_process/files.h"

namespace kestrum::end_to_end {

GpsTap::GpsTap(const std::string& from, const std::string& to) {
  receiver_ = ::open(from.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
  std::array<char, 128> name{};
  termios raw{};
  ::cfmakeraw(&raw);
  if (receiver_ < 0 || ::openpty(&master_, &slave_, name.data(), &raw, nullptr) != 0) {
    ADD_FAILURE() << "no terminal for " << from;
    return;
  }
  ::fcntl(master_, F_SETFL, O_NONBLOCK);
  ::fcntl(master_, F_SETFD, FD_CLOEXEC);
  ::fcntl(slave_, F_SETFD, FD_CLOEXEC);
  device_ = name.data();
  // gpsd gives up being root before it opens its receiver.
  ::chmod(name.data(), 0666);
  std::filesystem::create_symlink(device_, to);
  thread_ = std::thread([this] { Run(); });
}

GpsTap::~GpsTap() {
  ending_ = true;
  if (thread_.joinable()) thread_.join();
  for (const int end : {receiver_, master_, slave_}) {
    if (end >= 0) ::close(end);
  }
}

void GpsTap::Run() {
  std::string text;
  while (!ending_) {
    pollfd ready{receiver_, POLLIN, 0};
    if (::poll(&ready, 1, 100) <= 0) continue;
    std::array<char, 512> piece{};
    const ssize_t got = ::read(receiver_, piece.data(), piece.size());
    if (got <= 0) return;  // the receiver is gone
    text.append(piece.data(), static_cast<std::size_t>(got));
    for (std::size_t end = text.find('\n'); end != std::string::npos; end = text.find('\n')) {
      Carry(text.substr(0, end + 1));
      text.erase(0, end + 1);
    }
  }
}

void GpsTap::Carry(const std::string& line) {
  const bool cut = cut_;
  const std::vector<std::string> fields = process::Split(line, ",");
  if (fields.size() > 6 && fields[0] == "$GPRMC" && fields[2] == "A") {
    const std::string position = fields[3] + fields[4] + " " + fields[5] + fields[6];
    const std::lock_guard lock(mutex_);
    std::vector<std::string>& list = cut ? swallowed_ : passed_;
    if (list.empty() || list.back() != position) list.push_back(position);
  }
  // A full terminal drops what does not fit, as a receiver without a reader does.
  if (!cut && ::write(master_, line.data(), line.size()) < 0) return;
}

std::vector<std::string> GpsTap::Copy(const std::vector<std::string>& positions) const {
  const std::lock_guard lock(mutex_);
  return positions;
}

}  // namespace kestrum::end_to_end
