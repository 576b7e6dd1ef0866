#include "random.h"

namespace kestrum::drivesim {

std::uint64_t Random::Next() {
  state_ += 0x9E3779B97F4A7C15ULL;
  std::uint64_t z = state_;
  z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
  z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
  return z ^ (z >> 31);
}

double Random::Uniform() {
  return static_cast<double>(Next() >> 11) * 0x1.0p-53;
}

}  // namespace kestrum::drivesim
