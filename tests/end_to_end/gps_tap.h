#pragma once

#include <atomic>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "support_process/pty.h"

namespace kestrum::end_to_end {

// A cable between the GPS receiver and whoever reads it, with a look at what goes through.
class GpsTap {
 public:
  // Reads the receiver's device `from`; the other end is a terminal that the link `to` names.
  GpsTap(const std::string& from, const std::string& to);
  ~GpsTap();
  GpsTap(const GpsTap&) = delete;
  GpsTap& operator=(const GpsTap&) = delete;

  const std::string& device() const { return terminal_.device(); }
  // A cut cable swallows what the receiver sends.
  void Cut(bool cut) { cut_ = cut; }
  // Positions that have gone through, each once: latitude and longitude with their letters, a blank between.
  std::vector<std::string> Passed() const { return Copy(passed_); }
  std::vector<std::string> Swallowed() const { return Copy(swallowed_); }

 private:
  void Run();
  void Carry(const std::string& line);
  std::vector<std::string> Copy(const std::vector<std::string>& positions) const;

  int receiver_ = -1;
  process::Pty terminal_;
  std::atomic<bool> ending_ = false;
  std::atomic<bool> cut_ = false;
  mutable std::mutex mutex_;  // of the two lists
  std::vector<std::string> passed_;
  std::vector<std::string> swallowed_;
  std::thread thread_;
};

}  // namespace kestrum::end_to_end
