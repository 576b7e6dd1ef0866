#include "cat/rigs.h"

#include "text/text.h"

namespace kestrum {
namespace {

constexpr std::array kRangesFT817{FrequencyRange{100, 30000}, FrequencyRange{50000, 54000},
                                  FrequencyRange{76000, 154000}, FrequencyRange{430000, 440000}};
constexpr std::array kRangesFT840{FrequencyRange{100, 30000}};
constexpr std::array kRangesFT847{FrequencyRange{100, 36990}, FrequencyRange{37000, 76000},
                                  FrequencyRange{108000, 174000}, FrequencyRange{420000, 512000}};
constexpr std::array kRangesFT857{FrequencyRange{100, 56000}, FrequencyRange{76000, 108000},
                                  FrequencyRange{118000, 164000}, FrequencyRange{420000, 470000}};

constexpr std::array<std::uint8_t, 5> kLockOn{0, 0, 0, 0, 0};
constexpr std::array<std::uint8_t, 5> kLockOff{0, 0, 0, 0, 128};

constexpr ModeCommand kModesFT817{{1, 0, 2, 3, 4, 4, 8}, 0, 7};
constexpr ModeCommand kNoModes{{kNoMode, kNoMode, kNoMode, kNoMode, kNoMode, kNoMode, kNoMode}, 0, 0};

// Kept on purpose: the FT857 gets the FT840's frequency command and the FT817's modes; FT847 and FT897 are
// not served yet, so they get the previous frame again, and the FT897 no mode.
constexpr std::array kRigs{
    RigRow{.name = "FT817",
           .ranges = kRangesFT817,
           .meter = MeterRead::kReceiveStatus,
           .frequency = FrequencyFrame::kFirstPairFirst,
           .modes = kModesFT817,
           .lock_on = kLockOn,
           .lock_off = kLockOff,
           .has_power_command = true},
    RigRow{.name = "FT840",
           .ranges = kRangesFT840,
           .meter = MeterRead::kMeter,
           .frequency = FrequencyFrame::kLastPairFirst,
           .modes = {{1, 0, 2, 3, 4, 5, 6}, 3, 12},
           .lock_on = {0, 0, 0, 1, 4},
           .lock_off = {0, 0, 0, 0, 4}},
    RigRow{.name = "FT847",
           .in_menu = false,
           .ranges = kRangesFT847,
           .meter = MeterRead::kReceiveStatusFiveBytes,
           .frequency = FrequencyFrame::kPreviousFrame,
           .modes = {{1, 0, 2, 130, 4, kNoMode, 136}, 3, 7},
           .lock_on = kLockOn,
           .lock_off = kLockOff},
    RigRow{.name = "FT857",
           .ranges = kRangesFT857,
           .meter = MeterRead::kReceiveStatus,
           .frequency = FrequencyFrame::kLastPairFirst,
           .modes = kModesFT817,
           .lock_on = kLockOn,
           .lock_off = kLockOff},
    RigRow{.name = "FT897",
           .in_menu = false,
           .ranges = kRangesFT857,
           .meter = MeterRead::kReceiveStatus,
           .frequency = FrequencyFrame::kPreviousFrame,
           .modes = kNoModes,
           .lock_on = kLockOn,
           .lock_off = kLockOff},
};

}  // namespace

std::span<const RigRow> Rigs() {
  return kRigs;
}

const RigRow* RigOf(int rig_model) {
  const bool known = rig_model >= 1 && rig_model <= static_cast<int>(kRigs.size());
  return known ? &kRigs.at(static_cast<std::size_t>(rig_model - 1)) : nullptr;
}

std::optional<int> RigNumber(std::string_view name) {
  int number = 0;
  for (const RigRow& row : kRigs) {
    ++number;
    if (SameText(name, row.name)) return number;
  }
  return {};
}

}  // namespace kestrum
