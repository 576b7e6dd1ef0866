#include <gtest/gtest.h>

#include "cat/rig_bench.h"

namespace kestrum::test {
namespace {

// A wired panel that notes what it tells the status label and when a block ends.
struct Panel : RigBench {
  Texts rig_texts;
  Texts blocks;  // the rig at the moment when its block ends

  explicit Panel(int rig_model = kFT840) : RigBench(rig_model) {
    panel.show_rig_text = [this](const std::string& text) { rig_texts.push_back(text); };
    rig.block_ends = [this] { blocks.push_back("rig " + std::to_string(state.settings.RigModel)); };
    panel.Wire();
  }
};

TEST(ApplySelection, ShowsAndOpensWhatTheSettingsSay) {
  Panel bench(kFT840);
  bench.state.settings.ComPort = 2;
  bench.state.settings.BaudRate = 4800;
  bench.state.settings.RigMode = kAm;
  bench.form.optLsb.checked = false;
  bench.panel.ApplySelection();
  EXPECT_EQ(bench.outside.serial.events, (Texts{"port 2", "settings  4800,N,8,2", "open"}));
  EXPECT_EQ(bench.Written(), (Texts{Bytes({0, 0, 0, 4, 12})}));
  EXPECT_EQ(bench.form.mnuBaud.caption, "Baud(4800)");
  EXPECT_TRUE(bench.form.mnuFT840.checked);
  EXPECT_TRUE(bench.form.mnuCom2.checked);
  EXPECT_TRUE(bench.form.OptAmWide.checked);
  EXPECT_EQ(bench.form.StatusBar1[2].text, "Com2=4k8 FT840 ");
  EXPECT_EQ(bench.rig_texts, (Texts{"Cat FT840 Com2"}));
  EXPECT_TRUE(bench.blocks.empty());
}

TEST(ApplySelection, WithoutAPortShowsTheModeAllTheSame) {
  Panel bench(kFT817);
  bench.state.settings.ComPort = 0;
  bench.state.settings.RigMode = kCw;
  bench.panel.ApplySelection();
  EXPECT_TRUE(bench.form.OptCwWide.checked);
  EXPECT_FALSE(bench.form.optLsb.checked);
  EXPECT_TRUE(bench.Written().empty());
  EXPECT_EQ(bench.Comment(), "Comport not open !");
  EXPECT_EQ(bench.form.StatusBar1[2].text, "No Comport");
  EXPECT_EQ(bench.rig_texts, (Texts{"Cat FT817 No Comport"}));
}

TEST(ApplySelection, SurvivesOddNumbers) {
  Panel bench(77);
  bench.state.settings.ComPort = -3;
  bench.state.settings.BaudRate = -1;
  bench.state.settings.RigMode = 99;
  bench.panel.ApplySelection();
  EXPECT_TRUE(bench.Written().empty());
  EXPECT_EQ(bench.form.StatusBar1[2].text, "No Comport");
  EXPECT_EQ(bench.rig_texts, (Texts{"Cat  No Comport"}));
  for (const auto* item : RigItems(bench.form)) EXPECT_FALSE(item->checked);
  for (const auto* item : PortItems(bench.form)) EXPECT_FALSE(item->checked);
}

TEST(ShowRig, ChecksOneItemAndEnablesThePowerButtonForTheFT817Only) {
  for (int rig_model = 0; rig_model <= 6; ++rig_model) {
    Panel bench(rig_model);
    for (auto* item : RigItems(bench.form)) item->checked = true;
    bench.panel.ShowRig();
    EXPECT_EQ(bench.form.mnuFT817.checked, rig_model == 1);
    EXPECT_EQ(bench.form.mnuFT840.checked, rig_model == 2);
    EXPECT_EQ(bench.form.mnuFT847.checked, rig_model == 3);
    EXPECT_EQ(bench.form.mnuFT857.checked, rig_model == 4);
    EXPECT_EQ(bench.form.mnuFT897.checked, rig_model == 5);
    EXPECT_EQ(bench.form.cmdFT817OnOff.enabled, rig_model == 1) << rig_model;
  }
}

TEST(ShowPort, ChecksOneItemAndNamesEveryDevice) {
  for (int port = 0; port <= 7; ++port) {
    Panel bench;
    bench.state.settings.ComPort = port;
    for (auto* item : PortItems(bench.form)) item->checked = true;
    bench.panel.ShowPort();
    int number = 0;
    for (const auto* item : PortItems(bench.form)) {
      ++number;
      EXPECT_EQ(item->checked, number == port);
      EXPECT_EQ(item->tool_tip, "/dev/scripted" + std::to_string(number));
    }
    const bool known = port >= 1 && port <= 6;
    EXPECT_EQ(bench.form.StatusBar1[2].text,
              known ? "Com" + std::to_string(port) + "=9k6 FT840 " : "No Comport");
  }
}

TEST(RigMenu, FT817IsTakenAsSwitchedOff) {
  Panel bench(kFT840);
  bench.Connect();
  bench.PowerButtonSays("&On");
  bench.state.settings.DialLock = true;
  bench.form.mnuFT817.click();
  EXPECT_EQ(bench.blocks, (Texts{"rig 2"}));
  EXPECT_EQ(bench.state.settings.RigModel, kFT817);
  EXPECT_EQ(bench.form.cmdFT817OnOff.caption, "&Off");
  EXPECT_TRUE(bench.form.cmdFT817OnOff.enabled);
  EXPECT_TRUE(bench.form.mnuFT817.checked);
  EXPECT_FALSE(bench.form.mnuFT840.checked);
  EXPECT_EQ(bench.outside.serial.events, (Texts{"close", "port 1", "settings  9600,N,8,2", "open"}));
  EXPECT_EQ(bench.Written(), (Texts{Bytes({0, 0, 0, 0, 7}), Bytes({0, 0, 0, 0, 0})}));
  EXPECT_EQ(bench.form.StatusBar1[2].text, "Com1=9k6 FT817 ");
  EXPECT_EQ(bench.rig_texts, (Texts{"Cat FT817 Com1"}));
}

TEST(RigMenu, FT840AndFT857LeaveThePowerCaption) {
  for (const int rig_model : {kFT840, kFT857}) {
    Panel bench(kFT817);
    bench.Connect();
    bench.PowerButtonSays("&On");
    bench.form.optLsb.checked = false;
    bench.form.optUsb.checked = true;
    (rig_model == kFT840 ? bench.form.mnuFT840 : bench.form.mnuFT857).click();
    ASSERT_FALSE(bench.blocks.empty());
    EXPECT_EQ(bench.blocks.front(), "rig 1");
    EXPECT_EQ(bench.state.settings.RigModel, rig_model);
    EXPECT_EQ(bench.state.settings.RigMode, kUsb);
    EXPECT_EQ(bench.form.cmdFT817OnOff.caption, "&On");
    EXPECT_FALSE(bench.form.cmdFT817OnOff.enabled);
    EXPECT_EQ(bench.outside.serial.events, (Texts{"close", "port 1", "settings  9600,N,8,2", "open"}));
    const Texts ft840 = {Bytes({0, 0, 0, 1, 12}), Bytes({0, 0, 0, 0, 4})};
    const Texts ft857 = {Bytes({1, 0, 0, 0, 7}), Bytes({0, 0, 0, 0, 0x80})};
    EXPECT_EQ(bench.Written(), rig_model == kFT840 ? ft840 : ft857);
    EXPECT_EQ(bench.rig_texts, (Texts{rig_model == kFT840 ? "Cat FT840 Com1" : "Cat FT857 Com1"}));
  }
}

TEST(RigMenu, FT847AndFT897AreNotYetImplemented) {
  for (const int rig_model : {kFT847, kFT897}) {
    Panel bench(kFT840);
    bench.Connect();
    MenuItem& item = rig_model == kFT847 ? bench.form.mnuFT847 : bench.form.mnuFT897;
    item.checked = true;  // as the menu does on a click
    item.click();
    ASSERT_EQ(bench.outside.dialogs.messages.size(), 1U);
    EXPECT_EQ(bench.outside.dialogs.messages[0].title, "Kestrum Auto field strenght logger ");
    EXPECT_EQ(bench.outside.dialogs.messages[0].text, "Not yet implemented !");
    EXPECT_EQ(bench.state.settings.RigModel, kFT840);
    EXPECT_FALSE(item.checked);
    EXPECT_TRUE(bench.form.mnuFT840.checked);
    EXPECT_TRUE(bench.outside.serial.events.empty());
    EXPECT_TRUE(bench.Written().empty());
    EXPECT_TRUE(bench.blocks.empty());
    EXPECT_TRUE(bench.rig_texts.empty());
  }
}

TEST(RigMenu, ChoosingTheSameRigEndsNoBlock) {
  Panel bench(kFT840);
  bench.Connect();
  bench.form.mnuFT840.click();
  EXPECT_TRUE(bench.blocks.empty());
  bench.form.mnuFT857.click();
  EXPECT_EQ(bench.blocks, (Texts{"rig 2"}));
}

TEST(RigMenu, WorksWithoutListeners) {
  RigBench bench(kFT817);
  bench.panel.Wire();
  bench.form.mnuFT840.click();
  EXPECT_EQ(bench.state.settings.RigModel, kFT840);
}

TEST(PortMenu, ReopensAndSetsTheMode) {
  int number = 0;
  for (std::size_t item = 0; item < 6; ++item) {
    ++number;
    Panel bench(kFT840);
    bench.Connect();
    PortItems(bench.form)[item]->click();
    const std::string digit = std::to_string(number);
    EXPECT_EQ(bench.state.settings.ComPort, number);
    EXPECT_TRUE(PortItems(bench.form)[item]->checked);
    EXPECT_EQ(bench.outside.serial.events, (Texts{"close", "port " + digit, "settings  9600,N,8,2", "open"}));
    EXPECT_EQ(bench.Written(), (Texts{Bytes({0, 0, 0, 0, 12})}));
    EXPECT_EQ(bench.form.StatusBar1[2].text, "Com" + digit + "=9k6 FT840 ");
    EXPECT_EQ(bench.rig_texts, (Texts{"Cat FT840 Com" + digit}));
    EXPECT_TRUE(bench.blocks.empty());
  }
}

TEST(PortMenu, TellsWhyThePortDidNotOpen) {
  Panel bench(kFT840);
  bench.outside.serial.can_open = false;
  bench.outside.serial.trouble = Fault{"/dev/ttyUSB2", "There is no /dev/ttyUSB2."};
  bench.form.mnuCom3.click();
  EXPECT_EQ(bench.form.StatusBar1[2].tool_tip, "There is no /dev/ttyUSB2.");
  EXPECT_EQ(bench.Comment(), "Comport not open !");
  bench.outside.serial.can_open = true;
  bench.outside.serial.trouble.reset();
  bench.form.mnuCom3.click();
  EXPECT_EQ(bench.form.StatusBar1[2].tool_tip, "");
}

TEST(BaudMenu, GoesRoundTheSpeeds) {
  Panel bench(kFT840);
  bench.state.settings.BaudRate = 1200;
  for (const int speed : {4800, 9600, 19200, 38400, 57600, 1200, 4800}) {
    bench.Connect();
    bench.form.mnuBaud.click();
    const std::string digits = std::to_string(speed);
    EXPECT_EQ(bench.state.settings.BaudRate, speed);
    EXPECT_EQ(bench.form.mnuBaud.caption, "Baud(" + digits + ")");
    EXPECT_EQ(bench.outside.serial.events,
              (Texts{"close", "port 1", "settings  " + digits + ",N,8,2", "open"}));
    EXPECT_EQ(bench.Written(), (Texts{Bytes({0, 0, 0, 0, 12})}));
  }
  EXPECT_EQ(bench.form.StatusBar1[2].text, "Com1=4k8 FT840 ");
}

TEST(BaudMenu, LeavesAnyOtherSpeed) {
  for (const int speed : {2400, 0, -5, 115200}) {
    Panel bench(kFT840);
    bench.state.settings.BaudRate = speed;
    bench.form.mnuBaud.click();
    EXPECT_EQ(bench.state.settings.BaudRate, speed);
    EXPECT_EQ(bench.form.mnuBaud.caption, "Baud(" + std::to_string(speed) + ")");
  }
}

TEST(ModeButtons, SendTheModeOfTheButtonThatIsSet) {
  const std::array<int, 7> bytes{1, 0, 2, 3, 4, 5, 6};
  for (std::size_t button = 0; button < 7; ++button) {
    Panel bench(kFT840);
    bench.Connect();
    bench.form.optLsb.checked = false;
    auto* clicked = ModeButtons(bench.form)[button];
    clicked->checked = true;
    clicked->click();
    EXPECT_EQ(bench.state.settings.RigMode, static_cast<int>(button) + 1);
    EXPECT_EQ(bench.Written(), (Texts{Bytes({0, 0, 0, bytes[button], 12})}));
  }
}

TEST(OptModeEnable, EnablesAndDisablesAllSevenButtons) {
  Panel bench;
  bench.panel.OptModeEnable(false);
  for (const auto* button : ModeButtons(bench.form)) EXPECT_FALSE(button->enabled);
  bench.panel.OptModeEnable(true);
  for (const auto* button : ModeButtons(bench.form)) EXPECT_TRUE(button->enabled);
}

TEST(LockBox, IsTheDialLock) {
  Panel bench(kFT840);
  bench.Connect();
  bench.form.chkLock.checked = true;
  bench.form.chkLock.click();
  EXPECT_TRUE(bench.state.settings.DialLock);
  bench.form.chkLock.checked = false;
  bench.form.chkLock.click();
  EXPECT_FALSE(bench.state.settings.DialLock);
  EXPECT_EQ(bench.Written(), (Texts{Bytes({0, 0, 0, 1, 4}), Bytes({0, 0, 0, 0, 4})}));
}

TEST(LockBox, CountsWithTheClosedPortToo) {
  Panel bench(kFT817);
  bench.form.chkLock.checked = true;
  bench.form.chkLock.click();
  EXPECT_TRUE(bench.state.settings.DialLock);
  EXPECT_EQ(bench.Comment(), "Comment");
}

TEST(PowerButton, SwitchesOnAndOff) {
  Panel bench(kFT817);
  bench.Connect();
  bench.form.cmdFT817OnOff.click();
  EXPECT_EQ(bench.form.cmdFT817OnOff.caption, "&On");
  EXPECT_EQ(bench.Written().size(), 4U);
  EXPECT_EQ(bench.Written()[1], Bytes({0, 0, 0, 0, 15}));
  bench.Forget();
  bench.form.cmdFT817OnOff.click();
  EXPECT_EQ(bench.form.cmdFT817OnOff.caption, "&Off");
  EXPECT_EQ(bench.Written(), (Texts{Bytes({0, 0, 0, 0, 0}), Bytes({0, 0, 0, 0, 143})}));
}

TEST(PowerButton, ComparesItsCaptionWithoutRegardToCase) {
  Panel bench(kFT817);
  bench.Connect();
  bench.PowerButtonSays("&ON");
  bench.form.cmdFT817OnOff.click();
  EXPECT_EQ(bench.Written().back(), Bytes({0, 0, 0, 0, 143}));
}

TEST(PowerButton, SwitchesOnFromAnyOtherCaption) {
  Panel bench(kFT817);
  bench.Connect();
  bench.PowerButtonSays("");
  bench.form.cmdFT817OnOff.click();
  EXPECT_EQ(bench.form.cmdFT817OnOff.caption, "&On");
}

}  // namespace
}  // namespace kestrum::test
