#include "log/text_encoding.h"

#include <array>
#include <cstddef>

namespace orvandi {
namespace {

// Characters 0x80 to 0x9F of Windows-1252; five of them are free and stand for themselves.
constexpr std::array<char16_t, 32> kUpperControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

bool Continues(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

// Bytes of the UTF-8 character at the front, 0 when it is none. Two and three bytes are enough for what is
// typed into an antenna's description, four for the rest.
std::size_t SequenceLength(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text.front());
  const std::size_t length = lead < 0x80                   ? 1
                             : lead >= 0xC2 && lead < 0xE0 ? 2
                             : lead >= 0xE0 && lead < 0xF0 ? 3
                             : lead >= 0xF0 && lead < 0xF5 ? 4
                                                           : 0;
  if (length == 0 || length > text.size()) return 0;
  for (std::size_t place = 1; place < length; ++place) {
    if (!Continues(text[place])) return 0;
  }
  const auto second = length > 1 ? static_cast<unsigned char>(text[1]) : 0x80;
  const bool overlong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
  const bool surrogate = lead == 0xED && second >= 0xA0;
  const bool beyond = lead == 0xF4 && second >= 0x90;
  return overlong || surrogate || beyond ? 0 : length;
}

bool IsUtf8(std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = SequenceLength(text);
    if (length == 0) return false;
    text.remove_prefix(length);
  }
  return true;
}

void AppendUtf8(std::string& text, char16_t character) {
  if (character < 0x800) {
    text += static_cast<char>(0xC0 | (character >> 6));
  } else {
    text += static_cast<char>(0xE0 | (character >> 12));
    text += static_cast<char>(0x80 | ((character >> 6) & 0x3F));
  }
  text += static_cast<char>(0x80 | (character & 0x3F));
}

}  // namespace

std::string ToUtf8(std::string_view bytes) {
  const bool utf8 = IsUtf8(bytes);
  std::string text;
  text.reserve(bytes.size());
  for (const char byte : bytes) {
    const auto code = static_cast<unsigned char>(byte);
    if (code < 0x20 || code == 0x7F) {
      text += ' ';
    } else if (utf8 || code < 0x80) {
      text += byte;
    } else {
      AppendUtf8(text, code < 0xA0 ? kUpperControls[code - 0x80U] : char16_t{code});
    }
  }
  return text;
}

std::string_view Trimmed(std::string_view text) {
  const auto is_blank = [](char character) {
    return character == ' ' || character == '\t' || character == '\r' || character == '\n';
  };
  while (!text.empty() && is_blank(text.front())) text.remove_prefix(1);
  while (!text.empty() && is_blank(text.back())) text.remove_suffix(1);
  return text;
}

std::string_view CutUtf8(std::string_view text, std::size_t most) {
  if (text.size() <= most) return text;
  while (most > 0 && Continues(text[most])) --most;
  return text.substr(0, most);
}

}  // namespace orvandi
