#pragma once

#include <QPushButton>

namespace kestrum {

// The logging button: filled with a dot while it logs, outlined while it does not; told apart at arm's
// length.
class LogButton : public QPushButton {
  Q_OBJECT

 public:
  explicit LogButton(QWidget* parent);

  // While it logs the button takes no keyboard focus.
  void ShowLogging(bool logging);
  bool Logging() const { return logging_; }

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  bool logging_ = false;
};

}  // namespace kestrum
