#include "desktop/desktop_fixture.h"
#include "support_process/qt_waits.h"

namespace kestrum::test {
namespace {

using std::chrono::milliseconds;

class TimerTest : public BoundForms {
 protected:
  TimerTest() {
    timer.tick = [this] { ++ticks; };
  }
  Timer& timer = forms.form1.tmrMain;
  int ticks = 0;
};

TEST_F(TimerTest, TicksWhileItIsEnabled) {
  timer.interval_ms = 10;
  timer.Start();
  binder.Sync();
  ASSERT_TRUE(process::WaitFor([&] { return ticks >= 3; }));
  timer.Stop();
  binder.Sync();
  const int stopped_at = ticks;
  EXPECT_TRUE(process::StaysTrueWhileEventsRun(milliseconds(50), [&] { return ticks == stopped_at; }));
}

TEST_F(TimerTest, AStopAndStartBetweenTwoLooksBeginsTheIntervalAnew) {
  timer.interval_ms = 300;
  timer.Start();
  binder.Sync();
  for (int i = 0; i < 4; ++i) {
    EXPECT_TRUE(process::StaysTrueWhileEventsRun(milliseconds(100), [this] { return ticks == 0; }));
    timer.Stop();
    timer.Start();
    binder.Sync();
  }
}

TEST_F(TimerTest, ANewIntervalBeginsAtOnce) {
  timer.interval_ms = 60000;
  timer.Start();
  binder.Sync();
  timer.interval_ms = 10;
  binder.Sync();
  ASSERT_TRUE(process::WaitFor([&] { return ticks > 0; }));
}

TEST_F(TimerTest, AStopInsideTheTickEndsIt) {
  timer.tick = [this] {
    ++ticks;
    timer.Stop();
  };
  timer.interval_ms = 5;
  timer.Start();
  binder.Sync();
  ASSERT_TRUE(process::WaitFor([&] { return ticks > 0; }));
  EXPECT_TRUE(process::StaysTrueWhileEventsRun(milliseconds(40), [this] { return ticks == 1; }));
}

TEST_F(TimerTest, AnIntervalOfZeroStandsStill) {
  timer.interval_ms = 0;
  timer.Start();
  binder.Sync();
  EXPECT_TRUE(process::StaysTrueWhileEventsRun(milliseconds(30), [this] { return ticks == 0; }));
}

}  // namespace
}  // namespace kestrum::test
