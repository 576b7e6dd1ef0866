#pragma once

#include <QWidget>
#include <vector>

#include "forms/control.h"

namespace kestrum {

// Paints shapes given in twips, 15 to a pixel. Its ground is light in every theme, because the shapes come in
// fixed pure colours.
class PictureWidget : public QWidget {
  Q_OBJECT

 public:
  explicit PictureWidget(QWidget* parent);

  void SetShapes(std::vector<Shape> shapes);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 signals:
  void Resized();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  std::vector<Shape> shapes_;
};

}  // namespace kestrum
