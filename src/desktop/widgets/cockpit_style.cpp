#include "desktop/widgets/cockpit_style.h"

#include <QPainter>
#include <QStyleOption>
#include <algorithm>

#include "desktop/widgets/scheme.h"

namespace kestrum {
namespace {

void PaintIndicator(const QStyleOption& option, QPainter& painter, bool round) {
  const Scheme& scheme = SchemeOf(option.palette);
  const bool enabled = (option.state & QStyle::State_Enabled) != 0;
  const bool focus = (option.state & QStyle::State_HasFocus) != 0;
  const QRectF box = QRectF(option.rect).adjusted(1, 1, -1, -1);
  const QColor ink = enabled ? scheme.ink : scheme.quiet;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(focus ? scheme.bar : scheme.quiet, focus ? 2 : 1));
  painter.setBrush(scheme.ground);
  if (round) {
    painter.drawEllipse(box);
  } else {
    painter.drawRoundedRect(box, 2, 2);
  }
  if ((option.state & QStyle::State_On) != 0) {
    const double inset = box.width() * 0.26;
    if (round) {
      painter.setPen(Qt::NoPen);
      painter.setBrush(enabled ? scheme.bar : scheme.quiet);
      painter.drawEllipse(box.adjusted(inset, inset, -inset, -inset));
    } else {
      painter.setPen(QPen(ink, std::max(1.5, box.width() / 7), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
      painter.drawPolyline(QPolygonF({QPointF(box.left() + inset, box.center().y()),
                                      QPointF(box.center().x() - inset * 0.2, box.bottom() - inset),
                                      QPointF(box.right() - inset * 0.8, box.top() + inset)}));
    }
  }
  painter.restore();
}

}  // namespace

void CockpitStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                 const QWidget* widget) const {
  switch (element) {
    case PE_IndicatorCheckBox:
    case PE_IndicatorRadioButton:
      PaintIndicator(*option, *painter, element == PE_IndicatorRadioButton);
      return;
    case PE_FrameLineEdit: {
      const Scheme& scheme = SchemeOf(option->palette);
      const bool focus = (option->state & State_HasFocus) != 0;
      painter->save();
      painter->setRenderHint(QPainter::Antialiasing);
      painter->setPen(QPen(focus ? scheme.bar : scheme.quiet, focus ? 2 : 1));
      painter->setBrush(Qt::NoBrush);
      painter->drawRoundedRect(QRectF(option->rect).adjusted(1, 1, -1, -1), 2, 2);
      painter->restore();
      return;
    }
    default:
      QProxyStyle::drawPrimitive(element, option, painter, widget);
  }
}

}  // namespace kestrum
