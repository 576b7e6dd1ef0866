#include "ui/minimal_display.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "support/scripted_ports.h"

namespace kestrum::test {
namespace {

using ::testing::IsEmpty;

struct Dashboard : ::testing::Test {
  State state;
  Forms forms;
  ScriptedPorts outside;
  MinimalDisplay minimal{state, forms, outside.ports()};
  int log_clicks = 0;

  Form1& form1 = forms.form1;
  Form5& form5 = forms.form5;

  void SetUp() override {
    state.settings.RigModel = kFT840;
    state.settings.MinimalLeft = 1500;
    state.settings.MinimalTop = 750;
    state.settings.ProgressBarMode = true;
    form1.visible = true;
    form1.lblFreq.caption = " 3630 kHz";
    form1.lblRxBearing.caption = "090\xB0";
    form1.lblPelorus.caption = "180\xB0";
    form5.Picture1.width = 2050;
    form5.Picture1.height = 1050;
    form1.cmdLoggin.click = [this] {
      ++log_clicks;
      form1.cmdLoggin.caption = "&Logging(F3)";
    };
    minimal.Wire();
  }
  void ExpectNeedleAt(double x, double y) const {
    ASSERT_EQ(form5.Picture1.shapes.size(), 2U);
    ASSERT_EQ(form5.Picture1.shapes[1].kind, Shape::Kind::kLine);
    EXPECT_NEAR(form5.Picture1.shapes[1].x2, x, 1e-6);
    EXPECT_NEAR(form5.Picture1.shapes[1].y2, y, 1e-6);
  }
  void ExpectNoNeedle() const {
    ASSERT_EQ(form5.Picture1.shapes.size(), 2U);
    EXPECT_EQ(form5.Picture1.shapes[1].kind, Shape::Kind::kCircle);
    EXPECT_EQ(form5.Picture1.shapes[1].radius, 30);
  }
};

TEST_F(Dashboard, EnteringStartsLoggingAndSwitchesTheWindows) {
  forms.form2.visible = forms.form3.visible = forms.form4.visible = true;
  form1.mnuMinimalDisplay.click();
  EXPECT_TRUE(form1.mnuMinimalDisplay.checked);
  EXPECT_EQ(log_clicks, 1);
  EXPECT_FALSE(form1.visible);
  EXPECT_FALSE(forms.form2.visible);
  EXPECT_FALSE(forms.form3.visible);
  EXPECT_FALSE(forms.form4.visible);
  EXPECT_TRUE(form5.visible);
  EXPECT_TRUE(form5.loaded);
}

TEST_F(Dashboard, EnteringLeavesARunningLogRunning) {
  for (const char* caption : {"&Logging(F3)", "&LOGGING(f3)"}) {
    form1.mnuMinimalDisplay.checked = false;
    form1.cmdLoggin.caption = caption;
    minimal.Toggle();
    EXPECT_EQ(log_clicks, 0);
    EXPECT_TRUE(form5.visible);
  }
}

TEST_F(Dashboard, WindowsSwitchAlsoWhenLoggingIsRefused) {
  form1.cmdLoggin.click = [this] { outside.dialogs.Show("", "Set RX mode first", Icon::kInformation); };
  minimal.Toggle();
  EXPECT_EQ(outside.dialogs.messages.size(), 1U);
  EXPECT_TRUE(form1.mnuMinimalDisplay.checked);
  EXPECT_TRUE(form5.visible);
  EXPECT_FALSE(form1.visible);
}

TEST_F(Dashboard, NothingSwitchesWhenTheProgramEndsUnderTheRefusal) {
  form1.cmdLoggin.click = [this] { outside.program.End(); };
  minimal.Toggle();
  EXPECT_TRUE(form1.visible);
  EXPECT_FALSE(form5.visible);
}

TEST_F(Dashboard, SwitchedOffFt817IsRefused) {
  state.settings.RigModel = kFT817;
  for (const char* caption : {"&Off", "&OFF"}) {
    outside.dialogs.messages.clear();
    form1.cmdFT817OnOff.caption = caption;
    form1.mnuMinimalDisplay.click();
    EXPECT_FALSE(form1.mnuMinimalDisplay.checked);
    ASSERT_EQ(outside.dialogs.messages.size(), 1U);
    EXPECT_EQ(outside.dialogs.messages[0].title, "Kestrum Auto field strenght logger ");
    EXPECT_EQ(outside.dialogs.messages[0].text, "Switch FT817 first on");
    EXPECT_EQ(outside.dialogs.messages[0].icon, Icon::kInformation);
    EXPECT_EQ(log_clicks, 0);
    EXPECT_TRUE(form1.visible);
    EXPECT_FALSE(form5.visible);
    EXPECT_FALSE(form5.loaded);
  }
}

TEST_F(Dashboard, SwitchedOnFt817IsAccepted) {
  state.settings.RigModel = kFT817;
  form1.cmdFT817OnOff.caption = "&On";
  minimal.Toggle();
  EXPECT_TRUE(form5.visible);
}

TEST_F(Dashboard, PowerCaptionCountsForTheFt817Only) {
  state.settings.RigModel = kFT857;
  form1.cmdFT817OnOff.caption = "&Off";
  minimal.Toggle();
  EXPECT_TRUE(form5.visible);
  EXPECT_THAT(outside.dialogs.messages, IsEmpty());
}

TEST_F(Dashboard, WindowOpensWithItsTexts) {
  form5.Command1.caption = "&Main(F5) (/)";
  form5.ProgressBar1.value = 77;
  form1.lblDDEHeight.caption = "33";
  minimal.Toggle();
  EXPECT_EQ(form5.caption, "Kestrum Auto field strenght logger ");
  EXPECT_EQ(form5.Frame1.caption, "Kestrum");
  EXPECT_EQ(form5.Command1.caption, "&Main(F5) ");
  EXPECT_EQ(form5.ProgressBar1.maximum, 255);
  EXPECT_EQ(form5.ProgressBar1.value, 0);
  EXPECT_TRUE(form5.ProgressBar1.segments);
  EXPECT_EQ(form5.Label1[0].tool_tip, "Distance to TX");
  EXPECT_EQ(form5.Label1[0].caption, "Dist");
  EXPECT_EQ(form5.Label1[1].tool_tip, "Angle to TX");
  EXPECT_EQ(form5.Label1[1].caption, "Angle");
  EXPECT_EQ(form5.Label1[2].tool_tip, "Altitude in metres");
  EXPECT_EQ(form5.Label1[2].caption, "33");
  EXPECT_EQ(form5.Label1[3].caption, "3630 kHz");
  EXPECT_EQ(form5.Label1[4].caption, "RSSI");
  EXPECT_EQ(form5.left, 1500);
  EXPECT_EQ(form5.top, 750);
}

TEST_F(Dashboard, HeightWithoutAValueOpensWithQuestionMarks) {
  for (const char* caption : {"lblDDEHeight", "lblHeight1", "LBLDDEHEIGHT"}) {
    form1.mnuMinimalDisplay.checked = false;
    form1.lblDDEHeight.caption = caption;
    minimal.Toggle();
    EXPECT_EQ(form5.Label1[2].caption, "?? m");
  }
}

TEST_F(Dashboard, FrequencyOpensWithItsUnitOnce) {
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"3630", "3630 kHz"}, {" 7050 kHz", "7050 kHz"}, {"  145000.5  ", "145000.5 kHz"}};
  for (const auto& [caption, shown] : rows) {
    form1.mnuMinimalDisplay.checked = false;
    form1.lblFreq.caption = caption;
    minimal.Toggle();
    EXPECT_EQ(form5.Label1[3].caption, shown);
  }
}

