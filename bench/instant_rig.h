#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

#include "support_process/pty.h"

namespace kestrum::bench {

// A rig on a pseudo-terminal that answers S-meter reads as fast as this machine can, so that what is measured
// is the logger. FT817 and FT840; settings are taken without a word.
class InstantRig {
 public:
  InstantRig();
  ~InstantRig();
  InstantRig(const InstantRig&) = delete;
  InstantRig& operator=(const InstantRig&) = delete;

  // Device to open.
  const std::string& path() const { return line_.device(); }
  // Waits until more than `seen` reads have been answered, at most `patience`. Gives their number.
  int WaitForMoreThan(int seen, std::chrono::milliseconds patience);
  // When the first read came in; only after one has.
  std::chrono::steady_clock::time_point first_read() const { return first_read_; }

 private:
  void Serve();
  void Answer(unsigned char opcode);

  process::Pty line_;
  std::atomic<bool> end_ = false;
  std::mutex mutex_;
  std::condition_variable answered_;
  int answers_ = 0;
  std::chrono::steady_clock::time_point first_read_;
  std::thread thread_;
};

}  // namespace kestrum::bench
