#include "desktop/binding/binder.h"

#include <QTimer>
#include <tuple>
#include <utility>

namespace kestrum {

void Binder::Sync() {
  if (program_.Ended()) return;
  // Painting may show a window whose first events come back here; the list itself never changes then.
  for (const std::function<void()>& look : watches_) look();
  SyncTimers();
}

void Binder::SyncTimers() {
  if (program_.Ended()) return;
  for (const std::function<void()>& look : timer_watches_) look();
}

void Binder::Enter(const Handler& handler) {
  if (program_.Ended()) return;
  ++depth_;
  kestrum::Run(handler);
  --depth_;
  if (deeds_wait_ && depth_ > 0) {
    SyncTimers();  // a short pump inside a handler, which paints when it is through
    return;
  }
  Sync();
  if (depth_ == 0) RunDeeds();
}

void Binder::Enter(const std::function<void()>& write, const Handler& handler) {
  if (program_.Ended()) return;
  write();
  Sync();
  Enter(handler);
}

void Binder::Deed(const Handler& handler) {
  Deed([] {}, handler);
}

void Binder::Deed(const std::function<void()>& write, const Handler& handler) {
  if (deeds_wait_) {
    deeds_.emplace_back(write, handler);
  } else {
    Enter(write, handler);
  }
}

void Binder::RunDeeds() {
  const auto deeds = std::exchange(deeds_, {});
  for (const auto& [write, handler] : deeds) Enter(write, handler);
}

void Binder::Clear() {
  deeds_.clear();
  watches_.clear();
  timer_watches_.clear();
  for (QObject* timer : timers_) delete timer;
  timers_.clear();
}

void Binder::Watch(std::function<void()> look) {
  look();
  watches_.push_back(std::move(look));
}

void Binder::Bind(Timer& timer) {
  auto* ticker = new QTimer(this);
  ticker->setTimerType(Qt::PreciseTimer);
  timers_.push_back(ticker);
  connect(ticker, &QTimer::timeout, this, [this, &timer] {
    if (timer.enabled) Enter(timer.tick);
  });
  const auto state = [&timer] {
    return std::tuple(timer.enabled, timer.interval_ms, timer.restarts, timer.stops);
  };
  timer_watches_.emplace_back([&timer, ticker, state, painted = std::tuple(false, 0, 0U, 0U)]() mutable {
    if (painted == state()) return;
    painted = state();
    // An interval of zero stands still, as a timer without an interval.
    if (timer.enabled && timer.interval_ms > 0) {
      ticker->start(timer.interval_ms);
    } else {
      ticker->stop();
    }
  });
  timer_watches_.back()();
}

}  // namespace kestrum
