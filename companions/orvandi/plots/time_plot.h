#pragma once

#include "plots/record_plot.h"

namespace orvandi {

// Level over the time of the clock that the logger wrote.
class TimePlot final : public RecordPlot {
  Q_OBJECT

 public:
  explicit TimePlot(QWidget* parent = nullptr);

 protected:
  [[nodiscard]] std::vector<double> Keys(const ViewData& view) const override;
};

}  // namespace orvandi
