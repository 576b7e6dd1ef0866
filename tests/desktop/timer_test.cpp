#include "desktop/desktop_fixture.h"

namespace kestrum::test {
namespace {

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
  ASSERT_TRUE(QTest::qWaitFor([&] { return ticks >= 3; }, 3000));
  timer.Stop();
  binder.Sync();
  const int stopped_at = ticks;
  QTest::qWait(50);
  EXPECT_EQ(ticks, stopped_at);
}

TEST_F(TimerTest, AStopAndStartBetweenTwoLooksBeginsTheIntervalAnew) {
  timer.interval_ms = 300;
  timer.Start();
  binder.Sync();
  for (int i = 0; i < 4; ++i) {
    QTest::qWait(100);
    timer.Stop();
    timer.Start();
    binder.Sync();
  }
  EXPECT_EQ(ticks, 0);
}

TEST_F(TimerTest, ANewIntervalBeginsAtOnce) {
  timer.interval_ms = 60000;
  timer.Start();
  binder.Sync();
  timer.interval_ms = 10;
  binder.Sync();
  ASSERT_TRUE(QTest::qWaitFor([&] { return ticks > 0; }, 3000));
}

TEST_F(TimerTest, AStopInsideTheTickEndsIt) {
  timer.tick = [this] {
    ++ticks;
    timer.Stop();
  };
  timer.interval_ms = 5;
  timer.Start();
  binder.Sync();
  ASSERT_TRUE(QTest::qWaitFor([&] { return ticks > 0; }, 3000));
  QTest::qWait(40);
  EXPECT_EQ(ticks, 1);
}

TEST_F(TimerTest, AnIntervalOfZeroStandsStill) {
  timer.interval_ms = 0;
  timer.Start();
  binder.Sync();
  QTest::qWait(30);
  EXPECT_EQ(ticks, 0);
}

}  // namespace
}  // namespace kestrum::test
