#include "state_texts.h"

#include <array>
#include <cmath>
#include <cstdio>

namespace kestrum::rigbridge {
namespace {

constexpr double kQuietS = 5;

std::string KilohertzText(double hz) {
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%.2f kHz", hz / 1000);
  return text.data();
}

std::string LevelText(double db) {
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%+.0f dB to S9", std::round(db) + 0.0);
  return text.data();
}

std::string WholeText(double value) {
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%.0f", value);
  return text.data();
}

}  // namespace

std::string StateText(const RigState& state, double now_s) {
  switch (state.phase) {
    case Phase::kNoRig:
      return "Choose your rig.";
    case Phase::kOpening:
      return "Calling the rig ...";
    case Phase::kReading:
      if (state.reading && !IsFresh(*state.reading, now_s)) return "Waiting for the rig ...";
      return "Reading the rig.";
    case Phase::kSwitchedOff:
      return "Kestrum has switched the rig off.";
    case Phase::kTrouble:
      break;
  }
  std::string text = state.trouble ? state.trouble->reason : std::string("The rig is lost.");
  const double left_s = std::ceil(state.next_try_s - now_s);
  if (left_s >= 1) return text + " Next attempt in " + WholeText(left_s) + " s.";
  return text + " Trying again ...";
}

std::string ReadingText(const RigState& state, const BridgeSettings& settings, double now_s) {
  if (!state.reading || !IsFresh(*state.reading, now_s)) return "no value";
  const double value = state.reading->value;
  const int raw = RawOf(MeterReading(value, settings.meter, settings.act_as), settings.act_as);
  const bool is_raw = settings.meter.source == MeterSource::kRaw;
  return (is_raw ? "meter " + WholeText(value) : LevelText(value)) + ", raw " + std::to_string(raw);
}

std::string FrequencyText(const DialWatch& dial) {
  const auto sent = dial.SentHz();
  const auto rig = dial.RigHz();
  if (!rig) return sent ? "Kestrum wants " + KilohertzText(*sent) : "not known";
  if (!dial.Elsewhere()) return KilohertzText(*rig);
  return "The rig is on " + KilohertzText(*rig) + ", but Kestrum logs " + KilohertzText(*sent) +
         ": set the frequency in Kestrum again.";
}

std::string LinkText(const BridgeSettings& settings, std::optional<double> last_command_s, double now_s) {
  const std::string set(sets::ModelName(settings.act_as));
  if (!last_command_s) {
    return "Waiting for Kestrum: choose " + set + " and C" + settings.link.substr(1) + " in Rig + Comport.";
  }
  const double quiet_s = now_s - *last_command_s;
  if (quiet_s > kQuietS)
    return "Kestrum has last asked on " + settings.link + " " + WholeText(quiet_s) + " s ago.";
  return "Kestrum reads an " + set + " on " + settings.link + ".";
}

}  // namespace kestrum::rigbridge
