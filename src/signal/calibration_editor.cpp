#include "signal/calibration_editor.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "config/app_title.h"
#include "text/number_text.h"
#include "text/text.h"

namespace kestrum {
namespace {

constexpr int kLastPoint = 15;
const std::string kOutOfRange = "Not stored: type a value above 0 and up to 50000 uV.";
constexpr double kHighestMicrovolt = 50000;

std::string DigitsAndPoints(std::string_view text) {
  std::string kept;
  std::copy_if(text.begin(), text.end(), std::back_inserter(kept),
               [](char c) { return (c >= '0' && c <= '9') || c == '.'; });
  return kept;
}

std::string ListLine(std::size_t row, const TableRow& cells) {
  return "\r\n" + std::to_string(row) + "   " + cells.s + "  " + cells.microvolt + " uV";
}

void ShowToolTips(Form3& form) {
  form.sldIndex.tool_tip = "Scroll through the index numbers.";
  form.txtEdit.tool_tip = "Type the signal input in uV here but not default S-values !";
  form.lblCalFrequency.tool_tip = "Frequency of the Rx.";
  form.lblSraw.tool_tip = "RSSI-value raw digital value 0-255.";
  form.lblRecNbr.tool_tip = "Record number of calibration table.";
  form.lblAllS2F.tool_tip = "Complete structure with values from calibration table.";
  form.lblSSelect.tool_tip = "S meter value to store.";
  form.Label1.tool_tip = "Default standard example values.";
  form.Label2.tool_tip = "Default calibration values now in memory.";
  form.Label3.tool_tip = "Other non default calibration values in memory.";
  form.cmdSup.tool_tip = "S-point up.";
  form.cmdSdown.tool_tip = "S-point down.";
  form.cmdSave.tool_tip = "Save this Calibration to file... ";
  form.cmdStop.tool_tip = "Stop or Run Aquire Cat RSSI-value.";
  form.cmduVStore.tool_tip = "<<Store uV now in memory.";
  form.cmdSstore.tool_tip = "<<Store S and uV now in memory.";
}

}  // namespace

CalibrationEditor::CalibrationEditor(State& state, Forms& forms,
                                     const PortSet<Dialogs, Beeper, Program, FileStore>& ports,
                                     CalibrationTable& table, CalibrationFiles& files)
    : state_(state), forms_(forms), ports_(ports), table_(table), files_(files) {}

void CalibrationEditor::Wire() {
  Form3& form = forms_.form3;
  form.load = [this] { Load(); };
  form.close = [this] { Close(); };
  // The main window may have loaded another table or changed the band meanwhile.
  form.activate = [this] { Refresh(); };
  form.sldIndex.change = [this] {
    forms_.form3.lblRecNbr.caption = ThreeDigits(forms_.form3.sldIndex.value);
    ShowRecord(SelectedRow());
  };
  WireButtons();
  WireMenus();
}

void CalibrationEditor::WireButtons() {
  Form3& form = forms_.form3;
  form.cmdSup.click = [this] { SelectPoint(forms_.form3.selected_point + 1); };
  form.cmdSdown.click = [this] { SelectPoint(forms_.form3.selected_point - 1); };
  form.cmdSstore.click = [this] { cmdSstore_Click(); };
  form.cmduVStore.click = [this] { cmduVStore_Click(); };
  form.cmdStop.click = [this] { SetAcquiring(!acquiring_); };
  form.cmdSave.click = [this] { mnuSaveAs_Click(); };
}

void CalibrationEditor::WireMenus() {
  Form3& form = forms_.form3;
  form.mnuClearCalibration.click = [this] {
    table_.ClearCalibration(true);
    Refresh();
  };
  form.mnuDefaultCalibration.click = [this] {
    table_.ClearCalibration(false);
    table_.DefaultCalibration(true);
    Refresh();
  };
  form.mnuLoadConf1.click = [this] { LoadFile(state_.settings.CalibrationFiles[0]); };
  form.mnuLoadConf2.click = [this] { LoadFile(state_.settings.CalibrationFiles[1]); };
  form.mnuLoad.click = [this] { mnuLoad_Click(); };
  form.mnuSave1.click = [this] { files_.SaveS2Ftable(state_.settings.CalibrationFiles[0]); };
  form.mnuSave2.click = [this] { files_.SaveS2Ftable(state_.settings.CalibrationFiles[1]); };
  form.mnuSaveAs.click = [this] { mnuSaveAs_Click(); };
  form.mnuAbout.click = [this] {
    ports_.dialogs.Show(AppTitle, "Fieldstrenght logger calibration.", Icon::kInformation);
  };
}

void CalibrationEditor::Load() {
  Form3& form = forms_.form3;
  form.loaded = true;
  form.caption = AppTitle;
  ShowToolTips(form);
  form.txtEdit.text = "60";
  Note("");
  form.lblSraw.caption = ThreeDigits(0);
  form.sldIndex.value = 0;
  form.lblRecNbr.caption = ThreeDigits(0);
  SelectPoint(0);
  Refresh();
  SetAcquiring(true);
}

void CalibrationEditor::Open() {
  Form3& form = forms_.form3;
  if (!form.loaded) Load();
  Refresh();
  form.Show();
}

void CalibrationEditor::Close() {
  forms_.form3.visible = false;
  forms_.form3.loaded = false;
}

void CalibrationEditor::FollowReading() {
  if (!acquiring_) return;
  Form3& form = forms_.form3;
  form.lblSraw.caption = ThreeDigits(state_.RssiRaw);
  form.lblCalFrequency.caption = forms_.form1.lblFreq.caption;
  form.sldIndex.SetValue(std::clamp<int>(state_.RssiRaw, form.sldIndex.minimum, form.sldIndex.maximum));
}

void CalibrationEditor::SetAcquiring(bool acquiring) {
  Form3& form = forms_.form3;
  acquiring_ = acquiring;
  form.cmdStop.caption = acquiring ? "Stop &RSSI" : "Get &RSSI";
  form.lblSraw.back_color = acquiring ? Color::kBlue : Color::kRed;
}

void CalibrationEditor::SelectPoint(int index) {
  Form3& form = forms_.form3;
  form.selected_point = std::clamp(index, 0, kLastPoint);
  const auto point = static_cast<std::size_t>(form.selected_point);
  form.lblSSelect.caption = DefaultPoints(table_.band())[point].cells.s;
}

void CalibrationEditor::Refresh() {
  if (!forms_.form3.loaded) return;
  forms_.form3.lblCalFrequency.caption = forms_.form1.lblFreq.caption;
  ShowDefaultList();
  ShowTableLists();
  ShowRecord(SelectedRow());
}

void CalibrationEditor::ShowDefaultList() {
  std::string& list = forms_.form3.Label1.caption;
  list = "Default values\r\n-----------------------";
  for (const auto& point : DefaultPoints(table_.band())) list += ListLine(point.row, point.cells);
}

void CalibrationEditor::ShowTableLists() {
  Form3& form = forms_.form3;
  std::string points = "Table values\r\n-----------------------";
  std::string others = "Other values\r\n--------------------";
  for (std::size_t row = 0; row < kMeterRows; ++row) {
    const TableRow& cells = table_.S2Ftable[row];
    if (!cells.s.empty()) {
      points += ListLine(row, cells);
    } else if (!cells.microvolt.empty()) {
      others += ListLine(row, cells);
    }
  }
  // Either label shows all that is in memory: a table of the default points has no other values.
  form.Label2.caption = points;
  form.Label3.caption = points + "\r\n\r\n" + others;
  form.Label2.visible = HoldsDefaultPoints();
  form.Label3.visible = !form.Label2.visible;
}

void CalibrationEditor::ShowRecord(std::size_t row) {
  const TableRow& cells = table_.S2Ftable[row];
  forms_.form3.lblAllS2F.caption = ThreeDigits(static_cast<int>(row)) + ">>   " + cells.s + ", " +
                                   cells.microvolt + " uV" + ", " + cells.millivolt_per_metre + " mV/m";
}

// What lblRecNbr shows: it always follows the slider.
std::size_t CalibrationEditor::SelectedRow() const {
  return static_cast<std::size_t>(std::clamp(RoundToInt(Val(forms_.form3.lblRecNbr.caption)), 0, 255));
}

bool CalibrationEditor::HoldsDefaultPoints() const {
  const S2FtableRows defaults = DefaultTable(table_.band());
  return std::equal(defaults.begin(), defaults.begin() + kMeterRows, table_.S2Ftable.begin());
}

void CalibrationEditor::cmdSstore_Click() {
  const auto point = static_cast<std::size_t>(forms_.form3.selected_point);
  Store(DefaultPoints(table_.band())[point].cells.microvolt);
}

void CalibrationEditor::cmduVStore_Click() {
  TextBox& edit = forms_.form3.txtEdit;
  const std::string microvolt = DigitsAndPoints(edit.text);
  const auto points = DefaultPoints(table_.band());
  const bool standard = std::any_of(points.begin(), points.end(), [&](const DefaultPoint& point) {
    return Val(point.cells.microvolt) == Val(microvolt);
  });
  if (standard) {
    ports_.beeper.Beep();
    edit.text.clear();
    Note(microvolt.empty() ? kOutOfRange
                           : "Not stored: " + microvolt +
                                 " uV is a standard value. Choose its S point and press S-uV Store.");
    return;
  }
  edit.text = microvolt;
  edit.SelectAll();
  Store(microvolt);
}

void CalibrationEditor::Store(const std::string& microvolt) {
  const double value = Val(microvolt);
  if (value <= 0 || value > kHighestMicrovolt) {
    Note(kOutOfRange);
    return;
  }
  ports_.beeper.Beep();

  const std::size_t row =
      acquiring_ ? static_cast<std::size_t>(std::clamp<int>(state_.RssiRaw, 0, 255)) : SelectedRow();
  const bool had_duplicate = DropDuplicate(microvolt);
  const auto points = DefaultPoints(table_.band());
  const auto standard = std::find_if(points.begin(), points.end(), [&](const DefaultPoint& point) {
    return SameText(point.cells.microvolt, microvolt);
  });
  if (standard != points.end()) {
    table_.S2Ftable[row] = standard->cells;
  } else {
    // Kept on purpose: a measured value that stood in the table already is stored as the voltage of S1.
    table_.S2Ftable[row] = {"", had_duplicate ? points[1].cells.microvolt : microvolt, ""};
  }
  const TableRow stored = table_.S2Ftable[row];
  table_.TidyCalibration();
  ShowRecord(row);
  ShowTableLists();
  const std::string place = "row " + ThreeDigits(static_cast<int>(row));
  if (table_.S2Ftable[row] == stored) {
    Note("Stored " + stored.microvolt + " uV in " + place + ".");
    MarkStored(row);
  } else {
    Note("Not kept: " + stored.microvolt + " uV does not rise above the row before " + place + ".");
  }
}

void CalibrationEditor::Note(const std::string& text) {
  forms_.form3.lblNote.caption = text;
  forms_.form3.stored_line = -1;
}

void CalibrationEditor::MarkStored(std::size_t row) {
  constexpr int kHeadingLines = 2;
  const auto& rows = table_.S2Ftable;
  const auto lines_before = [&rows, row](bool points) {
    return static_cast<int>(std::count_if(
        rows.begin(), rows.begin() + static_cast<std::ptrdiff_t>(row), [points](const TableRow& cells) {
          return points ? !cells.s.empty() : cells.s.empty() && !cells.microvolt.empty();
        }));
  };
  const auto all_points = std::count_if(rows.begin(), rows.begin() + kMeterRows,
                                        [](const TableRow& cells) { return !cells.s.empty(); });
  // The other values stand below the points, behind an empty line.
  forms_.form3.stored_line = rows.at(row).s.empty() ? kHeadingLines + static_cast<int>(all_points) + 1 +
                                                          kHeadingLines + lines_before(false)
                                                    : kHeadingLines + lines_before(true);
}

bool CalibrationEditor::DropDuplicate(const std::string& microvolt) {
  auto& rows = table_.S2Ftable;
  const auto end = rows.begin() + kMeterRows;
  const auto found = std::find_if(rows.begin(), end,
                                  [&](const TableRow& row) { return SameText(row.microvolt, microvolt); });
  if (found == end) return false;
  *found = {};
  return true;
}

void CalibrationEditor::LoadFile(const std::string& path) {
  files_.LoadS2Ftable(path);
  if (!ports_.program.Ended()) Refresh();
}

void CalibrationEditor::mnuLoad_Click() {
  std::string& third = state_.settings.CalibrationFiles[2];
  const std::string path = ports_.dialogs.AskText(AppTitle, "Give filename Calibration to load.", third);
  if (ports_.program.Ended()) return;
  if (!path.empty() && ports_.files.Exists(ports_.program.PathOf(path))) third = path;
  LoadFile(path);
}

void CalibrationEditor::mnuSaveAs_Click() {
  std::string& third = state_.settings.CalibrationFiles[2];
  const std::string path = ports_.dialogs.AskText(AppTitle, "Give filename Calibration to save.", third);
  if (ports_.program.Ended() || path.empty()) return;
  if (ports_.files.Exists(ports_.program.PathOf(path))) {
    // Kept on purpose: the file is remembered even when it is not overwritten.
    third = path;
    if (!ports_.dialogs.AskYesNo(AppTitle, "Overwrite" + path, Icon::kExclamation)) return;
    if (ports_.program.Ended()) return;
  }
  files_.SaveS2Ftable(path);
}

}  // namespace kestrum
