#pragma once

#include <QLabel>

namespace orvandi {

// A label that shortens its text to the room there is and tells all of it as its tool tip.
class ElidedLabel final : public QLabel {
  Q_OBJECT

 public:
  explicit ElidedLabel(QWidget* parent = nullptr);
  void SetFullText(const QString& text);
  [[nodiscard]] const QString& FullText() const { return full_; }
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void Elide();
  QString full_;
};

}  // namespace orvandi
