#include "bridge_settings.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace kestrum::rigbridge {
namespace {

constexpr std::size_t kQuotedLength = 40;
constexpr std::size_t kLongestDevice = 250;  // Hamlib keeps it in an array
constexpr double kLargestLevel = 1e6;

std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r\n";
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// Text of unknown origin for a message: one short line without control characters.
std::string Quoted(std::string_view text) {
  std::string shown(text.substr(0, kQuotedLength));
  for (char& c : shown) {
    if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) c = '?';
  }
  if (text.size() > kQuotedLength) shown += "...";
  return "\"" + shown + "\"";
}

template <typename Number>
std::optional<Number> ParseNumber(std::string_view text, Number least, Number most) {
  if (text.starts_with('+')) text.remove_prefix(1);
  Number value{};
  const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc{} || stop != text.data() + text.size()) return std::nullopt;
  if (!(value >= least && value <= most)) return std::nullopt;
  return value;
}

bool SetWhole(int& field, std::string_view value, int most) {
  const auto number = ParseNumber(value, 0, most);
  if (number) field = *number;
  return number.has_value();
}

bool SetDevice(BridgeSettings& settings, std::string_view value) {
  const bool fine = value.size() <= kLongestDevice && std::none_of(value.begin(), value.end(), [](char c) {
                      return static_cast<unsigned char>(c) < 0x20;
                    });
  if (fine) settings.device = value;
  return fine;
}

bool SetActAs(BridgeSettings& settings, std::string_view value) {
  const auto model = sets::ModelOf(value);
  if (model != sets::Model::kFT840 && model != sets::Model::kFT817) return false;
  settings.act_as = *model;
  return true;
}

bool SetMeter(BridgeSettings& settings, std::string_view value) {
  if (value != "strength" && value != "raw") return false;
  settings.meter.source = value == "raw" ? MeterSource::kRaw : MeterSource::kStrength;
  return true;
}

bool SetScale(BridgeSettings& settings, std::string_view value) {
  if (value == "default") {
    settings.meter.linear.reset();
    return true;
  }
  constexpr std::string_view kLinear = "linear:";
  const std::size_t dots = value.find("..");
  if (!value.starts_with(kLinear) || dots == std::string_view::npos) return false;
  const auto low =
      ParseNumber(value.substr(kLinear.size(), dots - kLinear.size()), -kLargestLevel, kLargestLevel);
  const auto high = ParseNumber(value.substr(dots + 2), -kLargestLevel, kLargestLevel);
  if (!low || !high || *low >= *high) return false;
  settings.meter.linear = LinearScale{*low, *high};
  return true;
}

bool SetOffset(BridgeSettings& settings, std::string_view value) {
  const auto offset = ParseNumber(value, -kLargestLevel, kLargestLevel);
  if (offset) settings.meter.offset = *offset;
  return offset.has_value();
}

bool SetLink(BridgeSettings& settings, std::string_view value) {
  if (value.size() != 4 || !value.starts_with("com") || value[3] < '1' || value[3] > '6') return false;
  settings.link = value;
  return true;
}

std::string NumberText(double number) {
  std::array<char, 64> text{};
  const auto [end, error] = std::to_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc{} ? std::string(text.data(), end) : "0";
}

std::string ScaleText(const MeterScale& meter) {
  if (!meter.linear) return "default";
  return "linear:" + NumberText(meter.linear->low) + ".." + NumberText(meter.linear->high);
}

struct Field {
  std::string_view name;
  std::string_view wanted;
  bool (*set)(BridgeSettings&, std::string_view);
  std::string (*text)(const BridgeSettings&);
};
using B = BridgeSettings;
constexpr std::array<Field, 8> kFields = {{
    {"model", "the number of a rig in rigbridge --list",
     [](B& b, std::string_view v) { return SetWhole(b.model, v, 99999999); },
     [](const B& b) { return std::to_string(b.model); }},
    {"device", "a serial port or host:port", SetDevice, [](const B& b) { return b.device; }},
    {"speed", "baud, or 0 for the rig's default",
     [](B& b, std::string_view v) { return SetWhole(b.speed, v, 4000000); },
     [](const B& b) { return std::to_string(b.speed); }},
    {"act-as", "FT840 or FT817", SetActAs, [](const B& b) { return std::string(sets::ModelName(b.act_as)); }},
    {"meter", "strength or raw", SetMeter,
     [](const B& b) { return std::string(b.meter.source == MeterSource::kRaw ? "raw" : "strength"); }},
    {"scale", "default or linear:LOW..HIGH", SetScale, [](const B& b) { return ScaleText(b.meter); }},
    {"offset", "dB", SetOffset, [](const B& b) { return NumberText(b.meter.offset); }},
    {"link", "com1 to com6", SetLink, [](const B& b) { return b.link; }},
}};

const Field* FieldOf(std::string_view name) {
  const auto* const field =
      std::find_if(kFields.begin(), kFields.end(), [name](const Field& row) { return row.name == name; });
  return field == kFields.end() ? nullptr : field;
}

