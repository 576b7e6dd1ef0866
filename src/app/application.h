#pragma once

#include "app/cockpit.h"
#include "app/main_window.h"
#include "app/parts.h"
#include "app/shut_down.h"
#include "app/start_up.h"

namespace kestrum {

// The whole program. Whoever builds it binds the forms to real windows, then calls Start.
class Application : public Parts {
 public:
  explicit Application(const Ports& outside);

  // Start-up sequence. Afterwards tmrMain drives the program, or the program has ended (second instance).
  void Start(const StartOptions& options);
  // Shutdown sequence; asks whether to switch a running FT817 off.
  void ExitApp();
  // The same without asking (the set stays on): signals and the end of the desktop session.
  void ExitWithoutAsking();

  MainWindow main_window;
  Cockpit cockpit;

 private:
  Life life_;
};

}  // namespace kestrum
