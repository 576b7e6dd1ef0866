#include "signal/conversion.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "config/settings.h"
#include "text/number_text.h"
#include "text/single.h"

namespace kestrum {
namespace {

constexpr std::size_t kLastRow = kMeterRows - 1;

const TableRow kUnknown = {"S?", "???", "???"};

float SingleVal(std::string_view text) {
  if (text.empty()) return 0;  // most rows of a table
  return ToSingle(Val(text));
}

// The row from `first` down to 0, or from `first` up to 255, that satisfies the condition.
template <typename Condition>
std::optional<std::size_t> SearchDown(const S2FtableRows& rows, std::size_t first, Condition condition) {
  for (std::size_t row = first + 1; row-- > 0;) {
    if (condition(rows[row])) return row;
  }
  return {};
}

template <typename Condition>
std::optional<std::size_t> SearchUp(const S2FtableRows& rows, std::size_t first, Condition condition) {
  for (std::size_t row = first; row <= kLastRow; ++row) {
    if (condition(rows[row])) return row;
  }
  return {};
}

bool HasS(const TableRow& row) {
  return !row.s.empty();
}
bool HasField(const TableRow& row) {
  return !row.millivolt_per_metre.empty();
}

// A place of the table: a row and what its number column says there.
struct Point {
  std::size_t row = 0;
  float value = 0;
};

// The straight line through two points at `raw`. Every operation is rounded to single, as in the files of
// readings made so far.
float Interpolate(const Point& low, const Point& high, std::size_t raw) {
  const float slope = (high.value - low.value) / (static_cast<float>(high.row) - static_cast<float>(low.row));
  const float step = (static_cast<float>(raw) - static_cast<float>(low.row)) * slope;
  return step + low.value;
}

std::string RoundedText(float value, int decimals) {
  return NumberTextSingle(static_cast<float>(RoundHalfEven(value, decimals)));
}

// Interpolation of one raw value. Cells that a step does not write keep what the reading before left there;
// kept on purpose, an incomplete table has always shown its last good figures.
class Conversion {
 public:
  Conversion(const S2FtableRows& rows, std::size_t raw, Band band)
      : rows_(rows), current_(rows[kCurrentRow]), raw_(raw), decimals_(band == Band::kHf ? 1 : 2) {}

  TableRow Run() {
    FindMicrovoltPoints();
    // Kept on purpose: a reading between the two uppermost points of a table that ends on row 255 is unknown.
    if (high_.row == kLastRow) return kUnknown;
    if (high_.value > low_.value) {
      current_.microvolt = RoundedText(Interpolate(low_, high_, raw_), decimals_);
      WriteSText();
    }
    WriteField();
    return current_;
  }

 private:
  void FindMicrovoltPoints() {
    const auto value = [](const TableRow& row) { return SingleVal(row.microvolt); };
    if (const auto row = SearchDown(rows_, raw_, [&](const TableRow& r) { return value(r) > 0; })) {
      low_ = {*row, value(rows_[*row])};
    }
    if (const auto row =
            SearchUp(rows_, raw_ + 1, [&](const TableRow& r) { return value(r) > low_.value; })) {
      high_ = {*row, value(rows_[*row])};
    }
  }

  void WriteSText() {
    const std::string& text = rows_[low_.row].s;
    if (text.empty()) {
      if (const auto row = SearchDown(rows_, low_.row, HasS)) current_.s = rows_[*row].s + "+";
      return;
    }
    current_.s = text.size() == 2 ? text + "+" : text;
  }

  void WriteField() {
    const std::size_t low_row = SearchDown(rows_, raw_, HasField).value_or(low_.row);
    const auto found = SearchUp(rows_, low_row + 1, HasField);
    if (!found && current_.millivolt_per_metre.empty()) {
      current_ = kUnknown;
      return;
    }
    if (found == kLastRow) {
      current_.millivolt_per_metre = "??x";
      return;
    }
    const std::size_t high_row = found.value_or(high_.row);
    const Point low{low_row, SingleVal(rows_[low_row].millivolt_per_metre)};
    const Point high{high_row, SingleVal(rows_[high_row].millivolt_per_metre)};
    if (high.value > low.value) current_.millivolt_per_metre = RoundedText(Interpolate(low, high, raw_), 2);
  }

  const S2FtableRows& rows_;
  TableRow current_;
  std::size_t raw_;
  int decimals_;  // of uV
  Point low_;
  Point high_;
};

}  // namespace

Band BandOf(double khz) {
  return khz > kHfLimitKhz ? Band::kAboveHf : Band::kHf;
}

std::array<DefaultPoint, 16> DefaultPoints(Band band) {
  std::array<DefaultPoint, 16> points = {{
      {0, {"S0", "0", "0"}},
      {1, {"S1", "0.2", "0.083"}},
      {2, {"S2", "0.39", "0.16"}},
      {8, {"S3", "0.78", "0.32"}},
      {18, {"S4", "1.56", "0.65"}},
      {32, {"S5", "3.13", "1.30"}},
      {50, {"S6", "6.25", "2.59"}},
      {72, {"S7", "12.5", "5.19"}},
      {98, {"S8", "25", "10.4"}},
      {128, {"S9", "50", "20.7"}},
      {162, {"S9 + 10dB", "158", "65"}},
      {180, {"S9 + 20dB", "500", "207"}},
      {198, {"S9 + 30dB", "1580", "656"}},
      {216, {"S9 + 40dB", "5000", "2075"}},
      {234, {"S9 + 50dB", "15800", "6560"}},
      {255, {"S9 + 60dB", "50000", "20750"}},
  }};
  if (band == Band::kHf) return points;
  for (auto point = points.begin() + 1; point != points.end(); ++point) {
    point->cells.microvolt = ScaleTenth(point->cells.microvolt);
    point->cells.millivolt_per_metre = ScaleTenth(point->cells.millivolt_per_metre);
  }
  return points;
}

std::string ScaleTenth(std::string_view text) {
  const std::string tenth = ShortNumber(Val(text) * 0.1);
  return tenth.starts_with(".") ? "0" + tenth : tenth;
}

std::string RSSItoDBm(std::string_view text) {
  const double microvolt = Val(text);
  if (microvolt == 0) return {};
  const double power_watt = std::pow(microvolt * 1e-6, 2) / 50;
  return NumberText(RoundHalfEven(10 * std::log10(power_watt), 2));
}

S2FtableRows DefaultTable(Band band) {
  S2FtableRows rows;
  for (const DefaultPoint& point : DefaultPoints(band)) rows[point.row] = point.cells;
  return rows;
}

TableRow ConvertRaw(const S2FtableRows& rows, int raw, Band band) {
  const auto row = static_cast<std::size_t>(std::clamp(raw, 0, kTopOfMeter));
  if (HasS(rows[row])) return rows[row];
  return Conversion(rows, row, band).Run();
}

void Tidy(S2FtableRows& rows) {
  float last = SingleVal(rows[0].microvolt);
  for (std::size_t row = 1; row <= kLastRow; ++row) {
    if (rows[row].microvolt.empty()) continue;
    const float value = SingleVal(rows[row].microvolt);
    if (value > last) {
      last = value;
    } else {
      rows[row] = {};
    }
  }
}

}  // namespace kestrum
