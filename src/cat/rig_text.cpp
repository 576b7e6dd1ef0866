#include "cat/rig_text.h"

#include "cat/rigs.h"
#include "config/settings.h"

namespace kestrum {

std::string RigName(int rig_model) {
  const RigRow* rig = RigOf(rig_model);
  return rig != nullptr ? std::string(rig->name) : std::string();
}

std::string ModeName(int rig_mode) {
  switch (rig_mode) {
    case kUsb:
      return "USB";
    case kLsb:
      return "LSB";
    case kCw:
      return "CW";
    case kCwn:
      return "CWN";
    case kAm:
      return "AM";
    case kAmn:
      return "AMN";
    default:
      return {};
  }
}

std::string RigModeText(int rig_model, int rig_mode, const std::string& frequency) {
  return " " + RigName(rig_model) + " " + ModeName(rig_mode) + " " + frequency;
}

}  // namespace kestrum
