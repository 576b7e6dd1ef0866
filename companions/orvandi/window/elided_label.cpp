#include "window/elided_label.h"

#include <QFontMetrics>

namespace orvandi {

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

void ElidedLabel::SetFullText(const QString& text) {
  full_ = text;
  setAccessibleDescription(text);
  Elide();
}

QSize ElidedLabel::minimumSizeHint() const {
  return {20, fontMetrics().height()};
}

void ElidedLabel::resizeEvent(QResizeEvent* event) {
  QLabel::resizeEvent(event);
  Elide();
}

void ElidedLabel::Elide() {
  const QString shown = fontMetrics().elidedText(full_, Qt::ElideRight, contentsRect().width());
  setText(shown);
  setToolTip(shown == full_ ? QString() : full_);
}

}  // namespace orvandi
