#include "support_process/daemons.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <utility>

namespace kestrum::process {

namespace {

Call BusIn(const std::string& folder) {
  const std::string socket = folder + "/bus";
  ::unlink(socket.c_str());
  return {{"dbus-daemon", "--session", "--print-address", "--nofork", "--nopidfile",
           "--address=unix:path=" + socket},
          {},
          {}};
}

}  // namespace

PrivateBus::PrivateBus()
    : own_folder_(std::make_unique<Scratch>()),
      daemon_(BusIn(own_folder_->path().string())),
      address_(daemon_.ReadLine()) {}

PrivateBus::PrivateBus(const std::string& folder) : daemon_(BusIn(folder)), address_(daemon_.ReadLine()) {}

void PrivateBus::StandStill() const {
  daemon_.Signal(SIGSTOP);
}

void PrivateBus::GoOn() const {
  daemon_.Signal(SIGCONT);
}

Gpsd::Gpsd(std::uint16_t port, std::string device) : port_(port), device_(std::move(device)) {
  Start();
}

void Gpsd::Start() {
  // Where a user's search path may lack it.
  const bool in_sbin = std::filesystem::exists("/usr/sbin/gpsd");
  const Call call{
      {in_sbin ? "/usr/sbin/gpsd" : "gpsd", "-N", "-n", "-S", std::to_string(port_), device_}, {}, {}};
  daemon_ = std::make_unique<Child>(call);
}

std::uint16_t FreePort() {
  const int listener = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t length = sizeof(address);
  auto* const generic = reinterpret_cast<sockaddr*>(&address);
  const bool bound = ::bind(listener, generic, length) == 0 && ::getsockname(listener, generic, &length) == 0;
  ::close(listener);
  return bound ? ntohs(address.sin_port) : std::uint16_t{0};
}

}  // namespace kestrum::process
