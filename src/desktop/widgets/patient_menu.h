#pragma once

#include <QMenu>

namespace kestrum {

// A menu that stays open while one of its items is stepped through its values.
class PatientMenu : public QMenu {
  Q_OBJECT

 public:
  explicit PatientMenu(QWidget* parent) : QMenu(parent) {}

  // A press of this item does not close the menu.
  void StayOpenFor(QAction* action) { stays_ = action; }

 protected:
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  // Whether the press was for the item, and has been handled.
  bool Step();

  QAction* stays_ = nullptr;
};

}  // namespace kestrum
