#include "bytes.h"

namespace kestrum::drivesim {

std::string HexText(std::span<const std::uint8_t> bytes) {
  static constexpr char kDigits[] = "0123456789ABCDEF";
  std::string text;
  for (const std::uint8_t byte : bytes) {
    if (!text.empty()) text += ' ';
    text += kDigits[byte >> 4];
    text += kDigits[byte & 15];
  }
  return text;
}

std::uint32_t BcdToNumber(std::span<const std::uint8_t> bcd) {
  std::uint32_t number = 0;
  for (const std::uint8_t byte : bcd) {
    number = number * 100 + static_cast<std::uint32_t>(byte >> 4) * 10 + (byte & 15U);
  }
  return number;
}

Bytes NumberToBcd(std::uint32_t number, std::size_t count) {
  Bytes bcd(count);
  for (std::size_t i = count; i > 0; --i) {
    const std::uint32_t pair = number % 100;
    bcd[i - 1] = static_cast<std::uint8_t>((pair / 10) << 4 | pair % 10);
    number /= 100;
  }
  return bcd;
}

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
