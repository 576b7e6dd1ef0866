#pragma once

#include <array>

#include "sets/rig.h"

namespace kestrum::sets {

// FT817, FT857 and FT897: one command table. Frequencies go most significant digits first, the parameters
// come before the opcode, and every command that sets something is acknowledged with one byte: 0x00 done,
// 0xF0 when the set already was as asked.
class RigFt817 : public Rig {
 public:
  RigFt817(Model model, const RigSetup& setup);

  Answer Handle(const Command& command, std::optional<int> meter) override;
  int MeterMax() const override { return 15; }

 private:
  struct Vfo {
    std::uint32_t frequency_10hz = 0;
    std::uint8_t mode_byte = 0;
  };

  Answer HandleAwake(const Command& command, std::optional<int> meter);
  std::optional<Answer> HandleRead(const Command& command, std::optional<int> meter) const;
  std::optional<Answer> HandleSetting(const Command& command);
  std::optional<Answer> HandlePower(std::uint8_t opcode);
  Answer SetFrequency(const Command& command);
  Answer SetMode(std::uint8_t mode_byte);
  Answer Lock(bool wanted);
  Answer Ack(std::string meaning, std::uint8_t byte = 0x00) const;
  Bytes ReceiveStatus(std::optional<int> meter) const;
  std::uint8_t MemoryCell(unsigned address) const;
  Vfo& Current() { return vfos_[second_vfo_ ? 1 : 0]; }
  const Vfo& Current() const { return vfos_[second_vfo_ ? 1 : 0]; }

  Model model_;
  bool acknowledges_;
  bool sleeps_;
  bool powered_;
  bool woken_ = false;
  std::array<Vfo, 2> vfos_;
  bool second_vfo_ = false;
  bool locked_ = false;
};

}  // namespace kestrum::sets
