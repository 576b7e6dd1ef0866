#include "config/main_config.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <string_view>
#include <vector>

#include "config/app_title.h"
#include "text/number_text.h"
#include "text/text.h"
#include "text/text_file.h"

namespace kestrum {
namespace {

constexpr const char* kFileName = "\\Kestrum.cfg";
constexpr const char* kKept = ".bad";
constexpr std::size_t kFixedLines = 22;
constexpr std::uint64_t kLargestFile = 1 << 20;
constexpr std::size_t kLongestValue = 72;   // of a coordinate, a frequency with its unit or a caption
constexpr std::size_t kLongestText = 4096;  // of a path, an antenna or a height

// Sign and digits with at most one point, nothing else.
bool IsNumber(std::string_view text) {
  if (!text.empty() && (text.front() == '-' || text.front() == '+')) text.remove_prefix(1);
  const bool only_digits_and_points = text.find_first_not_of("0123456789.") == std::string_view::npos;
  const bool a_digit = text.find_first_of("0123456789") != std::string_view::npos;
  return only_digits_and_points && a_digit && std::count(text.begin(), text.end(), '.') <= 1;
}

// Takes the lines one after the other; the first that cannot be understood makes the whole file bad.
class LineReader {
 public:
  explicit LineReader(const std::vector<std::string>& lines) : lines_(lines) {}

  bool ok() const { return ok_; }

  std::string Text() {
    if (next_ < lines_.size()) return lines_[next_++];
    ok_ = false;
    return {};
  }

  void Flag(bool& flag) {
    const std::string line = Text();
    if (line != "#TRUE#" && line != "#FALSE#") ok_ = false;
    flag = line == "#TRUE#";
  }

  template <typename... Number>
  void Numbers(Number&... numbers) {
    line_ = Replace(Text(), ',', ' ');
    rest_ = line_;
    (TakeNumber(numbers), ...);
    if (!Field().empty()) ok_ = false;
  }

 private:
  std::string_view Field() {
    rest_.remove_prefix(std::min(rest_.find_first_not_of(' '), rest_.size()));
    const auto field = rest_.substr(0, rest_.find(' '));
    rest_.remove_prefix(field.size());
    return field;
  }

  template <typename Number>
  void TakeNumber(Number& number) {
    using Limits = std::numeric_limits<Number>;
    const auto field = Field();
    const double value = Val(field);
    const bool fits =
        value >= static_cast<double>(Limits::lowest()) && value <= static_cast<double>(Limits::max());
    const bool whole = !Limits::is_integer || value == std::floor(value);
    if (IsNumber(field) && fits && whole) {
      number = static_cast<Number>(value);
    } else {
      ok_ = false;
    }
  }

