#pragma once

#include <optional>
#include <vector>

#include "line_watch.h"
#include "rig_driver.h"
#include "rig_list.h"

struct s_rig;

namespace kestrum::rigbridge {

// What an error code of Hamlib (negative or not) means to the user while the meter is read.
Fault FaultOf(int hamlib_error, PortKind port);

// What an error code of Hamlib means for something that was to be set; nothing for success.
std::optional<Refusal> RefusalOf(int hamlib_error);

// A rig reached through Hamlib.
class HamlibRig : public RigDriver {
 public:
  // `rigs` as ListRigs gave them; they must outlive the driver.
  explicit HamlibRig(const std::vector<RigModel>& rigs) : rigs_(rigs) {}
  ~HamlibRig() override { HamlibRig::Close(); }
  HamlibRig(const HamlibRig&) = delete;
  HamlibRig& operator=(const HamlibRig&) = delete;

  Outcome Open(const BridgeSettings& settings) override;
  void Close() override;
  Result<double> ReadMeter() override;
  std::optional<double> ReadFrequencyHz() override;
  std::optional<Refusal> SetFrequencyHz(double hz) override;
  std::optional<Refusal> SetMode(sets::Mode mode) override;
  std::optional<Refusal> SetLock(bool locked) override;
  std::optional<Refusal> SetPower(bool on) override;

 private:
  bool Configure(const char* name, const std::string& value);

  const std::vector<RigModel>& rigs_;
  s_rig* rig_ = nullptr;
  bool is_open_ = false;
  std::optional<LineWatch> watch_;
  PortKind port_ = PortKind::kSerial;
  MeterSource source_ = MeterSource::kStrength;
};

}  // namespace kestrum::rigbridge
