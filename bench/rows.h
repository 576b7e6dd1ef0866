#pragma once

#include <optional>
#include <string>
#include <vector>

namespace kestrum::bench {

// Upper limits in the unit of the row.
struct Aim {
  std::optional<double> median;
  std::optional<double> percentile_99;
};

// One line of the table.
struct Row {
  std::string what;
  std::string unit;
  std::vector<double> samples;  // one for a quantity that is measured once
  Aim aim;
  std::string why_missed;  // what is known to stand in the way
};

// Writes the row to the standard output, fields separated by tabs: what, unit, minimum, median, 99th
// percentile, aim, verdict. The percentile stands there for 100 samples and more; below that the largest one
// does, in brackets.
void Print(const Row& row);

}  // namespace kestrum::bench