  const std::vector<std::string>& lines_;
  std::size_t next_ = 1;  // the version line has been read
  std::string line_;
  std::string_view rest_;  // of line_
  bool ok_ = true;
};

// Fills `settings` from the lines of a file; false, and `settings` half filled, when one is missing or bad.
bool ReadSettings(const std::vector<std::string>& lines, Settings& settings) {
  LineReader reader(lines);
  reader.Numbers(settings.RigModel, settings.ComPort, settings.BaudRate);
  reader.Numbers(settings.TimeIntervalMs);
  reader.Numbers(settings.RigMode);
  reader.Numbers(settings.FieldStrengthUnit);
  reader.Numbers(settings.SquelchLevel);
  reader.Numbers(settings.MainLeft, settings.MainTop);
  reader.Numbers(settings.MinimalLeft, settings.MinimalTop);
  reader.Numbers(settings.KHzStep);
  reader.Numbers(settings.DistanceIntervalKm);
  reader.Flag(settings.ProgressBarMode);
  reader.Flag(settings.ShowDDE);
  reader.Flag(settings.LogByDistance);
  reader.Flag(settings.AverageRSSI);
  reader.Flag(settings.DialLock);
  settings.TxLat = reader.Text();
  settings.TxLong = reader.Text();
  settings.TxHeight = reader.Text();
  settings.FrequencyText = reader.Text();
  settings.CalibrationFiles[2] = reader.Text();
  settings.LogFileName = reader.Text();
  settings.OnOffCaption = reader.Text();
  if (!reader.ok()) return false;
  const std::size_t antennas = std::min(lines.size() - kFixedLines, settings.TxAntennas.size());
  std::copy_n(lines.begin() + kFixedLines, antennas, settings.TxAntennas.begin());
  return true;
}

// No text is longer than what its field can hold: such a file is none of ours.
bool FieldsFit(const Settings& settings) {
  const auto fits = [](std::size_t longest) {
    return [longest](const std::string& text) { return text.size() <= longest; };
  };
  const std::array values = {settings.TxLat, settings.TxLong, settings.FrequencyText, settings.OnOffCaption};
  return std::all_of(values.begin(), values.end(), fits(kLongestValue)) &&
         std::all_of(settings.TxAntennas.begin(), settings.TxAntennas.end(), fits(kLongestText)) &&
         settings.TxHeight.size() <= kLongestText && settings.CalibrationFiles[2].size() <= kLongestText &&
         settings.LogFileName.size() <= kLongestText;
}

// A file cut off inside its last fixed line: the power caption is then only a piece of itself.
bool CutInPowerCaption(std::string_view bytes, const std::vector<std::string>& lines) {
  const bool line_ended = bytes.ends_with('\n') || bytes.ends_with('\r');
  if (lines.size() != kFixedLines || line_ended) return false;
  return !SameText(lines.back(), kPowerOnCaption) && !SameText(lines.back(), kPowerOffCaption);
}

template <typename... Number>
std::string NumberLine(Number... numbers) {
  return ((NumberText(numbers) + " ") + ...);
}

template <typename... Number>
std::string SingleLine(Number... numbers) {
  return ((NumberTextSingle(numbers) + " ") + ...);
}

std::string FlagLine(bool flag) {
  return flag ? "#TRUE#" : "#FALSE#";
}

}  // namespace

MainConfig::MainConfig(State& state, Form1& form, const OwnPorts& ports)
    : state_(state), form_(form), ports_(ports) {}

void MainConfig::LoadCfg() {
  const std::string path = ports_.program.PathOf(kFileName);
  if (!ports_.files.Exists(path)) {
    SetDefaults();
    state_.InfoRequest = 1;
    return;
  }
  // Too long to be ours, or to be copied: it is moved aside by the first save.
  keep_before_save_ = ports_.files.Size(path).value_or(0) > kLargestFile;
  if (keep_before_save_) {
    RejectFile(path);
    return;
  }
  const Result<std::string> bytes = ports_.files.Read(path, kLargestFile);
  if (!bytes) {
    TellUnreadable(bytes.fault());
    return;
  }
  const auto lines = SplitLines(WithoutUtf8Mark(bytes.value()));
  Settings loaded = state_.settings;
  const bool good = !lines.empty() && SameText(lines.front(), VersionedTitle) &&
                    ReadSettings(lines, loaded) && !CutInPowerCaption(bytes.value(), lines) &&
                    FieldsFit(loaded);
  if (!good) {
    // What cannot be copied now is moved aside by the first save.
    keep_before_save_ = !ports_.files.Replace(path + kKept, bytes.value());
    RejectFile(path);
    return;
  }
  state_.settings = loaded;
  state_.AboveHF = Val(loaded.FrequencyText) > kHfLimitKhz;
  form_.cmdFT817OnOff.caption = loaded.OnOffCaption;
}

// In both: the defaults before the message. Should the program be ended under it, they are what counts.
void MainConfig::RejectFile(const std::string& path) {
  SetDefaults();
  ports_.dialogs.Show(AppTitle,
                      "LoadCfg\r\nInvalide version of " + path + "\r\n\r\nI load default values now!",
                      Icon::kExclamation);
}

void MainConfig::TellUnreadable(const Fault& fault) {
  SetDefaults();
  unreadable_ = true;
  ports_.dialogs.Show(AppTitle, "LoadCfg\r\n" + fault.what + "\r\n" + fault.reason, Icon::kExclamation);
}

void MainConfig::SaveAtEnd() {
  if (!unreadable_) Save(Told::kInABox);
}

void MainConfig::SaveCfg() {
  Save(Told::kInPassing);
}

std::string MainConfig::FileText() const {
  const Settings& settings = state_.settings;
  std::vector<std::string> lines = {
      VersionedTitle,
      NumberLine(settings.RigModel, settings.ComPort, settings.BaudRate),
      NumberLine(settings.TimeIntervalMs),
      NumberLine(settings.RigMode),
      NumberLine(settings.FieldStrengthUnit),
      NumberLine(settings.SquelchLevel),
      SingleLine(settings.MainLeft, settings.MainTop),
      SingleLine(settings.MinimalLeft, settings.MinimalTop),
      SingleLine(settings.KHzStep),
      SingleLine(settings.DistanceIntervalKm),
      FlagLine(settings.ProgressBarMode),
      FlagLine(settings.ShowDDE),
      FlagLine(settings.LogByDistance),
      FlagLine(settings.AverageRSSI),
      FlagLine(settings.DialLock),
      settings.TxLat,
      settings.TxLong,
      settings.TxHeight,
      form_.lblFreq.caption,
      settings.CalibrationFiles[2],
      settings.LogFileName,
      form_.cmdFT817OnOff.caption,
  };
  // Gaps in the list close up at the next load; kept on purpose, the list is filled up to its first gap.
  std::copy_if(settings.TxAntennas.begin(), settings.TxAntennas.end(), std::back_inserter(lines),
               [](const std::string& antenna) { return !antenna.empty(); });
  return JoinLines(lines);
}

void MainConfig::Save(Told fault) {
  struct Progress {
    bool moved_aside = false;
    Outcome outcome = Done{};
  };
  auto save = std::make_shared<Progress>();
  const auto write = [&files = ports_.files, path = ports_.program.PathOf(kFileName), bytes = FileText(),
                      keep = keep_before_save_, save] {
    if (keep) {
      save->outcome = files.Rename(path, path + kKept);
      save->moved_aside = save->outcome.ok();
    }
    if (save->outcome) save->outcome = files.Replace(path, bytes);
  };
  ports_.worker.Post(write, [this, save, fault] {
    if (save->moved_aside) keep_before_save_ = false;
    if (save->outcome) {
      unreadable_ = false;
      return;
    }
    const std::string text = "SaveCfg\r\n" + save->outcome.fault().reason;
    if (fault == Told::kInABox) {
      ports_.dialogs.Show(VersionedTitle, text, Icon::kCritical);
    } else {
      // It may come inside a cycle, which must not wait for an answer.
      ports_.dialogs.Notify(VersionedTitle, text, Icon::kCritical);
    }
  });
}

void MainConfig::SetDefaults() {
  Settings& settings = state_.settings;
  settings.RigModel = kFT817;
  settings.ComPort = 1;
  settings.BaudRate = 4800;
  settings.TimeIntervalMs = 5000;
  settings.RigMode = kLsb;
  settings.FieldStrengthUnit = kMicrovolt;
  settings.SquelchLevel = 0;
  settings.KHzStep = 9;
  settings.DistanceIntervalKm = 1;
  settings.ProgressBarMode = true;
  settings.ShowDDE = true;
  settings.LogByDistance = false;
  settings.AverageRSSI = false;
  settings.DialLock = false;
  settings.TxLat = "5157.00N";
  settings.TxLong = "00532.00E";
  settings.TxHeight = "? m";
  settings.FrequencyText = "3630";
  settings.CalibrationFiles[2] = ports_.program.PathOf("\\Calibration3.cfg");
  settings.LogFileName = ports_.program.PathOf("\\RSSI-GPS.log");
  settings.TxAntennas[0] = "Antenna1, PWR 10W";
}

void MainConfig::mnuSavecfg_Click() {
  ports_.beeper.Beep();
  SaveCfg();
}

void MainConfig::mnuDefaultCfg_Click() {
  const bool yes = ports_.dialogs.AskYesNo(AppTitle, "Save DefaultCFG", Icon::kQuestion);
  if (ports_.program.Ended() || !yes) return;
  Run(ends_now);  // first: no record may be made of the new values
  SetDefaults();
  Save(Told::kInABox);
  if (ports_.program.Ended()) return;
  ports_.dialogs.Show(AppTitle, "Restart me", Icon::kInformation);
  if (ports_.program.Ended()) return;
  Run(last_write);
  // Kept on purpose: no shutdown steps, so that nothing overwrites the defaults just written.
  ports_.program.End();
}

}  // namespace kestrum
