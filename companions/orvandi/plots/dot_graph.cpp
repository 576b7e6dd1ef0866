#include "plots/dot_graph.h"

#include <algorithm>
#include <cmath>

namespace orvandi {
namespace {

constexpr double kRadius = 2.6;
constexpr double kChosenRadius = 3.4;

// Straight-line conversion of an axis from coordinates to pixels; QCPAxis asks its settings anew for every
// one.
struct Line {
  double offset = 0;
  double factor = 1;
  [[nodiscard]] double At(double coordinate) const { return offset + coordinate * factor; }
};

Line LineOf(const QCPAxis* axis) {
  const double zero = axis->coordToPixel(axis->range().lower);
  const double one = axis->coordToPixel(axis->range().upper);
  const double factor = (one - zero) / axis->range().size();
  return {zero - axis->range().lower * factor, factor};
}

// Which cells of a grid over the plot have been painted.
class Occupied {
 public:
  Occupied(double width, double height, double cell)
      : cell_(cell),
        columns_(static_cast<std::size_t>(width / cell) + 2),
        taken_(columns_ * (static_cast<std::size_t>(height / cell) + 2)) {}
  // True the first time that a cell is asked for; the place lies within the plot.
  bool Take(double x, double y) {
    auto cell = taken_[static_cast<std::size_t>(y / cell_) * columns_ + static_cast<std::size_t>(x / cell_)];
    if (cell) return false;
    cell = true;
    return true;
  }

 private:
  double cell_;
  std::size_t columns_;
  std::vector<bool> taken_;
};

}  // namespace

DotGraph::DotGraph(QCPAxis* key_axis, QCPAxis* value_axis) : QCPAbstractPlottable(key_axis, value_axis) {}

void DotGraph::SetData(const ViewData* data, std::vector<double> keys) {
  data_ = data;
  keys_ = std::move(keys);
}

void DotGraph::SetChosen(std::span<const std::uint32_t> records) {
  only_chosen_ = true;
  chosen_.assign(records.begin(), records.end());
}

template <typename Visit>
void DotGraph::VisitShown(Visit visit) const {
  if (data_ == nullptr) return;
  const auto offer = [&](std::size_t record) {
    if (data_->Shows(record) && keys_[record] == keys_[record]) visit(record);
  };
  const std::size_t count = std::min(keys_.size(), data_->Count());
  if (only_chosen_) {
    for (const std::uint32_t record : chosen_) {
      if (record < count) offer(record);
    }
  } else {
    for (std::size_t record = 0; record < count; ++record) offer(record);
  }
}

void DotGraph::DrawImage(QCPPainter* painter, double pixel_ratio) {
  const QRect plot = mKeyAxis->axisRect()->rect();
  QImage image((QSizeF(plot.size()) * pixel_ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
  if (image.isNull()) return;
  image.fill(Qt::transparent);
  Occupied occupied(plot.width(), plot.height(), 1.5 / pixel_ratio);
  DotSprites sprites(only_chosen_ ? kChosenRadius : kRadius, only_chosen_ ? QColor(Qt::white) : rim_,
                     pixel_ratio);
  const Line keys = LineOf(mKeyAxis.data());
  const Line levels = LineOf(mValueAxis.data());
  const double left = plot.left();
  const double top = plot.top();
  VisitShown([&](std::size_t record) {
    const double x = keys.At(keys_[record]) - left;
    const double y = levels.At(data_->level_db[record]) - top;
    if (!(x >= 0 && y >= 0 && x < plot.width() && y < plot.height()) || !occupied.Take(x, y)) return;
    const QRgb color = only_chosen_ ? SelectionColor().rgb() : data_->ColorOf(record);
    sprites.Stamp(image, QPointF(x, y) * pixel_ratio, color);
  });
  image.setDevicePixelRatio(pixel_ratio);
  painter->drawImage(plot.topLeft(), image);
}

void DotGraph::DrawShapes(QCPPainter* painter) {
  const QRect plot = mKeyAxis->axisRect()->rect();
  Occupied occupied(plot.width(), plot.height(), 1.5);
  const Line keys = LineOf(mKeyAxis.data());
  const Line levels = LineOf(mValueAxis.data());
  const double radius = only_chosen_ ? kChosenRadius : kRadius;
  painter->setPen(Qt::NoPen);
  VisitShown([&](std::size_t record) {
    const QPointF at(keys.At(keys_[record]), levels.At(data_->level_db[record]));
    if (!QRectF(plot).contains(at) || !occupied.Take(at.x() - plot.left(), at.y() - plot.top())) return;
    painter->setBrush(only_chosen_ ? SelectionColor() : QColor(data_->ColorOf(record)));
    painter->drawEllipse(at, radius, radius);
  });
}

void DotGraph::draw(QCPPainter* painter) {
  if (data_ == nullptr) return;
  if (painter->modes().testFlag(QCPPainter::pmVectorized)) {
    DrawShapes(painter);
  } else {
    DrawImage(painter, painter->device()->devicePixelRatioF());
  }
}

void DotGraph::drawLegendIcon(QCPPainter* painter, const QRectF& rect) const {
  painter->setBrush(SelectionColor());
  painter->drawEllipse(rect.center(), kRadius, kRadius);
}

std::int64_t DotGraph::Nearest(QPointF pixel, double radius) const {
  const Line keys = LineOf(mKeyAxis.data());
  const Line levels = LineOf(mValueAxis.data());
  std::int64_t nearest = -1;
  double best = radius * radius;
  VisitShown([&](std::size_t record) {
    const double x = keys.At(keys_[record]) - pixel.x();
    if (std::abs(x) > radius) return;
    const double y = levels.At(data_->level_db[record]) - pixel.y();
    if (x * x + y * y > best) return;
    best = x * x + y * y;
    nearest = static_cast<std::int64_t>(record);
  });
  return nearest;
}

std::vector<std::uint32_t> DotGraph::Within(const QRectF& pixels) const {
  const Line keys = LineOf(mKeyAxis.data());
  const Line levels = LineOf(mValueAxis.data());
  std::vector<std::uint32_t> records;
  VisitShown([&](std::size_t record) {
    if (pixels.contains(QPointF(keys.At(keys_[record]), levels.At(data_->level_db[record])))) {
      records.push_back(static_cast<std::uint32_t>(record));
    }
  });
  return records;
}

double DotGraph::selectTest(const QPointF& /*pos*/, bool /*only_selectable*/, QVariant* /*details*/) const {
  return -1;  // choosing goes its own way, for all views alike
}

QCPRange DotGraph::getKeyRange(bool& found, QCP::SignDomain /*domain*/) const {
  QCPRange range;
  found = false;
  VisitShown([&](std::size_t record) {
    if (!found) range = QCPRange(keys_[record], keys_[record]);
    range.expand(keys_[record]);
    found = true;
  });
  return range;
}

QCPRange DotGraph::getValueRange(bool& found, QCP::SignDomain /*domain*/, const QCPRange& key_range) const {
  QCPRange range;
  found = false;
  VisitShown([&](std::size_t record) {
    if (key_range != QCPRange() && !key_range.contains(keys_[record])) return;
    const double level = data_->level_db[record];
    if (!found) range = QCPRange(level, level);
    range.expand(level);
    found = true;
  });
  return range;
}

}  // namespace orvandi
