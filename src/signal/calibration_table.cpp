#include "signal/calibration_table.h"

namespace kestrum {

CalibrationTable::CalibrationTable(const State& state, Forms& forms) : state_(state), forms_(forms) {}

void CalibrationTable::Change() {
  ++revision_;
  Run(changed);
}

void CalibrationTable::ClearCalibration(bool from_editor) {
  Form3& editor = forms_.form3;
  if (!from_editor && !editor.loaded) Run(editor.load);
  S2Ftable = {};
  ShowStatusCaption("", "Calibration cleared.");
  Change();
}

void CalibrationTable::DefaultCalibration(bool from_editor) {
  ClearCalibration(from_editor);
  S2Ftable = DefaultTable(band());
  ShowStatusCaption("", "Default Calibration Table");
  Change();
}

void CalibrationTable::TidyCalibration() {
  Tidy(S2Ftable);
  Change();
}

void CalibrationTable::ConvertRSSI(int raw) {
  S2Ftable[kCurrentRow] = ConvertRaw(S2Ftable, raw, band());
}

void CalibrationTable::ShowStatusCaption(const std::string& rig_text, const std::string& description) {
  if (!rig_text.empty()) rig_text_ = rig_text;
  if (!description.empty()) description_ = description;
  forms_.form1.lblStatusCaption.caption = rig_text_ + "  " + description_;
}

}  // namespace kestrum
