#pragma once

#include <string>
#include <vector>

#include "config/settings.h"
#include "forms/forms.h"
#include "platform/ports.h"
#include "position/site.h"

namespace kestrum {

// Circle and needle for an angle text in degrees ("032°", "045"; 0 points up, clockwise) in a picture of the
// given size in twips; "32768" gives only a small circle.
std::vector<Shape> NeedleShapes(const std::string& text, double width, double height);

// The minimal display, Form5.
class MinimalDisplay {
 public:
  MinimalDisplay(State& state, Forms& forms, const Ports& ports);

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

  State& state_;
  Forms& forms_;
  Ports ports_;
  std::string needle_ = "32768";
};

}  // namespace kestrum
