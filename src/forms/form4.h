#pragma once

#include "forms/control.h"

namespace kestrum {

// The timing window.
struct Form4 : Form {
  Frame Frame1{"Timing mSec"};
  TextBox Text1;
  Label Label1{" mSec"};
  Frame Frame2{"Timing Distance"};
  TextBox Text2;
  Label Label2{" km"};
  Frame Frame3{"Type"};
  OptionButton Option1{"Timing mSec"};
  OptionButton Option2{"Distance km"};
  Button cmdOk{"&Ok"};
};

}  // namespace kestrum
