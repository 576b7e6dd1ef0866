#pragma once

#include "app/cockpit.h"
#include "app/main_window.h"
#include "app/measurement_cycle.h"
#include "config/main_config.h"
#include "logging/log_file.h"
#include "logging/logging_control.h"
#include "logging/timing_window.h"
#include "position/minimal_display.h"
#include "position/tx_site.h"
#include "signal/calibration_editor.h"
#include "ui/info_window.h"

namespace kestrum {

// How the program was called.
struct StartOptions {
  bool start_logging = false;  // once started, as F3
  bool minimal = false;        // once started, as F5
  bool night = false;          // as F2
};

// The whole program: owns the state and the five forms and wires every handler. Whoever builds it binds the
// forms to real windows, then calls Start.
class Application {
 public:
  explicit Application(const Ports& ports);
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;

  Forms forms;
  State state;

  // Start-up sequence. Afterwards tmrMain drives the program, or the program has ended (second instance).
  void Start(const StartOptions& options);
  // Shutdown sequence; asks whether to switch a running FT817 off.
  void ExitApp();
  // The same without asking (the set stays on): signals and the end of the desktop session.
  void ExitWithoutAsking();

  const Ports& ports() const { return ports_; }

 private:
  void Wire();
  void InitApp();
  void ShowInitialTexts();
  void Shutdown(bool may_ask);
  void EndsWithoutShutdown();

  Ports ports_;

 public:
  MainConfig config;
  CatLink link;
  RigCommands rig;
  FrontPanel panel;
  CalibrationTable table;
  SMeter s_meter;
  CalibrationFiles calibration_files;
  CalibrationEditor editor;
  GpsLinks gps;
  GreatCircle circle;
  RxSite rx_site;
  TxSite tx_site;
  MinimalDisplay minimal;
  LogFile log;
  TimingWindow timing;
  LoggingControl logging;
  InfoWindow info;
  MeasurementCycle cycle;
  MainWindow main_window;
  Cockpit cockpit;

 private:
  bool reader_loaded_ = false;  // the links to the GPS reader are ours to end
  bool started_ = false;
  bool exiting_ = false;
  bool ends_without_shutdown_ = false;  // under the last boxes of DefaultConfig
};

}  // namespace kestrum
