#pragma once

#include <array>

#include "forms/control.h"
#include "forms/indicators.h"

namespace kestrum {

// The minimal display for driving.
struct Form5 : Form {
  Lamp lmpLog;
  Lamp lmpGps;
  Lamp lmpRig;
  Frame Frame1{"Kestrum"};
  Button Command1{"&Main(F5) "};
  ProgressBar ProgressBar1;
  std::array<Label, 5> Label1;  // distance, angle, altitude, frequency, signal
  Picture Picture1;
};

}  // namespace kestrum
