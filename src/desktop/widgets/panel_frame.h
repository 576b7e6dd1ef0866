#pragma once

#include <QGroupBox>

namespace kestrum {

// A group with a small heading and a thin line around what belongs together.
class PanelFrame : public QGroupBox {
  Q_OBJECT

 public:
  explicit PanelFrame(QWidget* parent);

 protected:
  void paintEvent(QPaintEvent* event) override;
};

// A group without a line; its heading stands quietly in the lower left corner.
class FooterFrame : public QGroupBox {
  Q_OBJECT

 public:
  explicit FooterFrame(QWidget* parent);
  int FooterHeight() const;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace kestrum
