#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace kestrum::sets {

using Bytes = std::vector<std::uint8_t>;

// Four parameter bytes, then the opcode.
using Command = std::array<std::uint8_t, 5>;

// "00 42 E7"
std::string HexText(std::span<const std::uint8_t> bytes);

// Packed BCD, most significant byte first. A nibble above nine counts as its value (0x0A is ten), as in a
// set that multiplies and adds without looking.
std::uint32_t BcdToNumber(std::span<const std::uint8_t> bcd);

// `count` bytes of packed BCD, most significant byte first; digits that do not fit are lost at the front.
Bytes NumberToBcd(std::uint32_t number, std::size_t count);

}  // namespace kestrum::sets
