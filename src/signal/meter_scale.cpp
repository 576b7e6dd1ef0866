#include "signal/meter_scale.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "text/number_text.h"
#include "text/text.h"

namespace kestrum {
namespace {

constexpr std::size_t kLongestMark = 5;

std::string MarkText(std::string_view s_text) {
  const std::string text = Trim(s_text);
  if (const auto plus = text.find('+'); plus != std::string::npos) {
    return "+" + ShortNumber(Val(std::string_view(text).substr(plus + 1)));
  }
  const bool begins_with_s = text.size() > 1 && (text[0] == 'S' || text[0] == 's');
  return text.substr(begins_with_s ? 1 : 0, kLongestMark);
}

}  // namespace

std::vector<ScaleMark> MeterScale(const S2FtableRows& rows) {
  std::vector<ScaleMark> marks;
  for (std::size_t row = 0; row < kMeterRows; ++row) {
    if (!rows.at(row).s.empty()) marks.push_back({static_cast<int>(row), MarkText(rows.at(row).s)});
  }
  return marks;
}

int S9Row(const S2FtableRows& rows) {
  const auto* const end = rows.begin() + kMeterRows;
  const auto* const found =
      std::find_if(rows.begin(), end, [](const TableRow& row) { return SameText(Trim(row.s), "S9"); });
  return found == end ? -1 : static_cast<int>(found - rows.begin());
}

}  // namespace kestrum
