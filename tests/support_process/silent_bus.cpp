#include "support_process/silent_bus.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <map>
#include <vector>

namespace kestrum::process {
namespace {

constexpr int kLookMs = 20;

// The answer of a bus to a line of the greeting; empty where none is due.
std::string AnswerTo(const std::string& line) {
  const std::string welcome = "OK 0123456789abcdef0123456789abcdef\r\n";
  if (line.ends_with("AUTH EXTERNAL")) return "DATA\r\n";
  if (line == "DATA" || line.find("AUTH EXTERNAL ") != std::string::npos) return welcome;
  if (line == "NEGOTIATE_UNIX_FD") return "AGREE_UNIX_FD\r\n";
  return {};
}

}  // namespace

SilentBus::SilentBus(const std::string& socket_path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  socket_path.copy(static_cast<char*>(address.sun_path), sizeof(address.sun_path) - 1);
  ::unlink(socket_path.c_str());
  listener_ = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (::bind(listener_, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0 ||
      ::listen(listener_, 20) != 0) {
    return;
  }
  thread_ = std::thread(&SilentBus::Serve, this);
}

SilentBus::~SilentBus() {
  ending_ = true;
  if (thread_.joinable()) thread_.join();
  ::close(listener_);
}

void SilentBus::Serve() {
  std::map<int, std::string> callers;
  while (!ending_) {
    std::vector<pollfd> waiting{{listener_, POLLIN, 0}};
    for (const auto& [caller, heard] : callers) waiting.push_back({caller, POLLIN, 0});
    if (::poll(waiting.data(), waiting.size(), kLookMs) <= 0) continue;
    for (const pollfd& one : waiting) {
      if (one.revents == 0) continue;
      if (one.fd == listener_) {
        callers[::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC)];
        continue;
      }
      std::array<char, 512> piece{};
      const ssize_t got = ::recv(one.fd, piece.data(), piece.size(), MSG_DONTWAIT);
      if (got <= 0) {
        ::close(one.fd);
        callers.erase(one.fd);
        continue;
      }
      callers[one.fd].append(piece.data(), static_cast<std::size_t>(got));
      Listen(one.fd, callers[one.fd]);
    }
  }
  for (const auto& [caller, heard] : callers) ::close(caller);
}

void SilentBus::Listen(int caller, std::string& heard) {
  for (std::size_t end = heard.find("\r\n"); end != std::string::npos; end = heard.find("\r\n")) {
    const std::string line = heard.substr(0, end);
    heard.erase(0, end + 2);
    if (line == "BEGIN") ++let_in_;
    const std::string answer = AnswerTo(line);
    ::send(caller, answer.data(), answer.size(), MSG_NOSIGNAL);
  }
}

}  // namespace kestrum::process
