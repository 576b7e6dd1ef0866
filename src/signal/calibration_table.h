#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "config/settings.h"
#include "forms/forms.h"

namespace kestrum {

inline constexpr std::size_t kCurrentRow = 256;  // row of the current reading
using TableRow = std::array<std::string, 3>;     // S text, uV across 50 Ohm, mV/m
using S2FtableRows = std::array<TableRow, 257>;  // 0 to 255 by raw S-meter value, 256 the current reading

// One point of the default table.
struct DefaultPoint {
  std::size_t row = 0;
  TableRow cells;
};
// The 16 default points in row order; uV and mV/m are a tenth above 30 MHz.
std::array<DefaultPoint, 16> DefaultPoints(bool above_hf);

// One tenth of the leading number of a text, with a zero before a leading point.
std::string ScaleTenth(std::string_view text);

// dBm of a voltage text in uV across 50 Ohm, two decimals, with the sign position; empty for 0.
// P = 10 log10((v x 1e-6)^2 / 50). Kept on purpose: no +30, so the figure is dB above a watt by name dBm, as
// in all earlier logs.
std::string RSSItoDBm(std::string_view text);

// The table that turns raw S-meter values into S text, uV and mV/m.
class CalibrationTable {
 public:
  CalibrationTable(const State& state, Forms& forms);

  S2FtableRows S2Ftable;
  const TableRow& Current() const { return S2Ftable[kCurrentRow]; }

  // Empties all rows. Unless called from the editor it loads the editor's window first (without showing it).
  void ClearCalibration(bool from_editor);
  // Clears, then fills in the default points.
  void DefaultCalibration(bool from_editor);
  // Removes points whose uV does not rise above that of the point before.
  void TidyCalibration();
  // Writes the current-reading row for a raw value; values outside 0 to 255 are taken as the nearest of them.
  void ConvertRSSI(int raw);

  // Replaces each text that is given non-empty and shows both in lblStatusCaption.
  void ShowStatusCaption(const std::string& rig_text, const std::string& description);

 private:
  const State& state_;
  Forms& forms_;
  std::string rig_text_;
  std::string description_;
};

}  // namespace kestrum
