#pragma once

#include <chrono>
#include <random>

namespace kestrum::process {

constexpr std::chrono::seconds kPatience{20};
constexpr std::chrono::milliseconds kLookEvery{10};

// Time passes by these alone, so that a reader of a test sees why it does.

// A device takes its time: the pause before a late reply, or between two halves of one.
void DeviceIsQuietFor(std::chrono::milliseconds duration);
// Something that cannot be watched, or is measured, goes on for a while.
void LetRunFor(std::chrono::milliseconds duration);
// A moment that nobody has chosen comes.
void LetComeWithin(std::chrono::microseconds longest, std::mt19937& random);

// Looks every 10 ms until the condition holds; false when it does not within the time.
template <typename Condition>
bool Eventually(Condition condition, std::chrono::milliseconds patience = kPatience) {
  const auto end = std::chrono::steady_clock::now() + patience;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) return false;
    LetRunFor(kLookEvery);
  }
  return true;
}

// Looks every 10 ms whether the condition still holds; false as soon as it does not.
template <typename Condition>
bool StaysTrueFor(std::chrono::milliseconds duration, Condition condition) {
  const auto end = std::chrono::steady_clock::now() + duration;
  for (;;) {
    if (!condition()) return false;
    if (std::chrono::steady_clock::now() > end) return true;
    LetRunFor(kLookEvery);
  }
}

}  // namespace kestrum::process
