#pragma once

#include <string>
#include <string_view>

// Every number that is shown, written or parsed goes through here. "." is the decimal point whatever the
// locale; nothing is ever written with an exponent.
namespace kestrum {

// Leading number of a text: blanks are skipped wherever they stand, then an optional sign and digits with at
// most one point. 0 when there is none. "1e3" reads as 1, "? m" as 0.
double Val(std::string_view text);

// The number with a leading blank when it is not negative (the place of the sign), no zero before the point,
// no trailing zeros: 9600 gives " 9600", 0.5 gives " .5", -0.5 gives "-.5". At most 15 significant digits.
// Not-a-number and infinities give " 0": they are no readings.
std::string NumberText(double value);
// The same for a single-precision number: at most 7 significant digits.
std::string NumberTextSingle(float value);

// NumberText without the leading blank: "9600", ".5".
std::string ShortNumber(double value);
std::string ShortNumberSingle(float value);

// A zero put before a leading point: ".5" gives "0.5", "-.5" gives "-0.5"; other texts stay.
std::string WithLeadingZero(std::string_view number);

// Rounded to `decimals` places, halves to the even neighbour, after scaling in double precision.
double RoundHalfEven(double value, int decimals);
// The same to a whole number; clamped to the range of int.
int RoundToInt(double value);

// A fixed pattern of `integer_digits` zeros, a point and `decimals` zeros: FixedPattern(6.25, 3, 1) gives
// "006.3". Halves are rounded away from zero on the decimal text. decimals is at least 1.
std::string FixedPattern(double value, int integer_digits, int decimals);

// The last two digits of a number that is not negative: 7 gives "07", 2026 gives "26".
std::string TwoDigits(int number);

// At least three digits, padded on the left with "0": 7 gives "007". The padding goes before a sign too,
// since it is put before the text: -5 gives "0-5".
std::string ThreeDigits(int value);

}  // namespace kestrum
