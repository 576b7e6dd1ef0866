#include <unistd.h>

#include <QApplication>
#include <QEventLoop>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <sstream>
#include <string_view>

#include "app/application.h"
#include "desktop/desktop.h"
#include "desktop/forms/windows.h"
#include "desktop/ports/system_clock.h"
#include "instant_rig.h"
#include "measured_car.h"
#include "rows.h"

// The real program in this process: its windows, its serial port, its bus, its files.
namespace kestrum::bench {
namespace {

using SteadyClock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr double kReplyWindowMs = 50;
constexpr int kReadings = 1000;
constexpr int kCycles = 250;

double MsSince(SteadyClock::time_point from) {
  return Milliseconds(SteadyClock::now() - from).count();
}

// Processor time of this thread, in ms.
double ProcessorMs() {
  timespec now{};
  ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

double ResidentMb() {
  std::istringstream pages(process::ReadFile("/proc/self/statm"));
  long total = 0;
  long resident = 0;
  pages >> total >> resident;
  return static_cast<double>(resident) * static_cast<double>(::sysconf(_SC_PAGESIZE)) / 1e6;
}

void LetEventsRun(std::chrono::milliseconds duration) {
  QEventLoop loop;
  QTimer::singleShot(duration, &loop, &QEventLoop::quit);
  loop.exec();
}

// Waits for the rig's answer instead of the whole reply window.
class HastyClock : public SystemClock {
 public:
  explicit HastyClock(InstantRig& rig) : rig_(rig) {}
  void Sleep(std::chrono::milliseconds longest) override { seen_ = rig_.WaitForMoreThan(seen_, longest); }

 private:
  InstantRig& rig_;
  int seen_ = 0;
};

// As main() builds it, with a clock of our choice.
struct Program {
  explicit Program(Clock& clock)
      : application(PortsWith(clock)), windows(application.forms, desktop.binder()) {}

  void Start() {
    desktop.binder().Enter([this] { application.Start({.start_logging = true}); });
    LetEventsRun(std::chrono::seconds(2));
  }
  void Cycle() {
    desktop.binder().Enter([this] { application.cycle.MainCycle(); });
  }
  Ports PortsWith(Clock& clock) {
    const Ports real = desktop.ports();
    return {real.serial, real.links,   real.dialogs, clock,      real.pump,
            real.beeper, real.program, real.windows, real.files, real.worker};
  }

  Desktop desktop;
  Application application;
  Windows windows;
};

void MeasureReadings(Program& program) {
  program.application.forms.form1.tmrMain.Stop();
  program.desktop.binder().Sync();
  std::vector<double> over;
  std::vector<double> processor_us;
  double processor_total = 0;
  for (int reading = 0; reading < kReadings; ++reading) {
    const auto from = SteadyClock::now();
    const double busy_from = ProcessorMs();
    program.application.rig.ReadRssi();
    const double busy = ProcessorMs() - busy_from;
    over.push_back(MsSince(from) - kReplyWindowMs);
    processor_us.push_back(busy * 1e3);
    processor_total += busy;
  }
  Print({"One S-meter read, wall time over the required 50 ms",
         "ms",
         over,
         {1, 3},
         "the work itself fits, see the next row; the processor was not free when its turn came"});
  Print({"One S-meter read, processor time", "us", processor_us, {}, {}});
  Print({"1,000 readings of an FT817: the read alone inside Kestrum, processor time",
         "ms",
         {processor_total},
         {},
         {}});
}

void MeasureCycles(Program& program) {
  std::vector<double> over;
  std::vector<double> processor_ms;
  for (int cycle = 0; cycle < kCycles; ++cycle) {
    const auto from = SteadyClock::now();
    const double busy_from = ProcessorMs();
    program.Cycle();
    QApplication::processEvents();  // paints what the cycle has changed
    processor_ms.push_back(ProcessorMs() - busy_from);
    over.push_back(MsSince(from) - kReplyWindowMs);
  }
  auto sorted = processor_ms;
  std::sort(sorted.begin(), sorted.end());
  const bool work_fits = sorted[sorted.size() / 2] < 0.45;
  Print({"One cycle, wall time over the required 50 ms",
         "ms",
         over,
         {0.5, 1.5},
         work_fits ? "the work itself fits, see the next row; the processor was not free when its turn came"
                   : "painting the readouts without a graphics card takes the time of the next row"});
  Print({"One cycle with its painting, processor time",
         "ms",
         processor_ms,
         {0.45, {}},
         "see what `perf record -g program_bench cycles` tells"});
}

// How much later than its interval after the last cycle each tick of the main timer comes.
void MeasureTicks(Program& program, int interval_ms, std::size_t ticks) {
  Timer& timer = program.application.forms.form1.tmrMain;
  const Handler cycle = timer.tick;
  std::vector<double> late;
  QEventLoop loop;
  SteadyClock::time_point started;
  timer.tick = [&] {
    late.push_back(MsSince(started) - interval_ms);
    cycle();
    started = SteadyClock::now();
    if (late.size() >= ticks) loop.quit();
  };
  program.desktop.binder().Enter([&] {
    program.application.state.settings.TimeIntervalMs = static_cast<std::int16_t>(interval_ms);
    program.application.intervals.ApplyInterval();
    timer.Start();
    started = SteadyClock::now();
  });
  loop.exec();
  timer.Stop();
  program.desktop.binder().Sync();
  timer.tick = cycle;
  Print({"Ticks of tmrMain at " + std::to_string(interval_ms) + " ms, how late", "ms", late, {}, {}});
}

void MeasureTimes() {
  SystemClock clock;
  Program program(clock);
  program.Start();
  MeasureReadings(program);
  MeasureCycles(program);
  MeasureTicks(program, 100, 100);
  MeasureTicks(program, 1000, 10);
  MeasureTicks(program, 5000, 4);
}

// A quick look at a change of the painting.
void MeasureCyclesAlone() {
  SystemClock clock;
  Program program(clock);
  program.Start();
  program.application.forms.form1.tmrMain.Stop();
  program.desktop.binder().Sync();
  MeasureCycles(program);
}

void MeasureMemory(InstantRig& rig) {
  constexpr int kFew = 1000;
  constexpr int kMany = 20000;
  HastyClock clock(rig);
  Program program(clock);
  program.Start();
  Print({"Resident memory at start", "MB", {ResidentMb()}, {60, {}}, {}});
  for (int cycle = 0; cycle < kFew; ++cycle) program.Cycle();
  const double few = ResidentMb();
  Print({"Resident memory after 1,000 cycles", "MB", {few}, {60, {}}, {}});
  for (int cycle = kFew; cycle < kMany; ++cycle) program.Cycle();
  const double many = ResidentMb();
  Print({"Resident memory after 20,000 cycles", "MB", {many}, {60, {}}, {}});
  Print({"Growth from 1,000 to 20,000 cycles", "MB", {many - few}, {0.5, {}}, {}});
}

int Main(int argc, char** argv) {
  const std::string_view what = argc == 2 ? argv[1] : "";
  if (what != "times" && what != "cycles" && what != "memory") {
    std::fprintf(stderr, "usage: program_bench times|cycles|memory\n");
    return 2;
  }
  const MeasuredCar car("FT817");
  InstantRig rig;
  MeasuredCar::Configure(1, 5000, false);
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("XDG_RUNTIME_DIR", QByteArray::fromStdString(car.runtime_folder()));
  qputenv("DBUS_SESSION_BUS_ADDRESS", QByteArray::fromStdString(car.bus()));
  qputenv("KESTRUM_COM1", QByteArray::fromStdString(rig.path()));
  const QApplication toolkit(argc, argv);
  if (what == "times") {
    MeasureTimes();
  } else if (what == "cycles") {
    MeasureCyclesAlone();
  } else {
    MeasureMemory(rig);
  }
  return 0;
}

}  // namespace
}  // namespace kestrum::bench

int main(int argc, char** argv) {
  return kestrum::bench::Main(argc, argv);
}
