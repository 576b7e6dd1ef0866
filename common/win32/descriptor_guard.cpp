#include "common/descriptor_guard.h"

#include <windows.h>

#include <cstdio>

namespace kestrum {

// A program with windows has nothing to print on here. Started from a console it prints there; where its
// output was redirected that stands.
void OpenStandardDescriptors() {
  const bool has_output = ::GetStdHandle(STD_OUTPUT_HANDLE) != nullptr;
  if (has_output || ::AttachConsole(ATTACH_PARENT_PROCESS) == 0) return;
  [[maybe_unused]] const std::FILE* out = std::freopen("CONOUT$", "w", stdout);
  [[maybe_unused]] const std::FILE* err = std::freopen("CONOUT$", "w", stderr);
}

}  // namespace kestrum
