#pragma once

#include <QFrame>

class QLabel;

namespace orvandi {

// A line over everything that says what went wrong or is odd, until it is closed.
class NoticeBar final : public QFrame {
  Q_OBJECT

 public:
  explicit NoticeBar(QWidget* parent = nullptr);
  void Say(const QString& text);  // "": nothing to say any more
  [[nodiscard]] QString Text() const;

 private:
  QLabel* text_;
};

}  // namespace orvandi