Outcome TakeLine(BridgeSettings& settings, std::string_view line) {
  line = Trimmed(line);
  if (line.empty() || line.front() == '#' || line.front() == ';') return Done{};
  const std::size_t equals = line.find('=');
  if (equals == std::string_view::npos) return Fault{"", "not a setting: " + Quoted(line)};
  return Set(settings, Trimmed(line.substr(0, equals)), line.substr(equals + 1));
}

bool SetFlag(Invocation& invocation, std::string_view name) {
  struct Flag {
    std::string_view name;
    bool Invocation::*field;
    bool value;
  };
  constexpr std::array<Flag, 6> kFlags = {{{"--no-window", &Invocation::window, false},
                                           {"--list", &Invocation::list, true},
                                           {"--help", &Invocation::help, true},
                                           {"-h", &Invocation::help, true},
                                           {"--version", &Invocation::version, true},
                                           {"-v", &Invocation::version, true}}};
  const auto* const flag =
      std::find_if(kFlags.begin(), kFlags.end(), [name](const Flag& row) { return row.name == name; });
  if (flag == kFlags.end()) return false;
  invocation.*(flag->field) = flag->value;
  return true;
}

// Takes one option with its value.
Outcome TakeOption(Invocation& invocation, const std::string& name, const std::string& value) {
  if (name == "--dir") {
    invocation.directory = value;
    if (value.empty()) return Fault{"", "--dir wants a folder"};
    return Done{};
  }
  BridgeSettings trial;
  if (const Outcome set = Set(trial, name.substr(2), value); !set) {
    return Fault{"", "--" + set.fault().reason};
  }
  invocation.fields.emplace_back(name.substr(2), value);
  return Done{};
}

}  // namespace

Outcome Set(BridgeSettings& settings, std::string_view name, std::string_view value) {
  value = Trimmed(value);
  const Field* field = FieldOf(name);
  if (field == nullptr) return Fault{"", "unknown setting " + Quoted(name)};
  if (field->set(settings, value)) return Done{};
  return Fault{"", std::string(name) + " wants " + std::string(field->wanted) + ", not " + Quoted(value)};
}

ParsedConf ParseConf(std::string_view text) {
  ParsedConf parsed;
  if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
  for (int number = 1; !text.empty(); ++number) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const Outcome taken = TakeLine(parsed.settings, text.substr(0, end));
    if (!taken && !parsed.complaint) {
      parsed.complaint = Fault{"rigbridge.conf line " + std::to_string(number), taken.fault().reason};
    }
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return parsed;
}

std::string ConfText(const BridgeSettings& settings) {
  std::string text;
  for (const Field& field : kFields) {
    text.append(field.name).append("=").append(field.text(settings)).append("\n");
  }
  return text;
}

Result<Invocation> ParseCommandLine(const std::vector<std::string>& arguments) {
  Invocation invocation;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& name = arguments[i];
    if (SetFlag(invocation, name)) continue;
    const std::size_t equals = name.find('=');
    const bool known = name == "--dir" || name.starts_with("--dir=") ||
                       (name.starts_with("--") && FieldOf(std::string_view(name).substr(
                                                      2, equals == std::string::npos ? equals : equals - 2)));
    if (!known) return Fault{"", "unknown option " + Quoted(name)};
    const bool value_follows = equals == std::string::npos;
    if (value_follows && i + 1 == arguments.size()) return Fault{"", name + " wants a value"};
    const Outcome taken = value_follows
                              ? TakeOption(invocation, name, arguments[++i])
                              : TakeOption(invocation, name.substr(0, equals), name.substr(equals + 1));
    if (!taken) return taken.fault();
  }
  return invocation;
}

std::string VersionText() {
  return "rigbridge " RIGBRIDGE_VERSION;
}

std::string HelpText() {
  return R"(Usage: rigbridge [options]

Makes any rig or receiver that Hamlib knows look like an FT840 or FT817 to Kestrum, on a
port of the name com1 beside the program. The window keeps its choices in rigbridge.conf,
also beside the program; an option holds for this run, over what stands there.

  --list              the rigs that Hamlib knows, with their numbers
  --model N           number of the rig in that list
  --device D          its serial port, or host:port
  --speed BAUD        of the serial port; 0: the rig's default
  --act-as SET        FT840 (default; 256 steps, up to 30 MHz) or FT817 (16 steps, also
                      VHF and UHF); choose the same in Kestrum
  --meter M           strength (default): dB relative to S9, shown by Kestrum's default
                      table; raw: the rig's own figure, for a table of your own
  --scale S           linear:LOW..HIGH spreads this range of dB (or of raw figures) over
                      raw 0 to 255, for a table of your own; default: as above
  --offset DB         added to each reading first
  --link NAME         com1 (default) to com6: the port that is chosen in Kestrum
  --dir DIR           folder for the link (the program's own)
  --no-window         no window: tell what happens on the standard output
  --help, --version

A software receiver: rigbridge --model 2 --device localhost:7356 --scale linear:-120..0
)";
}

}  // namespace kestrum::rigbridge
