#include "sets/bytes.h"

namespace kestrum::sets {

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

}  // namespace kestrum::sets
