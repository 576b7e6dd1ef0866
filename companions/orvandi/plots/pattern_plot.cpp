#include "plots/pattern_plot.h"

#include <QApplication>
#include <QMouseEvent>
#include <QToolTip>
#include <algorithm>
#include <cmath>

#include "plots/level_axis.h"
#include "plots/sector_wedges.h"

namespace orvandi {
namespace {

constexpr int kFillAlpha = 70;
constexpr double kLevelStep = 5;
constexpr double kLeastLevels = 20;
constexpr double kLabelTurn = 22.5;  // of the radial axis, between two labels of the compass

// Compass words every 45 degrees, degrees between them.
class CompassTicker final : public QCPAxisTickerFixed {
 public:
  CompassTicker() {
    setTickStep(30);
    setScaleStrategy(ssNone);
  }

 protected:
  QString getTickLabel(double tick, const QLocale& /*locale*/, QChar /*format*/, int /*precision*/) override {
    const int degrees = ((static_cast<int>(std::lround(tick)) % 360) + 360) % 360;
    switch (degrees) {
      case 0:
        return QStringLiteral("N");
      case 90:
        return QStringLiteral("E");
      case 180:
        return QStringLiteral("S");
      case 270:
        return QStringLiteral("W");
      default:
        return QString::number(degrees) + QChar(0xB0);
    }
  }
  int getSubTickCount(double /*step*/) override { return 2; }
};

QString SignedDb(double difference_db) {
  return QStringLiteral("%1%2 dB")
      .arg(difference_db < 0 ? QString(QChar(0x2212)) : QStringLiteral("+"))
      .arg(std::abs(difference_db), 0, 'f', 1);
}

}  // namespace

PatternPlot::PatternPlot(QWidget* parent) : Plot(parent) {
  setObjectName(QStringLiteral("patternPlot"));
  setAccessibleName(QStringLiteral("Antenna pattern"));
  plotLayout()->clear();
  angular_ = new QCPPolarAxisAngular(this);
  plotLayout()->addElement(0, 0, angular_);
  angular_->setMinimumMargins(QMargins(30, 20, 30, 20));
  angular_->setRange(0, 360);
  angular_->setRangeDrag(false);
  angular_->setRangeZoom(false);
  angular_->setTicker(QSharedPointer<QCPAxisTicker>(new CompassTicker));
  angular_->setTickLabelMode(QCPPolarAxisAngular::lmUpright);
  radial_ = angular_->radialAxis();
  radial_->setAngle(kLabelTurn * 2 - 15);
  radial_->setAngleReference(QCPPolarAxisRadial::arAngularAxis);
  radial_->setRangeDrag(false);
  radial_->setRangeZoom(false);
  wedges_ = new SectorWedges(this, angular_, radial_);
  wedges_->mark_color = SelectionColor();
  Restyle(PlotInkOf(palette()));
}

void PatternPlot::SetPatterns(std::vector<PatternCurve> patterns, double sector_deg) {
  patterns_ = std::move(patterns);
  differences_.clear();
  sector_deg_ = sector_deg;
}

void PatternPlot::SetDifferences(std::vector<SectorDifference> differences, double sector_deg) {
  differences_ = std::move(differences);
  sector_deg_ = sector_deg;
}

void PatternPlot::Refresh(const ViewData& view) {
  data_ = &view;
  Rebuild();
}

void PatternPlot::AddPattern(const PatternCurve& curve) {
  QVector<double> angles, medians;
  QColor fill = curve.color;
  fill.setAlpha(kFillAlpha);
  for (const Sector& sector : curve.pattern.sectors) {
    angles << sector.bearing_deg;
    medians << (sector.shown ? sector.median_db : std::nan(""));
    if (!sector.shown) continue;
    const double half = sector_deg_ / 2;
    wedges_->wedges.push_back({sector.bearing_deg - half, sector.bearing_deg + half, sector.lower_quartile_db,
                               sector.upper_quartile_db, fill, Qt::transparent});
    constexpr double kStroke = 0.12;  // dB to both sides: the median as an arc
    wedges_->wedges.push_back({sector.bearing_deg - half, sector.bearing_deg + half,
                               sector.median_db - kStroke, sector.median_db + kStroke, curve.color,
                               curve.color});
  }
  if (angles.isEmpty()) return;
  auto* line = new QCPPolarGraph(angular_, radial_);
  line->setPen(QPen(curve.color, 1.2));
  line->setScatterStyle(QCPScatterStyle(QCPScatterStyle::ssDisc, curve.color, curve.color, 4));
  angles << angles.front() + 360;
  medians << medians.front();
  line->setPeriodic(false);
  line->setData(angles, medians, true);
  lines_.push_back(line);
}

void PatternPlot::AddDifferences() {
  double most = 1;
  for (const SectorDifference& sector : differences_) {
    if (sector.shown) most = std::max(most, std::abs(sector.difference.difference_db));
  }
  const ColorScale scale{-most, most, &DifferencePalette()};
  for (const SectorDifference& sector : differences_) {
    if (!sector.shown) continue;
    const double difference = sector.difference.difference_db;
    const double half = sector_deg_ / 2 * 0.94;
    const QColor color(scale.Color(difference));
    wedges_->wedges.push_back({sector.bearing_deg - half, sector.bearing_deg + half,
                               std::min(0.0, difference), std::max(0.0, difference), color,
                               color.darker(130)});
  }
  wedges_->has_zero_circle = true;
}

void PatternPlot::ChooseRange() {
  if (ShowsDifferences()) {
    double most = 3;
    for (const SectorDifference& sector : differences_) {
      if (sector.shown) most = std::max(most, std::abs(sector.difference.difference_db));
    }
    radial_->setRange(-most * 1.6, most * 1.1);
    return;
  }
  double low = 1e9, high = -1e9;
  for (const PatternCurve& curve : patterns_) {
    for (const Sector& sector : curve.pattern.sectors) {
      if (!sector.shown) continue;
      low = std::min(low, sector.lower_quartile_db);
      high = std::max(high, sector.upper_quartile_db);
    }
  }
  if (low > high) low = 0, high = kLeastLevels;
  high = std::ceil(high / kLevelStep) * kLevelStep;
  low = std::min(std::floor(low / kLevelStep) * kLevelStep - kLevelStep, high - kLeastLevels);
  radial_->setRange(low, high);
}

void PatternPlot::Rebuild() {
  for (QCPPolarGraph* line : lines_) angular_->removeGraph(line);
  lines_.clear();
  wedges_->wedges.clear();
  wedges_->marked_deg.clear();
  wedges_->has_zero_circle = false;
  ChooseRange();
  const Unit unit = data_ != nullptr && !ShowsDifferences() ? data_->unit : Unit::kDbm;
  radial_->setTicker(QSharedPointer<QCPAxisTicker>(new LevelTicker(unit)));
  if (ShowsDifferences()) {
    AddDifferences();
  } else {
    for (const PatternCurve& curve : patterns_) AddPattern(curve);
  }
  SetChosen(chosen_);
}

// Marks the sectors of chosen records at the rim.
void PatternPlot::SetChosen(std::span<const std::uint32_t> records) {
  if (records.data() != chosen_.data()) chosen_.assign(records.begin(), records.end());
  wedges_->marked_deg.clear();
  std::vector<bool> marked(SectorCount(sector_deg_), false);
  for (const std::uint32_t record : chosen_) {
    if (data_ == nullptr || record >= data_->Count() || std::isnan(data_->bearing_deg[record])) continue;
    marked[SectorOf(data_->bearing_deg[record], sector_deg_)] = true;
  }
  for (std::size_t i = 0; i < marked.size(); ++i) {
    const double middle = static_cast<double>(i) * sector_deg_;
    if (marked[i]) wedges_->marked_deg.emplace_back(middle - sector_deg_ / 2, middle + sector_deg_ / 2);
  }
  replot(QCustomPlot::rpQueuedReplot);
}

void PatternPlot::SetHovered(std::int64_t /*record*/) {}

void PatternPlot::FitAll() {
  ChooseRange();
  replot(QCustomPlot::rpQueuedReplot);
}

void PatternPlot::Restyle(const PlotInk& ink) {
  setBackground(QBrush(ink.ground));
  QFont small = font();
  small.setPointSizeF(std::max(small.pointSizeF() * 0.9, 7.0));
  angular_->setBasePen(QPen(ink.axis, 1));
  angular_->setTickPen(QPen(ink.axis, 1));
  angular_->setSubTickPen(QPen(ink.axis, 1));
  angular_->setTickLabelColor(ink.strong);
  angular_->setTickLabelFont(small);
  angular_->grid()->setAngularPen(QPen(ink.grid, 1));
  angular_->grid()->setRadialPen(QPen(ink.grid, 1));
  radial_->setBasePen(QPen(ink.axis, 1));
  radial_->setTickPen(QPen(ink.axis, 1));
  radial_->setSubTicks(false);
  radial_->setTickLabelColor(ink.text);
  radial_->setTickLabelFont(small);
  wedges_->zero_color = ink.strong;
}

std::int64_t PatternPlot::SectorAt(QPointF pixel) const {
  const QPointF apart = pixel - angular_->center();
  if (std::hypot(apart.x(), apart.y()) > angular_->radius()) return -1;
  double angle = std::atan2(apart.x(), -apart.y()) * 180 / M_PI;
  if (angle < 0) angle += 360;
  return static_cast<std::int64_t>(SectorOf(angle, sector_deg_));
}

QPoint PatternPlot::SectorPlace(std::size_t sector) const {
  const double angle = static_cast<double>(sector) * sector_deg_ * M_PI / 180;
  const double radius = angular_->radius() / 2;
  return (angular_->center() + QPointF(std::sin(angle), -std::cos(angle)) * radius).toPoint();
}

QString PatternPlot::SectorText(std::size_t sector) const {
  const double middle = static_cast<double>(sector) * sector_deg_;
  QStringList lines;
  lines << QStringLiteral("%1%2 \u00B1 %3%2").arg(middle).arg(QChar(0xB0)).arg(sector_deg_ / 2);
  if (ShowsDifferences()) {
    const SectorDifference& one = differences_.at(sector);
    const Difference& difference = one.difference;
    lines << (one.shown ? QStringLiteral("difference %1, spread %2 dB, %3 and %4 records")
                              .arg(SignedDb(difference.difference_db))
                              .arg(difference.spread_db, 0, 'f', 1)
                              .arg(difference.count_a)
                              .arg(difference.count_b)
                        : QStringLiteral("%1 and %2 records: too few")
                              .arg(difference.count_a)
                              .arg(difference.count_b));
    return lines.join(QLatin1Char('\n'));
  }
  for (const PatternCurve& curve : patterns_) {
    const Sector& one = curve.pattern.sectors.at(sector);
    const QString name = patterns_.size() > 1 ? curve.name + QStringLiteral(": ") : QString();
    if (!one.shown) {
      lines << name + QStringLiteral("%1 records: too few").arg(one.count);
      continue;
    }
    lines << name + QStringLiteral("%1 at 1 km, half of them from %2 to %3, %4 records")
                        .arg(LevelText(one.median_db, data_->unit),
                             LevelNumber(one.lower_quartile_db, data_->unit),
                             LevelNumber(one.upper_quartile_db, data_->unit))
                        .arg(one.count);
  }
  return lines.join(QLatin1Char('\n'));
}

void PatternPlot::mouseReleaseEvent(QMouseEvent* event) {
  Plot::mouseReleaseEvent(event);
  if (event->button() != Qt::LeftButton || data_ == nullptr) return;
  const std::int64_t sector = SectorAt(event->position());
  std::vector<std::uint32_t> records;
  for (std::size_t record = 0; sector >= 0 && record < data_->Count(); ++record) {
    if (!data_->Shows(record) || std::isnan(data_->bearing_deg[record])) continue;
    if (SectorOf(data_->bearing_deg[record], sector_deg_) == static_cast<std::size_t>(sector)) {
      records.push_back(static_cast<std::uint32_t>(record));
    }
  }
  Q_EMIT Chosen(records, (event->modifiers() & Qt::ControlModifier) != 0);
}

void PatternPlot::mouseMoveEvent(QMouseEvent* event) {
  Plot::mouseMoveEvent(event);
  const std::int64_t sector = SectorAt(event->position());
  if (sector < 0 || (patterns_.empty() && differences_.empty())) {
    QToolTip::hideText();
    return;
  }
  QToolTip::showText(event->globalPosition().toPoint(), SectorText(static_cast<std::size_t>(sector)), this);
}

}  // namespace orvandi
