#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

// Units of a reading and how they follow from one another.
//
//   field strength  dBuV/m = 20 log10(mV/m x 1000)                    definition of the decibel (IEC 60027-3)
//   input power     dBm = 10 log10((uV x 1e-6)^2 / 50 ohm / 1 mW)     P = U^2 / R; 50 uV is -73.0 dBm
//   S-point         one is 6 dB; above S9 the decibels are told       IARU Region 1 recommendation R.1 (1981)
//
// mV/m and uV are two columns of the calibration table and are not computed from each other: what lies
// between them is the antenna on the car. The logger's own "dBm" is computed from the mV/m column and 30 dB
// lower by definition; the figure here is the power at the antenna input.
namespace orvandi {

enum class Unit : std::uint8_t { kDbMicrovoltPerM, kMillivoltPerM, kMicrovolt, kDbm, kSPoint };
inline constexpr std::array<Unit, 5> kUnits = {Unit::kDbMicrovoltPerM, Unit::kMillivoltPerM, Unit::kMicrovolt,
                                               Unit::kDbm, Unit::kSPoint};

// "dBuV/m" with the micro sign, "mV/m", "uV" with the micro sign, "dBm", "S"; UTF-8.
std::string_view UnitText(Unit unit);
// Whether the unit counts in decibels, so that differences are meaningful: dBuV/m, dBm and, as 6 dB each, S.
bool IsLogarithmic(Unit unit);

// Not-a-number for values that are not above 0.
double DbMicrovoltPerM(double millivolt_per_m);
double MillivoltPerM(double db_microvolt_per_m);
double DbmOfMicrovolt(double microvolt);
double MicrovoltOfDbm(double dbm);

// S text as a number, 6 dB a step: "S5" is 5, "S5+" (between two points) 5.5, "S9 + 20dB" is 9 + 20/6.
// Not-a-number for "S?" and other texts.
double SPointOfText(std::string_view text);
// Label of an axis: 5 gives "S5", 12.33 gives "S9+20".
std::string SPointLabel(double s_point);

}  // namespace orvandi
