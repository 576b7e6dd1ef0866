#pragma once

#include "platform/beeper.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/event_pump.h"
#include "platform/file_store.h"
#include "platform/program.h"
#include "platform/serial_port.h"
#include "platform/text_links.h"
#include "platform/window_lookup.h"
#include "platform/worker.h"

namespace kestrum {

// The outside world, handed in by whoever builds the program. All of it is used on one thread, but for
// the files, which the worker's jobs use too.
struct Ports {
  SerialPort& serial;
  TextLinks& links;
  Dialogs& dialogs;
  Clock& clock;
  EventPump& pump;
  Beeper& beeper;
  Program& program;
  WindowLookup& windows;
  FileStore& files;
  Worker& worker;
};

}  // namespace kestrum
