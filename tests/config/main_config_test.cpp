#include "config/main_config.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "support/scripted_ports.h"
#include "text/text_file.h"

namespace kestrum {
namespace {

using testing::ElementsAre;

constexpr const char* kCfgPath = "/car/Kestrum.cfg";

std::vector<std::string> GoodLines() {
  return {"Kestrum Auto field strenght logger V1.02",
          " 2  3  9600 ",
          " 250 ",
          " 5 ",
          " 3 ",
          " 40 ",
          " 1500  750.5 ",
          "-300  60 ",
          " 2.5 ",
          " .5 ",
          "#FALSE#",
          "#TRUE#",
          "#TRUE#",
          "#FALSE#",
          "#TRUE#",
          "5201.50N",
          "00415.25W",
          "12.5 m",
          " 7050.5 kHz",
          "/cal/own.cfg",
          "/logs/drive.log",
          "&On",
          "Loop, 5 W",
          "  Dipole  ",
          "Vertical\xB0"};
}

class MainConfigTest : public testing::Test {
 protected:
  MainConfigTest() {
    // What the desk looked like before the load.
    state.settings.MainLeft = 11;
    state.settings.MainTop = 12;
    state.settings.MinimalLeft = 13;
    state.settings.MinimalTop = 14;
    state.settings.OnOffCaption = "before";
    state.settings.CalibrationFiles = {"/car/Calibration1.cfg", "/car/Calibration2.cfg", "third"};
    for (std::size_t i = 0; i < state.settings.TxAntennas.size(); ++i) {
      state.settings.TxAntennas[i] = "old " + std::to_string(i);
    }
    form.cmdFT817OnOff.caption = "&Off";
    form.lblFreq.caption = "3630";
  }

  void Put(const std::vector<std::string>& lines) { ports.files.files[kCfgPath] = JoinLines(lines); }

  void ExpectGoodValues() {
    const Settings& s = state.settings;
    EXPECT_EQ(s.RigModel, 2);
    EXPECT_EQ(s.ComPort, 3);
    EXPECT_EQ(s.BaudRate, 9600);
    EXPECT_EQ(s.TimeIntervalMs, 250);
    EXPECT_EQ(s.RigMode, 5);
    EXPECT_EQ(s.FieldStrengthUnit, 3);
    EXPECT_EQ(s.SquelchLevel, 40);
    EXPECT_EQ(s.MainLeft, 1500.0F);
    EXPECT_EQ(s.MainTop, 750.5F);
    EXPECT_EQ(s.MinimalLeft, -300.0F);
    EXPECT_EQ(s.MinimalTop, 60.0F);
    EXPECT_EQ(s.KHzStep, 2.5F);
    EXPECT_EQ(s.DistanceIntervalKm, 0.5F);
    EXPECT_FALSE(s.ProgressBarMode);
    EXPECT_TRUE(s.ShowDDE);
    EXPECT_TRUE(s.LogByDistance);
    EXPECT_FALSE(s.AverageRSSI);
    EXPECT_TRUE(s.DialLock);
    EXPECT_EQ(s.TxLat, "5201.50N");
    EXPECT_EQ(s.TxLong, "00415.25W");
    EXPECT_EQ(s.TxHeight, "12.5 m");
    EXPECT_EQ(s.FrequencyText, " 7050.5 kHz");
    EXPECT_EQ(s.CalibrationFiles[2], "/cal/own.cfg");
    EXPECT_EQ(s.LogFileName, "/logs/drive.log");
    EXPECT_EQ(s.OnOffCaption, "&On");
    EXPECT_EQ(form.cmdFT817OnOff.caption, "&On");
    EXPECT_TRUE(ports.dialogs.messages.empty());
  }

