#pragma once

#include <memory>
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

  // Keys by record; graphs of one plot share them.
  using Keys = std::shared_ptr<const std::vector<double>>;
  void SetData(const ViewData* data, Keys keys);
  [[nodiscard]] double KeyOf(std::size_t record) const { return (*keys_)[record]; }
  [[nodiscard]] std::size_t Count() const { return keys_->size(); }
  // Only these records, in the colour of chosen ones.
  void SetChosen(std::span<const std::uint32_t> records);
  void SetRim(QColor rim);

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
  // The dots in view and around it, painted once: moving the plot only copies them.
  struct Picture {
    QImage image;
    double pixel_ratio = 0;
    double key = 0;  // coordinates of its corner, and pixels to one of them
    double level = 0;
    double key_pixels = 0;
    double level_pixels = 0;
  };
  [[nodiscard]] QPointF CornerOf(const Picture& picture) const;  // in pixels of the plot
  [[nodiscard]] bool Covers(const Picture& picture, double pixel_ratio) const;
  [[nodiscard]] Picture Painted(double pixel_ratio) const;
  void DrawImage(QCPPainter* painter, double pixel_ratio);
  void DrawShapes(QCPPainter* painter);

  const ViewData* data_ = nullptr;
  Keys keys_ = std::make_shared<const std::vector<double>>();
  std::vector<std::uint32_t> chosen_;
  bool only_chosen_ = false;
  QColor rim_ = Qt::transparent;
  Picture picture_;
};

}  // namespace orvandi
