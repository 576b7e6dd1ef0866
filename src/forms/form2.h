#pragma once

#include "forms/control.h"

namespace kestrum {

// The info window.
struct Form2 : Form {
  Form2() : Form("Form2") {}

  TextBox Text1{"Text1"};  // many lines, read only, scrolls
};

}  // namespace kestrum
