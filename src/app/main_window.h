#pragma once

#include "config/main_config.h"
#include "forms/forms.h"
#include "logging/log_file.h"
#include "logging/timing_window.h"
#include "signal/calibration_editor.h"
#include "ui/info_window.h"

namespace kestrum {

// Menus, keys and tool tips of the main window; each entry ends in the floor that does the work.
class MainWindow {
 public:
  // Whom its menus call.
  struct Floors {
    MainConfig& config;
    LogFile& log;
    TimingWindow& timing;
    CalibrationEditor& editor;
    InfoWindow& info;
  };
  using OwnPorts = PortSet<Dialogs, Program, FileStore>;

  // `exit` ends the program.
  MainWindow(State& state, Forms& forms, const OwnPorts& ports, const Floors& floors, Handler exit);

  void Wire();
  // Tool tips of start-up.
  void ShowToolTips();
  // The panel of raw GPS fields, by ShowDDE.
  void ShowDDEPanel();

 private:
  void WireFileMenu();
  void ShowMenuToolTips();
  bool KeyDown(Key key);
  void OpenInfo(int request);
  void mnuSHowDDE_Click();
  void Activate();

  State& state_;
  Forms& forms_;
  OwnPorts ports_;
  Floors floors_;
  Handler exit_;
};

}  // namespace kestrum
