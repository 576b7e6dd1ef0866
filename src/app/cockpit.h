#pragma once

#include <chrono>
#include <optional>

#include "cat/rig_commands.h"
#include "logging/log_file.h"
#include "position/gps_links.h"
#include "signal/s_meter.h"
#include "signal/signal_history.h"
#include "ui/lamps.h"
#include "ui/sounds.h"

namespace kestrum {

// What a driver must know at a glance, in the main window and in the minimal display: gathers the facts, lets
// the lamps say them, and marks numbers that are no longer true. Brings the rig's port back when its device
// returns.
class Cockpit {
 public:
  // Whom it looks at.
  struct Floors {
    CatLink& link;
    const RigCommands& rig;
    SMeter& s_meter;
    GpsLinks& gps;
    LogFile& log;
    const CalibrationTable& table;
  };
  using OwnPorts = PortSet<SerialPort, Clock, Program>;

  Cockpit(const State& state, Forms& forms, const OwnPorts& ports, const Floors& floors);

  void Wire();
  // Once a second, and after whatever the lamps tell of.
  void Look();
  // Sound off, for trouble, for the signal too.
  void NextSound();

 private:
  void EverySecond();
  void ReadingTaken(const Reading& reading);
  void ReopenReturnedPort();
  void CheckLogFolder();
  void StartReaderAgain();
  GpsFacts Gps() const;
  RigFacts Rig() const;
  void ShowLamps();
  void ShowLogLamp();
  void ShowGpsLamp();
  void ShowRigLamp();
  void HearLamps();
  void ShowSound();
  void ShowPosition();
  void ShowSignal();
  void ShowChart(Milliseconds now);
  void ShowScale();

  const State& state_;
  Forms& forms_;
  OwnPorts ports_;
  Floors floors_;
  SignalHistory history_;
  std::int64_t chart_second_ = -1;  // the second that the chart ends with
  unsigned chart_changes_ = 0;      // of the history, as the chart shows it
  Sounds sounds_;
  int missed_readings_ = 0;
  int missed_fixes_ = 0;                    // looks in a row that found no true position
  std::optional<Milliseconds> heard_;       // when the rig answered last, or was asked first
  std::optional<unsigned> shown_revision_;  // of the table whose scale is shown
  int seconds_to_check_ = 0;                // until the log folder is looked at again
  std::string checked_path_;
};

}  // namespace kestrum
