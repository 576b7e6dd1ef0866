#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <regex>

#include "drive_process.h"

namespace kestrum::drivesim {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;

const Bytes kReadMeter = {0, 0, 0, 0, 0xF7};
const Bytes kReadStatus = {0, 0, 0, 0, 0xE7};

// The control line has been obeyed once it is in the log.
bool Told(DriveProcess& drive, const std::string& line) {
  drive.Tell(line);
  return Eventually(
      [&] { return ReadFile(drive.File("log")).find("-- control: " + line + "\n") != std::string::npos; });
}

TEST(DrivesimRigPort, Ft840RepliesByteForByte) {
  DriveProcess drive({"--rig", "FT840", "--log", "log"});
  ASSERT_TRUE(Told(drive, "smeter 200"));
  const Client client(drive.File("com1"));
  ASSERT_TRUE(client.IsOpen());
  EXPECT_THAT(client.Ask(kReadMeter, 5), ElementsAre(200, 200, 200, 200, 0xF7));
  client.Send({0x00, 0x00, 0x42, 0x01, 0x0A});
  EXPECT_THAT(client.ReceiveFor(std::chrono::milliseconds(100)), ElementsAre());
  // 14200.00 kHz is 1420000 = 0x15AAE0
  const Bytes status = client.Ask({0, 0, 0, 2, 0x10}, 19);
  ASSERT_EQ(status.size(), 19U);
  EXPECT_THAT(Bytes(status.begin() + 2, status.begin() + 5), ElementsAre(0x15, 0xAA, 0xE0));
}

TEST(DrivesimRigPort, Ft817RepliesByteForByte) {
  DriveProcess drive({"--log", "log", "--frequency", "145500"});
  ASSERT_TRUE(Told(drive, "smeter 99"));
  const Client client(drive.File("com1"));
  EXPECT_THAT(client.Ask(kReadStatus, 1), ElementsAre(15));
  EXPECT_THAT(client.Ask({0, 0, 0, 0, 0x03}, 5), ElementsAre(0x14, 0x55, 0x00, 0x00, 0x00));
  EXPECT_THAT(client.Ask({0x43, 0x97, 0x00, 0x00, 0x01}, 1), ElementsAre(0x00));
  EXPECT_THAT(client.Ask({0, 0, 0, 0, 0x03}, 5), ElementsAre(0x43, 0x97, 0x00, 0x00, 0x00));
  EXPECT_THAT(client.ReceiveFor(std::chrono::milliseconds(50)), ElementsAre());
}

TEST(DrivesimRigPort, Ft847RepliesByteForByte) {
  DriveProcess drive({"--rig", "FT847", "--log", "log"});
  ASSERT_TRUE(Told(drive, "smeter 5"));
  const Client client(drive.File("com1"));
  EXPECT_THAT(client.Ask(kReadStatus, 5), ElementsAre(5, 0, 0, 0, 0xE7));
}

TEST(DrivesimRigPort, MeterFollowsTheDriveAgainAfterAuto) {
  DriveProcess drive({"--rig", "FT840", "--log", "log"});
  const Client client(drive.File("com1"));
  ASSERT_TRUE(Told(drive, "smeter 0"));
  EXPECT_THAT(client.Ask(kReadMeter, 5), ElementsAre(0, 0, 0, 0, 0xF7));
  ASSERT_TRUE(Told(drive, "auto"));
  const Bytes reply = client.Ask(kReadMeter, 5);
  ASSERT_EQ(reply.size(), 5U);
  EXPECT_GT(reply[0], 0);  // the drive starts within earshot
}

TEST(DrivesimRigPort, ClientsComeAndGo) {
  DriveProcess drive({"--rig", "FT840", "--log", "log"});
  ASSERT_TRUE(Told(drive, "smeter 1"));
  for (int i = 0; i < 30; ++i) {
    const Client client(drive.File("com1"));
    ASSERT_THAT(client.Ask(kReadMeter, 5), ElementsAre(1, 1, 1, 1, 0xF7)) << i;
  }
}

TEST(DrivesimRigPort, IncompleteCommandIsForgotten) {
  DriveProcess drive({"--rig", "FT840", "--log", "log"});
  ASSERT_TRUE(Told(drive, "smeter 1"));
  const Client client(drive.File("com1"));
  client.Send({0x12, 0x34, 0x56});
  EXPECT_TRUE(Eventually([&] {
    return ReadFile(drive.File("log")).find("rx 12 34 56  incomplete, forgotten\n") != std::string::npos;
  }));
  EXPECT_THAT(client.Ask(kReadMeter, 5), ElementsAre(1, 1, 1, 1, 0xF7));
}

TEST(DrivesimRigPort, LogHasALineForEachCommand) {
  DriveProcess drive({"--rig", "FT840", "--log", "log"});
  ASSERT_TRUE(Told(drive, "smeter 18"));
  const Client client(drive.File("com1"));
  client.Send({0, 0, 0, 2, 0x0C});
  client.Ask(kReadMeter, 5);
  // Each line is in the file before the reply is on the wire.
  const std::regex lines(R"(\d+\.\d{3} -- control: smeter 18\n)"
                         R"(\d+\.\d{3} rx 00 00 00 02 0C  set mode CW\n)"
                         R"(\d+\.\d{3} rx 00 00 00 00 F7  read meter\n)"
                         R"(\d+\.\d{3} tx 12 12 12 12 F7  reply\n)");
  const std::string log = ReadFile(drive.File("log"));
  EXPECT_TRUE(std::regex_match(log, lines)) << log;
}

TEST(DrivesimRigPort, FaultsByTheScript) {
  DriveProcess drive({"--rig", "FT840", "--faults", "0:wrong"});
  const Client client(drive.File("com1"));
  const Bytes reply = client.Ask(kReadMeter, 5);
  ASSERT_EQ(reply.size(), 5U);
  EXPECT_EQ(reply[4], 0xEE);
}

TEST(DrivesimRigPort, FaultsThroughTheControlPipe) {
  DriveProcess drive({"--rig", "FT840", "--log", "log", "--control", "pipe"});
  const Client client(drive.File("com1"));
  const auto tell = [&](const std::string& line) {
    std::ofstream(drive.File("pipe")) << line << "\n";
    return Eventually(
        [&] { return ReadFile(drive.File("log")).find("-- control: " + line + "\n") != std::string::npos; });
  };
  ASSERT_TRUE(tell("smeter 3"));
  ASSERT_TRUE(tell("silence"));
  client.Send(kReadMeter);
  EXPECT_THAT(client.ReceiveFor(std::chrono::milliseconds(150)), ElementsAre());
  ASSERT_TRUE(tell("clear"));
  EXPECT_THAT(client.Ask(kReadMeter, 5), ElementsAre(3, 3, 3, 3, 0xF7));
  ASSERT_TRUE(tell("late"));
  const auto sent = std::chrono::steady_clock::now();
  EXPECT_THAT(client.Ask(kReadMeter, 5), ElementsAre(3, 3, 3, 3, 0xF7));
  EXPECT_GE(std::chrono::steady_clock::now() - sent, std::chrono::milliseconds(80));
}

TEST(DrivesimRigPort, VanishesAndReturns) {
  DriveProcess drive({"--rig", "FT840", "--log", "log"});
  ASSERT_TRUE(Told(drive, "smeter 9"));
  const Client client(drive.File("com1"));
  EXPECT_THAT(client.Ask(kReadMeter, 5), ElementsAre(9, 9, 9, 9, 0xF7));
  ASSERT_TRUE(Told(drive, "vanish"));
  EXPECT_TRUE(client.HungUp());
  EXPECT_TRUE(Eventually([&] { return !fs::is_symlink(drive.File("com1")); }));
  EXPECT_TRUE(fs::is_symlink(drive.File("gps")));
  ASSERT_TRUE(Told(drive, "clear vanish"));
  ASSERT_TRUE(Eventually([&] { return fs::exists(drive.File("com1")); }));
  EXPECT_TRUE(client.HungUp());  // the old one stays dead
  const Client again(drive.File("com1"));
  EXPECT_THAT(again.Ask(kReadMeter, 5), ElementsAre(9, 9, 9, 9, 0xF7));
  EXPECT_THAT(ReadFile(drive.File("log")), HasSubstr("-- com1 vanished\n"));
  EXPECT_THAT(ReadFile(drive.File("log")), HasSubstr("-- com1 returned\n"));
}

TEST(DrivesimRigPort, ReturnsByItselfAtTheEndOfTheFault) {
  DriveProcess drive({"--rig", "FT840", "--log", "log", "--faults", "0:vanish:0.5"});
  ASSERT_TRUE(Eventually(
      [&] { return ReadFile(drive.File("log")).find("-- com1 returned\n") != std::string::npos; }));
  EXPECT_EQ(Client(drive.File("com1")).Ask(kReadMeter, 5).size(), 5U);
}

}  // namespace
}  // namespace kestrum::drivesim
