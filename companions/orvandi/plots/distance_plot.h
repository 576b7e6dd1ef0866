#pragma once

#include "analysis/law.h"
#include "plots/record_plot.h"

namespace orvandi {

// Level over the distance from the transmitter, on a logarithmic axis, with the law that fits the records and
// that of free space through a chosen one.
class DistancePlot final : public RecordPlot {
  Q_OBJECT

 public:
  explicit DistancePlot(QWidget* parent = nullptr);

  // Of what is shown; to be set before Refresh.
  void SetLaw(const Law& law) { law_ = law; }
  [[nodiscard]] const Law& FreeSpace() const { return free_space_; }
  void SetChosen(std::span<const std::uint32_t> records) override;

 protected:
  [[nodiscard]] std::vector<double> Keys(const ViewData& view) const override;
  void Decorate(const ViewData& view) override;

 private:
  void DrawLaw(QCPGraph* graph, const Law& law);

  Law law_;
  Law free_space_;
  std::int64_t anchor_ = -1;  // the record that the free-space line goes through
  QCPGraph* fitted_line_;
  QCPGraph* free_space_line_;
};

// "n = 2.31, spread 4.2 dB, 63.1 dBµV/m at 1 km, 1234 records": the law in one line.
QString LawText(const Law& law, Unit unit);

}  // namespace orvandi
