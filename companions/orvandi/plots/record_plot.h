#pragma once

#include <span>
#include <vector>

#include "plots/dot_graph.h"
#include "plots/plot_style.h"

namespace orvandi {

// A plot of the window. All of them show the same records and tell what is chosen in them.
class Plot : public QCustomPlot {
  Q_OBJECT

 public:
  explicit Plot(QWidget* parent = nullptr);

  // Shows `view`, which outlives the plot, anew; what is in view stays unless it shows all there was.
  virtual void Refresh(const ViewData& view) = 0;
  virtual void SetChosen(std::span<const std::uint32_t> records) = 0;
  virtual void SetHovered(std::int64_t record) = 0;  // -1: none
  virtual void Restyle(const PlotInk& ink) = 0;
  virtual void FitAll() = 0;

  void SetChoosing(bool on) { choosing_ = on; }
  [[nodiscard]] bool Choosing() const { return choosing_; }

 Q_SIGNALS:
  void Hovered(qint64 record);
  void Chosen(const std::vector<std::uint32_t>& records, bool add);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  bool choosing_ = false;
};

// Levels over something, one dot a record. Dragging moves, the wheel zooms, a double click shows all; a click
// chooses a dot, Shift and dragging (or dragging while choosing is on) those in a rectangle, Ctrl adds.
class RecordPlot : public Plot {
  Q_OBJECT

 public:
  explicit RecordPlot(QWidget* parent = nullptr);

  void Refresh(const ViewData& view) override;
  void SetChosen(std::span<const std::uint32_t> records) override;
  void SetHovered(std::int64_t record) override;
  void Restyle(const PlotInk& ink) override;
  void FitAll() override;
  [[nodiscard]] const DotGraph& Dots() const { return *dots_; }
  [[nodiscard]] bool ShowsAll() const { return shows_all_; }

 protected:
  [[nodiscard]] virtual std::vector<double> Keys(const ViewData& view) const = 0;
  // What a plot adds to the dots, before it is painted.
  virtual void Decorate(const ViewData& view) { (void)view; }
  [[nodiscard]] const ViewData* Data() const { return data_; }

  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void leaveEvent(QEvent* event) override;

 private:
  const ViewData* data_ = nullptr;
  DotGraph* dots_;
  DotGraph* chosen_dots_;
  QCPItemEllipse* hovered_ring_;
  QPoint pressed_at_;
  bool shows_all_ = true;
  Unit unit_ = Unit::kDbMicrovoltPerM;
};

}  // namespace orvandi
