#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

#include "common/fault.h"
#include "forms/indicators.h"
#include "platform/clock.h"

// What the three lamps say: pure functions of the facts. Nothing here knows a form, a file or a port.
namespace kestrum {

using Milliseconds = std::chrono::milliseconds;

// A reader gives a sign of life every 2 s; one that has been silent for this long stands still.
inline constexpr Milliseconds kReaderIsFrozen{5000};

// How the log is doing.
struct LogFacts {
  bool logging = false;
  int in_buffer = 0;          // records, 0 to 100
  std::uint64_t written = 0;  // records on the disk in this run
  std::optional<DateTime> last_written;
  std::uint64_t lost = 0;  // records since a block was written last
  std::optional<DateTime> lost_at;
  std::optional<Fault> journal_fault;  // why the waiting records are not safe
  std::optional<Fault> folder_fault;   // why the next block could not be written
};
LampText LogLamp(const LogFacts& log);

// How the position is doing.
struct GpsFacts {
  bool reader_present = false;
  std::optional<Milliseconds> silent_for;  // since the reader was heard last
  bool fix_is_valid = false;               // by what the reader said last
  std::optional<Milliseconds> fix_age;     // nothing when there has been no fix yet
};
bool ReaderIsFrozen(const GpsFacts& gps);
// Whether the position shown is where the car is now.
bool PositionIsTrue(const GpsFacts& gps);
LampText GpsLamp(const GpsFacts& gps);
// What stands over a dial that shows an old position: "14 s old".
std::string AgeBadge(const GpsFacts& gps);

// How the rig is doing.
struct RigFacts {
  bool port_chosen = false;
  bool port_is_open = false;
  bool device_is_gone = false;   // the port waits for its device
  std::optional<Fault> trouble;  // why the port is closed, the reason a sentence
  bool switched_off = false;     // the power button says so, and nothing is read
  int missed_readings = 0;       // in a row
  Milliseconds silent_for{0};    // since the rig was heard last, or asked first
  std::string outcome;           // of the last command: "Done", "Wrong CatCmd rx-ed!"
  std::string rig;               // "FT840"
  std::string port;              // "Com1=9k6"
};
// One missed reading happens; two in a row mean that the rig does not answer.
inline constexpr int kMissedReadings = 2;
bool SignalIsTrue(const RigFacts& rig);
LampText RigLamp(const RigFacts& rig);

}  // namespace kestrum
