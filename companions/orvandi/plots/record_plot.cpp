#include "plots/record_plot.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>

#include "plots/level_axis.h"

namespace orvandi {
namespace {

constexpr double kReachPixels = 9;
constexpr double kRoom = 0.04;  // share of a range that is left free at its ends
constexpr double kArrowShare = 0.1;
constexpr double kKeyZoom = 0.8;
constexpr int kRingPixels = 6;
const auto kMarksLayer = QStringLiteral("marks");

QCPRange WithRoom(QCPRange range, double least) {
  if (range.size() < least) range = QCPRange(range.center() - least / 2, range.center() + least / 2);
  return {range.lower - range.size() * kRoom, range.upper + range.size() * kRoom};
}

}  // namespace

Plot::Plot(QWidget* parent) : QCustomPlot(parent) {
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  setMinimumSize(200, 120);
  QLocale numbers = QLocale::c();
  numbers.setNumberOptions(QLocale::OmitGroupSeparator);
  setLocale(numbers);
}

void Plot::changeEvent(QEvent* event) {
  QCustomPlot::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) {
    Restyle(PlotInkOf(palette()));
    replot(QCustomPlot::rpQueuedReplot);
  }
}

RecordPlot::RecordPlot(QWidget* parent) : Plot(parent) {
  setInteractions(QCP::iRangeDrag | QCP::iRangeZoom);
  addLayer(kMarksLayer, layer(QStringLiteral("main")), QCustomPlot::limAbove);
  layer(kMarksLayer)->setMode(QCPLayer::lmBuffered);
  setAutoAddPlottableToLegend(false);
  dots_ = new DotGraph(xAxis, yAxis);
  chosen_dots_ = new DotGraph(xAxis, yAxis);
  chosen_dots_->setLayer(kMarksLayer);
  hovered_ring_ = new QCPItemEllipse(this);
  hovered_ring_->setLayer(kMarksLayer);
  hovered_ring_->setVisible(false);
  hovered_ring_->topLeft->setType(QCPItemPosition::ptAbsolute);
  hovered_ring_->bottomRight->setType(QCPItemPosition::ptAbsolute);
  connect(selectionRect(), &QCPSelectionRect::accepted, this, [this](const QRect& rect, QMouseEvent* event) {
    if (event == nullptr) return;
    Q_EMIT Chosen(dots_->Within(QRectF(rect).normalized()), (event->modifiers() & Qt::ControlModifier) != 0);
  });
}

void RecordPlot::Refresh(const ViewData& view) {
  data_ = &view;
  const bool other_unit = unit_ != view.unit;
  unit_ = view.unit;
  yAxis->setTicker(QSharedPointer<QCPAxisTicker>(new LevelTicker(view.unit)));
  yAxis->setLabel(AxisLabel(view.unit));
  const auto keys = std::make_shared<const std::vector<double>>(Keys(view));
  dots_->SetData(&view, keys);
  chosen_dots_->SetData(&view, keys);
  hovered_ring_->setVisible(false);
  Decorate(view);
  if (shows_all_ || other_unit) FitAll();
  replot(QCustomPlot::rpQueuedReplot);
}

void RecordPlot::SetChosen(std::span<const std::uint32_t> records) {
  chosen_dots_->SetChosen(records);
  if (data_ != nullptr) Decorate(*data_);
  replot(QCustomPlot::rpQueuedReplot);
}

void RecordPlot::SetHovered(std::int64_t record) {
  const auto index = static_cast<std::size_t>(record);
  const bool known = record >= 0 && data_ != nullptr && index < dots_->Count() && data_->Shows(index) &&
                     dots_->KeyOf(index) == dots_->KeyOf(index);
  if (!known && !hovered_ring_->visible()) return;
  hovered_ring_->setVisible(known);
  if (known) {
    const QPointF at(xAxis->coordToPixel(dots_->KeyOf(index)), yAxis->coordToPixel(data_->level_db[index]));
    hovered_ring_->topLeft->setPixelPosition(at - QPointF(kRingPixels, kRingPixels));
    hovered_ring_->bottomRight->setPixelPosition(at + QPointF(kRingPixels, kRingPixels));
  }
  layer(kMarksLayer)->replot();
}

