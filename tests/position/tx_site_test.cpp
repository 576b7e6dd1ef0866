#include "position/tx_site.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/scripted_ports.h"

namespace kestrum::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct Transmitter : ::testing::Test {
  State state;
  Form1 form;
  ScriptedPorts outside;
  GpsLinks gps{form, outside.ports()};
  GreatCircle circle;
  RxSite rx_site{state, form, gps, circle};
  TxSite site{state, form, outside.ports(), rx_site};

  Settings& settings = state.settings;
  ScriptedDialogs& dialogs = outside.dialogs;

  void SetUp() override {
    settings.TxLat = "5157.00N";
    settings.TxLong = "00532.00E";
    settings.TxHeight = "? m";
    site.Wire();
  }
  void Receive(const std::string& validity) {
    form.lblDDELat.caption = "5201.2345N";
    form.lblDDELong.caption = "00607.8901W";
    form.lblDDEVal.caption = validity;
    form.lblDDEHeight.caption = "100";
    form.lblDDESpeed.caption = "7";
  }
};

TEST_F(Transmitter, SiteIsShown) {
  site.ShowSite();
  EXPECT_EQ(form.lblTxLat.caption, "5157.00N");
  EXPECT_EQ(form.lblTxLong.caption, "00532.00E");
  EXPECT_EQ(form.lblTxHeight.caption, "? m");
}

TEST_F(Transmitter, ThreeDialogsProposeWhatIsSet) {
  form.mnuTxLatLong.click();
  ASSERT_EQ(dialogs.inputs.size(), 3U);
  EXPECT_EQ(dialogs.inputs[0].prompt, "TX Latitude Format must be like 0000.00N");
  EXPECT_EQ(dialogs.inputs[0].proposal, "5157.00N");
  EXPECT_EQ(dialogs.inputs[1].prompt, "TX Longitude Format must be like 00000.00E");
  EXPECT_EQ(dialogs.inputs[1].proposal, "00532.00E");
  EXPECT_EQ(dialogs.inputs[2].prompt, "TX Height Format must be like 00.0 m");
  EXPECT_EQ(dialogs.inputs[2].proposal, "? m");
  for (const auto& input : dialogs.inputs) EXPECT_EQ(input.title, "Kestrum Auto field strenght logger V1.02");
}

TEST_F(Transmitter, CancellingEveryDialogChangesNothing) {
  form.mnuTxLatLong.click();
  EXPECT_EQ(settings.TxLat, "5157.00N");
  EXPECT_EQ(settings.TxLong, "00532.00E");
  EXPECT_EQ(settings.TxHeight, "? m");
  EXPECT_THAT(dialogs.questions, IsEmpty());
  EXPECT_EQ(form.lblTxLat.caption, "5157.00N");
}

TEST_F(Transmitter, TypedSiteIsStoredShownAndComputed) {
  dialogs.answers = {"52 01,23 n", "607.89w", "25"};
  form.mnuTxLatLong.click();
  EXPECT_EQ(settings.TxLat, "5201.23N");
  EXPECT_EQ(settings.TxLong, "00607.89W");
  EXPECT_EQ(settings.TxHeight, "25 m");
  EXPECT_EQ(form.lblTxLat.caption, "5201.23N");
  EXPECT_EQ(form.lblTxLong.caption, "00607.89W");
  EXPECT_EQ(form.lblTxHeight.caption, "25 m");
  EXPECT_DOUBLE_EQ(circle.tx.latitude_deg, 52.0205);
  EXPECT_DOUBLE_EQ(circle.tx.longitude_deg, -6.1315);
}

TEST_F(Transmitter, WrongLatitudeIsAskedAgainOnYes) {
  dialogs.answers = {"nonsense", "5260.00N", "5201.23N"};
  dialogs.yes_no = {true, true};
  form.mnuTxLatLong.click();
  ASSERT_EQ(dialogs.questions.size(), 2U);
  EXPECT_EQ(dialogs.questions[0].title, "Kestrum Auto field strenght logger ");
  EXPECT_EQ(dialogs.questions[0].text, "Wrong Latitude Input!\r\n\r\nTry Again");
  EXPECT_EQ(dialogs.questions[0].icon, Icon::kQuestion);
  EXPECT_EQ(settings.TxLat, "5201.23N");
  EXPECT_EQ(dialogs.inputs.size(), 5U);
  EXPECT_EQ(dialogs.inputs[2].proposal, "5157.00N");
}

TEST_F(Transmitter, NoAfterAWrongLatitudeStillAsksTheOthers) {
  dialogs.answers = {"nonsense", "607.89W", "12 m"};
  dialogs.yes_no = {false};
  form.mnuTxLatLong.click();
  EXPECT_EQ(settings.TxLat, "5157.00N");
  EXPECT_EQ(settings.TxLong, "00607.89W");
  EXPECT_EQ(settings.TxHeight, "12 m");
}

