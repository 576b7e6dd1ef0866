#pragma once

#include "desktop/forms/form_window.h"
#include "forms/form4.h"

class QGroupBox;

namespace kestrum {

// The timing window.
class Form4Window : public FormWindow {
  Q_OBJECT

 public:
  Form4Window(Form4& form, Binder& binder, QWidget* owner);

 private:
  struct Entry {
    Frame& frame;
    TextBox& box;
    Label& unit;
  };
  QGroupBox* BuildEntry(const Entry& entry, QWidget* parent);
  QGroupBox* BuildChoice(Form4& form, QWidget* parent);
};

}  // namespace kestrum
