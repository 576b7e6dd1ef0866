#include "row_reporter.h"

namespace kestrum::bench {
namespace {

double PerSecond(const std::string& unit) {
  if (unit == "ms") return 1e3;
  return unit == "us" ? 1e6 : 1e9;
}

}  // namespace

void RowReporter::ReportRuns(const std::vector<Run>& runs) {
  // The library's own averages come as a report of their own.
  if (runs.empty() || runs.front().run_type != Run::RT_Iteration) return;
  const std::string name = runs.front().run_name.function_name;
  const auto title = titles_.find(name);
  Row row = title != titles_.end() ? title->second : Row{name, "ns", {}, {}, {}};
  const double scale = PerSecond(row.unit);
  for (const Run& run : runs) {
    if (run.error_occurred || run.iterations <= 0) continue;
    row.samples.push_back(run.real_accumulated_time / static_cast<double>(run.iterations) * scale);
  }
  Print(row);
}

}  // namespace kestrum::bench
