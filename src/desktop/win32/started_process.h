#pragma once

#include <optional>
#include <string>

#include "common/win32/handle.h"
#include "platform/program.h"

namespace kestrum {

// Starts the executable `path` in `folder` without arguments. How its first window comes up is handed on as
// the system does it. Its process number, or nothing when that is not possible.
std::optional<unsigned long> StartProgram(const std::wstring& path, const std::wstring& folder,
                                          ShowStyle style);

// A process that this one has started and that goes its own way; never another one that got its number later.
class StartedProcess {
 public:
  // From now on this one.
  void Follow(unsigned long process);
  bool Runs() const;
  // Closes its windows, as the user does; a process that has none yet is ended.
  void AskToEnd() const;

 private:
  win32::Handle process_;
  unsigned long number_ = 0;
};

}  // namespace kestrum