TEST_F(Dashboard, BarTakesTheCommonStyle) {
  state.settings.ProgressBarMode = false;
  minimal.Toggle();
  EXPECT_FALSE(form5.ProgressBar1.segments);
  state.settings.ProgressBarMode = true;  // a click on the bar meanwhile
  form1.ProgressBar1.segments = false;
  minimal.Toggle();
  EXPECT_TRUE(form1.ProgressBar1.segments);
}

TEST_F(Dashboard, LeavingBringsTheMainWindowBack) {
  minimal.Toggle();
  form1.Picture1.needle = 1;
  forms.form2.visible = false;
  minimal.Toggle();
  EXPECT_FALSE(form1.mnuMinimalDisplay.checked);
  EXPECT_TRUE(form1.visible);
  EXPECT_FALSE(form5.visible);
  EXPECT_FALSE(form5.loaded);
  EXPECT_EQ(form1.Picture1.needle, 180);
  EXPECT_EQ(log_clicks, 1);  // logging goes on
  EXPECT_EQ(form1.cmdLoggin.caption, "&Logging(F3)");
}

TEST_F(Dashboard, LeavingWithoutAPelorusShowsNoNeedle) {
  for (const char* caption : {"???\xB0", ""}) {
    form1.lblPelorus.caption = caption;
    minimal.Toggle();
    form1.Picture1.needle = 1;
    minimal.Toggle();
    EXPECT_EQ(form1.Picture1.needle, std::nullopt);
  }
}

