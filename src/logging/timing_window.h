#pragma once

#include "config/settings.h"
#include "forms/forms.h"
#include "platform/ports.h"
#include "signal/s_meter.h"

namespace kestrum {

// The timing window, Form4, and the timing labels of the main window.
class TimingWindow {
 public:
  TimingWindow(State& state, Forms& forms, const Ports& ports, SMeter& s_meter);

  // Set by the application: distance mode was chosen anew, so the reference position is no longer valid.
  Handler distance_mode_chosen;

  // Hangs the handlers on Form4's controls.
  void Wire();
  // Opens the window (menu mnuTiming of Form1).
  void Open();
  // Interval of tmrMain: 1100 ms in distance mode, else TimeIntervalMs.
  void ApplyInterval();
  // Averaging check, status panels, interval label and heading, tool tip of lblPrompt.
  void ShowTimingLabels();
  void cmdOk_Click();

 private:
  void ChooseType(bool by_distance);

  State& state_;
  Forms& forms_;
  Ports ports_;
  SMeter& s_meter_;
};

}  // namespace kestrum
