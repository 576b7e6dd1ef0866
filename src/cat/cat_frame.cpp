#include "cat/cat_frame.h"

#include "text/number_text.h"

namespace kestrum {
namespace {

int DigitValue(char c) {
  return c >= '0' && c <= '9' ? c - '0' : 0;
}

}  // namespace

std::uint8_t FieldByte(const ThreeCharacters& field) {
  const std::string& text = field.text();
  const double value = Val(text);
  if (value == 10) return 10;
  if (value == 100) return 100;
  const int byte = 16 * DigitValue(text[0]) + 16 * DigitValue(text[1]) + DigitValue(text[2]);
  return static_cast<std::uint8_t>(byte & 0xFF);
}

std::string FrameBytes(const CatFrame& frame) {
  std::string bytes;
  for (const auto* field : {&frame.P1, &frame.P2, &frame.P3, &frame.P4, &frame.Cmd})
    bytes += static_cast<char>(FieldByte(*field));
  return bytes;
}

}  // namespace kestrum