TEST_F(Transmitter, WrongLongitudeIsAskedAgainOnYes) {
  dialogs.answers = {"", "18000.01E", "00607.89W", ""};
  dialogs.yes_no = {true};
  form.mnuTxLatLong.click();
  ASSERT_EQ(dialogs.questions.size(), 1U);
  EXPECT_EQ(dialogs.questions[0].title, "Kestrum Auto field strenght logger ");
  EXPECT_EQ(dialogs.questions[0].text, "Wrong Longitude Input!\r\n\r\nTry Again");
  EXPECT_EQ(dialogs.questions[0].icon, Icon::kQuestion);
  EXPECT_EQ(settings.TxLat, "5157.00N");
  EXPECT_EQ(settings.TxLong, "00607.89W");
}

TEST_F(Transmitter, LatitudeTextIsNoLongitude) {
  dialogs.answers = {"", "5157.00N"};
  form.mnuTxLatLong.click();
  EXPECT_EQ(dialogs.questions.size(), 1U);
  EXPECT_EQ(settings.TxLong, "00532.00E");
}

TEST_F(Transmitter, HeightGetsItsUnitUnchecked) {
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"25", "25 m"}, {"25m", "25m"}, {"25 M", "25 M"}, {" tall ", "tall m"}, {"   ", "? m"}};
  for (const auto& [typed, stored] : rows) {
    settings.TxHeight = "? m";
    dialogs.answers = {"", "", typed};
    form.mnuTxLatLong.click();
    EXPECT_EQ(settings.TxHeight, stored) << typed;
  }
  EXPECT_THAT(dialogs.questions, IsEmpty());
}

TEST_F(Transmitter, EndOfTheProgramUnderADialogChangesNothingMore) {
  for (std::size_t box = 1; box <= 3; ++box) {
    ScriptedPorts world;
    TxSite tx_site(state, form, world.ports(), rx_site);
    world.dialogs.answers = {"5201.23N", "00607.89W", "25 m"};
    world.dialogs.while_open = [&world, box] {
      if (world.dialogs.inputs.size() == box) world.program.End();
    };
    SetUp();
    form.lblTxLat.caption = "before";
    tx_site.mnuTxLatLong_Click();
    EXPECT_EQ(world.dialogs.inputs.size(), box);
    EXPECT_EQ(settings.TxLat, box > 1 ? "5201.23N" : "5157.00N");
    EXPECT_EQ(settings.TxLong, box > 2 ? "00607.89W" : "00532.00E");
    EXPECT_EQ(settings.TxHeight, "? m");
    EXPECT_EQ(form.lblTxLat.caption, "before");
  }
}

TEST_F(Transmitter, ButtonWaitsUntilItIsArmed) {
  EXPECT_FALSE(form.cmdGetTxFix.enabled);
  EXPECT_EQ(form.frmTxSite.back_color, Color::kSystem);
  form.mnuTxLatLongGps.click();
  EXPECT_TRUE(form.cmdGetTxFix.enabled);
  EXPECT_EQ(form.frmTxSite.back_color, Color::kRed);
}

TEST_F(Transmitter, FixIsTakenAsReceivedAndDisarms) {
  Receive("a");
  form.mnuTxLatLongGps.click();
  form.cmdGetTxFix.click();
  EXPECT_EQ(settings.TxLat, "5201.2345N");
  EXPECT_EQ(settings.TxLong, "00607.8901W");
  EXPECT_EQ(settings.TxHeight, "30.5 m");  // 100 feet of the height label
  EXPECT_EQ(form.lblTxLat.caption, "5201.2345N");
  EXPECT_EQ(form.lblTxLong.caption, "00607.8901W");
  EXPECT_EQ(form.lblTxHeight.caption, "30.5 m");
  EXPECT_DOUBLE_EQ(circle.tx.latitude_deg, 52.0205);
  EXPECT_DOUBLE_EQ(circle.tx.longitude_deg, -6.1315);
  EXPECT_FALSE(form.cmdGetTxFix.enabled);
  EXPECT_EQ(form.frmTxSite.back_color, Color::kSystem);
  EXPECT_THAT(dialogs.messages, IsEmpty());
}

TEST_F(Transmitter, MissingFixIsToldOnceAndDisarms) {
  Receive("V");
  form.mnuTxLatLongGps.click();
  form.cmdGetTxFix.click();
  ASSERT_EQ(dialogs.messages.size(), 1U);
  EXPECT_EQ(dialogs.messages[0].title, "Kestrum Auto field strenght logger V1.02");
  EXPECT_EQ(dialogs.messages[0].text, "No GPS rx now.");
  EXPECT_EQ(dialogs.messages[0].icon, Icon::kExclamation);
  EXPECT_EQ(form.frmTxSite.caption, "No TxSite GPS rxed.");
  EXPECT_EQ(settings.TxLat, "5157.00N");
  EXPECT_EQ(settings.TxLong, "00532.00E");
  EXPECT_EQ(settings.TxHeight, "? m");
  EXPECT_EQ(form.lblTxLat.caption, "");
  EXPECT_FALSE(form.cmdGetTxFix.enabled);
  EXPECT_EQ(form.frmTxSite.back_color, Color::kSystem);
}

