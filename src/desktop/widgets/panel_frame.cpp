#include "desktop/widgets/panel_frame.h"

#include <QPainter>
#include <algorithm>

#include "desktop/widgets/scheme.h"

namespace kestrum {
namespace {

constexpr double kHeadingShare = 0.85;  // of the font

QFont Heading(const QFont& base) {
  QFont font = base;
  font.setPointSizeF(base.pointSizeF() * kHeadingShare);
  font.setWeight(QFont::DemiBold);
  return font;
}

}  // namespace

PanelFrame::PanelFrame(QWidget* parent) : QGroupBox(parent) {}

void PanelFrame::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const Scheme& scheme = SchemeOf(palette());
  painter.setFont(Heading(font()));
  // A frame with a colour of its own brings the ink that is read on it.
  painter.setPen(autoFillBackground() ? palette().color(QPalette::WindowText) : scheme.quiet);
  const int heading = painter.fontMetrics().height();
  painter.drawText(QRect(3, 0, width() - 6, heading), Qt::AlignLeft | Qt::AlignVCenter, title());
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(scheme.line, 1));
  painter.drawRoundedRect(QRectF(0.5, heading + 0.5, width() - 1, height() - heading - 1), 4, 4);
}

FooterFrame::FooterFrame(QWidget* parent) : QGroupBox(parent) {}

int FooterFrame::FooterHeight() const {
  return QFontMetrics(Heading(font())).height();
}

void FooterFrame::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setFont(Heading(font()));
  painter.setPen(SchemeOf(palette()).quiet);
  const int margin = std::max(4, width() / 70);  // as wide as the air around everything else
  painter.drawText(rect().adjusted(margin, 0, -margin, -2), Qt::AlignLeft | Qt::AlignBottom, title());
}

}  // namespace kestrum
