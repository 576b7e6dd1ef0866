#pragma once

#include <array>

#include "forms/control.h"

namespace kestrum {

// The minimal display for driving.
struct Form5 : Form {
  Frame Frame1{"Kestrum"};
  Button Command1{"&Main(F5) "};
  ProgressBar ProgressBar1;
  std::array<Label, 5> Label1;  // distance, angle, altitude, frequency, signal
  Picture Picture1;
};

}  // namespace kestrum
