#include "desktop/qt_event_pump.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>
#include <utility>

namespace kestrum {

QtEventPump::QtEventPump(const Program& program, std::function<void()> before_events)
    : program_(program), before_events_(std::move(before_events)) {}

void QtEventPump::Pump() {
  if (program_.Ended()) return;
  before_events_();
  QCoreApplication::processEvents();
}

void QtEventPump::PumpFor(std::chrono::milliseconds longest) {
  if (program_.Ended()) return;
  before_events_();
  QEventLoop loop;
  QTimer deadline;
  deadline.setSingleShot(true);
  QObject::connect(&deadline, &QTimer::timeout, &loop, &QEventLoop::quit);
  deadline.start(longest);
  loop.exec();
}

}  // namespace kestrum
