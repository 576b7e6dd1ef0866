#include "logging/logging_control.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/scripted_ports.h"
#include "text/text_file.h"

namespace kestrum {
namespace {

constexpr const char* kLogPath = "/car/RSSI-GPS.log";

class LoggingControlTest : public testing::Test {
 protected:
  LoggingControlTest() {
    state.settings.RigModel = kFT840;
    state.settings.RigMode = kLsb;
    state.settings.ComPort = 1;
    state.settings.BaudRate = 4800;
    state.settings.TxLat = "5157.00N";
    state.settings.TxLong = "00532.00E";
    state.settings.TxHeight = "? m";
    state.settings.LogFileName = kLogPath;
    form.txtFrequency.text = "3630 kHz";
    form.cmbTxAntenna.text = "Antenna1, PWR 10W";
    form.optLsb.checked = true;
    link.OpenCatPort();
    ports.serial.written.clear();
    log.ShowLoggingState(true);
    control.Wire();
  }

  void Press() { form.cmdLoggin.click(); }
  void ExpectOff() {
    EXPECT_EQ(form.cmdLoggin.caption, "Start&Log(F3)");
    EXPECT_TRUE(log.NotLogging);
    EXPECT_EQ(form.lblLoggingInto.text, "Not logging now !");
  }
  void ExpectOn() {
    EXPECT_EQ(form.cmdLoggin.caption, "&Logging(F3)");
    EXPECT_FALSE(log.NotLogging);
    EXPECT_EQ(form.lblLoggingInto.text, "Data to /car/RSSI-GPS.log");
  }
  void AddRecord() { log.AddLogRecord(ports.clock.Now(), {}, {}); }
  void ExpectModeButtons(bool enabled) {
    for (const OptionButton* button : ModeButtons(form)) EXPECT_EQ(button->enabled, enabled);
  }