TEST_F(Dashboard, PositionIsKeptBetweenOpenings) {
  minimal.Toggle();
  form5.left = 300;
  form5.top = 4500;
  minimal.Toggle();
  EXPECT_EQ(state.settings.MinimalLeft, 300);
  EXPECT_EQ(state.settings.MinimalTop, 4500);
  form5.left = form5.top = 0;
  minimal.Toggle();
  EXPECT_EQ(form5.left, 300);
  EXPECT_EQ(form5.top, 4500);
}

TEST_F(Dashboard, ButtonF5AndClosingLeadBack) {
  const std::vector<Handler> ways = {[this] { form5.Command1.click(); },
                                     [this] { EXPECT_TRUE(form5.key_down(Key::kF5)); },
                                     [this] { form5.close(); }};
  for (const Handler& way : ways) {
    minimal.Toggle();
    ASSERT_TRUE(form5.visible);
    way();
    EXPECT_FALSE(form5.visible);
    EXPECT_TRUE(form1.visible);
    EXPECT_FALSE(form1.mnuMinimalDisplay.checked);
  }
}

TEST_F(Dashboard, OtherKeysPass) {
  minimal.Toggle();
  for (const Key key : {Key::kF1, Key::kAltF4, Key::kEnter}) EXPECT_FALSE(form5.key_down(key));
  EXPECT_TRUE(form5.visible);
}

TEST_F(Dashboard, RecordRefreshesLabelsBarAndNeedle) {
  minimal.Toggle();
  minimal.ShowRecord({"GPS Ok", "", "", ".56 km", "3 m", "090\xB0"}, 120, "S7+,  12.5 uV,  .25 mV/m");
  EXPECT_EQ(form5.Label1[0].caption, ".56 km");
  EXPECT_EQ(form5.Label1[1].caption,
            "090\xB0"
            "E ");
  EXPECT_EQ(form5.Label1[2].caption, "3 m");
  EXPECT_EQ(form5.Label1[3].caption, "3630 kHz");
  EXPECT_EQ(form5.Label1[4].caption, "S7+,  12.5 uV,  .25 mV/m");
  EXPECT_EQ(form5.ProgressBar1.value, 120);
  ExpectNeedleAt(1000, 850);  // the pelorus, 180
}

// Kept on purpose: a direction without digits counts as 0.
TEST_F(Dashboard, RecordWithoutABearingPointsToTheNorth) {
  for (const char* unknown : {"???\xB0", ""}) {
    form1.lblPelorus.caption = unknown;
    minimal.Toggle();
    minimal.ShowRecord({"No GPS", "", "", "", "", unknown}, 0, "S?, ??? uV, ??? mV/m");
    EXPECT_EQ(form5.Label1[1].caption, std::string(unknown) + "N ");
    EXPECT_EQ(form5.Label1[4].caption, "S?, ??? uV, ??? mV/m");
    ExpectNeedleAt(1000, 150);  // straight up
    minimal.Toggle();
  }
}

TEST_F(Dashboard, BarStaysInItsRange) {
  minimal.Toggle();
  for (const auto& [raw, value] : std::vector<std::pair<int, int>>{{-5, 0}, {0, 0}, {255, 255}, {300, 255}}) {
    minimal.ShowRecord(Site(), raw, "S1, 1 uV, 1 mV/m");
    EXPECT_EQ(form5.ProgressBar1.value, value);
  }
}

TEST_F(Dashboard, NeedleShowsTheBearingAfterActivation) {
  minimal.Toggle();
  ExpectNeedleAt(1700, 500);  // the bearing, 090
  minimal.ShowRecord(Site(), 1, "S1, 1 uV, 1 mV/m");
  ExpectNeedleAt(1000, 850);
  form5.activate();
  ExpectNeedleAt(1700, 500);
  form1.lblRxBearing.caption = "???\xB0";
  form5.activate();
  ExpectNeedleAt(1000, 150);
}

TEST_F(Dashboard, NeedleKeepsItsAngleWhenThePictureIsResized) {
  minimal.Toggle();
  minimal.ShowPelorusMinimized("270\xB0");
  form5.Picture1.width = 1050;
  form5.Picture1.resized();
  ExpectNeedleAt(150, 500);
  minimal.ShowPelorusMinimized("32768");
  form5.Picture1.resized();
  ExpectNoNeedle();
}

}  // namespace
}  // namespace kestrum::test
