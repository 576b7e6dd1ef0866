#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "log/log.h"

// Marks records that would falsify a picture. Nothing is taken away: a mark can be shown and counted.
namespace orvandi {

struct CleaningRules {
  // A position that stays the same to the last digit for this long is an old fix; its first record is not
  // marked. Five readings a second between two fixes of a receiver are no standstill.
  std::int64_t old_fix_s = 10;
  // A pause between records that ends a standstill: another drive from the same place.
  std::int64_t pause_s = 600;
  // Raw values of 0 in a row that make a dead rig.
  std::size_t dead_rig_records = 5;
};

// Sets kOldFix and kDeadRig of the records from `first` on, anew; kNoFix, kNoPosition and kUnknownSignal are
// set by the reader. Records before `first` are changed where a run reaches back. Returns the first record
// looked at.
std::size_t MarkRuns(Log& log, std::size_t first, const CleaningRules& rules = {});

struct MarkCounts {
  std::size_t records = 0;
  std::size_t shown = 0;  // without any mark
  std::size_t no_fix = 0;
  std::size_t no_position = 0;
  std::size_t old_fix = 0;
  std::size_t dead_rig = 0;
  std::size_t unknown_signal = 0;
};
MarkCounts CountMarks(const Log& log);

// The marks in the order in which they are told, with what the user reads: "no fix", "no position", ...
struct MarkName {
  Mark mark;
  std::string_view text;
};
const std::array<MarkName, 5>& MarkNames();

}  // namespace orvandi