  test::ScriptedPorts ports;
  State state;
  Forms forms;
  Form1& form = forms.form1;
  CatLink link{state, form, ports.ports()};
  RigCommands rig{state, form, ports.ports(), link};
  FrontPanel panel{state, form, ports.ports(), link, rig};
  MinimalDisplay minimal{state, forms, ports.ports()};
  LogFile log{state, forms, ports.ports(), minimal};
  LoggingControl control{state, form, ports.ports(), link, rig, panel, log};
};

TEST_F(LoggingControlTest, StartsAndStops) {
  Press();
  ExpectOn();
  ExpectModeButtons(false);
  EXPECT_EQ(form.lblLog.tool_tip,
            "17-05-2026 14:03:09, 5157.00N, 00532.00E, ? m,  FT840 LSB 3630 kHz, Antenna1, PWR 10W");
  Press();
  ExpectOff();
  ExpectModeButtons(true);
  EXPECT_EQ(form.lblLog.tool_tip, "The data for the logfile.");
  EXPECT_TRUE(ports.dialogs.messages.empty());
}

TEST_F(LoggingControlTest, StoppingWithAnEmptyBufferWritesNothing) {
  Press();
  Press();
  EXPECT_EQ(ports.files.appends, 0);
}

TEST_F(LoggingControlTest, StoppingWritesWhatIsInTheBuffer) {
  Press();
  AddRecord();
  AddRecord();
  Press();
  EXPECT_EQ(SplitLines(ports.files.files[kLogPath]).size(), 5U);
  EXPECT_EQ(log.LogCount, 0);
  EXPECT_EQ(form.lblLog.tool_tip, "The data for the logfile.");
  ExpectOff();
}

TEST_F(LoggingControlTest, StartingDoesNotEmptyTheBuffer) {
  AddRecord();
  Press();
  EXPECT_EQ(log.LogCount, 1);
  Press();
  EXPECT_EQ(SplitLines(ports.files.files[kLogPath]).size(), 4U);
}

TEST_F(LoggingControlTest, AStoppedLoggerThrowsAwayLaterRecords) {
  Press();
  AddRecord();
  Press();
  for (int i = 0; i < 100; ++i) AddRecord();
  EXPECT_EQ(SplitLines(ports.files.files[kLogPath]).size(), 4U);
}

struct CaptionRow {
  const char* before;
  const char* after;
};

class LoggingCaption : public LoggingControlTest, public testing::WithParamInterface<CaptionRow> {};

TEST_P(LoggingCaption, IsTheStateThatThePressReads) {
  form.cmdLoggin.caption = GetParam().before;
  Press();
  EXPECT_EQ(form.cmdLoggin.caption, GetParam().after);
}

INSTANTIATE_TEST_SUITE_P(Rows, LoggingCaption,
                         testing::Values(CaptionRow{"Start&Log(F3)", "&Logging(F3)"},
                                         CaptionRow{"START&LOG(f3)", "&Logging(F3)"},
                                         CaptionRow{"&Logging(F3)", "Start&Log(F3)"},
                                         CaptionRow{"&LOGGING(F3)", "Start&Log(F3)"}, CaptionRow{"", ""},
                                         CaptionRow{"Start&Log(F3) ", "Start&Log(F3) "},
                                         CaptionRow{"Logging(F3)", "Logging(F3)"}));

TEST_F(LoggingControlTest, AnUnknownCaptionLeavesTheStateAndTheRigAlone) {
  form.cmdLoggin.caption = "Busy";
  AddRecord();
  Press();
  EXPECT_TRUE(log.NotLogging);
  EXPECT_EQ(log.LogCount, 1);
  EXPECT_TRUE(ports.serial.written.empty());
}

TEST_F(LoggingControlTest, ASwitchedOffFT817IsRefused) {
  state.settings.RigModel = kFT817;
  form.cmdFT817OnOff.caption = "&OFF";
  Press();
  ASSERT_EQ(ports.dialogs.messages.size(), 1U);
  EXPECT_EQ(ports.dialogs.messages[0].title, "Kestrum Auto field strenght logger ");
  EXPECT_EQ(ports.dialogs.messages[0].text, "Switch FT817 first on");
  EXPECT_EQ(ports.dialogs.messages[0].icon, Icon::kInformation);
  ExpectOff();
  ExpectModeButtons(true);
  EXPECT_TRUE(ports.serial.written.empty());
}

TEST_F(LoggingControlTest, ASwitchedOnFT817Logs) {
  state.settings.RigModel = kFT817;
  form.cmdFT817OnOff.caption = "&On";
  Press();
  ExpectOn();
}

TEST_F(LoggingControlTest, TheOffCaptionMattersForTheFT817Only) {
  for (const int model : {2, 3, 4, 5}) {
    state.settings.RigModel = model;
    form.cmdFT817OnOff.caption = "&Off";
    form.cmdLoggin.caption = "Start&Log(F3)";
    Press();
    EXPECT_EQ(form.cmdLoggin.caption, "&Logging(F3)") << model;
  }
  EXPECT_TRUE(ports.dialogs.messages.empty());
}

TEST_F(LoggingControlTest, WithoutAModeItIsRefused) {
  form.optLsb.checked = false;
  Press();
  ASSERT_EQ(ports.dialogs.messages.size(), 1U);
  EXPECT_EQ(ports.dialogs.messages[0].title, "Kestrum Auto field strenght logger ");
  EXPECT_EQ(ports.dialogs.messages[0].text, "Set RX mode first");
  EXPECT_EQ(ports.dialogs.messages[0].icon, Icon::kInformation);
  ExpectOff();
  EXPECT_TRUE(ports.serial.written.empty());
}

TEST_F(LoggingControlTest, EachOfTheSevenModesWillDo) {
  for (OptionButton* mode : ModeButtons(form)) {
    for (OptionButton* other : ModeButtons(form)) other->checked = other == mode;
    form.cmdLoggin.caption = "Start&Log(F3)";
    Press();
    EXPECT_EQ(form.cmdLoggin.caption, "&Logging(F3)") << mode->caption;
  }
}

TEST_F(LoggingControlTest, TheFT817IsAskedForBeforeTheMode) {
  state.settings.RigModel = kFT817;
  form.cmdFT817OnOff.caption = "&Off";
  form.optLsb.checked = false;
  Press();
  ASSERT_EQ(ports.dialogs.messages.size(), 1U);
  EXPECT_EQ(ports.dialogs.messages[0].text, "Switch FT817 first on");
}

TEST_F(LoggingControlTest, TheDialLockIsAppliedAnewAtStartAndStop) {
  state.settings.DialLock = true;
  Press();
  EXPECT_THAT(ports.serial.written, testing::ElementsAre(test::Bytes({0, 0, 0, 1, 4})));
  state.settings.DialLock = false;
  Press();
  EXPECT_THAT(ports.serial.written,
              testing::ElementsAre(test::Bytes({0, 0, 0, 1, 4}), test::Bytes({0, 0, 0, 0, 4})));
}

TEST_F(LoggingControlTest, WithoutAnOpenPortTheLockIsLeftAlone) {
  ports.serial.Vanish();
  form.lblCatCmd.caption = "Cmd=";
  Press();
  Press();
  EXPECT_EQ(form.lblCatCmd.caption, "Cmd=");
  ExpectOff();
}

struct PortRow {
  int number;
  std::size_t writes;
};

class LoggingPort : public LoggingControlTest, public testing::WithParamInterface<PortRow> {};

TEST_P(LoggingPort, TheLockNeedsAPortFromOneToSix) {
  state.settings.ComPort = GetParam().number;
  Press();
  EXPECT_EQ(ports.serial.written.size(), GetParam().writes);
  ExpectOn();
}

INSTANTIATE_TEST_SUITE_P(Rows, LoggingPort,
                         testing::Values(PortRow{0, 0}, PortRow{1, 1}, PortRow{6, 1}, PortRow{7, 0},
                                         PortRow{-1, 0}));

TEST_F(LoggingControlTest, AFaultWhileStoppingIsReportedAndStillStops) {
  Press();
  AddRecord();
  ports.files.write_fault = "Read-only file system";
  Press();
  EXPECT_EQ(ports.dialogs.messages.size(), 1U);
  EXPECT_EQ(ports.dialogs.notices, 1);
  ExpectOff();
}

}  // namespace
}  // namespace kestrum
