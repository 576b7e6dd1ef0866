#include "desktop/forms/form_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>
#include <QWindow>
#include <cmath>
#include <optional>

#include "desktop/ports/box_text.h"
#include "desktop/text_convert.h"
#include "desktop/twips.h"

namespace kestrum {
namespace {

int Pixels(float twips) {
  return static_cast<int>(std::lround(ToPixels(static_cast<double>(twips))));
}

std::optional<Key> FormKey(const QKeyEvent& event) {
  const Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeypadModifier;
  if (event.key() == Qt::Key_F4 && modifiers == Qt::AltModifier) return Key::kAltF4;
  if (modifiers != Qt::NoModifier) return std::nullopt;
  switch (event.key()) {
    case Qt::Key_F1:
      return Key::kF1;
    case Qt::Key_F2:
      return Key::kF2;
    case Qt::Key_F3:
      return Key::kF3;
    case Qt::Key_F4:
      return Key::kF4;
    case Qt::Key_F5:
      return Key::kF5;
    default:
      return std::nullopt;
  }
}

}  // namespace

FormWindow::FormWindow(Form& form, Binder& binder, QWidget* owner)
    : QMainWindow(nullptr, Qt::Window),
      binder_(binder),
      form_(form),
      owner_(owner),
      painted_left_(form.left),
      painted_top_(form.top) {
  setObjectName(QLatin1String(form.name));
  binder.Follow<std::string>(form.caption, [this](const std::string& text) {
    constexpr int kMostOfTitle = 120;
    setWindowTitle(Shortened(ToQt(text), kMostOfTitle));
  });
  FollowPosition();
  binder.FollowFrom<bool>(false, form.visible, [this](const bool& visible) { ShowOrHide(visible); });
  binder.FollowFrom<unsigned>(0, form.calls_to_front, [this](const unsigned&) {
    if (!isVisible()) return;
    raise();
    activateWindow();
  });
}

void FormWindow::FollowPosition() {
  binder_.Watch([this] {
    if (form_.left == painted_left_ && form_.top == painted_top_) return;
    painted_left_ = form_.left;
    painted_top_ = form_.top;
    move(OnScreen(QPoint(Pixels(form_.left), Pixels(form_.top))));
  });
}

void FormWindow::ShowOrHide(bool visible) {
  if (!visible) {
    activated_ = false;
    hide();
    return;
  }
  if (owner_ != nullptr) {
    winId();  // makes the native windows
    owner_->winId();
    windowHandle()->setTransientParent(owner_->windowHandle());
  }
  show();
  activateWindow();
}

QPoint FormWindow::OnScreen(QPoint wanted) const {
  const QSize size = isVisible() ? frameSize() : sizeHint();
  const int strip = fontMetrics().height() * 2;
  const QRect title(wanted.x(), wanted.y(), size.width(), strip);
  QRect nearest = QGuiApplication::primaryScreen()->availableGeometry();
  for (const QScreen* screen : QGuiApplication::screens()) {
    const QRect room = screen->availableGeometry();
    const QRect seen = room.intersected(title);
    if (seen.height() == strip && seen.width() >= strip * 3) return wanted;
    if (room.intersects(QRect(wanted, size))) nearest = room;
  }
  return {qBound(nearest.left(), wanted.x(), qMax(nearest.left(), nearest.right() - size.width())),
          qBound(nearest.top(), wanted.y(), qMax(nearest.top(), nearest.bottom() - size.height()))};
}

void FormWindow::PlaceWhole() {
  if (!isVisible() || isMaximized() || isMinimized() || isFullScreen()) return;
  const QRect room = screen()->availableGeometry();
  const QSize frame = frameSize() - size();
  if (frameSize().width() > room.width() || frameSize().height() > room.height()) {
    resize((room.size() - frame).boundedTo(size()));
  }
  const QPoint place(qBound(room.left(), x(), qMax(room.left(), room.right() + 1 - frameSize().width())),
                     qBound(room.top(), y(), qMax(room.top(), room.bottom() + 1 - frameSize().height())));
  if (place != pos()) move(place);
}

void FormWindow::Activate() {
  if (!form_.visible) return;
  if (!activated_) PlaceWhole();  // by now the desktop has put its frame around the window
  activated_ = true;
  binder_.Enter(form_.activate);
}

bool FormWindow::event(QEvent* event) {
  const bool handled = QMainWindow::event(event);
  // Later, not from inside: the window may be activated while the program is painting it.
  if (event->type() == QEvent::WindowActivate) {
    QMetaObject::invokeMethod(this, &FormWindow::Activate, Qt::QueuedConnection);
  }
  return handled;
}

void FormWindow::showEvent(QShowEvent* event) {
  QMainWindow::showEvent(event);
  if (event->spontaneous() || activated_) return;
  // A desktop that does not hand the focus to a new window still counts as its first activation.
  const auto first_activation = [this] {
    if (!activated_) Activate();
  };
  QMetaObject::invokeMethod(this, first_activation, Qt::QueuedConnection);
}

void FormWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  binder_.Enter([this] {
    if (form_.close) {
      form_.close();
    } else {
      form_.visible = false;
    }
  });
}

void FormWindow::moveEvent(QMoveEvent* event) {
  QMainWindow::moveEvent(event);
  // The place to which a maximised window goes back is the one that counts.
  if (!isVisible() || isMinimized() || isMaximized()) return;
  binder_.Enter([this] {
    form_.left = painted_left_ = static_cast<float>(ToTwips(x()));
    form_.top = painted_top_ = static_cast<float>(ToTwips(y()));
  });
}

bool FormWindow::OfferKey(Key key) {
  if (!form_.key_down) return false;
  bool consumed = false;
  binder_.Enter([this, key, &consumed] { consumed = form_.key_down(key); });
  if (!consumed && key == Key::kAltF4) close();
  return true;
}

FormKeys::FormKeys() {
  QCoreApplication::instance()->installEventFilter(this);
}

bool FormKeys::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress || !watched->isWidgetType()) return false;
  auto* window = qobject_cast<FormWindow*>(static_cast<QWidget*>(watched)->window());
  if (window == nullptr) return false;
  const auto& key_event = static_cast<const QKeyEvent&>(*event);
  const std::optional<Key> key = FormKey(key_event);
  if (!key) return false;
  // A key that is held down counts once.
  return key_event.isAutoRepeat() || window->OfferKey(*key);
}

}  // namespace kestrum
