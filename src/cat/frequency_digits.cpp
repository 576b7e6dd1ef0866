#include "cat/frequency_digits.h"

#include <array>
#include <span>

#include "config/settings.h"
#include "text/number_text.h"
#include "text/text.h"

namespace kestrum {
namespace {

constexpr std::size_t kWholeDigits = 6;
constexpr std::size_t kFractionDigits = 2;

struct Range {
  double lowest_khz = 0;
  double highest_khz = 0;
};

constexpr std::array kRangesFT817{Range{100, 30000}, Range{50000, 54000}, Range{76000, 154000},
                                  Range{430000, 440000}};
constexpr std::array kRangesFT840{Range{100, 30000}};
constexpr std::array kRangesFT847{Range{100, 36990}, Range{37000, 76000}, Range{108000, 174000},
                                  Range{420000, 512000}};
constexpr std::array kRangesFT857{Range{100, 56000}, Range{76000, 108000}, Range{118000, 164000},
                                  Range{420000, 470000}};

std::span<const Range> RangesOf(int rig_model) {
  switch (rig_model) {
    case kFT817:
      return kRangesFT817;
    case kFT840:
      return kRangesFT840;
    case kFT847:
      return kRangesFT847;
    case kFT857:
    case kFT897:
      return kRangesFT857;
    default:
      return {};
  }
}

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
  for (const auto& range : RangesOf(rig_model)) {
    if (khz >= range.lowest_khz && khz <= range.highest_khz) return true;
  }
  return false;
}

}  // namespace kestrum
