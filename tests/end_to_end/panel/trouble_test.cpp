// Trouble as the user sees it in the window.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QMessageBox>
#include <QTest>
#include <csignal>

#include "panel.h"
#include "support_process/qt_waits.h"

namespace kestrum::end_to_end {
namespace {

TEST_F(Panel, APortThatReturnsMeasuresAgainOnceItIsChosen) {
  CarSetup setup;
  setup.interval_ms = 100;
  Start(setup);
  TellDrive("smeter 98");
  ASSERT_TRUE(WaitForText("lblRSSI", "S8"));
  EXPECT_EQ(Text("lblCatComment"), "Done");
  Sent(3);
  TellDrive("vanish");
  ASSERT_TRUE(WaitForText("lblCatComment", "Comport not open !"));
  ASSERT_TRUE(WaitForText("lblRSSI", "S0"));
  TellDrive("clear");
  ASSERT_TRUE(process::WaitFor([&] { return rig().Says("com1 returned"); }));
  const std::size_t readings = Readings();
  Menu("mnuCom1");
  EXPECT_THAT(Sent(1), testing::ElementsAre("00 00 00 00 0C"));
  ASSERT_TRUE(WaitForText("lblRSSI", "S8"));
  EXPECT_EQ(Text("lblCatComment"), "Done");
  EXPECT_GT(Readings(), readings);
}

struct Spoiled {
  int rig;
  const char* fault;
  const char* comment;
  const char* s_text;
};

class SpoiledReply : public Panel, public testing::WithParamInterface<Spoiled> {};

TEST_P(SpoiledReply, IsToldInTheRigPanel) {
  CarSetup setup;
  setup.rig = GetParam().rig;
  setup.power_caption = "&On";
  Start(setup);
  TellDrive(setup.rig == 1 ? "smeter 8" : "smeter 128");
  ASSERT_TRUE(WaitForText("lblRSSI", "S9"));
  TellDrive(setup.rig == 1 ? "smeter 2" : "smeter 32");
  ASSERT_TRUE(WaitForText("lblRSSI", "S5"));
  TellDrive(GetParam().fault);
  EXPECT_TRUE(WaitForText("lblCatComment", GetParam().comment));
  EXPECT_TRUE(WaitForText("lblRSSI", GetParam().s_text));
  EXPECT_EQ(Text("lblCatComment"), GetParam().comment);
  TellDrive("clear");
  EXPECT_TRUE(WaitForText("lblRSSI", "S5"));
  EXPECT_TRUE(WaitForText("lblCatComment", "Done"));
}

INSTANTIATE_TEST_SUITE_P(
    Replies, SpoiledReply,
    testing::Values(Spoiled{2, "silence", "Nothing rx-ed!", "S0"},
                    Spoiled{2, "short", "Nothing rx-ed!", "S0"},
                    Spoiled{2, "wrong", "Wrong CatCmd rx-ed!", "S0"}, Spoiled{2, "long", "Done", "S5"},
                    // One byte is the whole reply of an FT817, so silence reads as zero.
                    Spoiled{1, "silence", "Done", "S0"}, Spoiled{1, "wrong", "Wrong CatCmd rx-ed!", "S0"},
                    Spoiled{1, "long", "Wrong CatCmd rx-ed!", "S0"}),
    [](const auto& spoiled) {
      return std::string(spoiled.param.rig == 1 ? "Ft817" : "Ft840") + spoiled.param.fault;
    });

TEST_F(Panel, UnderTheBoxOfAFullDiskMeasuringGoesOn) {
  CarSetup setup;
  setup.interval_ms = 10;
  setup.log_file = "/dev/full";
  Start(setup);
  Press("cmdLoggin");
  const auto notice = [] {
    for (QWidget* top : QApplication::topLevelWidgets()) {
      auto* box = qobject_cast<QMessageBox*>(top);
      if (box != nullptr && box->isVisible()) return box;
    }
    return static_cast<QMessageBox*>(nullptr);
  };
  ASSERT_TRUE(process::WaitFor([&] { return notice() != nullptr; }));
  EXPECT_GE(rig().Count(kReadMeter), 100U);
  EXPECT_EQ(notice()->windowTitle(), QStringLiteral("Kestrum Auto field strenght logger V1.02"));
  EXPECT_EQ(notice()->text(), QStringLiteral("Error saving data \nNo space left on device\n/dev/full"));
  // The records are lost and not retried, and nobody has to answer the box for the drive to go on.
  const auto readings = rig().Count(kReadMeter);
  ASSERT_TRUE(process::WaitFor([&] { return rig().Count(kReadMeter) >= readings + 5; }));
  EXPECT_NE(notice(), nullptr);
  EXPECT_LT(std::stoi(Text("lblCatCount")), 100);
}

TEST_F(Panel, ATornConfigurationIsToldAndTheDefaultsCount) {
  Start(CarSetup{}, {}, 200);
  ASSERT_EQ(boxes().size(), 1U);
  EXPECT_EQ(boxes()[0].title, "Kestrum Auto field strenght logger ");
  EXPECT_EQ(boxes()[0].text,
            "LoadCfg\nInvalide version of " + File("Kestrum.cfg") + "\n\nI load default values now!");
  EXPECT_TRUE(Find<QAction>("mnuFT817")->isChecked());
  EXPECT_EQ(Text("lblTxHeight"), "? m");
  EXPECT_THAT(Sent(2), testing::ElementsAre("00 00 00 00 07", "00 00 00 00 80"));
}

class EndUnderABox : public Panel, public testing::WithParamInterface<int> {};

TEST_P(EndUnderABox, RecordsReachTheFileAndTheConfigurationIsSaved) {
  CarSetup setup;
  setup.interval_ms = 50;
  Start(setup);
  Press("cmdLoggin");
  ASSERT_TRUE(process::WaitFor([&] { return Readings() >= 3; }));
  // Measuring goes on under it; then the signal comes, once.
  std::size_t end_at = 0;
  UnderABox([&] {
    if (end_at == 0) end_at = Readings() + 5;
    if (Readings() < end_at) return;
    end_at = std::string::npos;
    EXPECT_EQ(::raise(GetParam()), 0);
  });
  Menu("mnuAbout");
  ASSERT_EQ(end_at, std::string::npos);
  EXPECT_TRUE(desktop().program().Ended());
  const auto blocks = Log();
  ASSERT_EQ(blocks.size(), 1U);
  EXPECT_LE(Readings() - blocks[0].records.size(), 1U);
  EXPECT_NE(process::ReadFile(File("Kestrum.cfg")).find("\r\n 3630 kHz\r\n"), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(Signals, EndUnderABox, testing::Values(SIGTERM, SIGINT, SIGHUP),
                         [](const auto& signal) { return "Signal" + std::to_string(signal.param); });

}  // namespace
}  // namespace kestrum::end_to_end
