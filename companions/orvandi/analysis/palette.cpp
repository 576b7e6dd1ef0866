#include "analysis/palette.h"

#include <array>
#include <cmath>
#include <cstddef>

namespace orvandi {
namespace {

// Ten colours of the palette at equal steps; straight lines between them stay within what an eye can tell.
constexpr std::array<Colour, 10> kSteps = {{{0x44, 0x01, 0x54},
                                            {0x48, 0x28, 0x78},
                                            {0x3e, 0x49, 0x89},
                                            {0x31, 0x68, 0x8e},
                                            {0x26, 0x82, 0x8e},
                                            {0x1f, 0x9e, 0x89},
                                            {0x35, 0xb7, 0x79},
                                            {0x6e, 0xce, 0x58},
                                            {0xb5, 0xde, 0x2b},
                                            {0xfd, 0xe7, 0x25}}};

std::uint8_t Between(std::uint8_t low, std::uint8_t high, double share) {
  return static_cast<std::uint8_t>(std::lround(low + (high - low) * share));
}

}  // namespace

Colour Viridis(double share) {
  if (!(share > 0)) return kSteps.front();
  if (share >= 1) return kSteps.back();
  const double place = share * (kSteps.size() - 1);
  const auto step = static_cast<std::size_t>(place);
  const double rest = place - static_cast<double>(step);
  const Colour& low = kSteps[step];
  const Colour& high = kSteps[step + 1];
  return {Between(low.red, high.red, rest), Between(low.green, high.green, rest),
          Between(low.blue, high.blue, rest)};
}

}  // namespace orvandi
