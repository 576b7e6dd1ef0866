#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>

#include "support/scripted_car.h"

// The steps of one measurement cycle, in their order.
namespace kestrum::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

struct SteppingCar : ScriptedCar {
  explicit SteppingCar(const Settings& wanted = UsualSettings()) {
    WriteConfig(wanted);
    Start();
    world.serial.written.clear();
  }
  void Tick() { form1.tmrMain.tick(); }
};

Settings ByDistance() {
  Settings settings = ScriptedCar::UsualSettings();
  settings.LogByDistance = true;
  return settings;
}

Settings SlowTicks() {
  Settings settings = ScriptedCar::UsualSettings();
  settings.TimeIntervalMs = 1100;
  return settings;
}

TEST(CycleSteps, ThePositionIsTakenAfterThePump) {
  SteppingCar car;
  car.SendGps("5158.00N", "00532.00E");
  car.world.pump.on_pump = [&car] { car.SendGps("5159.00N", "00533.00E", "A", "33", "27", "90"); };
  car.Tick();
  EXPECT_THAT(car.form1.lblLog.caption, HasSubstr("GPS Ok, 5159.00N, 00533.00E, "));
  EXPECT_EQ(car.app.gps.record.compass, "90");
}

TEST(CycleSteps, ARequestIsClearedBeforeItsPump) {
  SteppingCar car(SlowTicks());
  std::vector<bool> pending;
  car.world.pump.on_pump = [&] { pending.push_back(car.app.state.AverageRequest); };
  car.form1.mnuAverageRSSI.click();
  car.Tick();
  EXPECT_THAT(pending, ElementsAre(false, false));  // that of the request, that of the reading
}

TEST(CycleSteps, ARequestMadeInThePumpIsAppliedByTheNextCycle) {
  SteppingCar car(SlowTicks());
  car.form1.mnuAverageRSSI.click();
  car.world.pump.on_pump = [&car] {
    if (car.world.pump.pumps == 1) car.form1.mnuAverageRSSI.click();
  };
  car.world.pump.pumps = 0;
  car.Tick();
  EXPECT_TRUE(car.settings.AverageRSSI);
  car.Tick();
  EXPECT_FALSE(car.settings.AverageRSSI);
  EXPECT_FALSE(car.app.state.AverageRequest);
}

TEST(CycleSteps, SwitchingAveragingOnEmptiesTheCollection) {
  SteppingCar car(SlowTicks());
  car.app.s_meter.AverageRSSIValue(50, false);
  car.app.s_meter.AverageRSSIValue(128, false);
  car.form1.mnuAverageRSSI.click();
  car.Tick();
  EXPECT_THAT(car.form1.lblLog.caption, HasSubstr(", 0, S0, 0 uV, 0 mV/m"));
}

TEST(CycleSteps, SwitchingAveragingOffLeavesTheCollectionAlone) {
  Settings settings = SlowTicks();
  settings.AverageRSSI = true;
  SteppingCar car(settings);
  car.app.s_meter.AverageRSSIValue(50, false);
  car.form1.mnuAverageRSSI.click();
  car.Tick();
  EXPECT_EQ(car.app.s_meter.AveragedRssi(), 50);
}

TEST(CycleSteps, RecordAHundredReachesTheMinimalDisplayBeforeItsBlockIsWritten) {
  SteppingCar car;
  car.form1.mnuMinimalDisplay.click();
  for (int tick = 0; tick < 99; ++tick) car.Tick();
  car.SendGps("5158.00N", "00532.00E");
  std::string shown;
  car.world.files.on_write = [&](const std::string& path) {
    if (path == car.kLogPath) shown = car.app.forms.form5.Label1[0].caption;
  };
  car.Tick();
  EXPECT_EQ(shown, "1.86 km");
}

TEST(DistanceSteps, ADistanceEqualToTheIntervalRecords) {
  SteppingCar car(ByDistance());
  car.SendGps("5200.00N", "00532.00E");
  car.Tick();
  ASSERT_EQ(car.app.log.LogCount, 1);
  car.SendGps("5201.00N", "00532.00E");
  const float travelled = car.app.rx_site.DistanceFromReference();
  car.settings.DistanceIntervalKm = std::nextafter(travelled, 10.0F);
  car.Tick();
  EXPECT_EQ(car.app.log.LogCount, 1) << "a trifle less than the interval";
  car.settings.DistanceIntervalKm = travelled;
  car.Tick();
  EXPECT_EQ(car.app.log.LogCount, 2);
}

TEST(DistanceSteps, TheFixIsLookedAtBeforeTheIndicator) {
  SteppingCar car(ByDistance());
  car.SendGps("5200.00N", "00532.00E");
  car.form1.chkBeep.checked = true;
  std::vector<bool> fix_known;
  car.world.beeper.on_beep = [&] { fix_known.push_back(car.app.cycle.ReferenceValid()); };
  car.Tick();
  EXPECT_THAT(fix_known, ElementsAre(false, true));  // the cycle's own beep, that of the wait
}

// Whatever is chosen meanwhile, the wait ends with a fix, and one record is made then.
TEST(DistanceSteps, TheWaitForTheFirstFixGoesOnWhateverIsChosen) {
  struct Choice {
    const char* name;
    std::function<void(ScriptedCar&)> choose;
  };
  const std::vector<Choice> choices = {
      {"time mode", [](ScriptedCar& car) { car.app.forms.form4.Option1.click(); }},
      {"time mode with Ok",
       [](ScriptedCar& car) {
         car.form1.mnuTiming.click();
         car.app.forms.form4.Option1.click();
         car.app.forms.form4.cmdOk.click();
       }},
      {"distance mode anew",
       [](ScriptedCar& car) {
         car.app.forms.form4.Option1.click();
         car.app.forms.form4.Option2.click();
       }},
      {"averaging", [](ScriptedCar& car) { car.form1.mnuAverageRSSI.click(); }},
      {"logging", [](ScriptedCar& car) { car.form1.cmdLoggin.click(); }},
      {"another rig", [](ScriptedCar& car) { car.form1.mnuFT857.click(); }},
      {"another port", [](ScriptedCar& car) { car.form1.mnuCom3.click(); }},
      {"a frequency",
       [](ScriptedCar& car) {
         car.form1.txtFrequency.text = "7050";
         car.form1.cmdSetFreq.click();
       }},
      {"the minimal display", [](ScriptedCar& car) { car.form1.mnuMinimalDisplay.click(); }},
  };
  for (const Choice& choice : choices) {
    SteppingCar car(ByDistance());
    int turns = 0;
    car.world.pump.on_pump = [&] {
      ++turns;
      if (turns == 3) choice.choose(car);
      if (turns == 8) car.SendGps("5200.00N", "00532.00E");
    };
    car.Tick();
    EXPECT_EQ(turns, 9) << choice.name;
    EXPECT_EQ(car.app.log.LogCount, 1) << choice.name;
    EXPECT_TRUE(car.form1.tmrMain.enabled) << choice.name;
  }
}

}  // namespace
}  // namespace kestrum::test
