#pragma once

#include "signal/calibration_editor.h"
#include "support/scripted_ports.h"

namespace kestrum::test {

// The signal floor on a bench: an FT840 on port 1, the table, the meter, the files and the editor, wired as
// in the program.
struct SignalBench {
  ScriptedPorts world;
  Forms forms;
  State state;
  CatLink link{state, forms.form1, world.ports()};
  RigCommands rig{state, forms.form1, world.ports(), link};
  FrontPanel panel{state, forms.form1, world.ports(), link, rig};
  CalibrationTable table{state, forms};
  SMeter meter{state, forms, rig, table};
  CalibrationFiles files{state, forms, world.ports(), rig, panel, table};
  CalibrationEditor editor{state, forms, world.ports(), table, files};
  int blocks_ended = 0;
  int bands_crossed = 0;

  SignalBench() {
    Settings& settings = state.settings;
    settings.RigModel = kFT840;
    settings.ComPort = 1;
    settings.BaudRate = 9600;
    settings.RigMode = kLsb;
    settings.FieldStrengthUnit = 2;
    settings.CalibrationFiles = {"/car/Calibration1.cfg", "/car/Calibration2.cfg", "/car/Calibration3.cfg"};
    forms.form1.txtFrequency.text = "3630 kHz";
    forms.form1.lblFreq.caption = " 3630 kHz";
    rig.on_reading = [this] { meter.ShowReading(); };
    meter.follow_reading = [this] { editor.FollowReading(); };
    rig.block_ends = [this] { ++blocks_ended; };
    panel.band_crossed = [this] {
      ++bands_crossed;
      table.DefaultCalibration(false);
    };
    panel.show_rig_text = [this](const std::string& text) { table.ShowStatusCaption(text, ""); };
    panel.Wire();
    meter.Wire();
    files.WireMainMenu();
    editor.Wire();
    link.OpenCatPort();
    panel.ShowRig();
    table.DefaultCalibration(false);
    world.serial.written.clear();
  }
  SignalBench(const SignalBench&) = delete;
  SignalBench& operator=(const SignalBench&) = delete;

  // A reading of the rig, as the measurement cycle and the averaging timer take it.
  void Read(int raw) {
    world.serial.replies.push_back(Bytes({raw, 0, 0, 0, 247}));
    rig.ReadRssi();
  }
  const std::string& StatusText() const { return forms.form1.lblStatusCaption.caption; }
};

}  // namespace kestrum::test
