#pragma once

#include "forms/control.h"

namespace kestrum {

// The timing window.
struct Form4 : Form {
  Form4() : Form("Form4") {}

  Frame Frame1{"Frame1", "Timing mSec"};
  TextBox Text1{"Text1"};
  Label Label1{"Label1", " mSec"};
  Frame Frame2{"Frame2", "Timing Distance"};
  TextBox Text2{"Text2"};
  Label Label2{"Label2", " km"};
  Frame Frame3{"Frame3", "Type"};
  OptionButton Option1{"Option1", "Timing mSec"};
  OptionButton Option2{"Option2", "Distance km"};
  Button cmdOk{"cmdOk", "&Ok"};
};

}  // namespace kestrum
