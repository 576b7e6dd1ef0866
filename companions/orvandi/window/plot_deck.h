#pragma once

#include <QWidget>
#include <array>
#include <vector>

#include "plots/distance_plot.h"
#include "plots/distribution_plot.h"
#include "plots/pattern_plot.h"
#include "plots/time_plot.h"

class QComboBox;
class QGridLayout;
class QToolButton;

namespace orvandi {

class ElidedLabel;

// The plots: as many of the four as there is room for, those asked for last before the others.
class PlotDeck final : public QWidget {
  Q_OBJECT

 public:
  enum Kind { kTime, kDistance, kPattern, kDistribution };
  static constexpr std::size_t kCount = 4;

  explicit PlotDeck(QWidget* parent = nullptr);

  [[nodiscard]] TimePlot* Time() const { return time_; }
  [[nodiscard]] DistancePlot* Distance() const { return distance_; }
  [[nodiscard]] PatternPlot* Pattern() const { return pattern_; }
  [[nodiscard]] DistributionPlot* Distribution() const { return distribution_; }
  [[nodiscard]] std::array<Plot*, kCount> All() const;
  [[nodiscard]] QComboBox* Sectors() const { return sectors_; }

  // One line of figures over a plot.
  void SetCaption(Kind kind, const QString& text);
  [[nodiscard]] QString Caption(Kind kind) const;
  void Bring(Kind kind);
  [[nodiscard]] bool Shows(Kind kind) const;
  void SetIcons(const QPalette& palette);
  // The order in which the plots were asked for, to be remembered.
  [[nodiscard]] QString Order() const;
  void SetOrder(const QString& order);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  struct Panel {
    QWidget* frame = nullptr;
    ElidedLabel* caption = nullptr;
    QToolButton* button = nullptr;
  };
  void AddPanel(Kind kind, Plot* plot, const QString& title, const QString& tip, QWidget* extra);
  void Arrange();

  TimePlot* time_;
  DistancePlot* distance_;
  PatternPlot* pattern_;
  DistributionPlot* distribution_;
  QComboBox* sectors_;
  QGridLayout* grid_;
  std::array<Panel, kCount> panels_;
  std::vector<Kind> order_ = {kTime, kPattern, kDistance, kDistribution};
};

}  // namespace orvandi
