#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

#include "rows.h"

namespace kestrum::bench {

// Gives each benchmark a row; its repetitions are the samples.
class RowReporter : public benchmark::BenchmarkReporter {
 public:
  // `titles` gives unit ("ns", "us" or "ms") and aim of a benchmark by its function name.
  explicit RowReporter(std::map<std::string, Row> titles) : titles_(std::move(titles)) {}

  bool ReportContext(const Context& /*context*/) override { return true; }
  void ReportRuns(const std::vector<Run>& runs) override;

 private:
  std::map<std::string, Row> titles_;
};

}  // namespace kestrum::bench
