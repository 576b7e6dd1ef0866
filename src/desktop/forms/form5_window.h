#pragma once

#include <array>

#include "desktop/forms/form_window.h"
#include "forms/form5.h"

class QPushButton;

namespace kestrum {

class FooterFrame;
class LampWidget;
class MeterBar;
class PictureWidget;
class Readout;
class SignalLine;
class TextLine;

// The minimal display: everything grows with the window, to be read while driving.
class Form5Window : public FormWindow {
  Q_OBJECT

 public:
  Form5Window(Form5& form, Binder& binder);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  // Gives every part its place in a body of this size.
  void Arrange(const QSize& size);
  void ArrangeNumbers(const QRect& room);

  FooterFrame* body_;
  std::array<LampWidget*, 3> lamps_{};
  SignalLine* signal_;
  MeterBar* bar_;
  TextLine* distance_heading_;
  Readout* distance_;
  TextLine* angle_heading_;
  Readout* angle_;
  TextLine* height_heading_;
  Readout* height_;
  PictureWidget* picture_;
  Readout* frequency_;
  QPushButton* back_;
};

}  // namespace kestrum
