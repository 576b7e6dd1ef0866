#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <sstream>

#include "instant_rig.h"
#include "measured_car.h"
#include "processor.h"
#include "rows.h"

// Whole processes, as the user starts them.
namespace kestrum::bench {
namespace {

using std::chrono::seconds;
using std::chrono::steady_clock;

double ResidentMb(pid_t pid) {
  std::istringstream pages(process::ReadFile("/proc/" + std::to_string(pid) + "/statm"));
  long total = 0;
  long resident = 0;
  pages >> total >> resident;
  return static_cast<double>(resident) * static_cast<double>(::sysconf(_SC_PAGESIZE)) / 1e6;
}

void MeasureStartUp() {
  constexpr int kStarts = 25;
  const MeasuredCar car("FT840");
  MeasuredCar::Configure(2, 10, false);
  std::vector<double> starts_ms;
  for (int start = 0; start < kStarts; ++start) {
    InstantRig rig;
    const auto from = steady_clock::now();
    const auto kestrum = car.StartKestrum(rig.path());
    if (rig.WaitForMoreThan(0, seconds(10)) == 0) continue;
    starts_ms.push_back(std::chrono::duration<double, std::milli>(rig.first_read() - from).count());
  }
  // A start that the disk had to be asked for counts as well.
  Print({"Start-up to the first reading, GPS reader running",
         "ms",
         starts_ms,
         {400, {}},
         "loading and linking the toolkit's libraries and its fonts"});
}

// How often the threads of a process have gone to sleep by themselves, and were woken again.
long Sleeps(pid_t pid) {
  long sleeps = 0;
  const std::string tasks = "/proc/" + std::to_string(pid) + "/task";
  for (const auto& task : std::filesystem::directory_iterator(tasks)) {
    const std::string status = process::ReadFile(task.path() / "status");
    const std::string field = "\nvoluntary_ctxt_switches:";
    const std::size_t at = status.find(field);
    if (at != std::string::npos) sleeps += std::stol(status.substr(at + field.size()));
  }
  return sleeps;
}

void MeasureIdle() {
  const MeasuredCar car("FT840");
  MeasuredCar::Configure(2, 5000, false);
  InstantRig rig;
  const auto kestrum = car.StartKestrum(rig.path(), {"--start-logging"});
  process::LetRunFor(seconds(4));
  constexpr double kWatchedS = 30;
  const long sleeps_from = Sleeps(kestrum->pid());
  const double share = ShareOf(kestrum->pid(), seconds(30));
  const double wake_ups = static_cast<double>(Sleeps(kestrum->pid()) - sleeps_from) / kWatchedS;
  Print({"Idle at 5,000 ms, share of a core",
         "%",
         {share},
         {0.3, {}},
         "each cycle and each position text repaints its readouts"});
  Print({"Idle at 5,000 ms, wake-ups of all threads a second, position texts once a second",
         "1/s",
         {wake_ups},
         {3, {}},
         "one for the lamps, one for the texts, and four for each cycle"});
  Print({"Idle at 5,000 ms, resident memory", "MB", {ResidentMb(kestrum->pid())}, {60, {}}, {}});
}

void MeasureWaitForFix() {
  const MeasuredCar car("FT840", false);
  MeasuredCar::Configure(2, 5000, true);
  InstantRig rig;
  const auto kestrum = car.StartKestrum(rig.path(), {"--start-logging"});
  process::LetRunFor(seconds(4));
  Print({"Waiting for the first fix, share of a core",
         "%",
         {ShareOf(kestrum->pid(), seconds(15))},
         {5, {}},
         "ten looks a second"});
}

// A process whose readings are counted at its simulated rig.
struct Poller {
  const process::Child& program;
  const MeasuredCar& car;
  double busy_from = ProcessorMs(program.pid());
  int reads_from = car.StatusReads();

  // Processor time for 1,000 readings, in ms; nothing when none was made.
  std::vector<double> ForAThousand() const {
    const double busy = ProcessorMs(program.pid()) - busy_from;
    const int reads = car.StatusReads() - reads_from;
    if (reads <= 0) return {};
    return {busy / reads * 1000};
  }
};

// Both poll a simulated FT817 of their own, at the same pace, at the same time.
void MeasureSideBySide() {
  constexpr int kReadings = 1000;
  // The logger's fastest interval on top of its reply window.
  constexpr std::chrono::milliseconds kPace{60};
  const MeasuredCar ours("FT817");
  const MeasuredCar theirs("FT817");
  MeasuredCar::Configure(1, 10, false);
  const auto kestrum = ours.StartKestrum(ours.rig_port(), {"--start-logging"});
  // Its answers go nowhere; model 1020 is the FT817.
  process::Child rigctl(
      {{"sh", "-c", "exec rigctl -m 1020 -r \"$0\" -s 9600 >/dev/null", theirs.rig_port()}, {}, {}, true});
  rigctl.Tell("l STRENGTH");
  process::LetRunFor(seconds(3));
  if (!rigctl.Running()) {
    std::fprintf(stderr, "process_bench: rigctl does not run\n");
    return;
  }
  const Poller logger{*kestrum, ours};
  const Poller client{rigctl, theirs};
  auto next = steady_clock::now();
  for (int reading = 0; reading < kReadings; ++reading) {
    rigctl.Tell("l STRENGTH");
    next += kPace;
    process::LetRunFor(std::chrono::ceil<std::chrono::milliseconds>(next - steady_clock::now()));
  }
  Print({"1,000 readings of an FT817: rigctl, processor time", "ms", client.ForAThousand(), {}, {}});
  Print(
      {"1,000 readings of an FT817: the whole of Kestrum, with position, records and windows, processor time",
       "ms",
       logger.ForAThousand(),
       {},
       {}});
}

}  // namespace
}  // namespace kestrum::bench

int main(int argc, char** argv) {
  using namespace kestrum::bench;
  const std::string what = argc == 2 ? argv[1] : "";
  if (what == "start-up") {
    MeasureStartUp();
  } else if (what == "idle") {
    MeasureIdle();
  } else if (what == "fix") {
    MeasureWaitForFix();
  } else if (what == "side-by-side") {
    MeasureSideBySide();
  } else {
    std::fprintf(stderr, "usage: process_bench start-up|idle|fix|side-by-side\n");
    return 2;
  }
}
