#include "signal/signal_history.h"

#include <gtest/gtest.h>

namespace kestrum {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kGap{3000};

TEST(SignalHistory, HoldsThePeakForTwoSeconds) {
  SignalHistory history;
  EXPECT_EQ(history.Peak(milliseconds(0)), -1);
  history.Add(milliseconds(1000), 90, kGap);
  history.Add(milliseconds(1300), 140, kGap);
  history.Add(milliseconds(1600), 60, kGap);
  EXPECT_EQ(history.Peak(milliseconds(1600)), 140);
  EXPECT_EQ(history.Peak(milliseconds(3300)), 140);
  EXPECT_EQ(history.Peak(milliseconds(3301)), 60);
  EXPECT_EQ(history.Peak(milliseconds(3601)), -1);
}

TEST(SignalHistory, ASecondShowsItsHighestReading) {
  SignalHistory history;
  history.Add(milliseconds(5000), 10, kGap);
  history.Add(milliseconds(5300), 30, kGap);
  history.Add(milliseconds(5900), 20, kGap);
  const auto columns = history.Columns(milliseconds(5950));
  ASSERT_EQ(columns.size(), SignalHistory::kColumns);
  EXPECT_EQ(columns.back(), 30);
  EXPECT_EQ(columns.at(columns.size() - 2), -1);
}

TEST(SignalHistory, ReadingsAtAnIntervalAreOneLine) {
  SignalHistory history;
  history.Add(milliseconds(10000), 100, kGap);
  history.Add(milliseconds(13000), 130, kGap);
  const auto columns = history.Columns(milliseconds(13000));
  EXPECT_EQ((std::vector<std::int16_t>(columns.end() - 5, columns.end())),
            (std::vector<std::int16_t>{-1, 100, 110, 120, 130}));
}

TEST(SignalHistory, NothingMeasuredIsAGap) {
  SignalHistory history;
  history.Add(milliseconds(10000), 100, kGap);
  history.Add(milliseconds(11000), {}, kGap);
  history.Add(milliseconds(12000), 90, kGap);  // the set has missed one reading
  history.Add(milliseconds(16000), 80, kGap);  // nobody has asked it meanwhile
  const auto columns = history.Columns(milliseconds(16000));
  EXPECT_EQ((std::vector<std::int16_t>(columns.end() - 7, columns.end())),
            (std::vector<std::int16_t>{100, -1, 90, -1, -1, -1, 80}));
}

TEST(SignalHistory, ForgetsWhatIsOlderThanFiveMinutes) {
  SignalHistory history;
  for (int second = 0; second < 1000; ++second) history.Add(milliseconds(second * 1000), second % 200, kGap);
  const auto columns = history.Columns(milliseconds(999000));
  EXPECT_EQ(columns.front(), 700 % 200);
  EXPECT_EQ(columns.back(), 999 % 200);
  // Time goes on without readings.
  const auto later = history.Columns(milliseconds(1009000));
  EXPECT_EQ(later.front(), 710 % 200);
  EXPECT_EQ(later.back(), -1);
  EXPECT_EQ(later.at(later.size() - 11), 999 % 200);
  const auto much_later = history.Columns(milliseconds(99999000));
  EXPECT_EQ(much_later, std::vector<std::int16_t>(SignalHistory::kColumns, -1));
  history.Add(milliseconds(99999000), 5, kGap);
  EXPECT_EQ(history.Columns(milliseconds(99999000)).back(), 5);
  EXPECT_EQ(history.Columns(milliseconds(99999000)).front(), -1);
}

}  // namespace
}  // namespace kestrum
