#pragma once

#include "desktop/forms/form_window.h"
#include "forms/form2.h"

class QTextBlock;

namespace kestrum {

class ListBox;

// The info window: a text that fills it. A click on a line of its contents goes to the heading.
class Form2Window : public FormWindow {
  Q_OBJECT

 public:
  Form2Window(Form2& form, Binder& binder, QWidget* owner);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  void GoTo(const QTextBlock& heading);

  ListBox* text_;
  QWidget* owner_;
  bool placed_ = false;
};

}  // namespace kestrum
