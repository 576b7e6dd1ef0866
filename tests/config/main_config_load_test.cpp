#include <gtest/gtest.h>

#include <limits>

#include "config/main_config_fixture.h"

namespace kestrum {
namespace {

TEST_F(MainConfigTest, DefaultsTouchNothingElse) {
  state.AboveHF = true;
  config.SetDefaults();
  ExpectDefaults();
  EXPECT_TRUE(state.AboveHF);
  EXPECT_EQ(state.InfoRequest, 0);
  EXPECT_EQ(form.cmdFT817OnOff.caption, "&Off");
}

TEST_F(MainConfigTest, AMissingFileGivesDefaultsAndAsksForTheInfoText) {
  config.LoadCfg();
  ExpectDefaults();
  EXPECT_EQ(state.InfoRequest, 1);
  EXPECT_TRUE(ports.dialogs.messages.empty());
  EXPECT_TRUE(ports.files.files.empty());
  EXPECT_EQ(form.cmdFT817OnOff.caption, "&Off");
}

TEST_F(MainConfigTest, LoadsEveryLine) {
  Put(GoodLines());
  config.LoadCfg();
  ExpectGoodValues();
  EXPECT_EQ(state.settings.TxAntennas[0], "Loop, 5 W");
  EXPECT_EQ(state.settings.TxAntennas[1], "  Dipole  ");
  EXPECT_EQ(state.settings.TxAntennas[2], "Vertical\xB0");
  EXPECT_EQ(state.settings.TxAntennas[3], "old 3");
  EXPECT_EQ(state.settings.CalibrationFiles[0], "/car/Calibration1.cfg");
  EXPECT_EQ(state.InfoRequest, 0);
  EXPECT_FALSE(state.AboveHF);
}

TEST_F(MainConfigTest, WithoutAntennaLinesTheEntriesStay) {
  auto lines = GoodLines();
  lines.resize(22);
  Put(lines);
  config.LoadCfg();
  ExpectGoodValues();
  for (std::size_t i = 0; i <= 20; ++i) EXPECT_EQ(state.settings.TxAntennas[i], "old " + std::to_string(i));
}

TEST_F(MainConfigTest, AntennaLinesBeyondTheTwentyFirstAreIgnored) {
  auto lines = GoodLines();
  lines.resize(22);
  for (int i = 0; i < 25; ++i) lines.push_back("new " + std::to_string(i));
  Put(lines);
  config.LoadCfg();
  ExpectGoodValues();
  EXPECT_EQ(state.settings.TxAntennas[0], "new 0");
  EXPECT_EQ(state.settings.TxAntennas[20], "new 20");
}

TEST_F(MainConfigTest, OtherLineEndsAreRead) {
  for (const char* line_end : {"\n", "\r"}) {
    std::string bytes;
    for (const auto& line : GoodLines()) bytes += line + line_end;
    ports.files.files[kCfgPath] = bytes;
    config.LoadCfg();
    ExpectGoodValues();
    EXPECT_EQ(state.settings.TxAntennas[2], "Vertical\xB0");
  }
}

struct VersionRow {
  const char* line;
  bool accepted;
};

class VersionLine : public MainConfigTest, public testing::WithParamInterface<VersionRow> {};

TEST_P(VersionLine, IsComparedWithoutCaseAndWithoutTrimming) {
  auto lines = GoodLines();
  lines[0] = GetParam().line;
  Put(lines);
  auto expected = ports.files.files;
  // The file stays for now, and a copy for good.
  if (!GetParam().accepted) expected["/car/Kestrum.cfg.bad"] = expected[kCfgPath];
  config.LoadCfg();
  if (GetParam().accepted) {
    ExpectGoodValues();
  } else {
    ExpectRejected();
  }
  EXPECT_EQ(ports.files.files, expected);
}

INSTANTIATE_TEST_SUITE_P(Rows, VersionLine,
                         testing::Values(VersionRow{"Kestrum Auto field strenght logger V1.02", true},
                                         VersionRow{"KESTRUM AUTO FIELD STRENGHT LOGGER v1.02", true},
                                         VersionRow{"kestrum auto field strenght logger V1.02", true},
                                         VersionRow{"Kestrum Auto field strenght logger V1.02 ", false},
                                         VersionRow{" Kestrum Auto field strenght logger V1.02", false},
                                         VersionRow{"Kestrum Auto field strength logger V1.02", false},
                                         VersionRow{"Kestrum Auto field strenght logger V1.01", false},
                                         VersionRow{"Kestrum Auto field strenght logger ", false},
                                         VersionRow{"", false}));

TEST_F(MainConfigTest, AnEmptyFileIsRejected) {
  ports.files.files[kCfgPath] = "";
  config.LoadCfg();
  ExpectRejected();
}

TEST_F(MainConfigTest, AnUnreadableFileIsToldWithTheReasonAndStaysAsItIs) {
  Put(GoodLines());
  const std::string before = ports.files.files[kCfgPath];
  ports.files.read_fault = "Permission denied";
  config.LoadCfg();
  ASSERT_EQ(ports.dialogs.messages.size(), 1U);
  EXPECT_EQ(ports.dialogs.messages[0].text, "LoadCfg\r\n/car/Kestrum.cfg\r\nPermission denied");
  EXPECT_EQ(ports.dialogs.messages[0].title, "Kestrum Auto field strenght logger ");
  EXPECT_EQ(ports.dialogs.messages[0].icon, Icon::kExclamation);
  ExpectDefaults();
  config.SaveAtEnd();
  EXPECT_EQ(ports.files.files[kCfgPath], before);
  // Whoever saves by hand wants it replaced.
  config.mnuSavecfg_Click();
  EXPECT_NE(ports.files.files[kCfgPath], before);
  state.settings.BaudRate = 57600;
  config.SaveAtEnd();
  EXPECT_THAT(ports.files.files[kCfgPath], testing::HasSubstr("57600"));
}

TEST_F(MainConfigTest, AUtf8MarkAtTheStartIsSkipped) {
  Put(GoodLines());
  ports.files.files[kCfgPath].insert(0, "\xEF\xBB\xBF");
  config.LoadCfg();
  ExpectGoodValues();
}

TEST_F(MainConfigTest, AFileOfMoreThanOneMegabyteIsRejectedAndMovedAsideByTheNextSave) {
  Put(GoodLines());
  ports.files.files[kCfgPath].append((1 << 20), '\n');
  const std::string before = ports.files.files[kCfgPath];
  config.LoadCfg();
  ExpectRejected();
  EXPECT_FALSE(ports.files.files.contains("/car/Kestrum.cfg.bad"));
  config.SaveAtEnd();
  EXPECT_EQ(ports.files.files["/car/Kestrum.cfg.bad"], before);
  EXPECT_LT(ports.files.files[kCfgPath].size(), 2000U);
}

TEST_F(MainConfigTest, AFileOfOneMegabyteIsLoadedAndNotMovedAside) {
  Put(GoodLines());
  std::string& bytes = ports.files.files[kCfgPath];
  bytes.append((1 << 20) - bytes.size(), '\n');
  config.LoadCfg();
  ExpectGoodValues();
  config.SaveAtEnd();
  EXPECT_FALSE(ports.files.files.contains("/car/Kestrum.cfg.bad"));
  EXPECT_LT(ports.files.files[kCfgPath].size(), 2000U);
}

TEST_F(MainConfigTest, ATextLongerThanItsFieldRejectsTheFile) {
  const std::vector<std::pair<std::size_t, std::size_t>> longest = {
      {15, 72}, {16, 72}, {17, 4096}, {18, 72}, {19, 4096}, {20, 4096}, {22, 4096}, {24, 4096}};
  for (const auto& [line, length] : longest) {
    SCOPED_TRACE(line);
    auto lines = GoodLines();
    lines[line] = std::string(length, 'x');
    Put(lines);
    ports.dialogs.messages.clear();
    config.LoadCfg();
    EXPECT_TRUE(ports.dialogs.messages.empty());
    lines[line] += "x";
    Put(lines);
    config.LoadCfg();
    EXPECT_EQ(ports.dialogs.messages.size(), 1U);
  }
}

TEST_F(MainConfigTest, UnderTheRejectionTheDefaultsAreAlreadyInForce) {
  ports.files.files[kCfgPath] = "";
  ports.dialogs.while_open = [this] { ExpectDefaults(); };
  config.LoadCfg();
  ExpectRejected();
}

TEST_F(MainConfigTest, AMissingLineRejectsTheFileHoweverManyAreLeft) {
  for (std::size_t count = 1; count < 22; ++count) {
    SCOPED_TRACE(count);
    auto lines = GoodLines();
    lines.resize(count);
    Put(lines);
    ports.dialogs.messages.clear();
    config.LoadCfg();
    ExpectRejected();
  }
}

TEST_F(MainConfigTest, AFileTornAtAnyByteIsLoadedWholeOrRejected) {
  auto lines = GoodLines();
  const std::string all = JoinLines(lines);
  lines.resize(22);
  const std::size_t fixed_part = JoinLines(lines).size() - 2;  // the line end may be missing
  const State before = state;
  for (std::size_t length = 0; length <= all.size(); ++length) {
    SCOPED_TRACE(length);
    state = before;
    form.cmdFT817OnOff.caption = "&Off";
    ports.dialogs.messages.clear();
    ports.files.files[kCfgPath] = all.substr(0, length);
    config.LoadCfg();
    if (length < fixed_part) {
      ExpectRejected();
    } else {
      ExpectGoodValues();
    }
  }
}

TEST_F(MainConfigTest, AnUnendedPowerCaptionCountsOnlyWhenItIsWhole) {
  auto lines = GoodLines();
  lines.resize(21);
  const std::string start = JoinLines(lines);
  for (const char* caption : {"&On", "&Off", "&off", "&ON"}) {
    ports.files.files[kCfgPath] = start + caption;
    config.LoadCfg();
    EXPECT_EQ(form.cmdFT817OnOff.caption, caption);
    EXPECT_TRUE(ports.dialogs.messages.empty());
  }
  ports.files.files[kCfgPath] = start + "&Of";
  config.LoadCfg();
  EXPECT_EQ(ports.dialogs.messages.size(), 1U);
}

TEST_F(MainConfigTest, AnyEndedPowerCaptionIsTaken) {
  auto lines = GoodLines();
  lines.resize(22);
  for (const char* caption : {"", "On", " &On "}) {
    lines[21] = caption;
    Put(lines);
    config.LoadCfg();
    EXPECT_EQ(form.cmdFT817OnOff.caption, caption);
    EXPECT_EQ(state.settings.OnOffCaption, caption);
  }
}

struct BadLineRow {
  std::size_t line;  // as numbered in the file, from 1
  const char* text;
};

class BadLine : public MainConfigTest, public testing::WithParamInterface<BadLineRow> {};

TEST_P(BadLine, RejectsTheFile) {
  auto lines = GoodLines();
  lines[GetParam().line - 1] = GetParam().text;
  Put(lines);
  config.LoadCfg();
  ExpectRejected();
}

INSTANTIATE_TEST_SUITE_P(
    Rows, BadLine,
    testing::Values(
        BadLineRow{2, ""}, BadLineRow{2, " 1  1 "}, BadLineRow{2, " 1  1  4800  7 "},
        BadLineRow{2, " 1  x  4800 "}, BadLineRow{2, " 1  1.5  4800 "}, BadLineRow{2, " 1  1  2147483648 "},
        BadLineRow{2, " -2147483649  1  4800 "}, BadLineRow{3, "abc"}, BadLineRow{3, "   "},
        BadLineRow{3, "32768"}, BadLineRow{3, "-32769"}, BadLineRow{3, "12a"}, BadLineRow{3, "1e3"},
        BadLineRow{3, "0x10"}, BadLineRow{3, "1 2"}, BadLineRow{3, "."}, BadLineRow{3, "-"},
        BadLineRow{3, "1-"}, BadLineRow{3, "--1"}, BadLineRow{3, "\t5"}, BadLineRow{3, "#TRUE#"},
        BadLineRow{3, "99999999999999999999999999"}, BadLineRow{4, "40000"}, BadLineRow{5, "1.5"},
        BadLineRow{6, "-40000"}, BadLineRow{7, "1"}, BadLineRow{7, "1 2 3"}, BadLineRow{7, "1 nan"},
        BadLineRow{8, "inf 1"}, BadLineRow{8, "1 1.2.3"}, BadLineRow{9, ""}, BadLineRow{9, "1E2"},
        BadLineRow{9, "500000000000000000000000000000000000000"}, BadLineRow{10, ".."},
        BadLineRow{11, "TRUE"}, BadLineRow{11, "#true#"}, BadLineRow{12, "#TRUE# "}, BadLineRow{13, ""},
        BadLineRow{14, "-1"}, BadLineRow{15, " #FALSE#"}, BadLineRow{15, "#FALSE"}));

struct NumberRow {
  const char* line;
  float first;
  float second;
};

class NumberForms : public MainConfigTest, public testing::WithParamInterface<NumberRow> {};

TEST_P(NumberForms, AreSplitAtBlanksOrCommas) {
  auto lines = GoodLines();
  lines[6] = GetParam().line;
  Put(lines);
  config.LoadCfg();
  EXPECT_TRUE(ports.dialogs.messages.empty());
  EXPECT_EQ(state.settings.MainLeft, GetParam().first);
  EXPECT_EQ(state.settings.MainTop, GetParam().second);
}

INSTANTIATE_TEST_SUITE_P(Rows, NumberForms,
                         testing::Values(NumberRow{" 1  2 ", 1, 2}, NumberRow{"1 2", 1, 2},
                                         NumberRow{"1,2", 1, 2}, NumberRow{" 1 , 2 ", 1, 2},
                                         NumberRow{"-.5 .25", -0.5F, 0.25F}, NumberRow{"+1 2.", 1, 2},
                                         NumberRow{"0.5,-0.25", 0.5F, -0.25F}));

TEST_F(MainConfigTest, TheLimitsOfTheWholeNumbersAreAccepted) {
  auto lines = GoodLines();
  lines[1] = " 2147483647 -2147483648  57600 ";
  lines[2] = " 32767 ";
  lines[3] = "-32768 ";
  lines[4] = " 2.0 ";
  Put(lines);
  config.LoadCfg();
  EXPECT_TRUE(ports.dialogs.messages.empty());
  EXPECT_EQ(state.settings.RigModel, 2147483647);
  EXPECT_EQ(state.settings.ComPort, std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(state.settings.BaudRate, 57600);
  EXPECT_EQ(state.settings.TimeIntervalMs, 32767);
  EXPECT_EQ(state.settings.RigMode, -32768);
  EXPECT_EQ(state.settings.FieldStrengthUnit, 2);
}

struct BandRow {
  const char* frequency;
  bool above_hf;
};

class BandOfFrequency : public MainConfigTest, public testing::WithParamInterface<BandRow> {};

TEST_P(BandOfFrequency, FollowsTheLeadingNumber) {
  auto lines = GoodLines();
  lines[18] = GetParam().frequency;
  Put(lines);
  state.AboveHF = !GetParam().above_hf;
  config.LoadCfg();
  EXPECT_EQ(state.AboveHF, GetParam().above_hf);
  EXPECT_EQ(state.settings.FrequencyText, GetParam().frequency);
}

INSTANTIATE_TEST_SUITE_P(Rows, BandOfFrequency,
                         testing::Values(BandRow{"30000", false}, BandRow{"30000.5", true},
                                         BandRow{"3630 kHz", false}, BandRow{" 145000 kHz", true},
                                         BandRow{"29999.99", false}, BandRow{"", false}, BandRow{"?", false},
                                         BandRow{"430000", true}));

}  // namespace
}  // namespace kestrum
