#include "map/map_view.h"

#include <QApplication>
#include <QGestureEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPinchGesture>
#include <QToolButton>
#include <QToolTip>
#include <algorithm>
#include <cmath>
#include <unordered_set>

namespace orvandi {
namespace {

// Room for the buttons on the left, the legend on the right and what stands at the bottom.
constexpr QMarginsF kFitMargins(56, 40, 96, 56);
constexpr double kZoomGrain = 0.125;  // zooms between these would paint everything anew with every touch
constexpr double kWheelStep = 0.5;
constexpr double kArrowPixels = 80;
constexpr double kReachPixels = 9;  // a dot is meant when the pointer is so near
constexpr int kTileShade = 120;     // of 255: bright maps are dimmed in the dark

QToolButton* RoundButton(QWidget* parent, const QString& text, const QString& name, const QString& tip) {
  auto* button = new QToolButton(parent);
  button->setObjectName(name);
  button->setText(text);
  button->setToolTip(tip);
  button->setAccessibleName(tip);
  button->setFocusPolicy(Qt::TabFocus);
  button->setFixedSize(32, 32);
  return button;
}

}  // namespace

MapView::MapView(QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("map"));
  setAccessibleName(QStringLiteral("Map of the drive"));
  setAccessibleDescription(
      QStringLiteral("Arrow keys move the map, plus and minus zoom, Home shows everything."));
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  setAttribute(Qt::WA_OpaquePaintEvent);
  grabGesture(Qt::PinchGesture);
  connect(&tiles_, &TileLayer::Changed, this, qOverload<>(&QWidget::update));

  auto* in = RoundButton(this, QStringLiteral("+"), QStringLiteral("zoomIn"), QStringLiteral("Zoom in (+)"));
  auto* out =
      RoundButton(this, QString(QChar(0x2212)), QStringLiteral("zoomOut"), QStringLiteral("Zoom out (-)"));
  auto* fit = RoundButton(this, QString(QChar(0x2922)), QStringLiteral("fitMap"),
                          QStringLiteral("Show everything (Home)"));
  connect(in, &QToolButton::clicked, this, &MapView::ZoomIn);
  connect(out, &QToolButton::clicked, this, &MapView::ZoomOut);
  connect(fit, &QToolButton::clicked, this, &MapView::Fit);
  buttons_ = {in, out, fit};
  PlaceButtons();
}

void MapView::PlaceButtons() {
  int y = 12;
  for (QToolButton* button : buttons_) {
    button->move(12, y);
    y += button->height() + 4;
  }
}

void MapView::SetDots(const DotValues& values, const DotStyle& style) {
  const bool had_none = index_.ShownCount() == 0;
  index_.SetShown(values);
  dots_.SetStyle(style);
  if (fitted_ || had_none) Fit();
  update();
}

void MapView::SetTransmitters(std::vector<Transmitter> transmitters) {
  transmitters_ = std::move(transmitters);
  if (fitted_) Fit();
  update();
}

void MapView::SetCells(std::vector<MapCell> cells, const ColorScale& scale) {
  cells_ = std::move(cells);
  cell_scale_ = scale;
  update();
}

void MapView::SetLegend(const Legend& legend) {
  legend_ = legend;
  update();
}

void MapView::SetChosen(std::span<const std::uint32_t> records) {
  chosen_.assign(records.begin(), records.end());
  update();
}

void MapView::SetHovered(std::int64_t record) {
  if (hovered_ == record) return;
  hovered_ = record;
  update();
}

void MapView::SetChoosing(bool on) {
  choosing_ = on;
  setCursor(on ? Qt::CrossCursor : Qt::ArrowCursor);
}

void MapView::SetView(const Camera& camera) {
  camera_.center = camera.center;
  camera_.SetZoom(camera.Zoom());
  fitted_ = false;
  update();
}

// Dots and, unless they are far away, transmitters.
QRectF MapView::Extent() const {
  QRectF extent = index_.Bounds();
  const auto include = [](QRectF& to, QPointF point) {
    to = QRectF(QPointF(std::min(to.left(), point.x()), std::min(to.top(), point.y())),
                QPointF(std::max(to.right(), point.x()), std::max(to.bottom(), point.y())));
  };
  constexpr double kFarTimes = 4;
  const double reach = std::max({extent.width(), extent.height(), 1e-5}) * kFarTimes;
  bool any = index_.ShownCount() > 0;
  for (const Transmitter& transmitter : transmitters_) {
    const QPointF at = ToWorld(transmitter.place);
    if (!any) extent = QRectF(at, at);
    const QPointF apart = at - extent.center();
    if (any && std::hypot(apart.x(), apart.y()) > reach) continue;
    include(extent, at);
    any = true;
  }
  return any ? extent : QRectF(0.1, 0.2, 0.8, 0.55);
}

