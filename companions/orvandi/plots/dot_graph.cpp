#include "plots/dot_graph.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "map/wide_registers.h"

namespace orvandi {
namespace {

constexpr double kRadius = 2.6;
constexpr double kChosenRadius = 3.4;
constexpr double kMargin = 0.25;  // of the plot, painted on each side of it
constexpr double kSameScale = 1e-9;

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

// What numbers span.
struct Extent {
  double least = std::numeric_limits<double>::infinity();
  double most = -std::numeric_limits<double>::infinity();
  void Include(double number) {
    least = std::min(least, number);
    most = std::max(most, number);
  }
  [[nodiscard]] bool Any() const { return least <= most; }
  [[nodiscard]] QCPRange Range() const { return Any() ? QCPRange(least, most) : QCPRange(); }
};

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

void DotGraph::SetData(const ViewData* data, Keys keys) {
  data_ = data;
  keys_ = std::move(keys);
  picture_ = {};
}

void DotGraph::SetChosen(std::span<const std::uint32_t> records) {
  only_chosen_ = true;
  chosen_.assign(records.begin(), records.end());
  picture_ = {};
}

void DotGraph::SetRim(QColor rim) {
  rim_ = rim;
  picture_ = {};
}

template <typename Visit>
void DotGraph::VisitShown(Visit visit) const {
  if (data_ == nullptr) return;
  const auto offer = [&](std::size_t record) {
    if (data_->Shows(record) && KeyOf(record) == KeyOf(record)) visit(record);
  };
  const std::size_t count = std::min(keys_->size(), data_->Count());
  if (only_chosen_) {
    for (const std::uint32_t record : chosen_) {
      if (record < count) offer(record);
    }
  } else {
    for (std::size_t record = 0; record < count; ++record) offer(record);
  }
}

QPointF DotGraph::CornerOf(const Picture& picture) const {
  return {LineOf(mKeyAxis.data()).At(picture.key), LineOf(mValueAxis.data()).At(picture.level)};
}

bool DotGraph::Covers(const Picture& picture, double pixel_ratio) const {
  if (picture.image.isNull() || picture.pixel_ratio != pixel_ratio) return false;
  const auto same = [](double a, double b) { return std::abs(a - b) <= std::abs(b) * kSameScale; };
  if (!same(picture.key_pixels, LineOf(mKeyAxis.data()).factor)) return false;
  if (!same(picture.level_pixels, LineOf(mValueAxis.data()).factor)) return false;
  return QRectF(CornerOf(picture), QSizeF(picture.image.size()) / pixel_ratio)
      .contains(QRectF(mKeyAxis->axisRect()->rect()));
}

DotGraph::Picture DotGraph::Painted(double pixel_ratio) const {
  const QRect plot = mKeyAxis->axisRect()->rect();
  const QSize margin = plot.size() * kMargin;
  const QRectF around = plot.marginsAdded({margin.width(), margin.height(), margin.width(), margin.height()});
  QImage image((around.size() * pixel_ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
  if (image.isNull()) return {};
  image.fill(Qt::transparent);
  Occupied occupied(around.width(), around.height(), 1.5 / pixel_ratio);
  DotSprites sprites(only_chosen_ ? kChosenRadius : kRadius, only_chosen_ ? QColor(Qt::white) : rim_,
                     pixel_ratio);
  const Line keys = LineOf(mKeyAxis.data());
  const Line levels = LineOf(mValueAxis.data());
  ForgetWideRegisters();
  VisitShown([&](std::size_t record) {
    const double x = keys.At(KeyOf(record)) - around.left();
    const double y = levels.At(data_->level_db[record]) - around.top();
    if (!(x >= 0 && y >= 0 && x < around.width() && y < around.height()) || !occupied.Take(x, y)) return;
    const QRgb color = only_chosen_ ? SelectionColor().rgb() : data_->ColorOf(record);
    sprites.Stamp(image, QPointF(x, y) * pixel_ratio, color);
  });
  image.setDevicePixelRatio(pixel_ratio);
  return {image,
          pixel_ratio,
          (around.left() - keys.offset) / keys.factor,
          (around.top() - levels.offset) / levels.factor,
          keys.factor,
          levels.factor};
}

void DotGraph::DrawImage(QCPPainter* painter, double pixel_ratio) {
  if (!Covers(picture_, pixel_ratio)) picture_ = Painted(pixel_ratio);
  if (picture_.image.isNull()) return;
  // Whole device pixels: copying without interpolation keeps dots sharp.
  const QRect plot = mKeyAxis->axisRect()->rect();
  const QPointF from = (QPointF(plot.topLeft()) - CornerOf(picture_)) * pixel_ratio;
  painter->drawImage(QPointF(plot.topLeft()), picture_.image,
                     QRectF(from.toPoint(), (QSizeF(plot.size()) * pixel_ratio).toSize()));
}

void DotGraph::DrawShapes(QCPPainter* painter) {
  const QRect plot = mKeyAxis->axisRect()->rect();
  Occupied occupied(plot.width(), plot.height(), 1.5);
  const Line keys = LineOf(mKeyAxis.data());
  const Line levels = LineOf(mValueAxis.data());
  const double radius = only_chosen_ ? kChosenRadius : kRadius;
  painter->setPen(Qt::NoPen);
  VisitShown([&](std::size_t record) {
    const QPointF at(keys.At(KeyOf(record)), levels.At(data_->level_db[record]));
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
    const double x = keys.At(KeyOf(record)) - pixel.x();
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
    if (pixels.contains(QPointF(keys.At(KeyOf(record)), levels.At(data_->level_db[record])))) {
      records.push_back(static_cast<std::uint32_t>(record));
    }
  });
  return records;
}

double DotGraph::selectTest(const QPointF& /*pos*/, bool /*only_selectable*/, QVariant* /*details*/) const {
  return -1;  // choosing goes its own way, for all views alike
}

QCPRange DotGraph::getKeyRange(bool& found, QCP::SignDomain /*domain*/) const {
  Extent keys;
  VisitShown([&](std::size_t record) { keys.Include(KeyOf(record)); });
  found = keys.Any();
  return keys.Range();
}

QCPRange DotGraph::getValueRange(bool& found, QCP::SignDomain /*domain*/, const QCPRange& key_range) const {
  Extent levels;
  const bool everywhere = key_range == QCPRange();
  VisitShown([&](std::size_t record) {
    if (everywhere || key_range.contains(KeyOf(record))) levels.Include(data_->level_db[record]);
  });
  found = levels.Any();
  return levels.Range();
}

}  // namespace orvandi
