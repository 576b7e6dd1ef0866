#include "processor.h"

#include <ctime>

#include "support_process/waits.h"

namespace kestrum::bench {

double ProcessorMs(pid_t pid) {
  clockid_t clock = 0;
  timespec now{};
  if (::clock_getcpuclockid(pid, &clock) != 0 || ::clock_gettime(clock, &now) != 0) return 0;
  return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

double ShareOf(pid_t pid, std::chrono::seconds duration) {
  const double from = ProcessorMs(pid);
  const auto start = std::chrono::steady_clock::now();
  process::LetRunFor(duration);
  const double wall =
      std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
  return (ProcessorMs(pid) - from) / wall * 100;
}

}  // namespace kestrum::bench
