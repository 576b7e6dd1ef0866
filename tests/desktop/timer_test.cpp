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

// Counts its ticks on the screen; how often the screen changed is counted too.
class PaintedTicksTest : public TimerTest {
 protected:
  PaintedTicksTest() {
    timer.tick = [this] {
      ++ticks;
      forms.form1.lblCatCount.caption = std::to_string(ticks);
    };
    binder.Follow<std::string>(forms.form1.lblCatCount.caption, [this](const std::string& text) {
      ++painted;
      shown = text;
    });
    painted = 0;
  }
  void Run(int interval_ms) {
    timer.interval_ms = interval_ms;
    timer.Start();
    binder.Sync();
  }
  int painted = 0;
  std::string shown;
};

TEST_F(PaintedTicksTest, FastTicksArePaintedAtMostTenTimesASecond) {
  Run(10);
  process::LetEventsRunFor(milliseconds(1000));
  EXPECT_GE(painted, 4);
  EXPECT_LE(painted, 11);
  EXPECT_GT(ticks, 2 * painted);
}

TEST_F(PaintedTicksTest, WhatTheLastFastTickChangedIsPaintedWhenNoMoreComes) {
  Run(10);
  ASSERT_TRUE(process::WaitFor([this] { return ticks >= 5; }));
  timer.tick = [this] {
    timer.Stop();
    forms.form1.lblCatCount.caption = "last";
  };
  EXPECT_TRUE(process::WaitFor([this] { return shown == "last"; }, milliseconds(2000)));
}

TEST_F(PaintedTicksTest, WhatTheUserDoesIsPaintedAtOnceWhileTicksAreFast) {
  Run(10);
  ASSERT_TRUE(process::WaitFor([this] { return painted > 0; }));
  for (int press = 0; press < 5; ++press) {
    const std::string text = "press " + std::to_string(press);
    binder.Deed([this, &text] { forms.form1.lblCatCount.caption = text; });
    EXPECT_EQ(shown, text);
  }
}

TEST_F(PaintedTicksTest, EachSlowTickIsPaintedAtOnce) {
  const Handler count = timer.tick;
  std::vector<std::string> late;
  timer.tick = [this, count, &late] {
    if (ticks > 0 && shown != std::to_string(ticks)) late.push_back(shown);
    count();
  };
  Run(100);
  ASSERT_TRUE(process::WaitFor([this] { return ticks >= 4; }));
  // What comes between them by itself too.
  binder.Tick([this] { forms.form1.lblCatCount.caption = "between"; });
  EXPECT_EQ(shown, "between");
  EXPECT_EQ(late, std::vector<std::string>());
}

}  // namespace
}  // namespace kestrum::test
