#include "support/fuzz.h"

#include <cstdio>
#include <cstdlib>

namespace kestrum::fuzz {

void Require(bool holds, std::string_view property, std::string_view detail) {
  if (holds) return;
  std::fprintf(stderr, "Broken property: %.*s\n", static_cast<int>(property.size()), property.data());
  if (!detail.empty()) std::fprintf(stderr, "Seen: [%.*s]\n", static_cast<int>(detail.size()), detail.data());
  std::abort();
}

std::string Text(const std::uint8_t* data, std::size_t size) {
  return {data, data + size};
}

std::vector<std::string> Pieces(const std::string& text, std::size_t most) {
  std::vector<std::string> pieces;
  std::size_t start = 0;
  while (pieces.size() < most) {
    const auto end = text.find('|', start);
    pieces.push_back(text.substr(start, end - start));
    if (end == std::string::npos) break;
    start = end + 1;
  }
  return pieces;
}

std::uint32_t Mix(std::string_view text) {
  std::uint32_t hash = 2166136261U;
  for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 16777619U;
  return hash;
}

bool MadeOf(std::string_view text, std::string_view characters) {
  return text.find_first_not_of(characters) == std::string_view::npos;
}

}  // namespace kestrum::fuzz