  void ExpectDefaults() {
    const Settings& s = state.settings;
    EXPECT_EQ(s.RigModel, 1);
    EXPECT_EQ(s.ComPort, 1);
    EXPECT_EQ(s.BaudRate, 4800);
    EXPECT_EQ(s.TimeIntervalMs, 5000);
    EXPECT_EQ(s.RigMode, 2);
    EXPECT_EQ(s.FieldStrengthUnit, 1);
    EXPECT_EQ(s.SquelchLevel, 0);
    EXPECT_EQ(s.KHzStep, 9.0F);
    EXPECT_EQ(s.DistanceIntervalKm, 1.0F);
    EXPECT_TRUE(s.ProgressBarMode);
    EXPECT_TRUE(s.ShowDDE);
    EXPECT_FALSE(s.LogByDistance);
    EXPECT_FALSE(s.AverageRSSI);
    EXPECT_FALSE(s.DialLock);
    EXPECT_EQ(s.TxLat, "5157.00N");
    EXPECT_EQ(s.TxLong, "00532.00E");
    EXPECT_EQ(s.TxHeight, "? m");
    EXPECT_EQ(s.FrequencyText, "3630");
    EXPECT_THAT(s.CalibrationFiles,
                ElementsAre("/car/Calibration1.cfg", "/car/Calibration2.cfg", "/car/Calibration3.cfg"));
    EXPECT_EQ(s.LogFileName, "/car/RSSI-GPS.log");
    EXPECT_EQ(s.TxAntennas[0], "Antenna1, PWR 10W");
    // The desk stays.
    EXPECT_EQ(s.MainLeft, 11.0F);
    EXPECT_EQ(s.MainTop, 12.0F);
    EXPECT_EQ(s.MinimalLeft, 13.0F);
    EXPECT_EQ(s.MinimalTop, 14.0F);
    EXPECT_EQ(s.OnOffCaption, "before");
    for (std::size_t i = 1; i <= 20; ++i) EXPECT_EQ(s.TxAntennas[i], "old " + std::to_string(i));
  }

  void ExpectRejected() {
    ASSERT_EQ(ports.dialogs.messages.size(), 1U);
    EXPECT_EQ(ports.dialogs.messages[0].title, "Kestrum Auto field strenght logger ");
    EXPECT_EQ(ports.dialogs.messages[0].text,
              "LoadCfg\r\nInvalide version of /car/Kestrum.cfg\r\n\r\nI load default values now!");
    EXPECT_EQ(ports.dialogs.messages[0].icon, Icon::kExclamation);
    ExpectDefaults();
    EXPECT_EQ(form.cmdFT817OnOff.caption, "&Off");
    EXPECT_EQ(state.InfoRequest, 0);
  }

