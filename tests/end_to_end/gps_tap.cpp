#include "gps_tap.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <filesystem>

#include "support_process/files.h"

namespace kestrum::end_to_end {

GpsTap::GpsTap(const std::string& from, const std::string& to) {
  receiver_ = ::open(from.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
  if (receiver_ < 0 || device().empty()) {
    ADD_FAILURE() << "no terminal for " << from;
    return;
  }
  std::filesystem::create_symlink(device(), to);
  thread_ = std::thread([this] { Run(); });
}

GpsTap::~GpsTap() {
  ending_ = true;
  if (thread_.joinable()) thread_.join();
  if (receiver_ >= 0) ::close(receiver_);
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
  if (!cut) terminal_.Write(line);
}

std::vector<std::string> GpsTap::Copy(const std::vector<std::string>& positions) const {
  const std::lock_guard lock(mutex_);
  return positions;
}

}  // namespace kestrum::end_to_end
