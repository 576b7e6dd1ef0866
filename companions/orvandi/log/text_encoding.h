#pragma once

#include <string>
#include <string_view>

namespace orvandi {

// Bytes of a log as UTF-8. Logs are written in the code page Windows-1252; one that an editor has saved as
// UTF-8 is left as it is. Control characters become blanks.
std::string ToUtf8(std::string_view bytes);

// Without blanks, tabs and line ends at both sides.
std::string_view Trimmed(std::string_view text);

// The first `most` bytes of UTF-8, cut between two characters.
std::string_view CutUtf8(std::string_view text, std::size_t most);

}  // namespace orvandi
