#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "support_process/child.h"
#include "support_process/files.h"

namespace kestrum::process {

// A session bus of its own; its end takes everything on it along.
class PrivateBus {
 public:
  // In a folder of its own.
  PrivateBus();
  // The socket "bus" is made in `folder`, in place of one that a former bus has left there.
  explicit PrivateBus(const std::string& folder);
  // As a client needs it, with the bus's identity. Empty when it did not start.
  const std::string& address() const { return address_; }
  // A bus that stands still takes calls and answers nobody.
  void StandStill() const;
  void GoOn() const;

 private:
  std::unique_ptr<Scratch> own_folder_;
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
