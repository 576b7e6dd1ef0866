#pragma once

#include <QPushButton>

#include "desktop/widgets/quick_text.h"
#include "desktop/widgets/still_picture.h"
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
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void changeEvent(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  void PaintSign(QPainter& painter, const QRectF& room, const QColor& color) const;

  void Redraw();
  // Paints what differs from `before` alone: the detail, and the line that fills.
  void UpdateDetail(const LampText& before);
  double Edge() const;
  double TextLeft() const;
  // Letters of the size in which they are wanted, and of one in which a longer text fits.
  struct Letters {
    QuickText wanted;
    QuickText smaller;
  };
  TextRun LayOut(Letters& letters, const QFont& wanted, const QString& text, double baseline) const;
  TextRun LayOutDetail();
  QRectF FillLine(double fill) const;
  void PaintStill();

  bool fills_;
  LampText says_;
  StillPicture still_;  // all but the detail and the line that fills
  Letters detail_letters_;
  TextRun detail_;  // as painted; without letters when it is to be laid out anew
};

}  // namespace kestrum
