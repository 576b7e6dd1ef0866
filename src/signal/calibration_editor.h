#pragma once

#include "signal/calibration_files.h"
#include "signal/s_meter.h"

namespace kestrum {

// The calibration editor, Form3: builds a table on the bench from live readings.
class CalibrationEditor {
 public:
  CalibrationEditor(State& state, Forms& forms, const Ports& ports, CalibrationTable& table,
                    CalibrationFiles& files);

  // Hangs the handlers on Form3's controls, and Load on form3.load.
  void Wire();
  // Builds the window's content and starts acquiring.
  void Load();
  // Opens the window (menu mnuCalibration of Form1).
  void Open();
  // Follows the live reading while acquiring; called on every reading.
  void FollowReading();

 private:
  State& state_;
  Forms& forms_;
  Ports ports_;
  CalibrationTable& table_;
  CalibrationFiles& files_;
};

}  // namespace kestrum
