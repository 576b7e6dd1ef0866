#pragma once

#include <array>
#include <string>

#include "config/settings.h"
#include "forms/forms.h"
#include "platform/ports.h"
#include "position/minimal_display.h"
#include "signal/calibration_table.h"

namespace kestrum {

// Records collect in a buffer of 100 and are appended to the log file in blocks, each headed by date, TX site
// and rig.
class LogFile {
 public:
  LogFile(State& state, Forms& forms, const Ports& ports, const CalibrationTable& table,
          MinimalDisplay& minimal);

  std::array<std::string, 101> LogBuffer;  // 0 holds the start stamp and is never written
  int LogCount = 0;                        // index of the last record, 0 when empty
  bool NotLogging = true;

  // "Start @" and date and time, kept at index 0 and shown in lblLog.
  void StampStart();
  // Stores and shows one record; a full buffer is flushed.
  void AddLogRecord();
  // Appends the buffer as one block when logging is on, then empties it either way. An empty name stands for
  // the default file. A fault is reported once and the records are lost.
  void FlushLog(const std::string& file_name);
  // FlushLog to LogFileName when there are records.
  void FlushPending();
  // Date and time, TX site, rig, mode and frequency, antenna.
  std::string LogHeader() const;
  // off: "Not logging now !", else "Data to " and the file name; the text is selected for copying.
  void ShowLoggingState(bool off);

  // Menu: asks for a new log file and flushes into it; nothing with an empty buffer.
  void mnuSaveLogfile_Click();

 private:
  void EmptyBuffer();
  void ShowCount();
  void ReportFault(const std::string& description, const std::string& file_name);

  State& state_;
  Forms& forms_;
  Ports ports_;
  const CalibrationTable& table_;
  MinimalDisplay& minimal_;
};

}  // namespace kestrum
