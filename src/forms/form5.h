#pragma once

#include <array>

#include "forms/control.h"
#include "forms/indicators.h"

namespace kestrum {

// The minimal display for driving.
struct Form5 : Form {
  Form5() : Form("Form5") {}

  Lamp lmpLog{"lmpLog"};
  Lamp lmpGps{"lmpGps"};
  Lamp lmpRig{"lmpRig"};
  Frame Frame1{"Frame1", "Kestrum"};
  Button Command1{"Command1", "&Main(F5) "};
  ProgressBar ProgressBar1{"ProgressBar1"};
  // Distance, angle, altitude, frequency, signal.
  std::array<Label, 5> Label1{Label{"Label1_0"}, Label{"Label1_1"}, Label{"Label1_2"}, Label{"Label1_3"},
                              Label{"Label1_4"}};
  Picture Picture1{"Picture1"};
};

}  // namespace kestrum
