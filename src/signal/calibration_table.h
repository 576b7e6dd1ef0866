#pragma once

#include <string>

#include "config/settings.h"
#include "forms/forms.h"
#include "signal/conversion.h"

namespace kestrum {

// The table that turns raw S-meter values into S text, uV and mV/m, and what the main window says of it.
class CalibrationTable {
 public:
  CalibrationTable(const State& state, Forms& forms);

  S2FtableRows S2Ftable;
  const TableRow& Current() const { return S2Ftable[kCurrentRow]; }

  // That of the receive frequency.
  Band band() const { return state_.AboveHF ? Band::kAboveHf : Band::kHf; }
  // Rises with every change of the table but that of the current row.
  unsigned revision() const { return revision_; }
  // Set by the application: the table has changed.
  Handler changed;

  // Empties all rows. Unless called from the editor it loads the editor's window first (without showing it).
  void ClearCalibration(bool from_editor);
  // Clears, then fills in the default points.
  void DefaultCalibration(bool from_editor);
  // Removes points whose uV does not rise above that of the point before; ends every load and edit.
  void TidyCalibration();
  // Rows have been written from outside: whoever shows the table looks again.
  void Change();
  // Writes the current-reading row for a raw value; values outside 0 to 255 are taken as the nearest of them.
  void ConvertRSSI(int raw);

  // Replaces each text that is given non-empty and shows both in lblStatusCaption.
  void ShowStatusCaption(const std::string& rig_text, const std::string& description);

 private:
  const State& state_;
  Forms& forms_;
  unsigned revision_ = 0;
  std::string rig_text_;
  std::string description_;
};

}  // namespace kestrum
