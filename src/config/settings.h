#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace kestrum {

// RigModel
enum Rig : std::int32_t { kFT817 = 1, kFT840 = 2, kFT847 = 3, kFT857 = 4, kFT897 = 5 };
// RigMode
enum Mode : std::int16_t { kUsb = 1, kLsb = 2, kCw = 3, kCwn = 4, kAm = 5, kAmn = 6, kFm = 7 };
// FieldStrengthUnit
enum Unit : std::int16_t { kMicrovolt = 1, kMillivoltPerMetre = 2, kDbm = 3 };

inline constexpr double kHfLimitKhz = 30000;   // above it the default calibration table is a tenth
inline constexpr int kDistanceTickMs = 1100;   // tick of the main timer while logging by distance
inline constexpr int kRecordsPerBlock = 100;   // of the log file
inline constexpr int kLowestAverageMs = 1100;  // averaging needs at least this main interval

// Everything that survives a restart. The values here are those before the first load; SetDefaults fills in
// the factory values.
struct Settings {
  std::int32_t RigModel = 0;           // Rig
  std::int32_t ComPort = 0;            // 1 to 6, 0 for none
  std::int32_t BaudRate = 0;           // baud
  std::int16_t TimeIntervalMs = 0;     // 10 to 9999
  std::int16_t RigMode = 0;            // Mode
  std::int16_t FieldStrengthUnit = 0;  // Unit
  std::int16_t SquelchLevel = 0;       // raw S-meter value, 0 to 255
  float MainLeft = 0;                  // twips
  float MainTop = 0;
  float MinimalLeft = 0;
  float MinimalTop = 0;
  float KHzStep = 0;             // kHz
  float DistanceIntervalKm = 0;  // 0.1 to 5
  bool ProgressBarMode = false;  // segments or a plain bar
  bool ShowDDE = false;
  bool LogByDistance = false;
  bool AverageRSSI = false;
  bool DialLock = false;
  std::string TxLat;                            // ddmm.mmN
  std::string TxLong;                           // dddmm.mmE
  std::string TxHeight;                         // number and " m"; "? m" when unknown
  std::string FrequencyText;                    // kHz
  std::array<std::string, 3> CalibrationFiles;  // full paths; only the third is stored
  std::string LogFileName;                      // full path
  std::string OnOffCaption;                     // power state of the FT817 as read from the file
  std::array<std::string, 21> TxAntennas;       // empty entries are unused
};

// Shared state that more than one floor reads and writes.
struct State {
  Settings settings;
  bool AboveHF = false;         // receive frequency above 30000 kHz
  int InfoRequest = 0;          // 0 nothing, 1 info text, 2 table hints
  std::int16_t RssiRaw = 0;     // raw S-meter value, normally 0 to 255
  bool AverageRequest = false;  // the next cycle toggles averaging

  // Told in the hint line.
  bool measuring_stopped = false;  // switching the FT817 off has stopped tmrMain
  bool waiting_for_fix = false;    // the first cycle of distance mode waits
  int recovered_records = 0;       // of the last drive, found in a journal at start-up
};

}  // namespace kestrum