  test::ScriptedPorts ports;
  State state;
  Form1 form;
  MainConfig config{state, form, ports.ports()};
};

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
  const auto before = ports.files.files;
  config.LoadCfg();
  if (GetParam().accepted) {
    ExpectGoodValues();
  } else {
    ExpectRejected();
  }
  EXPECT_EQ(ports.files.files, before);
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

TEST_F(MainConfigTest, AnUnreadableFileIsRejected) {
  Put(GoodLines());
  ports.files.read_fault = "Permission denied";
  config.LoadCfg();
  ExpectRejected();
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

TEST_F(MainConfigTest, WritesTheFactoryFileByteForByte) {
  config.SetDefaults();
  state.settings.TxAntennas = {};
  state.settings.TxAntennas[0] = "Antenna1, PWR 10W";
  state.settings.MainLeft = 0;
  state.settings.MainTop = 0;
  state.settings.MinimalLeft = 0;
  state.settings.MinimalTop = 0;
  config.SaveCfg();
  EXPECT_EQ(ports.files.files[kCfgPath],
            "Kestrum Auto field strenght logger V1.02\r\n"
            " 1  1  4800 \r\n"
            " 5000 \r\n"
            " 2 \r\n"
            " 1 \r\n"
            " 0 \r\n"
            " 0  0 \r\n"
            " 0  0 \r\n"
            " 9 \r\n"
            " 1 \r\n"
            "#TRUE#\r\n"
            "#TRUE#\r\n"
            "#FALSE#\r\n"
            "#FALSE#\r\n"
            "#FALSE#\r\n"
            "5157.00N\r\n"
            "00532.00E\r\n"
            "? m\r\n"
            "3630\r\n"
            "/car/Calibration3.cfg\r\n"
            "/car/RSSI-GPS.log\r\n"
            "&Off\r\n"
            "Antenna1, PWR 10W\r\n");
  EXPECT_EQ(ports.files.replaces, 1);
  EXPECT_EQ(ports.files.files.size(), 1U);
  EXPECT_TRUE(ports.dialogs.messages.empty());
}

TEST_F(MainConfigTest, WhatWasLoadedIsSavedByteForByte) {
  Put(GoodLines());
  const std::string original = ports.files.files[kCfgPath];
  state.settings.TxAntennas = {};
  config.LoadCfg();
  form.lblFreq.caption = state.settings.FrequencyText;
  ports.files.files.clear();
  config.SaveCfg();
  EXPECT_EQ(ports.files.files[kCfgPath], original);
}

TEST_F(MainConfigTest, FrequencyAndPowerComeFromTheCaptions) {
  config.SetDefaults();
  state.settings.FrequencyText = "3630";
  state.settings.OnOffCaption = "&Off";
  form.lblFreq.caption = " 7050 kHz";
  form.cmdFT817OnOff.caption = "&On";
  config.SaveCfg();
  const auto lines = SplitLines(ports.files.files[kCfgPath]);
  EXPECT_EQ(lines[18], " 7050 kHz");
  EXPECT_EQ(lines[21], "&On");
  EXPECT_EQ(state.settings.FrequencyText, "3630");
}

TEST_F(MainConfigTest, GapsInTheAntennaListCloseUp) {
  config.SetDefaults();
  state.settings.TxAntennas = {};
  state.settings.TxAntennas[0] = "a";
  state.settings.TxAntennas[1] = "b";
  state.settings.TxAntennas[3] = "d";
  config.SaveCfg();
  EXPECT_EQ(SplitLines(ports.files.files[kCfgPath]).size(), 25U);
  state.settings.TxAntennas = {};
  config.LoadCfg();
  EXPECT_EQ(state.settings.TxAntennas[0], "a");
  EXPECT_EQ(state.settings.TxAntennas[1], "b");
  EXPECT_EQ(state.settings.TxAntennas[2], "d");
  EXPECT_EQ(state.settings.TxAntennas[3], "");
}

TEST_F(MainConfigTest, AllTwentyOneAntennasSurvive) {
  config.SetDefaults();
  config.SaveCfg();
  const auto lines = SplitLines(ports.files.files[kCfgPath]);
  ASSERT_EQ(lines.size(), 43U);
  EXPECT_EQ(lines[22], "Antenna1, PWR 10W");
  EXPECT_EQ(lines[42], "old 20");
}

TEST_F(MainConfigTest, SinglesComeBackAsTheyWere) {
  config.SetDefaults();
  for (const float value : {0.1F, 1.0F / 3, -0.000123F, 123456.7F, 16777216.0F, 0.0F, -1.5F}) {
    state.settings.MainLeft = value;
    state.settings.KHzStep = value;
    config.SaveCfg();
    const std::string first = ports.files.files[kCfgPath];
    config.LoadCfg();
    EXPECT_TRUE(ports.dialogs.messages.empty()) << value;
    config.SaveCfg();
    EXPECT_EQ(ports.files.files[kCfgPath], first) << value;
  }
}

TEST_F(MainConfigTest, APositionThatIsNoNumberDoesNotSpoilTheFile) {
  config.SetDefaults();
  state.settings.MainLeft = std::numeric_limits<float>::quiet_NaN();
  state.settings.MainTop = std::numeric_limits<float>::infinity();
  config.SaveCfg();
  config.LoadCfg();
  EXPECT_TRUE(ports.dialogs.messages.empty());
  EXPECT_EQ(state.settings.MainLeft, 0.0F);
  EXPECT_EQ(state.settings.MainTop, 0.0F);
}

TEST_F(MainConfigTest, ALineEndInsideATextDoesNotMoveTheOtherLines) {
  config.SetDefaults();
  state.settings.TxLat = "5157.00N\r\n";
  state.settings.LogFileName = "a\nb";
  config.SaveCfg();
  config.LoadCfg();
  EXPECT_TRUE(ports.dialogs.messages.empty());
  EXPECT_EQ(state.settings.TxLat, "5157.00N  ");
  EXPECT_EQ(state.settings.TxLong, "00532.00E");
  EXPECT_EQ(state.settings.LogFileName, "a b");
}

TEST_F(MainConfigTest, AFaultOfSavingIsToldOnce) {
  config.SetDefaults();
  ports.files.write_fault = "No space left on device";
  config.SaveCfg();
  ASSERT_EQ(ports.dialogs.messages.size(), 1U);
  EXPECT_EQ(ports.dialogs.messages[0].title, "Kestrum Auto field strenght logger V1.02");
  EXPECT_EQ(ports.dialogs.messages[0].text, "SaveCfg\r\nNo space left on device");
  EXPECT_EQ(ports.dialogs.messages[0].icon, Icon::kCritical);
  EXPECT_EQ(ports.files.replaces, 1);
}

TEST_F(MainConfigTest, TheSaveMenuBeepsAndSaves) {
  config.SetDefaults();
  config.mnuSavecfg_Click();
  EXPECT_EQ(ports.beeper.beeps, 1);
  EXPECT_EQ(ports.files.replaces, 1);
}

TEST_F(MainConfigTest, TheDefaultMenuChangesNothingOnNo) {
  Put(GoodLines());
  config.LoadCfg();
  config.mnuDefaultCfg_Click();
  ASSERT_EQ(ports.dialogs.questions.size(), 1U);
  EXPECT_EQ(ports.dialogs.questions[0].title, "Kestrum Auto field strenght logger ");
  EXPECT_EQ(ports.dialogs.questions[0].text, "Save DefaultCFG");
  EXPECT_EQ(ports.dialogs.questions[0].icon, Icon::kQuestion);
  ExpectGoodValues();
  EXPECT_EQ(ports.files.replaces, 0);
  EXPECT_FALSE(ports.program.Ended());
}

TEST_F(MainConfigTest, TheDefaultMenuSavesAndEndsOnYes) {
  ports.dialogs.yes_no = {true};
  bool ended_under_box = false;
  ports.dialogs.while_open = [&] { ended_under_box = ended_under_box || ports.program.Ended(); };
  config.mnuDefaultCfg_Click();
  ExpectDefaults();
  EXPECT_EQ(ports.files.replaces, 1);
  EXPECT_EQ(SplitLines(ports.files.files[kCfgPath])[1], " 1  1  4800 ");
  ASSERT_EQ(ports.dialogs.messages.size(), 1U);
  EXPECT_EQ(ports.dialogs.messages[0].title, "Kestrum Auto field strenght logger ");
  EXPECT_EQ(ports.dialogs.messages[0].text, "Restart me");
  EXPECT_EQ(ports.dialogs.messages[0].icon, Icon::kInformation);
  EXPECT_FALSE(ended_under_box);
  EXPECT_TRUE(ports.program.Ended());
  // No shutdown steps: nothing is sent to the rig and nothing is closed.
  EXPECT_TRUE(ports.serial.events.empty());
  EXPECT_TRUE(ports.links.events.empty());
}

TEST_F(MainConfigTest, TheDefaultMenuWritesTheFrequencyThatIsShown) {
  form.lblFreq.caption = " 7050 kHz";
  ports.dialogs.yes_no = {true};
  config.mnuDefaultCfg_Click();
  EXPECT_EQ(SplitLines(ports.files.files[kCfgPath])[18], " 7050 kHz");
}

TEST_F(MainConfigTest, NothingIsSavedAfterTheProgramHasEndedUnderTheQuestion) {
  ports.dialogs.yes_no = {true};
  ports.dialogs.while_open = [this] { ports.program.End(); };
  config.mnuDefaultCfg_Click();
  EXPECT_EQ(ports.files.replaces, 0);
  EXPECT_EQ(state.settings.RigModel, 0);
  EXPECT_TRUE(ports.dialogs.messages.empty());
}

}  // namespace
}  // namespace kestrum
