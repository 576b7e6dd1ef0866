#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>

#include "support/scripted_car.h"
#include "text/text_file.h"

// A record is made of one reading, one position and one moment, and stands under a header that fits it,
// whatever happens meanwhile.
namespace kestrum::test {
namespace {

using std::chrono::seconds;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

struct TrueCar : ScriptedCar {
  explicit TrueCar(Settings wanted = UsualSettings()) {
    WriteConfig(wanted, "&On");
    Start({.start_logging = true});
    SendGps("5158.00N", "00532.00E");
    world.serial.written.clear();
  }
  void Tick() { form1.tmrMain.tick(); }
  // `deed` happens once, in the pump between reading and record.
  void InThePump(std::function<void()> deed) {
    world.pump.on_pump = [deed = std::move(deed), done = false]() mutable {
      if (!std::exchange(done, true)) deed();
    };
  }
  const std::string& Record() const { return form1.lblLog.caption; }
};

Settings Ft857() {
  Settings settings = ScriptedCar::UsualSettings();
  settings.RigModel = kFT857;
  settings.FrequencyText = "14200";
  return settings;
}

Settings Averaging(int interval_ms = 1200) {
  Settings settings = ScriptedCar::UsualSettings();
  settings.AverageRSSI = true;
  settings.TimeIntervalMs = static_cast<std::int16_t>(interval_ms);
  return settings;
}

TEST(ARecord, IsReadAnewAfterABandChangeInItsPump) {
  TrueCar car(Ft857());
  car.s_meter = 128;
  car.InThePump([&car] {
    car.s_meter = 32;
    car.form1.txtFrequency.text = "145000";
    car.form1.cmdSetFreq.click();
  });
  car.Tick();
  EXPECT_THAT(car.Record(), HasSubstr(", 32, S5, 0.313 uV, 0.13 mV/m"));
}

TEST(ARecord, IsReadAnewAfterARigChangeInItsPump) {
  TrueCar car;
  car.s_meter = 112;
  car.InThePump([&car] { car.form1.mnuFT857.click(); });
  car.Tick();
  ASSERT_EQ(car.world.serial.written.size(), 4U);  // reading, mode, lock, reading
  EXPECT_EQ(car.world.serial.written.back(), Bytes({0, 0, 0, 0, 0xE7}));
  EXPECT_THAT(car.Record(), HasSubstr(", 112, S8+, 36.7 uV, 15.21 mV/m"));
}

TEST(ARecord, IsReadAnewAfterANewTableInItsPump) {
  TrueCar car;
  car.s_meter = 112;
  car.InThePump([&car] { car.form1.mnuDefaultCalibration.click(); });
  car.Tick();
  EXPECT_EQ(car.world.serial.written.size(), 2U);
  EXPECT_THAT(car.Record(), HasSubstr(", 112, S8+, 36.7 uV, 15.21 mV/m"));
}

TEST(ARecord, IsNotReadTwiceWhenNothingHasChanged) {
  TrueCar car;
  car.InThePump([&car] { car.SendGps("5159.00N", "00532.00E"); });
  car.Tick();
  EXPECT_EQ(car.world.serial.written.size(), 1U);
  EXPECT_THAT(car.Record(), HasSubstr(", 5159.00N, "));
}

// The averaging timer reads in the pump, yet the record keeps its mean.
TEST(ARecord, KeepsItsMeanWhenTheAveragingTimerTicksInItsPump) {
  TrueCar car(Averaging());
  for (const int sample : {10, 128, 128, 128}) car.app.s_meter.AverageRSSIValue(sample, false);
  car.s_meter = 8;
  car.InThePump([&car] { car.form1.tmrAverageRSSI.tick(); });
  car.Tick();
  EXPECT_THAT(car.Record(), HasSubstr(", 128, S9, 50 uV, 20.7 mV/m"));
  EXPECT_EQ(car.form1.lblRSSI.caption, "S3") << "the window shows the latest reading";
  EXPECT_EQ(car.app.state.RssiRaw, 8);
}

struct MeanRow {
  const char* name;
  void (*change)(TrueCar&);
};
struct AMean : testing::TestWithParam<MeanRow> {};

TEST_P(AMean, StartsAnewWithWhatItIsMeasuredOn) {
  TrueCar car(Averaging());
  for (const int sample : {1, 200, 200}) car.app.s_meter.AverageRSSIValue(sample, false);
  GetParam().change(car);
  for (const int sample : {1, 100, 100}) car.app.s_meter.AverageRSSIValue(sample, false);
  EXPECT_EQ(car.app.s_meter.AveragedRssi(), 100);
}

TEST_P(AMean, OfSomethingElseIsNotTaken) {
  TrueCar car(Averaging());
  for (const int sample : {1, 200, 200}) car.app.s_meter.AverageRSSIValue(sample, false);
  GetParam().change(car);
  car.Tick();
  EXPECT_THAT(car.Record(), HasSubstr(", 0, S0, 0 uV, 0 mV/m"));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, AMean,
    testing::Values(MeanRow{"Rig", [](TrueCar& car) { car.form1.mnuFT857.click(); }},
                    MeanRow{"Mode", [](TrueCar& car) { car.app.rig.SetMode(kUsb); }},
                    MeanRow{"Frequency", [](TrueCar& car) { car.app.panel.ApplyFrequency("7050"); }},
                    MeanRow{"Table", [](TrueCar& car) { car.form1.mnuDefaultCalibration.click(); }}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(ARecord, HasElevenFieldsWhateverTheReaderSends) {
  TrueCar car;
  for (const std::string& text :
       {std::string("5158,00N"), std::string("51\r\n58.00N"), std::string(100000, '7')}) {
    car.SendGps(text, "00532.00E", "A", "33", "2,7");
    car.Tick();
    std::size_t fields = 1;
    for (auto at = car.Record().find(", "); at != std::string::npos; at = car.Record().find(", ", at + 1))
      ++fields;
    EXPECT_EQ(fields, 11U);
    EXPECT_EQ(car.Record().find_first_of("\r\n"), std::string::npos);
    EXPECT_LT(car.Record().size(), 300U);
  }
}

TEST(AText, OfTheReaderOverSixtyFourCharactersIsNone) {
  TrueCar car;
  car.SendGps(std::string(64, '1'), std::string(65, '1'));
  EXPECT_EQ(car.form1.lblDDELat.caption, std::string(64, '1'));
  EXPECT_EQ(car.form1.lblDDELong.caption, "");
}

struct HeaderRow {
  const char* name;
  void (*change)(TrueCar&);
  const char* old_part;  // of the header of the records before
  const char* new_part;  // of those after
};
struct ABlock : testing::TestWithParam<HeaderRow> {};

TEST_P(ABlock, EndsBeforeWhatItsHeaderTellsChanges) {
  TrueCar car;
  car.Tick();
  car.Tick();
  car.form1.txtFrequency.text = "7000 kHz";  // typed, not set
  GetParam().change(car);
  ASSERT_THAT(car.Log(), testing::SizeIs(5)) << "the records before stand in their block";
  EXPECT_THAT(car.Log()[1], HasSubstr(GetParam().old_part));
  EXPECT_THAT(car.Log()[1], HasSubstr(" 3630 kHz, ")) << "the frequency in force, not the typed one";
  EXPECT_EQ(car.app.log.LogCount, 0);
  GetParam().change(car);
  car.Tick();
  GetParam().change(car);
  EXPECT_THAT(car.Log(), testing::SizeIs(5)) << "setting what is set already ends no block";
  car.form1.cmdLoggin.click();
  EXPECT_THAT(car.Log()[6], HasSubstr(GetParam().new_part));
}

void AnswerSite(TrueCar& car, const char* latitude, const char* longitude, const char* height) {
  car.world.dialogs.answers = {latitude, longitude, height};
  car.form1.mnuTxLatLong.click();
}

INSTANTIATE_TEST_SUITE_P(
    Rows, ABlock,
    testing::Values(
        HeaderRow{"Rig", [](TrueCar& car) { car.form1.mnuFT857.click(); }, " FT840 LSB ", " FT857 LSB "},
        HeaderRow{"Mode", [](TrueCar& car) { car.app.rig.SetMode(kUsb); }, " FT840 LSB ", " FT840 USB "},
        HeaderRow{"Frequency", [](TrueCar& car) { car.app.panel.ApplyFrequency("7000"); }, " LSB  3630 kHz",
                  " LSB 7000 kHz"},
        HeaderRow{"TxLatitude", [](TrueCar& car) { AnswerSite(car, "5200.00N", "", ""); }, ", 5157.00N, ",
                  ", 5200.00N, "},
        HeaderRow{"TxLongitude", [](TrueCar& car) { AnswerSite(car, "", "00600.00E", ""); }, ", 00532.00E, ",
                  ", 00600.00E, "},
        HeaderRow{"TxHeight", [](TrueCar& car) { AnswerSite(car, "", "", "25"); }, ", 10 m, ", ", 25 m, "},
        HeaderRow{"TxFix", [](TrueCar& car) { car.form1.cmdGetTxFix.click(); }, ", 5157.00N, 00532.00E, 10 m",
                  ", 5158.00N, 00532.00E, 10.1 m"},
        HeaderRow{"Antenna",
                  [](TrueCar& car) {
                    car.form1.cmbTxAntenna.text = "Loop, 5 W";
                    car.form1.cmbTxAntenna.taken();
                  },
                  ", Antenna1, PWR 10W", ", Loop, 5 W"},
        HeaderRow{"AntennaEntered",
                  [](TrueCar& car) {
                    car.form1.cmbTxAntenna.text = "Loop, 5 W";
                    car.form1.cmbTxAntenna.enter_pressed();
                  },
                  ", Antenna1, PWR 10W", ", Loop, 5 W"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(ABlock, OfALogFileChosenByHandCarriesTheFrequencyInForce) {
  TrueCar car;
  car.Tick();
  car.form1.txtFrequency.text = "7000 kHz";
  car.world.dialogs.answers = {"/stick/drive.log"};
  car.form1.mnuSaveLogfile.click();
  EXPECT_THAT(car.Log(), IsEmpty());
  EXPECT_THAT(SplitLines(car.world.files.files["/stick/drive.log"])[1], HasSubstr(" 3630 kHz, "));
}

TEST(ABlock, ThatIsFullShowsThePresentTextOfTheBox) {
  TrueCar car;
  for (int tick = 0; tick < 99; ++tick) car.Tick();
  car.form1.txtFrequency.text = "7000 kHz";
  car.Tick();
  EXPECT_THAT(car.Log()[1], HasSubstr(" LSB 7000 kHz, "));
}

TEST(ABlock, WhoseWriteFailsStopsNothingAndBelongsToNoOther) {
  TrueCar car;
  car.Tick();
  car.world.files.write_fault = "No space left on device";
  car.form1.mnuFT857.click();
  EXPECT_EQ(car.world.dialogs.notices, 1);
  EXPECT_EQ(car.settings.RigModel, kFT857);
  car.world.files.write_fault = "";
  car.Tick();
  car.form1.cmdLoggin.click();
  EXPECT_THAT(car.Log(), testing::SizeIs(4));
  EXPECT_THAT(car.Log()[1], HasSubstr(" FT857 "));
}

TEST(ALeftJournal, IsRecoveredAtTheNextStartAndToldInOneLine) {
  TrueCar car;
  for (int tick = 0; tick < 99; ++tick) car.Tick();
  const std::string pending = car.world.files.files["/car/RSSI-GPS.log.pending"];
  EXPECT_EQ(SplitLines(pending).size(), 102U);
  EXPECT_THAT(car.Log(), IsEmpty());

  ScriptedCar next;
  next.world.files.files = car.world.files.files;
  next.Start();
  EXPECT_EQ(next.Log().size(), 102U);
  EXPECT_EQ(next.form1.lblHint.caption, "99 records of the last drive recovered");
  EXPECT_FALSE(next.world.files.files.contains("/car/RSSI-GPS.log.pending"));
}

TEST(AJournal, BeginsWithWhatWasCollectedBeforeLoggingWasSwitchedOn) {
  TrueCar car;
  car.form1.cmdLoggin.click();
  car.Tick();
  car.Tick();
  EXPECT_FALSE(car.world.files.files.contains("/car/RSSI-GPS.log.pending"));
  car.form1.cmdLoggin.click();
  EXPECT_EQ(SplitLines(car.world.files.files["/car/RSSI-GPS.log.pending"]).size(), 5U);
}

TEST(AJournal, ThatCannotBeWrittenNeverStopsMeasuring) {
  TrueCar car;
  car.world.files.write_fault = "Read-only file system";
  car.world.files.faulty_path = "/car/RSSI-GPS.log.pending";
  for (int tick = 0; tick < 100; ++tick) car.Tick();
  EXPECT_EQ(car.Log().size(), 103U);
  EXPECT_THAT(car.world.dialogs.messages, IsEmpty());
}

TEST(ASlowDisk, IsNeverWaitedFor) {
  TrueCar car;
  car.world.worker.hold = true;
  car.RunFor(seconds(250));
  EXPECT_GE(car.world.serial.written.size(), 230U);
  EXPECT_THAT(car.Log(), IsEmpty());
  car.world.worker.Release();
  EXPECT_EQ(car.Log().size(), 206U);
}

TEST(ADeadDisk, IsToldByTheEndOfTheProcess) {
  TrueCar car;
  car.Tick();
  car.world.worker.hold = car.world.worker.hangs = true;
  car.app.ExitWithoutAsking();
  EXPECT_TRUE(car.world.program.Ended());
  EXPECT_THAT(car.world.program.losses, ElementsAre("Error saving data: the disk does not answer"));
}

TEST(AnEndBySignal, TellsWhatItLost) {
  TrueCar car;
  car.Tick();
  car.world.files.write_fault = "No space left on device";
  car.world.files.faulty_path = "/car/RSSI-GPS.log";
  car.app.ExitWithoutAsking();
  EXPECT_THAT(car.world.program.losses,
              ElementsAre("Error saving data \r\nNo space left on device\r\n/car/RSSI-GPS.log"));
  EXPECT_THAT(car.world.dialogs.messages, IsEmpty());
}

TEST(RestartBox, NothingIsMeasuredOrWrittenUnderItAndASignalSavesNothing) {
  TrueCar car;
  car.Tick();
  car.world.dialogs.yes_no = {true};
  int replaces = 0;
  car.world.dialogs.while_open = [&] {
    if (car.world.dialogs.messages.empty()) return;  // the question before
    car.world.serial.written.clear();
    replaces = car.world.files.replaces;
    car.RunFor(seconds(10));
    car.app.ExitWithoutAsking();
  };
  car.form1.mnuDefaultCfg.click();
  EXPECT_THAT(car.world.serial.written, IsEmpty());
  EXPECT_EQ(car.world.files.replaces, replaces);
  EXPECT_THAT(car.Log(), IsEmpty());
  EXPECT_TRUE(car.world.program.Ended());
  // What was in the buffer is not lost: its journal is recovered by the next start.
  EXPECT_TRUE(car.world.files.files.contains("/car/RSSI-GPS.log.pending"));
}

TEST(LogFileBox, KeepsWhatFillsTheBufferWhileLoggingIsOff) {
  TrueCar car;
  car.form1.cmdLoggin.click();
  car.Tick();
  car.world.dialogs.answers = {"named.log"};
  car.world.dialogs.while_open = [&] { car.RunFor(seconds(250)); };
  car.form1.mnuSaveLogfile.click();
  const auto lines = SplitLines(car.world.files.files["/car/named.log"]);
  const auto records = std::count_if(lines.begin(), lines.end(), [](const std::string& line) {
    return line.find(" mV/m") != std::string::npos;
  });
  EXPECT_GE(records, 230);
  EXPECT_EQ(car.settings.LogFileName, "named.log") << "the text stays as typed";
  EXPECT_EQ(car.form1.lblLoggingInto.text, "Data to named.log");
}

TEST(LogFileBox, ThatIsCancelledThrowsAwayWhatWasNotLogged) {
  TrueCar car;
  car.form1.cmdLoggin.click();
  car.Tick();
  car.world.dialogs.while_open = [&] { car.RunFor(seconds(250)); };
  car.form1.mnuSaveLogfile.click();
  car.world.dialogs.while_open = nullptr;
  EXPECT_THAT(car.Log(), IsEmpty());
}

TEST(AFileName, IsOneOfTheApplicationFolderUnlessItIsAbsolute) {
  for (const auto& [typed, path] :
       std::vector<std::pair<std::string, std::string>>{{"a.log", "/car/a.log"},
                                                        {"\\a.log", "/car/a.log"},
                                                        {"sub/a.log", "/car/sub/a.log"},
                                                        {"/x/a.log", "/x/a.log"}}) {
    TrueCar car;
    car.Tick();
    car.world.dialogs.answers = {typed};
    car.form1.mnuSaveLogfile.click();
    EXPECT_TRUE(car.world.files.files.contains(path)) << typed;
    EXPECT_EQ(car.settings.LogFileName, typed);
  }
}

// Nobody has to answer before the drive goes on.
TEST(ASaveThatFails, IsToldInPassing) {
  TrueCar car;
  car.Tick();
  car.world.files.write_fault = "Read-only file system";
  const int notices = car.world.dialogs.notices;
  car.form1.mnuSavecfg.click();
  car.app.forms.form3.mnuSave1.click();
  EXPECT_EQ(car.world.dialogs.notices, notices + 2);
  const auto& told = car.world.dialogs.messages;
  ASSERT_GE(told.size(), 2U);
  EXPECT_EQ(told[told.size() - 2].text, "SaveCfg\r\nRead-only file system");
  EXPECT_EQ(told.back().text, "SaveS2Ftable\r\n/car/Calibration1.cfgRead-only file system");
}

// A disk that does not answer holds up neither the press nor the readings.
TEST(ASaveThatHangs, HoldsUpNothing) {
  TrueCar car;
  car.Tick();
  car.world.worker.hold = true;
  car.form1.mnuSavecfg.click();
  car.app.forms.form3.mnuSave1.click();
  EXPECT_FALSE(car.world.files.files.contains("/car/Calibration1.cfg"));
  const int count = car.app.log.LogCount;
  car.Tick();
  EXPECT_EQ(car.app.log.LogCount, count + 1);
  car.world.worker.Release();
  EXPECT_TRUE(car.world.files.files.contains("/car/Calibration1.cfg"));
}

TEST(ATableThatIsLoaded, IsTheOneThatWasSavedLast) {
  TrueCar car;
  car.form1.mnuDefaultCalibration.click();
  car.world.worker.hold = true;
  car.app.forms.form3.mnuSave1.click();
  car.app.table.ClearCalibration(false);
  car.form1.mnuLoadConfig1.click();
  EXPECT_EQ(car.app.table.S2Ftable[128].s, "S9");
}

// Each box that a menu opens, held open for five seconds while readings are due every 200 ms.
struct BoxRow {
  const char* name;
  void (*open)(TrueCar&);
  int boxes_before = 0;  // that are answered at once
};
struct ABox : testing::TestWithParam<BoxRow> {};

TEST_P(ABox, StopsNoMeasuring) {
  Settings settings = ScriptedCar::UsualSettings();
  settings.TimeIntervalMs = 200;
  TrueCar car(settings);
  car.Tick();
  car.world.serial.written.clear();
  std::size_t readings = 0;
  int records = 0;
  bool opened = false;
  int boxes_before = GetParam().boxes_before;
  car.world.dialogs.while_open = [&] {
    if (opened || boxes_before-- > 0) return;
    opened = true;
    const int before = car.app.log.LogCount;
    car.world.serial.written.clear();
    car.RunFor(seconds(5));
    readings = car.world.serial.written.size();
    records = car.app.log.LogCount - before;
  };
  GetParam().open(car);
  ASSERT_TRUE(opened);
  EXPECT_GE(readings, 19U);  // a cycle takes 50 ms of its own
  EXPECT_EQ(static_cast<std::size_t>(records), readings);
}

INSTANTIATE_TEST_SUITE_P(
    Menus, ABox,
    testing::Values(BoxRow{"DefaultCfg", [](TrueCar& car) { car.form1.mnuDefaultCfg.click(); }},
                    BoxRow{"SaveLogfile", [](TrueCar& car) { car.form1.mnuSaveLogfile.click(); }},
                    BoxRow{"LoadCalibration1", [](TrueCar& car) { car.form1.mnuLoadConfig1.click(); }},
                    BoxRow{"LoadCalibration2", [](TrueCar& car) { car.form1.mnuLoadConfig2.click(); }},
                    BoxRow{"LoadCalibration", [](TrueCar& car) { car.form1.mnuLoad.click(); }},
                    BoxRow{"Orvandi", [](TrueCar& car) { car.form1.mnuOrvandi.click(); }},
                    BoxRow{"TxLatLong", [](TrueCar& car) { car.form1.mnuTxLatLong.click(); }},
                    BoxRow{"FT847", [](TrueCar& car) { car.form1.mnuFT847.click(); }},
                    BoxRow{"FT897", [](TrueCar& car) { car.form1.mnuFT897.click(); }},
                    BoxRow{"ShortCuts", [](TrueCar& car) { car.form1.mnuShortCuts.click(); }},
                    BoxRow{"About", [](TrueCar& car) { car.form1.mnuAbout.click(); }},
                    BoxRow{"EditorLoad", [](TrueCar& car) { car.app.forms.form3.mnuLoad.click(); }},
                    BoxRow{"EditorSaveAs", [](TrueCar& car) { car.app.forms.form3.mnuSaveAs.click(); }},
                    BoxRow{"EditorAbout", [](TrueCar& car) { car.app.forms.form3.mnuAbout.click(); }},
                    BoxRow{"SetRxModeFirst",
                           [](TrueCar& car) {
                             car.form1.cmdLoggin.click();  // off
                             for (OptionButton* mode : ModeButtons(car.form1)) mode->checked = false;
                             car.form1.cmdLoggin.click();
                           }},
                    BoxRow{"WrongLatitude",
                           [](TrueCar& car) {
                             car.world.dialogs.answers = {"north"};
                             car.form1.mnuTxLatLong.click();
                           },
                           1},
                    BoxRow{"Longitude", [](TrueCar& car) { car.form1.mnuTxLatLong.click(); }, 1},
                    BoxRow{"Height", [](TrueCar& car) { car.form1.mnuTxLatLong.click(); }, 2},
                    BoxRow{"EditorOverwrites",
                           [](TrueCar& car) {
                             car.world.files.files["/car/there.cfg"] = "x";
                             car.world.dialogs.answers = {"there.cfg"};
                             car.app.forms.form3.mnuSaveAs.click();
                           },
                           1}),
    [](const auto& row) { return std::string(row.param.name); });

// The boxes that the program itself opens wait for nobody.
TEST(ANotice, IsNotWaitedFor) {
  TrueCar car;
  car.world.dialogs.while_open = [] { FAIL() << "a box that is waited for"; };
  car.form1.mnuAverageRSSI.click();  // refused below 1100 ms
  car.Tick();
  car.SendGps("5158.00N", "00532.00E", "V");
  car.form1.cmdGetTxFix.click();
  car.world.files.write_fault = "No space left on device";
  for (int tick = 0; tick < 100; ++tick) car.Tick();
  EXPECT_EQ(car.world.dialogs.notices, 3);
}

TEST(TheHint, SaysWhyNothingIsMeasuredAndWhatStartsIt) {
  Settings settings = ScriptedCar::UsualSettings();
  settings.RigModel = kFT817;
  TrueCar car(settings);
  car.form1.cmdFT817OnOff.click();
  EXPECT_FALSE(car.form1.tmrMain.enabled);
  EXPECT_EQ(car.form1.lblHint.caption,
            "Not measuring: the FT817 is switched off. Its button or SetFrequency starts again.");
  car.form1.mnuFT840.click();
  EXPECT_FALSE(car.form1.tmrMain.enabled);
  EXPECT_EQ(car.form1.lblHint.caption,
            "Not measuring since the FT817 was switched off. SetFrequency starts again.");
  car.form1.cmdSetFreq.click();
  EXPECT_TRUE(car.form1.tmrMain.enabled);
  EXPECT_EQ(car.form1.lblHint.caption, "");
}

TEST(TheHint, SaysThatTheFirstCycleOfDistanceModeWaitsForAFix) {
  Settings settings = ScriptedCar::UsualSettings();
  settings.LogByDistance = true;
  ScriptedCar car;
  car.WriteConfig(settings);
  car.Start();
  std::string hint;
  car.world.pump.on_pump = [&] {
    if (hint.empty()) hint = car.form1.lblHint.caption;
    car.SendGps("5158.00N", "00532.00E");
  };
  car.form1.tmrMain.tick();
  EXPECT_EQ(hint, "Waiting for a GPS fix");
  EXPECT_EQ(car.form1.lblHint.caption, "");
}

TEST(AnOpenEditor, FollowsTheMainWindowAtOnce) {
  TrueCar car(Ft857());
  car.form1.mnuCalibration.click();
  const Form3& editor = car.app.forms.form3;
  EXPECT_THAT(editor.Label2.caption, HasSubstr("128   S9  50 uV"));
  car.form1.txtFrequency.text = "145000";
  car.form1.cmdSetFreq.click();
  EXPECT_EQ(editor.lblCalFrequency.caption, " 145000 kHz");
  EXPECT_THAT(editor.Label2.caption, HasSubstr("128   S9  5 uV"));
  EXPECT_THAT(editor.Label1.caption, HasSubstr("128   S9  5 uV"));
  car.world.files.files["/car/Calibration1.cfg"] = "none";
  car.form1.mnuLoadConfig1.click();
  EXPECT_THAT(editor.Label3.caption, Not(HasSubstr("128   S9")));
}

TEST(AnFT847, TellsAVanishedPortInItsToolTipOnly) {
  Settings settings = ScriptedCar::UsualSettings();
  settings.RigModel = kFT847;
  TrueCar car(settings);
  car.Tick();
  const std::string comment = car.form1.lblCatComment.caption;
  car.world.serial.Vanish();
  car.world.serial.trouble = Fault{"/dev/ttyUSB0", "/dev/ttyUSB0 was lost"};
  car.Tick();
  EXPECT_EQ(car.form1.lblCatComment.caption, comment);
  EXPECT_EQ(car.form1.StatusBar1[2].tool_tip, "/dev/ttyUSB0 was lost");
}

}  // namespace
}  // namespace kestrum::test
