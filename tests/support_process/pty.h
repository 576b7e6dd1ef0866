#pragma once

#include <chrono>
#include <string>
#include <string_view>

#include "support_process/waits.h"

namespace kestrum::process {

// A raw pseudo-terminal: a program opens the device, the test plays what is plugged in at the other end. The
// device is there until it is unplugged, whoever opens and closes it meanwhile.
class Pty {
 public:
  Pty();
  ~Pty() { Unplug(); }
  Pty(const Pty&) = delete;
  Pty& operator=(const Pty&) = delete;

  // Empty when there was no terminal to be had.
  const std::string& device() const { return device_; }
  // The two ends as descriptors, for what is asked of them otherwise; -1 when unplugged. The test's end never
  // blocks.
  int line() const { return line_; }
  int device_end() const { return device_end_; }

  // A full terminal drops what does not fit, as a wire without a listener does. Gives what was taken.
  std::size_t Write(std::string_view bytes) const;
  // Bytes that have arrived at the device and wait for whoever reads it.
  std::size_t Arrived() const;
  // As many bytes as that, or those that have come within the time.
  std::string Read(std::size_t count, std::chrono::milliseconds patience = kPatience) const;
  // Waits for something to come, and takes it; empty when nothing has.
  std::string ReadSome(std::size_t most, std::chrono::milliseconds patience) const;
  // Takes everything that is there.
  std::string ReadAll() const;
  void Unplug();

 private:
  int line_ = -1;
  int device_end_ = -1;
  std::string device_;
};

}  // namespace kestrum::process
