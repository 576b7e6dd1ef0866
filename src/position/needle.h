#pragma once

#include <string_view>
#include <vector>

#include "forms/control.h"

namespace kestrum {

// What the reader sends, and what is shown, for a direction that nobody has told.
inline constexpr std::string_view kNothingTold = "32768";

inline constexpr double kRadiansPerDegree = 0.017453292519943278;

// The needle of an angle text ("032°", "045"): its leading number, 0 when it has none. Kept on purpose: only
// kNothingTold means no needle; a caption without digits, as "???°", points to the top.
Needle NeedleOf(std::string_view text);

// Circle and needle in a picture of the given size in twips; without a direction only a small circle. Nothing
// while the picture is not laid out.
std::vector<Shape> NeedleShapes(const Needle& needle, double width, double height);

}  // namespace kestrum
