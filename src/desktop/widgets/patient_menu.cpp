#include "desktop/widgets/patient_menu.h"

#include <QKeyEvent>
#include <QMouseEvent>

namespace kestrum {

bool PatientMenu::Step() {
  if (stays_ == nullptr || activeAction() != stays_ || !stays_->isEnabled()) return false;
  stays_->trigger();
  return true;
}

void PatientMenu::mouseReleaseEvent(QMouseEvent* event) {
  if (rect().contains(event->position().toPoint()) && Step()) return;
  QMenu::mouseReleaseEvent(event);
}

void PatientMenu::keyPressEvent(QKeyEvent* event) {
  const bool is_enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (is_enter && Step()) return;
  QMenu::keyPressEvent(event);
}

}  // namespace kestrum
