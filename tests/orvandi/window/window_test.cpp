#include <gmock/gmock.h>

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDropEvent>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QMimeData>
#include <QPushButton>
#include <QSettings>
#include <QStackedWidget>
#include <QTableView>
#include <QTest>
#include <QToolBar>
#include <QToolButton>
#include <QUrl>

#include "map/map_view.h"
#include "window/plot_deck.h"
#include "window/sample_drive.h"
#include "window/window_fixture.h"

namespace orvandi::test {
namespace {

using ::testing::HasSubstr;

SampleDrive Small() {
  return {.records = 1200, .laps = 4};
}

class OrvandiWindowTest : public WindowTest {};

TEST_F(OrvandiWindowTest, EmptyItSaysWhatToDoAndOffersTheDemosLog) {
  Write("demo.log", SampleLog(Small()));
  Open(StartOptions{{}, false, Path(""), false});
  EXPECT_EQ(Find<QStackedWidget>("left")->currentWidget()->objectName(), QStringLiteral("startPage"));
  EXPECT_TRUE(Find<QPushButton>("openLog")->isVisible());
  auto* demo = Find<QPushButton>("openDemo");
  ASSERT_TRUE(demo->isVisible());
  QTest::mouseClick(demo, Qt::LeftButton);
  ASSERT_TRUE(Wait([this] { return Shown() > 0; }));
  EXPECT_EQ(Find<QStackedWidget>("left")->currentWidget()->objectName(), QStringLiteral("map"));
  EXPECT_THAT(window_->windowTitle().toStdString(), HasSubstr("demo.log"));
}

TEST_F(OrvandiWindowTest, TheLoggersLogIsWaitedFor) {
  Open(StartOptions{{Path("RSSI-GPS.log")}, true, Path(""), false});
  EXPECT_THAT(Find<QLabel>("waitingFor")->text().toStdString(), HasSubstr("RSSI-GPS.log"));
  EXPECT_EQ(Notice(), QString());
  Write("RSSI-GPS.log", SampleLog(Small()));
  EXPECT_TRUE(Wait([this] { return Shown() > 0; }));
}

TEST_F(OrvandiWindowTest, TheFirstDriveIsShownBeforeItsFirstBlockIsWritten) {
  Open(StartOptions{{Path("RSSI-GPS.log")}, true, Path(""), false});
  Write("RSSI-GPS.log.pending",
        SampleLog({.records = 30, .laps = 2, .two_antennas = false, .tunnel = false}));
  EXPECT_TRUE(Wait([this] { return Shown() == 30; }));
  Write("RSSI-GPS.log.pending",
        SampleLog({.records = 40, .laps = 2, .two_antennas = false, .tunnel = false}));
  EXPECT_TRUE(Wait([this] { return Shown() == 40; }));
}

TEST_F(OrvandiWindowTest, ShowsRecordsAndListsWhatWasDropped) {
  OpenLogs({Write("drive.log", SampleLog(Small()) + "a foreign line\r\n10:11:12, GPS Ok, 51")});
  EXPECT_EQ(window_->TheSession().View().Count(), 1200u);
  EXPECT_THAT(Find<QLabel>("counts")->text().toStdString(), HasSubstr("of 1200 records"));
  const QAbstractItemModel* lines = Find<QTableView>("droppedLines")->model();
  ASSERT_EQ(lines->rowCount(), 2);
  EXPECT_EQ(lines->index(0, 1).data().toString(), QStringLiteral("a foreign line"));
  EXPECT_EQ(lines->index(1, 1).data().toString(), QStringLiteral("10:11:12, GPS Ok, 51"));
  EXPECT_FALSE(lines->index(1, 2).data().toString().isEmpty());
  EXPECT_EQ(lines->index(1, 0).data().toInt(), lines->index(0, 0).data().toInt() + 1);
  EXPECT_EQ(lines->index(0, 3).data().toString(), QStringLiteral("drive.log"));
}

TEST_F(OrvandiWindowTest, MarkedRecordsAreCountedLeftOutAndShownWhenAsked) {
  OpenLogs({Write("drive.log", SampleLog(Small()))});
  auto* no_fix = Find<QCheckBox>("showNofix");
  EXPECT_EQ(no_fix->text(), QStringLiteral("No fix  \u2013  17"));
  EXPECT_FALSE(no_fix->isChecked());
  EXPECT_FALSE(Find<QCheckBox>("showOldfix")->isEnabled());
  const std::size_t before = Shown();
  no_fix->click();
  EXPECT_EQ(Shown(), before + 17);
  no_fix->click();
  EXPECT_EQ(Shown(), before);
}

TEST_F(OrvandiWindowTest, WhatIsChosenInOneViewIsMarkedInAll) {
  OrvandiWindow& window = OpenLogs({Write("drive.log", SampleLog(Small()))});
  PatternPlot* pattern = window.Plots().Pattern();
  const QImage map_before = window.Map().grab().toImage();
  const QImage time_before = window.Plots().Time()->grab().toImage();
  QTest::mouseClick(pattern, Qt::LeftButton, {}, pattern->SectorPlace(9));
  const std::vector<std::uint32_t> chosen = window.TheSession().ChosenRecords();
  ASSERT_GT(chosen.size(), 3u);
  for (const std::uint32_t record : chosen)
    EXPECT_NEAR(window.TheSession().View().bearing_deg[record], 90, 5.01);
  EXPECT_THAT(Told().toStdString(), HasSubstr("chosen: median"));
  window.Plots().Time()->replot();
  EXPECT_NE(window.Map().grab().toImage(), map_before);
  EXPECT_NE(window.Plots().Time()->grab().toImage(), time_before);
}

TEST_F(OrvandiWindowTest, ADotTellsItsRecordAndItsLine) {
  OrvandiWindow& window = OpenLogs({Write("drive.log", SampleLog(Small()))});
  const MapView& map = window.Map();
  const QPoint at = map.View().ToScreen(ToWorld(window.TheSession().Places()[120])).toPoint();
  QTest::mouseMove(&window.Map(), at);
  // The record under the pointer, with its line: header lines of blocks count, too.
  EXPECT_THAT(Told().toStdString(), HasSubstr("drive.log, line "));
  QTest::mouseClick(&window.Map(), Qt::LeftButton, {}, at);
  ASSERT_EQ(window.TheSession().ChosenRecords().size(), 1u);
  const Record& record = window.TheSession().RecordOf(window.TheSession().ChosenRecords().front());
  EXPECT_THAT(Told().toStdString(), HasSubstr("line " + std::to_string(record.line)));
  EXPECT_THAT(Told().toStdString(), HasSubstr("2026-11-21 10:"));
}

TEST_F(OrvandiWindowTest, HidingCanBeUndoneAndDoneAgain) {
  OrvandiWindow& window = OpenLogs({Write("drive.log", SampleLog(Small()))});
  const std::size_t before = Shown();
  EXPECT_FALSE(Find<QAction>("hide")->isEnabled());
  window.TheSession().Choose({10, 11, 12}, false);
  ASSERT_TRUE(Find<QAction>("hide")->isEnabled());
  Trigger("hide");
  EXPECT_EQ(Shown(), before - 3);
  EXPECT_TRUE(window.TheSession().ChosenRecords().empty());
  ASSERT_TRUE(Find<QAction>("undo")->isEnabled());
  Trigger("undo");
  EXPECT_EQ(Shown(), before);
  EXPECT_FALSE(Find<QAction>("undo")->isEnabled());
  Trigger("redo");
  EXPECT_EQ(Shown(), before - 3);
}

TEST_F(OrvandiWindowTest, LayersByAntennaWithACheckBoxEach) {
  OrvandiWindow& window = OpenLogs({Write("drive.log", SampleLog(Small()))});
  auto* group = Find<QComboBox>("groupBy");
  group->setCurrentIndex(1);
  Q_EMIT group->activated(1);
  auto* layers = Find<QListWidget>("layers");
  ASSERT_EQ(layers->count(), 2);
  EXPECT_EQ(layers->item(0)->text(), QStringLiteral("Beam 3 el., PWR 10W  \u2013  600 records"));
  EXPECT_EQ(window.Plots().Pattern()->Patterns().size(), 2u);
  const std::size_t before = Shown();
  layers->item(1)->setCheckState(Qt::Unchecked);
  EXPECT_LT(Shown(), before - 500);
  ASSERT_EQ(window.Plots().Pattern()->Patterns().size(), 1u);
  EXPECT_EQ(window.Plots().Pattern()->Patterns()[0].name, QStringLiteral("Beam 3 el., PWR 10W"));
}

TEST_F(OrvandiWindowTest, ThePatternOfTheBeamIsFoundAgain) {
  OrvandiWindow& window =
      OpenLogs({Write("drive.log", SampleLog({.records = 6000, .two_antennas = false, .fading_db = 0.4}))});
  const Pattern& pattern = window.Plots().Pattern()->Patterns().at(0).pattern;
  for (const Sector& sector : pattern.sectors) {
    if (sector.count < 20) continue;
    EXPECT_NEAR(sector.median_db - pattern.strongest_db, BeamGain(sector.bearing_deg), 1.5)
        << sector.bearing_deg;
  }
}

TEST_F(OrvandiWindowTest, ComparesTwoLayers) {
  OrvandiWindow& window =
      OpenLogs({Write("a.log", SampleLog({.records = 3000, .two_antennas = false})),
                Write("b.log", SampleLog({.records = 3000, .two_antennas = false, .offset_db = -5}))});
  auto* shown = Find<QCheckBox>("compareShown");
  ASSERT_TRUE(shown->isEnabled());
  auto* cell = Find<QComboBox>("compareCell");
  cell->setCurrentIndex(2);
  shown->click();
  EXPECT_THAT(Find<QLabel>("compareOutcome")->text().toStdString(), HasSubstr("a.log minus b.log: +5.0 dB"));
  EXPECT_TRUE(window.Plots().Pattern()->ShowsDifferences());
  shown->click();
  EXPECT_FALSE(window.Plots().Pattern()->ShowsDifferences());
  EXPECT_EQ(Find<QLabel>("compareOutcome")->text(), QString());
}

TEST_F(OrvandiWindowTest, UnitsChangeInAllViews) {
  OrvandiWindow& window = OpenLogs({Write("drive.log", SampleLog(Small()))});
  Trigger("unit1");
  EXPECT_EQ(window.Plots().Time()->yAxis->label(), QStringLiteral("Field strength (mV/m)"));
  EXPECT_EQ(window.Plots().Distribution()->xAxis->label(), QStringLiteral("Field strength (mV/m)"));
  EXPECT_THAT(window.Plots().Caption(PlotDeck::kDistance).toStdString(), HasSubstr("mV/m at 1 km"));
  Trigger("unit3");
  EXPECT_EQ(window.Plots().Distance()->yAxis->label(), QStringLiteral("Input power (dBm)"));
}

TEST_F(OrvandiWindowTest, RecordsCanBeWalkedThroughByKeys) {
  OrvandiWindow& window = OpenLogs({Write("drive.log", SampleLog(Small()))});
  Trigger("nextRecord");
  EXPECT_EQ(window.TheSession().ChosenRecords(), std::vector<std::uint32_t>{0});
  Trigger("nextRecord");
  Trigger("nextRecord");
  Trigger("previousRecord");
  EXPECT_EQ(window.TheSession().ChosenRecords(), std::vector<std::uint32_t>{1});
  EXPECT_THAT(Told().toStdString(), HasSubstr("drive.log, line 5"));
}

TEST_F(OrvandiWindowTest, FilesCanBeDroppedOnIt) {
  OrvandiWindow& window = Open(StartOptions{});
  QMimeData data;
  data.setUrls({QUrl::fromLocalFile(Write("drive.log", SampleLog(Small())))});
  QDragEnterEvent enter(QPoint(100, 100), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(&window, &enter);
  EXPECT_TRUE(enter.isAccepted());
  QDropEvent drop(QPointF(100, 100), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(&window, &drop);
  EXPECT_TRUE(Wait([this] { return Shown() > 0; }));
}

TEST_F(OrvandiWindowTest, LayoutUnitAndRecentLogsAreRemembered) {
  const QString log = Write("drive.log", SampleLog(Small()));
  OpenLogs({log});
  Trigger("unit2");
  Trigger("theme2");
  window_->Plots().Bring(PlotDeck::kDistribution);
  window_->resize(1111, 777);
  window_->close();
  OrvandiWindow& again = Open(StartOptions{});
  EXPECT_EQ(again.TheSession().View().unit, Unit::kMicrovolt);
  EXPECT_TRUE(again.Plots().Order().startsWith(QString::number(PlotDeck::kDistribution)));
  EXPECT_LT(again.palette().color(QPalette::Window).lightness(), 128);
  auto* recent = Find<QMenu>("recent");
  Q_EMIT recent->aboutToShow();
  EXPECT_EQ(recent->actions().front()->text(), log);
  recent->actions().front()->trigger();
  EXPECT_TRUE(Wait([this] { return Shown() > 0; }));
  Trigger("theme1");
}

TEST_F(OrvandiWindowTest, FilesThatAreNoLogsAreRefusedWithASentence) {
  OpenLogs({Path("")});
  EXPECT_FALSE(Notice().isEmpty());
  EXPECT_TRUE(window_->TheSession().Logs().empty());
  window_->OpenFiles({Path("missing.log")});
  ASSERT_TRUE(WaitIdle());
  EXPECT_THAT(Notice().toStdString(), HasSubstr("missing.log"));
  window_->OpenFiles({Write("binary.log", std::string(5000, '\0') + "\x01\x02\xFF")});
  ASSERT_TRUE(WaitIdle());
  EXPECT_THAT(Notice().toStdString(), HasSubstr("binary.log"));
  EXPECT_TRUE(window_->TheSession().Logs().empty());
  // Of several each is told.
  window_->OpenFiles({Path("missing.log"), Path("binary.log"), Path("")});
  ASSERT_TRUE(WaitIdle());
  EXPECT_EQ(Notice().count(QLatin1Char('\n')), 2) << Notice().toStdString();
  EXPECT_THAT(Notice().toStdString(), HasSubstr("missing.log: There is no such file.\nbinary.log: "));
  QTest::mouseClick(Find<QToolButton>("closeNotice"), Qt::LeftButton);
  EXPECT_EQ(Notice(), QString());
}

TEST_F(OrvandiWindowTest, ALogWithoutAnyFixIsShownInTimeAndSaysSo) {
  OrvandiWindow& window =
      OpenLogs({Write("drive.log", Text(HeaderLines("21-11-2026 01:55:40, 5157.00N, 00532.00E, 25 m,  "
                                                    "FT840 LSB 3630 kHz, Antenna1")) +
                                       Text({Line({.time = "01:55:34", .fix = "No GPS"}),
                                             Line({.time = "01:55:35", .fix = "No GPS"})}))});
  EXPECT_EQ(window.TheSession().View().Count(), 2u);
  EXPECT_EQ(Shown(), 0u);
  EXPECT_EQ(Find<QLabel>("counts")->text(), QStringLiteral("0 of 2 records"));
  for (const auto kind : {PlotDeck::kTime, PlotDeck::kPattern}) {
    EXPECT_EQ(window.Plots().Caption(kind), QStringLiteral("no record is fit to be shown: see Cleaning"));
  }
  Find<QCheckBox>("showNofix")->click();
  EXPECT_EQ(Shown(), 2u);
  EXPECT_EQ(window.Plots().Caption(PlotDeck::kTime), QStringLiteral("2 records"));
  EXPECT_FALSE(window.Map().grab().isNull());
}

TEST_F(OrvandiWindowTest, EveryButtonHasANameAndATip) {
  OrvandiWindow& window = OpenLogs({Write("drive.log", SampleLog(Small()))});
  int buttons = 0;
  for (QToolButton* button :
       Find<QToolBar>("tools")->findChildren<QToolButton*>(Qt::FindDirectChildrenOnly)) {
    if (button->defaultAction() == nullptr) continue;
    ++buttons;
    EXPECT_FALSE(button->accessibleName().isEmpty()) << qPrintable(button->objectName());
    EXPECT_FALSE(button->defaultAction()->toolTip().isEmpty());
    EXPECT_FALSE(button->defaultAction()->icon().isNull()) << qPrintable(button->objectName());
    EXPECT_FALSE(button->defaultAction()->icon().pixmap(24).toImage().allGray() &&
                 button->defaultAction()->icon().pixmap(24).toImage().pixelColor(0, 0).alpha() == 255);
  }
  EXPECT_EQ(buttons, 14);
  EXPECT_FALSE(window.Map().accessibleName().isEmpty());
  for (const Plot* plot : window.Plots().All()) EXPECT_FALSE(plot->accessibleName().isEmpty());
}

TEST_F(OrvandiWindowTest, FitsSmallAndLargeScreens) {
  OrvandiWindow& window = OpenLogs({Write("drive.log", SampleLog(Small()))});
  EXPECT_LE(window.minimumSizeHint().width(), 1024);
  EXPECT_LE(window.minimumSizeHint().height(), 600);
  window.resize(1024, 600);
  QCoreApplication::processEvents();
  const auto visible = [&] {
    int count = 0;
    for (int kind = 0; kind < 4; ++kind)
      count += window.Plots().Shows(static_cast<PlotDeck::Kind>(kind)) ? 1 : 0;
    return count;
  };
  EXPECT_EQ(visible(), 1);
  QTest::mouseClick(Find<QToolButton>("showdistancePlot"), Qt::LeftButton);
  EXPECT_TRUE(window.Plots().Shows(PlotDeck::kDistance));
  window.resize(3840, 2160);
  QCoreApplication::processEvents();
  EXPECT_EQ(visible(), 4);
}

TEST_F(OrvandiWindowTest, ComesUpMinimisedWhenAsked) {
  window_ = std::make_unique<OrvandiWindow>(StartOptions{});
  window_->ShowMinimisedWithFocus();
  EXPECT_TRUE(window_->isMinimized());
}

}  // namespace
}  // namespace orvandi::test
