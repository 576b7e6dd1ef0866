#include <gtest/gtest.h>

#include <algorithm>

#include "cat/rig_bench.h"

namespace kestrum::test {
namespace {

// A wired, connected panel that notes the ends of blocks and the band changes with the state they meet.
struct Entry : RigBench {
  Texts events;

  explicit Entry(int rig_model = kFT857) : RigBench(rig_model) {
    rig.block_ends = [this] { events.push_back("block of" + Describe()); };
    panel.band_crossed = [this] { events.push_back("crossed to" + Describe()); };
    panel.Wire();
    Connect();
    PowerButtonSays("&On");
    form.tmrMain.Start();
    form.ProgressBar1.value = 99;
  }
  std::string Describe() const {
    return " [" + form.txtFrequency.text + "] lblFreq [" + form.lblFreq.caption + "] " +
           (state.AboveHF ? "above" : "below") + " mode " + std::to_string(state.settings.RigMode) +
           (form.tmrMain.enabled ? " running" : "") + (form.cmdSetFreq.enabled ? " enabled" : "") + " sent " +
           std::to_string(Written().size());
  }
  void Type(const std::string& text) {
    form.txtFrequency.text = text;
    form.cmdSetFreq.click();
  }
  void ExpectReady() const {
    EXPECT_TRUE(form.cmdSetFreq.enabled);
    EXPECT_TRUE(form.tmrMain.enabled);
    EXPECT_EQ(form.ProgressBar1.value, 0);
  }
};

TEST(SetButton, TunesToTheTextOfTheBox) {
  Entry bench(kFT840);
  bench.Type("14200");
  EXPECT_EQ(bench.Written(), (Texts{Bytes({0, 0, 0x42, 0x01, 0x0A})}));
  EXPECT_EQ(bench.form.lblFreq.caption, " 14200 kHz");
  EXPECT_EQ(bench.form.txtFrequency.text, "14200");
  EXPECT_EQ(bench.events, (Texts{"block of [14200] lblFreq [ 3630 kHz] below mode 2 sent 0"}));
  bench.ExpectReady();
}

TEST(SetButton, SettingWhatIsSetEndsNoBlock) {
  Entry bench(kFT840);
  for (const char* text : {"3630", " 3630 kHz", "3630,0"}) bench.Type(text);
  EXPECT_EQ(bench.Written().size(), 3U);
  EXPECT_TRUE(bench.events.empty());
  bench.Type("3630.01");
  EXPECT_EQ(bench.events.size(), 1U);
}

TEST(SetButton, TakesACommaForThePoint) {
  Entry bench(kFT840);
  bench.Type("7050,5");
  EXPECT_EQ(bench.form.lblFreq.caption, " 7050.5 kHz");
  EXPECT_EQ(bench.Written(), (Texts{Bytes({0x50, 0x50, 0x70, 0x00, 0x0A})}));
}

TEST(SetButton, DoesNothingWithAnEmptyBox) {
  Entry bench(kFT840);
  bench.form.tmrMain.Stop();
  bench.Type("");
  EXPECT_TRUE(bench.Written().empty());
  EXPECT_EQ(bench.form.ProgressBar1.value, 99);
  EXPECT_FALSE(bench.form.tmrMain.enabled);
  EXPECT_EQ(bench.outside.beeper.beeps, 0);
}

TEST(SetButton, RestartsTheTimer) {
  Entry bench(kFT840);
  const unsigned before = bench.form.tmrMain.restarts;
  bench.Type("14200");
  EXPECT_EQ(bench.form.tmrMain.restarts, before + 1);
  bench.form.tmrMain.Stop();
  bench.Type("14201");
  EXPECT_TRUE(bench.form.tmrMain.enabled);
}

TEST(SetButton, StopsTimerAndButtonWhileItWorks) {
  Entry bench(kFT857);
  bench.Type("145000");
  ASSERT_EQ(bench.events.size(), 2U);
  for (const auto& event : bench.events) {
    EXPECT_EQ(event.find("running"), std::string::npos) << event;
    EXPECT_EQ(event.find("enabled"), std::string::npos) << event;
  }
  bench.ExpectReady();
}

TEST(SetButton, OutOfRangeOnlyBeeps) {
  Entry bench(kFT840);
  bench.Type("145000");
  EXPECT_EQ(bench.outside.beeper.beeps, 1);
  EXPECT_TRUE(bench.Written().empty());
  EXPECT_TRUE(bench.events.empty());
  EXPECT_FALSE(bench.state.AboveHF);
  EXPECT_EQ(bench.form.lblFreq.caption, " 3630 kHz");
  bench.ExpectReady();
}

TEST(SetButton, SwitchesAnFT817OnFirst) {
  Entry bench(kFT817);
  bench.PowerButtonSays("&Off");
  bench.Type("14200");
  EXPECT_EQ(bench.form.cmdFT817OnOff.caption, "&On");
  EXPECT_EQ(bench.Written(),
            (Texts{Bytes({0, 0, 0, 0, 0}), Bytes({0, 0, 0, 0, 15}), Bytes({0x00, 0x36, 0x30, 0x00, 0x01}),
                   Bytes({0, 0, 0, 0, 7}), Bytes({0x01, 0x42, 0x00, 0x00, 0x01})}));
  EXPECT_EQ(bench.outside.clock.sleeps_ms, (Numbers{50, 50, 50}));
  EXPECT_EQ(bench.form.lblFreq.caption, " 14200 kHz");
  bench.ExpectReady();
}

TEST(SetButton, LeavesAnFT817OnAlone) {
  Entry bench(kFT817);
  bench.Type("14200");
  EXPECT_EQ(bench.Written(), (Texts{Bytes({0x01, 0x42, 0x00, 0x00, 0x01})}));
}

TEST(SetButton, DoesNothingWhenTheFT817CannotBeSwitchedOn) {
  Entry bench(kFT817);
  bench.link.CloseCatPort();
  bench.PowerButtonSays("&Off");
  for (const char* text : {"14200", "145000", "35000"}) {
    bench.Type(text);
    EXPECT_EQ(bench.form.cmdFT817OnOff.caption, "&Off");
    EXPECT_EQ(bench.form.lblFreq.caption, " 3630 kHz");
    EXPECT_FALSE(bench.state.AboveHF);
    EXPECT_TRUE(bench.events.empty());
    EXPECT_EQ(bench.outside.beeper.beeps, 0);
    bench.ExpectReady();
  }
}

TEST(SetButton, OfTheOtherRigsDoesNotSwitchAnything) {
  Entry bench(kFT857);
  bench.PowerButtonSays("&Off");
  bench.Type("14200");
  EXPECT_EQ(bench.Written().size(), 1U);
  EXPECT_EQ(bench.form.cmdFT817OnOff.caption, "&Off");
}

TEST(BandChange, EndsTheBlockBeforeAnythingChanges) {
  Entry bench(kFT857);
  bench.Type("145000");
  EXPECT_EQ(bench.events, (Texts{"block of [145000] lblFreq [ 3630 kHz] below mode 2 sent 0",
                                 "crossed to [145000] lblFreq [ 3630 kHz] above mode 2 sent 0"}));
  EXPECT_TRUE(bench.state.AboveHF);
  EXPECT_EQ(bench.form.lblFreq.caption, " 145000 kHz");
  EXPECT_EQ(bench.form.txtFrequency.text, "145000");
  EXPECT_EQ(bench.Written(), (Texts{Bytes({0x00, 0x00, 0x50, 0x14, 0x0A})}));
}

TEST(BandChange, GoesBothWays) {
  Entry bench(kFT857);
  bench.Type("145000");
  bench.Type("146000");
  bench.events.clear();
  bench.Forget();
  bench.Type("7050");
  EXPECT_EQ(bench.events, (Texts{"block of [7050] lblFreq [ 146000 kHz] above mode 2 sent 0",
                                 "crossed to [7050] lblFreq [ 146000 kHz] below mode 2 sent 0"}));
  EXPECT_FALSE(bench.state.AboveHF);
}

TEST(BandChange, LiesJustAbove30000Khz) {
  Entry bench(kFT857);
  const auto crossings = [&bench] {
    return std::count_if(bench.events.begin(), bench.events.end(),
                         [](const std::string& event) { return event.starts_with("crossed"); });
  };
  bench.Type("30000");
  EXPECT_EQ(crossings(), 0);
  bench.Type("30000.01");
  EXPECT_EQ(crossings(), 1);
  EXPECT_TRUE(bench.state.AboveHF);
  bench.Type("30000,02");
  EXPECT_EQ(crossings(), 1);
  bench.Type("30000");
  EXPECT_EQ(crossings(), 2);
  EXPECT_FALSE(bench.state.AboveHF);
}

TEST(BandChange, IsMadeForTheRigsThatResendTheirFrameToo) {
  for (const int rig_model : {kFT847, kFT897}) {
    Entry bench(rig_model);
    bench.Type("145000");
    EXPECT_EQ(bench.events.size(), 2U) << rig_model;
    EXPECT_TRUE(bench.state.AboveHF) << rig_model;
    EXPECT_EQ(bench.Written(), (Texts{Bytes({0, 0, 0, 0, 0})})) << rig_model;
    EXPECT_EQ(bench.form.lblFreq.caption, " 145000 kHz") << rig_model;
  }
}

TEST(BandChange, IsMadeWithTheClosedPortToo) {
  Entry bench(kFT857);
  bench.link.CloseCatPort();
  bench.Type("145000");
  EXPECT_EQ(bench.events.size(), 2U);
  EXPECT_TRUE(bench.state.AboveHF);
  EXPECT_EQ(bench.Comment(), "Comport not open !");
}

TEST(BandChange, IsNotMadeForAFrequencyThatTheRigRefuses) {
  for (const char* text : {"60000", "600000", "35 GHz", "99999999"}) {
    Entry bench(kFT857);
    bench.Type(text);
    EXPECT_TRUE(bench.events.empty()) << text;
    EXPECT_FALSE(bench.state.AboveHF) << text;
    EXPECT_EQ(bench.outside.beeper.beeps, 1) << text;
    EXPECT_EQ(bench.form.txtFrequency.text, text);
  }
}

TEST(BandChange, FollowsTheSwitchingOnOfAnFT817) {
  Entry bench(kFT817);
  bench.PowerButtonSays("&Off");
  bench.Type("145000");
  EXPECT_EQ(bench.events, (Texts{"block of [145000] lblFreq [ 3630 kHz] below mode 2 sent 4",
                                 "crossed to [145000] lblFreq [ 3630 kHz] above mode 2 sent 4"}));
  EXPECT_EQ(bench.Written().back(), Bytes({0x14, 0x50, 0x00, 0x00, 0x01}));
}

TEST(BandChange, WorksWithoutListeners) {
  RigBench bench(kFT857);
  bench.panel.ApplyFrequency("145000");
  EXPECT_TRUE(bench.state.AboveHF);
}

TEST(StepButtons, AddAndSubtractTheStep) {
  Entry bench(kFT840);
  bench.form.txtFrequency.text = "3630 kHz";
  bench.form.cmdUp.click();
  EXPECT_EQ(bench.form.txtFrequency.text, " 3639 kHz");
  EXPECT_EQ(bench.form.lblFreq.caption, " 3639 kHz");
  bench.form.cmdDown.click();
  bench.form.cmdDown.click();
  EXPECT_EQ(bench.form.txtFrequency.text, " 3621 kHz");
  EXPECT_EQ(bench.Written(), (Texts{Bytes({0, 0x39, 0x36, 0, 0x0A}), Bytes({0, 0x30, 0x36, 0, 0x0A}),
                                    Bytes({0, 0x21, 0x36, 0, 0x0A})}));
  bench.ExpectReady();
}

TEST(StepButtons, StartFromZeroWithAnEmptyBox) {
  Entry bench(kFT840);
  bench.form.txtFrequency.text = "";
  bench.form.cmdUp.click();
  EXPECT_EQ(bench.form.txtFrequency.text, " 9 kHz");
  EXPECT_EQ(bench.outside.beeper.beeps, 1);
  bench.form.txtFrequency.text = "";
  bench.form.cmdDown.click();
  EXPECT_EQ(bench.form.txtFrequency.text, "-9 kHz");
  EXPECT_EQ(bench.outside.beeper.beeps, 2);
  EXPECT_TRUE(bench.Written().empty());
}

TEST(StepButtons, StepByTheDecimalTextOfTheStep) {
  Entry bench(kFT840);
  bench.state.settings.KHzStep = 0.1F;
  bench.form.txtFrequency.text = "7050,2";
  bench.form.cmdUp.click();
  EXPECT_EQ(bench.form.txtFrequency.text, " 7050.3 kHz");
  bench.form.cmdDown.click();
  bench.form.cmdDown.click();
  EXPECT_EQ(bench.form.txtFrequency.text, " 7050.1 kHz");
}

TEST(StepButtons, BeepAtTheEndOfTheRange) {
  Entry bench(kFT840);
  bench.form.txtFrequency.text = "29995 kHz";
  bench.form.cmdUp.click();
  EXPECT_EQ(bench.outside.beeper.beeps, 1);
  EXPECT_TRUE(bench.Written().empty());
  EXPECT_EQ(bench.form.lblFreq.caption, " 3630 kHz");
}

TEST(StepButtons, CrossTheBandWhileTheOldFrequencyIsInForce) {
  Entry bench(kFT857);
  bench.Type("29995");
  bench.events.clear();
  bench.form.cmdUp.click();
  EXPECT_EQ(bench.events, (Texts{"block of [ 30004 kHz] lblFreq [ 29995 kHz] below mode 2 sent 1",
                                 "crossed to [ 30004 kHz] lblFreq [ 29995 kHz] above mode 2 sent 1"}));
}

TEST(StepSlider, ShowsTheStepAtStart) {
  Entry bench;
  bench.panel.ShowStepAtStart();
  EXPECT_EQ(bench.form.sldkHzSteps.value, 9);
  EXPECT_EQ(bench.form.sldkHzSteps.minimum, 1);
  EXPECT_EQ(bench.form.sldkHzSteps.maximum, 100);
  EXPECT_EQ(bench.form.cmdUp.tool_tip, "Frequency up 9 kHz");
  EXPECT_EQ(bench.form.cmdDown.tool_tip, "Frequency down 9 kHz");
  EXPECT_EQ(bench.form.cmdUp.caption, "> 9");
  EXPECT_EQ(bench.form.cmdDown.caption, " 9 <");
}

TEST(StepSlider, SetsTheStepAndMisspellsDown) {
  Entry bench;
  bench.panel.ShowStepAtStart();
  bench.form.sldkHzSteps.SetValue(5);
  EXPECT_EQ(bench.state.settings.KHzStep, 5.0F);
  EXPECT_EQ(bench.form.cmdUp.tool_tip, "Frequency up 5 kHz");
  EXPECT_EQ(bench.form.cmdDown.tool_tip, "Freqency down 5 kHz");
  EXPECT_EQ(bench.form.cmdUp.caption, "> 5");
  EXPECT_EQ(bench.form.cmdDown.caption, " 5 <");
}

struct StepRow {
  float step;
  int slider;
  const char* up;
  const char* down;
};

TEST(StepSlider, ShowsAnOddStepWithoutChangingIt) {
  const StepRow rows[] = {
      {0.5F, 1, "> .5", " .5 <"},    {2.5F, 2, "> 2.5", " 2.5 <"}, {100, 100, "> 100", " 100 <"},
      {250, 100, "> 250", " 250 <"}, {-3, 1, ">-3", "-3 <"},       {0, 1, "> 0", " 0 <"},
  };
  for (const auto& row : rows) {
    Entry bench;
    bench.state.settings.KHzStep = row.step;
    bench.panel.ShowStepAtStart();
    EXPECT_EQ(bench.form.sldkHzSteps.value, row.slider);
    EXPECT_EQ(bench.form.cmdUp.caption, row.up);
    EXPECT_EQ(bench.form.cmdDown.caption, row.down);
    EXPECT_EQ(bench.state.settings.KHzStep, row.step);
  }
}

TEST(FrequencyBox, SelectsItsTextOnFocus) {
  Entry bench(kFT840);
  bench.form.txtFrequency.text = "3630 kHz";
  bench.form.txtFrequency.focus();
  EXPECT_EQ(bench.form.txtFrequency.selection_start, 0);
  EXPECT_EQ(bench.form.txtFrequency.selection_length, 8);
  EXPECT_EQ(bench.form.txtFrequency.selections, 1);
  EXPECT_TRUE(bench.Written().empty());
}

TEST(FrequencyBox, TunesOnEnterAndOnAClick) {
  Entry bench(kFT840);
  bench.form.txtFrequency.text = "7050";
  bench.form.txtFrequency.enter_released();
  EXPECT_EQ(bench.Written(), (Texts{Bytes({0, 0x50, 0x70, 0, 0x0A})}));
  bench.form.txtFrequency.text = "7051";
  bench.form.txtFrequency.click();
  EXPECT_EQ(bench.Written().size(), 2U);
  EXPECT_EQ(bench.Written().back(), Bytes({0, 0x51, 0x70, 0, 0x0A}));
}

}  // namespace
}  // namespace kestrum::test
