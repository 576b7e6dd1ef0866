#include "analysis/summary.h"

#include <gtest/gtest.h>

#include "analysis/palette.h"
#include "support/log_text.h"

namespace orvandi {
namespace {

TEST(Summary, TellsTheDriveInNumbers) {
  auto lines = BlockLines("21-11-2026 01:55:34, 5157.00N, 00532.00E, 25 m,  FT840 LSB  3630 kHz, Loop",
                          {"01:55:30", "01:55:31", "01:55:32", "01:55:34"});
  lines.emplace_back("foreign");
  Log log = Read(Text(lines));
  log.records[3].marks = kNoFix;
  log.pending_first = 3;
  const std::vector<NamedLog> logs = {{&log, "drive.log"}};
  const Summary summary = Summarise(logs);
  EXPECT_EQ(summary.marks.records, 4U);
  EXPECT_EQ(summary.marks.shown, 3U);
  EXPECT_EQ(summary.blocks, 1U);
  EXPECT_EQ(summary.dropped_lines, 1U);
  EXPECT_EQ(summary.pending, 1U);
  EXPECT_TRUE(summary.has_time);
  EXPECT_EQ(DateTimeText(summary.first_s), "2026-11-21 01:55:30");
  EXPECT_EQ(DateTimeText(summary.last_s), "2026-11-21 01:55:34");
  // Two steps of a ten-thousandth of a minute northwards.
  EXPECT_NEAR(summary.driven_km, 2 * 0.0001 * 1.853, 1e-5);
  EXPECT_EQ(summary.level.count, 3U);
  EXPECT_NEAR(summary.level.median, 85.249, 1e-3);
  EXPECT_EQ(summary.law.kind, Law::Kind::kFreeSpace);
}

TEST(Summary, OfNothingIsEmpty) {
  const Log log;
  const std::vector<NamedLog> logs = {{&log, "empty.log"}};
  const Summary summary = Summarise(logs);
  EXPECT_EQ(summary.marks.records, 0U);
  EXPECT_FALSE(summary.has_time);
  EXPECT_EQ(summary.law.kind, Law::Kind::kNone);
}

TEST(Times, AreTextsWithoutAZone) {
  EXPECT_EQ(DateTimeText(0), "1970-01-01 00:00:00");
  EXPECT_EQ(DateTimeText(-1), "1969-12-31 23:59:59");
  EXPECT_EQ(DateTimeText(1795226134), "2026-11-21 01:55:34");
  EXPECT_EQ(TimeOfDayText(6934), "01:55:34");
  EXPECT_EQ(DateText(1795226134), "2026-11-21");
}

TEST(Palette, RunsFromDarkBlueToYellow) {
  const auto sum = [](const Colour& colour) {
    return 0.2126 * colour.red + 0.7152 * colour.green + 0.0722 * colour.blue;
  };
  EXPECT_EQ(Viridis(0).blue, 0x54);
  EXPECT_EQ(Viridis(-3).red, 0x44);
  EXPECT_EQ(Viridis(1).red, 0xfd);
  EXPECT_EQ(Viridis(9).green, 0xe7);
  // It becomes lighter at every step: grey printers tell the order, too.
  for (int step = 1; step <= 100; ++step)
    EXPECT_GT(sum(Viridis(step / 100.0)), sum(Viridis((step - 1) / 100.0)));
}

}  // namespace
}  // namespace orvandi
