#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <set>

#include "config/app_title.h"
#include "support/scripted_car.h"
#include "text/text_file.h"

// What every entry of the menu bar does in the running program, and what the keys and the activation do.
namespace kestrum::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

class MenuCar : public ScriptedCar {
 public:
  MenuCar() {
    WriteConfig(UsualSettings());
    world.files.files["/car/Kestrum.txt"] = "Welcome";
    PutCalibration("/car/Calibration1.cfg", "11");
    PutCalibration("/car/Calibration2.cfg", "22");
    PutCalibration("/car/Calibration3.cfg", "33");
    Start();
    form1.tmrMain.tick();
    world.serial.written.clear();
    world.serial.events.clear();
  }

  void Click(const std::string& name) {
    for (const MenuBranch& branch : MenuBar(form1)) {
      if (branch.head.name == name) Run(branch.head.click);
      for (const MenuLine& line : branch.lines) {
        if (line.item && line.item->name == name) Run(line.item->click);
      }
    }
  }
  std::string LastMessage() const {
    return world.dialogs.messages.empty() ? std::string() : world.dialogs.messages.back().text;
  }
  std::string FieldAt60() const { return app.table.S2Ftable[60].microvolt; }

 private:
  // A table with one measured value at row 60.
  void PutCalibration(const std::string& path, const std::string& microvolt) {
    std::vector<std::string> lines(257, ", , ");
    lines[0] = " FT840 LSB 3630 kHz";
    lines[61] = ", " + microvolt + ", ";
    world.files.files[path] = JoinLines(lines);
  }
};

using Effect = std::function<void(MenuCar&)>;

void ExpectRig(MenuCar& car, std::int32_t rig, const std::string& panel) {
  EXPECT_EQ(car.settings.RigModel, rig);
  EXPECT_EQ(car.form1.StatusBar1[2].text, panel);
}

