// The program with Hamlib's dummy rig, with rigctld, and with a simulated FT817.
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <optional>

#include "bridge_process.h"
#include "support_process/daemons.h"

namespace kestrum::rigbridge {
namespace {

namespace fs = std::filesystem;
using process::Eventually;
using sets::Bytes;

bool IsReading(const Bytes& reply) {
  return reply.size() == 5 && reply[0] == reply[3] && reply[4] == 0xF7;
}

class BridgeTest : public testing::Test {
 protected:
  std::string Link() const { return scratch.File("com1"); }
  std::string Folder() const { return scratch.path().string(); }

  process::Scratch scratch;
};

TEST_F(BridgeTest, PlaysHamlibsDummyRig) {
  process::WriteFile(scratch.File("rigbridge.conf"), "model=1\ncolour=red\n");
  BridgeProcess bridge(Folder(), {});
  ASSERT_TRUE(bridge.Says("Reading the rig."));
  const Port port(Link());
  EXPECT_TRUE(Eventually([&] { return IsReading(port.Ask(kReadMeter)); }));
  bridge.Program().Signal(SIGTERM);
  EXPECT_EQ(bridge.Program().Wait(), 0);
  EXPECT_FALSE(fs::is_symlink(Link()));
}

class RigctldTest : public BridgeTest {
 protected:
  void StartDaemon() {
    daemon.emplace(process::Call{
        {"rigctld", "-m", "1", "-T", "127.0.0.1", "-t", std::to_string(tcp_port)}, {}, {}, false});
  }

  const std::uint16_t tcp_port = process::FreePort();
  const std::string host = "127.0.0.1:" + std::to_string(tcp_port);
  std::optional<process::Child> daemon;
};

TEST_F(RigctldTest, SettingsArriveAndTheDialIsWatched) {
  StartDaemon();
  BridgeProcess bridge(Folder(), {"--model", "2", "--device", host});
  ASSERT_TRUE(bridge.Says("Reading the rig."));
  const Port port(Link());
  ASSERT_TRUE(Eventually([&] { return IsReading(port.Ask(kReadMeter)); }));
  port.Send({0x00, 0x0A, 0x42, 0x01, 0x0A});
  port.Send({0, 0, 0, 4, 0x0C});
  port.Send({0, 0, 0, 1, 0x04});
  EXPECT_TRUE(Eventually([&] { return Rigctl(host, {"f"}) == "14210000"; }));
  EXPECT_TRUE(Eventually([&] { return Rigctl(host, {"m"}) == "AM"; }));
  EXPECT_TRUE(Eventually([&] { return Rigctl(host, {"u", "LOCK"}) == "1"; }));
  Rigctl(host, {"F", "7100000"});
  EXPECT_TRUE(bridge.Says("The rig is on 7100.00 kHz, but Kestrum logs 14210.00 kHz"));
}

TEST_F(RigctldTest, LostAndBack) {
  BridgeProcess bridge(Folder(), {"--model", "2", "--device", host});
  EXPECT_TRUE(
      bridge.Says("Nobody listens at " + host + ": is the program running, and its remote control on?"));
  StartDaemon();
  ASSERT_TRUE(bridge.Says("Reading the rig."));
  const Port port(Link());
  EXPECT_TRUE(Eventually([&] { return IsReading(port.Ask(kReadMeter)); }));
  daemon.reset();
  EXPECT_TRUE(bridge.Says("The connection is lost: is the program still running?"));
  // The last value is too old soon, and then the set is silent as one that is off.
  EXPECT_TRUE(Eventually([&] { return port.Ask(kReadMeter).empty(); }));
}

class Ft817Test : public BridgeTest {
 protected:
  void Tell(const std::string& line) const {
    drive.Tell(line);
    ASSERT_TRUE(Eventually([&] {
      return process::ReadFile(scratch.File("log")).find("control: " + line + "\n") != std::string::npos;
    }));
  }

