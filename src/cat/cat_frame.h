#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>

namespace kestrum {

// A text of exactly three characters: longer texts are cut, shorter ones padded with blanks on the right.
class ThreeCharacters {
 public:
  ThreeCharacters() = default;
  // Assigned like a text, hence not explicit.
  template <std::convertible_to<std::string_view> Text>
  ThreeCharacters(const Text& text) : text_(std::string_view(text).substr(0, 3)) {
    text_.resize(3, ' ');
  }
  const std::string& text() const { return text_; }

 private:
  std::string text_ = "000";
};

// The command record shared by the set-frequency commands: four parameters and the opcode as decimal texts.
struct CatFrame {
  ThreeCharacters P1;
  ThreeCharacters P2;
  ThreeCharacters P3;
  ThreeCharacters P4;
  ThreeCharacters Cmd;
};

// One field as a byte. The numbers 10 and 100 stand for themselves; else 16 x first digit + 16 x second +
// third, so a pair of digits reads as packed BCD. Kept on purpose: the digit pair "10" of a frequency goes
// out as 0x0A too, the sets in use have always been tuned that way.
std::uint8_t FieldByte(const ThreeCharacters& field);

// The five bytes in sending order: P1, P2, P3, P4, Cmd.
std::string FrameBytes(const CatFrame& frame);

}  // namespace kestrum
