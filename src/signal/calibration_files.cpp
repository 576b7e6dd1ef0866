#include "signal/calibration_files.h"

#include <chrono>
#include <memory>

#include "cat/frequency_digits.h"
#include "cat/rig_text.h"
#include "config/app_title.h"
#include "text/number_text.h"
#include "text/text.h"

namespace kestrum {
namespace {

constexpr std::chrono::seconds kSavesFirst{2};

}  // namespace

CalibrationFiles::CalibrationFiles(State& state, Forms& forms, const OwnPorts& ports, RigCommands& rig,
                                   FrontPanel& panel, CalibrationTable& table)
    : state_(state), forms_(forms), ports_(ports), rig_(rig), panel_(panel), table_(table) {}

void CalibrationFiles::LoadS2Ftable(const std::string& path) {
  const Outcome loaded = ReadTable(path);
  if (ports_.program.Ended()) return;
  if (!loaded) {
    table_.Change();  // what was loaded up to it stays
    ports_.dialogs.Show(AppTitle, path + "LoadS2Ftable\r\n" + loaded.fault().reason, Icon::kExclamation);
    return;
  }
  table_.ShowStatusCaption("", path);
  table_.TidyCalibration();
}

Outcome CalibrationFiles::ReadTable(const std::string& path) {
  (void)ports_.worker.Finish(kSavesFirst);  // what was saved just now is what is loaded
  const Result<std::string> bytes = ports_.files.Read(ports_.program.PathOf(path), kLargestCalibration);
  if (!bytes) return bytes.fault();
  table_.ClearCalibration(false);
  const Result<CalibrationText> text = ReadCalibration(bytes.value());
  if (!text) return text.fault();
  Apply(text.value().header);
  if (ports_.program.Ended()) return Done{};
  table_.S2Ftable = text.value().rows;
  if (text.value().fault) return *text.value().fault;
  return Done{};
}

void CalibrationFiles::SaveS2Ftable(const std::string& path) {
  auto outcome = std::make_shared<Outcome>(Done{});
  const auto write = [&files = ports_.files, full_path = ports_.program.PathOf(path),
                      bytes = WriteCalibration(RigModeFreqText(""), table_.S2Ftable),
                      outcome] { *outcome = files.Replace(full_path, bytes); };
  ports_.worker.Post(write, [this, outcome, path] {
    if (*outcome) return;
    // It may come inside a cycle, which must not wait for an answer.
    ports_.dialogs.Notify(AppTitle, "SaveS2Ftable\r\n" + path + outcome->fault().reason, Icon::kExclamation);
  });
}

std::string CalibrationFiles::RigModeFreqText(const std::string& frequency) const {
  const Settings& settings = state_.settings;
  const std::string shown = frequency.empty() ? forms_.form1.txtFrequency.text : Trim(frequency);
  return RigModeText(settings.RigModel, settings.RigMode, shown);
}

bool CalibrationFiles::SetRigModeFreq(const std::string& header) {
  // Checked before anything is touched: the first line of some other file must not retune the rig.
  const Result<CalibrationHeader> read = ReadCalibrationHeader(header);
  if (read) Apply(read.value());
  return read.ok();
}

void CalibrationFiles::Apply(const CalibrationHeader& header) {
  Settings& settings = state_.settings;
  const int rig = header.rig_model.value_or(settings.RigModel);
  const bool new_mode = header.rig_mode.value_or(settings.RigMode) != settings.RigMode;
  const bool new_frequency = Val(header.frequency) != TypedKhz(forms_.form1.lblFreq.caption);
  if (rig != settings.RigModel || new_mode || new_frequency) Run(rig_.block_ends);
  if (rig != settings.RigModel) {
    settings.RigModel = rig;
    panel_.ShowRig();
    panel_.ShowPort();
    panel_.ShowRigText();
  }
  if (header.rig_mode) rig_.SetMode(*header.rig_mode);
  // Before tuning, so that the table being loaded is not taken for that of another band.
  state_.AboveHF = Val(header.frequency) > kHfLimitKhz;
  forms_.form1.txtFrequency.text = header.frequency + " kHz";
  forms_.form1.lblFreq.caption = header.frequency + " kHz";
  panel_.ApplyFrequency(header.frequency);
}

void CalibrationFiles::WireMainMenu() {
  Form1& form = forms_.form1;
  form.mnuDefaultCalibration.click = [this] { table_.DefaultCalibration(false); };
  form.mnuLoadConfig1.click = [this] { LoadS2Ftable(state_.settings.CalibrationFiles[0]); };
  form.mnuLoadConfig2.click = [this] { LoadS2Ftable(state_.settings.CalibrationFiles[1]); };
  form.mnuLoad.click = [this] { mnuLoad_Click(); };
}

void CalibrationFiles::mnuLoad_Click() {
  const std::string& third = state_.settings.CalibrationFiles[2];
  std::string path = ports_.dialogs.AskText(AppTitle, "Give file name Calibration to load", third);
  if (ports_.program.Ended()) return;
  // Kept on purpose: this entry always loads the remembered third file when the typed one exists; another
  // file is chosen in the calibration editor.
  if (!path.empty() && ports_.files.Exists(ports_.program.PathOf(path))) path = third;
  LoadS2Ftable(path);
}

}  // namespace kestrum