void MapView::Fit() {
  camera_.Fit(Extent(), kFitMargins);
  // Down to a whole grain, around the middle of what is fitted.
  const QPointF middle(camera_.ToScreen(Extent().center()));
  camera_.ZoomAt(middle, std::floor(camera_.Zoom() / kZoomGrain) * kZoomGrain);
  fitted_ = true;
  update();
}

void MapView::ZoomAround(QPointF screen, double steps) {
  const double zoom = std::round((camera_.Zoom() + steps) / kZoomGrain) * kZoomGrain;
  camera_.ZoomAt(screen, zoom);
  ViewChanged();
}

void MapView::ViewChanged() {
  fitted_ = false;
  update();
}

void MapView::ZoomIn() {
  ZoomAround(QRectF(rect()).center(), 1);
}

void MapView::ZoomOut() {
  ZoomAround(QRectF(rect()).center(), -1);
}

void MapView::CenterOn(std::uint32_t record) {
  const QPointF screen = camera_.ToScreen(index_.World(record));
  if (QRectF(rect()).adjusted(40, 40, -40, -40).contains(screen)) return;
  camera_.center = index_.World(record);
  ViewChanged();
}

std::int64_t MapView::RecordAt(QPointF screen) const {
  return index_.Nearest(camera_.FromScreen(screen), kReachPixels / camera_.PixelsPerWorld());
}

QString MapView::CellTextAt(QPointF screen) const {
  const Place place = ToGeo(camera_.FromScreen(screen));
  const auto found = std::find_if(cells_.begin(), cells_.end(), [&](const MapCell& cell) {
    return place.latitude_deg >= cell.south_west.latitude_deg &&
           place.latitude_deg < cell.north_east.latitude_deg &&
           place.longitude_deg >= cell.south_west.longitude_deg &&
           place.longitude_deg < cell.north_east.longitude_deg;
  });
  return found == cells_.end() ? QString() : found->text;
}

void MapView::PaintMarks(QPainter& painter, const Camera& camera) {
  painter.setRenderHint(QPainter::Antialiasing);
  const double radius = dots_.Style().radius + 2;
  DotSprites ring(radius, SelectionColor(), painter.device()->devicePixelRatioF());
  const QRectF screen = QRectF(QPointF(0, 0), camera.size).adjusted(-radius, -radius, radius, radius);
  // Where many chosen ones share a place, one ring tells it.
  std::unordered_set<std::uint64_t> taken;
  QColor fill = SelectionColor();
  fill.setAlpha(70);
  painter.setPen(QPen(SelectionColor(), 1.6));
  painter.setBrush(fill);
  for (const std::uint32_t record : chosen_) {
    const QPointF at = camera.ToScreen(index_.World(record));
    if (!screen.contains(at)) continue;
    constexpr double kGrain = 4;
    const auto key = (static_cast<std::uint64_t>(static_cast<std::int64_t>(at.x() / kGrain) + 8) << 32) |
                     static_cast<std::uint64_t>(static_cast<std::int64_t>(at.y() / kGrain) + 8);
    if (taken.insert(key).second) painter.drawEllipse(at, radius, radius);
  }
  if (hovered_ < 0) return;
  const QPointF at = camera.ToScreen(index_.World(static_cast<std::uint32_t>(hovered_)));
  if (!screen.contains(at)) return;
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(InkOf(palette()).ground, 4));
  painter.drawEllipse(at, radius + 2, radius + 2);
  painter.setPen(QPen(InkOf(palette()).text, 2));
  painter.drawEllipse(at, radius + 2, radius + 2);
}

void MapView::Render(QPainter& painter, QSizeF size, const MapInk& ink, const Rendering& how) {
  Camera camera = camera_;
  camera.size = size;
  if (how.whole) camera.Fit(Extent(), kFitMargins);
  const QFont& font = this->font();  // that of the painter may be a heading's
  painter.setFont(font);
  painter.fillRect(QRectF(QPointF(0, 0), size), ink.ground);
  if (tiles_.HasSource()) {
    tiles_.Paint(painter, camera, how.pixel_ratio);
    if (ink.dark) painter.fillRect(QRectF(QPointF(0, 0), size), QColor(0, 0, 0, kTileShade));
  } else {
    PaintGrid(painter, camera, ink, legend_.text ? LegendCard(painter, size, legend_) : QRectF());
  }
  for (const Transmitter& transmitter : transmitters_) {
    painter.setFont(font);
    PaintRings(painter, camera, ink, transmitter.place);
  }
  if (!cells_.empty()) {
    PaintCells(painter, camera, cells_, cell_scale_);
  } else if (how.shapes) {
    dots_.PaintShapes(painter, camera);
  } else {
    dots_.Paint(painter, camera, how.pixel_ratio);
  }
  PaintMarks(painter, camera);
  for (const Transmitter& transmitter : transmitters_) {
    painter.setFont(font);
    PaintRingLabels(painter, camera, ink, transmitter.place);
    painter.setFont(font);
    PaintTransmitter(painter, camera, ink, transmitter);
  }
  painter.setFont(font);
  PaintScaleBar(painter, camera, ink);
  painter.setFont(font);
  if (legend_.text) PaintLegend(painter, size, ink, legend_);
  painter.setFont(font);
  PaintAttribution(painter, size, ink, tiles_.Attribution());
}

