#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "support/scripted_car.h"

// The end of the program under every box there is: what follows the box in its handler must not happen.
// (Under the question of the shutdown sequence itself that sequence goes on; shut_down_test.cpp looks at it.)
namespace kestrum::test {
namespace {

using Deed = std::function<void(ScriptedCar&)>;

struct Boxes {
  std::string name;
  int boxes;  // that the deed opens when nothing ends the program
  Deed deed;
};

void Answer(ScriptedCar& car, std::initializer_list<const char*> texts) {
  car.world.dialogs.answers.assign(texts.begin(), texts.end());
}

const std::vector<Boxes>& Deeds() {
  static const std::vector<Boxes> deeds = {
      {"Site", 3,
       [](ScriptedCar& car) {
         Answer(car, {"5201.00N", "00601.00E", "12 m"});
         car.form1.mnuTxLatLong.click();
       }},
      {"WrongSite", 5,
       [](ScriptedCar& car) {
         Answer(car, {"wrong", "5201.00N", "00601.00E", "12 m"});
         car.form1.mnuTxLatLong.click();
       }},
      {"LogFile", 1,
       [](ScriptedCar& car) {
         Answer(car, {"/car/other.log"});
         car.form1.mnuSaveLogfile.click();
       }},
      {"Load", 1,
       [](ScriptedCar& car) {
         Answer(car, {"/car/table.cfg"});
         car.form1.mnuLoad.click();
       }},
      {"LoadOfNothing", 2,
       [](ScriptedCar& car) {
         Answer(car, {"/car/none.cfg"});
         car.form1.mnuLoad.click();
       }},
      {"EditorLoad", 1,
       [](ScriptedCar& car) {
         Answer(car, {"/car/table.cfg"});
         car.app.forms.form3.mnuLoad.click();
       }},
      {"EditorLoadOfNothing", 2,
       [](ScriptedCar& car) {
         Answer(car, {"/car/none.cfg"});
         car.app.forms.form3.mnuLoad.click();
       }},
      {"EditorSaveAs", 1,
       [](ScriptedCar& car) {
         Answer(car, {"/car/new.cfg"});
         car.app.forms.form3.mnuSaveAs.click();
       }},
      {"EditorOverwrite", 2,
       [](ScriptedCar& car) {
         Answer(car, {"/car/table.cfg"});
         car.app.forms.form3.mnuSaveAs.click();
       }},
      {"EditorAbout", 1, [](ScriptedCar& car) { car.app.forms.form3.mnuAbout.click(); }},
      {"About", 1, [](ScriptedCar& car) { car.form1.mnuAbout.click(); }},
      {"ShortCuts", 1, [](ScriptedCar& car) { car.form1.mnuShortCuts.click(); }},
      {"Orvandi", 1, [](ScriptedCar& car) { car.form1.mnuOrvandi.click(); }},
      {"FT847", 1, [](ScriptedCar& car) { car.form1.mnuFT847.click(); }},
      {"FT897", 1, [](ScriptedCar& car) { car.form1.mnuFT897.click(); }},
      {"Defaults", 2, [](ScriptedCar& car) { car.form1.mnuDefaultCfg.click(); }},
      {"SwitchedOffLogging", 1,
       [](ScriptedCar& car) {
         car.form1.cmdFT817OnOff.caption = "&Off";
         car.form1.cmdLoggin.click();
       }},
      {"SwitchedOffMinimal", 1,
       [](ScriptedCar& car) {
         car.form1.cmdFT817OnOff.caption = "&Off";
         car.form1.mnuMinimalDisplay.click();
       }},
      {"NoMode", 1,
       [](ScriptedCar& car) {
         for (OptionButton* button : ModeButtons(car.form1)) button->checked = false;
         car.form1.cmdLoggin.click();
       }},
      {"NoModeMinimal", 1,
       [](ScriptedCar& car) {
         for (OptionButton* button : ModeButtons(car.form1)) button->checked = false;
         car.form1.mnuMinimalDisplay.click();
       }},
  };
  return deeds;
}

// Everything that a handler could still do.
struct Traces {
  std::map<std::string, std::string> files;
  std::size_t bytes_written;
  std::size_t port_events;
  std::size_t boxes;
  std::string site;
  std::string log_file;
  std::string third_table;
  std::string frequency;
  std::string rig_text;
  std::vector<bool> windows;
  bool timers;
  int beeps;

  bool operator==(const Traces&) const = default;
};

Traces TracesOf(const ScriptedCar& car) {
  const Forms& forms = car.app.forms;
  const Settings& settings = car.settings;
  const ScriptedDialogs& dialogs = car.world.dialogs;
  return {
      car.world.files.files,
      car.world.serial.written.size(),
      car.world.serial.events.size(),
      dialogs.messages.size() + dialogs.questions.size() + dialogs.inputs.size(),
      settings.TxLat + settings.TxLong + settings.TxHeight,
      settings.LogFileName,
      settings.CalibrationFiles[2],
      forms.form1.lblFreq.caption,
      forms.form1.StatusBar1[2].text,
      {forms.form1.visible, forms.form2.visible, forms.form3.visible, forms.form4.visible,
       forms.form5.visible},
      forms.form1.tmrMain.enabled || forms.form1.tmrAverageRSSI.enabled,
      car.world.beeper.beeps,
  };
}

struct BoxedCar : ScriptedCar {
  BoxedCar() {
    Settings wanted = UsualSettings();
    wanted.RigModel = kFT817;
    WriteConfig(wanted, "&On");
    Start();
    app.calibration_files.SaveS2Ftable("/car/table.cfg");
    settings.CalibrationFiles[2] = "/car/table.cfg";
    form1.tmrMain.tick();
    world.dialogs.yes_no = {true, true, true, true, true};
  }
};

TEST(EndUnderBoxes, ThereAreAsManyBoxesAsTheTableSays) {
  for (const Boxes& row : Deeds()) {
    BoxedCar car;
    int opened = 0;
    car.world.dialogs.while_open = [&opened] { ++opened; };
    row.deed(car);
    EXPECT_EQ(opened, row.boxes) << row.name;
  }
}

void ExpectNothingAfter(const Boxes& row, int end_under, const std::function<void(ScriptedCar&)>& end) {
  BoxedCar car;
  int opened = 0;
  Traces at_end{};
  car.world.dialogs.while_open = [&] {
    if (++opened != end_under) return;
    end(car);
    at_end = TracesOf(car);
  };
  row.deed(car);
  EXPECT_EQ(opened, end_under);
  EXPECT_TRUE(car.world.program.Ended());
  EXPECT_EQ(TracesOf(car), at_end);
}

TEST(EndUnderBoxes, NothingFollowsASignal) {
  for (const Boxes& row : Deeds()) {
    for (int box = 1; box <= row.boxes; ++box) {
      SCOPED_TRACE(row.name + " " + std::to_string(box));
      ExpectNothingAfter(row, box, [](ScriptedCar& car) { car.app.ExitWithoutAsking(); });
    }
  }
}

// The box is answered in the same moment: the answer does not count any more.
TEST(EndUnderBoxes, NothingFollowsAnAnswerThatComesTooLate) {
  for (const Boxes& row : Deeds()) {
    for (int box = 1; box <= row.boxes; ++box) {
      SCOPED_TRACE(row.name + " " + std::to_string(box));
      ExpectNothingAfter(row, box, [](ScriptedCar& car) { car.world.program.End(); });
    }
  }
}

}  // namespace
}  // namespace kestrum::test
