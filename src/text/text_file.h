#pragma once

#include <string>
#include <string_view>
#include <vector>

// Lines of a text file in the 8-bit code page.
namespace kestrum {

// The lines of `bytes`; CR LF, LF and CR end a line. A last line without an end counts; an empty file has
// none.
std::vector<std::string> SplitLines(std::string_view bytes);

// The text without the mark that some editors put in front of UTF-8.
std::string_view WithoutUtf8Mark(std::string_view bytes);

// Each line followed by CR LF. A line end inside a line, as a foreign text may bring it, becomes a blank: one
// line stays one line.
std::string JoinLines(const std::vector<std::string>& lines);

}  // namespace kestrum
