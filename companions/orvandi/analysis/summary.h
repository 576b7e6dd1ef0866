#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "analysis/distribution.h"
#include "analysis/law.h"
#include "analysis/layers.h"
#include "analysis/samples.h"
#include "log/cleaning.h"

namespace orvandi {

// The drive in numbers, for the report, the status line and the command line.
struct Summary {
  MarkCounts marks;
  std::size_t blocks = 0;
  std::uint64_t dropped_lines = 0;
  std::size_t pending = 0;   // records that stand in a journal
  bool has_time = false;     // the two below are known
  std::int64_t first_s = 0;  // as Record::time_s
  std::int64_t last_s = 0;
  double driven_km =
      0;               // sum of the steps between shown records of one log, pauses over ten minutes left out
  Distribution level;  // dBuV/m of the shown records
  Law law;             // of the shown records
};
Summary Summarise(std::span<const NamedLog> logs, const Recalibration* recalibration = nullptr);

// "2026-11-21 01:55:34" of Record::time_s.
std::string DateTimeText(std::int64_t time_s);
// "01:55:34", for a block without a date.
std::string TimeOfDayText(std::int64_t time_s);
// "2026-11-21".
std::string DateText(std::int64_t time_s);

}  // namespace orvandi
