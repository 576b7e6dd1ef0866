#pragma once

#include "config/settings.h"
#include "forms/form1.h"
#include "platform/ports.h"
#include "signal/s_meter.h"

namespace kestrum {

inline constexpr int kLowestIntervalMs = 10;  // of tmrMain

// How often is measured, and whether a record takes a mean: what the settings ask for is put into force, and
// the main window says it.
class Intervals {
 public:
  Intervals(State& state, Form1& form, const PortSet<Dialogs>& ports, SMeter& s_meter);

  // tmrMain's interval from the settings; a running timer starts anew with it.
  void ApplyInterval();
  // Averaging on or off as the settings ask, then the labels. Averaging that the interval is too short for is
  // switched off, and a message tells so.
  void ApplyAveraging();

 private:
  bool EndAveragingThatIsTooFast();
  void ShowLabels();

  State& state_;
  Form1& form_;
  PortSet<Dialogs> ports_;
  SMeter& s_meter_;
};

// A distance in km as the windows show it: "0.5", "2".
std::string KmText(float km);

}  // namespace kestrum
