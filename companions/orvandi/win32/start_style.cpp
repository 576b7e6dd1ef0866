#include "start_style.h"

#include <windows.h>

namespace orvandi {

// As the system hands it on; the toolkit shows its first window in its own way.
bool StartedMinimised() {
  STARTUPINFOW how{};
  how.cb = sizeof(how);
  ::GetStartupInfoW(&how);
  const bool asked = (how.dwFlags & STARTF_USESHOWWINDOW) != 0;
  return asked && (how.wShowWindow == SW_SHOWMINIMIZED || how.wShowWindow == SW_MINIMIZE ||
                   how.wShowWindow == SW_SHOWMINNOACTIVE);
}

}  // namespace orvandi
