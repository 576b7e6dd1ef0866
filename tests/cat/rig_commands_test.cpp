#include "cat/rig_commands.h"

#include <gtest/gtest.h>

#include "cat/rig_bench.h"

namespace kestrum::test {
namespace {

struct TuneRow {
  int rig_model;
  const char* text;
  const char* shown;
  const char* echo;
  std::string bytes;
};

TEST(SetFrequency, SendsTheDigitsInTheOrderOfTheRig) {
  const TuneRow rows[] = {
      {kFT817, "14200", " 14200 kHz", "TX Cmd=001,042,000,000,[001]", Bytes({0x01, 0x42, 0, 0, 0x01})},
      {kFT840, "14200", " 14200 kHz", "TX Cmd=000,000,042,001,[010]", Bytes({0, 0, 0x42, 0x01, 0x0A})},
      {kFT857, "14200", " 14200 kHz", "TX Cmd=000,000,042,001,[010]", Bytes({0, 0, 0x42, 0x01, 0x0A})},
      {kFT817, "439700", " 439700 kHz", "TX Cmd=043,097,000,000,[001]", Bytes({0x43, 0x97, 0, 0, 0x01})},
      {kFT857, "439700", " 439700 kHz", "TX Cmd=000,000,097,043,[010]", Bytes({0, 0, 0x97, 0x43, 0x0A})},
      {kFT817, "7050.5", " 7050.5 kHz", "TX Cmd=000,070,050,050,[001]", Bytes({0, 0x70, 0x50, 0x50, 0x01})},
      {kFT840, "7050,5 kHz", " 7050.5 kHz", "TX Cmd=050,050,070,000,[010]",
       Bytes({0x50, 0x50, 0x70, 0, 0x0A})},
      {kFT840, " 3630 kHz", " 3630 kHz", "TX Cmd=000,030,036,000,[010]", Bytes({0, 0x30, 0x36, 0, 0x0A})},
      {kFT817, "003630", " 3630 kHz", "TX Cmd=000,036,030,000,[001]", Bytes({0, 0x36, 0x30, 0, 0x01})},
      {kFT857, "145500.123", " 145500.123 kHz", "TX Cmd=012,000,055,014,[010]",
       Bytes({0x12, 0, 0x55, 0x14, 0x0A})},
  };
  for (const auto& row : rows) {
    RigBench bench(row.rig_model);
    bench.Connect();
    bench.PowerButtonSays("&On");
    bench.rig.SetFrequency(row.text);
    SCOPED_TRACE(row.text);
    EXPECT_EQ(bench.form.lblFreq.caption, row.shown);
    EXPECT_EQ(bench.Echo(), row.echo);
    EXPECT_EQ(bench.Comment(), "Done");
    EXPECT_EQ(bench.Written(), (Texts{row.bytes}));
    EXPECT_EQ(bench.outside.beeper.beeps, 0);
  }
}

// The sets in use have always been tuned that way.
TEST(SetFrequency, SendsTheDigitPairTenAsTen) {
  RigBench ft817(kFT817);
  ft817.Connect();
  ft817.PowerButtonSays("&On");
  ft817.rig.SetFrequency("14210");
  EXPECT_EQ(ft817.Echo(), "TX Cmd=001,042,010,000,[001]");
  EXPECT_EQ(ft817.Written(), (Texts{Bytes({0x01, 0x42, 0x0A, 0x00, 0x01})}));

  RigBench ft840(kFT840);
  ft840.Connect();
  ft840.rig.SetFrequency("10100.1");
  EXPECT_EQ(ft840.Written(), (Texts{Bytes({0x0A, 0x00, 0x01, 0x01, 0x0A})}));
}

TEST(SetFrequency, ResendsTheLastFrameToFT847AndFT897) {
  for (const int rig_model : {kFT847, kFT897}) {
    RigBench bench(rig_model);
    bench.Connect();
    bench.rig.SetFrequency("14200");
    EXPECT_EQ(bench.form.lblFreq.caption, " 14200 kHz");
    EXPECT_EQ(bench.Echo(), "TX Cmd=000,000,000,000,[000]");
    bench.state.settings.RigModel = kFT840;
    bench.rig.SetFrequency("7050");
    bench.state.settings.RigModel = rig_model;
    bench.rig.SetFrequency("21000");
    EXPECT_EQ(bench.form.lblFreq.caption, " 21000 kHz");
    EXPECT_EQ(bench.Comment(), "Done");
    const std::string first = Bytes({0, 0, 0, 0, 0});
    const std::string second = Bytes({0x00, 0x50, 0x70, 0x00, 0x0A});
    EXPECT_EQ(bench.Written(), (Texts{first, second, second}));
  }
}

struct RefusedRow {
  int rig_model;
  const char* text;
};

TEST(SetFrequency, OutOfRangeOnlyBeeps) {
  const RefusedRow rows[] = {
      {kFT817, "30000.01"}, {kFT817, "54000.01"}, {kFT817, "99.99"},    {kFT817, "154000.01"},
      {kFT840, "30000.01"}, {kFT840, "145000"},   {kFT840, ""},         {kFT840, "xxxxx.xx kHz"},
      {kFT847, "36995"},    {kFT847, "100000"},   {kFT857, "56000.01"}, {kFT857, "113000"},
      {kFT897, "110000"},   {kFT897, "-14200"},   {kFT840, "1e300"},    {kFT840, "99999999999999999999"},
      {0, "14200"},         {6, "14200"},
  };
  for (const auto& row : rows) {
    RigBench bench(row.rig_model);
    bench.Connect();
    bench.PowerButtonSays("&On");
    bench.rig.SetFrequency(row.text);
    SCOPED_TRACE(row.text);
    EXPECT_EQ(bench.outside.beeper.beeps, 1);
    EXPECT_EQ(bench.form.lblFreq.caption, " 3630 kHz");
    EXPECT_EQ(bench.Echo(), "Cmd=");
    EXPECT_EQ(bench.Comment(), "Comment");
    EXPECT_TRUE(bench.Written().empty());
  }
}

TEST(SetFrequency, TakesTheBoundsThemselves) {
  for (const char* text : {"29999.99", "30000", "54000", "100", "440000"}) {
    RigBench bench(kFT817);
    bench.Connect();
    bench.PowerButtonSays("&On");
    bench.rig.SetFrequency(text);
    EXPECT_EQ(bench.Written().size(), 1U) << text;
    EXPECT_EQ(bench.outside.beeper.beeps, 0) << text;
  }
}

TEST(SetFrequency, OfASwitchedOffFT817DoesNothingAtAll) {
  for (const char* text : {"14200", "35000"}) {
    RigBench bench(kFT817);
    bench.Connect();
    bench.PowerButtonSays("&OFF");
    bench.rig.SetFrequency(text);
    EXPECT_EQ(bench.form.lblFreq.caption, " 3630 kHz");
    EXPECT_EQ(bench.outside.beeper.beeps, 0);
    EXPECT_TRUE(bench.Written().empty());
    EXPECT_EQ(bench.Echo(), "Cmd=");
  }
}

TEST(SetFrequency, OfTheOtherRigsDoesNotLookAtThePowerButton) {
  for (const int rig_model : {kFT840, kFT847, kFT857, kFT897}) {
    RigBench bench(rig_model);
    bench.Connect();
    bench.PowerButtonSays("&Off");
    bench.rig.SetFrequency("14200");
    EXPECT_EQ(bench.Written().size(), 1U) << rig_model;
  }
}

TEST(SetFrequency, WithTheClosedPortStillShowsTheFrequency) {
  RigBench bench(kFT840);
  bench.rig.SetFrequency("14200");
  EXPECT_EQ(bench.form.lblFreq.caption, " 14200 kHz");
  EXPECT_EQ(bench.Echo(), "TX Cmd=000,000,042,001,[010]");
  EXPECT_EQ(bench.Comment(), "Comport not open !");
}

constexpr int kNothing = -1;

struct ModeRow {
  int rig_model;
  std::array<int, 7> mode_bytes;
  int place;  // 1 to 4
  int opcode;
};

const std::array<ModeRow, 5>& ModeRows() {
  static const std::array<ModeRow, 5> rows{{
      {kFT817, {1, 0, 2, 3, 4, 4, 8}, 1, 7},
      {kFT840, {1, 0, 2, 3, 4, 5, 6}, 4, 12},
      {kFT847, {1, 0, 2, 130, 4, kNothing, 136}, 4, 7},
      {kFT857, {1, 0, 2, 3, 4, 4, 8}, 1, 7},
      {kFT897, {kNothing, kNothing, kNothing, kNothing, kNothing, kNothing, kNothing}, 1, 0},
  }};
  return rows;
}

TEST(SetMode, SendsTheModeByteOfTheRig) {
  for (const auto& row : ModeRows()) {
    for (int mode = 1; mode <= 7; ++mode) {
      SCOPED_TRACE("rig " + std::to_string(row.rig_model) + " mode " + std::to_string(mode));
      RigBench bench(row.rig_model);
      bench.Connect();
      bench.rig.SetMode(mode);
      const int mode_byte = row.mode_bytes[static_cast<std::size_t>(mode - 1)];
      Texts expected;
      if (mode_byte != kNothing) {
        expected = {row.place == 1 ? Bytes({mode_byte, 0, 0, 0, row.opcode})
                                   : Bytes({0, 0, 0, mode_byte, row.opcode})};
      }
      EXPECT_EQ(bench.Written(), expected);
      EXPECT_EQ(bench.Echo(), "TX Cmd=Setting the mode");
      EXPECT_EQ(bench.Comment(), "Comment");  // "Done" is not shown
      EXPECT_EQ(bench.state.settings.RigMode, mode);
      EXPECT_TRUE(bench.outside.clock.sleeps_ms.empty());
    }
  }
}

TEST(SetMode, SendsTheFramesOfTheManuals) {
  RigBench bench(kFT817);
  bench.Connect();
  bench.rig.SetMode(kUsb);
  bench.state.settings.RigModel = kFT840;
  bench.rig.SetMode(kCw);
  bench.state.settings.RigModel = kFT847;
  bench.rig.SetMode(kFm);
  EXPECT_EQ(bench.Written(),
            (Texts{Bytes({1, 0, 0, 0, 7}), Bytes({0, 0, 0, 2, 12}), Bytes({0, 0, 0, 136, 7})}));
}

TEST(SetMode, WithTheClosedPortSaysSoForEveryRig) {
  for (int rig_model = 1; rig_model <= 5; ++rig_model) {
    RigBench bench(rig_model);
    bench.rig.SetMode(kAmn);
    EXPECT_EQ(bench.Echo(), "TX Cmd=Setting the mode") << rig_model;
    EXPECT_EQ(bench.Comment(), "Comport not open !") << rig_model;
    EXPECT_EQ(bench.state.settings.RigMode, kAmn) << rig_model;
  }
}

TEST(SetMode, SetsTheButtonOfTheNumberAndClearsTheOthers) {
  for (int mode = 1; mode <= 7; ++mode) {
    RigBench bench;
    bench.form.OptFm.checked = true;
    bench.rig.SetMode(mode);
    EXPECT_EQ(bench.form.optUsb.checked, mode == 1);
    EXPECT_EQ(bench.form.optLsb.checked, mode == 2);
    EXPECT_EQ(bench.form.OptCwWide.checked, mode == 3);
    EXPECT_EQ(bench.form.optCwNar.checked, mode == 4);
    EXPECT_EQ(bench.form.OptAmWide.checked, mode == 5);
    EXPECT_EQ(bench.form.OptAmNar.checked, mode == 6);
    EXPECT_EQ(bench.form.OptFm.checked, mode == 7);
  }
}

TEST(SetMode, ZeroTakesTheModeFromTheButtons) {
  for (std::size_t button = 0; button < 7; ++button) {
    RigBench bench;
    bench.Connect();
    bench.form.optLsb.checked = false;
    ModeButtons(bench.form)[button]->checked = true;
    bench.rig.SetMode(0);
    EXPECT_EQ(bench.state.settings.RigMode, static_cast<int>(button) + 1);
    EXPECT_EQ(bench.Written().size(), 1U);
  }
}

TEST(SetMode, ZeroTakesTheLastOfSeveralButtonsInItsOwnOrder) {
  RigBench bench;
  bench.form.optUsb.checked = true;  // asked after LSB
  bench.rig.SetMode(0);
  EXPECT_EQ(bench.state.settings.RigMode, kUsb);
  EXPECT_FALSE(bench.form.optLsb.checked);
  bench.form.OptAmWide.checked = true;
  bench.form.OptCwWide.checked = true;
  bench.rig.SetMode(0);
  EXPECT_EQ(bench.state.settings.RigMode, kAm);
}

TEST(SetMode, ZeroWithoutAnyButtonKeepsTheModeAndSendsNothing) {
  RigBench bench;
  bench.Connect();
  bench.form.optLsb.checked = false;
  bench.rig.SetMode(0);
  EXPECT_EQ(bench.state.settings.RigMode, kLsb);
  EXPECT_TRUE(bench.Written().empty());
  EXPECT_EQ(bench.Echo(), "Cmd=");
}

TEST(SetMode, IgnoresAModeThatDoesNotExist) {
  for (const int mode : {-1, 8, 32767, -32768}) {
    RigBench bench;
    bench.Connect();
    bench.rig.SetMode(mode);
    EXPECT_EQ(bench.state.settings.RigMode, kLsb) << mode;
    EXPECT_TRUE(bench.form.optLsb.checked) << mode;
    EXPECT_TRUE(bench.Written().empty()) << mode;
  }
}

TEST(SetMode, SendsNothingToAnUnknownRig) {
  for (const int rig_model : {-1, 0, 6}) {
    RigBench bench(rig_model);
    bench.Connect();
    bench.rig.SetMode(kUsb);
    EXPECT_TRUE(bench.Written().empty()) << rig_model;
    EXPECT_EQ(bench.state.settings.RigMode, kUsb) << rig_model;
  }
}

TEST(CatLock, SendsTheFrameOfTheRig) {
  for (const int rig_model : {kFT817, kFT847, kFT857, kFT897}) {
    RigBench bench(rig_model);
    bench.Connect();
    bench.rig.CatLock(true);
    EXPECT_EQ(bench.Echo(), "TX Cmd= 0,0,0,0,[0]") << rig_model;
    bench.rig.CatLock(false);
    EXPECT_EQ(bench.Echo(), "TX Cmd= 0,0,0,0,[128]") << rig_model;
    EXPECT_EQ(bench.Written(), (Texts{Bytes({0, 0, 0, 0, 0}), Bytes({0, 0, 0, 0, 0x80})})) << rig_model;
    EXPECT_EQ(bench.Comment(), "Comment");
    EXPECT_TRUE(bench.outside.clock.sleeps_ms.empty());
  }
  RigBench ft840(kFT840);
  ft840.Connect();
  ft840.rig.CatLock(true);
  EXPECT_EQ(ft840.Echo(), "TX Cmd= 0,0,0,1,[4]");
  ft840.rig.CatLock(false);
  EXPECT_EQ(ft840.Echo(), "TX Cmd= 0,0,0,0,[4]");
  EXPECT_EQ(ft840.Written(), (Texts{Bytes({0, 0, 0, 1, 4}), Bytes({0, 0, 0, 0, 4})}));
}

TEST(CatLock, DoesNothingAtAllWithTheClosedPortOrAnUnknownRig) {
  for (int rig_model = 0; rig_model <= 6; ++rig_model) {
    RigBench bench(rig_model);
    if (rig_model == 0 || rig_model == 6) bench.Connect();
    bench.rig.CatLock(true);
    bench.rig.CatLock(false);
    EXPECT_EQ(bench.Echo(), "Cmd=") << rig_model;
    EXPECT_EQ(bench.Comment(), "Comment") << rig_model;
    EXPECT_TRUE(bench.Written().empty()) << rig_model;
  }
}

TEST(CatPowerOnOff, OnWakesTheSetTunesItAndSetsTheMode) {
  RigBench bench;
  bench.Connect();
  bench.form.lblFreq.caption = " 7050 kHz";
  bench.state.settings.RigMode = kUsb;
  bench.form.tmrMain.Start();
  bench.rig.CatPowerOnOff(true);
  EXPECT_EQ(bench.Written(), (Texts{Bytes({0, 0, 0, 0, 0}), Bytes({0, 0, 0, 0, 15}),
                                    Bytes({0x00, 0x70, 0x50, 0x00, 0x01}), Bytes({1, 0, 0, 0, 7})}));
  EXPECT_EQ(bench.outside.clock.sleeps_ms, (Numbers{50, 50, 50}));
  EXPECT_EQ(bench.form.cmdFT817OnOff.caption, "&On");
  EXPECT_EQ(bench.Echo(), "TX Cmd=Setting the mode");
  EXPECT_TRUE(bench.form.tmrMain.enabled);
}

// The frames of the power sequence are echoed one by one; a listener on the line sees each echo.
TEST(CatPowerOnOff, EchoesEachFrameBeforeItIsWritten) {
  struct EchoingClock : ManualClock {
    const Form1* form = nullptr;
    std::vector<std::string> echoes;
    void Sleep(std::chrono::milliseconds duration) override {
      echoes.push_back(form->lblCatCmd.caption + (form->tmrMain.enabled ? " running" : " stopped"));
      ManualClock::Sleep(duration);
    }
  };
  ScriptedPorts outside;
  EchoingClock clock;
  State state;
  Form1 form;
  clock.form = &form;
  const Ports ports{outside.serial, outside.links,   outside.dialogs, clock,         outside.pump,
                    outside.beeper, outside.program, outside.windows, outside.files, outside.worker};
  CatLink link(state, form, ports);
  RigCommands rig(state, form, ports, link);
  state.settings.RigModel = kFT817;
  state.settings.ComPort = 1;
  state.settings.RigMode = kLsb;
  form.lblFreq.caption = "3630";
  link.OpenCatPort();
  form.tmrMain.Start();
  rig.CatPowerOnOff(true);
  rig.CatPowerOnOff(false);
  EXPECT_EQ(clock.echoes, (Texts{"TX Cmd= 0, 0, 0, 0, [0] stopped", "TX Cmd= 0, 0, 0, 0, [15] stopped",
                                 "TX Cmd=000,036,030,000,[001] stopped", "TX Cmd= 0, 0, 0, 0, [0] stopped"}));
}

TEST(CatPowerOnOff, OffWakesTheSetAndLeavesTheTimerStopped) {
  RigBench bench;
  bench.Connect();
  bench.PowerButtonSays("&On");
  bench.form.tmrMain.Start();
  bench.rig.CatPowerOnOff(false);
  EXPECT_EQ(bench.Written(), (Texts{Bytes({0, 0, 0, 0, 0}), Bytes({0, 0, 0, 0, 143})}));
  EXPECT_EQ(bench.outside.clock.sleeps_ms, (Numbers{50}));
  EXPECT_EQ(bench.form.cmdFT817OnOff.caption, "&Off");
  EXPECT_EQ(bench.Echo(), "TX Cmd= 0, 0, 0, 0, [143]");
  EXPECT_FALSE(bench.form.tmrMain.enabled);
}

TEST(CatPowerOnOff, OnlyPutsTheCaptionBackForOtherRigsAndAClosedPort) {
  for (const bool on : {true, false}) {
    for (int rig_model = 0; rig_model <= 6; ++rig_model) {
      RigBench bench(rig_model);
      if (rig_model != kFT817) bench.Connect();
      bench.PowerButtonSays("&On");
      bench.form.tmrMain.Start();
      bench.rig.CatPowerOnOff(on);
      EXPECT_EQ(bench.form.cmdFT817OnOff.caption, "&Off") << rig_model;
      EXPECT_TRUE(bench.Written().empty()) << rig_model;
      EXPECT_TRUE(bench.form.tmrMain.enabled) << rig_model;
      EXPECT_EQ(bench.Echo(), "Cmd=") << rig_model;
      EXPECT_TRUE(bench.outside.clock.sleeps_ms.empty()) << rig_model;
    }
  }
}

}  // namespace
}  // namespace kestrum::test