void RecordPlot::Restyle(const PlotInk& ink) {
  StylePlot(*this, ink);
  hovered_ring_->setPen(QPen(ink.strong, 2));
  dots_->SetRim(ink.rim);
  if (data_ != nullptr) Decorate(*data_);
}

void RecordPlot::FitAll() {
  bool any_key = false;
  bool any_level = false;
  const QCPRange keys = dots_->getKeyRange(any_key, QCP::sdBoth);
  const QCPRange levels = dots_->getValueRange(any_level, QCP::sdBoth, QCPRange());
  constexpr double kLeastLevels = 10;
  constexpr double kLeastKeys = 0.3;
  if (any_key) xAxis->setRange(WithRoom(keys, kLeastKeys));
  if (any_level) yAxis->setRange(WithRoom(levels, kLeastLevels));
  shows_all_ = true;
  replot(QCustomPlot::rpQueuedReplot);
}

void RecordPlot::mousePressEvent(QMouseEvent* event) {
  pressed_at_ = event->pos();
  const bool choose = Choosing() || (event->modifiers() & Qt::ShiftModifier) != 0;
  setSelectionRectMode(choose ? QCP::srmCustom : QCP::srmNone);
  Plot::mousePressEvent(event);
}

void RecordPlot::mouseMoveEvent(QMouseEvent* event) {
  Plot::mouseMoveEvent(event);
  if ((event->buttons() & Qt::LeftButton) != 0) {
    if (selectionRectMode() == QCP::srmNone) shows_all_ = false;
    return;
  }
  Q_EMIT Hovered(dots_->Nearest(event->position(), kReachPixels));
}

void RecordPlot::mouseReleaseEvent(QMouseEvent* event) {
  Plot::mouseReleaseEvent(event);
  if (event->button() != Qt::LeftButton) return;
  if ((event->pos() - pressed_at_).manhattanLength() >= QApplication::startDragDistance()) return;
  const std::int64_t record = dots_->Nearest(event->position(), kReachPixels);
  std::vector<std::uint32_t> records;
  if (record >= 0) records.push_back(static_cast<std::uint32_t>(record));
  Q_EMIT Chosen(records, (event->modifiers() & Qt::ControlModifier) != 0);
}

void RecordPlot::mouseDoubleClickEvent(QMouseEvent* /*event*/) {
  FitAll();
}

void RecordPlot::wheelEvent(QWheelEvent* event) {
  shows_all_ = false;
  Plot::wheelEvent(event);
}

void RecordPlot::keyPressEvent(QKeyEvent* event) {
  const auto zoom = [this](double factor) {
    xAxis->scaleRange(factor);
    yAxis->scaleRange(factor);
  };
  switch (event->key()) {
    case Qt::Key_Left:
      xAxis->moveRange(-xAxis->range().size() * kArrowShare);
      break;
    case Qt::Key_Right:
      xAxis->moveRange(xAxis->range().size() * kArrowShare);
      break;
    case Qt::Key_Up:
      yAxis->moveRange(yAxis->range().size() * kArrowShare);
      break;
    case Qt::Key_Down:
      yAxis->moveRange(-yAxis->range().size() * kArrowShare);
      break;
    case Qt::Key_Plus:
    case Qt::Key_Equal:
      zoom(kKeyZoom);
      break;
    case Qt::Key_Minus:
      zoom(1 / kKeyZoom);
      break;
    case Qt::Key_Home:
      FitAll();
      return;
    default:
      Plot::keyPressEvent(event);
      return;
  }
  shows_all_ = false;
  replot(QCustomPlot::rpQueuedReplot);
}

void RecordPlot::leaveEvent(QEvent* event) {
  Plot::leaveEvent(event);
  Q_EMIT Hovered(-1);
}

}  // namespace orvandi
