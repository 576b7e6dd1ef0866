#include "signal/calibration_text.h"

#include <algorithm>
#include <array>
#include <vector>

#include "cat/rig_text.h"
#include "cat/rigs.h"
#include "text/number_text.h"
#include "text/text.h"
#include "text/text_file.h"

namespace kestrum {
namespace {

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
  static const std::array<std::string, kModeCount> kNames = {"USB", "LSB", "CW", "CWN", "AM", "AMN", "FM"};
  const auto found =
      std::find_if(kNames.begin(), kNames.end(), [&](const auto& mode) { return SameText(name, mode); });
  if (found == kNames.end()) return {};
  return static_cast<int>(found - kNames.begin()) + 1;
}

// The third field; the next one that holds something where the frequency box held leading blanks. The box may
// have held a typed comma. Only a value above 0 is a frequency.
std::optional<std::string> FrequencyOf(const std::vector<std::string>& fields) {
  const auto filled = [](const std::string& field) { return !field.empty(); };
  if (fields.size() < 3) return {};
  const auto found = std::find_if(fields.begin() + 2, fields.end(), filled);
  if (found == fields.end() || found->size() > kLongestCell) return {};
  std::string frequency = Replace(*found, ',', '.');
  if (!(Val(frequency) > 0)) return {};
  return frequency;
}

// Puts a line's cells into a row. Cells that are there are kept.
Outcome ReadRow(const std::string& line, TableRow& row) {
  const auto cells = SplitAt(line, kSeparator);
  const std::array<std::string*, 3> places = {&row.s, &row.microvolt, &row.millivolt_per_metre};
  const std::size_t count = std::min(cells.size(), places.size());
  for (std::size_t column = 0; column < count; ++column) {
    if (cells[column].size() > kLongestCell) return Fault{line, kLongField};
    *places.at(column) = Trim(cells[column]);
  }
  if (count < places.size()) return Fault{line, kMissingField};
  return Done{};
}

}  // namespace

Result<CalibrationHeader> ReadCalibrationHeader(std::string_view line) {
  const auto fields = SplitAt(Trim(line), " ");
  const auto frequency = FrequencyOf(fields);
  if (!frequency) return Fault{std::string(line), kNoFrequency};
  return CalibrationHeader{RigNumber(fields[0]), ModeOf(fields[1]), *frequency};
}

Result<CalibrationText> ReadCalibration(std::string_view bytes) {
  const auto lines = SplitLines(WithoutUtf8Mark(bytes));
  if (lines.empty()) return Fault{"", kEndOfFile};
  const auto header = ReadCalibrationHeader(lines.front());
  if (!header) return header.fault();
  CalibrationText text;
  text.header = header.value();
  for (std::size_t row = 0; row < kMeterRows; ++row) {
    const std::size_t line = row + 1;
    const Outcome read =
        line < lines.size() ? ReadRow(lines[line], text.rows.at(row)) : Fault{"", kEndOfFile};
    if (read) continue;
    text.fault = read.fault();
    break;
  }
  return text;
}

std::string WriteCalibration(const std::string& header, const S2FtableRows& rows) {
  std::vector<std::string> lines = {header};
  for (std::size_t row = 0; row < kMeterRows; ++row) {
    const TableRow& cells = rows.at(row);
    lines.push_back(cells.s + ", " + cells.microvolt + ", " + cells.millivolt_per_metre);
  }
  return JoinLines(lines);
}

}  // namespace kestrum
