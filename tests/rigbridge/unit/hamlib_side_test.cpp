#include <fcntl.h>
#include <gtest/gtest.h>
#include <hamlib/rig.h>
#include <netinet/in.h>
#include <stdlib.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>

#include "hamlib_rig.h"
#include "port_check.h"
#include "rig_list.h"
#include "sets/pty_port.h"
#include "support/reason_of.h"
#include "support_process/child.h"
#include "support_process/daemons.h"
#include "support_process/files.h"

namespace kestrum::rigbridge {
namespace {

struct FaultRow {
  int error;
  PortKind port;
  const char* sentence;
};

TEST(HamlibFaults, EachIsASentence) {
  const std::vector<FaultRow> rows = {
      {-RIG_EIO, PortKind::kSerial, "The connection to the rig is lost: is the cable plugged in?"},
      {-RIG_EIO, PortKind::kNetwork, "The connection is lost: is the program still running?"},
      {-RIG_ETIMEOUT, PortKind::kSerial,
       "The rig does not answer: is it switched on, and are model and speed right?"},
      {-RIG_ETIMEOUT, PortKind::kNetwork, "The program does not answer: is it one that speaks to Hamlib?"},
      {-RIG_EPROTO, PortKind::kSerial, "The rig answers something else: are model and speed right?"},
      {-RIG_ERJCTED, PortKind::kSerial, "The rig answers something else: are model and speed right?"},
      {-RIG_EPROTO, PortKind::kNetwork,
       "The program answers something else: is it one that speaks to Hamlib?"},
      {-RIG_ENAVAIL, PortKind::kSerial, "Hamlib reads no such meter of this rig."},
      {-RIG_ENIMPL, PortKind::kNone, "Hamlib reads no such meter of this rig."},
      {-RIG_ECONF, PortKind::kSerial,
       "Hamlib does not take these settings: are model, port and speed right?"},
      {-RIG_EPOWER, PortKind::kSerial, "The rig is switched off."},
      {-RIG_EINTERNAL, PortKind::kSerial, "Hamlib fails with error 7."}};
  for (const FaultRow& row : rows) EXPECT_EQ(FaultOf(row.error, row.port).reason, row.sentence);
}

TEST(HamlibFaults, RefusalsForGoodAndForTheMoment) {
  EXPECT_FALSE(RefusalOf(RIG_OK).has_value());
  EXPECT_TRUE(RefusalOf(-RIG_ENAVAIL)->for_good);
  EXPECT_TRUE(RefusalOf(-RIG_ENIMPL)->for_good);
  for (const int error : {RIG_EINVAL, RIG_ERJCTED, RIG_ETIMEOUT, RIG_EIO, RIG_EPOWER, RIG_EINTERNAL}) {
    ASSERT_TRUE(RefusalOf(-error).has_value()) << error;
    EXPECT_FALSE(RefusalOf(-error)->for_good) << error;
    EXPECT_NE(RefusalOf(-error)->reason, "") << error;
  }
}

class RigListTest : public testing::Test {
 protected:
  static const std::vector<RigModel>& Rigs() {
    static const std::vector<RigModel> rigs = ListRigs();
    return rigs;
  }
};

TEST_F(RigListTest, KnowsHamlibsRigs) {
  EXPECT_GE(Rigs().size(), 200U);
  const RigModel* ft817 = RigOf(Rigs(), 1020);
  ASSERT_NE(ft817, nullptr);
  EXPECT_EQ(ft817->FullName(), "Yaesu FT-817");
  EXPECT_EQ(ft817->port, PortKind::kSerial);
  EXPECT_TRUE(ft817->has_meter);
  EXPECT_EQ(RigOf(Rigs(), 1)->port, PortKind::kNone);
  EXPECT_EQ(RigOf(Rigs(), 2)->port, PortKind::kNetwork);
  EXPECT_EQ(RigOf(Rigs(), 2)->FullName(), "Hamlib NET rigctl");
  EXPECT_EQ(RigOf(Rigs(), 0), nullptr);
}

TEST_F(RigListTest, SearchFindsNumberMakerAndModel) {
  struct Row {
    const char* search;
    bool found;
  };
  const RigModel& ft817 = *RigOf(Rigs(), 1020);
  for (const Row& row : {Row{"", true}, Row{"yaesu", true}, Row{"817", true}, Row{"ft-817 YAESU", true},
                         Row{"1020", true}, Row{"icom", false}, Row{"yaesu 857", false}, Row{" ", true}}) {
    EXPECT_EQ(Matches(ft817, row.search), row.found) << row.search;
  }
}

TEST_F(RigListTest, ListHasALineForEachRig) {
  const std::string text = ListText(Rigs());
  EXPECT_EQ(static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')), Rigs().size() + 1);
  EXPECT_NE(text.find("   1020  Yaesu FT-817                              Stable\n"), std::string::npos);
}

TEST(ParseHost, HostAndPort) {
  struct Row {
    const char* text;
    const char* host;
    const char* port;
  };
  for (const Row& row : {Row{"localhost:7356", "localhost", "7356"}, Row{"shack", "shack", "4532"},
                         Row{"192.168.1.5:4532", "192.168.1.5", "4532"}, Row{"[::1]:7356", "::1", "7356"},
                         Row{"[::1]", "::1", "4532"}, Row{":7356", "localhost", "7356"},
                         Row{"", "localhost", "4532"}, Row{"shack:", "shack", "4532"}}) {
    const HostAndPort parsed = ParseHost(row.text);
    EXPECT_EQ(parsed.host, row.host) << row.text;
    EXPECT_EQ(parsed.port, row.port) << row.text;
  }
}

TEST(CheckHost, SomebodyOrNobodyListens) {
  const std::string place = "127.0.0.1:" + std::to_string(process::FreePort());
  EXPECT_EQ(CheckHost(place, 3).fault().reason,
            "Nobody listens at " + place + ": is the program running, and its remote control on?");
  const sets::UniqueFd listener(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  address.sin_port = htons(static_cast<std::uint16_t>(std::stoi(place.substr(10))));
  auto* const generic = reinterpret_cast<sockaddr*>(&address);
  ASSERT_EQ(::bind(listener.Get(), generic, sizeof address), 0);
  ASSERT_EQ(::listen(listener.Get(), 1), 0);
  EXPECT_TRUE(CheckHost(place, 3));
  EXPECT_NE(CheckHost("no.such.host.invalid:1", 3)
                .fault()
                .reason.find("The host no.such.host.invalid is not known"),
            std::string::npos);
}

class CheckSerialPortTest : public testing::Test {
 protected:
  process::Scratch scratch_;
};

TEST_F(CheckSerialPortTest, WhatIsNoPort) {
  EXPECT_EQ(CheckSerialPort("").fault().reason, "Choose the serial port of the rig.");
  const std::string missing = scratch_.File("ttyUSB0");
  EXPECT_EQ(CheckSerialPort(missing).fault().reason,
            "There is no port " + missing + ": is the cable plugged in?");
  process::WriteFile(missing, "text");
  EXPECT_EQ(CheckSerialPort(missing).fault().reason, missing + " is no serial port.");
  EXPECT_EQ(CheckSerialPort("/dev/null").fault().reason, "/dev/null is no serial port.");
}

TEST_F(CheckSerialPortTest, AFreePortAndOneInUse) {
  sets::PtyPort port(scratch_.File("com1"));
  ASSERT_TRUE(port.Open());
  EXPECT_TRUE(CheckSerialPort(port.Link().string()));
  process::Child other({{"sleep", "60"}, {}, {}});
  process::Child holder({{"sh", "-c", "echo open; exec sleep 60 <" + port.Device()}, {}, {}});
  ASSERT_EQ(holder.ReadLine(), "open");
  ASSERT_TRUE(process::Eventually([&] { return port.ClientPresent(); }));
  ASSERT_TRUE(process::Eventually([&] {
    return test::ReasonOf(CheckSerialPort(port.Device())) == "The port " + port.Device() +
                                                                 " is in use by sleep (process " +
                                                                 std::to_string(holder.pid()) + ").";
  }));
}

TEST_F(CheckSerialPortTest, PermissionIsExplained) {
  if (::getuid() != 0) {
    EXPECT_EQ(CheckSerialPort("/dev/tty0").fault().reason.find("No permission for /dev/tty0"), 0U);
    return;
  }
  // root may open everything, so the question is asked by somebody else.
  sets::PtyPort port(scratch_.File("com1"));
  ASSERT_TRUE(port.Open());
  std::filesystem::permissions(port.Device(), std::filesystem::perms(0600));
  const pid_t child = ::fork();
  if (child == 0) {
    const bool lowered = ::setgid(65534) == 0 && ::setuid(65534) == 0;
    const Outcome checked = CheckSerialPort(port.Device());
    const std::string sentence =
        "No permission for " + port.Device() +
        ": enter \"sudo usermod -aG dialout $USER\" once, then log out and in again.";
    ::_exit(lowered && !checked && checked.fault().reason == sentence ? 0 : 1);
  }
  int status = -1;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
}

TEST(HamlibRig, UnknownModelAndMissingPortAreFaults) {
  const std::vector<RigModel> rigs = ListRigs();
  HamlibRig rig(rigs);
  BridgeSettings settings;
  settings.model = 7777777;
  EXPECT_EQ(rig.Open(settings).fault().reason, "Hamlib knows no rig of the number 7777777.");
  settings.model = 1020;
  EXPECT_EQ(rig.Open(settings).fault().reason, "Choose the serial port of the rig.");
}

TEST(HamlibRig, DummyRigDoesEverything) {
  const std::vector<RigModel> rigs = ListRigs();
  HamlibRig rig(rigs);
  BridgeSettings settings;
  settings.model = 1;
  ASSERT_TRUE(rig.Open(settings));
  EXPECT_TRUE(rig.ReadMeter());
  EXPECT_FALSE(rig.SetFrequencyHz(14200000).has_value());
  EXPECT_EQ(rig.ReadFrequencyHz(), 14200000.0);
  EXPECT_FALSE(rig.SetMode(sets::Mode::kUsb).has_value());
  EXPECT_FALSE(rig.SetLock(true).has_value());
  EXPECT_FALSE(rig.SetPower(false).has_value());
  rig.Close();
  settings.meter.source = MeterSource::kRaw;
  ASSERT_TRUE(rig.Open(settings));
  EXPECT_TRUE(rig.ReadMeter());
}

}  // namespace
}  // namespace kestrum::rigbridge
