#include "logging/log_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/scripted_ports.h"
#include "text/text_file.h"

namespace kestrum {
namespace {

using testing::EndsWith;
using testing::StartsWith;

constexpr const char* kLogPath = "/car/RSSI-GPS.log";

class LogFileTest : public testing::Test {
 protected:
  LogFileTest() {
    state.settings.RigModel = kFT817;
    state.settings.RigMode = kLsb;
    state.settings.TxLat = "5157.00N";
    state.settings.TxLong = "00532.00E";
    state.settings.TxHeight = "? m";
    state.settings.LogFileName = kLogPath;
    forms.form1.txtFrequency.text = "3630 kHz";
    forms.form1.cmbTxAntenna.text = "Antenna1, PWR 10W";
    site = {"", "", "", "", "", ""};
  }

  void AddRecord(std::int16_t raw = 0) {
    log.AddLogRecord(ports.clock.Now(), site, {raw, {"S9", " 50", " 20.7"}, {}});
  }
  void AddRecords(int count) {
    for (int i = 0; i < count; ++i) AddRecord();
  }
  std::vector<std::string> FileLines() { return SplitLines(ports.files.files[kLogPath]); }

  test::ScriptedPorts ports;
  State state;
  Forms forms;
  Site site;
  MinimalDisplay minimal{state, forms, ports.ports()};
  LogFile log{state, forms, ports.ports(), minimal};
};

TEST_F(LogFileTest, TheStartStampShowsMonthFirstAndTwoDigitsOfTheYear) {
  log.StampStart();
  EXPECT_EQ(log.LogBuffer[0], "Start @05-17-26 14:03:09");
  EXPECT_EQ(forms.form1.lblLog.caption, "Start @05-17-26 14:03:09");
  EXPECT_EQ(log.LogCount, 0);
}

TEST_F(LogFileTest, StartsEmptyAndOff) {
  EXPECT_EQ(log.LogCount, 0);
  EXPECT_TRUE(log.NotLogging);
}

TEST_F(LogFileTest, ARecordIsStoredShownAndCounted) {
  log.StampStart();
  site.validity = "No GPS";
  AddRecord(128);
  EXPECT_EQ(log.LogCount, 1);
  EXPECT_EQ(log.LogBuffer[1], "14:03:09, No GPS, , , , , , 128, S9, 50 uV, 20.7 mV/m");
  EXPECT_EQ(forms.form1.lblLog.caption, "14:03:09, No GPS, , , , , , 128, S9, 50 uV, 20.7 mV/m");
  EXPECT_EQ(forms.form1.lblCatCount.caption, "1");
  EXPECT_EQ(log.LogBuffer[0], "Start @05-17-26 14:03:09");
  AddRecord();
  EXPECT_EQ(log.LogCount, 2);
  EXPECT_EQ(forms.form1.lblCatCount.caption, "2");
}

TEST_F(LogFileTest, ARecordReachesTheMinimalDisplayOnlyWhileItIsOn) {
  site.distance = "3.26 km";
  forms.form5.Label1[0].caption = "Dist";
  AddRecord();
  EXPECT_EQ(forms.form5.Label1[0].caption, "Dist");
  forms.form1.mnuMinimalDisplay.checked = true;
  AddRecord();
  EXPECT_EQ(forms.form5.Label1[0].caption, "3.26 km");
  EXPECT_THAT(forms.form5.Label1[4].caption, StartsWith("S9, "));
  EXPECT_THAT(forms.form5.Label1[4].caption, testing::HasSubstr("50 uV, "));
  EXPECT_THAT(forms.form5.Label1[4].caption, EndsWith("20.7 mV/m"));
}

TEST_F(LogFileTest, TheHeaderNamesDateSiteRigAndAntenna) {
  EXPECT_EQ(log.LogHeader(),
            "17-05-2026 14:03:09, 5157.00N, 00532.00E, ? m,  FT817 LSB 3630 kHz, Antenna1, PWR 10W");
}

struct HeaderRow {
  std::int32_t rig;
  std::int16_t mode;
  const char* frequency;
  const char* antenna;
  const char* end;
};

class LogHeaderTest : public LogFileTest, public testing::WithParamInterface<HeaderRow> {};

TEST_P(LogHeaderTest, EndsWithRigTextAndAntenna) {
  state.settings.RigModel = GetParam().rig;
  state.settings.RigMode = GetParam().mode;
  forms.form1.txtFrequency.text = GetParam().frequency;
  forms.form1.cmbTxAntenna.text = GetParam().antenna;
  EXPECT_EQ(log.LogHeader(), std::string("17-05-2026 14:03:09, 5157.00N, 00532.00E, ? m, ") + GetParam().end);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, LogHeaderTest,
    testing::Values(HeaderRow{1, 1, "1", "a", " FT817 USB 1, a"},
                    HeaderRow{2, 2, "2", "a", " FT840 LSB 2, a"}, HeaderRow{3, 3, "3", "a", " FT847 CW 3, a"},
                    HeaderRow{4, 4, "4", "a", " FT857 CWN 4, a"}, HeaderRow{5, 5, "5", "a", " FT897 AM 5, a"},
                    HeaderRow{1, 6, "6", "a", " FT817 AMN 6, a"},
                    // FM has no text: two blanks
                    HeaderRow{1, 7, "145000 kHz", "a", " FT817  145000 kHz, a"},
                    // a number text brings its own blank
                    HeaderRow{2, 2, " 7050 kHz", "a", " FT840 LSB  7050 kHz, a"},
                    HeaderRow{1, 2, "", "a", " FT817 LSB , a"},
                    HeaderRow{1, 2, "1", "   Loop,  50 W ", " FT817 LSB 1, Loop,  50 W "},
                    HeaderRow{1, 2, "1", "", " FT817 LSB 1, "}));

TEST_F(LogFileTest, ABlockIsDashesHeaderDashesAndRecordsInOneWrite) {
  log.NotLogging = false;
  log.StampStart();
  AddRecord(1);
  ports.clock.now.second = 14;
  AddRecord(2);
  log.FlushLog(kLogPath);
  EXPECT_EQ(ports.files.files[kLogPath],
            "-------------------------------------------------------------------------------------\r\n"
            "17-05-2026 14:03:14, 5157.00N, 00532.00E, ? m,  FT817 LSB 3630 kHz, Antenna1, PWR 10W\r\n"
            "-------------------------------------------------------------------------------------\r\n"
            "14:03:09, , , , , , , 1, S9, 50 uV, 20.7 mV/m\r\n"
            "14:03:14, , , , , , , 2, S9, 50 uV, 20.7 mV/m\r\n");
  EXPECT_EQ(ports.files.appends, 1);
  EXPECT_EQ(forms.form1.lblLog.tool_tip,
            "17-05-2026 14:03:14, 5157.00N, 00532.00E, ? m,  FT817 LSB 3630 kHz, Antenna1, PWR 10W");
  EXPECT_TRUE(ports.dialogs.messages.empty());
}

TEST_F(LogFileTest, AFlushEmptiesTheBufferAndKeepsTheStartStamp) {
  log.NotLogging = false;
  log.StampStart();
  AddRecords(3);
  log.FlushLog(kLogPath);
  EXPECT_EQ(log.LogCount, 0);
  EXPECT_EQ(forms.form1.lblCatCount.caption, "0");
  EXPECT_EQ(log.LogBuffer[0], "Start @05-17-26 14:03:09");
  for (std::size_t index = 1; index < log.LogBuffer.size(); ++index) EXPECT_EQ(log.LogBuffer[index], "");
}

TEST_F(LogFileTest, DashLinesAreAsLongAsTheHeaderOfTheirBlock) {
  log.NotLogging = false;
  for (const char* antenna : {"", "x", "a rather long antenna description, 100 W, 12 m above ground"}) {
    forms.form1.cmbTxAntenna.text = antenna;
    ports.files.files.clear();
    AddRecords(1);
    log.FlushLog(kLogPath);
    const auto lines = FileLines();
    ASSERT_EQ(lines.size(), 4U);
    EXPECT_EQ(lines[0], std::string(lines[1].size(), '-'));
    EXPECT_EQ(lines[2], lines[0]);
    EXPECT_EQ(lines[1], log.LogHeader());
  }
}

TEST_F(LogFileTest, BlocksAreAppendedToWhatIsThere) {
  log.NotLogging = false;
  ports.files.files[kLogPath] = "from last year\r\n";
  AddRecords(1);
  log.FlushLog(kLogPath);
  AddRecords(1);
  log.FlushLog(kLogPath);
  const auto lines = FileLines();
  ASSERT_EQ(lines.size(), 9U);
  EXPECT_EQ(lines[0], "from last year");
}

TEST_F(LogFileTest, TwoHundredAndFiftyRecordsGiveTwoBlocksAndFiftyThatWait) {
  log.NotLogging = false;
  for (int i = 1; i <= 250; ++i) {
    AddRecord(static_cast<std::int16_t>(i));
    EXPECT_EQ(log.LogCount, i % 100) << i;
  }
  EXPECT_EQ(ports.files.appends, 2);
  auto lines = FileLines();
  ASSERT_EQ(lines.size(), 206U);
  EXPECT_THAT(lines[3], testing::HasSubstr(", 1, S9"));
  EXPECT_THAT(lines[102], testing::HasSubstr(", 100, S9"));
  EXPECT_THAT(lines[103], StartsWith("----"));
  EXPECT_THAT(lines[106], testing::HasSubstr(", 101, S9"));
  EXPECT_THAT(lines[205], testing::HasSubstr(", 200, S9"));
  EXPECT_EQ(log.LogCount, 50);
  EXPECT_EQ(forms.form1.lblCatCount.caption, "50");
  log.FlushPending();
  lines = FileLines();
  ASSERT_EQ(lines.size(), 259U);
  EXPECT_THAT(lines[258], testing::HasSubstr(", 250, S9"));
}

TEST_F(LogFileTest, WhileOffAFullBufferIsThrownAway) {
  AddRecords(99);
  EXPECT_EQ(log.LogCount, 99);
  AddRecords(1);
  EXPECT_EQ(log.LogCount, 0);
  EXPECT_EQ(forms.form1.lblCatCount.caption, "0");
  EXPECT_EQ(log.LogBuffer[1], "");
  EXPECT_EQ(log.LogBuffer[100], "");
  EXPECT_EQ(ports.files.appends, 0);
  EXPECT_TRUE(ports.dialogs.messages.empty());
}

TEST_F(LogFileTest, WhileOffAFlushNeitherWritesNorTouchesTheHeaderOrTheName) {
  forms.form1.lblLog.tool_tip = "The data for the logfile.";
  state.settings.LogFileName = "";
  AddRecords(5);
  log.FlushLog("");
  EXPECT_EQ(ports.files.appends, 0);
  EXPECT_EQ(log.LogCount, 0);
  EXPECT_EQ(forms.form1.lblLog.tool_tip, "The data for the logfile.");
  EXPECT_EQ(state.settings.LogFileName, "");
  EXPECT_TRUE(log.NotLogging);
}

TEST_F(LogFileTest, RecordsMadeBeforeTheStartAreInTheFirstBlock) {
  AddRecords(2);
  log.ShowLoggingState(false);
  AddRecords(98);
  EXPECT_EQ(FileLines().size(), 103U);
}

TEST_F(LogFileTest, AnEmptyNameStandsForTheDefaultFile) {
  log.NotLogging = false;
  state.settings.LogFileName = "";
  AddRecords(1);
  log.FlushLog("");
  EXPECT_EQ(state.settings.LogFileName, kLogPath);
  EXPECT_EQ(FileLines().size(), 4U);
  EXPECT_EQ(forms.form1.lblLoggingInto.text, "Data to /car/RSSI-GPS.log");
  EXPECT_FALSE(log.NotLogging);
}

TEST_F(LogFileTest, AFullBufferWithAnEmptyNameGoesToTheDefaultFile) {
  log.NotLogging = false;
  state.settings.LogFileName = "";
  AddRecords(100);
  EXPECT_EQ(FileLines().size(), 103U);
}

TEST_F(LogFileTest, AFlushGoesToTheNamedFileAndLeavesTheSettingAlone) {
  log.NotLogging = false;
  AddRecords(1);
  log.FlushLog("/elsewhere/a.log");
  EXPECT_TRUE(ports.files.files.contains("/elsewhere/a.log"));
  EXPECT_FALSE(ports.files.files.contains(kLogPath));
  EXPECT_EQ(state.settings.LogFileName, kLogPath);
}

TEST_F(LogFileTest, AFlushAlwaysHeadsItsBlockEvenWithoutRecords) {
  log.NotLogging = false;
  log.FlushLog(kLogPath);
  EXPECT_EQ(FileLines().size(), 3U);
}

TEST_F(LogFileTest, PendingRecordsAreFlushedOnlyWhenThereAreSome) {
  log.NotLogging = false;
  log.FlushPending();
  EXPECT_EQ(ports.files.appends, 0);
  AddRecords(1);
  log.FlushPending();
  EXPECT_EQ(FileLines().size(), 4U);
}

TEST_F(LogFileTest, AFaultIsReportedOnceAndTheRecordsAreLost) {
  log.NotLogging = false;
  log.StampStart();
  ports.files.write_fault = "No space left on device";
  AddRecords(100);
  ASSERT_EQ(ports.dialogs.messages.size(), 1U);
  EXPECT_EQ(ports.dialogs.messages[0].title, "Kestrum Auto field strenght logger V1.02");
  EXPECT_EQ(ports.dialogs.messages[0].text,
            "Error saving data \r\nNo space left on device\r\n/car/RSSI-GPS.log");
  EXPECT_EQ(ports.dialogs.messages[0].icon, Icon::kCritical);
  EXPECT_EQ(log.LogCount, 0);
  EXPECT_EQ(forms.form1.lblCatCount.caption, "0");
  EXPECT_EQ(log.LogBuffer[0], "Start @05-17-26 14:03:09");
  EXPECT_EQ(log.LogBuffer[1], "");
  ports.files.write_fault = "";
  AddRecords(1);
  log.FlushPending();
  EXPECT_EQ(FileLines().size(), 4U);
  EXPECT_EQ(ports.dialogs.messages.size(), 1U);
}

TEST_F(LogFileTest, AFaultIsToldWithoutWaitingForAnAnswer) {
  log.NotLogging = false;
  ports.files.write_fault = "No space left on device";
  AddRecords(100);
  EXPECT_EQ(ports.dialogs.notices, 1);
}

TEST_F(LogFileTest, RecordsThatComeWhileTheDiskIsBusyAreKept) {
  log.NotLogging = false;
  ports.worker.hold = true;
  AddRecords(99);
  log.FlushLog(kLogPath);
  AddRecord(77);
  EXPECT_EQ(ports.files.appends, 0);
  EXPECT_EQ(log.LogCount, 1);
  EXPECT_THAT(log.LogBuffer[1], testing::HasSubstr(", 77, S9"));
  ports.worker.Release();
  EXPECT_EQ(FileLines().size(), 102U);
  EXPECT_EQ(SplitLines(ports.files.files["/car/RSSI-GPS.log.pending"]).size(), 4U);
}

TEST_F(LogFileTest, TheLoggingLabelIsSelectedForCopying) {
  log.ShowLoggingState(true);
  const TextBox& box = forms.form1.lblLoggingInto;
  EXPECT_EQ(box.text, "Not logging now !");
  EXPECT_TRUE(log.NotLogging);
  EXPECT_EQ(box.selection_start, 0);
  EXPECT_EQ(box.selection_length, 17);
  EXPECT_EQ(box.selections, 1);
  log.ShowLoggingState(false);
  EXPECT_EQ(box.text, "Data to /car/RSSI-GPS.log");
  EXPECT_FALSE(log.NotLogging);
  EXPECT_EQ(box.selection_start, 0);
  EXPECT_EQ(box.selection_length, 25);
  EXPECT_EQ(box.selections, 2);
}

TEST_F(LogFileTest, TheMenuDoesNothingWithAnEmptyBuffer) {
  ports.dialogs.answers = {"/new.log"};
  log.mnuSaveLogfile_Click();
  EXPECT_TRUE(ports.dialogs.inputs.empty());
  EXPECT_EQ(state.settings.LogFileName, kLogPath);
}

TEST_F(LogFileTest, TheMenuAsksForAFileAndFlushesIntoIt) {
  log.NotLogging = false;
  AddRecords(2);
  ports.dialogs.answers = {"/new.log"};
  log.mnuSaveLogfile_Click();
  ASSERT_EQ(ports.dialogs.inputs.size(), 1U);
  EXPECT_EQ(ports.dialogs.inputs[0].title, "Kestrum Auto field strenght logger V1.02");
  EXPECT_EQ(ports.dialogs.inputs[0].prompt, "Give filename to log the data.\r\n\r\nApplication path = /car");
  EXPECT_EQ(ports.dialogs.inputs[0].proposal, kLogPath);
  EXPECT_EQ(state.settings.LogFileName, "/new.log");
  EXPECT_EQ(forms.form1.lblLoggingInto.text, "Data to /new.log");
  EXPECT_EQ(SplitLines(ports.files.files["/new.log"]).size(), 5U);
  EXPECT_FALSE(ports.files.files.contains(kLogPath));
  EXPECT_EQ(log.LogCount, 0);
}

TEST_F(LogFileTest, CancellingTheMenuChangesNothing) {
  log.NotLogging = false;
  AddRecords(2);
  forms.form1.lblLoggingInto.text = "Data to it";
  log.mnuSaveLogfile_Click();
  EXPECT_EQ(ports.dialogs.inputs.size(), 1U);
  EXPECT_EQ(state.settings.LogFileName, kLogPath);
  EXPECT_EQ(forms.form1.lblLoggingInto.text, "Data to it");
  EXPECT_EQ(ports.files.appends, 0);
  EXPECT_EQ(log.LogCount, 2);
}

TEST_F(LogFileTest, NamingAFileWhileOffWritesFromThenOn) {
  AddRecords(2);
  ports.dialogs.answers = {"/new.log"};
  log.mnuSaveLogfile_Click();
  EXPECT_FALSE(log.NotLogging);
  EXPECT_EQ(SplitLines(ports.files.files["/new.log"]).size(), 5U);
  EXPECT_EQ(forms.form1.cmdLoggin.caption, "Start&Log(F3)");
  AddRecords(100);
  EXPECT_EQ(SplitLines(ports.files.files["/new.log"]).size(), 108U);
}

TEST_F(LogFileTest, NothingHappensAfterTheProgramHasEndedUnderTheInputBox) {
  log.NotLogging = false;
  AddRecords(2);
  ports.dialogs.answers = {"/new.log"};
  ports.dialogs.while_open = [this] { ports.program.End(); };
  log.mnuSaveLogfile_Click();
  EXPECT_EQ(state.settings.LogFileName, kLogPath);
  EXPECT_EQ(ports.files.appends, 0);
}

}  // namespace
}  // namespace kestrum
