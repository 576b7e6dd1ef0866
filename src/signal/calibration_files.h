#pragma once

#include <string>

#include "cat/front_panel.h"
#include "signal/calibration_table.h"
#include "signal/calibration_text.h"

namespace kestrum {

// Calibration files: a header with rig, mode and frequency, then rows 0 to 255 of the table.
class CalibrationFiles {
 public:
  using OwnPorts = PortSet<Dialogs, Program, FileStore, Worker>;

  CalibrationFiles(State& state, Forms& forms, const OwnPorts& ports, RigCommands& rig, FrontPanel& panel,
                   CalibrationTable& table);

  // Replaces the table and puts the rig back to what the header says. Every fault is told in a message box;
  // what was loaded up to it stays.
  void LoadS2Ftable(const std::string& path);
  // Beside the window thread.
  void SaveS2Ftable(const std::string& path);
  // Rig, mode and frequency text; an empty argument takes the frequency box.
  std::string RigModeFreqText(const std::string& frequency) const;
  // Selects the rig, sends the mode and tunes. False, with nothing changed, when the header holds no
  // frequency.
  bool SetRigModeFreq(const std::string& header);

  // Form1's four calibration entries.
  void WireMainMenu();
  void mnuLoad_Click();

 private:
  // The file's content into table and rig.
  Outcome ReadTable(const std::string& path);
  void Apply(const CalibrationHeader& header);

  State& state_;
  Forms& forms_;
  OwnPorts ports_;
  RigCommands& rig_;
  FrontPanel& panel_;
  CalibrationTable& table_;
};

}  // namespace kestrum
