#include "app/measurement_cycle.h"

#include <array>

#include "config/hint_line.h"

namespace kestrum {
namespace {

// How long one turn of the wait for the first fix may take: the window stays alive, the processor idle.
constexpr std::chrono::milliseconds kFixWait{100};

}  // namespace

MeasurementCycle::MeasurementCycle(State& state, Forms& forms,
                                   const PortSet<Clock, EventPump, Beeper, Program>& ports, SMeter& s_meter,
                                   GpsLinks& gps, RxSite& rx_site, LogFile& log, Intervals& intervals)
    : state_(state),
      forms_(forms),
      ports_(ports),
      s_meter_(s_meter),
      gps_(gps),
      rx_site_(rx_site),
      log_(log),
      intervals_(intervals) {}

void MeasurementCycle::MainCycle() {
  if (running_ || ports_.program.Ended()) return;
  running_ = true;
  Timer& timer = forms_.form1.tmrMain;
  timer.Stop();
  const unsigned own_stop = timer.stops;
  CycleIndicator();
  ApplyAverageRequest();
  if (!ports_.program.Ended()) {
    if (state_.settings.LogByDistance) {
      MeasureByDistance();
    } else {
      MeasureByTime();
    }
  }
  running_ = false;
  // A handler that ran inside the cycle may have stopped the timer for good, e.g. by switching the set off.
  const bool stopped_by_others = timer.stops != own_stop && !timer.enabled;
  if (!ports_.program.Ended() && !stopped_by_others) timer.Start();
}

void MeasurementCycle::CycleIndicator() {
  constexpr std::array<const char*, 4> kCharacters = {"/", "-", "\\", "-"};
  if (forms_.form1.chkBeep.checked) ports_.beeper.Beep();
  const std::string character = kCharacters.at(static_cast<std::size_t>(spinner_));
  spinner_ = (spinner_ + 1) % 4;
  forms_.form1.lblPrompt.caption = " " + character;
  if (forms_.form1.mnuMinimalDisplay.checked && forms_.form5.visible) {
    forms_.form5.Command1.caption = "&Main(F5) (" + character + ")";
  }
}

void MeasurementCycle::ApplyAverageRequest() {
  if (!state_.AverageRequest) return;
  bool& average = state_.settings.AverageRSSI;
  average = !average;
  forms_.form1.mnuAverageRSSI.checked = average;
  if (average) s_meter_.StartAverage();
  intervals_.ApplyAveraging();
  state_.AverageRequest = false;
  ports_.pump.Pump();
}

Reading MeasurementCycle::TakeReading() {
  return state_.settings.AverageRSSI ? s_meter_.TakeAverage() : s_meter_.ReadNow();
}

void MeasurementCycle::MeasureByTime() {
  Reading reading = TakeReading();
  ports_.pump.Pump();
  if (ports_.program.Ended()) return;
  // Whatever has changed rig, mode, frequency or table meanwhile: this reading belongs to none of the blocks.
  if (reading.on != s_meter_.On()) reading = TakeReading();
  gps_.GetAllDDE();
  Record(reading);
}

void MeasurementCycle::MeasureByDistance() {
  if (!reference_valid_) {
    TakeReference();
    return;
  }
  const bool valid = gps_.GetGPSdataStartLast();
  gps_.ShowFixAge();
  if (!valid || rx_site_.DistanceFromReference() < state_.settings.DistanceIntervalKm) return;
  Record(TakeReading());
  if (reference_valid_) rx_site_.MoveReference();
}

void MeasurementCycle::TakeReference() {
  state_.waiting_for_fix = true;
  do {
    reference_valid_ = gps_.GetGPSdataStartLast();
    gps_.ShowFixAge();
    CycleIndicator();
    state_.waiting_for_fix = !reference_valid_;
    ShowHint(state_, forms_.form1);
    if (reference_valid_) {
      ports_.pump.Pump();
    } else {
      ports_.pump.PumpFor(kFixWait);
    }
    if (ports_.program.Ended()) return;
  } while (!reference_valid_);
  rx_site_.CalcPosABStart();
  Record(TakeReading());
}

void MeasurementCycle::Record(const Reading& reading) {
  const Site site = rx_site_.SetGPSdata();
  gps_.ShowFixAge();
  log_.AddLogRecord(ports_.clock.Now(), site, reading);
}

}  // namespace kestrum
