#pragma once

#include <string>
#include <thread>

#include "sets/unique_fd.h"

namespace kestrum::rigbridge {

// Ends Hamlib's reads when a serial port is pulled out. Hamlib 4.5 reads a port that has hung up for ever,
// at full speed: each read gives nothing, and each wait says that there is something to read. So its
// descriptor is replaced by one that cannot be read, and the call in progress returns with an error.
class LineWatch {
 public:
  // Watches the descriptor by which this process has `device` open; nothing when there is none.
  explicit LineWatch(const std::string& device);
  LineWatch(const LineWatch&) = delete;
  LineWatch& operator=(const LineWatch&) = delete;
  // To be destroyed before the port is closed.
  ~LineWatch();

 private:
  void Run() const;

  int watched_ = -1;
  sets::UniqueFd unreadable_;
  sets::UniqueFd stop_;
  std::thread thread_;
};

}  // namespace kestrum::rigbridge
