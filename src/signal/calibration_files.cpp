#include "signal/calibration_files.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "cat/frequency_digits.h"
#include "cat/rig_text.h"
#include "cat/rigs.h"
#include "config/app_title.h"
#include "text/number_text.h"
#include "text/text.h"
#include "text/text_file.h"

namespace kestrum {
namespace {

constexpr std::uint64_t kLargestFile = 1 << 20;
constexpr std::size_t kLongestCell = 64;
constexpr std::string_view kSeparator = ", ";

constexpr const char* kNoFrequency = "The first line holds no frequency";
constexpr const char* kEndOfFile = "Input past end of file";
constexpr const char* kMissingField = "A line holds fewer than three fields";
constexpr const char* kLongField = "A line holds a field of more than 64 characters";

std::vector<std::string> SplitAt(std::string_view text, std::string_view separator) {
  std::vector<std::string> fields;
  auto end = text.find(separator);
  while (end != std::string_view::npos) {
    fields.emplace_back(text.substr(0, end));
    text.remove_prefix(end + separator.size());
    end = text.find(separator);
  }
  fields.emplace_back(text);
  return fields;
}

std::optional<int> ModeOf(const std::string& name) {
  static const std::array<std::string, 7> kNames = {"USB", "LSB", "CW", "CWN", "AM", "AMN", "FM"};
  const auto found =
      std::find_if(kNames.begin(), kNames.end(), [&](const auto& mode) { return SameText(name, mode); });
  if (found == kNames.end()) return {};
  return static_cast<int>(found - kNames.begin()) + 1;
}

// The third field; the next one that holds something where the frequency box held leading blanks. The box may
// have held a typed comma. Only a value above 0 is a frequency.
std::string FrequencyOf(const std::vector<std::string>& fields) {
  const auto filled = [](const std::string& field) { return !field.empty(); };
  if (fields.size() < 3) return {};
  const auto found = std::find_if(fields.begin() + 2, fields.end(), filled);
  if (found == fields.end() || found->size() > kLongestCell) return {};
  std::string frequency = Replace(*found, ',', '.');
  return Val(frequency) > 0 ? frequency : std::string();
}

// Puts a line's cells into a row; what is wrong with the line, or nothing. Cells that are there are kept.
FileFault ReadRow(const std::string& line, TableRow& row) {
  const auto cells = SplitAt(line, kSeparator);
  std::array<std::string*, 3> places = {&row.s, &row.microvolt, &row.millivolt_per_metre};
  const std::size_t count = std::min(cells.size(), places.size());
  for (std::size_t column = 0; column < count; ++column) {
    if (cells[column].size() > kLongestCell) return kLongField;
    *places[column] = Trim(cells[column]);
  }
  return count == places.size() ? FileFault() : kMissingField;
}

}  // namespace

CalibrationFiles::CalibrationFiles(State& state, Forms& forms, const Ports& ports, RigCommands& rig,
                                   FrontPanel& panel, CalibrationTable& table)
    : state_(state), forms_(forms), ports_(ports), rig_(rig), panel_(panel), table_(table) {}

void CalibrationFiles::LoadS2Ftable(const std::string& path) {
  const FileFault fault = ReadTable(path);
  if (ports_.program.Ended()) return;
  if (fault) {
    ports_.dialogs.Show(AppTitle, path + "LoadS2Ftable\r\n" + *fault, Icon::kExclamation);
    return;
  }
  table_.ShowStatusCaption("", path);
  table_.TidyCalibration();
}

FileFault CalibrationFiles::ReadTable(const std::string& path) {
  std::string bytes;
  if (FileFault fault = ports_.files.Read(ports_.program.PathOf(path), bytes, kLargestFile)) return fault;
  table_.ClearCalibration(false);
  const auto lines = SplitLines(WithoutUtf8Mark(bytes));
  if (lines.empty()) return kEndOfFile;
  if (!SetRigModeFreq(lines.front())) return kNoFrequency;
  if (ports_.program.Ended()) return {};
  for (std::size_t row = 0; row < kMeterRows; ++row) {
    const std::size_t line = row + 1;
    if (line >= lines.size()) return kEndOfFile;
    if (FileFault fault = ReadRow(lines[line], table_.S2Ftable[row])) return fault;
  }
  return {};
}

void CalibrationFiles::SaveS2Ftable(const std::string& path) {
  std::vector<std::string> lines = {RigModeFreqText("")};
  for (std::size_t row = 0; row < kMeterRows; ++row) {
    const TableRow& cells = table_.S2Ftable[row];
    lines.push_back(cells.s + ", " + cells.microvolt + ", " + cells.millivolt_per_metre);
  }
  if (const FileFault fault = ports_.files.Replace(ports_.program.PathOf(path), JoinLines(lines))) {
    ports_.dialogs.Show(AppTitle, "SaveS2Ftable\r\n" + path + *fault, Icon::kExclamation);
  }
}

std::string CalibrationFiles::RigModeFreqText(const std::string& frequency) const {
  const Settings& settings = state_.settings;
  const std::string shown = frequency.empty() ? forms_.form1.txtFrequency.text : Trim(frequency);
  return RigModeText(settings.RigModel, settings.RigMode, shown);
}

bool CalibrationFiles::SetRigModeFreq(const std::string& header) {
  const auto fields = SplitAt(Trim(header), " ");
  const std::string frequency = FrequencyOf(fields);
  // Checked before anything is touched: the first line of some other file must not retune the rig.
  if (frequency.empty()) return false;

  Settings& settings = state_.settings;
  const int rig = RigNumber(fields[0]).value_or(settings.RigModel);
  const int mode = ModeOf(fields[1]).value_or(0);
  const bool new_mode = mode != 0 && mode != settings.RigMode;
  const bool new_frequency = Val(frequency) != TypedKhz(forms_.form1.lblFreq.caption);
  if (rig != settings.RigModel || new_mode || new_frequency) Run(rig_.block_ends);
  if (rig != settings.RigModel) {
    settings.RigModel = rig;
    panel_.ShowRig();
    panel_.ShowPort();
    panel_.ShowRigText();
  }
  if (mode != 0) rig_.SetMode(mode);
  // Before tuning, so that the table being loaded is not taken for that of another band.
  state_.AboveHF = Val(frequency) > kHfLimitKhz;
  forms_.form1.txtFrequency.text = frequency + " kHz";
  forms_.form1.lblFreq.caption = frequency + " kHz";
  panel_.ApplyFrequency(frequency);
  return true;
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
