#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace kestrum::process {

using Bytes = std::vector<std::uint8_t>;

// The client's end of a serial port, opened and closed with the object.
class Client {
 public:
  explicit Client(const std::filesystem::path& path);
  Client(const Client&) = delete;
  Client& operator=(const Client&) = delete;
  ~Client();

  bool IsOpen() const { return fd_ >= 0; }
  void Send(const Bytes& bytes) const;
  // `count` bytes, or fewer when they do not come in 3 s.
  Bytes Receive(std::size_t count) const;
  // Sends and receives.
  Bytes Ask(const Bytes& command, std::size_t count) const;
  // What comes in the next time.
  Bytes ReceiveFor(std::chrono::milliseconds duration) const;
  // The next line without CR LF, empty after 3 s.
  std::string Line();
  // Waits at most 3 s for the hang-up.
  bool HungUp() const;

 private:
  int fd_ = -1;
  std::string text_;
};

}  // namespace kestrum::process
