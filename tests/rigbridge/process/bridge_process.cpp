#include "bridge_process.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>

namespace kestrum::rigbridge {
namespace {

process::Call CallOf(const std::string& folder, const std::vector<std::string>& arguments) {
  const std::string program = folder + "/rigbridge";
  if (!std::filesystem::exists(program)) process::Install(RIGBRIDGE_PROGRAM, program);
  process::Call call{{program, "--no-window"}, {}, folder, false};
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

Port::Port(const std::string& path) : Client(path) {
  EXPECT_TRUE(IsOpen()) << path;
}

sets::Bytes Port::Ask(const sets::Bytes& command) const {
  Send(command);
  return ReceiveFor(std::chrono::milliseconds(50));
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
