#include "support_process/client.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cstdio>

namespace kestrum::process {
namespace {

constexpr int kPatienceMs = 3000;

bool Readable(int fd, int ms) {
  pollfd state{fd, POLLIN, 0};
  return ::poll(&state, 1, ms) > 0 && (state.revents & POLLIN) != 0;
}

}  // namespace

Client::Client(const std::filesystem::path& path)
    : fd_(::open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)) {}

Client::~Client() {
  if (fd_ >= 0) ::close(fd_);
}

void Client::Send(const Bytes& bytes) const {
  if (::write(fd_, bytes.data(), bytes.size()) < 0) std::perror("port");
}

Bytes Client::Receive(std::size_t count) const {
  Bytes bytes;
  std::uint8_t byte = 0;
  while (bytes.size() < count && Readable(fd_, kPatienceMs) && ::read(fd_, &byte, 1) == 1) {
    bytes.push_back(byte);
  }
  return bytes;
}

Bytes Client::Ask(const Bytes& command, std::size_t count) const {
  Send(command);
  return Receive(count);
}

Bytes Client::ReceiveFor(std::chrono::milliseconds duration) const {
  using Clock = std::chrono::steady_clock;
  const auto end = Clock::now() + duration;
  Bytes bytes;
  std::uint8_t byte = 0;
  for (;;) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
    if (left <= 0 || !Readable(fd_, static_cast<int>(left)) || ::read(fd_, &byte, 1) != 1) return bytes;
    bytes.push_back(byte);
  }
}

std::string Client::Line() {
  while (text_.find("\r\n") == std::string::npos) {
    const Bytes bytes = Receive(1);
    if (bytes.empty()) return {};
    text_ += static_cast<char>(bytes[0]);
  }
  const std::size_t end = text_.find("\r\n");
  std::string line = text_.substr(0, end);
  text_.erase(0, end + 2);
  return line;
}

bool Client::HungUp() const {
  pollfd state{fd_, 0, 0};
  return ::poll(&state, 1, kPatienceMs) > 0 && (state.revents & POLLHUP) != 0;
}

}  // namespace kestrum::process
