#pragma once

#include <optional>
#include <string>

#include "rig_reader.h"

namespace kestrum::rigbridge {

// One sentence: "Reading the rig.", a fault and when it is tried again, ...
std::string StateText(const RigState& state, double now_s);

// "+10 dB to S9, raw 162", "meter 117, raw 117", "no value".
std::string ReadingText(const RigState& state, const BridgeSettings& settings, double now_s);

// The rig's frequency, and beside it Kestrum's where they differ.
std::string FrequencyText(const DialWatch& dial);

// Whether Kestrum asks.
std::string LinkText(const BridgeSettings& settings, std::optional<double> last_command_s, double now_s);

}  // namespace kestrum::rigbridge
