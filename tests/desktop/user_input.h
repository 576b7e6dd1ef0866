#pragma once

#include <qpa/qwindowsysteminterface.h>

#include <QPoint>
#include <QWidget>
#include <QWindow>

namespace kestrum::test {

// A click of the left button that the toolkit has received from the system and not handed out yet: unlike
// those of QTest it waits in the queue for input.
inline void UserClicks(const QWidget& widget, const QPoint& place) {
  QWindow* const window = widget.window()->windowHandle();
  const QPointF in_window = widget.mapTo(widget.window(), place);
  const QPointF on_screen = widget.mapToGlobal(place);
  for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
    const Qt::MouseButtons held = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
    QWindowSystemInterface::handleMouseEvent<QWindowSystemInterface::AsynchronousDelivery>(
        window, in_window, on_screen, held, Qt::LeftButton, type);
  }
}

}  // namespace kestrum::test
