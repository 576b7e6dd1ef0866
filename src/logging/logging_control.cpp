#include "logging/logging_control.h"

#include <algorithm>

#include "config/app_title.h"
#include "text/text.h"

namespace kestrum {

LoggingControl::LoggingControl(State& state, Form1& form, const PortSet<Dialogs, Program>& ports,
                               CatLink& link, RigCommands& rig, FrontPanel& panel, LogFile& log)
    : state_(state), form_(form), ports_(ports), link_(link), rig_(rig), panel_(panel), log_(log) {}

void LoggingControl::Wire() {
  form_.cmdLoggin.click = [this] { cmdLoggin_Click(); };
}

void LoggingControl::cmdLoggin_Click() {
  if (SameText(form_.cmdLoggin.caption, kLoggingOnCaption)) {
    Stop();
  } else if (SameText(form_.cmdLoggin.caption, kLoggingOffCaption)) {
    Start();
  }
}

void LoggingControl::Start() {
  if (state_.settings.RigModel == kFT817 && PowerIsOff(form_)) {
    ports_.dialogs.Show(AppTitle, "Switch FT817 first on", Icon::kInformation);
    return;
  }
  const auto modes = ModeButtons(form_);
  const bool mode_chosen =
      std::any_of(modes.begin(), modes.end(), [](const OptionButton* mode) { return mode->checked; });
  if (!mode_chosen) {
    ports_.dialogs.Show(AppTitle, "Set RX mode first", Icon::kInformation);
    return;
  }
  ReapplyLock();
  panel_.OptModeEnable(false);
  form_.cmdLoggin.caption = kLoggingOnCaption;
  form_.lblLog.tool_tip = log_.LogHeader();
  log_.ShowLoggingState(false);
}

void LoggingControl::Stop() {
  ReapplyLock();
  panel_.OptModeEnable(true);
  log_.FlushPending();
  if (ports_.program.Ended()) return;
  form_.lblLog.tool_tip = "The data for the logfile.";
  form_.cmdLoggin.caption = kLoggingOffCaption;
  log_.ShowLoggingState(true);
}

void LoggingControl::ReapplyLock() {
  if (IsPort(state_.settings.ComPort) && link_.IsOpen()) rig_.CatLock(state_.settings.DialLock);
}

}  // namespace kestrum
