#include "desktop/widgets/strip_chart_widget.h"

#include <QFontMetricsF>
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
  columns_ = chart.columns;
  maximum_ = std::max(1, chart.maximum);
  line_ = chart.line;
  update();
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

void StripChartWidget::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const Scheme& scheme = SchemeOf(palette());
  painter.fillRect(rect(), scheme.ground);
  painter.setPen(QPen(scheme.line, 1));
  painter.drawRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
  QFont small = font();
  small.setPixelSize(std::max(8, fontMetrics().height() * 3 / 5));
  painter.setFont(small);
  const QFontMetricsF metrics(small);
  if (line_ >= 0) {
    QPen dashes(scheme.quiet, 1, Qt::DashLine);
    painter.setPen(dashes);
    painter.drawLine(QPointF(2, YOf(line_)), QPointF(width() - 2, YOf(line_)));
    painter.drawText(QPointF(width() - 4 - metrics.horizontalAdvance(QStringLiteral("S9")), YOf(line_) - 2),
                     QStringLiteral("S9"));
  }
  painter.setPen(scheme.quiet);
  painter.drawText(QPointF(5, metrics.ascent() + 2), QStringLiteral("last 5 min"));
  if (columns_.empty()) return;

  const double step = (width() - 4.0) / static_cast<double>(columns_.size());
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(scheme.bar, std::max(1.5, fontMetrics().height() / 10.0), Qt::SolidLine, Qt::RoundCap));
  QPolygonF run;
  const auto finish = [&painter, &run] {
    if (run.size() == 1) painter.drawPoint(run.first());
    if (run.size() > 1) painter.drawPolyline(run);
    run.clear();
  };
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    if (columns_.at(i) < 0) {
      finish();
    } else {
      run.append(QPointF(2 + (static_cast<double>(i) + 0.5) * step, YOf(columns_.at(i))));
    }
  }
  finish();
}

}  // namespace kestrum
