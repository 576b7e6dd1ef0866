#pragma once

#include <string>
#include <vector>

#include "cat/front_panel.h"
#include "support/scripted_ports.h"

namespace kestrum::test {

// A rig panel on a scripted serial line; the port is closed at first.
struct RigBench {
  ScriptedPorts outside;
  State state;
  Form1 form;
  Ports ports = outside.ports();
  CatLink link{state, form, ports};
  RigCommands rig{state, form, ports, link};
  FrontPanel panel{state, form, ports, link, rig};

  explicit RigBench(int rig_model = kFT817) {
    state.settings.RigModel = rig_model;
    state.settings.ComPort = 1;
    state.settings.BaudRate = 9600;
    state.settings.RigMode = kLsb;
    state.settings.KHzStep = 9;
    form.optLsb.checked = true;
    form.lblFreq.caption = " 3630 kHz";
    form.txtFrequency.text = " 3630 kHz";
  }

  // The port is opened and what that left behind forgotten.
  void Connect() {
    link.OpenCatPort();
    Forget();
  }
  void Forget() {
    outside.serial.events.clear();
    outside.serial.written.clear();
    outside.clock.sleeps_ms.clear();
    form.lblCatCmd.caption = "Cmd=";
    form.lblCatComment.caption = "Comment";
  }
  void PowerButtonSays(const std::string& caption) { form.cmdFT817OnOff.caption = caption; }

  const std::vector<std::string>& Written() const { return outside.serial.written; }
  const std::string& Echo() const { return form.lblCatCmd.caption; }
  const std::string& Comment() const { return form.lblCatComment.caption; }
};

using Texts = std::vector<std::string>;
using Numbers = std::vector<int>;

}  // namespace kestrum::test
