#include "desktop/binding/user_events.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QWidget>

namespace kestrum {
namespace {

bool IsEnter(const QEvent& event) {
  const auto& key = static_cast<const QKeyEvent&>(event);
  return (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter) && !key.isAutoRepeat();
}

// Coming back from a menu or from another program is no new focus.
bool IsNewFocus(const QEvent& event) {
  const Qt::FocusReason reason = static_cast<const QFocusEvent&>(event).reason();
  return reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason &&
         reason != Qt::MenuBarFocusReason;
}

}  // namespace

UserEvents::UserEvents(QWidget* widget) : QObject(widget) {
  widget->installEventFilter(this);
}

bool UserEvents::KeyEvent(const QEvent& event) {
  if (!IsEnter(event)) return false;
  if (event.type() == QEvent::KeyPress) {
    enter_is_down_ = true;
    if (!enter_pressed) return false;
    enter_pressed();
    return true;
  }
  // The release after an Enter that closed a box belongs to the box.
  const bool pressed_here = enter_is_down_;
  enter_is_down_ = false;
  if (pressed_here && enter_released) enter_released();
  return false;
}

void UserEvents::Focused(QWidget& widget, const QEvent& event) {
  if (static_cast<const QFocusEvent&>(event).reason() != Qt::MouseFocusReason) {
    focused();
    return;
  }
  const auto after_press = [this, &widget] {
    if (widget.hasFocus()) focused();
  };
  QMetaObject::invokeMethod(this, after_press, Qt::QueuedConnection);
}

bool UserEvents::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::MouseButtonRelease: {
      const auto& mouse = static_cast<const QMouseEvent&>(*event);
      const bool inside = static_cast<QWidget*>(watched)->rect().contains(mouse.position().toPoint());
      if (clicked && inside && mouse.button() == Qt::LeftButton) clicked();
      return false;
    }
    case QEvent::FocusIn:
      if (focused && IsNewFocus(*event)) Focused(*static_cast<QWidget*>(watched), *event);
      return false;
    case QEvent::FocusOut:
      enter_is_down_ = false;
      return false;
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
      return KeyEvent(*event);
    default:
      return false;
  }
}

}  // namespace kestrum
