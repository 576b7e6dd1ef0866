#include "app/application.h"

namespace kestrum {

Application::Application(const Ports& outside)
    : Parts(outside),
      main_window(state, forms, ports, {config, log, timing, editor, info}, [this] { ExitApp(); }),
      cockpit(state, forms, ports, {link, rig, s_meter, gps, log, table}) {
  forms.form1.tmrMain.tick = [this] {
    if (life_.started) cycle.MainCycle();
  };
  config.ends_now = [this] { EndWithoutShutDown(forms.form1, life_); };
  main_window.Wire();
  cockpit.Wire();
}

void Application::Start(const StartOptions& options) {
  StartUp(*this, main_window, life_, options);
  if (!life_.started) return;
  cockpit.Look();
  ApplyOptions(forms.form1, options);
}

void Application::ExitApp() {
  ShutDown(*this, life_, PowerQuestion::kAsked);
}

void Application::ExitWithoutAsking() {
  ports.dialogs.Dismiss();
  ShutDown(*this, life_, PowerQuestion::kNotAsked);
}

}  // namespace kestrum
