#pragma once

#include <QWidget>

#include "desktop/widgets/quick_text.h"
#include "forms/indicators.h"

namespace kestrum {

// The signal of the last five minutes as a line; nothing where nothing was measured.
class StripChartWidget : public QWidget {
  Q_OBJECT

 public:
  explicit StripChartWidget(QWidget* parent);

  void Show(const StripChart& chart);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  double YOf(int value) const;
  // Place of a column, in pixels.
  double XOf(std::size_t column) const;
  void PaintColumns(QPainter& painter, const QRectF& part) const;
  // Half of what the line and its caps may reach beyond its points.
  double LineWidth() const;

  std::vector<std::int16_t> columns_;
  int maximum_ = 255;
  int line_ = -1;
  QuickText letters_;
};

}  // namespace kestrum
