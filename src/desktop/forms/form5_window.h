#pragma once

#include "desktop/forms/form_window.h"
#include "forms/form5.h"

namespace kestrum {

// The minimal display: everything grows with the window, to be read while driving.
class Form5Window : public FormWindow {
  Q_OBJECT

 public:
  Form5Window(Form5& form, Binder& binder);
};

}  // namespace kestrum
