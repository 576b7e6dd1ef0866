#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace kestrum::drivesim {

using Bytes = std::vector<std::uint8_t>;

/// Four parameter bytes, then the opcode.
using Command = std::array<std::uint8_t, 5>;

/// "00 42 E7"
std::string HexText(std::span<const std::uint8_t> bytes);

/// Packed BCD, most significant byte first. A nibble above nine counts as its value (0x0A is ten), as in a
/// set that multiplies and adds without looking.
std::uint32_t BcdToNumber(std::span<const std::uint8_t> bcd);

/// `count` bytes of packed BCD, most significant byte first; digits that do not fit are lost at the front.
Bytes NumberToBcd(std::uint32_t number, std::size_t count);

/// Splitmix64: the same numbers for the same seed on every machine, which the standard distributions do not
/// give.
class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed) {}
  std::uint64_t Next();
  /// 0 <= value < 1
  double Uniform();

 private:
  std::uint64_t state_;
};

}  // namespace kestrum::drivesim
