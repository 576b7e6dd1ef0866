#include "desktop/forms/form5_window.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPushButton>
#include <QResizeEvent>
#include <QScreen>
#include <algorithm>

#include "desktop/forms/layout_parts.h"
#include "desktop/forms/panel.h"
#include "desktop/widgets/lamp_widget.h"
#include "desktop/widgets/meter_bar.h"
#include "desktop/widgets/panel_frame.h"
#include "desktop/widgets/picture_widget.h"
#include "desktop/widgets/readout.h"

namespace kestrum {
namespace {

TextLine* SmallHeading(const QString& text, QWidget* parent) {
  auto* heading = new TextLine(parent);
  heading->SetText(text);
  heading->setForegroundRole(QPalette::PlaceholderText);
  return heading;
}

void SetPixels(QWidget* widget, double pixels) {
  QFont font = widget->font();
  font.setPixelSize(std::max(8, static_cast<int>(pixels)));
  widget->setFont(font);
}

}  // namespace

Form5Window::Form5Window(Form5& form, Binder& binder)
    : FormWindow(form, binder), body_(new FooterFrame(this)) {
  setWindowFlag(Qt::WindowStaysOnTopHint);
  const Panel panel(binder, body_);
  lamps_ = {panel.Lamp(form.lmpLog, true), panel.Lamp(form.lmpGps, false), panel.Lamp(form.lmpRig, false)};
  signal_ = new SignalLine(body_);
  binder.Bind(form.Label1[4], signal_);
  bar_ = panel.Bar(form.ProgressBar1, QStringLiteral("Signal"));
  distance_heading_ = SmallHeading(QStringLiteral("DIST"), body_);
  distance_ = panel.Readout(form.Label1[0], 1, QStringLiteral("20003.99 km"));
  angle_heading_ = SmallHeading(QStringLiteral("ANGLE"), body_);
  angle_ = panel.Readout(form.Label1[1], 1, QStringLiteral("000°NW"));
  height_heading_ = SmallHeading(QStringLiteral("HEIGHT"), body_);
  height_heading_->SetAlignment(Qt::AlignRight | Qt::AlignVCenter);
  height_ = panel.Readout(form.Label1[2], 1, QStringLiteral("12345.6 m"));
  height_->SetAlignment(Qt::AlignRight | Qt::AlignVCenter);
  frequency_ = panel.Readout(form.Label1[3], 1, QStringLiteral("430000.25 kHz"));
  picture_ = new PictureWidget(body_);
  binder.Bind(form.Picture1, picture_);
  back_ = panel.Button(form.Command1);
  binder.Bind(form.Frame1, body_);

  setCentralWidget(body_);
  body_->installEventFilter(this);
  picture_->setFocus();  // a stray key meets no control
  setMinimumSize(Characters(this, 30), fontMetrics().height() * 9);
  // The first time it opens large; later it opens as it was left.
  resize(QGuiApplication::primaryScreen()->availableSize() * 2 / 3);
  Arrange(body_->size());
}

bool Form5Window::eventFilter(QObject* watched, QEvent* event) {
  if (watched == body_ && event->type() == QEvent::Resize) {
    Arrange(static_cast<QResizeEvent*>(event)->size());
  }
  return FormWindow::eventFilter(watched, event);
}

void Form5Window::Arrange(const QSize& size) {
  const int air = std::max(4, size.width() / 70);
  const int strip = std::clamp(size.height() * 13 / 100, 32, size.width() / 9);
  const int lamp = (size.width() - air * 4) / 3;
  for (std::size_t i = 0; i < lamps_.size(); ++i) {
    lamps_.at(i)->setGeometry(air + static_cast<int>(i) * (lamp + air), air, lamp, strip);
  }
  const int top = air * 2 + strip;
  const int footer = std::clamp(size.height() / 9, 26, 120);
  // A square picture: its needle reaches equally far in all directions.
  const int side = std::min(size.width() * 42 / 100, size.height() - top - footer - air * 2);
  const int right = size.width() - air - side;
  picture_->setGeometry(right, top + (size.height() - top - footer - air - side) / 2, side, side);
  const int back = std::max(side * 45 / 100, fontMetrics().averageCharWidth() * 14);
  back_->setGeometry(size.width() - air - back, size.height() - air - footer, back, footer);
  SetPixels(back_, std::min(footer * 0.42, back / 8.5));
  frequency_->setGeometry(right, size.height() - air - footer, side - back - air, footer);
  ArrangeNumbers(QRect(air, top, right - air * 2, size.height() - top - air));
}

void Form5Window::ArrangeNumbers(const QRect& room) {
  const int footer = std::max(body_->FooterHeight(), room.height() / 24);
  const double whole = room.height() - footer;
  const int heading = std::clamp(static_cast<int>(whole * 0.07), 12, 60);
  for (TextLine* line : {distance_heading_, angle_heading_, height_heading_}) {
    QFont font = line->font();
    font.setPixelSize(std::max(9, heading * 4 / 5));
    font.setWeight(QFont::DemiBold);
    line->setFont(font);
  }
  int y = room.top();
  const auto place = [&](QWidget* widget, double share) {
    const int tall = static_cast<int>(whole * share);
    widget->setGeometry(room.left(), y, room.width(), tall);
    y += tall;
  };
  const double gap = whole * 0.025;
  place(signal_, 0.25);
  place(bar_, 0.20);
  y += static_cast<int>(gap);
  distance_heading_->setGeometry(room.left(), y, room.width(), heading);
  y += heading;
  place(distance_, 0.21);
  y += static_cast<int>(gap / 2);
  const int half = room.width() * 58 / 100;
  angle_heading_->setGeometry(room.left(), y, half, heading);
  height_heading_->setGeometry(room.left() + half, y, room.width() - half, heading);
  y += heading;
  const int rest = room.top() + static_cast<int>(whole) - y;
  angle_->setGeometry(room.left(), y, half, rest);
  height_->setGeometry(room.left() + half, y + rest / 4, room.width() - half, rest * 3 / 4);
}

}  // namespace kestrum
