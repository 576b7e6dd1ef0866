#pragma once

#include <chrono>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

namespace kestrum::process {

// A folder that is gone at the end, on a short path as sockets need it.
class Scratch {
 public:
  Scratch();
  ~Scratch();
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;

  const std::filesystem::path& path() const { return path_; }
  std::string File(const std::string& name) const { return (path_ / name).string(); }

 private:
  std::filesystem::path path_;
};

// The whole file; empty when it is not there.
std::string ReadFile(const std::filesystem::path& path);
void WriteFile(const std::filesystem::path& path, const std::string& bytes);

// Text between separators; the piece after the last one too, unless it is empty.
std::vector<std::string> Split(const std::string& text, const std::string& separator);

// Looks every 10 ms until the condition holds; false when it does not within the time.
template <typename Condition>
bool Eventually(Condition condition, std::chrono::milliseconds patience = std::chrono::seconds(20)) {
  const auto end = std::chrono::steady_clock::now() + patience;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return true;
}

}  // namespace kestrum::process
