#pragma once

#include <string>

namespace orvandi::test {

// What a made-up drive is like.
struct SampleDrive {
  int records = 6000;
  int laps = 6;              // around the transmitter, from far to near
  bool two_antennas = true;  // a beam and a vertical take turns lap by lap
  bool tunnel = true;        // a stretch without fix, a set that sleeps, values outside of the table
  int day = 21;              // of November 2026
  double offset_db = 0;      // added to every level
  double fading_db = 2.2;    // spread of slow fading
};

// The log of the drive as the logger writes it: Windows-1252, CR LF, blocks of 100.
std::string SampleLog(const SampleDrive& drive);

// Gain of the beam in dB towards a bearing from the transmitter, 0 at its strongest: what a pattern should
// find.
double BeamGain(double bearing_deg);

inline constexpr double kTxLatitude = 51.95;             // 5157.00N
inline constexpr double kTxLongitude = 5.0 + 32.0 / 60;  // 00532.00E
inline constexpr double kExponent = 2.6;

}  // namespace orvandi::test
