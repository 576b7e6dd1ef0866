#include "signal/calibration_editor.h"

#include <gtest/gtest.h>

#include "signal/signal_bench.h"

namespace kestrum {
namespace {

constexpr const char* kDefaultLines =
    "\r\n0   S0  0 uV"
    "\r\n1   S1  0.2 uV"
    "\r\n2   S2  0.39 uV"
    "\r\n8   S3  0.78 uV"
    "\r\n18   S4  1.56 uV"
    "\r\n32   S5  3.13 uV"
    "\r\n50   S6  6.25 uV"
    "\r\n72   S7  12.5 uV"
    "\r\n98   S8  25 uV"
    "\r\n128   S9  50 uV"
    "\r\n162   S9 + 10dB  158 uV"
    "\r\n180   S9 + 20dB  500 uV"
    "\r\n198   S9 + 30dB  1580 uV"
    "\r\n216   S9 + 40dB  5000 uV"
    "\r\n234   S9 + 50dB  15800 uV"
    "\r\n255   S9 + 60dB  50000 uV";

class CalibrationEditorTest : public ::testing::Test {
 protected:
  test::SignalBench bench;
  Form3& form = bench.forms.form3;
  S2FtableRows& rows = bench.table.S2Ftable;
  int& beeps = bench.world.beeper.beeps;
  test::ScriptedDialogs& dialogs = bench.world.dialogs;

  CalibrationEditorTest() { bench.editor.Open(); }

