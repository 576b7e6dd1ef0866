#pragma once

#include <chrono>

namespace kestrum {

// Local time of day and date.
struct DateTime {
  int year = 2000;
  int month = 1;  // 1 to 12
  int day = 1;    // 1 to 31
  int hour = 0;   // 0 to 23
  int minute = 0;
  int second = 0;
};

class Clock {
 public:
  virtual ~Clock() = default;

  virtual DateTime Now() const = 0;
  // Time since some fixed moment; never jumps.
  virtual std::chrono::milliseconds Elapsed() const = 0;
  // Blocks the thread; no events run.
  virtual void Sleep(std::chrono::milliseconds duration) = 0;
};

}  // namespace kestrum
