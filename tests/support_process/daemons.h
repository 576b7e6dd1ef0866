#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "support_process/child.h"

namespace kestrum::process {

// A session bus of its own.
class PrivateBus {
 public:
  // The socket is made in `folder`.
  explicit PrivateBus(const std::string& folder);
  // Empty when it did not start.
  const std::string& address() const { return address_; }

 private:
  Child daemon_;
  std::string address_;
};

// The real GPS daemon, reading a device and serving a TCP port of this machine.
class Gpsd {
 public:
  Gpsd(std::uint16_t port, std::string device);
  void Start();
  void Kill() { daemon_.reset(); }

 private:
  std::uint16_t port_;
  std::string device_;
  std::unique_ptr<Child> daemon_;
};

// A TCP port of this machine that nobody listens on.
std::uint16_t FreePort();

}  // namespace kestrum::process
