#pragma once

#include <QRubberBand>
#include <QWidget>
#include <memory>
#include <vector>

#include "map/dot_index.h"
#include "map/dot_painter.h"
#include "map/map_decorations.h"
#include "map/projection.h"
#include "map/tile_layer.h"

class QToolButton;

namespace orvandi {

// The map: background, squares, range rings, dots, transmitters, marks. It knows records by their numbers
// alone.
//
// Dragging moves it, the wheel zooms. A click chooses a dot; Shift and dragging (or dragging while choosing
// is on) chooses those in a rectangle; Ctrl adds to what is chosen. Keys: arrows, + and -, Home.
class MapView final : public QWidget {
  Q_OBJECT

 public:
  explicit MapView(QWidget* parent = nullptr);

  DotIndex& Index() { return index_; }
  TileLayer& Tiles() { return tiles_; }

  // After a change of the index.
  void SetDots(const DotValues& values, const DotStyle& style);
  void SetTransmitters(std::vector<Transmitter> transmitters);
  // Squares instead of dots; none: dots.
  void SetCells(std::vector<MapCell> cells, const ColorScale& scale);
  void SetLegend(const Legend& legend);  // without a text function: no legend
  void SetChosen(std::span<const std::uint32_t> records);
  void SetHovered(std::int64_t record);  // -1: none
  void SetChoosing(bool on);             // whether dragging chooses
  [[nodiscard]] const Camera& View() const { return camera_; }
  void SetView(const Camera& camera);

  struct Rendering {
    double pixel_ratio = 1;
    bool shapes = false;  // for a file that is made of shapes
    bool whole = false;   // all of the drive instead of what is in view
  };
  // All that is shown, legend included.
  void Render(QPainter& painter, QSizeF size, const MapInk& ink, const Rendering& how);

  [[nodiscard]] QSize sizeHint() const override { return {640, 520}; }
  [[nodiscard]] QSize minimumSizeHint() const override { return {240, 200}; }

 public Q_SLOTS:
  void Fit();
  void ZoomIn();
  void ZoomOut();
  void CenterOn(std::uint32_t record);

 Q_SIGNALS:
  void Hovered(qint64 record);
  void HoveredPlace(double latitude_deg, double longitude_deg);
  void Chosen(const std::vector<std::uint32_t>& records, bool add);

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void leaveEvent(QEvent* event) override;

 private:
  [[nodiscard]] QRectF Extent() const;
  [[nodiscard]] std::int64_t RecordAt(QPointF screen) const;
  [[nodiscard]] QString CellTextAt(QPointF screen) const;
  void ZoomAround(QPointF screen, double steps);
  void PaintMarks(QPainter& painter, const Camera& camera);
  void PlaceButtons();
  void ViewChanged();

  DotIndex index_;
  DotPainter dots_{index_};
  TileLayer tiles_;
  Camera camera_;
  std::vector<Transmitter> transmitters_;
  std::vector<MapCell> cells_;
  ColorScale cell_scale_;
  Legend legend_;
  std::vector<std::uint32_t> chosen_;
  std::int64_t hovered_ = -1;
  bool choosing_ = false;
  bool fitted_ = true;  // a change of the size fits again until the user moves the map

  QPointF pressed_at_;
  QPointF last_at_;
  bool dragging_ = false;
  bool selecting_ = false;
  std::unique_ptr<QRubberBand> band_;
  std::vector<QToolButton*> buttons_;
};

}  // namespace orvandi
