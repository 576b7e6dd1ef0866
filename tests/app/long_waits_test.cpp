#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <tuple>
#include <vector>

#include "support/scripted_car.h"

// Everything that lets events in from inside a handler, combined with everything that a user, a timer or a
// signal can do meanwhile.
namespace kestrum::test {
namespace {

struct Wait {
  std::string name;
  bool by_distance;  // the wait for the first fix
  std::function<void(ScriptedCar&)> enter;
};

struct Deed {
  std::string name;
  std::function<void(ScriptedCar&)> act;
};

// A box is modal: under it only timers and signals act.
bool IsBox(const Wait& wait) {
  return wait.name != "Cycle" && wait.name != "FirstFix";
}
bool ActsUnderABox(const Deed& deed) {
  return deed.name == "Nothing" || deed.name == "Tick" || deed.name == "AverageTick" || deed.name == "Signal";
}

const std::vector<Wait>& Waits() {
  static const std::vector<Wait> waits = {
      {"Cycle", false, [](ScriptedCar& car) { car.form1.tmrMain.tick(); }},
      {"FirstFix", true, [](ScriptedCar& car) { car.form1.tmrMain.tick(); }},
      {"AverageRefusal", false,
       [](ScriptedCar& car) {
         car.form1.mnuAverageRSSI.click();
         car.form1.tmrMain.tick();
       }},
      {"SiteDialogs", false, [](ScriptedCar& car) { car.form1.mnuTxLatLong.click(); }},
      {"LogFileDialog", false,
       [](ScriptedCar& car) {
         car.form1.tmrMain.tick();
         car.form1.mnuSaveLogfile.click();
       }},
      {"DiskFullBox", false,
       [](ScriptedCar& car) {
         car.form1.cmdLoggin.click();
         car.world.files.write_fault = "No space left on device";
         for (int n = 0; n < 100; ++n) car.form1.tmrMain.tick();
       }},
      {"MissingCalibration", false, [](ScriptedCar& car) { car.form1.mnuLoadConfig1.click(); }},
      {"DefaultsQuestion", false, [](ScriptedCar& car) { car.form1.mnuDefaultCfg.click(); }},
      {"AboutBox", false, [](ScriptedCar& car) { car.form1.mnuAbout.click(); }},
      {"SaveAsQuestion", false,
       [](ScriptedCar& car) {
         car.world.files.files["/car/there.cfg"] = "";
         car.world.dialogs.answers = {"/car/there.cfg"};
         car.app.forms.form3.mnuSaveAs.click();
       }},
      {"ExitQuestion", false, [](ScriptedCar& car) { car.app.ExitApp(); }},
  };
  return waits;
}

const std::vector<Deed>& Deeds() {
  static const std::vector<Deed> deeds = {
      {"Nothing", [](ScriptedCar&) {}},
      {"Tick", [](ScriptedCar& car) { car.form1.tmrMain.tick(); }},
      {"AverageTick", [](ScriptedCar& car) { car.form1.tmrAverageRSSI.tick(); }},
      {"Loggin", [](ScriptedCar& car) { car.form1.key_down(Key::kF3); }},
      {"SetFrequency",
       [](ScriptedCar& car) {
         car.form1.txtFrequency.text = "145000";
         car.form1.cmdSetFreq.click();
       }},
      {"Rig", [](ScriptedCar& car) { car.form1.mnuFT857.click(); }},
      {"Port", [](ScriptedCar& car) { car.form1.mnuCom2.click(); }},
      {"Power", [](ScriptedCar& car) { car.form1.cmdFT817OnOff.click(); }},
      {"Minimal", [](ScriptedCar& car) { car.form1.key_down(Key::kF5); }},
      {"Average", [](ScriptedCar& car) { car.form1.mnuAverageRSSI.click(); }},
      {"ByTime", [](ScriptedCar& car) { car.app.forms.form4.Option1.click(); }},
      {"ByDistance", [](ScriptedCar& car) { car.app.forms.form4.Option2.click(); }},
      {"Editor", [](ScriptedCar& car) { car.form1.mnuCalibration.click(); }},
      {"Load", [](ScriptedCar& car) { car.form1.mnuLoadConfig2.click(); }},
      {"Defaults",
       [](ScriptedCar& car) {
         car.world.dialogs.yes_no = {true};
         car.form1.mnuDefaultCfg.click();
       }},
      {"Exit", [](ScriptedCar& car) { car.form1.key_down(Key::kAltF4); }},
      {"Signal", [](ScriptedCar& car) { car.app.ExitWithoutAsking(); }},
  };
  return deeds;
}

class LongWaits : public ::testing::TestWithParam<std::tuple<std::size_t, std::size_t>> {
 protected:
  const Wait& wait() const { return Waits()[std::get<0>(GetParam())]; }
  const Deed& deed() const { return Deeds()[std::get<1>(GetParam())]; }
};

// What must not change any more once the program has ended.
struct Traces {
  std::size_t bytes_written;
  int config_writes;
  int log_writes;
  int records;
  std::string spinner;

