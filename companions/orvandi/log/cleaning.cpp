#include "log/cleaning.h"

#include <algorithm>

namespace orvandi {
namespace {

bool SamePosition(const Record& a, const Record& b) {
  return a.latitude_deg == b.latitude_deg && a.longitude_deg == b.longitude_deg;
}

bool HasFix(const Record& record) {
  return (record.marks & (kNoFix | kNoPosition)) == 0;
}

bool StandsStill(const Record& before, const Record& record, const CleaningRules& rules) {
  return HasFix(before) && HasFix(record) && SamePosition(before, record) &&
         std::llabs(record.time_s - before.time_s) <= rules.pause_s;
}

// Records from `first` to before `end` stand at one place.
void MarkStandstill(Log& log, std::size_t first, std::size_t end, const CleaningRules& rules) {
  if (end - first < 2) return;
  if (log.records[end - 1].time_s - log.records[first].time_s < rules.old_fix_s) return;
  for (std::size_t index = first + 1; index < end; ++index) log.records[index].marks |= kOldFix;
}

void MarkDead(Log& log, std::size_t first, std::size_t end, const CleaningRules& rules) {
  if (end - first < rules.dead_rig_records) return;
  for (std::size_t index = first; index < end; ++index) log.records[index].marks |= kDeadRig;
}

// Calls `mark` with the first and the end of each run of records for which `goes_on(before, record)` holds.
template <typename GoesOn, typename MarkRun>
void ForRuns(Log& log, std::size_t first, GoesOn goes_on, MarkRun mark) {
  for (std::size_t start = first; start < log.records.size();) {
    std::size_t end = start + 1;
    while (end < log.records.size() && goes_on(log.records[end - 1], log.records[end])) ++end;
    mark(start, end);
    start = end;
  }
}

}  // namespace

std::size_t MarkRuns(Log& log, std::size_t first, const CleaningRules& rules) {
  auto& records = log.records;
  first = std::min(first, records.size());
  const auto still = [&](const Record& before, const Record& record) {
    return StandsStill(before, record, rules);
  };
  const auto dead = [](const Record& before, const Record& record) {
    return before.raw == 0 && record.raw == 0;
  };
  const auto reach_back = [&](auto goes_on) {
    std::size_t start = first;
    while (start > 0 && start < records.size() && goes_on(records[start - 1], records[start])) --start;
    return start;
  };
  // Whether a run goes on depends on no mark that is set here, so both starts can be found before any is
  // cleared.
  const std::size_t still_first = reach_back(still);
  const std::size_t dead_first = reach_back(dead);
  const auto clear = [&](std::size_t from, std::uint8_t mark) {
    for (std::size_t index = from; index < records.size(); ++index) {
      records[index].marks &= static_cast<std::uint8_t>(~mark);
    }
  };
  clear(still_first, kOldFix);
  clear(dead_first, kDeadRig);
  ForRuns(log, still_first, still,
          [&](std::size_t start, std::size_t end) { MarkStandstill(log, start, end, rules); });
  ForRuns(log, dead_first, dead, [&](std::size_t start, std::size_t end) {
    if (records[start].raw == 0) MarkDead(log, start, end, rules);
  });
  return std::min(still_first, dead_first);
}

MarkCounts CountMarks(const Log& log) {
  MarkCounts counts;
  counts.records = log.records.size();
  for (const Record& record : log.records) {
    const auto has = [&](Mark mark) { return (record.marks & mark) != 0 ? 1U : 0U; };
    counts.shown += record.marks == 0 ? 1 : 0;
    counts.no_fix += has(kNoFix);
    counts.no_position += has(kNoPosition);
    counts.old_fix += has(kOldFix);
    counts.dead_rig += has(kDeadRig);
    counts.unknown_signal += has(kUnknownSignal);
  }
  return counts;
}

const std::array<MarkName, 5>& MarkNames() {
  static constexpr std::array<MarkName, 5> kNames = {{{kNoFix, "no fix"},
                                                      {kNoPosition, "no position"},
                                                      {kOldFix, "position stands still"},
                                                      {kDeadRig, "rig silent (raw 0)"},
                                                      {kUnknownSignal, "outside of the calibration"}}};
  return kNames;
}

}  // namespace orvandi
