#include "analysis/summary.h"

#include <algorithm>
#include <chrono>

#include "log/geo.h"

namespace orvandi {
namespace {

constexpr std::int64_t kPauseS = 600;

std::string TwoDigits(long number) {
  return (number < 10 ? "0" : "") + std::to_string(number);
}

// Seconds from one record to the next when both are shown, nothing when there is a pause between them.
double StepKm(const Record& from, const Record& to) {
  if (std::llabs(to.time_s - from.time_s) > kPauseS) return 0;
  return DistanceKm({from.latitude_deg, from.longitude_deg}, {to.latitude_deg, to.longitude_deg});
}

double DrivenKm(const Log& log) {
  double driven_km = 0;
  const Record* before = nullptr;
  for (const Record& record : log.records) {
    if (record.marks != 0) continue;
    if (before != nullptr) driven_km += StepKm(*before, record);
    before = &record;
  }
  return driven_km;
}

void AddMarks(MarkCounts& sum, const MarkCounts& counts) {
  sum.records += counts.records;
  sum.shown += counts.shown;
  sum.no_fix += counts.no_fix;
  sum.no_position += counts.no_position;
  sum.old_fix += counts.old_fix;
  sum.dead_rig += counts.dead_rig;
  sum.unknown_signal += counts.unknown_signal;
}

void AddTimes(Summary& summary, const Log& log) {
  for (const Record& record : log.records) {
    if (!log.BlockOf(record).has_header) continue;
    summary.first_s = summary.has_time ? std::min(summary.first_s, record.time_s) : record.time_s;
    summary.last_s = summary.has_time ? std::max(summary.last_s, record.time_s) : record.time_s;
    summary.has_time = true;
  }
}

}  // namespace

Summary Summarise(std::span<const NamedLog> logs, const Recalibration* recalibration) {
  Summary summary;
  for (const NamedLog& named : logs) {
    const Log& log = *named.log;
    AddMarks(summary.marks, CountMarks(log));
    AddTimes(summary, log);
    summary.blocks += log.blocks.size();
    summary.dropped_lines += log.dropped_count;
    summary.pending += log.records.size() - std::min(log.pending_first, log.records.size());
    summary.driven_km += DrivenKm(log);
  }
  SampleChoice choice;
  choice.recalibration = recalibration;
  const std::vector<Sample> samples = CollectSamples(logs, choice);
  std::vector<double> levels;
  levels.reserve(samples.size());
  for (const Sample& sample : samples) levels.push_back(sample.level_db);
  summary.level = Describe(std::move(levels));
  summary.law = FitLaw(samples);
  return summary;
}

std::string DateText(std::int64_t time_s) {
  const std::chrono::sys_seconds time{std::chrono::seconds(time_s)};
  const std::chrono::year_month_day day(std::chrono::floor<std::chrono::days>(time));
  return std::to_string(static_cast<int>(day.year())) + "-" + TwoDigits(static_cast<unsigned>(day.month())) +
         "-" + TwoDigits(static_cast<unsigned>(day.day()));
}

std::string TimeOfDayText(std::int64_t time_s) {
  constexpr std::int64_t kDayS = 86400;
  const std::int64_t rest = ((time_s % kDayS) + kDayS) % kDayS;
  return TwoDigits(rest / 3600) + ":" + TwoDigits(rest / 60 % 60) + ":" + TwoDigits(rest % 60);
}

std::string DateTimeText(std::int64_t time_s) {
  return DateText(time_s) + " " + TimeOfDayText(time_s);
}

}  // namespace orvandi
