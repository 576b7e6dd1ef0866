#include "app/application.h"

namespace kestrum {

Application::Application(const Ports& ports)
    : ports_(ports),
      config(state, forms.form1, ports),
      link(state, forms.form1, ports),
      rig(state, forms.form1, ports, link),
      panel(state, forms.form1, ports, link, rig),
      table(state, forms),
      s_meter(state, forms, rig, table),
      calibration_files(state, forms, ports, rig, panel, table),
      editor(state, forms, ports, table, calibration_files),
      gps(forms.form1, ports),
      rx_site(state, forms.form1, gps, circle),
      tx_site(state, forms.form1, ports, rx_site),
      minimal(state, forms, ports),
      log(state, forms, ports, minimal),
      timing(state, forms, ports, s_meter),
      logging(state, forms.form1, ports, link, rig, panel, log),
      info(state, forms, ports),
      cycle(state, forms, ports, s_meter, gps, rx_site, log, timing),
      main_window(*this),
      cockpit(*this) {
  Wire();
}

void Application::Wire() {
  forms.form1.tmrMain.tick = [this] {
    if (started_) cycle.MainCycle();
  };
  rig.on_reading = [this] { s_meter.ShowReading(); };
  s_meter.follow_reading = [this] { editor.FollowReading(); };
  rig.block_ends = [this] { log.EndBlock(); };
  tx_site.block_ends = [this] { log.EndBlock(); };
  tx_site.antenna_taken = [this] { log.AntennaTaken(); };
  panel.band_crossed = [this] { table.DefaultCalibration(false); };
  panel.frequency_applied = [this] { editor.Refresh(); };
  table.changed = [this] { editor.Refresh(); };
  config.ends_now = [this] { EndsWithoutShutdown(); };
  config.last_write = [this] { log.FinishWriting(); };
  panel.show_rig_text = [this](const std::string& text) { table.ShowStatusCaption(text, ""); };
  timing.distance_mode_chosen = [this] { cycle.ForgetReference(); };

  panel.Wire();
  s_meter.Wire();
  calibration_files.WireMainMenu();
  editor.Wire();
  tx_site.Wire();
  minimal.Wire();
  timing.Wire();
  logging.Wire();
  info.Wire();
  main_window.Wire();
  cockpit.Wire();
}

// The factory settings are on the disk, and nothing may follow them: no reading, no record, no second save.
void Application::EndsWithoutShutdown() {
  exiting_ = true;
  ends_without_shutdown_ = true;
  forms.form1.tmrMain.Stop();
  forms.form1.tmrAverageRSSI.Stop();
  forms.form1.tmrLamps.Stop();
}

void Application::ExitApp() {
  Shutdown(true);
}

void Application::ExitWithoutAsking() {
  ports_.dialogs.Dismiss();
  Shutdown(false);
}

}  // namespace kestrum
