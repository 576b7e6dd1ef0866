#pragma once

#include "app/measurement_cycle.h"
#include "config/main_config.h"
#include "logging/intervals.h"
#include "logging/log_file.h"
#include "logging/logging_control.h"
#include "logging/timing_window.h"
#include "position/tx_site.h"
#include "signal/calibration_editor.h"
#include "ui/info_window.h"
#include "ui/minimal_display.h"

namespace kestrum {

// The state, the five forms and every floor that works on them, wired to each other. Nothing here runs by
// itself.
struct Parts {
  explicit Parts(const Ports& outside);
  Parts(const Parts&) = delete;
  Parts& operator=(const Parts&) = delete;

  Ports ports;
  Forms forms;
  State state;

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
  Intervals intervals;
  TimingWindow timing;
  LoggingControl logging;
  InfoWindow info;
  MeasurementCycle cycle;

 private:
  void WireToEachOther();
  void WireControls();
};

}  // namespace kestrum
