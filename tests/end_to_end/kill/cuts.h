#pragma once

#include <cstddef>
#include <string>

namespace kestrum::end_to_end {

// What a log of numbered records says about its drive.
struct LogReport {
  std::size_t blocks = 0;
  std::size_t records = 0;
  std::size_t lost = 0;     // numbers up to the last one made that stand nowhere
  std::size_t doubled = 0;  // numbers that stand there more than once
  std::size_t torn = 0;     // lines that are neither head nor record, and heads that are not whole
  bool in_order = true;
};
LogReport ReportOf(const std::string& log, std::size_t made);

// Sums over many cuts.
struct CutTable {
  int runs = 0;
  std::size_t made = 0;
  std::size_t lost = 0;
  std::size_t most_lost = 0;  // in one run
  std::size_t doubled = 0;
  std::size_t torn = 0;
  int out_of_order = 0;
  int broken_configurations = 0;

  void Add(const LogReport& report, std::size_t made_then, std::size_t lost_before);
  std::string Row(const std::string& what) const;
  static std::string Head();
};

// The writer logs `records` records once; then the power goes at `cuts` random moments, and the program
// starts again on what was left each time.
CutTable PowerCuts(int cuts, int records, unsigned seed);
// The writer is killed `kills` times, and goes on in the same folder.
CutTable Kills(int kills, unsigned seed);

}  // namespace kestrum::end_to_end
