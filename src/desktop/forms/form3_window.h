#pragma once

#include "desktop/forms/form_window.h"
#include "forms/form3.h"

namespace kestrum {

class ListBox;

// The calibration editor.
class Form3Window : public FormWindow {
  Q_OBJECT

 public:
  Form3Window(Form3& form, Binder& binder, QWidget* owner);

 private:
  void BuildMenus();
  QWidget* BuildAcquisition(QWidget* parent);
  QWidget* BuildLists(QWidget* parent);
  ListBox* List(Label& label, QWidget* parent);

  Form3& form_;
};

}  // namespace kestrum