  bool operator==(const Traces&) const = default;
};

Traces TracesOf(const ScriptedCar& car) {
  return {car.world.serial.written.size(), car.world.files.replaces, car.world.files.appends,
          car.app.log.LogCount, car.form1.lblPrompt.caption};
}

TEST_P(LongWaits, NeverNestACycleAndNothingRunsAfterTheEnd) {
  ScriptedCar car;
  Settings settings = ScriptedCar::UsualSettings();
  settings.RigModel = kFT817;
  settings.LogByDistance = wait().by_distance;
  car.WriteConfig(settings, "&On");
  car.Start();
  int depth = 0;
  int entries = 0;
  bool ended_before = false;
  Traces at_end{};
  const auto meanwhile = [&] {
    if (car.world.program.Ended()) return;
    if (depth > 0 || ++entries > 3) {
      // Boxes of the deed itself, and later turns of a wait: let the fix come so that the wait can end.
      car.SendGps("5200.00N", "00532.00E");
      return;
    }
    ++depth;
    const std::string spinner = car.form1.lblPrompt.caption;
    deed().act(car);
    if (!IsBox(wait()) && deed().name == "Tick") {
      EXPECT_EQ(car.form1.lblPrompt.caption, spinner);
    }
    --depth;
    if (!ended_before && car.world.program.Ended()) {
      ended_before = true;
      at_end = TracesOf(car);
    }
  };
  car.world.pump.on_pump = meanwhile;
  car.world.dialogs.while_open = meanwhile;

  wait().enter(car);

  EXPECT_GT(entries, 0);
  const bool ends = deed().name == "Exit" || deed().name == "Signal" || deed().name == "Defaults" ||
                    wait().name == "ExitQuestion";
  EXPECT_EQ(car.world.program.Ended(), ends);
  if (ended_before) {
    EXPECT_EQ(TracesOf(car), at_end);
  }
  if (ends) {
    const Traces after = TracesOf(car);
    car.RunFor(std::chrono::seconds(30));
    car.form1.tmrMain.tick();
    EXPECT_EQ(TracesOf(car), after);
    return;
  }
  // The program lives on: the heartbeat is either there or stopped because the set was switched off.
  EXPECT_EQ(car.form1.tmrMain.enabled, !(car.settings.RigModel == kFT817 && PowerIsOff(car.form1)));
}

std::vector<std::tuple<std::size_t, std::size_t>> AllPairs() {
  std::vector<std::tuple<std::size_t, std::size_t>> pairs;
  for (std::size_t wait = 0; wait < Waits().size(); ++wait) {
    for (std::size_t deed = 0; deed < Deeds().size(); ++deed) {
      if (!IsBox(Waits()[wait]) || ActsUnderABox(Deeds()[deed])) pairs.emplace_back(wait, deed);
    }
  }
  return pairs;
}

INSTANTIATE_TEST_SUITE_P(Every, LongWaits, ::testing::ValuesIn(AllPairs()), [](const auto& instance) {
  return Waits()[std::get<0>(instance.param)].name + "_" + Deeds()[std::get<1>(instance.param)].name;
});

}  // namespace
}  // namespace kestrum::test
