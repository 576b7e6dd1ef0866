#include "signal/signal_history.h"

#include <algorithm>

namespace kestrum {
namespace {

constexpr std::chrono::milliseconds kPeakHolds{2000};
constexpr auto kRing = static_cast<std::int64_t>(SignalHistory::kColumns);

std::int64_t SecondOf(std::chrono::milliseconds time) {
  return time.count() / 1000;
}

}  // namespace

void SignalHistory::Put(std::int64_t second, int raw) {
  const std::int64_t first_new = std::max(newest_ + 1, second - kRing + 1);
  for (std::int64_t empty = first_new; empty <= second; ++empty) {
    ring_.at(static_cast<std::size_t>(empty % kRing)) = kNothing;
  }
  newest_ = std::max(newest_, second);
  std::int16_t& column = ring_.at(static_cast<std::size_t>(second % kRing));
  if (raw <= column) return;
  column = static_cast<std::int16_t>(raw);
  ++changes_;
}

void SignalHistory::Add(Time now, std::optional<int> raw, Time longest_gap) {
  std::erase_if(recent_, [now](const Point& point) { return now - point.time > kPeakHolds; });
  if (!raw) {
    last_.reset();
    return;
  }
  if (last_ && now - last_->time <= longest_gap) {
    const std::int64_t from = SecondOf(last_->time);
    const std::int64_t to = SecondOf(now);
    for (std::int64_t second = std::max(from + 1, to - kRing + 1); second < to; ++second) {
      Put(second, last_->raw + static_cast<int>((*raw - last_->raw) * (second - from) / (to - from)));
    }
  }
  Put(SecondOf(now), *raw);
  last_ = {now, *raw};
  recent_.push_back(*last_);
}

int SignalHistory::Peak(Time now) const {
  int peak = kNothing;
  for (const Point& point : recent_) {
    if (now - point.time <= kPeakHolds) peak = std::max(peak, point.raw);
  }
  return peak;
}

std::vector<std::int16_t> SignalHistory::Columns(Time now) const {
  std::vector<std::int16_t> columns(kColumns, kNothing);
  const std::int64_t last = SecondOf(now);
  const std::int64_t oldest = std::max(newest_ - kRing + 1, last - kRing + 1);
  for (std::int64_t second = std::max<std::int64_t>(0, oldest); second <= std::min(newest_, last); ++second) {
    columns[static_cast<std::size_t>(second - (last - kRing + 1))] =
        ring_[static_cast<std::size_t>(second % kRing)];
  }
  return columns;
}

}  // namespace kestrum
