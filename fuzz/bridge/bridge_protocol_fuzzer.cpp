#include <algorithm>

#include "set_side.h"
#include "support/fuzz.h"

// The first character names the set ("4" an FT840, else an FT817), the second, when it is "o", takes the rig
// away. Then come pieces of what a client sends with "|" between them, a tenth of a second apart; after "|" a
// "." waits a second more.
namespace kestrum::rigbridge {
namespace {

using fuzz::Require;

struct Range {
  std::uint32_t from_10hz;
  std::uint32_t to_10hz;
};

bool InRange(sets::Model model, std::uint32_t frequency_10hz) {
  static const std::vector<Range> ft840 = {{10000, 3000000}};
  static const std::vector<Range> ft817 = {{10000, 5600000}, {7600000, 15400000}, {42000000, 47000000}};
  const auto& ranges = model == sets::Model::kFT840 ? ft840 : ft817;
  return std::any_of(ranges.begin(), ranges.end(), [&](const Range& range) {
    return frequency_10hz >= range.from_10hz && frequency_10hz <= range.to_10hz;
  });
}

void CheckChange(sets::Model model, const sets::Change& change) {
  if (change.frequency_10hz) {
    Require(InRange(model, *change.frequency_10hz), "only frequencies of the set go to the rig",
            std::to_string(*change.frequency_10hz));
  }
  if (change.mode) Require(!sets::ModeName(*change.mode).empty(), "only modes that have a name");
  Require(!change.powered || model == sets::Model::kFT817, "an FT840 has no power command");
}

// After whatever was sent and a pause, the meter is read as if nothing had been.
void CheckMeter(SetSide& set, sets::Model model, bool rig_is_there, double now_s) {
  const bool ft840 = model == sets::Model::kFT840;
  const sets::Bytes read = {0, 0, 0, 0, static_cast<std::uint8_t>(ft840 ? 0xF7 : 0xE7)};
  const auto value = rig_is_there ? std::optional(Reading{-6, now_s}) : std::nullopt;
  const sets::Bytes reply = set.Receive(read, value, now_s);
  if (!rig_is_there) return Require(reply.empty(), "without a value no answer");
  const sets::Bytes expected = ft840 ? sets::Bytes{98, 98, 98, 98, 0xF7} : sets::Bytes{6};
  Require(reply == expected, "the meter tells S8", sets::HexText(reply));
}

void Play(const std::string& text) {
  BridgeSettings settings;
  settings.act_as = text[0] == '4' ? sets::Model::kFT840 : sets::Model::kFT817;
  const bool rig_is_there = text[1] != 'o';
  SetSide set(settings);
  double now_s = 0;
  for (std::string piece : fuzz::Pieces(text.substr(2), 100)) {
    now_s += piece.starts_with('.') ? 1.1 : 0.1;
    if (piece.starts_with('.')) piece.erase(0, 1);
    const sets::Bytes bytes(piece.begin(), piece.end());
    const auto value =
        rig_is_there ? std::optional(Reading{static_cast<double>(piece.size()), now_s}) : std::nullopt;
    const sets::Bytes reply = set.Receive(bytes, value, now_s);
    // The longest answer, the FT840's status, is 19 bytes for a command of five that may have begun before.
    Require(reply.size() <= (bytes.size() + 4) / 5 * 19, "no answer without a command");
    CheckChange(settings.act_as, set.TakeChanges(now_s));
    if (const auto due_s = set.NextDueS()) {
      Require(*due_s > now_s && *due_s <= now_s + SetSide::kWakeUpS, "a lock is due soon");
    }
  }
  now_s += 1;
  CheckMeter(set, settings.act_as, rig_is_there, now_s);
  set.TakeChanges(now_s);
  Require(!set.NextDueS() && IsEmpty(set.TakeChanges(now_s)), "each change is told once");
}

}  // namespace
}  // namespace kestrum::rigbridge

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = kestrum::fuzz::Text(data, size);
  if (text.size() >= 2) kestrum::rigbridge::Play(text);
  return 0;
}
