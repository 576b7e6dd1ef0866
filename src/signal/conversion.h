#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

// The calibration table as a value, and the pure functions on it. Nothing here knows a form.
namespace kestrum {

inline constexpr int kTopOfMeter = 255;                     // highest raw S-meter value
inline constexpr std::size_t kMeterRows = kTopOfMeter + 1;  // rows that raw values stand for
inline constexpr std::size_t kCurrentRow = kMeterRows;      // row of the current reading

// One row of the table. A row with an S text is a calibration point; numbers are decimal texts with a point.
struct TableRow {
  std::string s;                    // S-meter text, e.g. "S9 + 10dB"
  std::string microvolt;            // uV across 50 Ohm
  std::string millivolt_per_metre;  // field strength in mV/m

  bool operator==(const TableRow&) const = default;
};
// 0 to 255 by raw S-meter value, 256 the current reading.
using S2FtableRows = std::array<TableRow, kMeterRows + 1>;

// On which side of kHfLimitKhz: levels above it are a tenth, and have a decimal more.
enum class Band { kHf, kAboveHf };
Band BandOf(double khz);

// One point of the default table.
struct DefaultPoint {
  std::size_t row = 0;
  TableRow cells;
};
// The 16 default points in row order; uV and mV/m are a tenth above 30 MHz.
std::array<DefaultPoint, 16> DefaultPoints(Band band);
// A table of these points and nothing else.
S2FtableRows DefaultTable(Band band);

// What the table says of a raw value; values outside 0 to 255 are taken as the nearest of them. What an
// incomplete table does not say keeps the text of its current row.
TableRow ConvertRaw(const S2FtableRows& rows, int raw, Band band);

// Removes points whose uV does not rise above that of the point before.
void Tidy(S2FtableRows& rows);

// One tenth of the leading number of a text, with a zero before a leading point.
std::string ScaleTenth(std::string_view text);

// dBm of a voltage text in uV across 50 Ohm, two decimals, with the sign position; empty for 0.
// P = 10 log10((v x 1e-6)^2 / 50). Kept on purpose: no +30, so the figure is dB above a watt by name dBm, as
// in all earlier logs.
std::string RSSItoDBm(std::string_view text);

}  // namespace kestrum
