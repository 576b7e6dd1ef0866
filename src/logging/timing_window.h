#pragma once

#include "config/settings.h"
#include "forms/form4.h"
#include "logging/intervals.h"

namespace kestrum {

// The timing window, Form4.
class TimingWindow {
 public:
  TimingWindow(State& state, Form4& form, Intervals& intervals);

  // Set by the application: distance mode was chosen anew, so the reference position is no longer valid.
  Handler distance_mode_chosen;

  // Hangs the handlers on Form4's controls.
  void Wire();
  // Opens the window (menu mnuTiming of Form1).
  void Open();
  void cmdOk_Click();

 private:
  void ChooseTime();
  void ChooseDistance();
  void ShowType();

  State& state_;
  Form4& form_;
  Intervals& intervals_;
};

}  // namespace kestrum
