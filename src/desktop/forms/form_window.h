#pragma once

#include <QMainWindow>

#include "desktop/binding/binder.h"
#include "forms/control.h"

namespace kestrum {

// A window that follows a Form: title, position, shown or hidden. Closing asks the form's handler.
class FormWindow : public QMainWindow {
  Q_OBJECT

 public:
  // `owner` is the window that this one stays above, or none. It is no parent: a control's name is looked for
  // within one window.
  FormWindow(Form& form, Binder& binder, QWidget* owner = nullptr);

  // Offers a key to the form before any control sees it. True when the key goes no further.
  bool OfferKey(Key key);

 protected:
  bool event(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void moveEvent(QMoveEvent* event) override;
  void showEvent(QShowEvent* event) override;

  Binder& binder_;

 private:
  void FollowPosition();
  void ShowOrHide(bool visible);
  // `wanted`, or the nearest place where the title bar lies on a screen.
  QPoint OnScreen(QPoint wanted) const;
  void Activate();
  // Moves and, if need be, shrinks a shown window so that the whole of it lies on its screen.
  void PlaceWhole();

  Form& form_;
  QWidget* owner_;
  float painted_left_;
  float painted_top_;
  bool activated_ = false;
};

// Sees every key before the controls and offers F1, F3, F5 and Alt+F4 to the form of the window.
class FormKeys : public QObject {
  Q_OBJECT

 public:
  FormKeys();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace kestrum
