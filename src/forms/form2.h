#pragma once

#include "forms/control.h"

namespace kestrum {

// The info window.
struct Form2 : Form {
  TextBox Text1;  // many lines, read only, scrolls
};

}  // namespace kestrum
