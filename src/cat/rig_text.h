#pragma once

#include <string>

namespace kestrum {

// "FT817" to "FT897" for rig 1 to 5, else empty.
std::string RigName(int rig_model);

// "USB", "LSB", "CW", "CWN", "AM", "AMN" for mode 1 to 6, else empty.
// Kept on purpose: FM (7) has no text in headers, so that old and new log and calibration files look alike.
std::string ModeName(int rig_mode);

// A blank, rig, blank, mode, blank, frequency: what heads a log block and a calibration file.
std::string RigModeText(int rig_model, int rig_mode, const std::string& frequency);

}  // namespace kestrum
