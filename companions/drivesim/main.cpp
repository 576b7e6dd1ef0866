#include <cstdio>
#include <string>
#include <vector>

#include "options.h"
#include "simulation.h"

int main(int argc, char** argv) {
  using namespace kestrum::drivesim;
  constexpr int kFailed = 1;
  constexpr int kUsage = 2;

  const ParsedOptions parsed = ParseOptions(std::vector<std::string>(argv + 1, argv + argc));
  if (!parsed.error.empty()) {
    std::fprintf(stderr, "drivesim: %s\nTry drivesim --help\n", parsed.error.c_str());
    return kUsage;
  }
  if (parsed.options.help) {
    std::fputs(HelpText().c_str(), stdout);
    return 0;
  }
  if (parsed.options.version) {
    std::puts(VersionText().c_str());
    return 0;
  }
  Simulation simulation(parsed.options);
  const std::string error = simulation.Prepare();
  if (!error.empty()) {
    std::fprintf(stderr, "drivesim: %s\n", error.c_str());
    return kFailed;
  }
  std::puts(simulation.ReadyLine().c_str());
  std::fflush(stdout);
  simulation.Run();
}
