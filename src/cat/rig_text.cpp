#include "cat/rig_text.h"

#include "config/settings.h"

namespace kestrum {

std::string RigName(int rig_model) {
  switch (rig_model) {
    case kFT817:
      return "FT817";
    case kFT840:
      return "FT840";
    case kFT847:
      return "FT847";
    case kFT857:
      return "FT857";
    case kFT897:
      return "FT897";
    default:
      return {};
  }
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
