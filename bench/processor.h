#pragma once

#include <sys/types.h>

#include <chrono>

namespace kestrum::bench {

// Processor time of a whole process so far, in ms.
double ProcessorMs(pid_t pid);
// Its share of one core while it runs on for that long, in percent.
double ShareOf(pid_t pid, std::chrono::seconds duration);

}  // namespace kestrum::bench
