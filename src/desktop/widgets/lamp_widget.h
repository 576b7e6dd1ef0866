#pragma once

#include <QPushButton>

#include "forms/indicators.h"

namespace kestrum {

// A lamp: its colour and its shape tell the state, two words and a line below tell the rest. A press is the
// lamp's own, by mouse or by Enter.
class LampWidget : public QPushButton {
  Q_OBJECT

 public:
  // `fills` paints a good lamp as a filled one, and how far its matter has come.
  LampWidget(bool fills, QWidget* parent);

  void Show(const LampText& says);
  const LampText& Says() const { return says_; }

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void PaintSign(QPainter& painter, const QRectF& room, const QColor& color) const;

  bool fills_;
  LampText says_;
};

}  // namespace kestrum