void MapView::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  Render(painter, QSizeF(size()), InkOf(palette()), {.pixel_ratio = devicePixelRatioF()});
  if (hasFocus()) {
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(QRectF(rect()).adjusted(1, 1, -1, -1));
  }
}

void MapView::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  camera_.size = QSizeF(size());
  if (fitted_) Fit();
}

void MapView::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  pressed_at_ = last_at_ = event->position();
  dragging_ = false;
  selecting_ = choosing_ || (event->modifiers() & Qt::ShiftModifier) != 0;
}

void MapView::mouseMoveEvent(QMouseEvent* event) {
  const QPointF at = event->position();
  if ((event->buttons() & Qt::LeftButton) == 0) {
    const std::int64_t record = RecordAt(at);
    Q_EMIT Hovered(record);
    const Place place = ToGeo(camera_.FromScreen(at));
    if (record < 0) Q_EMIT HoveredPlace(place.latitude_deg, place.longitude_deg);
    return;
  }
  if (!dragging_ && (at - pressed_at_).manhattanLength() < QApplication::startDragDistance()) return;
  dragging_ = true;
  if (selecting_) {
    if (!band_) band_ = std::make_unique<QRubberBand>(QRubberBand::Rectangle, this);
    band_->setGeometry(QRectF(pressed_at_, at).normalized().toRect());
    band_->show();
  } else {
    camera_.PanBy(at - last_at_);
    ViewChanged();
  }
  last_at_ = at;
}

void MapView::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  const bool add = (event->modifiers() & Qt::ControlModifier) != 0;
  if (dragging_ && selecting_) {
    if (band_) band_->hide();
    const QRectF screen = QRectF(pressed_at_, event->position()).normalized();
    Q_EMIT Chosen(
        index_.Within(QRectF(camera_.FromScreen(screen.topLeft()), camera_.FromScreen(screen.bottomRight()))),
        add);
  } else if (!dragging_) {
    const std::int64_t record = RecordAt(event->position());
    std::vector<std::uint32_t> records;
    if (record >= 0) records.push_back(static_cast<std::uint32_t>(record));
    Q_EMIT Chosen(records, add);
  }
  dragging_ = selecting_ = false;
}

void MapView::mouseDoubleClickEvent(QMouseEvent* event) {
  ZoomAround(event->position(), 1);
}

void MapView::wheelEvent(QWheelEvent* event) {
  constexpr double kNotch = 120;
  ZoomAround(event->position(), event->angleDelta().y() / kNotch * kWheelStep);
  event->accept();
}

void MapView::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Left:
      camera_.PanBy({kArrowPixels, 0});
      break;
    case Qt::Key_Right:
      camera_.PanBy({-kArrowPixels, 0});
      break;
    case Qt::Key_Up:
      camera_.PanBy({0, kArrowPixels});
      break;
    case Qt::Key_Down:
      camera_.PanBy({0, -kArrowPixels});
      break;
    case Qt::Key_Plus:
    case Qt::Key_Equal:
      ZoomIn();
      return;
    case Qt::Key_Minus:
      ZoomOut();
      return;
    case Qt::Key_Home:
      Fit();
      return;
    default:
      QWidget::keyPressEvent(event);
      return;
  }
  ViewChanged();
}

void MapView::leaveEvent(QEvent* event) {
  QWidget::leaveEvent(event);
  Q_EMIT Hovered(-1);
}

bool MapView::event(QEvent* event) {
  if (event->type() == QEvent::ToolTip) {
    const auto* help = static_cast<QHelpEvent*>(event);
    QToolTip::showText(help->globalPos(), cells_.empty() ? QString() : CellTextAt(help->pos()), this);
    return true;
  }
  if (event->type() == QEvent::Gesture) {
    const auto* gestures = static_cast<QGestureEvent*>(event);
    if (const auto* pinch = static_cast<QPinchGesture*>(gestures->gesture(Qt::PinchGesture))) {
      ZoomAround(mapFromGlobal(pinch->centerPoint()), std::log2(std::max(pinch->scaleFactor(), 0.1)));
      return true;
    }
  }
  return QWidget::event(event);
}

}  // namespace orvandi
