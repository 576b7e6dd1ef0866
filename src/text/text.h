#pragma once

#include <string>
#include <string_view>

// Texts of the core: one byte a character in the 8-bit code page (Windows-1252), as they stand in the files.
namespace kestrum {

// The degree sign of the code page.
inline constexpr std::string_view kDegree = "\xB0";

// Without leading and trailing blanks; other white space stays.
std::string Trim(std::string_view text);
std::string TrimLeft(std::string_view text);

// Capitals, accented letters of the code page included.
std::string Upper(std::string_view text);

// Equal without regard to letter case.
bool SameText(std::string_view a, std::string_view b);

// Whether `part` occurs in `text` without regard to letter case. An empty part occurs in every text.
bool ContainsText(std::string_view text, std::string_view part);

std::string Replace(std::string_view text, char from, char to);

}  // namespace kestrum
