#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QTest>
#include <cmath>

#include "plots/distance_plot.h"
#include "plots/distribution_plot.h"
#include "plots/level_axis.h"
#include "plots/pattern_plot.h"
#include "plots/time_plot.h"

namespace orvandi {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

// Hundred records: a second, 100 m and a sector of 10 degrees further each, 60 - 20 log10(d) dB.
ViewData Hundred() {
  ViewData view;
  for (int i = 0; i < 100; ++i) {
    const double km = 0.1 * (i + 1);
    view.time_s.push_back(1000 + i);
    view.log_distance.push_back(static_cast<float>(std::log10(km)));
    view.bearing_deg.push_back(static_cast<float>(i % 36 * 10));
    view.level_db.push_back(static_cast<float>(60 - 20 * std::log10(km)));
    view.layer.push_back(0);
    view.shown.push_back(1);
  }
  view.layers = {{QStringLiteral("drive"), Qt::blue, true}};
  view.scale = {40, 80, &ViridisPalette()};
  return view;
}

class Choice {
 public:
  explicit Choice(Plot& plot) {
    QObject::connect(&plot, &Plot::Chosen, &plot, [this](const std::vector<std::uint32_t>& chosen, bool add) {
      records = chosen;
      added = add;
    });
  }
  std::vector<std::uint32_t> records;
  bool added = false;
};

QPoint PlaceOf(const RecordPlot& plot, double key, double level) {
  return QPointF(plot.xAxis->coordToPixel(key), plot.yAxis->coordToPixel(level)).toPoint();
}

template <typename Kind>
void Prepare(Kind& plot, const ViewData& view) {
  plot.resize(700, 400);
  plot.show();
  plot.Refresh(view);
  plot.replot();
}

TEST(TimePlot, AClickChoosesTheNearestRecord) {
  const ViewData view = Hundred();
  TimePlot plot;
  Prepare(plot, view);
  const Choice choice(plot);
  QTest::mouseClick(&plot, Qt::LeftButton, {}, PlaceOf(plot, 1040, view.level_db[40]));
  EXPECT_THAT(choice.records, ElementsAre(40));
  QTest::mouseClick(&plot, Qt::LeftButton, Qt::ControlModifier,
                    PlaceOf(plot, 1004, view.level_db[4]) + QPoint(1, -1));
  EXPECT_THAT(choice.records, ElementsAre(4));
  EXPECT_TRUE(choice.added);
}

TEST(TimePlot, ShiftAndDraggingChoosesARectangle) {
  const ViewData view = Hundred();
  TimePlot plot;
  Prepare(plot, view);
  const Choice choice(plot);
  const QPoint from = PlaceOf(plot, 1009.5, view.level_db[9] + 3);
  const QPoint to = PlaceOf(plot, 1012.5, view.level_db[12] - 3);
  QTest::mousePress(&plot, Qt::LeftButton, Qt::ShiftModifier, from);
  QTest::mouseMove(&plot, (from + to) / 2);
  QTest::mouseMove(&plot, to);
  QTest::mouseRelease(&plot, Qt::LeftButton, Qt::ShiftModifier, to);
  EXPECT_THAT(choice.records, ElementsAre(10, 11, 12));
}

TEST(TimePlot, StaysWhereTheUserWentUntilAllIsAskedFor) {
  ViewData view = Hundred();
  TimePlot plot;
  Prepare(plot, view);
  QTest::keyClick(&plot, Qt::Key_Plus);
  const QCPRange near = plot.xAxis->range();
  EXPECT_FALSE(plot.ShowsAll());
  plot.Refresh(view);
  EXPECT_EQ(plot.xAxis->range(), near);
  QTest::keyClick(&plot, Qt::Key_Home);
  EXPECT_TRUE(plot.xAxis->range().contains(1000));
  EXPECT_TRUE(plot.xAxis->range().contains(1099));
  view.unit = Unit::kMillivoltPerM;
  plot.Refresh(view);
  EXPECT_EQ(plot.yAxis->label(), QStringLiteral("Field strength (mV/m)"));
}

TEST(TimePlot, TicksAreThoseOfAClock) {
  struct Row {
    double from_s;  // since the start of 2026-11-21
    double to_s;
    const char* labels;
  };
  constexpr double kDay = 1'795'219'200;
  const std::vector<Row> rows = {
      {80223, 81093, "22:20 22:25 22:30"},
      {80400, 80440, "22:20:00 22:20:10 22:20:20 22:20:30 22:20:40"},
      {0, 7300, "00:00 00:30 01:00 01:30 02:00"},
      {-3600, 100000, "11-21 00:00 11-21 06:00 11-21 12:00 11-21 18:00 11-22 00:00"},
      {0, 4 * 86400, "2026-11-21 2026-11-22 2026-11-23 2026-11-24 2026-11-25"}};
  const TimePlot plot;
  for (const Row& row : rows) {
    QVector<double> ticks;
    QVector<QString> labels;
    const QCPRange range(kDay + row.from_s, kDay + row.to_s);
    plot.xAxis->ticker()->generate(range, QLocale::c(), QLatin1Char('f'), 0, ticks, nullptr, &labels);
    QStringList inside;
    for (qsizetype i = 0; i < ticks.size(); ++i) {
      if (range.contains(ticks[i])) inside << labels[i];
    }
    EXPECT_EQ(inside.join(QLatin1Char(' ')).toStdString(), row.labels);
  }
}

QRgb ColorAt(Plot& plot, QPoint place) {
  const QImage image = plot.grab().toImage();
  return image.pixelColor(place * image.devicePixelRatio()).rgb();
}

TEST(TimePlot, PaintsARecordInItsColourAndLeavesOutWhatIsHidden) {
  ViewData view = Hundred();
  TimePlot plot;
  Prepare(plot, view);
  EXPECT_EQ(ColorAt(plot, PlaceOf(plot, 1000, view.level_db[0])), view.scale.Color(80));
  const QCPRange keys = plot.xAxis->range();
  view.shown[0] = 0;
  plot.Refresh(view);
  plot.xAxis->setRange(keys);
  plot.replot();
  EXPECT_NE(ColorAt(plot, PlaceOf(plot, 1000, 80)), view.scale.Color(80));
}

QImage Dots(RecordPlot& plot) {
  plot.replot(QCustomPlot::rpImmediateRefresh);
  const QImage image = plot.grab().toImage();
  return image.copy(QRect(plot.axisRect()->rect().topLeft() * image.devicePixelRatio(),
                          plot.axisRect()->rect().size() * image.devicePixelRatio()));
}

// What was painted before is only moved: it must show what a new plot shows.
TEST(TimePlot, DotsAreWhereTheyBelongHoweverThePlotWasMoved) {
  ViewData view = Hundred();
  TimePlot moved;
  Prepare(moved, view);
  const QSize size = moved.axisRect()->size();
  for (const QPoint by : {QPoint(9, 0), QPoint(-3, 5), QPoint(size.width() / 2, 0), QPoint(0, -40),
                          QPoint(-size.width(), size.height() / 3)}) {
    moved.xAxis->moveRange(-moved.xAxis->range().size() * by.x() / size.width());
    moved.yAxis->moveRange(moved.yAxis->range().size() * by.y() / size.height());
    TimePlot fresh;
    Prepare(fresh, view);
    fresh.xAxis->setRange(moved.xAxis->range());
    fresh.yAxis->setRange(moved.yAxis->range());
    EXPECT_EQ(Dots(moved), Dots(fresh)) << by.x() << ' ' << by.y();
  }
  // What is shown, its scale and its colours are others now, in the same place.
  moved.Refresh(view);
  moved.FitAll();
  const QImage before = Dots(moved);
  view.shown[50] = 0;
  moved.Refresh(view);
  const QImage hidden = Dots(moved);
  EXPECT_NE(hidden, before);
  view.scale = {0, 200, &ViridisPalette()};
  moved.Refresh(view);
  const QImage recoloured = Dots(moved);
  EXPECT_NE(recoloured, hidden);
  moved.xAxis->scaleRange(0.5);
  EXPECT_NE(Dots(moved), recoloured);
}

TEST(DistancePlot, FreeSpaceGoesThroughTheChosenRecord) {
  const ViewData view = Hundred();
  DistancePlot plot;
  Law law;
  law.kind = Law::Kind::kFitted;
  law.exponent = 3;
  law.level_at_1km_db = 58;
  law.spread_db = 4.24;
  law.nearest_km = 0.1;
  law.farthest_km = 10;
  law.used = 100;
  plot.SetLaw(law);
  Prepare(plot, view);
  EXPECT_NEAR(plot.FreeSpace().LevelAt(1), 58, 1e-6);  // in the middle of the fitted line
  const std::vector<std::uint32_t> chosen = {29};      // 3 km
  plot.SetChosen(chosen);
  EXPECT_NEAR(plot.FreeSpace().LevelAt(3), view.level_db[29], 1e-4);
  EXPECT_DOUBLE_EQ(plot.FreeSpace().exponent, 2);
  EXPECT_EQ(LawText(law, Unit::kDbMicrovoltPerM),
            QStringLiteral("n = 3.00, spread 4.2 dB, 58.0 dBµV/m at 1 km, 100 records"));
}

TEST(DistancePlot, RecordsAtTheTransmitterHaveNoPlaceOnALogarithmicAxis) {
  ViewData view = Hundred();
  view.log_distance[0] = kUnknown;
  DistancePlot plot;
  Prepare(plot, view);
  EXPECT_EQ(plot.Dots().Nearest(PlaceOf(plot, -1, 80), 5), -1);
  EXPECT_EQ(plot.Dots().Nearest(PlaceOf(plot, 0, 60), 5), 9);
}

TEST(DistributionPlot, FiguresAndClasses) {
  const ViewData view = Hundred();
  DistributionPlot plot;
  Prepare(plot, view);
  EXPECT_EQ(plot.Figures().count, 100u);
  EXPECT_NEAR(plot.Figures().median, 45.9, 0.1);
  const Choice choice(plot);
  const QPoint bar(static_cast<int>(plot.xAxis->coordToPixel(59)), plot.height() / 2);
  QTest::mouseClick(&plot, Qt::LeftButton, {}, bar);
  // 58 to 60 dB: from 1 km (60 dB is the next class) to 1.25 km.
  EXPECT_THAT(choice.records, ElementsAre(10, 11));
}

PatternPlot* MakePattern(const ViewData& view) {
  std::vector<Sample> samples;
  for (std::size_t i = 0; i < view.Count(); ++i) {
    Sample sample;
    sample.distance_km = static_cast<float>(std::pow(10, view.log_distance[i]));
    sample.bearing_deg = view.bearing_deg[i];
    sample.level_db = view.level_db[i];
    samples.push_back(sample);
  }
  auto* plot = new PatternPlot;
  const Law law = FitLaw(samples);
  plot->SetPatterns({{QStringLiteral("drive"), Qt::blue, AntennaPattern(samples, law, 30)}}, 30);
  return plot;
}

TEST(PatternPlot, ASectorTellsItsFiguresAndChoosesItsRecords) {
  const ViewData view = Hundred();
  const std::unique_ptr<PatternPlot> plot(MakePattern(view));
  Prepare(*plot, view);
  EXPECT_EQ(plot->SectorText(3).toStdString(),
            "90° ± 15°\n60.0 dBµV/m at 1 km, half of them from 60.0 to 60.0, 9 records");
  const Choice choice(*plot);
  QTest::mouseClick(plot.get(), Qt::LeftButton, {}, plot->SectorPlace(3));
  std::vector<std::uint32_t> expected;
  for (std::uint32_t i = 0; i < 100; ++i) {
    if (view.bearing_deg[i] >= 80 && view.bearing_deg[i] <= 100) expected.push_back(i);
  }
  EXPECT_EQ(choice.records, expected);
  QTest::mouseClick(plot.get(), Qt::LeftButton, {}, QPoint(3, 3));  // outside of the circle
  EXPECT_TRUE(choice.records.empty());
}

TEST(PatternPlot, SectorsOfTooFewRecordsStayEmpty) {
  ViewData view = Hundred();
  const std::unique_ptr<PatternPlot> plot(MakePattern(view));
  plot->SetPatterns({{QStringLiteral("drive"), Qt::blue, AntennaPattern({}, Law(), 30)}}, 30);
  Prepare(*plot, view);
  EXPECT_THAT(plot->SectorText(0).toStdString(), HasSubstr("0 records: too few"));
}

TEST(PatternPlot, Differences) {
  const ViewData view = Hundred();
  PatternPlot plot;
  std::vector<SectorDifference> differences(12);
  differences[2] = {60, true, {20, 31, 50, 56.5, -6.5, 2.5}};
  differences[3] = {90, false, {1, 2, 0, 0, 0, 0}};
  plot.SetDifferences(differences, 30);
  Prepare(plot, view);
  EXPECT_TRUE(plot.ShowsDifferences());
  EXPECT_THAT(plot.SectorText(2).toStdString(),
              HasSubstr("difference −6.5 dB, spread 2.5 dB, 20 and 31 records"));
  EXPECT_THAT(plot.SectorText(3).toStdString(), HasSubstr("too few"));
}

TEST(Plots, NothingToShow) {
  const ViewData view;
  TimePlot time;
  DistancePlot distance;
  DistributionPlot distribution;
  PatternPlot pattern;
  for (Plot* plot : std::initializer_list<Plot*>{&time, &distance, &distribution, &pattern}) {
    plot->resize(300, 200);
    plot->Refresh(view);
    plot->FitAll();
    QTest::mouseMove(plot, QPoint(150, 100));
    QTest::mouseClick(plot, Qt::LeftButton, {}, QPoint(150, 100));
    EXPECT_FALSE(plot->grab().isNull());
  }
}

}  // namespace
}  // namespace orvandi
