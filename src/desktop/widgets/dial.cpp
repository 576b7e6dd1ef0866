#include "desktop/widgets/dial.h"

#include <QEvent>

namespace kestrum {

Dial::Dial(int hint_lines, int least_lines, QWidget* parent)
    : QWidget(parent), hint_lines_(hint_lines), least_lines_(least_lines) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void Dial::SetStale(bool stale) {
  if (stale == stale_) return;
  stale_ = stale;
  update();
}

void Dial::SetBadge(const QString& badge) {
  if (badge == badge_) return;
  badge_ = badge;
  update();
}

QSize Dial::Square(int lines) const {
  const int side = fontMetrics().height() * lines;
  return {side, side};
}

void Dial::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) still_.Drop();
}

}  // namespace kestrum
