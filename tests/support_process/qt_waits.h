#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>

#include "support_process/waits.h"

// The waits of waits.h for a test whose own events have to run meanwhile.
namespace kestrum::process {

// Runs the events of this thread until the condition holds; false when it does not within the time.
template <typename Condition>
bool WaitFor(Condition condition, std::chrono::milliseconds patience = kPatience) {
  const QDeadlineTimer end(patience);
  QTimer look;
  look.start(kLookEvery);
  while (!condition()) {
    if (end.hasExpired()) return false;
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    // Nothing else deletes them outside of a running loop.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  return true;
}

// Runs the events for that long; false as soon as the condition does not hold.
template <typename Condition>
bool StaysTrueWhileEventsRun(std::chrono::milliseconds duration, Condition condition) {
  return !WaitFor([&condition] { return !condition(); }, duration);
}

// What is shown settles: nothing tells when it has.
inline void LetEventsRunFor(std::chrono::milliseconds duration) {
  WaitFor([] { return false; }, duration);
}

}  // namespace kestrum::process
