#include "plots/distribution_plot.h"

#include <QApplication>
#include <QMouseEvent>
#include <QToolTip>
#include <algorithm>
#include <cmath>

#include "map/wide_registers.h"
#include "plots/level_axis.h"

namespace orvandi {
namespace {

constexpr double kRoom = 1.18;  // above the highest bar, for the figures
constexpr double kPercent = 100;

}  // namespace

DistributionPlot::DistributionPlot(QWidget* parent) : Plot(parent) {
  setObjectName(QStringLiteral("distributionPlot"));
  setAccessibleName(QStringLiteral("Distribution of the signal"));
  setAutoAddPlottableToLegend(false);
  yAxis->setLabel(QStringLiteral("Share of records (%)"));
  Restyle(PlotInkOf(palette()));
}

QCPBars* DistributionPlot::AddBars(std::vector<double>& levels, const QColor& color, double width,
                                   double offset) {
  auto* bars = new QCPBars(xAxis, yAxis);
  const Histogram histogram = Count(levels, kClassDb);
  QVector<double> keys, shares;
  for (std::size_t i = 0; i < histogram.counts.size(); ++i) {
    keys << histogram.first + histogram.width * (static_cast<double>(i) + offset);
    shares << kPercent * static_cast<double>(histogram.counts[i]) / static_cast<double>(figures_.count);
  }
  bars->setData(keys, shares, true);
  bars->setWidth(histogram.width * width);
  bars->setPen(Qt::NoPen);
  bars->setBrush(color);
  return bars;
}

void DistributionPlot::AddFigure(double level, const QString& name) {
  const PlotInk ink = PlotInkOf(palette());
  auto* line = new QCPItemStraightLine(this);
  line->point1->setCoords(level, 0);
  line->point2->setCoords(level, 1);
  line->setPen(QPen(ink.strong, 1.4, name.startsWith(QLatin1Char('m')) ? Qt::SolidLine : Qt::DashLine));
  auto* text = new QCPItemText(this);
  text->setText(name + QLatin1Char('\n') + LevelNumber(level, data_->unit));
  text->setColor(ink.strong);
  text->setFont(xAxis->tickLabelFont());
  text->setTextAlignment(Qt::AlignLeft);
  text->setPositionAlignment(Qt::AlignLeft | Qt::AlignTop);
  text->setPadding(QMargins(4, 2, 2, 0));
  text->position->setTypeX(QCPItemPosition::ptPlotCoords);
  text->position->setTypeY(QCPItemPosition::ptAxisRectRatio);
  text->position->setCoords(level, 0);
}

void DistributionPlot::Rebuild() {
  clearPlottables();
  clearItems();
  if (data_ == nullptr) return;
  ForgetWideRegisters();
  std::vector<std::vector<double>> by_layer(std::max<std::size_t>(data_->layers.size(), 1));
  std::vector<double> all;
  all.reserve(data_->Count());
  for (std::size_t record = 0; record < data_->Count(); ++record) {
    if (!data_->Shows(record)) continue;
    by_layer[data_->layer[record]].push_back(data_->level_db[record]);
    all.push_back(data_->level_db[record]);
  }
  figures_ = Describe(std::move(all));
  if (figures_.count == 0) return;
  const auto used = static_cast<double>(
      std::count_if(by_layer.begin(), by_layer.end(), [](const auto& levels) { return !levels.empty(); }));
  double slot = 0;
  for (std::size_t i = 0; i < by_layer.size(); ++i) {
    if (by_layer[i].empty()) continue;
    QColor color = data_->layers.empty() ? LayerColor(0) : data_->layers[i].color;
    AddBars(by_layer[i], color, 0.92 / used, (slot + 0.5) / used);
    ++slot;
  }
  std::vector<double> chosen;
  for (const std::uint32_t record : chosen_) {
    if (record < data_->Count() && data_->Shows(record)) chosen.push_back(data_->level_db[record]);
  }
  if (!chosen.empty()) AddBars(chosen, SelectionColor(), 0.5, 0.5);
  AddFigure(figures_.p10, QStringLiteral("10 %"));
  AddFigure(figures_.median, QStringLiteral("median"));
  AddFigure(figures_.p90, QStringLiteral("90 %"));
}

void DistributionPlot::Refresh(const ViewData& view) {
  data_ = &view;
  xAxis->setTicker(QSharedPointer<QCPAxisTicker>(new LevelTicker(view.unit)));
  xAxis->setLabel(AxisLabel(view.unit));
  Rebuild();
  FitAll();
}

void DistributionPlot::SetChosen(std::span<const std::uint32_t> records) {
  if (std::ranges::equal(chosen_, records)) return;
  chosen_.assign(records.begin(), records.end());
  Rebuild();
  replot(QCustomPlot::rpQueuedReplot);
}

void DistributionPlot::SetHovered(std::int64_t /*record*/) {}

void DistributionPlot::Restyle(const PlotInk& ink) {
  StylePlot(*this, ink);
  Rebuild();
}

void DistributionPlot::FitAll() {
  rescaleAxes();
  yAxis->setRange(0, std::max(yAxis->range().upper, 0.01) * kRoom);
  if (figures_.count > 0) xAxis->setRange(figures_.least - 2 * kClassDb, figures_.most + 2 * kClassDb);
  replot(QCustomPlot::rpQueuedReplot);
}

void DistributionPlot::mousePressEvent(QMouseEvent* event) {
  pressed_at_ = event->pos();
  Plot::mousePressEvent(event);
}

// A click chooses the class under it, a drag the classes that it crosses.
void DistributionPlot::mouseReleaseEvent(QMouseEvent* event) {
  Plot::mouseReleaseEvent(event);
  if (event->button() != Qt::LeftButton || data_ == nullptr) return;
  const double one = xAxis->pixelToCoord(pressed_at_.x());
  const double other = xAxis->pixelToCoord(event->pos().x());
  const double from = std::floor(std::min(one, other) / kClassDb) * kClassDb;
  const double to = (std::floor(std::max(one, other) / kClassDb) + 1) * kClassDb;
  std::vector<std::uint32_t> records;
  for (std::size_t record = 0; record < data_->Count(); ++record) {
    const double level = data_->level_db[record];
    if (data_->Shows(record) && level >= from && level < to)
      records.push_back(static_cast<std::uint32_t>(record));
  }
  Q_EMIT Chosen(records, (event->modifiers() & Qt::ControlModifier) != 0);
}

void DistributionPlot::mouseMoveEvent(QMouseEvent* event) {
  Plot::mouseMoveEvent(event);
  if (data_ == nullptr || figures_.count == 0) return;
  const double from = std::floor(xAxis->pixelToCoord(event->pos().x()) / kClassDb) * kClassDb;
  std::size_t count = 0;
  for (std::size_t record = 0; record < data_->Count(); ++record) {
    if (data_->Shows(record) && data_->level_db[record] >= from && data_->level_db[record] < from + kClassDb)
      ++count;
  }
  QToolTip::showText(event->globalPosition().toPoint(),
                     QStringLiteral("%1 to %2: %3 records")
                         .arg(LevelNumber(from, data_->unit), LevelText(from + kClassDb, data_->unit))
                         .arg(count),
                     this);
}

}  // namespace orvandi