const std::map<std::string, std::pair<Effect, Effect>>& Effects() {
  const Effect nothing = [](MenuCar&) {};
  const auto answer = [](const char* text) {
    return [text](MenuCar& car) { car.world.dialogs.answers = {text}; };
  };
  const auto port = [](int number) -> std::pair<Effect, Effect> {
    return {[](MenuCar&) {},
            [number](MenuCar& car) {
              EXPECT_EQ(car.settings.ComPort, number);
              EXPECT_EQ(car.world.serial.port, number);
              EXPECT_TRUE(PortItems(car.form1).at(static_cast<std::size_t>(number - 1))->checked);
            }};
  };
  // Before the click, after it.
  static const std::map<std::string, std::pair<Effect, Effect>> effects = {
      {"mnuSavecfg",
       {[](MenuCar& car) { car.settings.SquelchLevel = 77; },
        [](MenuCar& car) {
          EXPECT_EQ(SplitLines(car.world.files.files["/car/Kestrum.cfg"])[5], " 77 ");
          EXPECT_EQ(car.world.beeper.beeps, 1);
        }}},
      {"mnuDefaultCfg",
       {[](MenuCar& car) { car.world.dialogs.yes_no = {true}; },
        [](MenuCar& car) {
          EXPECT_EQ(SplitLines(car.world.files.files["/car/Kestrum.cfg"])[1], " 1  1  4800 ");
          EXPECT_EQ(car.LastMessage(), "Restart me");
          EXPECT_TRUE(car.world.program.Ended());
        }}},
      {"mnuDeleteLogKML",
       {[](MenuCar& car) {
          car.world.files.files[car.kLogPath] = "kept\r\n";
          car.world.files.files["/car/track.kml"] = "kept";
        },
        [](MenuCar& car) {
          EXPECT_FALSE(car.form1.mnuDeleteLogKML.click);
          EXPECT_EQ(car.world.files.files[car.kLogPath], "kept\r\n");
          EXPECT_EQ(car.world.files.files["/car/track.kml"], "kept");
          EXPECT_EQ(car.LastMessage(), "");
          EXPECT_EQ(car.app.log.LogCount, 1);
        }}},
      {"mnuSaveLogfile",
       {answer("/car/other.log"),
        [](MenuCar& car) {
          EXPECT_EQ(car.settings.LogFileName, "/car/other.log");
          EXPECT_EQ(SplitLines(car.world.files.files["/car/other.log"]).size(), 4U);
        }}},
      {"mnuSHowDDE",
       {nothing,
        [](MenuCar& car) {
          EXPECT_FALSE(car.settings.ShowDDE);
          EXPECT_FALSE(car.form1.frmDDE.visible);
          EXPECT_FALSE(car.form1.mnuSHowDDE.checked);
          car.Click("mnuSHowDDE");
          EXPECT_TRUE(car.settings.ShowDDE);
          EXPECT_TRUE(car.form1.frmDDE.visible);
          EXPECT_TRUE(car.form1.mnuSHowDDE.checked);
        }}},
      {"mnuDefaultCalibration",
       {[](MenuCar& car) { car.app.table.ClearCalibration(true); },
        [](MenuCar& car) {
          EXPECT_EQ(car.app.table.S2Ftable[128].s, "S9");
          EXPECT_THAT(car.form1.lblStatusCaption.caption, HasSubstr("  Default Calibration Table"));
        }}},
      {"mnuLoadConfig1",
       {nothing,
        [](MenuCar& car) {
          EXPECT_EQ(car.FieldAt60(), "11");
          EXPECT_THAT(car.form1.lblStatusCaption.caption, HasSubstr("  /car/Calibration1.cfg"));
        }}},
      {"mnuLoadConfig2", {nothing, [](MenuCar& car) { EXPECT_EQ(car.FieldAt60(), "22"); }}},
      {"mnuLoad", {answer("/car/Calibration1.cfg"), [](MenuCar& car) { EXPECT_EQ(car.FieldAt60(), "33"); }}},
      {"mnuOrvandi",
       {[](MenuCar& car) {
          car.world.files.files["/car/Orvandi.exe"] = "";
          car.world.program.companions.insert("\\Orvandi.exe");
        },
        [](MenuCar& car) {
          ASSERT_EQ(car.world.program.started.size(), 1U);
          EXPECT_EQ(car.world.program.started[0].first, "\\Orvandi.exe");
          EXPECT_EQ(car.world.program.started[0].second, ShowStyle::kMinimisedWithFocus);
          EXPECT_TRUE(car.form1.mnuOrvandi.checked);
        }}},
      {"mnuExit",
       {nothing,
        [](MenuCar& car) {
          EXPECT_TRUE(car.world.program.Ended());
          EXPECT_FALSE(car.form1.visible);
        }}},
      {"mnuTiming",
       {nothing,
        [](MenuCar& car) {
          EXPECT_TRUE(car.app.forms.form4.visible);
          EXPECT_EQ(car.app.forms.form4.Text1.text, "1000");
        }}},
      {"mnuAverageRSSI",
       {nothing,
        [](MenuCar& car) {
          EXPECT_TRUE(car.app.state.AverageRequest);
          EXPECT_FALSE(car.settings.AverageRSSI);
        }}},
      {"mnuTxLatLong",
       {[](MenuCar& car) {
          car.world.dialogs.answers = {"5201.00N", "00601.00E", "12"};
        },
        [](MenuCar& car) {
          EXPECT_EQ(car.form1.lblTxLat.caption, "5201.00N");
          EXPECT_EQ(car.form1.lblTxLong.caption, "00601.00E");
          EXPECT_EQ(car.form1.lblTxHeight.caption, "12 m");
        }}},
      {"mnuTxLatLongGps",
       {nothing,
        [](MenuCar& car) {
          EXPECT_TRUE(car.form1.cmdGetTxFix.enabled);
          EXPECT_EQ(car.form1.frmTxSite.back_color, Color::kRed);
        }}},
      {"mnuFT817",
       {nothing,
        [](MenuCar& car) {
          ExpectRig(car, kFT817, "Com1=9k6 FT817 ");
          EXPECT_TRUE(car.form1.cmdFT817OnOff.enabled);
        }}},
      {"mnuFT840",
       {[](MenuCar& car) { car.Click("mnuFT857"); },
        [](MenuCar& car) {
          ExpectRig(car, kFT840, "Com1=9k6 FT840 ");
          EXPECT_FALSE(car.form1.cmdFT817OnOff.enabled);
        }}},
      {"mnuFT857", {nothing, [](MenuCar& car) { ExpectRig(car, kFT857, "Com1=9k6 FT857 "); }}},
      {"mnuFT847",
       {nothing,
        [](MenuCar& car) {
          EXPECT_EQ(car.LastMessage(), "Not yet implemented !");
          ExpectRig(car, kFT840, "Com1=9k6 FT840 ");
        }}},
      {"mnuFT897",
       {nothing,
        [](MenuCar& car) {
          EXPECT_EQ(car.LastMessage(), "Not yet implemented !");
          ExpectRig(car, kFT840, "Com1=9k6 FT840 ");
        }}},
      {"mnuCom1", port(1)},
      {"mnuCom2", port(2)},
      {"mnuCom3", port(3)},
      {"mnuCom4", port(4)},
      {"mnuCom5", port(5)},
      {"mnuCom6", port(6)},
      {"mnuBaud",
       {nothing,
        [](MenuCar& car) {
          EXPECT_EQ(car.settings.BaudRate, 19200);
          EXPECT_EQ(car.world.serial.settings, " 19200,N,8,2");
          EXPECT_EQ(car.form1.mnuBaud.caption, "Baud(19200)");
        }}},
      {"mnuCalibration", {nothing, [](MenuCar& car) { EXPECT_TRUE(car.app.forms.form3.visible); }}},
      {"mnuMinimalDisplay",
       {nothing,
        [](MenuCar& car) {
          EXPECT_TRUE(car.app.forms.form5.visible);
          EXPECT_FALSE(car.form1.visible);
          EXPECT_FALSE(car.app.log.NotLogging);
        }}},
      {"mnuInfo",
       {nothing,
        [](MenuCar& car) {
          EXPECT_EQ(car.app.state.InfoRequest, 1);
          EXPECT_TRUE(car.app.forms.form2.visible);
          EXPECT_EQ(car.app.forms.form2.Text1.text, "     Welcome\r\n");
        }}},
      {"mnuShortCuts",
       {nothing,
        [](MenuCar& car) {
          EXPECT_EQ(car.world.dialogs.messages.back().title, VersionedTitle);
          EXPECT_THAT(car.LastMessage(), StartsWith("ShortCuts\r\n---------------\r\nF1= Help"));
        }}},
      {"mnuPower",
       {nothing,
        [](MenuCar& car) {
          EXPECT_EQ(car.app.state.InfoRequest, 2);
          EXPECT_TRUE(car.app.forms.form2.visible);
          EXPECT_THAT(car.app.forms.form2.Text1.text, StartsWith("     Some table hints "));
        }}},
      {"mnuAbout",
       {nothing,
        [](MenuCar& car) { EXPECT_THAT(car.LastMessage(), StartsWith("Auto RF Field strenght logger")); }}},
  };
  return effects;
}

