#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// What all fuzzers need. Inputs are plain texts, so that seeds and findings can be read and edited.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace kestrum::fuzz {

// Ends the process with a message when a property does not hold.
void Require(bool holds, std::string_view property, std::string_view detail = {});

// The input as it is.
std::string Text(const std::uint8_t* data, std::size_t size);

// The input cut at every "|"; at least one piece. More than `most` pieces are left out.
std::vector<std::string> Pieces(const std::string& text, std::size_t most);

// A number that depends on every byte of the input: for choices that need not be steered.
std::uint32_t Mix(std::string_view text);

// Whether the text is made of these characters only.
bool MadeOf(std::string_view text, std::string_view characters);
inline constexpr std::string_view kNumberCharacters = "0123456789.-";

}  // namespace kestrum::fuzz
