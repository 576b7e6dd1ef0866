#include "port_check.h"

#include <fcntl.h>
#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <memory>
#include <system_error>

#include "sets/unique_fd.h"

namespace kestrum::rigbridge {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kDefaultPort = "4532";

// What the system has just refused.
std::error_code Refused() {
  return {errno, std::generic_category()};
}

std::string NameOfProcess(const fs::path& process) {
  std::string name;
  std::getline(std::ifstream(process / "comm"), name);
  return name + " (process " + process.filename().string() + ")";
}

// Another process that has the device open, as far as this user may see: two programs on one line take each
// other's answers.
std::optional<std::string> HolderOf(dev_t device) {
  std::error_code error;
  for (const auto& process : fs::directory_iterator("/proc", error)) {
    const std::string name = process.path().filename().string();
    if (name.find_first_not_of("0123456789") != std::string::npos || name == std::to_string(::getpid()))
      continue;
    std::error_code unreadable;
    for (const auto& open_file : fs::directory_iterator(process.path() / "fd", unreadable)) {
      struct stat status {};
      if (::stat(open_file.path().c_str(), &status) == 0 && S_ISCHR(status.st_mode) &&
          status.st_rdev == device) {
        return NameOfProcess(process.path());
      }
    }
  }
  return std::nullopt;
}

// A free address list, or nothing.
using Addresses = std::unique_ptr<addrinfo, decltype(&::freeaddrinfo)>;

// No error when connected.
std::error_code Connect(const addrinfo& address, double patience_s) {
  const sets::UniqueFd connection(
      ::socket(address.ai_family, address.ai_socktype | SOCK_NONBLOCK | SOCK_CLOEXEC, address.ai_protocol));
  if (!connection) return Refused();
  if (::connect(connection.Get(), address.ai_addr, address.ai_addrlen) == 0) return {};
  if (const std::error_code refused = Refused(); refused != std::errc::operation_in_progress) return refused;
  pollfd state{connection.Get(), POLLOUT, 0};
  if (::poll(&state, 1, static_cast<int>(patience_s * 1000)) <= 0)
    return std::make_error_code(std::errc::timed_out);
  int error = 0;
  socklen_t size = sizeof error;
  ::getsockopt(connection.Get(), SOL_SOCKET, SO_ERROR, &error, &size);
  return {error, std::generic_category()};
}

}  // namespace

Outcome CheckSerialPort(const std::string& device) {
  if (device.empty()) return Fault{"", "Choose the serial port of the rig."};
  struct stat status {};
  if (::stat(device.c_str(), &status) != 0) {
    const std::error_code refused = Refused();
    const bool is_missing =
        refused == std::errc::no_such_file_or_directory || refused == std::errc::not_a_directory;
    if (!is_missing) return Fault{"", device + ": " + refused.message() + "."};
    return Fault{"", "There is no port " + device + ": is the cable plugged in?"};
  }
  if (!S_ISCHR(status.st_mode)) return Fault{"", device + " is no serial port."};
  const sets::UniqueFd port(::open(device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
  const std::error_code refused = port ? std::error_code() : Refused();
  if (port && ::isatty(port.Get()) != 1) return Fault{"", device + " is no serial port."};
  if (const auto holder = HolderOf(status.st_rdev)) {
    return Fault{"", "The port " + device + " is in use by " + *holder + "."};
  }
  switch (refused.value()) {
    case 0:
      return Done{};
    case EACCES:
    case EPERM:
      return Fault{"", "No permission for " + device +
                           ": enter \"sudo usermod -aG dialout $USER\" once, then log out and in again."};
    case EBUSY:
      return Fault{"", "The port " + device + " is in use by another program."};
    case ENXIO:
    case ENODEV:
    case EIO:
      return Fault{"", "The port " + device + " does not answer: is the cable plugged in?"};
    default:
      return Fault{"", device + ": " + refused.message() + "."};
  }
}

HostAndPort ParseHost(std::string_view text) {
  std::string_view host = text;
  std::string_view port = kDefaultPort;
  const std::size_t bracket = text.starts_with('[') ? text.find(']') : std::string_view::npos;
  const std::size_t colon = text.rfind(':');
  const bool has_port =
      colon != std::string_view::npos && (bracket == std::string_view::npos || colon > bracket);
  if (has_port) {
    host = text.substr(0, colon);
    if (colon + 1 < text.size()) port = text.substr(colon + 1);
  }
  if (bracket != std::string_view::npos) host = text.substr(1, bracket - 1);
  if (host.empty()) host = "localhost";
  return {std::string(host), std::string(port)};
}

Outcome CheckHost(const std::string& address, double patience_s) {
  const auto [host, port] = ParseHost(address);
  addrinfo hints{};
  hints.ai_socktype = SOCK_STREAM;
  addrinfo* found = nullptr;
  const int unknown = ::getaddrinfo(host.c_str(), port.c_str(), &hints, &found);
  const Addresses addresses(found, &::freeaddrinfo);
  if (unknown != 0) return Fault{"", "The host " + host + " is not known: " + ::gai_strerror(unknown) + "."};
  std::error_code refused = std::make_error_code(std::errc::host_unreachable);
  for (const addrinfo* one = addresses.get(); one != nullptr && refused; one = one->ai_next) {
    refused = Connect(*one, patience_s);
  }
  if (!refused) return Done{};
  const std::string place = host + ":" + port;
  if (refused == std::errc::connection_refused) {
    return Fault{"", "Nobody listens at " + place + ": is the program running, and its remote control on?"};
  }
  return Fault{"", place + " does not answer: " + refused.message() + "."};
}

}  // namespace kestrum::rigbridge
