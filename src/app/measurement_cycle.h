#pragma once

#include "config/settings.h"
#include "forms/forms.h"
#include "logging/intervals.h"
#include "logging/log_file.h"
#include "platform/ports.h"
#include "position/rx_site.h"
#include "signal/s_meter.h"

namespace kestrum {

// The heartbeat: each tick of tmrMain runs one measurement cycle.
class MeasurementCycle {
 public:
  MeasurementCycle(State& state, Forms& forms, const PortSet<Clock, EventPump, Beeper, Program>& ports,
                   SMeter& s_meter, GpsLinks& gps, RxSite& rx_site, LogFile& log, Intervals& intervals);

  // One cycle. A tick that comes while a cycle waits is ignored: cycles never nest.
  void MainCycle();
  // Beep (when asked for) and the next spinner character.
  void CycleIndicator();
  // The next distance cycle takes a new reference position.
  void ForgetReference() { reference_valid_ = false; }
  bool ReferenceValid() const { return reference_valid_; }

 private:
  void ApplyAverageRequest();
  Reading TakeReading();
  void MeasureByTime();
  void MeasureByDistance();
  void TakeReference();
  // Makes the record of a reading and the position now, and adds it to the log.
  void Record(const Reading& reading);

  State& state_;
  Forms& forms_;
  PortSet<Clock, EventPump, Beeper, Program> ports_;
  SMeter& s_meter_;
  GpsLinks& gps_;
  RxSite& rx_site_;
  LogFile& log_;
  Intervals& intervals_;
  bool running_ = false;
  bool reference_valid_ = false;
  int spinner_ = 0;  // 0 to 3
};

}  // namespace kestrum
