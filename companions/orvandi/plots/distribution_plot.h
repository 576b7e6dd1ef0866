#pragma once

#include "analysis/distribution.h"
#include "plots/record_plot.h"

namespace orvandi {

// How often which level occurs, by layer, with median and the levels that 10 % and 90 % lie below. A click on
// a class chooses its records.
class DistributionPlot final : public Plot {
  Q_OBJECT

 public:
  static constexpr double kClassDb = 2;

  explicit DistributionPlot(QWidget* parent = nullptr);

  void Refresh(const ViewData& view) override;
  void SetChosen(std::span<const std::uint32_t> records) override;
  void SetHovered(std::int64_t record) override;
  void Restyle(const PlotInk& ink) override;
  void FitAll() override;
  [[nodiscard]] const Distribution& Figures() const { return figures_; }

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;

 private:
  QCPBars* AddBars(std::vector<double>& levels, const QColor& color, double width, double offset);
  void AddFigure(double level, const QString& name);
  void Rebuild();

  const ViewData* data_ = nullptr;
  std::vector<std::uint32_t> chosen_;
  Distribution figures_;
  QPoint pressed_at_;
};

}  // namespace orvandi
