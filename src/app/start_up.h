#pragma once

#include "app/life.h"
#include "app/main_window.h"
#include "app/parts.h"

namespace kestrum {

// How the program was called.
struct StartOptions {
  bool start_logging = false;  // once started, as F3
  bool minimal = false;        // once started, as F5
  bool night = false;          // as F2
};

// The start-up sequence up to the running timers; `life.started` tells whether it came there.
void StartUp(Parts& parts, MainWindow& main_window, Life& life, const StartOptions& options);

// Logging and the minimal display, once the program is up.
void ApplyOptions(Form1& form, const StartOptions& options);

}  // namespace kestrum
