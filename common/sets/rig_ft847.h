#pragma once

#include "sets/rig.h"

namespace kestrum::sets {

// FT847: the FT817's frame without acknowledges. CAT itself has a switch: 0x00 on, 0x80 off; a set whose CAT
// is off hears nothing else.
class RigFt847 : public Rig {
 public:
  explicit RigFt847(const RigSetup& setup);

  Answer Handle(const Command& command, std::optional<int> meter) override;
  int MeterMax() const override { return 31; }

 private:
  Answer SetFrequency(const Command& command);
  Answer SetMode(std::uint8_t mode_byte);
  Bytes ReceiveStatus(std::optional<int> meter) const;

  bool cat_on_ = true;
  std::uint32_t frequency_10hz_;
  std::uint8_t mode_byte_ = 0x00;
};

}  // namespace kestrum::sets
