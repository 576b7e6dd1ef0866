#include <algorithm>
#include <cmath>
#include <limits>

#include "support/fuzz.h"
#include "support/scripted_car.h"
#include "text/number_text.h"
#include "text/text_file.h"

// The input is a calibration file; a short one is also tried with empty rows behind it.
namespace kestrum::fuzz {
namespace {

constexpr const char* kInput = "/car/Calibration1.cfg";
constexpr const char* kSaved = "/car/Calibration2.cfg";
constexpr std::size_t kLines = 257;
const TableRow kUntouched = {"#", "#", "#"};

float SingleVal(const std::string& text) {
  constexpr double kHighest = std::numeric_limits<float>::max();
  return static_cast<float>(std::clamp(Val(text), -kHighest, kHighest));
}

void CheckRises(const S2FtableRows& rows) {
  float last = SingleVal(rows[0].microvolt);
  for (std::size_t row = 1; row < kCurrentRow; ++row) {
    if (rows[row].microvolt.empty()) continue;
    Require(SingleVal(rows[row].microvolt) > last, "the table rises",
            std::to_string(row) + ": " + rows[row].microvolt);
    last = SingleVal(rows[row].microvolt);
  }
}

// An interpolated voltage lies between its neighbours.
void CheckBetween(const S2FtableRows& rows, std::size_t raw, const std::string& result) {
  Require(MadeOf(result, " 0123456789.-"), "an interpolated voltage is a plain number", result);
  float low = 0;
  for (std::size_t row = raw + 1; row-- > 0 && low <= 0;) low = std::max(low, SingleVal(rows[row].microvolt));
  std::size_t above = raw + 1;
  while (above < kCurrentRow && SingleVal(rows[above].microvolt) <= low) ++above;
  Require(above < kCurrentRow, "no interpolation without an upper point", result);
  const float high = SingleVal(rows[above].microvolt);
  const double value = Val(result);
  const double rounding = 0.051 + 1e-5 * std::fabs(high);
  Require(value >= low - rounding && value <= high + rounding, "a voltage lies between its points", result);
}

// Some of the raw values, others for every file.
void CheckConversion(CalibrationTable& table, std::size_t first) {
  constexpr std::size_t kStep = 11;
  const S2FtableRows before = table.S2Ftable;
  for (std::size_t raw = first % kStep; raw < kCurrentRow; raw += kStep) {
    table.S2Ftable[kCurrentRow] = kUntouched;
    table.ConvertRSSI(static_cast<int>(raw));
    const TableRow& current = table.Current();
    if (!before[raw].s.empty()) {
      Require(current == before[raw], "a calibration point is copied", current.s);
      continue;
    }
    const bool computed = current.microvolt != "#" && current.microvolt != "???";
    if (computed) CheckBetween(before, raw, current.microvolt);
    const bool field_computed = current.millivolt_per_metre != "#" && current.millivolt_per_metre != "???" &&
                                current.millivolt_per_metre != "??x";
    if (field_computed)
      Require(MadeOf(current.millivolt_per_metre, " 0123456789.-"), "an interpolated field is a plain number",
              current.millivolt_per_metre);
  }
  table.S2Ftable[kCurrentRow] = before[kCurrentRow];
  Require(table.S2Ftable == before, "a conversion changes the current row only");
}

void Load(const std::string& file) {
  test::ScriptedCar car;
  car.settings = test::ScriptedCar::UsualSettings();
  car.app.link.OpenCatPort();
  car.app.table.DefaultCalibration(false);
  auto& messages = car.world.dialogs.messages;

  car.world.files.files[kInput] = file;
  car.app.calibration_files.LoadS2Ftable(kInput);
  Require(car.settings.RigModel >= kFT817 && car.settings.RigModel <= kFT897, "the rig is one of five");
  Require(car.settings.RigMode >= kUsb && car.settings.RigMode <= kFm, "the mode is one of seven");
  Require(messages.size() <= 1, "a fault is told once");
  if (!messages.empty()) {
    Require(messages[0].text.starts_with(std::string(kInput) + "LoadS2Ftable\r\n"), "text of the fault",
            messages[0].text);
    CheckConversion(car.app.table, Mix(file));
    return;
  }
  CheckRises(car.app.table.S2Ftable);
  CheckConversion(car.app.table, Mix(file));

  const S2FtableRows loaded = car.app.table.S2Ftable;
  const bool above_hf = car.app.state.AboveHF;
  car.app.calibration_files.SaveS2Ftable(kSaved);
  const std::string saved = car.world.files.files[kSaved];
  Require(SplitLines(saved).size() == kLines, "a calibration file has 257 lines");
  car.app.calibration_files.LoadS2Ftable(kSaved);
  Require(messages.empty(), "what was saved can be loaded", messages.empty() ? "" : messages[0].text);
  Require(std::equal(loaded.begin(), loaded.end() - 1, car.app.table.S2Ftable.begin()),
          "save, load gives the same table", saved);
  Require(car.app.state.AboveHF == above_hf, "save, load gives the same band");
  car.app.calibration_files.SaveS2Ftable(kSaved);
  Require(car.world.files.files[kSaved] == saved, "save, load, save gives the same bytes", saved);
}

}  // namespace
}  // namespace kestrum::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kestrum;
  using namespace kestrum::fuzz;
  const std::string file = Text(data, size);
  Load(file);
  auto lines = SplitLines(file);
  if (lines.size() >= kLines) return 0;
  lines.resize(kLines, ", , ");
  Load(JoinLines(lines));
  return 0;
}
