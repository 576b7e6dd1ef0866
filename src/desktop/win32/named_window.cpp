#include "desktop/win32/named_window.h"

#include <windows.h>

namespace kestrum {

bool WindowExists(const std::wstring& title) {
  return ::FindWindowW(nullptr, title.c_str()) != nullptr;
}

void CloseWindowNamed(const std::wstring& title) {
  const HWND window = ::FindWindowW(nullptr, title.c_str());
  if (window != nullptr) ::PostMessageW(window, WM_CLOSE, 0, 0);
}

}  // namespace kestrum
