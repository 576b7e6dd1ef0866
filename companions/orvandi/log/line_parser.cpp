#include "log/line_parser.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <string>

#include "log/text_encoding.h"

namespace orvandi {
namespace {

constexpr std::string_view kSeparator = ", ";
// No field of a log is as large; beyond it a text is no reading.
constexpr double kLargestNumber = 1e12;
constexpr std::size_t kShortestDashes = 10;
constexpr std::size_t kLongestNumber = 40;  // characters
constexpr std::size_t kExactDigits = 15;    // every whole number of so many is a double
constexpr std::array<double, kExactDigits + 1> kPowersOfTen = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                               1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

bool IsDigit(char character) {
  return character >= '0' && character <= '9';
}

bool SameText(std::string_view text, std::string_view lower) {
  return std::equal(text.begin(), text.end(), lower.begin(), lower.end(), [](char a, char b) {
    return (a >= 'A' && a <= 'Z' ? static_cast<char>(a - 'A' + 'a') : a) == b;
  });
}

// Takes a whole number of one to `most` digits off the front.
std::optional<int> TakeDigits(std::string_view& text, std::size_t most) {
  std::size_t length = 0;
  int value = 0;
  while (length < text.size() && length < most && IsDigit(text[length])) {
    value = value * 10 + (text[length] - '0');
    ++length;
  }
  if (length == 0) return {};
  text.remove_prefix(length);
  return value;
}

bool TakeOneOf(std::string_view& text, std::string_view characters) {
  const auto is_front = [&](char character) { return character == text.front(); };
  if (text.empty() || std::none_of(characters.begin(), characters.end(), is_front)) return false;
  text.remove_prefix(1);
  return true;
}

// "hh:mm:ss" off the front; other systems write the time with points.
std::optional<std::int32_t> TakeTimeOfDay(std::string_view& text) {
  const auto hour = TakeDigits(text, 2);
  if (!hour || !TakeOneOf(text, ":.")) return {};
  const auto minute = TakeDigits(text, 2);
  if (!minute || !TakeOneOf(text, ":.")) return {};
  const auto second = TakeDigits(text, 2);
  if (!second || *hour > 23 || *minute > 59 || *second > 59) return {};
  return *hour * 3600 + *minute * 60 + *second;
}

struct CalendarDay {
  int day = 0;
  int month = 0;
  int year = 0;
};

std::optional<CalendarDay> TakeDate(std::string_view& text) {
  const auto day = TakeDigits(text, 2);
  if (!day || !TakeOneOf(text, "-/.")) return {};
  const auto month = TakeDigits(text, 2);
  if (!month || !TakeOneOf(text, "-/.")) return {};
  const auto year = TakeDigits(text, 4);
  if (!year) return {};
  return CalendarDay{*day, *month, *year};
}

std::optional<std::int64_t> SecondsOf(const CalendarDay& day) {
  const std::chrono::year_month_day date(std::chrono::year(day.year),
                                         std::chrono::month(static_cast<unsigned>(day.month)),
                                         std::chrono::day(static_cast<unsigned>(day.day)));
  if (!date.ok() || day.year < 1900) return {};
  return std::chrono::seconds(std::chrono::sys_days(date).time_since_epoch()).count();
}

// Degrees and minutes with the hemisphere's letter last.
std::optional<double> ParseCoordinate(std::string_view text, char positive, char negative, double largest) {
  text = Trimmed(text);
  if (text.size() < 2 || text.size() > 24) return {};
  const char hemisphere = text.back();
  if (hemisphere != positive && hemisphere != negative) return {};
  text.remove_suffix(1);
  std::size_t point = 0;
  while (point < text.size() && text[point] != '.' && text[point] != ',') ++point;
  if (point == text.size() || point < 3 || point > 5) return {};
  int packed = 0;
  for (const char digit : text.substr(0, point)) {
    if (!IsDigit(digit)) return {};
    packed = packed * 10 + (digit - '0');
  }
  double fraction = 0;
  double weight = 1;
  for (const char digit : text.substr(point + 1)) {
    if (!IsDigit(digit)) return {};
    weight *= 10;
    fraction = fraction * 10 + (digit - '0');
  }
  const double minutes = packed % 100 + fraction / weight;
  const int whole_degrees = packed / 100;
  const double degrees = whole_degrees + minutes / 60;
  if (minutes >= 60 || degrees > largest) return {};
  return hemisphere == positive ? degrees : -degrees;
}

// A number as its characters come.
struct DecimalNumber {
  std::array<char, kLongestNumber> text{};
  std::size_t length = 0;
  std::size_t digits = 0;
  std::size_t decimals = 0;
  std::uint64_t mantissa = 0;  // of the first digits that fit
  bool point = false;

