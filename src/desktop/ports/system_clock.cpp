#include "desktop/ports/system_clock.h"

#include <QDateTime>
#include <thread>

namespace kestrum {

DateTime SystemClock::Now() const {
  const QDateTime now = QDateTime::currentDateTime();
  return {now.date().year(), now.date().month(),  now.date().day(),
          now.time().hour(), now.time().minute(), now.time().second()};
}

std::chrono::milliseconds SystemClock::Elapsed() const {
  return std::chrono::duration_cast<std::chrono::milliseconds>(
      std::chrono::steady_clock::now().time_since_epoch());
}

void SystemClock::Sleep(std::chrono::milliseconds duration) {
  std::this_thread::sleep_for(duration);
}

}  // namespace kestrum
