#pragma once

#include "platform/clock.h"

namespace kestrum {

class SystemClock : public Clock {
 public:
  DateTime Now() const override;
  std::chrono::milliseconds Elapsed() const override;
  void Sleep(std::chrono::milliseconds duration) override;
};

}  // namespace kestrum
