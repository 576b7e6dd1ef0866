#include "support_process/waits.h"

#include <cstdint>
#include <thread>

namespace kestrum::process {

void DeviceIsQuietFor(std::chrono::milliseconds duration) {
  std::this_thread::sleep_for(duration);
}

void LetRunFor(std::chrono::milliseconds duration) {
  std::this_thread::sleep_for(duration);
}

void LetComeWithin(std::chrono::microseconds longest, std::mt19937& random) {
  std::this_thread::sleep_for(
      std::chrono::microseconds(random() % static_cast<std::uint64_t>(longest.count())));
}

}  // namespace kestrum::process
