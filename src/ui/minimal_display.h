#pragma once

#include <string>

#include "config/settings.h"
#include "forms/forms.h"
#include "platform/ports.h"
#include "position/site.h"

namespace kestrum {

// The minimal display, Form5.
class MinimalDisplay {
 public:
  MinimalDisplay(State& state, Forms& forms, const PortSet<Dialogs, Program>& ports);

  // Hangs the handlers on Form5's controls and on mnuMinimalDisplay.
  void Wire();
  // Menu, F5 and Command1: switches between the main window and the minimal display.
  void Toggle();
  // After a record: the five labels, the bar and the needle. `raw` is the reading's S-meter value, `signal`
  // the line of S text, uV and mV/m.
  void ShowRecord(const Site& site, int raw, const std::string& signal);
  void ShowPelorusMinimized(const std::string& text);

 private:
  void Load();
  void Unload();
  void PaintNeedle();

  State& state_;
  Forms& forms_;
  PortSet<Dialogs, Program> ports_;
};

}  // namespace kestrum
