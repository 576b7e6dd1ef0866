#pragma once

#include <QtGlobal>

#include "platform/clock.h"

namespace kestrum {

class SystemClock : public Clock {
 public:
  DateTime Now() const override;
  std::chrono::milliseconds Elapsed() const override;
  void Sleep(std::chrono::milliseconds duration) override;

 private:
  mutable qint64 asked_minute_ = -1;  // since 1970, when the zone was asked last
  mutable int offset_s_ = 0;          // of local time then
};

}  // namespace kestrum
