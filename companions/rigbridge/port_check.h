#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "common/fault.h"

namespace kestrum::rigbridge {

// What stands in the way of a serial port, looked up before it is opened: Hamlib tells only "IO error".
Outcome CheckSerialPort(const std::string& device);

struct HostAndPort {
  std::string host;
  std::string port;
};
// "localhost:7356"; a missing port is 4532, as in Hamlib. An IPv6 address stands in brackets.
HostAndPort ParseHost(std::string_view text);

// Whether somebody listens there, asked for at most `patience_s`.
Outcome CheckHost(const std::string& address, double patience_s);

}  // namespace kestrum::rigbridge
