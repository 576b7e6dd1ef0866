#pragma once

#include <sys/types.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace kestrum::drivesim {

using Bytes = std::vector<std::uint8_t>;

/// A folder that is gone at the end.
class Scratch {
 public:
  Scratch();
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;
  ~Scratch();
  const std::filesystem::path& Path() const { return path_; }

 private:
  std::filesystem::path path_;
};

/// The program, running with `--dir` of its own; killed at the end if it has not ended by itself.
class DriveProcess {
 public:
  explicit DriveProcess(const std::vector<std::string>& arguments);
  DriveProcess(const DriveProcess&) = delete;
  DriveProcess& operator=(const DriveProcess&) = delete;
  ~DriveProcess();

  std::filesystem::path File(const char* name) const { return scratch_.Path() / name; }
  /// The first line of the standard output.
  const std::string& ReadyLine() const { return ready_; }
  /// A line to its standard input.
  void Tell(const std::string& line) const;
  void CloseInput();
  void Signal(int number) const;
  /// Exit code, waited for at most 10 s; -1 when it did not end, or not by itself.
  int Wait();
  /// Processor time so far, seconds.
  double CpuS() const;

 private:
  Scratch scratch_;
  pid_t pid_ = -1;
  int input_ = -1;
  std::string ready_;
};

/// The client's end of a port, opened and closed with the object.
class Client {
 public:
  explicit Client(const std::filesystem::path& path);
  Client(const Client&) = delete;
  Client& operator=(const Client&) = delete;
  ~Client();

  bool IsOpen() const { return fd_ >= 0; }
  void Send(const Bytes& bytes) const;
  /// `count` bytes, or fewer when they do not come in 3 s.
  Bytes Receive(std::size_t count) const;
  /// Sends and receives.
  Bytes Ask(const Bytes& command, std::size_t count) const;
  /// What comes in the next `ms`.
  Bytes ReceiveFor(int ms) const;
  /// The next line without CR LF, empty after 3 s.
  std::string Line();
  /// Waits at most 3 s for the hang-up.
  bool HungUp() const;

 private:
  int fd_ = -1;
  std::string text_;
};

struct Outcome {
  int exit_code = -1;
  std::string output;  ///< standard output and error
};

/// Runs a shell command to its end.
Outcome RunShell(const std::string& command);

std::string ReadFile(const std::filesystem::path& path);

/// Looks every 10 ms, at most 5 s.
template <typename Condition>
bool Eventually(Condition condition);

}  // namespace kestrum::drivesim

#include <unistd.h>

template <typename Condition>
bool kestrum::drivesim::Eventually(Condition condition) {
  for (int i = 0; i < 500; ++i) {
    if (condition()) return true;
    ::usleep(10000);
  }
  return false;
}
