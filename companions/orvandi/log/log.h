#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

// What a log of the field-strength logger holds, as the mapping program keeps it in memory.
//
// A log is a row of blocks: a header with date, transmitter, rig and antenna, then records. Records of all
// blocks lie in one vector in the order of the file; a block knows its first one and how many follow. Texts
// are UTF-8. Everything here is plain data: it may be built in one thread and handed to another, but is not
// locked.
namespace orvandi {

// "Not known" of every number below, e.g. the uV of a record that says "???".
inline constexpr float kUnknown = std::numeric_limits<float>::quiet_NaN();
inline constexpr double kUnknownDegrees = std::numeric_limits<double>::quiet_NaN();

// Why a record is left out of the views until the user asks for it. A record may have several marks.
enum Mark : std::uint8_t {
  kNoFix = 1,           // the receiver said that it had no fix
  kNoPosition = 2,      // coordinates that cannot be read, or that are off the globe
  kOldFix = 4,          // the position stands still while time runs
  kDeadRig = 8,         // raw value 0 in a run of records
  kUnknownSignal = 16,  // "S?" or "???": outside of the calibration table
};
inline constexpr std::uint8_t kAllMarks = kNoFix | kNoPosition | kOldFix | kDeadRig | kUnknownSignal;

// One reading. 64 bytes, so that a million of them are 64 MB.
struct Record {
  std::int64_t time_s = 0;  // seconds since 1970-01-01 00:00:00 of the clock that the logger wrote (no zone);
                            // of a block without a date: seconds since midnight
  double latitude_deg = kUnknownDegrees;   // north positive, to all decimals of the log
  double longitude_deg = kUnknownDegrees;  // east positive
  std::uint64_t offset = 0;                // of its line, in bytes from the start of its file
  float distance_km =
      kUnknown;  // from the transmitter; from the coordinates, or as logged where those are unknown
  float bearing_deg = kUnknown;      // seen from the transmitter, 0 to 360, 0 is north
  float height_m = kUnknown;         // as logged
  float microvolt = kUnknown;        // at the antenna input, 50 ohm, as logged
  float millivolt_per_m = kUnknown;  // as logged
  std::uint32_t line = 0;            // line number in its file, from 1
  std::uint32_t block = 0;           // index into Log::blocks
  std::int16_t raw = -1;             // S-meter value 0 to 255, -1 unknown
  std::uint8_t marks = 0;            // of Mark; 0: shown
  std::uint8_t s_text = 0;           // index into Log::s_texts

  bool HasPosition() const { return (marks & kNoPosition) == 0; }
};
static_assert(sizeof(Record) == 64);

// Header of a block and where its records are.
struct Block {
  std::size_t first_record = 0;
  std::size_t record_count = 0;
  bool has_header = false;  // false: records before the first header; date and transmitter are unknown then
  bool pending = false;     // from the journal of a drive that goes on
  std::int64_t time_s = 0;  // date and time of the header, as Record::time_s
  double tx_latitude_deg = kUnknownDegrees;
  double tx_longitude_deg = kUnknownDegrees;
  float tx_height_m = kUnknown;
  double frequency_khz = 0;  // 0 when the header holds none
  std::string rig;           // "FT840"
  std::string mode;          // "LSB"; empty for FM
  std::string antenna;       // all of the text, commas included
  std::uint32_t line = 0;    // of the header, from 1

  bool HasTransmitter() const { return tx_latitude_deg == tx_latitude_deg; }
};

enum class DropReason : std::uint8_t {
  kForeign,    // neither dashes, nor a header, nor a record
  kTorn,       // a record or header that does not go on to its end
  kBadTime,    // a record without a time of day
  kBadHeader,  // begins like a header, but its date cannot be
  kBinary,     // holds bytes that no text holds
  kTooLong,    // longer than any line of a log
  kTooMany,    // beyond the number of records that are kept
};

// A line that was not understood. Blank lines are not among them.
struct DroppedLine {
  std::uint64_t line = 0;  // number in its file, from 1
  std::string text;        // at most 200 characters of it
  DropReason reason = DropReason::kForeign;
  bool pending = false;  // in the journal, not in the log
};
// A sentence for the user, without the line's text.
std::string_view ReasonText(DropReason reason);

struct Log {
  std::vector<Record> records;
  std::vector<Block> blocks;
  std::vector<std::string> s_texts;  // "S8+"; [0] is ""
  std::vector<DroppedLine> dropped;  // the first kMostDropped of them, in the order of the file
  std::uint64_t dropped_count = 0;   // all of them
  std::size_t pending_first = 0;     // records from here on stand in the journal, not yet in the log

  const Block& BlockOf(const Record& record) const { return blocks[record.block]; }
  const std::string& SText(const Record& record) const { return s_texts[record.s_text]; }
};
inline constexpr std::size_t kMostDropped = 10000;

}  // namespace orvandi
