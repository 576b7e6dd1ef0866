#include "dial_watch.h"

#include <gtest/gtest.h>

#include <vector>

#include "retry_schedule.h"

namespace kestrum::rigbridge {
namespace {

struct Row {
  const char* what;
  double sent_hz;  // 0 for never
  DialWatch::Taken taken;
  std::vector<double> read_hz;
  bool elsewhere;
};

TEST(DialWatch, KnowsWhenTheDialWasMoved) {
  using enum DialWatch::Taken;
  const std::vector<Row> rows = {
      {"nothing is known", 0, kYes, {}, false},
      {"Kestrum has set nothing", 0, kYes, {7100000}, false},
      {"not read yet", 14200000, kYes, {}, false},
      {"as sent", 14200000, kYes, {14200000, 14200000}, false},
      {"a step of the synthesizer", 14200000, kYes, {14200000, 14200010}, false},
      {"moved", 14200000, kYes, {14200000, 14200100}, true},
      {"moved and back", 14200000, kYes, {14200000, 14200100, 14200000}, false},
      {"rounded to its channels", 145512345, kYes, {145512500, 145512500}, false},
      {"rounded, then moved", 145512345, kYes, {145512500, 145525000}, true},
      {"it did not follow", 14200000, kYes, {7100000}, true},
      {"it cannot be tuned and is elsewhere", 14200000, kNo, {14200100}, true},
      {"it cannot be tuned and is there", 14200000, kNo, {14200000}, false},
  };
  for (const Row& row : rows) {
    DialWatch watch;
    if (row.sent_hz > 0) watch.Sent(row.sent_hz, row.taken);
    for (const double hz : row.read_hz) watch.Read(hz);
    EXPECT_EQ(watch.Elsewhere(), row.elsewhere) << row.what;
  }
}

TEST(DialWatch, ANewFrequencyBeginsAnew) {
  DialWatch watch;
  watch.Sent(14200000, DialWatch::Taken::kYes);
  watch.Read(14200000);
  watch.Read(7100000);
  EXPECT_TRUE(watch.Elsewhere());
  watch.Sent(7100000, DialWatch::Taken::kYes);
  EXPECT_FALSE(watch.Elsewhere());
  EXPECT_EQ(watch.RigHz(), std::nullopt);
  watch.Read(7100000);
  EXPECT_FALSE(watch.Elsewhere());
}

TEST(DialWatch, AShiftWithTheModeIsNoTurnOfTheDial) {
  DialWatch watch;
  watch.Sent(14200000, DialWatch::Taken::kYes);
  watch.Read(14200000);
  watch.ModeChanged();
  watch.Read(14200700);
  EXPECT_FALSE(watch.Elsewhere());
  watch.Read(14201000);
  EXPECT_TRUE(watch.Elsewhere());
  watch.ModeChanged();  // does not forgive the turn before it
  EXPECT_TRUE(watch.Elsewhere());
  watch.Read(14201000);
  EXPECT_TRUE(watch.Elsewhere());
}

TEST(RetrySchedule, PausesGrowUntilASuccess) {
  RetrySchedule schedule;
  for (const double pause_s : {0.5, 1.0, 2.0, 4.0, 8.0, 16.0, 30.0, 30.0})
    EXPECT_EQ(schedule.Next(), pause_s);
  schedule.Reset();
  EXPECT_EQ(schedule.Next(), 0.5);
}

}  // namespace
}  // namespace kestrum::rigbridge
