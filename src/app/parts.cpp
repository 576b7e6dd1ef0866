#include "app/parts.h"

namespace kestrum {

Parts::Parts(const Ports& outside)
    : ports(outside),
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
      intervals(state, forms.form1, ports, s_meter),
      timing(state, forms.form4, intervals),
      logging(state, forms.form1, ports, link, rig, panel, log),
      info(state, forms, ports),
      cycle(state, forms, ports, s_meter, gps, rx_site, log, intervals) {
  WireToEachOther();
  WireControls();
}

void Parts::WireToEachOther() {
  rig.on_reading = [this] { s_meter.ShowReading(); };
  rig.block_ends = [this] { log.EndBlock(); };
  s_meter.follow_reading = [this] { editor.FollowReading(); };
  tx_site.block_ends = [this] { log.EndBlock(); };
  tx_site.antenna_taken = [this] { log.AntennaTaken(); };
  panel.band_crossed = [this] { table.DefaultCalibration(false); };
  panel.frequency_applied = [this] { editor.Refresh(); };
  panel.show_rig_text = [this](const std::string& text) { table.ShowStatusCaption(text, ""); };
  table.changed = [this] { editor.Refresh(); };
  config.last_write = [this] { log.FinishWriting(); };
  timing.distance_mode_chosen = [this] { cycle.ForgetReference(); };
}

void Parts::WireControls() {
  panel.Wire();
  s_meter.Wire();
  calibration_files.WireMainMenu();
  editor.Wire();
  tx_site.Wire();
  minimal.Wire();
  timing.Wire();
  logging.Wire();
  info.Wire();
}

}  // namespace kestrum
