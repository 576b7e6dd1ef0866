#pragma once

#include <cstdint>

namespace orvandi {

struct Colour {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;
};

// Viridis (S. van der Walt and N. Smith, CC0), dark blue at 0 to yellow at 1: its lightness rises evenly, so
// that colour-blind people and grey printers read it, too. `share` outside of 0 to 1 is the nearer end.
Colour Viridis(double share);

}  // namespace orvandi