TEST_F(Transmitter, LaterFixTakesTheComplaintAway) {
  Receive("V");
  form.cmdGetTxFix.click();
  Receive("A");
  form.cmdGetTxFix.click();
  EXPECT_EQ(form.frmTxSite.caption, "TxSite");
}

TEST_F(Transmitter, MainTimerStopsAndStartsAroundTheFix) {
  for (const char* validity : {"A", "V"}) {
    Receive(validity);
    form.tmrMain.Start();
    const unsigned restarts = form.tmrMain.restarts;
    const unsigned stops = form.tmrMain.stops;
    form.cmdGetTxFix.click();
    EXPECT_TRUE(form.tmrMain.enabled);
    EXPECT_EQ(form.tmrMain.restarts, restarts + 1) << validity;
    EXPECT_EQ(form.tmrMain.stops, stops + 1) << validity;
  }
}

// The timer must not stand still for as long as somebody looks at the box.
TEST_F(Transmitter, AMissingFixIsToldWithoutWaitingForAnAnswer) {
  Receive("V");
  form.cmdGetTxFix.click();
  EXPECT_EQ(dialogs.notices, 1);
}

TEST_F(Transmitter, AntennasAreListedUpToTheFirstEmptyOne) {
  settings.TxAntennas[0] = "Antenna1, PWR 10W";
  settings.TxAntennas[1] = "Dipole";
  settings.TxAntennas[3] = "Loop";
  form.cmbTxAntenna.items = {"stale"};
  site.FillAntennas();
  EXPECT_THAT(form.cmbTxAntenna.items, ElementsAre("Antenna1, PWR 10W", "Dipole"));
  EXPECT_EQ(form.cmbTxAntenna.text, "Dipole");
}

TEST_F(Transmitter, WithoutAntennasTheBoxIsEmpty) {
  form.cmbTxAntenna.text = "stale";
  site.FillAntennas();
  EXPECT_THAT(form.cmbTxAntenna.items, IsEmpty());
  EXPECT_EQ(form.cmbTxAntenna.text, "");
}

TEST_F(Transmitter, AllTwentyOneAntennasComeBack) {
  for (std::size_t i = 0; i < 21; ++i) settings.TxAntennas.at(i) = "Antenna " + std::to_string(i);
  const auto before = settings.TxAntennas;
  site.FillAntennas();
  EXPECT_EQ(form.cmbTxAntenna.items.size(), 21U);
  EXPECT_EQ(form.cmbTxAntenna.text, "Antenna 20");
  site.StoreAntennas();
  EXPECT_EQ(settings.TxAntennas, before);
}

TEST_F(Transmitter, OnlyTwentyOneAntennasAreKept) {
  for (int i = 0; i < 25; ++i) form.cmbTxAntenna.items.push_back("Antenna " + std::to_string(i));
  site.StoreAntennas();
  EXPECT_EQ(settings.TxAntennas[0], "Antenna 0");
  EXPECT_EQ(settings.TxAntennas[20], "Antenna 20");
}

TEST_F(Transmitter, AntennasBehindAGapAreNotLost) {
  settings.TxAntennas[0] = "Antenna1, PWR 10W";
  settings.TxAntennas[2] = "Loop";
  site.FillAntennas();
  site.StoreAntennas();
  EXPECT_EQ(settings.TxAntennas[0], "Antenna1, PWR 10W");
  EXPECT_EQ(settings.TxAntennas[2], "Loop");
}

TEST_F(Transmitter, TypedAntennaIsAddedUnlessAnEntryStandsInIt) {
  struct Row {
    std::string typed;
    bool added;
  };
  const std::vector<Row> rows = {
      {"Dipole 20W", true},
      {"Antenna1", true},  // shorter than the entry: the entry does not stand in it
      {"Antenna1, PWR 10W", false},
      {"ANTENNA1, pwr 10w", false},
      {"My Antenna1, PWR 10W on the roof", false},
      {"", false},
      {" ", true},
  };
  for (const Row& row : rows) {
    form.cmbTxAntenna.items = {"Antenna1, PWR 10W"};
    form.cmbTxAntenna.text = row.typed;
    form.cmbTxAntenna.enter_pressed();
    EXPECT_EQ(form.cmbTxAntenna.items.size(), row.added ? 2U : 1U) << row.typed;
    EXPECT_EQ(form.cmbTxAntenna.items.back(), row.added ? row.typed : "Antenna1, PWR 10W");
    EXPECT_EQ(form.cmbTxAntenna.text, row.typed);
  }
}

}  // namespace
}  // namespace kestrum::test
