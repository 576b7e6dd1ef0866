#include "desktop/binding/binder.h"

#include <algorithm>
#include <chrono>
#include <tuple>
#include <utility>

namespace kestrum {

namespace {

// Digits that change faster than this cannot be read.
constexpr std::chrono::milliseconds kFrame{100};

}  // namespace

Binder::Binder(const Program& program) : program_(program) {
  since_painted_.start();
  paint_late_.setSingleShot(true);
  connect(&paint_late_, &QTimer::timeout, this, [this] { Sync(); });
}

void Binder::Sync() {
  if (program_.Ended()) return;
  since_painted_.restart();
  if (paint_late_.isActive()) paint_late_.stop();
  // Painting may show a window whose first events come back here; the list itself never changes then.
  for (const std::function<void()>& look : watches_) look();
  SyncTimers();
}

void Binder::SyncTimers() {
  if (program_.Ended()) return;
  for (const std::function<void()>& look : timer_watches_) look();
}

bool Binder::Perform(const Handler& handler) {
  if (program_.Ended()) return false;
  ++depth_;
  kestrum::Run(handler);
  --depth_;
  const bool inside = deeds_wait_ && depth_ > 0;  // of a short pump inside a handler
  if (inside) SyncTimers();
  return !inside;
}

void Binder::Enter(const Handler& handler) {
  if (!Perform(handler)) return;
  Sync();
  if (depth_ == 0) RunDeeds();
}

void Binder::Tick(const Handler& handler) {
  if (!Perform(handler)) return;
  SyncInTime();
  if (depth_ == 0) RunDeeds();
}

void Binder::SyncInTime() {
  SyncTimers();
  if (since_painted_.hasExpired(kFrame.count()) || !TicksFast()) {
    Sync();
  } else if (!paint_late_.isActive()) {
    paint_late_.start(kFrame);
  }
}

bool Binder::TicksFast() const {
  return std::any_of(timers_.begin(), timers_.end(), [](const QTimer* timer) {
    return timer->isActive() && timer->intervalAsDuration() < kFrame;
  });
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
  for (QTimer* timer : timers_) delete timer;
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
    if (timer.enabled) Tick(timer.tick);
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
