#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

#include "cat/frequency_digits.h"
#include "support/fuzz.h"
#include "text/number_text.h"
#include "text/text.h"
#include "text/text_file.h"

// The input is a text; its first eight bytes are taken as a number too, so that every number comes up.
namespace kestrum::fuzz {
namespace {

bool Close(double a, double b, double relative) {
  return std::fabs(a - b) <= relative * std::max(std::fabs(a), std::fabs(b));
}

void CheckNumber(double value) {
  const std::string text = NumberText(value);
  Require(text.size() >= 2 && (text[0] == ' ' || text[0] == '-'), "a number has its sign position", text);
  Require(MadeOf(text.substr(1), "0123456789."), "a number is plain digits", text);
  Require(ShortNumber(value) == Trim(text), "the short number has no blank", text);
  Require(NumberText(Val(text)) == text, "a number text comes back the same", text);
  const std::string zero = WithLeadingZero(ShortNumber(value));
  Require(!zero.starts_with(".") && !zero.starts_with("-."), "a zero before the point", zero);
  if (!std::isfinite(value)) {
    Require(text == " 0", "no number reads as 0", text);
    return;
  }
  Require(Close(Val(text), value, 1e-14), "a number text says the number", text);
  Require(Val(zero) == Val(text), "a leading zero changes nothing", zero);
}

void CheckSingle(float value) {
  const std::string text = NumberTextSingle(value);
  Require(text.size() >= 2 && MadeOf(text.substr(1), "0123456789."), "a single is plain digits", text);
  Require(ShortNumberSingle(value) == Trim(text), "the short single has no blank", text);
  if (std::isfinite(value)) Require(Close(Val(text), value, 1e-6), "a single's text says the number", text);
}

void CheckPattern(double value) {
  for (int decimals = 1; decimals <= 3; ++decimals) {
    const std::string text = FixedPattern(value, 3, decimals);
    const auto point = text.find('.');
    Require(point != std::string::npos && text.size() - point - 1 == static_cast<std::size_t>(decimals),
            "a pattern has its decimals", text);
    const std::string whole = text.substr(text[0] == '-' ? 1 : 0, point - (text[0] == '-' ? 1 : 0));
    Require(whole.size() >= 3 && MadeOf(whole, "0123456789"), "a pattern has its digits", text);
    if (!std::isfinite(value)) continue;
    const double half_a_place = 0.5000001 * std::pow(10, -decimals);
    Require(std::fabs(Val(text) - value) <= half_a_place + std::fabs(value) * 1e-14, "a pattern rounds",
            text);
    const double rounded = RoundHalfEven(value, decimals);
    Require(std::fabs(rounded - value) <= half_a_place + std::fabs(value) * 1e-14, "rounding stays near",
            text);
  }
  const int whole = RoundToInt(value);
  constexpr double kHighest = std::numeric_limits<int>::max();
  const bool in_range = std::fabs(value) < kHighest;
  Require(!in_range || std::fabs(whole - value) <= 0.5, "rounding to a whole number", std::to_string(whole));
  Require(ThreeDigits(whole).size() >= 3, "three digits", ThreeDigits(whole));
}

void CheckFrequency(double khz) {
  for (int rig = 1; rig <= 5; ++rig) {
    if (!InFreqRange(rig, khz)) continue;
    const std::string digits = PadDigits(NumberText(khz));
    Require(digits.size() == 8 && MadeOf(digits, "0123456789"), "a frequency has eight digits", digits);
    const double sent = std::stod(digits) / 100;
    Require(sent <= khz + 1e-6 && khz - sent < 0.01 + 1e-6, "the digits say the frequency", digits);
  }
}

void CheckText(const std::string& text) {
  const auto lines = SplitLines(text);
  Require(SplitLines(JoinLines(lines)) == lines, "lines come back the same", text);
  for (const auto& line : lines)
    Require(line.find_first_of("\r\n") == std::string::npos, "a line holds no line end", line);
  Require(Upper(Upper(text)) == Upper(text) && SameText(text, Upper(text)), "capitals are the same text",
          text);
  const std::string trimmed = Trim(text);
  Require(Trim(trimmed) == trimmed && text.find(trimmed) != std::string::npos, "a text is trimmed once",
          text);
  PadDigits(text);
}

}  // namespace
}  // namespace kestrum::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kestrum;
  using namespace kestrum::fuzz;
  const std::string text = Text(data, size);
  CheckText(text);
  const double value = Val(text);
  Require(std::isfinite(value), "a text's number is finite", text);
  double raw = 0;
  std::memcpy(&raw, data, std::min(size, sizeof raw));
  float raw_single = 0;
  std::memcpy(&raw_single, data, std::min(size, sizeof raw_single));
  for (const double number : {value, raw, static_cast<double>(raw_single), TypedKhz(text)}) {
    CheckNumber(number);
    CheckPattern(number);
    CheckFrequency(number);
  }
  CheckSingle(raw_single);
  CheckSingle(static_cast<float>(RoundToInt(value)));
  return 0;
}
