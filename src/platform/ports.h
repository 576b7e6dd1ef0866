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

// Under which name a port is found in a set of them.
template <typename Port>
struct PortSlot;
template <>
struct PortSlot<SerialPort> {
  SerialPort& serial;
};
template <>
struct PortSlot<TextLinks> {
  TextLinks& links;
};
template <>
struct PortSlot<Dialogs> {
  Dialogs& dialogs;
};
template <>
struct PortSlot<Clock> {
  Clock& clock;
};
template <>
struct PortSlot<EventPump> {
  EventPump& pump;
};
template <>
struct PortSlot<Beeper> {
  Beeper& beeper;
};
template <>
struct PortSlot<Program> {
  Program& program;
};
template <>
struct PortSlot<WindowLookup> {
  WindowLookup& windows;
};
template <>
struct PortSlot<FileStore> {
  FileStore& files;
};
template <>
struct PortSlot<Worker> {
  Worker& worker;
};

// The ports that somebody uses: what is not named here cannot be reached from there. Made of single ports, or
// out of a larger set.
template <typename... Port>
struct PortSet : PortSlot<Port>... {
  PortSet(Port&... port) : PortSlot<Port>{port}... {}
  template <typename... More>
  PortSet(const PortSet<More...>& more) : PortSlot<Port>(static_cast<const PortSlot<Port>&>(more))... {}
};

// The whole outside world, handed in by whoever builds the program. All of it is used on one thread, but for
// the files, which the worker's jobs use too.
using Ports = PortSet<SerialPort, TextLinks, Dialogs, Clock, EventPump, Beeper, Program, WindowLookup,
                      FileStore, Worker>;

}  // namespace kestrum
