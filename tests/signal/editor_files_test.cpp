#include <gtest/gtest.h>

#include "signal/calibration_editor.h"
#include "signal/signal_bench.h"
#include "text/text_file.h"

namespace kestrum {
namespace {

// The load and save menus of the calibration editor.
class EditorFilesTest : public ::testing::Test {
 protected:
  test::SignalBench bench;
  Form3& form = bench.forms.form3;
  S2FtableRows& rows = bench.table.S2Ftable;
  Settings& settings = bench.state.settings;
  test::ScriptedDialogs& dialogs = bench.world.dialogs;

  EditorFilesTest() { bench.editor.Open(); }
};

TEST_F(EditorFilesTest, SavesAndLoadsTheTwoFixedFiles) {
  auto& files = bench.world.files.files;
  rows[60] = {"", "9.5", ""};
  form.mnuSave1.click();
  rows[60] = {"", "9.6", ""};
  form.mnuSave2.click();
  EXPECT_TRUE(files.contains("/car/Calibration1.cfg"));
  EXPECT_TRUE(files.contains("/car/Calibration2.cfg"));
  EXPECT_TRUE(dialogs.questions.empty());
  form.mnuClearCalibration.click();
  form.mnuLoadConf1.click();
  EXPECT_EQ(rows[60], (TableRow{"", "9.5", ""}));
  EXPECT_EQ(form.Label3.caption,
            form.Label2.caption + "\r\n\r\nOther values\r\n--------------------\r\n60     9.5 uV");
  form.mnuLoadConf2.click();
  EXPECT_EQ(rows[60], (TableRow{"", "9.6", ""}));
  EXPECT_EQ(form.Label3.caption,
            form.Label2.caption + "\r\n\r\nOther values\r\n--------------------\r\n60     9.6 uV");
}

TEST_F(EditorFilesTest, TypedFileIsLoadedAndRemembered) {
  rows[60] = {"", "9.5", ""};
  bench.files.SaveS2Ftable("/home/bench.cfg");
  form.mnuClearCalibration.click();
  dialogs.answers = {"/home/bench.cfg"};
  form.mnuLoad.click();
  ASSERT_EQ(dialogs.inputs.size(), 1U);
  EXPECT_EQ(dialogs.inputs[0].title, "Kestrum Auto field strenght logger ");
  EXPECT_EQ(dialogs.inputs[0].prompt, "Give filename Calibration to load.");
  EXPECT_EQ(dialogs.inputs[0].proposal, "/car/Calibration3.cfg");
  EXPECT_EQ(settings.CalibrationFiles[2], "/home/bench.cfg");
  EXPECT_EQ(rows[60], (TableRow{"", "9.5", ""}));
  EXPECT_NE(form.Label3.caption.find("9.5 uV"), std::string::npos);
}

TEST_F(EditorFilesTest, UnknownFileIsReportedAndNotRemembered) {
  for (const char* answer : {"/home/none.cfg", ""}) {
    dialogs.messages.clear();
    dialogs.answers = {answer};
    form.mnuLoad.click();
    ASSERT_EQ(dialogs.messages.size(), 1U);
    EXPECT_EQ(dialogs.messages[0].text, std::string(answer) + "LoadS2Ftable\r\nNo such file or directory");
    EXPECT_EQ(settings.CalibrationFiles[2], "/car/Calibration3.cfg");
  }
}

TEST_F(EditorFilesTest, SaveAsUnderANewName) {
  for (const auto& click : {form.mnuSaveAs.click, form.cmdSave.click}) {
    dialogs.inputs.clear();
    bench.world.files.files.clear();
    dialogs.answers = {"/home/new.cfg"};
    click();
    ASSERT_EQ(dialogs.inputs.size(), 1U);
    EXPECT_EQ(dialogs.inputs[0].title, "Kestrum Auto field strenght logger ");
    EXPECT_EQ(dialogs.inputs[0].prompt, "Give filename Calibration to save.");
    EXPECT_EQ(dialogs.inputs[0].proposal, "/car/Calibration3.cfg");
    EXPECT_TRUE(dialogs.questions.empty());
    EXPECT_EQ(SplitLines(bench.world.files.files["/home/new.cfg"]).size(), 257U);
    EXPECT_EQ(settings.CalibrationFiles[2], "/car/Calibration3.cfg") << "not remembered";
  }
}

TEST_F(EditorFilesTest, SaveAsCancelled) {
  form.mnuSaveAs.click();
  EXPECT_EQ(bench.world.files.replaces, 0);
  EXPECT_TRUE(dialogs.questions.empty());
}

// Kept on purpose: an existing file is remembered even when it is not overwritten.
TEST_F(EditorFilesTest, SaveAsAsksBeforeItOverwrites) {
  bench.world.files.files["/home/old.cfg"] = "old";
  dialogs.answers = {"/home/old.cfg", "/home/old.cfg"};
  dialogs.yes_no = {false, true};
  form.mnuSaveAs.click();
  ASSERT_EQ(dialogs.questions.size(), 1U);
  EXPECT_EQ(dialogs.questions[0].title, "Kestrum Auto field strenght logger ");
  EXPECT_EQ(dialogs.questions[0].text, "Overwrite/home/old.cfg");
  EXPECT_EQ(dialogs.questions[0].icon, Icon::kExclamation);
  EXPECT_EQ(bench.world.files.files["/home/old.cfg"], "old");
  EXPECT_EQ(settings.CalibrationFiles[2], "/home/old.cfg");
  form.mnuSaveAs.click();
  EXPECT_EQ(SplitLines(bench.world.files.files["/home/old.cfg"]).size(), 257U);
}

TEST_F(EditorFilesTest, EndOfProgramUnderABox) {
  dialogs.while_open = [&] { bench.world.program.End(); };
  dialogs.answers = {"/home/new.cfg", "/car/Calibration1.cfg"};
  form.mnuSaveAs.click();
  EXPECT_EQ(bench.world.files.replaces, 0);
  form.mnuLoad.click();
  EXPECT_TRUE(dialogs.messages.empty());
}

// A table built on the bench, saved, lost and loaded again.
TEST_F(EditorFilesTest, BenchRoundTrip) {
  form.mnuClearCalibration.click();
  form.cmdSup.click();
  for (const int raw : {12, 24, 40, 64}) {  // S1 to S4
    bench.Read(raw);
    form.cmdSstore.click();
    form.cmdSup.click();
  }
  bench.Read(90);
  form.txtEdit.text = "2.2";
  form.cmduVStore.click();
  form.mnuSave1.click();
  auto built = rows;
  built[kCurrentRow] = {};
  EXPECT_EQ(built[24], (TableRow{"S2", "0.39", "0.16"}));
  EXPECT_EQ(built[90], (TableRow{"", "2.2", ""}));
  form.mnuDefaultCalibration.click();
  form.mnuLoadConf1.click();
  EXPECT_EQ(rows, built);
}

}  // namespace
}  // namespace kestrum
