#pragma once

#include <cstdint>
#include <functional>

#include "cat/rig_commands.h"
#include "signal/calibration_table.h"
#include "signal/reading.h"

namespace kestrum {

// Shows each reading and, on request, replaces single readings by an average gated by the squelch.
class SMeter {
 public:
  SMeter(State& state, Forms& forms, RigCommands& rig, CalibrationTable& table);

  // Set by the application: the calibration editor follows the reading.
  Handler follow_reading;
  // Set by the application: the set has been asked, and this came.
  std::function<void(const Reading&)> reading_taken;

  // Hangs the handlers on the controls: unit click, averaging menu, squelch, bars, averaging timer.
  void Wire();

  // What ReadRssi calls: the bars' tool tip, then ShowRSSIStype.
  void ShowReading();
  // Converts RssiRaw and shows bar, S text and field strength.
  void ShowRSSIStype();
  // A fresh reading of the rig, shown as the latest.
  Reading ReadNow();
  // The averaged value in its place, shown too; the collection starts anew.
  Reading TakeAverage();
  // What a reading taken now is measured on.
  MeasuredOn On() const;

  // Adds a sample to the average, or empties it. A sample measured on something else than those before starts
  // anew.
  void AverageRSSIValue(int raw, bool reset);
  // The two deeds of it.
  void AddSample(int raw);
  void StartAverage();
  // Raw value, 0 to 255; 0 when nothing has been collected.
  std::int16_t AveragedRssi() const { return averaged_; }

  // Squelch slider, bar style and tool tips at start-up.
  void ShowAtStart();
  // The averaging timer runs, or stands still, as the settings ask.
  void RunAveraging();
  // Slider and bar place that go with averaging on or off.
  void ShowAveraging();

  void lblFieldStrenght_Click();
  void tmrAverageRSSI_Timer();

 private:
  void ShowFieldStrength();

  State& state_;
  Forms& forms_;
  RigCommands& rig_;
  CalibrationTable& table_;
  std::int32_t count_ = 0;
  float sum_ = 0;
  std::int16_t averaged_ = 0;
  MeasuredOn collected_on_;
  int unit_clicks_ = 0;
};

}  // namespace kestrum