  void Stop() {
    if (form.cmdStop.caption == "Stop &RSSI") form.cmdStop.click();
  }
  // Freezes the editor at a row.
  void StopAt(int row) {
    Stop();
    form.sldIndex.SetValue(row);
  }
  void Type(const std::string& text) {
    form.txtEdit.text = text;
    form.cmduVStore.click();
  }
};

TEST_F(CalibrationEditorTest, OpensWithItsTexts) {
  EXPECT_TRUE(form.visible);
  EXPECT_TRUE(form.loaded);
  EXPECT_EQ(form.caption, "Kestrum Auto field strenght logger ");
  EXPECT_EQ(form.frmCalibration.caption, "Calibration RSSI-value.");
  EXPECT_EQ(form.frmHelp.caption, "Calibration values in memory now.");
  EXPECT_EQ(form.txtEdit.text, "60");
  EXPECT_EQ(form.lbluV.caption, " uV");
  EXPECT_EQ(form.lblSraw1.caption, "Digital S");
  EXPECT_EQ(form.cmdSstore.caption, "S-uV S&tore");
  EXPECT_EQ(form.cmduVStore.caption, "&uV-Store");
  EXPECT_EQ(form.lblSSelect.caption, "S0");
  EXPECT_EQ(form.lblRecNbr.caption, "000");
  EXPECT_EQ(form.lblSraw.caption, "000");
  EXPECT_EQ(form.lblAllS2F.caption, "000>>   S0, 0 uV, 0 mV/m");
  EXPECT_EQ(form.lblCalFrequency.caption, " 3630 kHz");
  EXPECT_EQ(form.cmdStop.caption, "Stop &RSSI");
  EXPECT_EQ(form.lblSraw.back_color, Color::kBlue);
  EXPECT_EQ(static_cast<int>(form.lblSraw.back_color), 16711680);
}

TEST_F(CalibrationEditorTest, ToolTips) {
  const std::pair<const Control*, const char*> tips[] = {
      {&form.sldIndex, "Scroll through the index numbers."},
      {&form.txtEdit, "Type the signal input in uV here but not default S-values !"},
      {&form.lblCalFrequency, "Frequency of the Rx."},
      {&form.lblSraw, "RSSI-value raw digital value 0-255."},
      {&form.lblRecNbr, "Record number of calibration table."},
      {&form.lblAllS2F, "Complete structure with values from calibration table."},
      {&form.lblSSelect, "S meter value to store."},
      {&form.Label1, "Default standard example values."},
      {&form.Label2, "Default calibration values now in memory."},
      {&form.Label3, "Other non default calibration values in memory."},
      {&form.cmdSup, "S-point up."},
      {&form.cmdSdown, "S-point down."},
      {&form.cmdSave, "Save this Calibration to file... "},
      {&form.cmdStop, "Stop or Run Aquire Cat RSSI-value."},
      {&form.cmduVStore, "<<Store uV now in memory."},
      {&form.cmdSstore, "<<Store S and uV now in memory."},
  };
  for (const auto& [control, text] : tips) EXPECT_EQ(control->tool_tip, text);
}

TEST_F(CalibrationEditorTest, FollowsTheReadingWhileAcquiring) {
  bench.Read(128);
  EXPECT_EQ(form.lblSraw.caption, "128");
  EXPECT_EQ(form.sldIndex.value, 128);
  EXPECT_EQ(form.lblRecNbr.caption, "128");
  EXPECT_EQ(form.lblAllS2F.caption, "128>>   S9, 50 uV, 20.7 mV/m");
  bench.Read(7);
  EXPECT_EQ(form.lblSraw.caption, "007");
  EXPECT_EQ(form.lblRecNbr.caption, "007");
  EXPECT_EQ(form.lblAllS2F.caption, "007>>   ,  uV,  mV/m");
  bench.forms.form1.lblFreq.caption = " 7050 kHz";
  bench.Read(7);
  EXPECT_EQ(form.lblCalFrequency.caption, " 7050 kHz");
}

TEST_F(CalibrationEditorTest, NothingMovesWhileStopped) {
  bench.Read(72);
  form.cmdStop.click();
  EXPECT_EQ(form.cmdStop.caption, "Get &RSSI");
  EXPECT_EQ(form.lblSraw.back_color, Color::kRed);
  bench.Read(128);
  EXPECT_EQ(form.lblSraw.caption, "072");
  EXPECT_EQ(form.sldIndex.value, 72);
  EXPECT_EQ(form.lblAllS2F.caption, "072>>   S7, 12.5 uV, 5.19 mV/m");
  form.cmdStop.click();
  EXPECT_EQ(form.cmdStop.caption, "Stop &RSSI");
  EXPECT_EQ(form.lblSraw.back_color, Color::kBlue);
  bench.Read(128);
  EXPECT_EQ(form.lblSraw.caption, "128");
}

TEST_F(CalibrationEditorTest, PointIsChosenWithinItsEnds) {
  const char* const names[] = {"S0",        "S1",        "S2",        "S3",       "S4",        "S5",
                               "S6",        "S7",        "S8",        "S9",       "S9 + 10dB", "S9 + 20dB",
                               "S9 + 30dB", "S9 + 40dB", "S9 + 50dB", "S9 + 60dB"};
  form.cmdSdown.click();
  EXPECT_EQ(form.lblSSelect.caption, "S0");
  for (int point = 0; point < 16; ++point) {
    EXPECT_EQ(form.lblSSelect.caption, names[point]);
    EXPECT_EQ(form.selected_point, point);
    form.cmdSup.click();
  }
  EXPECT_EQ(form.selected_point, 15);
  EXPECT_EQ(form.lblSSelect.caption, "S9 + 60dB");
  form.cmdSdown.click();
  EXPECT_EQ(form.selected_point, 14);
  EXPECT_EQ(form.lblSSelect.caption, "S9 + 50dB");
}

TEST_F(CalibrationEditorTest, ListsOfTheDefaultTable) {
  EXPECT_EQ(form.Label1.caption, std::string("Default values\r\n-----------------------") + kDefaultLines);
  EXPECT_EQ(form.Label2.caption, std::string("Table values\r\n-----------------------") + kDefaultLines);
  EXPECT_EQ(form.Label3.caption, form.Label2.caption + "\r\n\r\nOther values\r\n--------------------");
  EXPECT_TRUE(form.Label2.visible);
  EXPECT_FALSE(form.Label3.visible);
}

TEST_F(CalibrationEditorTest, ListsOfAnotherTable) {
  rows = {};
  rows[0] = {"S0", "0", "0"};
  rows[60] = {"", "9.5", ""};
  rows[70] = {"S7", "", "3"};
  rows[80] = {"", "", "4"};
  rows[255] = {"", "60", ""};
  rows[kCurrentRow] = {"S9", "50", "20.7"};
  form.activate();
  EXPECT_EQ(form.Label2.caption, "Table values\r\n-----------------------\r\n0   S0  0 uV\r\n70   S7   uV");
  EXPECT_EQ(
      form.Label3.caption,
      form.Label2.caption + "\r\n\r\nOther values\r\n--------------------\r\n60     9.5 uV\r\n255     60 uV");
  EXPECT_FALSE(form.Label2.visible);
  EXPECT_TRUE(form.Label3.visible);
}

TEST_F(CalibrationEditorTest, DefaultPointsMustStandUnchangedAndAlone) {
  rows[3] = {"", "0.5", ""};
  form.activate();
  EXPECT_TRUE(form.Label3.visible);
  rows[3] = {};
  form.activate();
  EXPECT_TRUE(form.Label2.visible);
  rows[128].millivolt_per_metre = "20.8";
  form.activate();
  EXPECT_TRUE(form.Label3.visible);
  bench.state.AboveHF = true;
  bench.table.DefaultCalibration(true);
  form.activate();
  EXPECT_TRUE(form.Label2.visible);
  EXPECT_FALSE(form.Label3.visible);
  EXPECT_NE(form.Label1.caption.find("\r\n128   S9  5 uV"), std::string::npos);
}

TEST_F(CalibrationEditorTest, SliderShowsItsRecord) {
  Stop();
  form.sldIndex.SetValue(8);
  EXPECT_EQ(form.lblRecNbr.caption, "008");
  EXPECT_EQ(form.lblAllS2F.caption, "008>>   S3, 0.78 uV, 0.32 mV/m");
  form.sldIndex.SetValue(255);
  EXPECT_EQ(form.lblRecNbr.caption, "255");
  EXPECT_EQ(form.lblAllS2F.caption, "255>>   S9 + 60dB, 50000 uV, 20750 mV/m");
}

TEST_F(CalibrationEditorTest, StoresTheSelectedPointAtTheFrozenRow) {
  for (int i = 0; i < 4; ++i) form.cmdSup.click();  // S4
  StopAt(20);
  form.cmdSstore.click();
  EXPECT_EQ(rows[20], (TableRow{"S4", "1.56", "0.65"}));
  EXPECT_EQ(rows[18], TableRow()) << "the point has moved";
  EXPECT_EQ(beeps, 1);
  EXPECT_EQ(form.lblAllS2F.caption, "020>>   S4, 1.56 uV, 0.65 mV/m");
  EXPECT_NE(form.Label2.caption.find("\r\n20   S4  1.56 uV"), std::string::npos);
  EXPECT_TRUE(form.Label3.visible);
}

TEST_F(CalibrationEditorTest, StoresAtTheLiveReadingWhileAcquiring) {
  form.cmdSup.click();
  form.cmdSup.click();
  form.cmdSup.click();  // S3
  bench.Read(9);
  form.sldIndex.SetValue(50);  // moved by hand; the reading counts
  form.cmdSstore.click();
  EXPECT_EQ(rows[9], (TableRow{"S3", "0.78", "0.32"}));
  EXPECT_EQ(rows[8], TableRow());
  EXPECT_EQ(rows[50].s, "S6");
  EXPECT_EQ(form.lblAllS2F.caption, "009>>   S3, 0.78 uV, 0.32 mV/m");
}

TEST_F(CalibrationEditorTest, S0IsNotStored) {
  StopAt(20);
  const auto before = rows;
  form.cmdSstore.click();
  EXPECT_EQ(rows, before);
  EXPECT_EQ(beeps, 0);
}

TEST_F(CalibrationEditorTest, TypedDefaultValuesAreRefused) {
  StopAt(20);
  const auto before = rows;
  int refused = 0;
  for (const char* text : {"1.56", "1.560 uV", "50", "50000", "0", "", "none", "0.20", "."}) {
    Type(text);
    ++refused;
    EXPECT_EQ(beeps, refused) << text;
    EXPECT_EQ(form.txtEdit.text, "") << text;
    EXPECT_EQ(rows, before) << text;
  }
}

TEST_F(CalibrationEditorTest, TypedTextIsCleanedAndSelected) {
  bench.table.ClearCalibration(true);
  StopAt(100);
  const int selections = form.txtEdit.selections;
  Type("1,6 uV");
  EXPECT_EQ(form.txtEdit.text, "16");
  EXPECT_EQ(form.txtEdit.selection_start, 0);
  EXPECT_EQ(form.txtEdit.selection_length, 2);
  EXPECT_EQ(form.txtEdit.selections, selections + 1);
  EXPECT_EQ(rows[100], (TableRow{"", "16", ""}));
  EXPECT_EQ(beeps, 1);
  EXPECT_EQ(form.lblAllS2F.caption, "100>>   , 16 uV,  mV/m");
  EXPECT_EQ(form.Label3.caption,
            form.Label2.caption + "\r\n\r\nOther values\r\n--------------------\r\n100     16 uV");
}

TEST_F(CalibrationEditorTest, LimitsOfTypedValues) {
  bench.table.ClearCalibration(true);
  bench.state.AboveHF = true;  // so that 50000 is no default value
  StopAt(100);
  Type("50000.1");
  EXPECT_EQ(beeps, 0);
  EXPECT_EQ(rows[100], TableRow());
  EXPECT_EQ(form.txtEdit.text, "50000.1") << "no message, the text stays";
  Type("50000");
  EXPECT_EQ(beeps, 1);
  EXPECT_EQ(rows[100], (TableRow{"", "50000", ""}));
}

// Every way through storing: duplicate or not, default value or not, below and above 30 MHz.
TEST_F(CalibrationEditorTest, StoreTable) {
  struct Row {
    const char* what;
    bool above_hf;
    int duplicate_at;  // -1: none
    const char* stored;
    bool by_s_store;  // stored value is the uV text of default point `point`
    int point;
    TableRow expected;  // at row 100 of an else empty table
  };
  const Row table[] = {
      {"new value", false, -1, "60", false, 0, {"", "60", ""}},
      {"duplicate", false, 90, "60", false, 0, {"", "0.2", ""}},
      {"default", false, -1, "50", true, 9, {"S9", "50", "20.7"}},
      {"default duplicate", false, 90, "50", true, 9, {"S9", "50", "20.7"}},
      {"duplicate at the row itself", false, 100, "60", false, 0, {"", "0.2", ""}},
      {"new value, VHF", true, -1, "60", false, 0, {"", "60", ""}},
      {"duplicate, VHF", true, 90, "60", false, 0, {"", "0.02", ""}},
      {"default, VHF", true, -1, "5", true, 9, {"S9", "5", "2.07"}},
      {"default duplicate, VHF", true, 110, "5", true, 9, {"S9", "5", "2.07"}},
  };
  for (const auto& row : table) {
    bench.state.AboveHF = row.above_hf;
    bench.table.ClearCalibration(true);
    if (row.duplicate_at >= 0) rows[static_cast<std::size_t>(row.duplicate_at)] = {"", row.stored, ""};
    StopAt(100);
    if (row.by_s_store) {
      while (form.selected_point < row.point) form.cmdSup.click();
      form.cmdSstore.click();
    } else {
      Type(row.stored);
    }
    S2FtableRows expected;
    expected[100] = row.expected;
    EXPECT_EQ(rows, expected) << row.what;
  }
}

TEST_F(CalibrationEditorTest, OnlyTheFirstDuplicateIsDropped) {
  rows = {};
  rows[10] = {"", "60", ""};
  rows[20] = {"", "60", ""};
  StopAt(5);
  Type("60");
  // The first goes, the new value becomes that of S1, and the second rises above it.
  EXPECT_EQ(rows[5], (TableRow{"", "0.2", ""}));
  EXPECT_EQ(rows[10], TableRow());
  EXPECT_EQ(rows[20], (TableRow{"", "60", ""}));
}

TEST_F(CalibrationEditorTest, StoredPointThatDoesNotRiseIsTidiedAway) {
  StopAt(200);  // between 1580 uV at 198 and 5000 uV at 216
  Type("60");
  EXPECT_EQ(rows[200], TableRow());
  EXPECT_EQ(beeps, 1);
  EXPECT_EQ(form.lblAllS2F.caption, "200>>   ,  uV,  mV/m");
  EXPECT_TRUE(form.Label2.visible) << "nothing but the default points";
}

TEST_F(CalibrationEditorTest, StoredPointRemovesWhatItOvertakes) {
  StopAt(100);
  Type("60");
  EXPECT_EQ(rows[100], (TableRow{"", "60", ""}));
  EXPECT_EQ(rows[98].s, "S8");
  EXPECT_EQ(rows[128], TableRow()) << "50 uV no longer rises";
  EXPECT_EQ(rows[162].s, "S9 + 10dB");
}

TEST_F(CalibrationEditorTest, SaysWhatBecameOfAPressAndMarksTheStoredRow) {
  EXPECT_EQ(form.lblNote.caption, "");
  Type("1.56");
  EXPECT_EQ(form.lblNote.caption,
            "Not stored: 1.56 uV is a standard value. Choose its S point and press S-uV Store.");
  for (const char* text : {"-", "50000.1"}) {
    Type(text);
    EXPECT_EQ(form.lblNote.caption, "Not stored: type a value above 0 and up to 50000 uV.") << text;
    EXPECT_EQ(form.stored_line, -1);
  }
  StopAt(140);
  Type("60");
  EXPECT_EQ(form.lblNote.caption, "Stored 60 uV in row 140.");
  // Two lines of heading, 16 points, an empty line, two lines of heading.
  EXPECT_EQ(form.stored_line, 21);
  StopAt(145);
  Type("20");
  EXPECT_EQ(form.lblNote.caption, "Not kept: 20 uV does not rise above the row before row 145.");
  EXPECT_EQ(form.stored_line, -1);
}

TEST_F(CalibrationEditorTest, ClearMenu) {
  form.mnuClearCalibration.click();
  EXPECT_EQ(rows, S2FtableRows());
  EXPECT_EQ(bench.StatusText(), "  Calibration cleared.");
  EXPECT_EQ(form.Label2.caption, "Table values\r\n-----------------------");
  EXPECT_TRUE(form.Label3.visible);
  EXPECT_EQ(form.lblAllS2F.caption, "000>>   ,  uV,  mV/m");
}

TEST_F(CalibrationEditorTest, DefaultMenuFollowsTheBand) {
  bench.state.AboveHF = true;
  form.mnuDefaultCalibration.click();
  EXPECT_EQ(rows[128], (TableRow{"S9", "5", "2.07"}));
  EXPECT_EQ(bench.StatusText(), "  Default Calibration Table");
  EXPECT_NE(form.Label1.caption.find("\r\n1   S1  0.02 uV"), std::string::npos);
  EXPECT_NE(form.Label2.caption.find("\r\n1   S1  0.02 uV"), std::string::npos);
  EXPECT_TRUE(form.Label2.visible);
}

TEST_F(CalibrationEditorTest, About) {
  form.mnuAbout.click();
  ASSERT_EQ(dialogs.messages.size(), 1U);
  EXPECT_EQ(dialogs.messages[0].title, "Kestrum Auto field strenght logger ");
  EXPECT_EQ(dialogs.messages[0].text, "Fieldstrenght logger calibration.");
}

TEST_F(CalibrationEditorTest, ClosedWindowStartsAnew) {
  Stop();
  form.cmdSup.click();
  form.txtEdit.text = "70";
  form.close();
  EXPECT_FALSE(form.visible);
  EXPECT_FALSE(form.loaded);
  bench.Read(50);
  EXPECT_EQ(form.sldIndex.value, 0) << "an unloaded window follows nothing";
  bench.editor.Open();
  EXPECT_TRUE(form.visible);
  EXPECT_EQ(form.txtEdit.text, "60");
  EXPECT_EQ(form.selected_point, 0);
  EXPECT_EQ(form.cmdStop.caption, "Stop &RSSI");
}

TEST_F(CalibrationEditorTest, ClearingFromTheMainWindowLoadsItHidden) {
  form.close();
  bench.forms.form1.mnuDefaultCalibration.click();
  EXPECT_TRUE(form.loaded);
  EXPECT_FALSE(form.visible);
  bench.Read(32);
  EXPECT_EQ(form.lblSraw.caption, "032");
  rows[60] = {"", "9.5", ""};
  bench.editor.Open();
  EXPECT_TRUE(form.visible);
  EXPECT_EQ(form.Label3.caption,
            form.Label2.caption + "\r\n\r\nOther values\r\n--------------------\r\n60     9.5 uV");
  EXPECT_EQ(form.lblRecNbr.caption, "032") << "opening shows the window that has been following";
}

TEST_F(CalibrationEditorTest, EveryDigitOfTypedTextIsKept) {
  bench.table.ClearCalibration(true);
  StopAt(100);
  Type("9x8y7z6-5+4/3:2;1,0 uV");
  EXPECT_EQ(form.txtEdit.text, "9876543210");
  Type("19.09");
  EXPECT_EQ(form.txtEdit.text, "19.09");
  EXPECT_EQ(rows[100], (TableRow{"", "19.09", ""}));
}

TEST_F(CalibrationEditorTest, StoresAtBothEndsOfTheScale) {
  for (const int raw : {0, 255}) {
    bench.table.ClearCalibration(true);
    bench.Read(raw);
    Type("60");
    EXPECT_EQ(rows[static_cast<std::size_t>(raw)], (TableRow{"", "60", ""})) << raw;
    bench.table.ClearCalibration(true);
    StopAt(raw);
    Type("60");
    EXPECT_EQ(rows[static_cast<std::size_t>(raw)], (TableRow{"", "60", ""})) << raw;
    form.cmdStop.click();
  }
}

// Clearing from the editor's own menu loads nothing; the default menu clears as the main window does, once.
TEST_F(CalibrationEditorTest, MenusLoadTheWindowAsTheirCallsSay) {
  int loads = 0;
  form.loaded = false;
  form.load = [&loads] { ++loads; };
  form.mnuClearCalibration.click();
  EXPECT_EQ(loads, 0);
  form.mnuDefaultCalibration.click();
  EXPECT_EQ(loads, 1);
  bench.forms.form1.mnuDefaultCalibration.click();
  EXPECT_EQ(loads, 2);
  bench.files.SaveS2Ftable("/car/Calibration1.cfg");
  bench.forms.form1.mnuLoadConfig1.click();
  EXPECT_EQ(loads, 3);
}

}  // namespace
}  // namespace kestrum
