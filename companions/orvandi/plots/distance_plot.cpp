#include "plots/distance_plot.h"

#include <cmath>

#include "plots/level_axis.h"

namespace orvandi {
namespace {

const QColor kFittedColor(0xD5, 0x5E, 0x00);
const QColor kFreeSpaceColor(0x00, 0x9E, 0x73);

}  // namespace

QString LawText(const Law& law, Unit unit) {
  switch (law.kind) {
    case Law::Kind::kNone:
      return QStringLiteral("No record with a distance.");
    case Law::Kind::kFreeSpace:
      return QStringLiteral("The distances differ too little to fit a line: free space, n = 2, %1 at 1 km")
          .arg(LevelText(law.level_at_1km_db, unit));
    case Law::Kind::kFitted:
      break;
  }
  return QStringLiteral("n = %1, spread %2 dB, %3 at 1 km, %4 records")
      .arg(law.exponent, 0, 'f', 2)
      .arg(law.spread_db, 0, 'f', 1)
      .arg(LevelText(law.level_at_1km_db, unit))
      .arg(law.used);
}

DistancePlot::DistancePlot(QWidget* parent) : RecordPlot(parent) {
  setObjectName(QStringLiteral("distancePlot"));
  setAccessibleName(QStringLiteral("Signal over distance"));
  xAxis->setTicker(QSharedPointer<QCPAxisTicker>(new DistanceTicker));
  const auto line = [this](const QColor& color, Qt::PenStyle style) {
    QCPGraph* graph = addGraph();
    graph->setPen(QPen(color, 2, style));
    graph->setAdaptiveSampling(false);
    graph->addToLegend();
    return graph;
  };
  fitted_line_ = line(kFittedColor, Qt::SolidLine);
  free_space_line_ = line(kFreeSpaceColor, Qt::DashLine);
  axisRect()->insetLayout()->setInsetAlignment(0, Qt::AlignTop | Qt::AlignRight);
  legend->setVisible(true);
  Restyle(PlotInkOf(palette()));
}

std::vector<double> DistancePlot::Keys(const ViewData& view) const {
  return {view.log_distance.begin(), view.log_distance.end()};
}

void DistancePlot::DrawLaw(QCPGraph* graph, const Law& law) {
  graph->setVisible(law.kind != Law::Kind::kNone);
  if (law.kind == Law::Kind::kNone) {
    graph->setData({}, {});
    return;
  }
  // From 1 m to half around the earth: straight on a logarithmic axis.
  constexpr double kFrom = -3;
  constexpr double kTo = 4.3;
  graph->setData({kFrom, kTo}, {law.LevelAt(std::pow(10, kFrom)), law.LevelAt(std::pow(10, kTo))});
}

void DistancePlot::Decorate(const ViewData& view) {
  free_space_ = {};
  const auto anchor = static_cast<std::size_t>(anchor_);
  if (anchor_ >= 0 && anchor < view.Count() && view.Shows(anchor) && !std::isnan(view.log_distance[anchor])) {
    free_space_ = FreeSpaceThrough(std::pow(10, view.log_distance[anchor]), view.level_db[anchor]);
    free_space_line_->setName(QStringLiteral("free space through the chosen record"));
  } else if (law_.kind != Law::Kind::kNone) {
    // Through the middle of the fitted line, where both say the same.
    const double middle = std::sqrt(std::max(law_.nearest_km, 0.001) * std::max(law_.farthest_km, 0.001));
    free_space_ = FreeSpaceThrough(middle, law_.LevelAt(middle));
    free_space_line_->setName(QStringLiteral("free space"));
  }
  DrawLaw(fitted_line_, law_.kind == Law::Kind::kFitted ? law_ : Law());
  DrawLaw(free_space_line_, free_space_);
  fitted_line_->setName(QStringLiteral("fitted: n = %1 \u00B1 %2 dB")
                            .arg(law_.exponent, 0, 'f', 2)
                            .arg(law_.spread_db, 0, 'f', 1));
  legend->setVisible(law_.kind != Law::Kind::kNone);
}

void DistancePlot::SetChosen(std::span<const std::uint32_t> records) {
  anchor_ = records.size() == 1 ? std::int64_t{records.front()} : -1;
  RecordPlot::SetChosen(records);
}

}  // namespace orvandi
