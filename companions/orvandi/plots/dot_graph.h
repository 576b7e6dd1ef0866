#pragma once

#include <span>
#include <vector>

#include "plots/qcustomplot_qt.h"
#include "plots/view_data.h"

namespace orvandi {

// Dots of a plot: levels over something. However many there are, a place of the screen is painted once.
class DotGraph final : public QCPAbstractPlottable {
  Q_OBJECT

 public:
  DotGraph(QCPAxis* key_axis, QCPAxis* value_axis);

  void SetData(const ViewData* data, std::vector<double> keys);
  [[nodiscard]] double KeyOf(std::size_t record) const { return keys_[record]; }
  [[nodiscard]] std::size_t Count() const { return keys_.size(); }
  // Only these records, in the colour of chosen ones.
  void SetChosen(std::span<const std::uint32_t> records);
  void SetRim(QColor rim) { rim_ = rim; }

  // The record whose dot is nearest to a place within `radius` pixels; -1 when there is none.
  [[nodiscard]] std::int64_t Nearest(QPointF pixel, double radius) const;
  [[nodiscard]] std::vector<std::uint32_t> Within(const QRectF& pixels) const;

  double selectTest(const QPointF& pos, bool only_selectable, QVariant* details) const override;
  QCPRange getKeyRange(bool& found, QCP::SignDomain domain) const override;
  QCPRange getValueRange(bool& found, QCP::SignDomain domain, const QCPRange& key_range) const override;

 protected:
  void draw(QCPPainter* painter) override;
  void drawLegendIcon(QCPPainter* painter, const QRectF& rect) const override;

 private:
  template <typename Visit>
  void VisitShown(Visit visit) const;
  void DrawImage(QCPPainter* painter, double pixel_ratio);
  void DrawShapes(QCPPainter* painter);

  const ViewData* data_ = nullptr;
  std::vector<double> keys_;
  std::vector<std::uint32_t> chosen_;
  bool only_chosen_ = false;
  QColor rim_ = Qt::transparent;
};

}  // namespace orvandi
