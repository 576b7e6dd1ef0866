#pragma once

#include "platform/beeper.h"

namespace kestrum {

class QtBeeper : public Beeper {
 public:
  void Beep() override;
};

}  // namespace kestrum