  void Keep(char character) { text[length++] = character; }
  void Add(char digit) {
    Keep(digit);
    ++digits;
    if (digits <= kExactDigits) mantissa = mantissa * 10 + static_cast<std::uint64_t>(digit - '0');
    if (point) ++decimals;
  }
  [[nodiscard]] std::optional<double> Value() const {
    if (digits == 0) return {};
    if (digits <= kExactDigits) {
      // Both are exact as a double, so that their quotient is the nearest one to the text.
      const double value = static_cast<double>(mantissa) / kPowersOfTen[decimals];
      return text[0] == '-' ? -value : value;
    }
    double value = 0;
    const auto result = std::from_chars(text.data(), text.data() + length, value, std::chars_format::fixed);
    return result.ec == std::errc() ? std::optional(value) : std::nullopt;
  }
};

float NumberOr(std::string_view text, float otherwise) {
  const auto number = ParseLeadingNumber(text);
  return number ? static_cast<float>(*number) : otherwise;
}

// The next field, up to a comma and a blank; the last one is the rest.
std::string_view TakeField(std::string_view& line) {
  const auto end = line.find(kSeparator);
  const std::string_view field = line.substr(0, end);
  line.remove_prefix(end == std::string_view::npos ? line.size() : end + kSeparator.size());
  return field;
}

// " FT840 LSB  3630 kHz": rig, mode (none for FM) and frequency, blanks between them.
void ParseRig(std::string_view text, Block& block) {
  text = Trimmed(text);
  const auto rig_end = text.find(' ');
  block.rig = ToUtf8(text.substr(0, rig_end));
  if (rig_end == std::string_view::npos) return;
  text = Trimmed(text.substr(rig_end));
  if (!text.empty() && !ParseLeadingNumber(text)) {
    const auto mode_end = text.find(' ');
    block.mode = ToUtf8(text.substr(0, mode_end));
    text = mode_end == std::string_view::npos ? std::string_view() : Trimmed(text.substr(mode_end));
  }
  const auto frequency = ParseLeadingNumber(text);
  if (frequency && *frequency > 0) block.frequency_khz = *frequency;
}

void TakeTransmitter(std::string_view latitude_text, std::string_view longitude_text, Block& block) {
  const auto latitude = ParseLatitude(latitude_text);
  const auto longitude = ParseLongitude(longitude_text);
  if (!latitude || !longitude) return;
  block.tx_latitude_deg = *latitude;
  block.tx_longitude_deg = *longitude;
}

// Splits into at most as many fields as there is room for; the count may be larger.
struct Fields {
  std::array<std::string_view, 24> field;
  std::size_t count = 0;

