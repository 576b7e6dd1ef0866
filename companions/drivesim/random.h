#pragma once

#include <cstdint>

namespace kestrum::drivesim {

// Splitmix64: the same numbers for the same seed on every machine, which the standard distributions do not
// give.
class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed) {}
  std::uint64_t Next();
  // 0 <= value < 1
  double Uniform();

 private:
  std::uint64_t state_;
};

}  // namespace kestrum::drivesim
