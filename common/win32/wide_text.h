#pragma once

#include <string>
#include <string_view>

// Texts on their way to the system and back. 8-bit text is Windows-1252 whatever the user's code page is.
namespace kestrum::win32 {

std::wstring Wide(std::string_view text);
// A character that the code page does not have becomes "?".
std::string Narrow(std::wstring_view text);

// The system's description of an error number, in one line without a line end. Usable from any thread.
std::wstring WideReason(unsigned long error);
std::string Reason(unsigned long error);

}  // namespace kestrum::win32
