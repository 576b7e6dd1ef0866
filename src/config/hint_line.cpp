#include "config/hint_line.h"

namespace kestrum {

void ShowHint(const State& state, Form1& form) {
  std::string& hint = form.lblHint.caption;
  if (state.measuring_stopped) {
    hint = state.settings.RigModel == kFT817
               ? "Not measuring: the FT817 is switched off. Its button or SetFrequency starts again."
               : "Not measuring since the FT817 was switched off. SetFrequency starts again.";
  } else if (state.waiting_for_fix) {
    hint = "Waiting for a GPS fix";
  } else if (state.recovered_records == 1) {
    hint = "1 record of the last drive recovered";
  } else if (state.recovered_records > 1) {
    hint = std::to_string(state.recovered_records) + " records of the last drive recovered";
  } else {
    hint.clear();
  }
}

void StartMeasuring(State& state, Form1& form) {
  form.tmrMain.Start();
  state.measuring_stopped = false;
  ShowHint(state, form);
}

}  // namespace kestrum
