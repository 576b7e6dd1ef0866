#include "desktop/ports/qt_event_pump.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>
#include <utility>

namespace kestrum {

QtEventPump::QtEventPump(const Program& program, std::function<void()> before_pump,
                         std::function<void()> before_wait)
    : program_(program), before_pump_(std::move(before_pump)), before_wait_(std::move(before_wait)) {}

void QtEventPump::Pump() {
  if (program_.Ended()) return;
  before_pump_();
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
  // Input that was left in the queue wakes nobody again by itself.
  if (QAbstractEventDispatcher* const dispatcher = QAbstractEventDispatcher::instance()) dispatcher->wakeUp();
}

void QtEventPump::PumpFor(std::chrono::milliseconds longest) {
  if (program_.Ended()) return;
  before_wait_();
  QEventLoop loop;
  QTimer deadline;
  deadline.setSingleShot(true);
  QObject::connect(&deadline, &QTimer::timeout, &loop, &QEventLoop::quit);
  deadline.start(longest);
  loop.exec();
}

}  // namespace kestrum