  explicit Fields(std::string_view line) {
    // Fields are so short that looking at each character beats searching.
    std::size_t start = 0;
    for (std::size_t at = 0; at + 1 < line.size(); ++at) {
      if (line[at] != kSeparator[0] || line[at + 1] != kSeparator[1]) continue;
      field[count++] = line.substr(start, at - start);
      if (count == field.size()) return;
      start = ++at + 1;
    }
    field[count++] = line.substr(start);
  }
};

bool IsFieldStrength(std::string_view text) {
  constexpr std::string_view kUnit = "mv/m";
  text = Trimmed(text);
  return text.size() >= kUnit.size() && SameText(text.substr(text.size() - kUnit.size()), kUnit);
}

void ParsePlace(const std::string_view* fields, Record& record) {
  const auto latitude = ParseLatitude(fields[0]);
  const auto longitude = ParseLongitude(fields[1]);
  if (latitude && longitude) {
    record.latitude_deg = *latitude;
    record.longitude_deg = *longitude;
  } else {
    record.marks |= kNoPosition;
  }
  record.distance_km = NumberOr(fields[2], kUnknown);
  record.height_m = NumberOr(fields[3], kUnknown);
  // The logger writes the way from the car to the transmitter; here it is seen from the transmitter.
  if (const auto bearing = ParseLeadingNumber(fields[4])) {
    record.bearing_deg = static_cast<float>(std::fmod(std::fabs(*bearing) + 180, 360));
  }
}

void ParseSignal(const std::string_view* fields, Record& record) {
  const auto raw = ParseLeadingNumber(fields[0]);
  if (raw && *raw >= 0 && *raw <= 255) record.raw = static_cast<std::int16_t>(*raw);
  record.microvolt = NumberOr(fields[2], kUnknown);
  record.millivolt_per_m = NumberOr(fields[3], kUnknown);
  const bool known = !Trimmed(fields[1]).starts_with("S?") && !std::isnan(record.millivolt_per_m);
  if (!known) record.marks |= kUnknownSignal;
}

}  // namespace

std::optional<std::int32_t> ParseTimeOfDay(std::string_view text) {
  text = Trimmed(text);
  const auto time = TakeTimeOfDay(text);
  return text.empty() ? time : std::nullopt;
}

std::optional<double> ParseLatitude(std::string_view text) {
  return ParseCoordinate(text, 'N', 'S', 90);
}

std::optional<double> ParseLongitude(std::string_view text) {
  return ParseCoordinate(text, 'E', 'W', 180);
}

std::optional<double> ParseLeadingNumber(std::string_view text) {
  text = Trimmed(text);
  DecimalNumber number;
  for (const char character : text.substr(0, kLongestNumber)) {
    if (IsDigit(character)) {
      number.Add(character);
    } else if ((character == '.' || character == ',') && !number.point) {
      number.point = true;
      number.Keep('.');
    } else if (character == '-' && number.length == 0) {
      number.Keep('-');
    } else {
      break;
    }
  }
  const auto value = number.Value();
  return value && std::fabs(*value) <= kLargestNumber ? value : std::nullopt;
}

LineKind KindOf(std::string_view line) {
  if (Trimmed(line).empty()) return LineKind::kBlank;
  if (line.size() >= kShortestDashes && line.find_first_not_of('-') == std::string_view::npos) {
    return LineKind::kDashes;
  }
  std::string_view rest = line;
  if (TakeDate(rest) && !rest.empty() && rest.front() == ' ') return LineKind::kHeader;
  // A time of day, be it one that cannot be, and the end of its field.
  rest = line;
  const bool clock = TakeDigits(rest, 2) && TakeOneOf(rest, ":.") && TakeDigits(rest, 2) &&
                     TakeOneOf(rest, ":.") && TakeDigits(rest, 2);
  return clock && (rest.empty() || rest.front() == ',') ? LineKind::kRecord : LineKind::kOther;
}

std::optional<Header> ParseHeader(std::string_view line) {
  std::string_view stamp = TakeField(line);
  const auto date = TakeDate(stamp);
  const auto day_s = date ? SecondsOf(*date) : std::nullopt;
  const auto time_s = ParseTimeOfDay(stamp);
  if (!day_s || !time_s) return {};
  Header header;
  header.block.has_header = true;
  header.block.time_s = *day_s + *time_s;
  const std::string_view latitude = TakeField(line);
  const std::string_view longitude = TakeField(line);
  TakeTransmitter(latitude, longitude, header.block);
  header.block.tx_height_m = NumberOr(TakeField(line), kUnknown);
  const std::string_view rig = TakeField(line);
  ParseRig(rig, header.block);
  header.block.antenna = ToUtf8(Trimmed(line));
  header.complete = !Trimmed(rig).empty();
  return header;
}

ParsedRecord ParseRecord(std::string_view line) {
  ParsedRecord parsed;
  const Fields fields(line);
  if (fields.count < kRecordFields || !IsFieldStrength(fields.field[fields.count - 1])) {
    parsed.fault = RecordFault::kTorn;
    return parsed;
  }
  const auto time = ParseTimeOfDay(fields.field[0]);
  if (!time) {
    parsed.fault = RecordFault::kBadTime;
    return parsed;
  }
  parsed.record.time_s = *time;
  // A comma in a text of the GPS reader has made more fields of it in former versions: the last nine are
  // sure.
  const std::string_view* last_nine = fields.field.data() + fields.count - 9;
  if (!SameText(Trimmed(fields.field[1]), "gps ok")) parsed.record.marks |= kNoFix;
  ParsePlace(last_nine, parsed.record);
  ParseSignal(last_nine + 5, parsed.record);
  parsed.s_text = Trimmed(last_nine[6]);
  return parsed;
}

}  // namespace orvandi
