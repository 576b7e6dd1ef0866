#include "signal/calibration_files.h"

#include <gtest/gtest.h>

#include <map>

#include "config/app_title.h"
#include "signal/signal_bench.h"
#include "text/text_file.h"

namespace kestrum {
namespace {

using test::Bytes;

constexpr const char* kPath = "/car/Calibration1.cfg";

class CalibrationFilesTest : public ::testing::Test {
 protected:
  test::SignalBench bench;
  Form1& form = bench.forms.form1;
  Settings& settings = bench.state.settings;
  S2FtableRows& rows = bench.table.S2Ftable;
  std::vector<test::ShownBox>& messages = bench.world.dialogs.messages;

  // A file with this header and these rows; the others hold the separators alone.
  std::string FileOf(const std::string& header, const std::map<int, std::string>& lines = {}) {
    std::vector<std::string> text = {header};
    for (int row = 0; row < 256; ++row) {
      const auto line = lines.find(row);
      text.push_back(line == lines.end() ? ", , " : line->second);
    }
    return JoinLines(text);
  }
  void Put(const std::string& bytes) { bench.world.files.files[kPath] = bytes; }
  void Load(const std::string& bytes) {
    Put(bytes);
    bench.files.LoadS2Ftable(kPath);
  }
  void ExpectMessage(const std::string& text) {
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_EQ(messages[0].title, "Kestrum Auto field strenght logger ");
    EXPECT_EQ(messages[0].text, text);
    EXPECT_EQ(messages[0].icon, Icon::kExclamation);
  }
};

TEST_F(CalibrationFilesTest, SavesTheDefaultTable) {
  bench.files.SaveS2Ftable(kPath);
  const std::string& bytes = bench.world.files.files[kPath];
  EXPECT_TRUE(
      bytes.starts_with(" FT840 LSB 3630 kHz\r\n"
                        "S0, 0, 0\r\n"
                        "S1, 0.2, 0.083\r\n"
                        "S2, 0.39, 0.16\r\n"
                        ", , \r\n"))
      << bytes.substr(0, 80);
  EXPECT_TRUE(bytes.ends_with(", , \r\nS9 + 60dB, 50000, 20750\r\n"));
  EXPECT_EQ(SplitLines(bytes).size(), 257U);
  EXPECT_TRUE(messages.empty());
}

TEST_F(CalibrationFilesTest, NeverSavesTheCurrentReading) {
  bench.Read(100);
  bench.files.SaveS2Ftable(kPath);
  EXPECT_EQ(bench.world.files.files[kPath].find("S8+"), std::string::npos);
  EXPECT_EQ(SplitLines(bench.world.files.files[kPath]).size(), 257U);
}

TEST_F(CalibrationFilesTest, HeaderNamesRigModeAndFrequency) {
  struct Row {
    int rig;
    int mode;
    const char* box;
    const char* argument;
    const char* header;
  };
  const Row table[] = {
      {1, 1, "145000 kHz", "", " FT817 USB 145000 kHz"},
      {2, 2, " 3631 kHz", "", " FT840 LSB  3631 kHz"},
      {3, 3, "7050", "", " FT847 CW 7050"},
      {4, 4, "7050", " 14200 kHz ", " FT857 CWN 14200 kHz"},
      {5, 5, "7050", "", " FT897 AM 7050"},
      {1, 6, "7050", "", " FT817 AMN 7050"},
      {1, 7, "7050", "", " FT817  7050"},  // kept on purpose: FM has no text
  };
  for (const auto& row : table) {
    settings.RigModel = row.rig;
    settings.RigMode = static_cast<std::int16_t>(row.mode);
    form.txtFrequency.text = row.box;
    EXPECT_EQ(bench.files.RigModeFreqText(row.argument), row.header);
  }
}

TEST_F(CalibrationFilesTest, FaultOfSavingIsTold) {
  bench.world.files.write_fault = "Disk full";
  bench.files.SaveS2Ftable(kPath);
  ExpectMessage("SaveS2Ftable\r\n/car/Calibration1.cfgDisk full");
}

TEST_F(CalibrationFilesTest, MissingFileIsToldAndTheOldTableStays) {
  const auto before = rows;
  bench.files.LoadS2Ftable("/car/none.cfg");
  ExpectMessage("/car/none.cfgLoadS2Ftable\r\nNo such file or directory");
  EXPECT_EQ(rows, before);
  EXPECT_EQ(bench.StatusText(), "  Default Calibration Table");
  EXPECT_TRUE(bench.world.serial.written.empty());
}

TEST_F(CalibrationFilesTest, LoadedTableReplacesTheOldOne) {
  Load(FileOf(" FT840 USB 7050 kHz",
              {{0, "S0, 0, 0"}, {5, " S3 ,  1.5 , 0.4 , extra, more"}, {255, "S9, 9, 8"}}));
  S2FtableRows expected;
  expected[0] = {"S0", "0", "0"};
  expected[5] = {"S3", "1.5", "0.4"};
  expected[255] = {"S9", "9", "8"};
  EXPECT_EQ(rows, expected);
  EXPECT_TRUE(messages.empty());
  EXPECT_EQ(bench.StatusText(), "  /car/Calibration1.cfg");
}

TEST_F(CalibrationFilesTest, RoundTrip) {
  rows[20] = {"", "1.7", ""};
  bench.files.SaveS2Ftable(kPath);
  auto expected = rows;
  expected[kCurrentRow] = {};
  const std::string bytes = bench.world.files.files[kPath];
  rows[30] = {"S5", "2", "1"};
  bench.files.LoadS2Ftable(kPath);
  EXPECT_EQ(rows, expected);
  bench.files.SaveS2Ftable(kPath);
  // Tuning writes nothing into the box but the frequency of the header.
  EXPECT_EQ(bench.world.files.files[kPath], bytes);
}

TEST_F(CalibrationFilesTest, LineEndsOfOtherSystemsAreRead) {
  std::string bytes = FileOf(" FT840 USB 7050 kHz", {{255, "S9, 9, 8"}});
  std::erase(bytes, '\r');
  Load(bytes);
  EXPECT_EQ(rows[255], (TableRow{"S9", "9", "8"}));
  bytes.pop_back();  // no end at the last line
  rows[255] = {};
  Load(bytes);
  EXPECT_EQ(rows[255], (TableRow{"S9", "9", "8"}));
  EXPECT_TRUE(messages.empty());
}

TEST_F(CalibrationFilesTest, LinesBeyondTheTableAreIgnored) {
  Load(FileOf(" FT840 USB 7050 kHz", {{0, "S0, 0, 0"}}) + "S9, 9, 9\r\nrubbish\r\n");
  EXPECT_TRUE(messages.empty());
  EXPECT_EQ(rows[kCurrentRow], TableRow());
}

TEST_F(CalibrationFilesTest, LoadedTableIsTidied) {
  Load(
      FileOf(" FT840 USB 7050 kHz", {{0, "S0, 0, 0"}, {10, "S1, 5, 1"}, {20, "S2, 4, 2"}, {30, "S3, 6, 3"}}));
  EXPECT_EQ(rows[10].s, "S1");
  EXPECT_EQ(rows[20], TableRow());
  EXPECT_EQ(rows[30].s, "S3");
}

TEST_F(CalibrationFilesTest, ShortFileKeepsWhatWasRead) {
  Load(" FT840 USB 7050 kHz\r\nS0, 0, 0\r\nS1, 5, 1\r\nS2, 4, 2\r\n");
  ExpectMessage("/car/Calibration1.cfgLoadS2Ftable\r\nInput past end of file");
  S2FtableRows expected;
  expected[0] = {"S0", "0", "0"};
  expected[1] = {"S1", "5", "1"};
  expected[2] = {"S2", "4", "2"};  // not tidied
  EXPECT_EQ(rows, expected);
  EXPECT_EQ(bench.StatusText(), "  Calibration cleared.");
}

TEST_F(CalibrationFilesTest, ShortLineKeepsItsCells) {
  const std::pair<const char*, TableRow> table[] = {
      {"S1, 0.2", {"S1", "0.2", ""}},
      {"S1,0.2,0.1", {"S1,0.2,0.1", "", ""}},
      {"", {"", "", ""}},
      {", ,", {"", ",", ""}},
  };
  for (const auto& [line, row] : table) {
    messages.clear();
    Load(FileOf(" FT840 USB 7050 kHz", {{0, "S0, 0, 0"}, {1, line}, {2, "S2, 1, 1"}}));
    ExpectMessage("/car/Calibration1.cfgLoadS2Ftable\r\nA line holds fewer than three fields");
    EXPECT_EQ(rows[0], (TableRow{"S0", "0", "0"}));
    EXPECT_EQ(rows[1], row) << line;
    EXPECT_EQ(rows[2], TableRow()) << "nothing after the bad line";
  }
}

TEST_F(CalibrationFilesTest, EmptyFileEmptiesTheTable) {
  Load("");
  ExpectMessage("/car/Calibration1.cfgLoadS2Ftable\r\nInput past end of file");
  EXPECT_EQ(rows, S2FtableRows());
  EXPECT_EQ(bench.StatusText(), "  Calibration cleared.");
}

TEST_F(CalibrationFilesTest, HeaderWithoutFrequencyTouchesNothingButTheTable) {
  for (const char* header : {"", " FT857", " FT857 USB", "FT857 7050"}) {
    messages.clear();
    Load(FileOf(header, {{0, "S0, 0, 0"}}));
    ExpectMessage("/car/Calibration1.cfgLoadS2Ftable\r\nThe first line holds no frequency");
    EXPECT_EQ(rows, S2FtableRows()) << header;
    EXPECT_EQ(settings.RigModel, kFT840) << header;
    EXPECT_EQ(settings.RigMode, kLsb) << header;
    EXPECT_EQ(form.lblFreq.caption, " 3630 kHz") << header;
    EXPECT_TRUE(bench.world.serial.written.empty()) << header;
  }
}

TEST_F(CalibrationFilesTest, HeaderSendsModeThenFrequency) {
  Load(FileOf(" FT840 CW 14200 kHz"));
  EXPECT_EQ(settings.RigMode, kCw);
  EXPECT_TRUE(form.OptCwWide.checked);
  EXPECT_EQ(form.txtFrequency.text, "14200 kHz");
  EXPECT_EQ(form.lblFreq.caption, " 14200 kHz");
  EXPECT_EQ(bench.world.serial.written,
            (std::vector{Bytes({0, 0, 0, 2, 12}), Bytes({0x00, 0x00, 0x42, 0x01, 0x0A})}));
}

TEST_F(CalibrationFilesTest, ModesOfTheHeader) {
  const std::pair<const char*, int> table[] = {{"USB", 1}, {"LSB", 2}, {"CW", 3},  {"CWN", 4}, {"AM", 5},
                                               {"AMN", 6}, {"FM", 7},  {"usb", 1}, {"Cwn", 4}};
  for (const auto& [name, mode] : table) {
    settings.RigMode = 0;
    EXPECT_TRUE(bench.files.SetRigModeFreq(" FT840 " + std::string(name) + " 7050 kHz"));
    EXPECT_EQ(settings.RigMode, mode) << name;
  }
}

TEST_F(CalibrationFilesTest, UnknownModeIsNotSent) {
  for (const char* header : {" FT840  7050 kHz", " FT840 SSB 7050 kHz"}) {
    bench.world.serial.written.clear();
    EXPECT_TRUE(bench.files.SetRigModeFreq(header));
    EXPECT_EQ(settings.RigMode, kLsb);
    EXPECT_EQ(bench.world.serial.written.size(), 1U) << "the frequency only";
    EXPECT_EQ(form.lblFreq.caption, " 7050 kHz");
  }
}

TEST_F(CalibrationFilesTest, FrequencyIsFoundBehindTheBlankOfTheBox) {
  for (const char* header : {" FT840 LSB  7050 kHz", " FT840   7050 kHz", " FT840 LSB 7050"}) {
    form.lblFreq.caption.clear();
    EXPECT_TRUE(bench.files.SetRigModeFreq(header));
    EXPECT_EQ(form.txtFrequency.text, "7050 kHz") << header;
    EXPECT_EQ(form.lblFreq.caption, " 7050 kHz") << header;
  }
}

TEST_F(CalibrationFilesTest, TypedCommaOfTheBoxIsADecimalPoint) {
  EXPECT_TRUE(bench.files.SetRigModeFreq(" FT857 LSB 30000,5 kHz"));
  EXPECT_TRUE(bench.state.AboveHF);
  EXPECT_EQ(form.txtFrequency.text, "30000.5 kHz");
  EXPECT_EQ(bench.bands_crossed, 0);
}

TEST_F(CalibrationFilesTest, HeaderSelectsTheRig) {
  const std::pair<const char*, int> table[] = {{"FT817", 1}, {"ft840", 2}, {"FT847", 3},
                                               {"Ft857", 4}, {"FT897", 5}, {"FT1000", 5}};
  for (const auto& [name, rig] : table) {
    EXPECT_TRUE(bench.files.SetRigModeFreq(" " + std::string(name) + " USB 7050 kHz"));
    EXPECT_EQ(settings.RigModel, rig) << name;
    int number = 0;
    for (const auto* item : RigItems(form)) EXPECT_EQ(item->checked, ++number == rig) << name;
    EXPECT_EQ(form.cmdFT817OnOff.enabled, rig == kFT817);
  }
  EXPECT_EQ(bench.StatusText(), "Cat FT897 Com1  Default Calibration Table");
}

TEST_F(CalibrationFilesTest, BandFollowsTheHeaderWithoutTheDefaultTable) {
  const std::map<int, std::string> lines = {{0, "S0, 0, 0"}, {9, "S9, 9, 9"}};
  Load(FileOf(" FT847 USB 145000 kHz", lines));
  EXPECT_EQ(settings.RigModel, kFT847);
  EXPECT_TRUE(bench.state.AboveHF);
  EXPECT_EQ(rows[9].s, "S9");
  Load(FileOf(" FT847 USB 30000 kHz", lines));
  EXPECT_FALSE(bench.state.AboveHF);
  EXPECT_EQ(rows[9].s, "S9");
  EXPECT_EQ(rows[128], TableRow());
  EXPECT_EQ(bench.bands_crossed, 0);
}

TEST_F(CalibrationFilesTest, BlockEndsOnceBeforeRigModeOrFrequencyChange) {
  std::vector<std::string> ends;  // what is in force when a block ends
  bench.rig.block_ends = [&] {
    ends.push_back(std::to_string(settings.RigModel) + " " + std::to_string(settings.RigMode) +
                   form.lblFreq.caption);
  };
  bench.files.SetRigModeFreq(" FT840 LSB 3630 kHz");
  EXPECT_TRUE(ends.empty()) << "set already";
  bench.files.SetRigModeFreq(" FT840 USB 3630 kHz");
  bench.files.SetRigModeFreq(" FT857 USB 3630 kHz");
  bench.files.SetRigModeFreq(" FT857 USB 50100 kHz");
  // A block may be asked to end again while nothing has come since; its records are written once.
  ASSERT_FALSE(ends.empty());
  EXPECT_EQ(ends.front(), "2 2 3630 kHz");
  EXPECT_EQ(std::count(ends.begin(), ends.end(), "2 1 3630 kHz"), 1);
  EXPECT_EQ(std::count(ends.begin(), ends.end(), "4 1 3630 kHz"), 1);
}

TEST_F(CalibrationFilesTest, OnlyAValueAboveZeroIsAFrequency) {
  for (const char* header :
       {" FT857 USB none", " FT857 CW abc kHz", " FT857 USB 0", " FT857 USB -7050 kHz"}) {
    Load(FileOf(header, {{0, "S0, 0, 0"}}));
    ExpectMessage("/car/Calibration1.cfgLoadS2Ftable\r\nThe first line holds no frequency");
    messages.clear();
    EXPECT_EQ(settings.RigModel, kFT840) << header;
    EXPECT_EQ(form.lblFreq.caption, " 3630 kHz") << header;
  }
}

TEST_F(CalibrationFilesTest, AUtf8MarkAtTheStartIsSkipped) {
  Load("\xEF\xBB\xBF" + FileOf(" FT857 USB 7050 kHz", {{0, "S0, 0, 0"}}));
  EXPECT_TRUE(messages.empty());
  EXPECT_EQ(settings.RigModel, kFT857);
}

TEST_F(CalibrationFilesTest, FilesAndFieldsAreBounded) {
  Load(FileOf(" FT857 USB 7050 kHz", {{0, "S0, 0, 0"}, {5, std::string(65, 'S') + ", 1, 1"}}));
  ExpectMessage("/car/Calibration1.cfgLoadS2Ftable\r\nA line holds a field of more than 64 characters");
  EXPECT_EQ(rows[5], TableRow());
  messages.clear();
  const S2FtableRows before = rows;
  Load(std::string((1 << 20) + 1, 'x'));
  ExpectMessage("/car/Calibration1.cfgLoadS2Ftable\r\nFile too large");
  EXPECT_EQ(rows, before);
}

TEST_F(CalibrationFilesTest, ABareNameIsAFileOfTheApplicationFolder) {
  settings.CalibrationFiles[0] = "bench.cfg";
  bench.files.SaveS2Ftable("\\leading.cfg");
  EXPECT_TRUE(bench.world.files.files.contains("/car/leading.cfg"));
  bench.world.files.files["/car/bench.cfg"] = FileOf(" FT840 USB 7050 kHz", {{1, "bare, 1, 1"}});
  form.mnuLoadConfig1.click();
  EXPECT_EQ(rows[1].s, "bare");
  EXPECT_EQ(bench.StatusText(), "  bench.cfg");
}

TEST_F(CalibrationFilesTest, MenuEntriesOfTheMainWindow) {
  bench.world.files.files["/car/Calibration1.cfg"] = FileOf(" FT840 USB 7050 kHz", {{1, "one, 1, 1"}});
  bench.world.files.files["/car/Calibration2.cfg"] = FileOf(" FT840 USB 7050 kHz", {{1, "two, 2, 2"}});
  form.mnuLoadConfig1.click();
  EXPECT_EQ(rows[1].s, "one");
  form.mnuLoadConfig2.click();
  EXPECT_EQ(rows[1].s, "two");
  form.mnuDefaultCalibration.click();
  EXPECT_EQ(rows[1].s, "S1");
  EXPECT_EQ(bench.StatusText(), "  Default Calibration Table");
}

// Kept on purpose: an existing file that is typed is not used, the remembered third one is.
TEST_F(CalibrationFilesTest, MainWindowLoadsTheThirdFileInsteadOfAnExistingOne) {
  bench.world.files.files["/home/bench.cfg"] = FileOf(" FT840 USB 7050 kHz", {{1, "typed, 1, 1"}});
  bench.world.files.files["/car/Calibration3.cfg"] = FileOf(" FT840 USB 7050 kHz", {{1, "third, 3, 3"}});
  bench.world.dialogs.answers = {"/home/bench.cfg"};
  form.mnuLoad.click();
  ASSERT_EQ(bench.world.dialogs.inputs.size(), 1U);
  EXPECT_EQ(bench.world.dialogs.inputs[0].title, "Kestrum Auto field strenght logger ");
  EXPECT_EQ(bench.world.dialogs.inputs[0].prompt, "Give file name Calibration to load");
  EXPECT_EQ(bench.world.dialogs.inputs[0].proposal, "/car/Calibration3.cfg");
  EXPECT_EQ(rows[1].s, "third");
  EXPECT_EQ(bench.StatusText(), "  /car/Calibration3.cfg");
  EXPECT_EQ(settings.CalibrationFiles[2], "/car/Calibration3.cfg");
}

TEST_F(CalibrationFilesTest, MainWindowReportsEmptyAndUnknownNames) {
  const auto before = rows;
  bench.world.dialogs.answers = {"/home/none.cfg"};
  form.mnuLoad.click();
  ExpectMessage("/home/none.cfgLoadS2Ftable\r\nNo such file or directory");
  messages.clear();
  form.mnuLoad.click();
  ExpectMessage("LoadS2Ftable\r\nNo such file or directory");
  EXPECT_EQ(rows, before);
}

TEST_F(CalibrationFilesTest, EndOfProgramUnderTheInputBox) {
  bench.world.dialogs.while_open = [&] { bench.world.program.End(); };
  form.mnuLoad.click();
  EXPECT_TRUE(messages.empty());
}

TEST_F(CalibrationFilesTest, TheThirdPanelNamesTheRigOfTheFile) {
  Load(FileOf("FT857 USB 7050"));
  EXPECT_EQ(form.StatusBar1[2].text, "Com1=9k6 FT857 ");
  EXPECT_TRUE(form.mnuFT857.checked);
  EXPECT_EQ(bench.StatusText(), "Cat FT857 Com1  /car/Calibration1.cfg");
  Load(FileOf("FT840 USB 7050"));
  EXPECT_EQ(form.StatusBar1[2].text, "Com1=9k6 FT840 ");
}

}  // namespace
}  // namespace kestrum
