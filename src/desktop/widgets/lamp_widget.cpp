#include "desktop/widgets/lamp_widget.h"

#include <QAccessible>
#include <QFontMetricsF>
#include <QKeyEvent>
#include <QPainter>
#include <algorithm>
#include <utility>

#include "desktop/text_convert.h"
#include "desktop/widgets/scheme.h"

namespace kestrum {
namespace {

constexpr double kSignLeft = 0.2;  // shares of the height
constexpr double kSign = 0.42;
constexpr double kRound = 0.12;
constexpr double kSmallestShare = 0.6;  // of its size, before a text is shortened

QFont Sized(const QFont& base, double pixels, QFont::Weight weight) {
  QFont font = base;
  font.setPixelSize(std::max(7, static_cast<int>(pixels)));
  font.setWeight(weight);
  return font;
}

}  // namespace

LampWidget::LampWidget(bool fills, QWidget* parent) : QPushButton(parent), fills_(fills) {
  setAutoDefault(false);
  setFocusPolicy(Qt::TabFocus);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

void LampWidget::Show(const LampText& says) {
  if (says == says_) return;
  const bool news = says.words != says_.words || says.state != says_.state;
  const bool trouble = says.state == LampState::kTrouble && says_.state != LampState::kTrouble;
  const LampText before = std::exchange(says_, says);
  // Each second brings another detail; only another state is worth being read aloud.
  if (news) {
    setAccessibleName(ToQt(says.words) + QStringLiteral(", ") + ToQt(says.detail));
    if (QAccessible::isActive()) {
      QAccessibleEvent announced(this, trouble ? QAccessible::Alert : QAccessible::NameChanged);
      QAccessible::updateAccessibility(&announced);
    }
  }
  if (news) {
    Redraw();
  } else {
    UpdateDetail(before);
  }
}

void LampWidget::UpdateDetail(const LampText& before) {
  if (says_.fill != before.fill) {
    const QRectF shorter = FillLine(std::min(says_.fill, before.fill));
    QRectF longer = FillLine(std::max(says_.fill, before.fill));
    longer.setLeft(shorter.right());
    update(longer.toAlignedRect().adjusted(-1, 0, 1, 0));
  }
  if (says_.detail == before.detail) return;
  if (detail_.letters == nullptr) {
    update();
    return;
  }
  const int old_pixels = detail_.letters->font().pixelSize();
  const TextRun old = std::exchange(detail_, LayOutDetail());
  const bool same_letters =
      old.letters == detail_.letters && old_pixels == detail_.letters->font().pixelSize();
  if (same_letters) {
    update(Difference({old}, {detail_}).toAlignedRect());
  } else {
    update();
  }
}

void LampWidget::Redraw() {
  still_.Drop();
  detail_letters_ = {};
  detail_ = {};
  update();
}

void LampWidget::resizeEvent(QResizeEvent* event) {
  QPushButton::resizeEvent(event);
  Redraw();
}

void LampWidget::showEvent(QShowEvent* event) {
  QPushButton::showEvent(event);
  setAttribute(Qt::WA_OpaquePaintEvent);  // styles take it from buttons
}

void LampWidget::changeEvent(QEvent* event) {
  QPushButton::changeEvent(event);
  if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) Redraw();
}

void LampWidget::focusInEvent(QFocusEvent* event) {
  QPushButton::focusInEvent(event);
  Redraw();
}

void LampWidget::focusOutEvent(QFocusEvent* event) {
  QPushButton::focusOutEvent(event);
  Redraw();
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

double LampWidget::Edge() const {
  return std::max(1.0, height() / 30.0);
}

double LampWidget::TextLeft() const {
  return height() * (kSignLeft + kSign + kSignLeft);
}

TextRun LampWidget::LayOut(Letters& letters, const QFont& wanted, const QString& text,
                           double baseline) const {
  const QPointF place(TextLeft(), baseline);
  const double room = width() - TextLeft() - height() * 0.12;
  letters.wanted.SetFont(wanted);
  if (letters.wanted.Width(text) <= room) return {&letters.wanted, text, place};
  // What fitted last time is tried first; a resize forgets it.
  const int smallest = static_cast<int>(wanted.pixelSize() * kSmallestShare);
  const bool known = letters.smaller.font().pixelSize() > 0 && letters.smaller.Width(text) <= room;
  for (int pixels = wanted.pixelSize() - 1; !known && pixels >= smallest; --pixels) {
    letters.smaller.SetFont(Sized(wanted, pixels, static_cast<QFont::Weight>(wanted.weight())));
    if (letters.smaller.Width(text) <= room) break;
  }
  const bool fits = letters.smaller.Width(text) <= room;
  return {&letters.smaller,
          fits ? text : QFontMetricsF(letters.smaller.font()).elidedText(text, Qt::ElideRight, room), place};
}

TextRun LampWidget::LayOutDetail() {
  return LayOut(detail_letters_, Sized(font(), height() * 0.27, QFont::Normal), ToQt(says_.detail),
                height() * 0.79);
}

// How far the block has come: a bright line along the bottom, below the descenders of the detail.
QRectF LampWidget::FillLine(double fill) const {
  const double edge = Edge();
  const double round = height() * kRound;
  const double thick = height() * 0.055;
  const double bottom = height() - edge * 1.6;
  return {edge / 2 + round, bottom - thick, (width() - edge - round * 2) * std::clamp(fill, 0.0, 1.0), thick};
}

// What changes with the state alone.
void LampWidget::PaintStill() {
  const Scheme& scheme = SchemeOf(palette());
  const LampShades shades = scheme.Lamp(says_.state, fills_);
  QPainter painter(&still_.Begin(*this, scheme.ground));
  painter.setRenderHint(QPainter::Antialiasing);
  const double edge = Edge();
  const QRectF body = QRectF(rect()).adjusted(edge / 2, edge / 2, -edge / 2, -edge / 2);
  const double round = height() * kRound;
  painter.setPen(hasFocus() ? QPen(scheme.ink, edge * 3) : QPen(shades.edge, edge));
  painter.setBrush(shades.ground);
  painter.drawRoundedRect(hasFocus() ? body.adjusted(edge, edge, -edge, -edge) : body, round, round);
  const double sign = height() * kSign;
  PaintSign(painter, QRectF(height() * kSignLeft, (height() - sign) / 2, sign, sign), shades.sign);
  painter.setPen(shades.ink);
  Letters letters;
  const TextRun words =
      LayOut(letters, Sized(font(), height() * 0.38, QFont::Bold), ToQt(says_.words), height() * 0.46);
  words.letters->Draw(painter, words.place, words.text);
}

void LampWidget::paintEvent(QPaintEvent* event) {
  if (still_.IsDue(*this)) PaintStill();
  QPainter painter(this);
  still_.Draw(painter, event->rect());
  const LampShades shades = SchemeOf(palette()).Lamp(says_.state, fills_);
  if (fills_ && says_.state != LampState::kOff) {
    QColor fill = shades.ink;
    fill.setAlphaF(0.85F);
    painter.fillRect(FillLine(says_.fill), fill);
  }
  painter.setPen(shades.ink);
  if (detail_.letters == nullptr) detail_ = LayOutDetail();
  detail_.letters->Draw(painter, detail_.place, detail_.text, event->rect());
}

}  // namespace kestrum
