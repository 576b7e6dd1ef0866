#include "logging/timing_window.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/scripted_ports.h"

namespace kestrum {
namespace {

class TimingWindowTest : public testing::Test {
 protected:
  TimingWindowTest() {
    state.settings.TimeIntervalMs = 5000;
    state.settings.DistanceIntervalKm = 1;
    form.tmrMain.interval_ms = 5000;
    timing.distance_mode_chosen = [this] { ++chosen; };
    timing.Wire();
  }

  void EnterTime(const std::string& text) {
    timing.Open();
    window.Text1.text = text;
    window.cmdOk.click();
  }
  void EnterDistance(const std::string& text) {
    timing.Open();
    window.Text2.text = text;
    window.cmdOk.click();
  }

  test::ScriptedPorts ports;
  State state;
  Forms forms;
  Form1& form = forms.form1;
  Form4& window = forms.form4;
  CatLink link{state, form, ports.ports()};
  RigCommands rig{state, form, ports.ports(), link};
  CalibrationTable table{state, forms};
  SMeter s_meter{state, forms, rig, table};
  Intervals intervals{state, form, ports.ports(), s_meter};
  TimingWindow timing{state, window, intervals};
  int chosen = 0;
};

TEST_F(TimingWindowTest, CaptionsAndToolTips) {
  EXPECT_EQ(window.caption, "Kestrum Auto field strenght logger ");
  EXPECT_EQ(window.Frame1.caption, "Timing mSec");
  EXPECT_EQ(window.Frame1.tool_tip, "Adjust saving data at time intervals");
  EXPECT_EQ(window.Frame2.caption, "Timing Distance");
  EXPECT_EQ(window.Frame2.tool_tip, "Adjust saving data at distance intervals ");
  EXPECT_EQ(window.Frame3.caption, "Type");
  EXPECT_EQ(window.Frame3.tool_tip, "Select saving data at time or distance intervals");
  EXPECT_EQ(window.Option1.caption, "Timing mSec");
  EXPECT_EQ(window.Option1.tool_tip, "Always press Ok butten to apply");
  EXPECT_EQ(window.Option2.caption, "Distance km");
  EXPECT_EQ(window.Option2.tool_tip, "Always press Ok button to apply");
  EXPECT_EQ(window.Text1.tool_tip,
            "Range 10 to 10000 mSec Average RSSI only possible if Timing > then 1100 mSec");
  EXPECT_EQ(window.Text2.tool_tip, "Range 0.1 to 5 km");
  EXPECT_EQ(window.cmdOk.tool_tip, "Press me to apply new values");
  EXPECT_FALSE(window.visible);
}

TEST_F(TimingWindowTest, OpensWithThePresentValues) {
  timing.Open();
  EXPECT_TRUE(window.visible);
  EXPECT_TRUE(window.Option1.checked);
  EXPECT_FALSE(window.Option2.checked);
  EXPECT_EQ(window.Text1.text, "5000");
  EXPECT_EQ(window.Text2.text, "1");
  EXPECT_EQ(window.Label1.caption, " mSec");
  EXPECT_EQ(window.Label2.caption, " km");
}

TEST_F(TimingWindowTest, OpensOnTheDistanceWhenThatIsChosen) {
  state.settings.LogByDistance = true;
  state.settings.DistanceIntervalKm = 0.5F;
  timing.Open();
  EXPECT_FALSE(window.Option1.checked);
  EXPECT_TRUE(window.Option2.checked);
  EXPECT_EQ(window.Text2.text, "0.5");
}

TEST_F(TimingWindowTest, ClosingHidesTheWindow) {
  timing.Open();
  window.close();
  EXPECT_FALSE(window.visible);
}

TEST_F(TimingWindowTest, OpeningAgainShowsTheValuesInForceInsteadOfAnError) {
  EnterTime("rubbish");
  EXPECT_EQ(window.Text1.text, "Error");
  timing.Open();
  EXPECT_EQ(window.Text1.text, "5000");
  EXPECT_EQ(window.Label1.caption, " mSec");
}

struct TimeRow {
  const char* entry;
  int interval_ms;  // 0 when it is refused
};

class TimeEntry : public TimingWindowTest, public testing::WithParamInterface<TimeRow> {};

TEST_P(TimeEntry, IsTakenOrRefused) {
  EnterTime(GetParam().entry);
  const int wanted = GetParam().interval_ms;
  if (wanted == 0) {
    EXPECT_EQ(state.settings.TimeIntervalMs, 5000);
    EXPECT_EQ(window.Text1.text, "Error");
    EXPECT_EQ(window.Text1.selection_start, 0);
    EXPECT_EQ(window.Text1.selection_length, 5);
    EXPECT_EQ(window.Text1.selections, 1);
    EXPECT_EQ(window.Label1.caption, "5000 mSec");
    EXPECT_EQ(form.lblInterval.caption, "5000 mSec");
    EXPECT_EQ(form.tmrMain.interval_ms, 5000);
  } else {
    EXPECT_EQ(state.settings.TimeIntervalMs, wanted);
    EXPECT_EQ(window.Text1.text, GetParam().entry);
    EXPECT_EQ(window.Text1.selections, 0);
    EXPECT_EQ(window.Label1.caption, std::to_string(wanted) + " mSec");
    EXPECT_EQ(form.lblInterval.caption, std::to_string(wanted) + " mSec");
    EXPECT_EQ(form.tmrMain.interval_ms, wanted);
  }
  EXPECT_EQ(window.Text2.text, "1");
  EXPECT_EQ(state.settings.DistanceIntervalKm, 1);
  EXPECT_TRUE(window.visible);
}

INSTANTIATE_TEST_SUITE_P(Rows, TimeEntry,
                         testing::Values(TimeRow{"10", 10}, TimeRow{"9.99", 0}, TimeRow{"9,99", 0},
                                         TimeRow{"9", 0}, TimeRow{"0", 0}, TimeRow{"-10", 0}, TimeRow{"", 0},
                                         TimeRow{"Error", 0}, TimeRow{"  250 ", 250}, TimeRow{"1500,9", 1500},
                                         TimeRow{"1500.9", 1500}, TimeRow{"10.5", 10}, TimeRow{"9999", 9999},
                                         TimeRow{"9999.9", 9999}, TimeRow{"9999,99", 9999},
                                         TimeRow{"10000", 0}, TimeRow{"10000.5", 0}, TimeRow{"99999", 0},
                                         TimeRow{"1e3", 0}, TimeRow{"2000 mSec", 2000}, TimeRow{"12abc", 12},
                                         TimeRow{"99999999999999999999", 0}));

struct DistanceRow {
  const char* entry;
  float interval_km;  // 0 when it is refused
  const char* label;
};

class DistanceEntry : public TimingWindowTest, public testing::WithParamInterface<DistanceRow> {};

TEST_P(DistanceEntry, IsTakenOrRefused) {
  EnterDistance(GetParam().entry);
  EXPECT_EQ(window.Label2.caption, GetParam().label);
  if (GetParam().interval_km == 0) {
    EXPECT_EQ(state.settings.DistanceIntervalKm, 1.0F);
    EXPECT_EQ(window.Text2.text, "Error");
    EXPECT_EQ(window.Text2.selection_start, 0);
    EXPECT_EQ(window.Text2.selection_length, 5);
    EXPECT_EQ(window.Text2.selections, 1);
  } else {
    EXPECT_EQ(state.settings.DistanceIntervalKm, GetParam().interval_km);
    EXPECT_EQ(window.Text2.text, GetParam().entry);
    EXPECT_EQ(window.Text2.selections, 0);
  }
  EXPECT_EQ(window.Text1.text, "5000");
  EXPECT_EQ(state.settings.TimeIntervalMs, 5000);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, DistanceEntry,
    testing::Values(DistanceRow{"0.1", 0.1F, "0.1 km"}, DistanceRow{".1", 0.1F, "0.1 km"},
                    DistanceRow{"0,1", 0.1F, "0.1 km"}, DistanceRow{"0.09", 0, "1 km"},
                    DistanceRow{"0.0999", 0, "1 km"}, DistanceRow{"0", 0, "1 km"},
                    DistanceRow{"-1", 0, "1 km"}, DistanceRow{"", 0, "1 km"}, DistanceRow{"x", 0, "1 km"},
                    DistanceRow{"0,5", 0.5F, "0.5 km"}, DistanceRow{"0.5", 0.5F, "0.5 km"},
                    DistanceRow{" 2 ", 2, "2 km"}, DistanceRow{"1.256", 1.26F, "1.26 km"},
                    DistanceRow{"0.125", 0.12F, "0.12 km"}, DistanceRow{"0.375", 0.38F, "0.38 km"},
                    DistanceRow{"5", 5, "5 km"}, DistanceRow{"5.00", 5, "5 km"},
                    DistanceRow{"5.01", 0, "1 km"}, DistanceRow{"5.001", 0, "1 km"},
                    DistanceRow{"5,01", 0, "1 km"}, DistanceRow{"50", 0, "1 km"}));

TEST_F(TimingWindowTest, BothEntriesAreJudgedByThemselves) {
  timing.Open();
  window.Text1.text = "10000";
  window.Text2.text = "2,5";
  window.cmdOk.click();
  EXPECT_EQ(window.Text1.text, "Error");
  EXPECT_EQ(state.settings.TimeIntervalMs, 5000);
  EXPECT_EQ(state.settings.DistanceIntervalKm, 2.5F);
  window.Text1.text = "20";
  window.Text2.text = "6";
  window.cmdOk.click();
  EXPECT_EQ(state.settings.TimeIntervalMs, 20);
  EXPECT_EQ(window.Text2.text, "Error");
  EXPECT_EQ(window.Label2.caption, "2.5 km");
}

TEST_F(TimingWindowTest, ARefusedEntryIsRefusedAgainUntilTheUserTypes) {
  EnterTime("5");
  window.cmdOk.click();
  EXPECT_EQ(window.Text1.text, "Error");
  EXPECT_EQ(window.Text1.selections, 2);
  EXPECT_EQ(state.settings.TimeIntervalMs, 5000);
}

TEST_F(TimingWindowTest, TheTypeIsTakenWhenItIsClickedAndTheTimerOnlyWithOk) {
  timing.Open();
  window.Option2.click();
  EXPECT_TRUE(state.settings.LogByDistance);
  EXPECT_EQ(form.tmrMain.interval_ms, 5000);
  window.cmdOk.click();
  EXPECT_EQ(form.tmrMain.interval_ms, 1100);
  window.Option1.click();
  EXPECT_FALSE(state.settings.LogByDistance);
  EXPECT_EQ(form.tmrMain.interval_ms, 1100);
  window.cmdOk.click();
  EXPECT_EQ(form.tmrMain.interval_ms, 5000);
}

TEST_F(TimingWindowTest, OnlyANewlyChosenDistanceModeForgetsTheReference) {
  timing.Open();
  window.Option2.click();
  EXPECT_EQ(chosen, 1);
  window.Option2.click();
  window.cmdOk.click();
  EXPECT_EQ(chosen, 1);
  window.Option1.click();
  EXPECT_EQ(chosen, 1);
  window.Option2.click();
  EXPECT_EQ(chosen, 2);
}

struct IntervalRow {
  bool by_distance;
  std::int16_t time_ms;
  int interval_ms;
};

class MainInterval : public TimingWindowTest, public testing::WithParamInterface<IntervalRow> {};

TEST_P(MainInterval, FollowsTheMode) {
  state.settings.LogByDistance = GetParam().by_distance;
  state.settings.TimeIntervalMs = GetParam().time_ms;
  intervals.ApplyInterval();
  EXPECT_EQ(form.tmrMain.interval_ms, GetParam().interval_ms);
}

INSTANTIATE_TEST_SUITE_P(Rows, MainInterval,
                         testing::Values(IntervalRow{false, 5000, 5000}, IntervalRow{false, 10, 10},
                                         IntervalRow{true, 5000, 1100}, IntervalRow{true, 10, 1100},
                                         // a file edited by hand must not make the timer spin
                                         IntervalRow{false, 0, 10}, IntervalRow{false, -5, 10},
                                         IntervalRow{false, 32767, 32767}));

TEST_F(TimingWindowTest, ARunningTimerCountsTheNewIntervalFromNow) {
  form.tmrMain.Start();
  const unsigned before = form.tmrMain.restarts;
  intervals.ApplyInterval();
  EXPECT_TRUE(form.tmrMain.enabled);
  EXPECT_GT(form.tmrMain.restarts, before);
}

TEST_F(TimingWindowTest, AStoppedTimerStaysStopped) {
  EnterTime("200");
  EXPECT_EQ(form.tmrMain.interval_ms, 200);
  EXPECT_FALSE(form.tmrMain.enabled);
  EXPECT_EQ(form.tmrMain.restarts, 0U);
}

TEST_F(TimingWindowTest, LabelsOfTheTimeMode) {
  intervals.ApplyAveraging();
  EXPECT_EQ(form.StatusBar1[0].text, "Get RSSI every 5000 mSec");
  EXPECT_EQ(form.StatusBar1[1].text, "Not Averaged");
  EXPECT_EQ(form.StatusBar1[1].tool_tip, "");
  EXPECT_EQ(form.lblIntervalHeading.caption, "Interval in mSec");
  EXPECT_EQ(form.lblInterval.caption, "5000 mSec");
  EXPECT_EQ(form.lblPrompt.tool_tip, "Gives indication of data fetch speed Menu > Timing (5000 mSec)");
}

struct DistanceLabelRow {
  float km;
  const char* label;
  const char* tool_tip;
};

class DistanceLabels : public TimingWindowTest, public testing::WithParamInterface<DistanceLabelRow> {};

TEST_P(DistanceLabels, ShowTheDistance) {
  state.settings.LogByDistance = true;
  state.settings.DistanceIntervalKm = GetParam().km;
  intervals.ApplyInterval();
  intervals.ApplyAveraging();
  EXPECT_EQ(form.StatusBar1[0].text, "Get RSSI every 1100 mSec");
  EXPECT_EQ(form.lblIntervalHeading.caption, "Interval in km");
  EXPECT_EQ(form.lblInterval.caption, GetParam().label);
  EXPECT_EQ(form.lblPrompt.tool_tip, GetParam().tool_tip);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, DistanceLabels,
    testing::Values(DistanceLabelRow{1, "1 km", "It Logges at 1 km intervals and 1100 mSec"},
                    DistanceLabelRow{0.5F, "0.5 km", "It Logges at 0.5 km intervals and 1100 mSec"},
                    DistanceLabelRow{0.1F, "0.1 km", "It Logges at 0.1 km intervals and 1100 mSec"},
                    DistanceLabelRow{2.25F, "2.25 km", "It Logges at 2.25 km intervals and 1100 mSec"},
                    DistanceLabelRow{1.2345F, "1.2345 km", "It Logges at 1.23 km intervals and 1100 mSec"},
                    DistanceLabelRow{5, "5 km", "It Logges at 5 km intervals and 1100 mSec"}));

TEST_F(TimingWindowTest, AveragingIsShownWithItsOwnInterval) {
  state.settings.AverageRSSI = true;
  intervals.ApplyAveraging();
  EXPECT_EQ(form.StatusBar1[1].text, "Averaged");
  EXPECT_EQ(form.StatusBar1[1].tool_tip, "Get RSSI every 300 mSec");
  EXPECT_TRUE(form.tmrAverageRSSI.enabled);
  EXPECT_TRUE(form.sldSquelch.visible);
  EXPECT_TRUE(ports.dialogs.messages.empty());
  state.settings.AverageRSSI = false;
  intervals.ApplyAveraging();
  EXPECT_EQ(form.StatusBar1[1].text, "Not Averaged");
  EXPECT_EQ(form.StatusBar1[1].tool_tip, "");
  EXPECT_FALSE(form.tmrAverageRSSI.enabled);
  EXPECT_FALSE(form.sldSquelch.visible);
}

struct AverageRow {
  std::int16_t time_ms;
  bool by_distance;
  bool stays_on;
};

class AverageLimit : public TimingWindowTest, public testing::WithParamInterface<AverageRow> {};

TEST_P(AverageLimit, NeedsElevenHundredMilliseconds) {
  state.settings.AverageRSSI = true;
  form.mnuAverageRSSI.checked = true;
  form.tmrAverageRSSI.Start();
  state.settings.TimeIntervalMs = GetParam().time_ms;
  state.settings.LogByDistance = GetParam().by_distance;
  intervals.ApplyInterval();
  intervals.ApplyAveraging();
  const bool on = GetParam().stays_on;
  EXPECT_EQ(state.settings.AverageRSSI, on);
  EXPECT_EQ(form.mnuAverageRSSI.checked, on);
  EXPECT_EQ(form.tmrAverageRSSI.enabled, on);
  EXPECT_EQ(form.sldSquelch.visible, on);
  EXPECT_EQ(form.StatusBar1[1].text, on ? "Averaged" : "Not Averaged");
  ASSERT_EQ(ports.dialogs.messages.size(), on ? 0U : 1U);
  if (on) return;
  EXPECT_EQ(ports.dialogs.messages[0].title, "Kestrum Auto field strenght logger ");
  EXPECT_EQ(ports.dialogs.messages[0].text, "Timer must be >=1100 mSec to average RSSI");
  EXPECT_EQ(ports.dialogs.messages[0].icon, Icon::kExclamation);
}

INSTANTIATE_TEST_SUITE_P(Rows, AverageLimit,
                         testing::Values(AverageRow{1000, false, false}, AverageRow{1099, false, false},
                                         AverageRow{10, false, false}, AverageRow{1100, false, true},
                                         AverageRow{9999, false, true}, AverageRow{100, true, true}));

TEST_F(TimingWindowTest, OkWithAShortIntervalSwitchesAveragingOff) {
  state.settings.AverageRSSI = true;
  EnterTime("1000");
  EXPECT_FALSE(state.settings.AverageRSSI);
  EXPECT_EQ(ports.dialogs.messages.size(), 1U);
  EXPECT_EQ(form.StatusBar1[0].text, "Get RSSI every 1000 mSec");
  EnterTime("900");
  EXPECT_EQ(ports.dialogs.messages.size(), 1U);
}

TEST_F(TimingWindowTest, TheLabelsBehindTheMessageAlreadyTellTheTruth) {
  state.settings.AverageRSSI = true;
  state.settings.TimeIntervalMs = 1000;
  intervals.ApplyInterval();
  ports.dialogs.while_open = [this] {
    EXPECT_EQ(form.StatusBar1[0].text, "Get RSSI every 1000 mSec");
    EXPECT_EQ(form.StatusBar1[1].text, "Not Averaged");
    EXPECT_EQ(form.lblInterval.caption, "1000 mSec");
  };
  intervals.ApplyAveraging();
  EXPECT_EQ(ports.dialogs.messages.size(), 1U);
}

TEST_F(TimingWindowTest, OpeningAnewShowsTheUnitsAlone) {
  EnterTime("2000");
  EXPECT_EQ(window.Label1.caption, "2000 mSec");
  EXPECT_EQ(window.Label2.caption, "1 km");
  timing.Open();
  EXPECT_EQ(window.Label1.caption, " mSec");
  EXPECT_EQ(window.Label2.caption, " km");
}

}  // namespace
}  // namespace kestrum
