// What pressing the rig's controls sends, byte for byte at the rig's end of the line.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QTest>

#include "panel.h"
#include "support_process/qt_waits.h"

namespace kestrum::end_to_end {
namespace {

using testing::ElementsAre;

// No reading comes in between unless a test wants it.
CarSetup Quiet(int rig) {
  CarSetup setup;
  setup.rig = rig;
  setup.interval_ms = 9999;
  return setup;
}

TEST_F(Panel, ChoosingEachRig) {
  Start(Quiet(2));
  EXPECT_THAT(Sent(3), ElementsAre("00 00 00 00 0C", "00 00 00 00 04", "00 30 36 00 0A"));
  // LSB and the lock, in each model's own words.
  Menu("mnuFT817");
  EXPECT_THAT(Sent(2), ElementsAre("00 00 00 00 07", "00 00 00 00 80"));
  EXPECT_TRUE(Find<QPushButton>("cmdFT817OnOff")->isEnabled());
  Menu("mnuFT857");
  EXPECT_THAT(Sent(2), ElementsAre("00 00 00 00 07", "00 00 00 00 80"));
  EXPECT_FALSE(Find<QPushButton>("cmdFT817OnOff")->isEnabled());
  Menu("mnuFT840");
  EXPECT_THAT(Sent(2), ElementsAre("00 00 00 00 0C", "00 00 00 00 04"));
  // Two models are announced only.
  Menu("mnuFT847");
  Menu("mnuFT897");
  ASSERT_EQ(boxes().size(), 2U);
  EXPECT_EQ(boxes()[0].title, "Kestrum Auto field strenght logger ");
  EXPECT_EQ(boxes()[0].text, "Not yet implemented !");
  EXPECT_EQ(boxes()[1].text, "Not yet implemented !");
  EXPECT_TRUE(Find<QAction>("mnuFT840")->isChecked());
  EXPECT_FALSE(Find<QAction>("mnuFT897")->isChecked());
  // They have sent nothing: the next command is that of the speed.
  ChooseMode("optUsb");
  Menu("mnuBaud");
  EXPECT_THAT(Sent(2), ElementsAre("00 00 00 01 0C", "00 00 00 01 0C"));
  EXPECT_EQ(Find<QAction>("mnuBaud")->text().toStdString(), "Baud(19200)");
}

TEST_F(Panel, EveryModeOfAnFt840) {
  Start(Quiet(2));
  Sent(3);
  for (const char* option : {"optUsb", "optLsb", "OptCwWide", "optCwNar", "OptAmWide", "OptAmNar", "OptFm"}) {
    ChooseMode(option);
  }
  EXPECT_THAT(Sent(7), ElementsAre("00 00 00 01 0C", "00 00 00 00 0C", "00 00 00 02 0C", "00 00 00 03 0C",
                                   "00 00 00 04 0C", "00 00 00 05 0C", "00 00 00 06 0C"));
}

TEST_F(Panel, AnFt817FromOnToOff) {
  Start(Quiet(1), {"--power", "off"});
  EXPECT_THAT(Sent(2), ElementsAre("00 00 00 00 07", "00 00 00 00 80"));
  // Wake-up, on, 3630 kHz, LSB.
  Press("cmdFT817OnOff");
  EXPECT_THAT(Sent(4), ElementsAre("00 00 00 00 00", "00 00 00 00 0F", "00 36 30 00 01", "00 00 00 00 07"));
  EXPECT_TRUE(rig().Says("power on"));
  TypeFrequency("7043");
  Press("cmdSetFreq");
  EXPECT_THAT(Sent(1), ElementsAre("00 70 43 00 01"));
  EXPECT_EQ(Text("lblFreq"), " 7043 kHz");
  // A pair of digits "10" goes out as the number ten.
  TypeFrequency("14210");
  Press("cmdSetFreq");
  EXPECT_THAT(Sent(1), ElementsAre("01 42 0A 00 01"));
  ChooseMode("optUsb");
  ChooseMode("OptFm");
  EXPECT_THAT(Sent(2), ElementsAre("01 00 00 00 07", "08 00 00 00 07"));
  Press("cmdFT817OnOff");
  EXPECT_THAT(Sent(2), ElementsAre("00 00 00 00 00", "00 00 00 00 8F"));
  EXPECT_TRUE(rig().Says("power off"));
  // A frequency for a set that is off switches it on first.
  TypeFrequency("3600");
  Press("cmdSetFreq");
  EXPECT_THAT(Sent(5), ElementsAre("00 00 00 00 00", "00 00 00 00 0F", "01 42 0A 00 01", "08 00 00 00 07",
                                   "00 36 00 00 01"));
}

TEST_F(Panel, AnFt817ThatIsOnIsSwitchedOffAtTheEndWhenWanted) {
  CarSetup setup = Quiet(1);
  setup.power_caption = "&On";
  Start(setup);
  Sent(6);
  AnswerBoxesWith(QMessageBox::Yes);
  Menu("mnuExit");
  EXPECT_THAT(Sent(2), ElementsAre("00 00 00 00 00", "00 00 00 00 8F"));
  ASSERT_EQ(boxes().size(), 1U);
  EXPECT_EQ(boxes()[0].text, "Switch FT817 Off (Y/N) ");
  EXPECT_TRUE(desktop().program().Ended());
  EXPECT_NE(process::ReadFile(File("Kestrum.cfg")).find("\r\n&Off\r\n"), std::string::npos);
}

TEST_F(Panel, UpAndDownAcrossARangeLimit) {
  CarSetup setup = Quiet(2);
  setup.frequency = "29990";
  Start(setup);
  EXPECT_THAT(Sent(3), ElementsAre("00 00 00 00 0C", "00 00 00 00 04", "00 90 99 02 0A"));
  Press("cmdUp");
  EXPECT_THAT(Sent(1), ElementsAre("00 99 99 02 0A"));
  // 30008 kHz is beyond the set: it stays where it is.
  Press("cmdUp");
  EXPECT_EQ(Typed("txtFrequency"), " 30008 kHz");
  EXPECT_EQ(Text("lblFreq"), " 29999 kHz");
  Press("cmdDown");
  EXPECT_THAT(Sent(1), ElementsAre("00 99 99 02 0A"));
  EXPECT_EQ(Typed("txtFrequency"), " 29999 kHz");
  TypeFrequency("100");
  Press("cmdSetFreq");
  Press("cmdDown");
  EXPECT_EQ(Text("lblFreq"), " 100 kHz");
  Press("cmdUp");
  EXPECT_THAT(Sent(2), ElementsAre("00 00 01 00 0A", "00 00 01 00 0A"));
}

TEST_F(Panel, AcrossThirtyMegahertzABlockEndsAndTheTableChanges) {
  CarSetup setup;
  setup.rig = 4;
  setup.frequency = "29995";
  setup.power_caption = "&On";
  setup.interval_ms = 50;
  Start(setup, {"--acks", "off"});
  TellDrive("smeter 8");
  EXPECT_THAT(Sent(3), ElementsAre("00 00 00 00 07", "00 00 00 00 80", "00 95 99 02 0A"));
  ASSERT_TRUE(WaitForText("lblRSSI", "S9"));
  Press("cmdLoggin");
  EXPECT_THAT(Sent(1), ElementsAre("00 00 00 00 80"));
  std::size_t readings = Readings();
  ASSERT_TRUE(process::WaitFor([&] { return Readings() >= readings + 5; }));
  Press("cmdUp");
  EXPECT_THAT(Sent(1), ElementsAre("00 04 00 03 0A"));
  ASSERT_TRUE(process::WaitFor([&] { return Log().size() == 1; }));  // written beside the program
  readings = Readings();
  ASSERT_TRUE(process::WaitFor([&] { return Readings() >= readings + 5; }));
  Press("cmdDown");
  EXPECT_THAT(Sent(1), ElementsAre("00 95 99 02 0A"));
  readings = Readings();
  ASSERT_TRUE(process::WaitFor([&] { return Readings() >= readings + 5; }));
  Press("cmdLoggin");

  ASSERT_TRUE(process::WaitFor([&] { return Log().size() == 3; }));
  const auto blocks = Log();
  EXPECT_NE(blocks[0].header.find(",  FT857 LSB  29995 kHz, "), std::string::npos) << blocks[0].header;
  EXPECT_NE(blocks[1].header.find(",  FT857 LSB  30004 kHz, "), std::string::npos) << blocks[1].header;
  EXPECT_NE(blocks[2].header.find(",  FT857 LSB  29995 kHz, "), std::string::npos) << blocks[2].header;
  const auto last = [&](std::size_t block) { return blocks[block].records.back(); };
  for (std::size_t block = 0; block < blocks.size(); ++block) {
    EXPECT_EQ(last(block)[kRaw], "128");
    EXPECT_EQ(last(block)[kSText], "S9");
    EXPECT_EQ(last(block)[kUv], block == 1 ? "5 uV" : "50 uV");
    EXPECT_EQ(last(block)[kMvm], block == 1 ? "2.07 mV/m" : "20.7 mV/m");
  }
}

}  // namespace
}  // namespace kestrum::end_to_end
