#pragma once

#include <vector>

#include "plots/qcustomplot_qt.h"

namespace orvandi {

// Parts of rings in a polar plot: from one radius to another over a range of angles.
struct Wedge {
  double from_deg = 0;
  double to_deg = 0;
  double inner = 0;  // in units of the radial axis; cut off where the axis ends
  double outer = 0;
  QColor fill;
  QColor rim;  // transparent: none
};

class SectorWedges final : public QCPLayerable {
  Q_OBJECT

 public:
  SectorWedges(QCustomPlot* plot, QCPPolarAxisAngular* angular, QCPPolarAxisRadial* radial);

  std::vector<Wedge> wedges;
  // Ranges of angles that are marked at the rim of the plot.
  std::vector<std::pair<double, double>> marked_deg;
  QColor mark_color;
  double zero_circle = 0;  // shown where it lies between the ends of the radial axis
  bool has_zero_circle = false;
  QColor zero_color;

 protected:
  void applyDefaultAntialiasingHint(QCPPainter* painter) const override;
  void draw(QCPPainter* painter) override;

 private:
  void DrawRing(QCPPainter* painter, const Wedge& wedge) const;
  [[nodiscard]] QPointF At(double angle_deg, double level) const;

  QCPPolarAxisAngular* angular_;
  QCPPolarAxisRadial* radial_;
};

}  // namespace orvandi
