#include "desktop/ports/system_clock.h"

#include <QDateTime>
#include <thread>

namespace kestrum {

DateTime SystemClock::Now() const {
  constexpr qint64 kMinuteMs = 60000;
  const qint64 now_ms = QDateTime::currentMSecsSinceEpoch();
  // Each question for the zone looks at its file; zones change their offset at a full minute.
  if (now_ms / kMinuteMs != asked_minute_) {
    asked_minute_ = now_ms / kMinuteMs;
    offset_s_ = QDateTime::fromMSecsSinceEpoch(now_ms).offsetFromUtc();
  }
  const QDateTime now = QDateTime::fromMSecsSinceEpoch(now_ms, Qt::OffsetFromUTC, offset_s_);
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
