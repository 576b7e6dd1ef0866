#pragma once

#include <string>
#include <string_view>

namespace kestrum {

// The frequency in kHz that a text begins with; "," counts as decimal point. 0 when there is none.
double TypedKhz(std::string_view text);

// A frequency text in kHz as eight digits in units of 10 Hz: "14200" gives "01420000", "7050.5" gives
// "00705050". Decimals after the second are cut. More than six digits before a point give "Overflow"; a text
// of seven or more digits without a point comes out longer than eight.
std::string PadDigits(std::string_view khz);

// Whether the rig (1 to 5) tunes to this frequency in kHz, bounds inclusive. An unknown rig tunes to
// none.
bool InFreqRange(int rig_model, double khz);

}  // namespace kestrum
