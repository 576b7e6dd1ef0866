#include <QCursor>
#include <QLabel>
#include <QStackedWidget>
#include <QToolTip>
#include <algorithm>
#include <cmath>
#include <future>

#include "analysis/comparison.h"
#include "analysis/distribution.h"
#include "map/map_view.h"
#include "map/wide_registers.h"
#include "plots/level_axis.h"
#include "window/elided_label.h"
#include "window/notice_bar.h"
#include "window/orvandi_window.h"
#include "window/plot_deck.h"
#include "window/record_text.h"
#include "window/side_panels.h"
#include "window/start_page.h"

namespace orvandi {
namespace {

constexpr std::size_t kMostTransmitters = 20;
constexpr std::size_t kMostPatterns = 6;

QString Signed(double value) {
  return (value < 0 ? QString(QChar(0x2212)) : QStringLiteral("+")) +
         QString::number(std::abs(value), 'f', 1);
}

// The sites that blocks name, each once.
std::vector<Transmitter> TransmittersOf(const Session& session) {
  std::vector<Transmitter> sites;
  for (const OpenLog& log : session.Logs()) {
    for (const Block& block : log.file->Content().blocks) {
      if (!block.HasTransmitter() || block.record_count == 0 || sites.size() >= kMostTransmitters) continue;
      const Place place{block.tx_latitude_deg, block.tx_longitude_deg};
      const bool known = std::any_of(sites.begin(), sites.end(), [&](const Transmitter& site) {
        constexpr double kSameKm = 0.02;
        return DistanceKm(site.place, place) < kSameKm;
      });
      if (!known) sites.push_back({place, QStringLiteral("Transmitter")});
    }
  }
  return sites;
}

std::vector<MapCell> CellsOf(const Comparison& comparison) {
  std::vector<MapCell> cells;
  for (const CellDifference& one : comparison.cells) {
    const Difference& difference = one.difference;
    cells.push_back({{one.cell.south_deg, one.cell.west_deg},
                     {one.cell.north_deg, one.cell.east_deg},
                     difference.difference_db,
                     QStringLiteral("%1 dB, spread %2 dB\n%3 and %4 records")
                         .arg(Signed(difference.difference_db))
                         .arg(difference.spread_db, 0, 'f', 1)
                         .arg(difference.count_a)
                         .arg(difference.count_b)});
  }
  return cells;
}

// Even on both sides of 0, so that grey means no difference.
ColorScale DifferenceScale(const Comparison& comparison) {
  std::vector<double> sizes;
  for (const CellDifference& one : comparison.cells) sizes.push_back(std::abs(one.difference.difference_db));
  const double most = sizes.empty() ? 3 : std::max(3.0, std::ceil(Quantile(sizes, 0.95)));
  return {-most, most, &DifferencePalette()};
}

}  // namespace

struct OrvandiWindow::Patterns {
  std::vector<PatternCurve> curves;
  QStringList exponents;
};

OrvandiWindow::Patterns OrvandiWindow::PatternsOf(const Session& session) {
  ForgetWideRegisters();
  Patterns patterns;
  const std::vector<LayerLook>& layers = session.View().layers;
  for (std::size_t i = 0; i < layers.size() && patterns.curves.size() < kMostPatterns; ++i) {
    if (!layers[i].visible || session.Compared()) continue;
    const std::vector<Sample> samples = session.SamplesOfLayer(static_cast<std::uint16_t>(i));
    if (samples.empty()) continue;
    // Each layer by its own law: two antennas in one fit would bend it.
    const bool is_all = samples.size() == session.ShownCount();
    const Law law = is_all ? session.PatternLaw() : FitLawWithinSectors(samples, session.SectorDeg());
    patterns.exponents << QString::number(law.exponent, 'f', 2);
    patterns.curves.push_back(
        {layers[i].name, layers[i].color, AntennaPattern(samples, law, session.SectorDeg())});
  }
  return patterns;
}

void OrvandiWindow::ShowView(Session::PlaceChange places) {
  const bool empty = session_.Logs().empty();
  left_->setCurrentWidget(empty ? static_cast<QWidget*>(start_page_) : map_);
  right_split_->setVisible(!empty);
  map_->SetHovered(-1);  // records may have other numbers now
  auto patterns = std::async([this] { return PatternsOf(session_); });
  ShowMap(places);
  ShowComparison();
  ShowPlots(patterns.get());
  ShowChosen();
  ShowCounts();
}

void OrvandiWindow::ShowMap(Session::PlaceChange places) {
  const ViewData& view = session_.View();
  const std::vector<Place>& all = session_.Places();
  DotIndex& index = map_->Index();
  if (places == Session::PlaceChange::kNew) index.SetPositions(all);
  if (places == Session::PlaceChange::kMore) {
    index.AddPositions(std::span(all).subspan(std::min(index.Count(), all.size())));
  }
  if (places != Session::PlaceChange::kNone) map_->SetTransmitters(TransmittersOf(session_));
  DotStyle style;
  style.coloring = view.coloring;
  style.scale = view.scale;
  for (const LayerLook& look : view.layers) style.layer_colors.push_back(look.color);
  style.rim = InkOf(palette()).dark ? QColor(255, 255, 255, 70) : QColor(255, 255, 255, 150);
  map_->SetDots({view.level_db, view.layer, view.shown}, style);
  Legend legend;
  const Unit unit = view.unit;
  if (view.coloring == DotStyle::Coloring::kValue && session_.ShownCount() > 0) {
    legend = {UnitName(unit), view.scale, [unit](double level) {
                return IsLogarithmic(unit) && unit != Unit::kSPoint ? QString::number(level)
                                                                    : LevelNumber(level, unit);
              }};
  }
  map_->SetLegend(legend);
}

void OrvandiWindow::ShowComparison() {
  const std::optional<ComparisonChoice>& choice = session_.Compared();
  if (!choice) {
    map_->SetCells({}, {});
    return;
  }
  const std::vector<Sample> a = session_.SamplesOfLayer(choice->layer_a);
  const std::vector<Sample> b = session_.SamplesOfLayer(choice->layer_b);
  const Comparison comparison = CompareByPlace(a, b, choice->cell_m);
  const ColorScale scale = DifferenceScale(comparison);
  map_->SetCells(CellsOf(comparison), scale);
  plots_->Pattern()->SetDifferences(CompareBySector(a, b, session_.PatternLaw(), session_.SectorDeg()),
                                    session_.SectorDeg());
  const auto& layers = session_.View().layers;
  if (comparison.cells.empty()) {
    compare_->SetOutcome(QStringLiteral("No square of %1 m holds at least 3 records of both; the dots stay.")
                             .arg(choice->cell_m));
    return;
  }
  map_->SetLegend({QStringLiteral("difference (dB)"), scale, [](double value) {
                     return value == 0 ? QStringLiteral("0")
                                       : (value > 0 ? QStringLiteral("+") : QString(QChar(0x2212))) +
                                             QString::number(std::abs(value));
                   }});
  compare_->SetOutcome(
      QStringLiteral("%1 minus %2: %3 dB in the middle of %4 squares, half of them from %5 to %6 dB.")
          .arg(layers[choice->layer_a].name, layers[choice->layer_b].name, Signed(comparison.median_db))
          .arg(comparison.cells.size())
          .arg(Signed(comparison.lower_quartile_db), Signed(comparison.upper_quartile_db)));
}

void OrvandiWindow::ShowPlots(Patterns patterns) {
  const ViewData& view = session_.View();
  plots_->Distance()->SetLaw(session_.FittedLaw());
  QStringList exponents{QString::number(session_.PatternLaw().exponent, 'f', 2)};
  if (!session_.Compared()) {
    plots_->Pattern()->SetPatterns(std::move(patterns.curves), session_.SectorDeg());
    exponents = patterns.exponents;
  }
  for (Plot* plot : plots_->All()) plot->Refresh(view);
  const bool any = session_.ShownCount() > 0;
  const QString none =
      session_.View().Count() == 0 ? QString() : QStringLiteral("no record is fit to be shown: see Cleaning");
  const Distribution& figures = plots_->Distribution()->Figures();
  plots_->SetCaption(PlotDeck::kTime, any ? RecordsText(session_.ShownCount()) : none);
  plots_->SetCaption(PlotDeck::kDistance, any ? LawText(session_.FittedLaw(), view.unit) : none);
  plots_->SetCaption(PlotDeck::kPattern, session_.Compared() ? QStringLiteral("difference in dB by direction")
                                         : any ? QStringLiteral("%1 at 1 km, n = %2 within sectors")
                                                     .arg(UnitName(view.unit))
                                                     .arg(exponents.join(QStringLiteral(", ")))
                                               : none);
  plots_->SetCaption(PlotDeck::kDistribution,
                     figures.count > 0
                         ? QStringLiteral("median %1, 10 % below %2, 10 % above %3")
                               .arg(LevelText(figures.median, view.unit), LevelNumber(figures.p10, view.unit),
                                    LevelNumber(figures.p90, view.unit))
                         : none);
}

void OrvandiWindow::ShowChosen() {
  std::vector<std::uint32_t> visible;
  for (const std::uint32_t record : session_.ChosenRecords()) {
    if (session_.View().Shows(record)) visible.push_back(record);
  }
  map_->SetChosen(visible);
  for (Plot* plot : plots_->All()) plot->SetChosen(visible);
  actions_.value(QStringLiteral("hide"))->setEnabled(!session_.ChosenRecords().empty());
  TellChosen();
}

void OrvandiWindow::TellChosen() {
  const std::vector<std::uint32_t>& chosen = session_.ChosenRecords();
  if (chosen.size() == 1) told_->SetFullText(RecordLine(session_, chosen.front()));
  if (chosen.empty()) told_->SetFullText(QString());
  if (chosen.size() < 2) return;
  std::vector<double> levels;
  for (const std::uint32_t record : chosen) {
    if (session_.View().Shows(record)) levels.push_back(session_.View().level_db[record]);
  }
  const Distribution figures = Describe(levels);
  const Unit unit = session_.View().unit;
  told_->SetFullText(QStringLiteral("%1 chosen: median %2, from %3 to %4")
                         .arg(CountText(chosen.size()), LevelText(figures.median, unit),
                              LevelNumber(figures.least, unit), LevelText(figures.most, unit)));
}

void OrvandiWindow::ShowHovered(qint64 record) {
  map_->SetHovered(record);
  for (Plot* plot : plots_->All()) plot->SetHovered(record);
  if (record < 0) {
    QToolTip::hideText();
    TellChosen();
    return;
  }
  const auto number = static_cast<std::uint32_t>(record);
  told_->SetFullText(RecordLine(session_, number));
  QToolTip::showText(QCursor::pos(), RecordTip(session_, number), this);
}

void OrvandiWindow::ShowCounts() {
  const std::size_t all = session_.View().Count();
  const std::size_t shown = session_.ShownCount();
  QString text;
  if (!session_.Logs().empty()) {
    text =
        shown == all ? RecordsText(all) : QStringLiteral("%1 of %2").arg(CountText(shown), RecordsText(all));
    QStringList names;
    for (const OpenLog& log : session_.Logs()) names << log.name;
    setWindowTitle(names.join(QStringLiteral(", ")) + QStringLiteral(" \u2013 Orvandi"));
  } else {
    setWindowTitle(QStringLiteral("Orvandi"));
  }
  counts_->setText(text);
}

// To the next record that is shown, from the chosen one.
void OrvandiWindow::StepRecord(int by) {
  const ViewData& view = session_.View();
  const auto count = static_cast<std::int64_t>(view.Count());
  if (session_.ShownCount() == 0) return;
  const std::vector<std::uint32_t>& chosen = session_.ChosenRecords();
  std::int64_t at =
      chosen.empty() ? (by > 0 ? -1 : count) : std::int64_t{by > 0 ? chosen.back() : chosen.front()};
  do {
    at += by;
  } while (at >= 0 && at < count && !view.Shows(static_cast<std::size_t>(at)));
  if (at < 0 || at >= count) return;
  const auto record = static_cast<std::uint32_t>(at);
  session_.Choose({record}, false);
  if (!std::isnan(session_.Places()[record].latitude_deg)) map_->CenterOn(record);
}

}  // namespace orvandi
