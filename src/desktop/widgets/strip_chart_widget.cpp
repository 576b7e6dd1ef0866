#include "desktop/widgets/strip_chart_widget.h"

#include <QPaintEvent>
#include <QPainter>
#include <algorithm>

#include "desktop/widgets/scheme.h"

namespace kestrum {

StripChartWidget::StripChartWidget(QWidget* parent) : QWidget(parent) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  setAccessibleName(QStringLiteral("Signal of the last 5 minutes"));
}

void StripChartWidget::Show(const StripChart& chart) {
  const bool same_scale = chart.columns.size() == columns_.size() && chart.line == line_ &&
                          std::max(1, chart.maximum) == maximum_;
  const auto [old_first, first] =
      std::mismatch(columns_.begin(), columns_.end(), chart.columns.begin(), chart.columns.end());
  const bool same = same_scale && first == chart.columns.end();
  if (same) return;
  const auto changed = static_cast<std::size_t>(first - chart.columns.begin());
  columns_ = chart.columns;
  maximum_ = std::max(1, chart.maximum);
  line_ = chart.line;
  if (!same_scale) {
    update();
    return;
  }
  // Within a second only the last column grows; its line begins at the one before.
  const double from = XOf(changed > 0 ? changed - 1 : 0) - LineWidth() - 1;
  update(QRectF(from, 0, width() - from, height()).toAlignedRect());
}

QSize StripChartWidget::sizeHint() const {
  return {fontMetrics().averageCharWidth() * 24, fontMetrics().height() * 4};
}

QSize StripChartWidget::minimumSizeHint() const {
  return {fontMetrics().averageCharWidth() * 12, fontMetrics().height() * 3 / 2};
}

double StripChartWidget::YOf(int value) const {
  const double top = 3;
  const double bottom = height() - 3.0;
  return bottom - (bottom - top) * std::clamp(value, 0, maximum_) / maximum_;
}

double StripChartWidget::XOf(std::size_t column) const {
  const double step = (width() - 4.0) / static_cast<double>(std::max<std::size_t>(1, columns_.size()));
  return 2 + (static_cast<double>(column) + 0.5) * step;
}

double StripChartWidget::LineWidth() const {
  return std::max(1.5, fontMetrics().height() / 10.0);
}

void StripChartWidget::PaintColumns(QPainter& painter, const QRectF& part) const {
  QPolygonF run;
  const auto finish = [&painter, &run] {
    if (run.size() == 1) painter.drawPoint(run.first());
    if (run.size() > 1) painter.drawPolyline(run);
    run.clear();
  };
  // The lines that begin or end in `part`.
  const double margin = LineWidth() + 1 + XOf(1) - XOf(0);
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    if (XOf(i) < part.left() - margin) continue;
    if (XOf(i) > part.right() + margin) break;
    if (columns_.at(i) < 0) {
      finish();
    } else {
      run.append(QPointF(XOf(i), YOf(columns_.at(i))));
    }
  }
  finish();
}

void StripChartWidget::paintEvent(QPaintEvent* event) {
  const QRectF part = event->rect();
  QPainter painter(this);
  const Scheme& scheme = SchemeOf(palette());
  painter.fillRect(rect(), scheme.ground);
  painter.setPen(QPen(scheme.line, 1));
  painter.drawRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
  QFont small = font();
  small.setPixelSize(std::max(8, fontMetrics().height() * 3 / 5));
  letters_.SetFont(small);
  if (line_ >= 0) {
    const QString name = QStringLiteral("S9");
    painter.setPen(QPen(scheme.quiet, 1, Qt::DashLine));
    painter.drawLine(QPointF(2, YOf(line_)), QPointF(width() - 2, YOf(line_)));
    letters_.Draw(painter, QPointF(width() - 4 - letters_.Width(name), YOf(line_) - 2), name, part);
  }
  painter.setPen(scheme.quiet);
  letters_.Draw(painter, QPointF(5, letters_.Ascent() + 2), QStringLiteral("last 5 min"), part);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(scheme.bar, LineWidth(), Qt::SolidLine, Qt::RoundCap));
  PaintColumns(painter, part);
}

}  // namespace kestrum
