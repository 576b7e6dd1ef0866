#include "analysis/recalibration.h"

#include <memory>
#include <vector>

#include "log/line_parser.h"
#include "log/text_encoding.h"
#include "signal/calibration_table.h"
#include "text/number_text.h"
#include "text/text_file.h"

namespace orvandi {
namespace {

constexpr std::size_t kRows = 256;
constexpr std::size_t kLargestFile = std::size_t{1} << 20;  // as the logger refuses it
constexpr double kHighestHf_khz = 30000;
constexpr std::string_view kSeparator = ", ";
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

// "FT840 LSB 3630": the first number behind rig and mode, be the mode empty or led by blanks. 0 when there is
// none.
double FrequencyOf(std::string_view header) {
  std::size_t word = 0;
  while (!header.empty()) {
    const auto end = header.find(' ');
    const std::string_view text = header.substr(0, end);
    if (word >= 2 && !text.empty()) return ParseLeadingNumber(text).value_or(0);
    header.remove_prefix(end == std::string_view::npos ? header.size() : end + 1);
    ++word;
  }
  return 0;
}

// False when the line does not hold three cells.
bool ReadRow(std::string_view line, kestrum::TableRow& row) {
  for (std::size_t column = 0; column < row.size(); ++column) {
    const auto end = line.find(kSeparator);
    if (end == std::string_view::npos && column + 1 < row.size()) return false;
    row[column] = Trimmed(line.substr(0, end));
    line.remove_prefix(end == std::string_view::npos ? line.size() : end + kSeparator.size());
  }
  return true;
}

Recalibration::Reading ReadingOf(const kestrum::TableRow& row) {
  Recalibration::Reading reading;
  const auto number = [](const std::string& text) {
    const auto value = ParseLeadingNumber(text);
    return value ? static_cast<float>(*value) : kUnknown;
  };
  if (!row[0].empty()) reading.s_text = ToUtf8(row[0]);
  reading.microvolt = number(row[1]);
  reading.millivolt_per_m = number(row[2]);
  return reading;
}

}  // namespace

std::string Recalibration::Load(std::string_view bytes) {
  if (bytes.starts_with(kUtf8Mark)) bytes.remove_prefix(kUtf8Mark.size());
  if (bytes.size() > kLargestFile) return "This is no calibration file: it is too large.";
  const std::vector<std::string> lines = kestrum::SplitLines(bytes);
  if (lines.empty()) return "The calibration file is empty.";
  const std::string_view header = Trimmed(lines.front());
  const double frequency_khz = FrequencyOf(header);
  if (!(frequency_khz > 0)) return "This is no calibration file: its first line holds no frequency.";
  if (lines.size() < kRows + 1) {
    return "The calibration file ends after " + std::to_string(lines.size()) + " of 257 lines.";
  }
  kestrum::State state;
  state.AboveHF = frequency_khz > kHighestHf_khz;
  const auto forms = std::make_unique<kestrum::Forms>();
  kestrum::CalibrationTable table(state, *forms);
  for (std::size_t raw = 0; raw < kRows; ++raw) {
    if (!ReadRow(lines[raw + 1], table.S2Ftable[raw])) {
      return "Line " + std::to_string(raw + 2) + " of the calibration file holds fewer than three cells.";
    }
  }
  table.TidyCalibration();
  for (std::size_t raw = 0; raw < kRows; ++raw) {
    // Each value stands for itself: cells that the table leaves open are unknown, not those of the value
    // before.
    table.S2Ftable[kestrum::kCurrentRow] = {};
    table.ConvertRSSI(static_cast<int>(raw));
    readings_[raw] = ReadingOf(table.Current());
  }
  header_ = ToUtf8(header);
  return {};
}

const Recalibration::Reading& Recalibration::Of(int raw) const {
  return raw >= 0 && raw < static_cast<int>(readings_.size()) ? readings_[static_cast<std::size_t>(raw)]
                                                              : unknown_;
}

}  // namespace orvandi
