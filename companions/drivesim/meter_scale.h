#pragma once

namespace kestrum::drivesim {

// The S-meter of the simulated sets: the raw value of 0 to 234 that the logger's default calibration takes
// for a level, in dB above S9 (50 uV). Between the points of that calibration the voltage goes in a straight
// line. Above S9 + 50 dB the meter stays where it is.
double RawOfLevel(double level_db);

// The same on the scale of a set whose full deflection is `most`: 15, 31 or 255.
int MeterOfLevel(double level_db, int most);

}  // namespace kestrum::drivesim