TEST(MenuEffects, EveryEntryDoesWhatItSays) {
  for (const auto& [name, effect] : Effects()) {
    SCOPED_TRACE(name);
    MenuCar car;
    effect.first(car);
    car.Click(name);
    effect.second(car);
  }
}

TEST(MenuEffects, NoEntryIsLeftOut) {
  Form1 form;
  std::set<std::string> entries;
  for (const MenuBranch& branch : MenuBar(form)) {
    if (branch.lines.empty()) entries.insert(branch.head.name);
    for (const MenuLine& line : branch.lines) {
      if (line.item) entries.insert(line.item->name);
    }
  }
  std::set<std::string> tested;
  for (const auto& [name, effect] : Effects()) tested.insert(name);
  EXPECT_EQ(tested, entries);
}

TEST(MenuEffects, TheThreeRulesOfFilesStandBetweenTheGroups) {
  Form1 form;
  const auto files = MenuBar(form).front();
  ASSERT_STREQ(files.head.name, "mnuFiles");
  std::vector<std::size_t> rules;
  for (std::size_t line = 0; line < files.lines.size(); ++line) {
    if (files.lines[line].rule) rules.push_back(line);
  }
  EXPECT_THAT(rules, ElementsAre(3, 6, 11));
}

TEST(Keys, ActAsTheirMenus) {
  MenuCar car;
  EXPECT_TRUE(car.form1.key_down(Key::kF1));
  EXPECT_EQ(car.app.state.InfoRequest, 1);
  EXPECT_TRUE(car.app.forms.form2.visible);
  EXPECT_TRUE(car.form1.key_down(Key::kF3));
  EXPECT_FALSE(car.app.log.NotLogging);
  EXPECT_TRUE(car.form1.key_down(Key::kF5));
  EXPECT_TRUE(car.app.forms.form5.visible);
  EXPECT_FALSE(car.form1.key_down(Key::kEnter));
  EXPECT_TRUE(car.form1.key_down(Key::kAltF4));
  EXPECT_TRUE(car.world.program.Ended());
}

TEST(Activation, OpensTheInfoWindowForTheInfoTextAlone) {
  for (const int request : {0, 1, 2, 3, -1}) {
    MenuCar car;
    car.app.state.InfoRequest = request;
    car.form1.activate();
    EXPECT_EQ(car.app.forms.form2.visible, request == 1) << request;
  }
}

TEST(Activation, LeavesAnInfoWindowThatIsOpenAlone) {
  MenuCar car;
  car.form1.mnuInfo.click();
  car.app.forms.form2.Text1.text = "scrolled";
  car.form1.activate();
  EXPECT_EQ(car.app.forms.form2.Text1.text, "scrolled");
}

// A band change loads the default table, and with it the editor, as the menu does.
TEST(BandChange, LoadsTheEditorHidden) {
  MenuCar car;
  car.Click("mnuFT857");
  car.app.forms.form3.close();
  car.form1.txtFrequency.text = "145000";
  car.form1.cmdSetFreq.click();
  EXPECT_TRUE(car.app.forms.form3.loaded);
  EXPECT_FALSE(car.app.forms.form3.visible);
}

}  // namespace
}  // namespace kestrum::test
