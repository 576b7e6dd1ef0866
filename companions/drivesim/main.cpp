#include <cstdio>
#include <string>
#include <vector>

#include "common/fault_text.h"
#include "options.h"
#include "simulation.h"

int main(int argc, char** argv) {
  using namespace kestrum::drivesim;
  constexpr int kFailed = 1;
  constexpr int kUsage = 2;

  const kestrum::Result<Options> parsed = ParseOptions(std::vector<std::string>(argv + 1, argv + argc));
  if (!parsed) {
    std::fprintf(stderr, "drivesim: %s\nTry drivesim --help\n", TextOf(parsed.fault()).c_str());
    return kUsage;
  }
  const Options& options = parsed.value();
  if (options.help) {
    std::fputs(HelpText().c_str(), stdout);
    return 0;
  }
  if (options.version) {
    std::puts(VersionText().c_str());
    return 0;
  }
  Simulation simulation(options);
  if (const kestrum::Outcome ready = simulation.Prepare(); !ready) {
    std::fprintf(stderr, "drivesim: %s\n", TextOf(ready.fault()).c_str());
    return kFailed;
  }
  std::puts(simulation.ReadyLine().c_str());
  std::fflush(stdout);
  simulation.Run();
}
