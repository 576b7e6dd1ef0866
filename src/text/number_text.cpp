#include "text/number_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <iterator>
#include <limits>
#include <type_traits>

namespace kestrum {
namespace {

constexpr int kSingleDigits = 7;
constexpr int kDoubleDigits = 15;

struct Decimal {
  bool negative = false;
  std::string digits;  // significant digits without leading zeros, "" for 0
  int point = 0;       // how many of them stand before the decimal point; may be negative
};

void DropTrailingZeros(Decimal& number) {
  const auto last = number.digits.find_last_not_of('0');
  number.digits.erase(last == std::string::npos ? 0 : last + 1);
}

template <typename Number>
Decimal ToDecimal(Number value, int significant) {
  Decimal result;
  if (!std::isfinite(value) || value == 0) return result;
  result.negative = value < 0;
  const Number size = std::fabs(value);
  std::array<char, 64> buffer{};
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), size,
                                 std::chars_format::scientific, significant - 1);
  const std::string_view text(buffer.data(), static_cast<std::size_t>(end.ptr - buffer.data()));
  const auto exponent_at = text.find('e');
  // One digit, the point, and the others.
  result.digits = text.front();
  if (exponent_at > 2) result.digits += text.substr(2, exponent_at - 2);
  int exponent = 0;
  auto exponent_text = text.substr(exponent_at + 1);
  if (exponent_text.front() == '+') exponent_text.remove_prefix(1);
  std::from_chars(exponent_text.data(), exponent_text.data() + exponent_text.size(), exponent);
  result.point = exponent + 1;
  DropTrailingZeros(result);
  return result;
}

std::string PlainText(const Decimal& number) {
  if (number.digits.empty()) return "0";
  std::string digits = number.digits;
  if (number.point <= 0) return "." + std::string(static_cast<std::size_t>(-number.point), '0') + digits;
  const auto point = static_cast<std::size_t>(number.point);
  if (digits.size() <= point) return digits + std::string(point - digits.size(), '0');
  return digits.insert(point, ".");
}

// Whole numbers below this have no more digits than a text shows.
template <typename Number>
constexpr Number kShortWhole = std::is_same_v<Number, float> ? Number(1e7) : Number(1e15);

template <typename Number>
std::string Signed(Number value, int significant, const char* positive_sign) {
  if (std::fabs(value) < kShortWhole<Number> && std::trunc(value) == value) {
    const auto whole = static_cast<long long>(value);
    return (whole < 0 ? "" : positive_sign) + std::to_string(whole);
  }
  const Decimal number = ToDecimal(value, significant);
  return (number.negative ? "-" : positive_sign) + PlainText(number);
}

// Adds one unit in the last digit.
void Increment(Decimal& number) {
  auto digit = number.digits.rbegin();
  while (digit != number.digits.rend() && *digit == '9') *digit++ = '0';
  if (digit != number.digits.rend()) {
    ++*digit;
    return;
  }
  number.digits.insert(0, "1");
  ++number.point;
}

// Cuts to `decimals` places, halves away from zero.
void RoundHalfAway(Decimal& number, int decimals) {
  const int keep = number.point + decimals;
  if (keep >= static_cast<int>(number.digits.size())) return;
  if (keep < 0) {
    number = Decimal{};
    return;
  }
  const auto kept = static_cast<std::size_t>(keep);
  const bool up = number.digits[kept] >= '5';
  number.digits.erase(kept);
  if (!up) return;
  if (number.digits.empty()) {
    number.digits = "1";
    ++number.point;
    return;
  }
  Increment(number);
}

bool IsBlank(char c) {
  return c == ' ' || c == '\t';
}

// Of the sign, digits and point that the text begins with.
std::size_t NumberLength(std::string_view text) {
  std::size_t length = 0;
  const auto skip_digits = [&] {
    while (length < text.size() && text[length] >= '0' && text[length] <= '9') ++length;
  };
  if (text.starts_with('-') || text.starts_with('+')) ++length;
  skip_digits();
  if (length < text.size() && text[length] == '.') ++length;
  skip_digits();
  return length;
}

}  // namespace

double Val(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  std::string_view number = text.substr(0, NumberLength(text));
  std::string squeezed;
  if (number.size() < text.size() && IsBlank(text[number.size()])) {
    std::copy_if(text.begin(), text.end(), std::back_inserter(squeezed), [](char c) { return !IsBlank(c); });
    number = std::string_view(squeezed).substr(0, NumberLength(squeezed));
  }
  if (number.starts_with('+')) number.remove_prefix(1);
  double value = 0;
  const auto result =
      std::from_chars(number.data(), number.data() + number.size(), value, std::chars_format::fixed);
  if (result.ec == std::errc::result_out_of_range) {
    // Only hundreds of digits get here: an enormous number stays the largest, a vanishing one is 0.
    const bool tiny = number.find_first_not_of("-0.") > number.find('.');
    if (tiny) return 0;
    return number.front() == '-' ? std::numeric_limits<double>::lowest() : std::numeric_limits<double>::max();
  }
  return result.ec == std::errc() ? value : 0;
}

std::string NumberText(double value) {
  return Signed(value, kDoubleDigits, " ");
}
std::string NumberTextSingle(float value) {
  return Signed(value, kSingleDigits, " ");
}
std::string ShortNumber(double value) {
  return Signed(value, kDoubleDigits, "");
}
std::string ShortNumberSingle(float value) {
  return Signed(value, kSingleDigits, "");
}

std::string WithLeadingZero(std::string_view number) {
  std::string result(number);
  if (result.starts_with(".")) return "0" + result;
  if (result.starts_with("-.")) result.insert(1, "0");
  return result;
}

double RoundHalfEven(double value, int decimals) {
  const double scale = std::pow(10.0, decimals);
  const double scaled = value * scale;
  if (!std::isfinite(scaled)) return value;
  double whole = std::floor(scaled);
  const double rest = scaled - whole;
  if (rest > 0.5 || (rest == 0.5 && std::fmod(whole, 2.0) != 0)) whole += 1;
  return whole / scale;
}

int RoundToInt(double value) {
  constexpr double kLowest = std::numeric_limits<int>::lowest();
  constexpr double kHighest = std::numeric_limits<int>::max();
  if (std::isnan(value)) return 0;
  return static_cast<int>(std::clamp(RoundHalfEven(value, 0), kLowest, kHighest));
}

std::string FixedPattern(double value, int integer_digits, int decimals) {
  Decimal number = ToDecimal(value, kDoubleDigits);
  RoundHalfAway(number, decimals);
  DropTrailingZeros(number);
  const std::string plain = PlainText(number);
  const auto point = plain.find('.');
  std::string whole = plain.substr(0, point);
  std::string fraction = point == std::string::npos ? "" : plain.substr(point + 1);
  if (whole == "0") whole.clear();
  const auto wanted = static_cast<std::size_t>(integer_digits);
  if (whole.size() < wanted) whole.insert(0, wanted - whole.size(), '0');
  fraction.resize(static_cast<std::size_t>(decimals), '0');
  return (number.negative && !number.digits.empty() ? "-" : "") + whole + "." + fraction;
}

std::string TwoDigits(int number) {
  const int last_two = number % 100;
  return (last_two < 10 ? "0" : "") + ShortNumber(last_two);
}

std::string ThreeDigits(int value) {
  std::string text = std::to_string(value);
  if (text.size() < 3) text.insert(0, 3 - text.size(), '0');
  return text;
}

}  // namespace kestrum
