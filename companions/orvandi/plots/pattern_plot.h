#pragma once

#include <vector>

#include "analysis/comparison.h"
#include "analysis/pattern.h"
#include "plots/record_plot.h"

namespace orvandi {

// The pattern of one layer.
struct PatternCurve {
  QString name;
  QColor color;
  Pattern pattern;
};

class SectorWedges;

// The antenna seen from above, north on top: median level at 1 km by sector with its quartiles, or the
// difference of two layers. A click on a sector chooses its records.
class PatternPlot final : public Plot {
  Q_OBJECT

 public:
  explicit PatternPlot(QWidget* parent = nullptr);

  // What is shown, to be set before Refresh: patterns, or differences where there are any.
  void SetPatterns(std::vector<PatternCurve> patterns, double sector_deg);
  void SetDifferences(std::vector<SectorDifference> differences, double sector_deg);

  void Refresh(const ViewData& view) override;
  void SetChosen(std::span<const std::uint32_t> records) override;
  void SetHovered(std::int64_t record) override;
  void Restyle(const PlotInk& ink) override;
  void FitAll() override;

  [[nodiscard]] const std::vector<PatternCurve>& Patterns() const { return patterns_; }
  [[nodiscard]] bool ShowsDifferences() const { return !differences_.empty(); }
  // What is told of the sector under the pointer.
  [[nodiscard]] QString SectorText(std::size_t sector) const;
  // Where the middle of a sector is on the widget, at half of the radius.
  [[nodiscard]] QPoint SectorPlace(std::size_t sector) const;

 protected:
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;

 private:
  [[nodiscard]] std::int64_t SectorAt(QPointF pixel) const;
  void Rebuild();
  void AddPattern(const PatternCurve& curve);
  void AddDifferences();
  void ChooseRange();

  QCPPolarAxisAngular* angular_;
  QCPPolarAxisRadial* radial_;
  SectorWedges* wedges_;
  std::vector<QCPPolarGraph*> lines_;
  const ViewData* data_ = nullptr;
  std::vector<PatternCurve> patterns_;
  std::vector<SectorDifference> differences_;
  double sector_deg_ = 10;
  std::vector<std::uint32_t> chosen_;
};

}  // namespace orvandi
