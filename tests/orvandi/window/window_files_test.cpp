#include <gmock/gmock.h>

#include <QFile>
#include <QImage>
#include <QLabel>
#include <QProgressBar>
#include <QSvgRenderer>
#include <QTest>
#include <QToolButton>
#include <algorithm>
#include <atomic>
#include <cmath>
#include <fstream>
#include <sstream>
#include <thread>

#include "map/map_view.h"
#include "support/command.h"
#include "window/plot_deck.h"
#include "window/sample_drive.h"
#include "window/tile_server.h"
#include "window/window_fixture.h"

namespace orvandi::test {
namespace {

using ::testing::HasSubstr;

std::string Bytes(const QString& path) {
  std::ifstream file(path.toStdString(), std::ios::binary);
  std::stringstream text;
  text << file.rdbuf();
  return text.str();
}

class WindowFilesTest : public WindowTest {};

TEST_F(WindowFilesTest, FollowsALogThatGrows) {
  const std::string log = SampleLog({.records = 400, .laps = 2, .tunnel = false});
  const std::size_t half = log.find("----", log.size() / 2);
  OrvandiWindow& window = OpenLogs({Write("drive.log", log.substr(0, half))});
  const std::size_t before = Shown();
  ASSERT_LT(before, 400u);
  window.TheSession().Choose({3}, false);
  Append("drive.log", log.substr(half));
  EXPECT_TRUE(Wait([this] { return Shown() == 400; }));
  EXPECT_EQ(window.TheSession().ChosenRecords(), std::vector<std::uint32_t>{3});
  EXPECT_EQ(window.Map().Index().ShownCount(), 400u);
}

TEST_F(WindowFilesTest, FollowsTheJournalBesideALog) {
  OpenLogs({Write("drive.log", SampleLog({.records = 200, .laps = 2, .tunnel = false}))});
  Write("drive.log.pending", SampleLog({.records = 100, .laps = 2, .tunnel = false, .day = 22}));
  EXPECT_TRUE(Wait([this] { return Shown() == 300; }));
}

TEST_F(WindowFilesTest, AFileThatShrinksIsReadAnew) {
  OpenLogs({Write("drive.log", SampleLog({.records = 400, .laps = 2, .tunnel = false}))});
  Write("drive.log", SampleLog({.records = 100, .laps = 2, .tunnel = false}));
  EXPECT_TRUE(Wait([this] { return Shown() == 100; }));
}

TEST_F(WindowFilesTest, FollowingCanBeSwitchedOff) {
  const std::string log = SampleLog({.records = 200, .laps = 2, .tunnel = false});
  OpenLogs({Write("drive.log", log)});
  Trigger("follow");
  Append("drive.log", SampleLog({.records = 100, .laps = 2, .tunnel = false, .day = 22}));
  window_->TheSession().SetUnit(Unit::kDbm);
  EXPECT_EQ(Shown(), 200u);
  Trigger("follow");
  EXPECT_TRUE(Wait([this] { return Shown() == 300; }));
}

TEST_F(WindowFilesTest, ReadingCanBeCancelled) {
  std::string log;
  const std::string piece = SampleLog({.records = 20000, .laps = 4, .tunnel = false});
  for (int i = 0; i < 12; ++i) log += piece;
  const QString path = Write("drive.log", log);
  Open(StartOptions{});
  window_->OpenFiles({path});
  EXPECT_TRUE(window_->Jobs().Busy());
  window_->Jobs().Cancel();
  ASSERT_TRUE(WaitIdle());
  EXPECT_EQ(Notice(), QStringLiteral("Reading drive.log was cancelled."));
  EXPECT_TRUE(window_->TheSession().Logs().empty());
}

TEST_F(WindowFilesTest, LongJobsShowTheirProgressAndAWayOut) {
  Open(StartOptions{});
  std::atomic<bool> cancelled = false;
  window_->Jobs().Run(QStringLiteral("Counting sheep"),
                      [&](JobControl& control) {
                        while (control.Report(40, 100)) std::this_thread::yield();
                        cancelled = true;
                      },
                      {});
  auto* cancel = Find<QToolButton>("jobCancel");
  ASSERT_TRUE(Wait([&] { return cancel->isVisible(); }));
  EXPECT_EQ(Find<QLabel>("jobTitle")->text(), QStringLiteral("Counting sheep"));
  EXPECT_EQ(Find<QProgressBar>("jobBar")->value(), 40);
  QTest::mouseClick(cancel, Qt::LeftButton);
  ASSERT_TRUE(WaitIdle());
  EXPECT_TRUE(cancelled);
  EXPECT_TRUE(Wait([&] { return !cancel->isVisible(); }));
}

TEST_F(WindowFilesTest, ExportsWhatIsShown) {
  OrvandiWindow& window =
      OpenLogs({Write("drive.log", SampleLog({.records = 300, .laps = 2, .tunnel = false}))});
  window.TheSession().Choose({0, 1, 2, 3, 4}, false);
  window.TheSession().HideChosen();
  window.ExportRecords(Format::kCsv, Path("drive.csv"));
  ASSERT_TRUE(WaitIdle());
  EXPECT_THAT(Notice().toStdString(), HasSubstr("295 records written to"));
  const std::string csv = Bytes(Path("drive.csv"));
  EXPECT_EQ(std::count(csv.begin(), csv.end(), '\n'), 296);
  window.ExportRecords(Format::kKml, Path("no/such/folder.kml"));
  ASSERT_TRUE(WaitIdle());
  EXPECT_THAT(Notice().toStdString(), HasSubstr("folder.kml"));
}

TEST_F(WindowFilesTest, PicturesOfEveryView) {
  OrvandiWindow& window = OpenLogs({Write("drive.log", SampleLog({.records = 600, .laps = 2}))});
  QList<QWidget*> views{&window.Map()};
  for (Plot* plot : window.Plots().All()) views << plot;
  for (QWidget* view : views) {
    for (const char* ending : {".png", ".svg", ".pdf"}) {
      const QString path = Path(view->objectName().toStdString() + ending);
      window.SavePicture(view, path);
      EXPECT_EQ(Notice(), QStringLiteral("Saved %1.").arg(path));
    }
    const QImage image(Path(view->objectName().toStdString() + ".png"));
    EXPECT_GE(image.width(), 2 * view->minimumWidth());
    EXPECT_EQ(image.pixelColor(image.width() - 3, 3).lightness() > 128, true);  // light, to be printed
    const QSvgRenderer svg(Path(view->objectName().toStdString() + ".svg"));
    EXPECT_TRUE(svg.isValid());
    EXPECT_EQ(Bytes(Path(view->objectName().toStdString() + ".pdf")).substr(0, 5), "%PDF-");
  }
  window.SavePicture(&window.Map(), Path("map.gif"));
  EXPECT_THAT(Notice().toStdString(), HasSubstr(".png, .svg or .pdf"));
  window.SavePicture(&window.Map(), Path("none/map.png"));
  EXPECT_THAT(Notice().toStdString(), HasSubstr("cannot be written"));
}

TEST_F(WindowFilesTest, TheReportHoldsMapPlotsNumbersAndCleaning) {
  OrvandiWindow& window = OpenLogs({Write("drive.log", SampleLog({.records = 1200, .laps = 2}))});
  window.SaveReportTo(Path("report.pdf"));
  EXPECT_EQ(Notice(), QStringLiteral("Saved %1.").arg(Path("report.pdf")));
  const CommandResult text = RunCommand("pdftotext -layout '" + Path("report.pdf").toStdString() + "' -");
  ASSERT_EQ(text.code, 0) << "pdftotext is part of poppler-utils";
  for (const char* part : {"Field strength on the road", "drive.log", "1200 in", "Map", "Cleaning",
                           "Dead rig", "17 records, left out", "Signal over time", "Signal over distance",
                           "Antenna pattern", "Distribution of the signal", "median"}) {
    EXPECT_THAT(text.output, HasSubstr(part));
  }
}

TEST_F(WindowFilesTest, RecalibratesWithoutTouchingTheLog) {
  const QString log = Write("drive.log", SampleLog({.records = 300, .laps = 2, .tunnel = false}));
  const std::string before = Bytes(log);
  OrvandiWindow& window = OpenLogs({log});
  const float logged = window.TheSession().View().level_db[7];
  // 4 mV/m for each step of the raw value.
  std::string table = " FT840 LSB 3630\r\nS0, 0, 0\r\n";
  for (int raw = 1; raw < 256; ++raw) {
    table += raw == 100 ? "S5, 10, 400\r\n" : raw == 240 ? "S9, 50, 960\r\n" : ", , \r\n";
  }
  window.Calibrate(Write("Calibration1.cfg", table));
  EXPECT_THAT(Notice().toStdString(), HasSubstr("Calibration1.cfg"));
  const int raw = window.TheSession().RecordOf(7).raw;
  EXPECT_NEAR(window.TheSession().View().level_db[7], 20 * std::log10(4000.0 * raw), 0.05);
  window.Calibrate(QString());
  EXPECT_FLOAT_EQ(window.TheSession().View().level_db[7], logged);
  window.Calibrate(Write("Broken.cfg", "nothing of use"));
  EXPECT_THAT(Notice().toStdString(), HasSubstr("Broken.cfg"));
  EXPECT_FLOAT_EQ(window.TheSession().View().level_db[7], logged);
  EXPECT_EQ(Bytes(log), before);
}

TEST_F(WindowFilesTest, TheOnlineMapIsOffUntilItIsTurnedOn) {
  TileServer server;
  OrvandiWindow& window = OpenLogs({Write("drive.log", SampleLog({.records = 200, .laps = 2}))});
  EXPECT_FALSE(window.Map().Tiles().HasSource());
  Background background;
  background.kind = Background::Kind::kOnline;
  background.online = {server.Url(), QStringLiteral("makers"), 0, 19};
  window.ChooseBackground(background);
  ASSERT_TRUE(Wait([&] {
    window.Map().repaint();
    return server.Requests().size() > 3 && window.Map().Tiles().Complete();
  }));
  EXPECT_LE(server.MostAtOnce(), 2);
  EXPECT_EQ(window.Map().Tiles().Attribution(), QStringLiteral("makers"));
  Trigger("mapGrid");
  EXPECT_FALSE(window.Map().Tiles().HasSource());
}

TEST_F(WindowFilesTest, AMapFileThatIsNoneIsRefused) {
  OrvandiWindow& window = OpenLogs({Write("drive.log", SampleLog({.records = 200, .laps = 2}))});
  Background background;
  background.kind = Background::Kind::kFile;
  background.file = Write("map.mbtiles", "no database");
  window.ChooseBackground(background);
  EXPECT_THAT(Notice().toStdString(), HasSubstr("map.mbtiles is no MBTiles file"));
  EXPECT_FALSE(window.Map().Tiles().HasSource());
}

}  // namespace
}  // namespace orvandi::test
