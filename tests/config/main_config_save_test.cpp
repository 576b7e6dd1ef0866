#include <gtest/gtest.h>

#include <limits>

#include "config/main_config_fixture.h"

namespace kestrum {
namespace {

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
