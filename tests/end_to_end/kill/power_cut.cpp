// Prints how many records power cuts and kills cost; called by scripts/power-cut.
// Usage: end_to_end_power_cut [CUTS [SEED]]
#include <cstdio>
#include <cstdlib>

#include "kill/cuts.h"

int main(int argc, char** argv) {
  using namespace kestrum::end_to_end;
  const int cuts = argc > 1 ? std::atoi(argv[1]) : 500;
  const auto seed = argc > 2 ? static_cast<unsigned>(std::strtoul(argv[2], nullptr, 10)) : 1U;
  constexpr int kRecords = 1000;
  std::printf("%s\n", CutTable::Head().c_str());
  std::fflush(stdout);
  const CutTable power = PowerCuts(cuts, kRecords, seed);
  std::printf("%s\n", power.Row("power cut").c_str());
  std::fflush(stdout);
  const CutTable kills = Kills(cuts, seed);
  std::printf("%s\n", kills.Row("kill -9").c_str());
  const bool all_ran = power.runs == cuts && kills.runs == cuts;
  return all_ran && power.most_lost <= 1 && kills.most_lost <= 1 && power.torn + kills.torn == 0 ? 0 : 1;
}
