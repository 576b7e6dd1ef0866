#pragma once

#include "desktop/forms/form_window.h"
#include "forms/form2.h"

namespace kestrum {

// The info window: a text that fills it.
class Form2Window : public FormWindow {
  Q_OBJECT

 public:
  Form2Window(Form2& form, Binder& binder, QWidget* owner);
};

}  // namespace kestrum
