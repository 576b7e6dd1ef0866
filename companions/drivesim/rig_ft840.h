#pragma once

#include <array>

#include "rig.h"

namespace kestrum::drivesim {

/// FT840: frequencies go least significant digits first, most parameters stand in the fourth byte, and
/// nothing is ever acknowledged.
class RigFt840 : public Rig {
 public:
  explicit RigFt840(const RigSetup& setup);

  Answer Handle(const Command& command, int meter) override;
  int MeterMax() const override { return 255; }

 private:
  struct Vfo {
    std::uint32_t frequency_10hz = 0;
    std::uint8_t mode = 0;
    int clarifier_10hz = 0;
  };

  std::optional<Answer> HandleRead(const Command& command, int meter) const;
  std::string HandleSetting(const Command& command);
  std::string SetFrequency(const Command& command);
  std::string SetMode(std::uint8_t mode);
  std::string SetClarifier(const Command& command);
  Bytes Flags() const;
  Bytes Status(std::uint8_t part) const;
  static Bytes Record(const Vfo& vfo);
  Vfo& Current() { return vfos_[second_vfo_ ? 1 : 0]; }

  std::array<Vfo, 2> vfos_;
  bool second_vfo_ = false;
  bool split_ = false;
  bool transmitting_ = false;
};

}  // namespace kestrum::drivesim
