#pragma once

#include <vector>

#include "forms/control.h"
#include "signal/conversion.h"

namespace kestrum {

// The calibration points of a table as marks on a scale of raw values: "S7" gives "7", "S9 + 20dB" gives
// "+20".
std::vector<ScaleMark> MeterScale(const S2FtableRows& rows);

// The raw value of the point "S9"; -1 when the table has none.
int S9Row(const S2FtableRows& rows);

}  // namespace kestrum
