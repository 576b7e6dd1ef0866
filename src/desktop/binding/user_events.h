#pragma once

#include <QObject>
#include <functional>

class QWidget;

namespace kestrum {

// Raw events of one widget that it has no signal for.
class UserEvents : public QObject {
  Q_OBJECT

 public:
  // Lives as long as the widget.
  explicit UserEvents(QWidget* widget);

  std::function<void()> clicked;  // the left button goes up over the widget
  // It receives the focus from within the program; from the mouse once the press is through, which would
  // otherwise undo what this does to the cursor.
  std::function<void()> focused;
  std::function<void()> enter_released;  // Return or Enter goes up after it went down here
  std::function<void()> enter_pressed;   // Return or Enter goes down; when set, the key is consumed

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool KeyEvent(const QEvent& event);
  void Focused(QWidget& widget, const QEvent& event);

  bool enter_is_down_ = false;
};

}  // namespace kestrum
