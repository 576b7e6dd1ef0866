#include "dial_watch.h"

#include <cmath>

namespace kestrum::rigbridge {

void DialWatch::Sent(double hz, Taken taken) {
  sent_hz_ = hz;
  settled_hz_ = taken == Taken::kYes ? std::nullopt : sent_hz_;
  rig_hz_.reset();
}

void DialWatch::Read(double hz) {
  rig_hz_ = hz;
  if (!settled_hz_ && sent_hz_) {
    settled_hz_ = std::fabs(hz - *sent_hz_) <= kRoundingHz ? hz : *sent_hz_;
  }
}

void DialWatch::ModeChanged() {
  if (Elsewhere() || !sent_hz_) return;
  settled_hz_.reset();
  rig_hz_.reset();
}

bool DialWatch::Elsewhere() const {
  if (!sent_hz_ || !rig_hz_) return false;
  return std::fabs(*rig_hz_ - *sent_hz_) > kToleranceHz &&
         std::fabs(*rig_hz_ - settled_hz_.value_or(*sent_hz_)) > kToleranceHz;
}

}  // namespace kestrum::rigbridge
