#include "cat/frequency_digits.h"

#include <algorithm>

#include "cat/rigs.h"
#include "text/number_text.h"
#include "text/text.h"

namespace kestrum {
namespace {

constexpr std::size_t kWholeDigits = 6;
constexpr std::size_t kFractionDigits = 2;

}  // namespace

double TypedKhz(std::string_view text) {
  return Val(Replace(text, ',', '.'));
}

std::string PadDigits(std::string_view khz) {
  std::string digits = Trim(khz);
  const auto point = digits.find('.');
  if (point == std::string::npos) {
    digits += "00";
    constexpr std::size_t kAll = kWholeDigits + kFractionDigits;
    if (digits.size() < kAll) digits.insert(0, kAll - digits.size(), '0');
    return digits;
  }
  if (point > kWholeDigits) return "Overflow";
  std::string fraction = digits.substr(point + 1);
  fraction.resize(kFractionDigits, '0');
  return std::string(kWholeDigits - point, '0') + digits.substr(0, point) + fraction;
}

bool InFreqRange(int rig_model, double khz) {
  const RigRow* rig = RigOf(rig_model);
  return rig != nullptr &&
         std::any_of(rig->ranges.begin(), rig->ranges.end(), [khz](const FrequencyRange& range) {
           return khz >= range.lowest_khz && khz <= range.highest_khz;
         });
}

}  // namespace kestrum
