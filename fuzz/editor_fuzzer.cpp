#include <algorithm>

#include "support/fuzz.h"
#include "support/scripted_car.h"
#include "text/number_text.h"

// Each piece between "|" is one deed at the calibration editor: a letter and what belongs to it.
//   t TEXT  types a voltage and stores it        s      stores the selected S point
//   u, d    S point up and down                  i N    moves the row slider
//   r N     a reading of the rig                 x      stops or starts following the readings
//   c, D    clears the table, default table      b      changes the band
//   f       saves to Calibration1 and loads it again
namespace kestrum::fuzz {
namespace {

constexpr double kHighestMicrovolt = 50000;
const TableRow kNoSignal = {"S0", "0", "0"};

void CheckTable(const S2FtableRows& rows) {
  float last = -1;
  for (std::size_t row = 0; row < kCurrentRow; ++row) {
    const std::string& text = rows[row].microvolt;
    if (text.empty()) {
      const bool empty = rows[row].s.empty() && rows[row].millivolt_per_metre.empty();
      Require(empty, "a row without a voltage is empty", std::to_string(row));
      continue;
    }
    const auto value = static_cast<float>(Val(text));
    Require(value > last, "the table rises", text);
    last = value;
    const bool stored = Val(text) > 0 && Val(text) <= kHighestMicrovolt;
    Require(stored || rows[row] == kNoSignal, "only voltages from 0 to 50000 uV are stored", text);
    Require(MadeOf(text, "0123456789."), "a stored voltage is digits and points", text);
  }
}

class Bench {
 public:
  Bench() {
    car.WriteConfig(test::ScriptedCar::UsualSettings());
    car.Start();
    car.form1.mnuCalibration.click();
  }

  test::ScriptedCar car;
  Form3& form = car.app.forms.form3;

  void Do(const std::string& deed) {
    const std::string rest = deed.substr(1);
    switch (deed[0]) {
      case 't':
        form.txtEdit.text = rest;
        Store(form.cmduVStore);
        break;
      case 's':
        Store(form.cmdSstore);
        break;
      case 'u':
        form.cmdSup.click();
        break;
      case 'd':
        form.cmdSdown.click();
        break;
      case 'i':
        form.sldIndex.SetValue(ByteOf(rest));
        break;
      case 'r':
        car.s_meter = ByteOf(rest);
        car.app.rig.ReadRssi();
        break;
      case 'x':
        form.cmdStop.click();
        break;
      case 'c':
        form.mnuClearCalibration.click();
        break;
      case 'D':
        form.mnuDefaultCalibration.click();
        break;
      case 'b':
        car.app.state.AboveHF = !car.app.state.AboveHF;
        form.mnuDefaultCalibration.click();
        break;
      case 'f':
        SaveAndLoad();
        break;
      default:
        break;
    }
    Check();
  }

 private:
  static int ByteOf(const std::string& text) { return RoundToInt(Val(text)) & 255; }

  void Store(const Button& button) {
    const S2FtableRows before = car.app.table.S2Ftable;
    const int beeps = car.world.beeper.beeps;
    button.click();
    const bool heard = car.world.beeper.beeps > beeps;
    Require(heard || car.app.table.S2Ftable == before, "what is not acknowledged is not stored");
  }

  void SaveAndLoad() {
    const S2FtableRows before = car.app.table.S2Ftable;
    form.mnuSave1.click();
    form.mnuLoadConf1.click();
    Require(std::equal(before.begin(), before.end() - 1, car.app.table.S2Ftable.begin()),
            "save, load gives the same table");
    Require(car.world.dialogs.messages.empty(), "what was saved can be loaded");
  }

  void Check() const {
    CheckTable(car.app.table.S2Ftable);
    Require(form.selected_point >= 0 && form.selected_point <= 15, "the S point is one of 16");
    Require(form.sldIndex.value >= 0 && form.sldIndex.value <= 255, "the row is one of 256");
    Require(form.lblRecNbr.caption == ThreeDigits(form.sldIndex.value), "the row number follows the slider");
    Require(form.Label2.visible != form.Label3.visible, "one of the two lists is shown");
    Require(form.lblAllS2F.caption.substr(3, 5) == ">>   ", "the record line", form.lblAllS2F.caption);
  }
};

}  // namespace
}  // namespace kestrum::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kestrum::fuzz;
  Bench bench;
  for (const auto& deed : Pieces(Text(data, size), 30))
    if (!deed.empty()) bench.Do(deed);
  return 0;
}
