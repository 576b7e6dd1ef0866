#include "text/text.h"

#include <algorithm>

namespace kestrum {
namespace {

// Letters of Windows-1252 whose capital stands elsewhere than 32 places below.
char UpperChar(char c) {
  const auto u = static_cast<unsigned char>(c);
  const bool ascii = u >= 'a' && u <= 'z';
  const bool accented = u >= 0xE0 && u <= 0xFE && u != 0xF7;
  if (ascii || accented) return static_cast<char>(u - 0x20);
  const bool s_oe_z_caron = u == 0x9A || u == 0x9C || u == 0x9E;
  if (s_oe_z_caron) return static_cast<char>(u - 0x10);
  return u == 0xFF ? static_cast<char>(0x9F) : c;
}

}  // namespace

std::string TrimLeft(std::string_view text) {
  const auto first = text.find_first_not_of(' ');
  return first == std::string_view::npos ? std::string() : std::string(text.substr(first));
}

std::string Trim(std::string_view text) {
  std::string result = TrimLeft(text);
  const auto last = result.find_last_not_of(' ');
  result.erase(last == std::string::npos ? 0 : last + 1);
  return result;
}

std::string Upper(std::string_view text) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(), UpperChar);
  return result;
}

bool SameText(std::string_view a, std::string_view b) {
  return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(),
                                            [](char x, char y) { return UpperChar(x) == UpperChar(y); });
}

bool ContainsText(std::string_view text, std::string_view part) {
  return Upper(text).find(Upper(part)) != std::string::npos;
}

std::string Replace(std::string_view text, char from, char to) {
  std::string result(text);
  std::replace(result.begin(), result.end(), from, to);
  return result;
}

}  // namespace kestrum
