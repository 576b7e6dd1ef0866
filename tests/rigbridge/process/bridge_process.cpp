#include "bridge_process.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>

#include <array>
#include <chrono>
#include <filesystem>
#include <thread>

namespace kestrum::rigbridge {
namespace {

namespace fs = std::filesystem;

/// As a user installs it: the program's folder is where the file lies.
std::string Install(const std::string& folder) {
  const fs::path program = fs::path(folder) / "rigbridge";
  std::error_code error;
  if (!fs::exists(program)) fs::create_hard_link(RIGBRIDGE_PROGRAM, program, error);
  if (error) fs::copy_file(RIGBRIDGE_PROGRAM, program);
  return program;
}

process::Call CallOf(const std::string& folder, const std::vector<std::string>& arguments) {
  process::Call call{{Install(folder), "--no-window"}, {}, folder, false};
  call.words.insert(call.words.end(), arguments.begin(), arguments.end());
  return call;
}

}  // namespace

BridgeProcess::BridgeProcess(const std::string& folder, const std::vector<std::string>& arguments)
    : program_(CallOf(folder, arguments)) {
  EXPECT_TRUE(Says("rigbridge ready: "));
}

bool BridgeProcess::Says(const std::string& beginning) {
  for (int lines = 0; lines < 50; ++lines) {
    const std::string line = program_.ReadLine();
    if (line.starts_with(beginning)) return true;
    if (line.empty()) break;
  }
  return false;
}

Port::Port(const std::string& path) : fd_(::open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)) {
  EXPECT_TRUE(fd_) << path;
}

void Port::Send(const sets::Bytes& bytes) const {
  EXPECT_EQ(::write(fd_.Get(), bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
}

sets::Bytes Port::Ask(const sets::Bytes& command) const {
  constexpr auto kReplyWait = std::chrono::milliseconds(50);
  Send(command);
  std::this_thread::sleep_for(kReplyWait);  // as the logger does
  std::array<std::uint8_t, 512> bytes{};
  const ssize_t count = ::read(fd_.Get(), bytes.data(), bytes.size());
  return count > 0 ? sets::Bytes(bytes.begin(), bytes.begin() + count) : sets::Bytes{};
}

std::string Rigctl(const std::string& host, const std::vector<std::string>& words) {
  process::Call call{{"rigctl", "-m", "2", "-r", host}, {}, {}, false};
  call.words.insert(call.words.end(), words.begin(), words.end());
  process::Child rigctl(call);
  std::string line = rigctl.ReadLine();
  EXPECT_EQ(rigctl.Wait(), 0);
  return line;
}

}  // namespace kestrum::rigbridge
