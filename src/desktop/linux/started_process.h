#pragma once

#include <QtGlobal>

namespace kestrum {

// A process that this one has started and that goes its own way; never another one that got its number later.
class StartedProcess {
 public:
  StartedProcess() = default;
  ~StartedProcess();
  StartedProcess(const StartedProcess&) = delete;
  StartedProcess& operator=(const StartedProcess&) = delete;

  // From now on this one.
  void Follow(qint64 process);
  bool Runs() const;
  // Asks it to end, as the system does at the end of a session.
  void AskToEnd() const;

 private:
  int handle_ = -1;
};

}  // namespace kestrum
