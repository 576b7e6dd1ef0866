#include "bridge_settings.h"

#include <gtest/gtest.h>

#include "common/fault_text.h"
#include "support/reason_of.h"

namespace kestrum::rigbridge {
namespace {

using sets::Model;

TEST(BridgeSettings, ConfIsWrittenAndReadBack) {
  EXPECT_EQ(ConfText({}),
            "model=0\ndevice=\nspeed=0\nact-as=FT840\nmeter=strength\nscale=default\noffset=0\nlink=com1\n");
  BridgeSettings settings;
  settings.model = 1020;
  settings.device = "/dev/serial/by-id/usb-1a86 port0";
  settings.speed = 38400;
  settings.act_as = Model::kFT817;
  settings.meter = {MeterSource::kRaw, LinearScale{-120.5, 0}, -3.25};
  settings.link = "com6";
  const std::string text = ConfText(settings);
  EXPECT_EQ(text,
            "model=1020\ndevice=/dev/serial/by-id/usb-1a86 port0\nspeed=38400\nact-as=FT817\nmeter=raw\n"
            "scale=linear:-120.5..0\noffset=-3.25\nlink=com6\n");
  const ParsedConf parsed = ParseConf(text);
  EXPECT_EQ(parsed.complaint, std::nullopt);
  EXPECT_EQ(ConfText(parsed.settings), text);
}

TEST(BridgeSettings, ConfIsReadLeniently) {
  const ParsedConf parsed =
      ParseConf("\xEF\xBB\xBF# the car\r\n; set\r\n\r\n model = 1 \r\nscale=linear:-100..+20\r\noffset=+1.5");
  EXPECT_EQ(parsed.complaint, std::nullopt);
  EXPECT_EQ(parsed.settings.model, 1);
  EXPECT_EQ(parsed.settings.meter.linear->high, 20);
  EXPECT_EQ(parsed.settings.meter.offset, 1.5);
}

struct BadLine {
  const char* line;
  const char* complaint;
};

TEST(BridgeSettings, BadLinesAreToldAndLeaveTheDefault) {
  const std::vector<BadLine> rows = {
      {"nonsense", "not a setting: \"nonsense\""},
      {"colour=red", "unknown setting \"colour\""},
      {"model=FT817", "model wants the number of a rig in rigbridge --list, not \"FT817\""},
      {"model=-1", "model wants the number of a rig in rigbridge --list, not \"-1\""},
      {"model=999999999999", "model wants the number of a rig in rigbridge --list, not \"999999999999\""},
      {"device=a\tb", "device wants a serial port or host:port, not \"a?b\""},
      {"speed=fast", "speed wants baud, or 0 for the rig's default, not \"fast\""},
      {"act-as=FT847", "act-as wants FT840 or FT817, not \"FT847\""},
      {"meter=s", "meter wants strength or raw, not \"s\""},
      {"scale=linear:0..-120", "scale wants default or linear:LOW..HIGH, not \"linear:0..-120\""},
      {"scale=linear:0..0", "scale wants default or linear:LOW..HIGH, not \"linear:0..0\""},
      {"scale=linear:0", "scale wants default or linear:LOW..HIGH, not \"linear:0\""},
      {"scale=linear:nan..1", "scale wants default or linear:LOW..HIGH, not \"linear:nan..1\""},
      {"scale=-120..0", "scale wants default or linear:LOW..HIGH, not \"-120..0\""},
      {"offset=x", "offset wants dB, not \"x\""},
      {"offset=inf", "offset wants dB, not \"inf\""},
      {"link=com7", "link wants com1 to com6, not \"com7\""},
      {"link=../com1", "link wants com1 to com6, not \"../com1\""},
      {"0123456789012345678901234567890123456789012345",
       "not a setting: \"0123456789012345678901234567890123456789...\""}};
  for (const BadLine& row : rows) {
    const ParsedConf parsed = ParseConf(std::string("\n") + row.line + "\noffset=2\nworse\n");
    ASSERT_TRUE(parsed.complaint) << row.complaint;
    EXPECT_EQ(TextOf(*parsed.complaint), std::string("rigbridge.conf line 2: ") + row.complaint);
    BridgeSettings expected;
    expected.meter.offset = 2;
    EXPECT_EQ(ConfText(parsed.settings), ConfText(expected)) << row.line;
  }
}

TEST(BridgeSettings, BlanksAroundAValueDoNotCount) {
  BridgeSettings settings;
  EXPECT_TRUE(Set(settings, "device", " /dev/ttyUSB0\t"));
  EXPECT_EQ(settings.device, "/dev/ttyUSB0");
}

TEST(BridgeSettings, DeviceIsNotLongerThanHamlibTakes) {
  BridgeSettings settings;
  EXPECT_TRUE(Set(settings, "device", std::string(250, 'x')));
  EXPECT_FALSE(Set(settings, "device", std::string(251, 'x')));
}

TEST(Invocation, OptionsInBothForms) {
  const Result<Invocation> parsed = ParseCommandLine({"--model", "2", "--device=localhost:7356", "--scale",
                                                      "linear:-120..0", "--no-window", "--dir", "/tmp/x"});
  ASSERT_TRUE(parsed);
  const Invocation& invocation = parsed.value();
  using Fields = std::vector<std::pair<std::string, std::string>>;
  EXPECT_EQ(invocation.fields,
            (Fields{{"model", "2"}, {"device", "localhost:7356"}, {"scale", "linear:-120..0"}}));
  EXPECT_FALSE(invocation.window);
  EXPECT_EQ(invocation.directory, "/tmp/x");
  const Invocation plain = ParseCommandLine({}).value();
  EXPECT_TRUE(plain.window);
  EXPECT_FALSE(plain.list || plain.help || plain.version);
  EXPECT_TRUE(ParseCommandLine({"--list"}).value().list);
  EXPECT_TRUE(ParseCommandLine({"-h"}).value().help);
  EXPECT_TRUE(ParseCommandLine({"--version"}).value().version);
}

struct BadCall {
  std::vector<std::string> arguments;
  const char* complaint;
};

TEST(Invocation, WrongUseIsTold) {
  const std::vector<BadCall> rows = {
      {{"--model"}, "--model wants a value"},
      {{"--model", "x"}, "--model wants the number of a rig in rigbridge --list, not \"x\""},
      {{"--colour", "red"}, "unknown option \"--colour\""},
      {{"--colour=red"}, "unknown option \"--colour=red\""},
      {{"com1"}, "unknown option \"com1\""},
      {{"--"}, "unknown option \"--\""},
      {{"-"}, "unknown option \"-\""},
      {{""}, "unknown option \"\""},
      {{"--dir="}, "--dir wants a folder"},
      {{"--list=1"}, "unknown option \"--list=1\""}};
  for (const BadCall& row : rows)
    EXPECT_EQ(test::TextOfFault(ParseCommandLine(row.arguments)), row.complaint);
}

TEST(Invocation, HelpNamesEveryOption) {
  for (const char* name : {"--list", "--model", "--device", "--speed", "--act-as", "--meter", "--scale",
                           "--offset", "--link", "--dir", "--no-window", "--help", "--version"}) {
    EXPECT_NE(HelpText().find(name), std::string::npos) << name;
  }
  EXPECT_EQ(VersionText(), "rigbridge 1.02");
}

}  // namespace
}  // namespace kestrum::rigbridge
