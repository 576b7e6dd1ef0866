#pragma once

#include <algorithm>

namespace kestrum::rigbridge {

// Pauses between attempts: half a second, doubling up to half a minute; from the start again after a
// success.
class RetrySchedule {
 public:
  static constexpr double kFirstS = 0.5;
  static constexpr double kLongestS = 30;

  // Seconds to wait before the next attempt.
  double Next() {
    const double pause_s = next_s_;
    next_s_ = std::min(next_s_ * 2, kLongestS);
    return pause_s;
  }
  void Reset() { next_s_ = kFirstS; }

 private:
  double next_s_ = kFirstS;
};

}  // namespace kestrum::rigbridge
