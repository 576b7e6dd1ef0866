#pragma once

#include <atomic>
#include <string>
#include <thread>

namespace kestrum::process {

// A session bus that lets everybody in by the book and never says a word after that.
class SilentBus {
 public:
  explicit SilentBus(const std::string& socket_path);
  ~SilentBus();
  SilentBus(const SilentBus&) = delete;
  SilentBus& operator=(const SilentBus&) = delete;

  // Callers that have been let in so far.
  int let_in() const { return let_in_; }

 private:
  void Serve();
  // Speaks with a caller until it has begun; the pieces of what it says are kept by descriptor.
  void Listen(int caller, std::string& heard);

  int listener_ = -1;
  std::atomic<bool> ending_ = false;
  std::atomic<int> let_in_ = 0;
  std::thread thread_;
};

}  // namespace kestrum::process
