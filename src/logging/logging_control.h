#pragma once

#include "cat/front_panel.h"
#include "logging/log_file.h"

namespace kestrum {

// Button cmdLoggin and key F3: starts and stops logging. The button's caption is the state.
class LoggingControl {
 public:
  LoggingControl(State& state, Form1& form, const PortSet<Dialogs, Program>& ports, CatLink& link,
                 RigCommands& rig, FrontPanel& panel, LogFile& log);

  void Wire();
  void cmdLoggin_Click();

 private:
  void Start();
  void Stop();
  void ReapplyLock();

  State& state_;
  Form1& form_;
  PortSet<Dialogs, Program> ports_;
  CatLink& link_;
  RigCommands& rig_;
  FrontPanel& panel_;
  LogFile& log_;
};

}  // namespace kestrum
