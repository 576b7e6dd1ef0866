#pragma once

#include "forms/form1.h"
#include "forms/form2.h"
#include "forms/form3.h"
#include "forms/form4.h"
#include "forms/form5.h"

namespace kestrum {

struct Forms {
  Form1 form1;
  Form2 form2;
  Form3 form3;
  Form4 form4;
  Form5 form5;

  Sounder sound;
  bool night = false;  // all windows in dim amber on black
};

}  // namespace kestrum
