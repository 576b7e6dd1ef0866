#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kestrum::rigbridge {

enum class PortKind { kSerial, kNetwork, kNone, kOther };

// A rig that Hamlib knows.
struct RigModel {
  int number = 0;
  std::string maker;
  std::string name;
  std::string status;  // "Stable", "Beta", "Alpha", "Untested", "Buggy"
  PortKind port = PortKind::kSerial;
  bool has_meter = true;  // false when its driver reads no S-meter

  // "Yaesu FT-817"
  std::string FullName() const { return maker.empty() ? name : maker + " " + name; }
};

// All of them by maker and name. To be called before the reader's thread starts.
std::vector<RigModel> ListRigs();

const RigModel* RigOf(const std::vector<RigModel>& rigs, int number);

// Whether each word of `search` occurs in the rig's number, maker or name, in any case.
bool Matches(const RigModel& rig, std::string_view search);

// What `rigbridge --list` prints.
std::string ListText(const std::vector<RigModel>& rigs);

}  // namespace kestrum::rigbridge