  fs::path rig_folder = scratch.path() / "rig";
  std::vector<std::string> arguments = {"--model",           "1020",    "--device",
                                        rig_folder / "com1", "--speed", "38400"};
  process::Child drive{
      {{DRIVESIM_PROGRAM, "--dir", rig_folder, "--no-gps", "--log", scratch.File("log")}, {}, {}, true}};
  const std::string ready = drive.ReadLine();
};

// dB to S9 of the set's sixteen steps, and the raw values of Kestrum's default table for them.
TEST_F(Ft817Test, EachStepOfTheMeterArrives) {
  constexpr int kRaw[] = {0, 1, 2, 8, 18, 32, 50, 72, 98, 128, 162, 180, 198, 216, 234, 255};
  BridgeProcess bridge(Folder(), arguments);
  ASSERT_TRUE(bridge.Says("Reading the rig."));
  const Port port(Link());
  for (std::size_t step = 0; step < std::size(kRaw); ++step) {
    Tell("smeter " + std::to_string(step));
    const auto raw = static_cast<std::uint8_t>(kRaw[step]);
    EXPECT_TRUE(Eventually([&] { return port.Ask(kReadMeter) == Bytes{raw, raw, raw, raw, 0xF7}; })) << step;
  }
}

TEST_F(Ft817Test, PulledOutPluggedInAndSilent) {
  BridgeProcess bridge(Folder(), arguments);
  ASSERT_TRUE(bridge.Says("Reading the rig."));
  const Port port(Link());
  Tell("vanish");
  EXPECT_TRUE(
      bridge.Says("There is no port " + (rig_folder / "com1").string() + ": is the cable plugged in?"));
  EXPECT_TRUE(Eventually([&] { return port.Ask(kReadMeter).empty(); }));
  Tell("clear");
  EXPECT_TRUE(bridge.Says("Reading the rig."));
  EXPECT_TRUE(Eventually([&] { return IsReading(port.Ask(kReadMeter)); }));
  Tell("silence");
  EXPECT_TRUE(bridge.Says("The rig does not answer: is it switched on, and are model and speed right?"));
  EXPECT_TRUE(port.Ask(kReadMeter).empty());
  // It waits for the rig now; that must not keep it from ending.
  bridge.Program().Signal(SIGTERM);
  EXPECT_EQ(bridge.Program().Wait(), 0);
  EXPECT_FALSE(fs::is_symlink(Link()));
}

TEST_F(Ft817Test, APortInUseIsToldWithItsUser) {
  BridgeProcess first(Folder(), arguments);
  ASSERT_TRUE(first.Says("Reading the rig."));
  const std::string other_folder = scratch.File("other");
  fs::create_directory(other_folder);
  BridgeProcess second(other_folder, arguments);
  EXPECT_TRUE(second.Says("The port " + (rig_folder / "com1").string() + " is in use by rigbridge (process " +
                          std::to_string(first.Program().pid()) + ")."));
}

TEST_F(BridgeTest, WhatIsInTheWayStays) {
  const auto run = [&](const std::vector<std::string>& more) {
    process::Call call{{RIGBRIDGE_PROGRAM, "--no-window", "--dir", Folder()}, {}, {}};
    call.words.insert(call.words.end(), more.begin(), more.end());
    return process::Run(call);
  };
  fs::create_symlink("/dev/serial/by-id/usb-port0", Link());
  const process::Ending link = run({});
  EXPECT_EQ(link.code, 1);
  EXPECT_EQ(link.output,
            "rigbridge: " + Link() + ": there is a link of that name to /dev/serial/by-id/usb-port0.\n");
  EXPECT_EQ(fs::read_symlink(Link()), "/dev/serial/by-id/usb-port0");

  BridgeProcess first(Folder(), {"--link", "com2"});
  const process::Ending second = run({"--link", "com3"});
  EXPECT_EQ(second.code, 1);
  EXPECT_EQ(second.output, "rigbridge: Another rigbridge serves " + Folder() + " already.\n");
  EXPECT_EQ(run({"--model", "x"}).code, 2);
}

TEST_F(BridgeTest, ListsTheRigs) {
  process::Child list({{RIGBRIDGE_PROGRAM, "--list"}, {}, {}, false});
  EXPECT_EQ(list.ReadLine(), " Number  Rig                                       Driver");
  EXPECT_EQ(list.Wait(), 0);
}

}  // namespace
}  // namespace kestrum::rigbridge
