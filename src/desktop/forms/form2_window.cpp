#include "desktop/forms/form2_window.h"

#include <QMouseEvent>
#include <QScreen>
#include <QTextBlock>

#include "desktop/widgets/list_box.h"

namespace kestrum {
namespace {

// The line further down that repeats this one: the heading that a line of the contents stands for.
QTextBlock HeadingOf(const QTextBlock& line) {
  const QString text = line.text().trimmed();
  if (text.isEmpty() || !text.front().isDigit()) return {};
  QTextBlock block = line.next();
  while (block.isValid() && block.text().trimmed() != text) block = block.next();
  return block;
}

}  // namespace

Form2Window::Form2Window(Form2& form, Binder& binder, QWidget* owner)
    : FormWindow(form, binder, owner), text_(new ListBox(86, 28, this)), owner_(owner) {
  text_->setFrameShape(QFrame::NoFrame);
  text_->setAccessibleName(QStringLiteral("Information"));
  text_->viewport()->installEventFilter(this);
  text_->viewport()->setMouseTracking(true);
  setCentralWidget(text_);
  binder.Bind(form.Text1, text_);
}

bool Form2Window::eventFilter(QObject* watched, QEvent* event) {
  if (watched == text_->viewport()) {
    if (event->type() == QEvent::MouseMove || event->type() == QEvent::MouseButtonRelease) {
      const auto& mouse = static_cast<const QMouseEvent&>(*event);
      const QTextBlock heading = HeadingOf(text_->cursorForPosition(mouse.position().toPoint()).block());
      text_->viewport()->setCursor(heading.isValid() ? Qt::PointingHandCursor : Qt::IBeamCursor);
      const bool clicked = event->type() == QEvent::MouseButtonRelease && !text_->textCursor().hasSelection();
      if (clicked && heading.isValid()) GoTo(heading);
    }
  }
  return FormWindow::eventFilter(watched, event);
}

// From the end the cursor comes up to the heading, which then stands at the top.
void Form2Window::GoTo(const QTextBlock& heading) {
  text_->moveCursor(QTextCursor::End);
  text_->setTextCursor(QTextCursor(heading));
  text_->ensureCursorVisible();
}

void Form2Window::showEvent(QShowEvent* event) {
  // Beside the main window where there is place, so that both can be read; later where the user has put it.
  if (!placed_ && owner_ != nullptr && owner_->isVisible()) {
    placed_ = true;
    const QRect room = owner_->screen()->availableGeometry();
    const QRect main = owner_->frameGeometry();
    const QSize size = frameSize();
    if (main.right() + size.width() <= room.right()) {
      move(main.right() + 1, main.top());
    } else if (main.left() - size.width() >= room.left()) {
      move(main.left() - size.width(), main.top());
    } else {
      move(room.right() - size.width(), room.bottom() - size.height());
    }
  }
  FormWindow::showEvent(event);
}

}  // namespace kestrum
