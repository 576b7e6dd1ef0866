#pragma once

#include <QWidget>

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

  std::vector<std::int16_t> columns_;
  int maximum_ = 255;
  int line_ = -1;
};

}  // namespace kestrum
