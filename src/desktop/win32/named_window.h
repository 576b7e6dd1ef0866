#pragma once

#include <string>

namespace kestrum {

// Main windows of other programs by their exact title; minimised ones count.
bool WindowExists(const std::wstring& title);
// Sends the close message and does not wait.
void CloseWindowNamed(const std::wstring& title);

}  // namespace kestrum
