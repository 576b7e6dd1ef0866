#include "cat/cat_link.h"

#include <gtest/gtest.h>

#include "cat/rig_bench.h"

namespace kestrum::test {
namespace {

TEST(CatLinkOpening, SetsPortThenSettingsThenOpens) {
  RigBench bench;
  bench.link.OpenCatPort();
  EXPECT_EQ(bench.outside.serial.events, (Texts{"port 1", "settings  9600,N,8,2", "open"}));
  EXPECT_TRUE(bench.link.IsOpen());
}

TEST(CatLinkOpening, ClosesAnOpenPortFirst) {
  RigBench bench;
  bench.Connect();
  bench.state.settings.ComPort = 4;
  bench.state.settings.BaudRate = 57600;
  bench.link.OpenCatPort();
  EXPECT_EQ(bench.outside.serial.events, (Texts{"close", "port 4", "settings  57600,N,8,2", "open"}));
}

TEST(CatLinkOpening, APortThatCannotBeOpenedStaysClosedWithoutAWord) {
  RigBench bench;
  bench.outside.serial.can_open = false;
  bench.outside.serial.trouble = Fault{"/dev/scripted1", "No permission; join the group dialout."};
  bench.link.OpenCatPort();
  EXPECT_FALSE(bench.link.IsOpen());
  EXPECT_EQ(bench.Comment(), "Comment");
  EXPECT_TRUE(bench.outside.dialogs.messages.empty());
  EXPECT_EQ(bench.form.StatusBar1[2].text, "Com1=9k6 FT817 ");
  EXPECT_EQ(bench.form.StatusBar1[2].tool_tip, "No permission; join the group dialout.");
}

TEST(CatLinkOpening, PortZeroOpensNothing) {
  RigBench bench;
  bench.state.settings.ComPort = 0;
  bench.link.OpenCatPort();
  EXPECT_EQ(bench.outside.serial.events, (Texts{"port 0", "settings  9600,N,8,2", "open"}));
  EXPECT_FALSE(bench.link.IsOpen());
  EXPECT_EQ(bench.form.StatusBar1[2].text, "No Comport");
}

TEST(CatLinkOpening, AnOddPortNumberCountsAsNoPort) {
  for (const int odd : {-1, 7, 99}) {
    RigBench bench;
    bench.state.settings.ComPort = odd;
    bench.link.OpenCatPort();
    EXPECT_EQ(bench.outside.serial.port, 0) << odd;
    EXPECT_EQ(bench.form.StatusBar1[2].text, "No Comport") << odd;
  }
}

TEST(CatLinkOpening, CloseCatPortCloses) {
  RigBench bench;
  bench.Connect();
  bench.link.CloseCatPort();
  EXPECT_FALSE(bench.link.IsOpen());
  EXPECT_EQ(bench.outside.serial.events, (Texts{"close"}));
}

struct PanelRow {
  int port;
  int baud;
  int rig_model;
  const char* text;
};

TEST(PortPanel, ShowsPortSpeedAndRig) {
  const PanelRow rows[] = {
      {1, 4800, 1, "Com1=4k8 FT817 "},   {2, 9600, 2, "Com2=9k6 FT840 "},   {3, 1200, 3, "Com3=1k2 FT847 "},
      {4, 19200, 4, "Com4=19k2 FT857 "}, {5, 38400, 5, "Com5=38k4 FT897 "}, {6, 57600, 1, "Com6=57k6 FT817 "},
      {1, 9000, 1, "Com1=9 FT817 "},     {1, 300, 1, "Com1=0k3 FT817 "},    {1, 9600, 0, "Com1=9k6 "},
      {1, 9600, 6, "Com1=9k6 "},         {0, 9600, 1, "No Comport"},
  };
  for (const auto& row : rows) {
    RigBench bench(row.rig_model);
    bench.state.settings.ComPort = row.port;
    bench.state.settings.BaudRate = row.baud;
    bench.link.ShowPortPanel();
    EXPECT_EQ(bench.form.StatusBar1[2].text, row.text);
  }
}

TEST(SendCatFrame, EchoesAndWritesFiveBytes) {
  RigBench bench;
  bench.Connect();
  bench.link.frame.P1 = "043";
  bench.link.frame.P2 = "097";
  bench.link.frame.Cmd = "001";
  bench.link.SendCatFrame();
  EXPECT_EQ(bench.Echo(), "TX Cmd=043,097,000,000,[001]");
  EXPECT_EQ(bench.Comment(), "Done");
  EXPECT_EQ(bench.Written(), (Texts{Bytes({0x43, 0x97, 0, 0, 1})}));
  EXPECT_TRUE(bench.outside.clock.sleeps_ms.empty());
}

TEST(SendCatFrame, TheFirstFrameIsZeros) {
  RigBench bench;
  bench.Connect();
  bench.link.SendCatFrame();
  EXPECT_EQ(bench.Echo(), "TX Cmd=000,000,000,000,[000]");
  EXPECT_EQ(bench.Written(), (Texts{Bytes({0, 0, 0, 0, 0})}));
}

TEST(SendCatFrame, EchoesTheThreeCharactersAsTheyStand) {
  RigBench bench;
  bench.Connect();
  bench.link.frame.P1 = "5";
  bench.link.frame.Cmd = "0101";
  bench.link.SendCatFrame();
  EXPECT_EQ(bench.Echo(), "TX Cmd=5  ,000,000,000,[010]");
}

TEST(SendCatFrame, WithTheClosedPortOnlyEchoes) {
  RigBench bench;
  bench.outside.serial.trouble = Fault{"/dev/scripted1", "The adapter is gone."};
  bench.link.frame.Cmd = "010";
  bench.link.SendCatFrame();
  EXPECT_EQ(bench.Echo(), "TX Cmd=000,000,000,000,[010]");
  EXPECT_EQ(bench.Comment(), "Comport not open !");
  EXPECT_TRUE(bench.Written().empty());
  EXPECT_EQ(bench.form.StatusBar1[2].tool_tip, "The adapter is gone.");
}

TEST(SendDirect, EchoesAfterThePrefixWithItsBlank) {
  RigBench bench;
  bench.Connect();
  bench.link.SendDirect({{1, 2, 3, 4, 255}}, "some text");
  EXPECT_EQ(bench.Echo(), "TX Cmd= some text");
  EXPECT_EQ(bench.Written(), (Texts{Bytes({1, 2, 3, 4, 255})}));
  EXPECT_EQ(bench.Comment(), "Comment");
}

struct ReplyRow {
  std::string received;
  std::array<std::uint8_t, 5> bytes;
  const char* echo;
};

TEST(Transact, EchoesWhatArrived) {
  const ReplyRow rows[] = {
      {Bytes({5}), {5, 0, 0, 0, 0}, "RX Cmd=  5, 0, 0, 0, [0]"},
      {Bytes({1, 2, 3, 4, 5}), {1, 2, 3, 4, 5}, "RX Cmd=  1, 2, 3, 4, [5]"},
      {Bytes({200, 0, 0, 0, 247}), {200, 0, 0, 0, 247}, "RX Cmd=  200, 0, 0, 0, [247]"},
      {Bytes({1, 2, 3}), {1, 2, 3, 0, 0}, "RX Cmd=  1, 2, 3, 0, [0]"},
      {Bytes({1, 2, 3, 4, 5, 6, 7}), {1, 2, 3, 4, 5}, "RX Cmd=  1, 2, 3, 4, [5]"},
      {"", {0, 0, 0, 0, 0}, "RX Cmd=  0, 0, 0, 0, [0]"},
      {Bytes({255, 254, 253, 252, 251}), {255, 254, 253, 252, 251}, "RX Cmd=  255, 254, 253, 252, [251]"},
  };
  for (const auto& row : rows) {
    RigBench bench;
    bench.Connect();
    bench.outside.serial.replies = {row.received};
    const auto reply = bench.link.Transact(231);
    EXPECT_EQ(reply.bytes, row.bytes) << row.echo;
    EXPECT_EQ(reply.nothing_received, row.received.empty()) << row.echo;
    EXPECT_EQ(bench.Echo(), row.echo);
    EXPECT_EQ(bench.Written(), (Texts{Bytes({0, 0, 0, 0, 231})}));
    EXPECT_EQ(bench.outside.clock.sleeps_ms, (Numbers{50}));
  }
}

TEST(Transact, ReadsOnceAndLeavesTheRestForTheNextReply) {
  RigBench bench;
  bench.Connect();
  bench.outside.serial.replies = {Bytes({1}), Bytes({2, 3})};
  EXPECT_EQ(bench.link.Transact(231).bytes, (std::array<std::uint8_t, 5>{1, 0, 0, 0, 0}));
  EXPECT_EQ(bench.link.Transact(247).bytes, (std::array<std::uint8_t, 5>{2, 3, 0, 0, 0}));
  EXPECT_EQ(bench.Written(), (Texts{Bytes({0, 0, 0, 0, 231}), Bytes({0, 0, 0, 0, 247})}));
}

}  // namespace
}  // namespace kestrum::test
