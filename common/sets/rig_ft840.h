#pragma once

#include <array>

#include "sets/rig.h"

namespace kestrum::sets {

// FT840: frequencies go least significant digits first, most parameters stand in the fourth byte, and
// nothing is ever acknowledged.
class RigFt840 : public Rig {
 public:
  explicit RigFt840(const RigSetup& setup);

  Answer Handle(const Command& command, std::optional<int> meter) override;
  int MeterMax() const override { return 255; }

 private:
  struct Vfo {
    std::uint32_t frequency_10hz = 0;
    Mode mode = Mode::kLsb;
  };

  std::optional<Answer> HandleRead(const Command& command, std::optional<int> meter) const;
  Answer HandleSetting(const Command& command);
  Answer SetFrequency(const Command& command);
  Answer SetMode(std::uint8_t mode_byte);
  Bytes Meter(std::optional<int> meter) const;
  Bytes Flags() const;
  Bytes Status(std::uint8_t part) const;
  static Bytes Record(const Vfo& vfo);
  Vfo& Current() { return vfos_[second_vfo_ ? 1 : 0]; }

  std::array<Vfo, 2> vfos_;
  bool second_vfo_ = false;
};

}  // namespace kestrum::sets
