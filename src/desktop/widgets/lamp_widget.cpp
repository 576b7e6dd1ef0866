#include "desktop/widgets/lamp_widget.h"

#include <QAccessible>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>

#include "desktop/text_convert.h"
#include "desktop/widgets/scheme.h"

namespace kestrum {
namespace {

QFont Sized(const QFont& base, double pixels, QFont::Weight weight) {
  QFont font = base;
  font.setPixelSize(std::max(7, static_cast<int>(pixels)));
  font.setWeight(weight);
  return font;
}

}  // namespace

LampWidget::LampWidget(bool fills, QWidget* parent) : QPushButton(parent), fills_(fills) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setAutoDefault(false);
  setFocusPolicy(Qt::TabFocus);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

void LampWidget::Show(const LampText& says) {
  if (says == says_) return;
  const bool news = says.words != says_.words || says.state != says_.state;
  const bool trouble = says.state == LampState::kTrouble && says_.state != LampState::kTrouble;
  says_ = says;
  // Each second brings another detail; only another state is worth being read aloud.
  if (news) {
    setAccessibleName(ToQt(says.words) + QStringLiteral(", ") + ToQt(says.detail));
    if (QAccessible::isActive()) {
      QAccessibleEvent announced(this, trouble ? QAccessible::Alert : QAccessible::NameChanged);
      QAccessible::updateAccessibility(&announced);
    }
  }
  update();
}

QSize LampWidget::sizeHint() const {
  return {fontMetrics().averageCharWidth() * 24, fontMetrics().height() * 14 / 5};
}

QSize LampWidget::minimumSizeHint() const {
  return {fontMetrics().averageCharWidth() * 14, fontMetrics().height() * 12 / 5};
}

void LampWidget::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    click();
    return;
  }
  QPushButton::keyPressEvent(event);
}

void LampWidget::PaintSign(QPainter& painter, const QRectF& room, const QColor& color) const {
  const double line = room.width() * 0.17;
  const QPointF middle = room.center();
  const double half = room.width() / 2 - line / 2;
  painter.setPen(QPen(color, line, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.setBrush(Qt::NoBrush);
  switch (says_.state) {
    case LampState::kTrouble:
      painter.drawLine(middle + QPointF(-half, -half) * 0.85, middle + QPointF(half, half) * 0.85);
      painter.drawLine(middle + QPointF(-half, half) * 0.85, middle + QPointF(half, -half) * 0.85);
      return;
    case LampState::kNote:
      painter.setBrush(color);
      painter.drawPolygon(QPolygonF({middle + QPointF(0, -half), middle + QPointF(half, half * 0.8),
                                     middle + QPointF(-half, half * 0.8)}));
      return;
    case LampState::kGood:
      if (fills_) {
        painter.setBrush(color);
        painter.drawEllipse(middle, half * 0.8, half * 0.8);
      } else {
        painter.drawPolyline(
            QPolygonF({middle + QPointF(-half, 0), middle + QPointF(-half * 0.25, half * 0.75),
                       middle + QPointF(half, -half * 0.75)}));
      }
      return;
    case LampState::kOff:
      painter.drawEllipse(middle, half * 0.8, half * 0.8);
      return;
  }
}

void LampWidget::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const Scheme& scheme = SchemeOf(palette());
  const LampShades shades = scheme.Lamp(says_.state, fills_);
  const double edge = std::max(1.0, height() / 30.0);
  painter.fillRect(rect(), scheme.ground);
  const QRectF body = QRectF(rect()).adjusted(edge / 2, edge / 2, -edge / 2, -edge / 2);
  const double round = height() * 0.12;
  painter.setPen(hasFocus() ? QPen(scheme.ink, edge * 3) : QPen(shades.edge, edge));
  painter.setBrush(shades.ground);
  painter.drawRoundedRect(hasFocus() ? body.adjusted(edge, edge, -edge, -edge) : body, round, round);
  if (fills_ && says_.state != LampState::kOff) {
    // How far the block has come: a bright line along the bottom.
    QColor fill = shades.ink;
    painter.setPen(Qt::NoPen);
    fill.setAlphaF(0.85F);
    painter.setBrush(fill);
    const double thick = height() * 0.07;
    const QRectF room = body.adjusted(round, 0, -round, -edge * 2);
    painter.drawRect(QRectF(room.left(), room.bottom() - thick, room.width() * says_.fill, thick));
  }

  const QString words = ToQt(says_.words);
  const QString detail = ToQt(says_.detail);
  const double sign = height() * 0.42;
  const double left = height() * 0.2;
  PaintSign(painter, QRectF(left, (height() - sign) / 2, sign, sign), shades.sign);
  const double text_left = left + sign + height() * 0.2;
  const double room = width() - text_left - height() * 0.12;
  const auto draw = [&](const QString& text, double pixels, QFont::Weight weight, double baseline) {
    QFont font = Sized(this->font(), pixels, weight);
    double wide = QFontMetricsF(font).horizontalAdvance(text);
    if (wide > room) {
      font = Sized(font, std::max(pixels * room / wide, pixels * 0.6), weight);
      wide = QFontMetricsF(font).horizontalAdvance(text);
    }
    painter.setFont(font);
    painter.drawText(QPointF(text_left, baseline),
                     wide > room ? QFontMetricsF(font).elidedText(text, Qt::ElideRight, room) : text);
  };
  painter.setPen(shades.ink);
  draw(words, height() * 0.38, QFont::Bold, height() * 0.46);
  draw(detail, height() * 0.27, QFont::Normal, height() * 0.80);
}

}  // namespace kestrum
