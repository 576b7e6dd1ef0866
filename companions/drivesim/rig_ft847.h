#pragma once

#include <array>

#include "rig.h"

namespace kestrum::drivesim {

/// FT847: the FT817's frame without acknowledges, and with three receivers (main, satellite RX, satellite TX)
/// that the opcode's upper digit selects. CAT itself has a switch: 0x00 on, 0x80 off; a set whose CAT is off
/// hears nothing else.
class RigFt847 : public Rig {
 public:
  explicit RigFt847(const RigSetup& setup);

  Answer Handle(const Command& command, int meter) override;
  int MeterMax() const override { return 31; }

 private:
  struct Vfo {
    std::uint32_t frequency_10hz = 0;
    std::uint8_t mode = 0;
  };

  Answer HandleVfo(const Command& command);
  std::optional<std::string> HandleSwitch(std::uint8_t opcode);

  bool five_byte_status_;
  bool cat_on_ = true;
  bool transmitting_ = false;
  std::array<Vfo, 3> vfos_;
};

}  // namespace kestrum::drivesim
