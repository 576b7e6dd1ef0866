#include "log/cleaning.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/log_text.h"

namespace orvandi {
namespace {

using testing::ElementsAre;

// A log of records one second apart; each is a place (its longitude in degrees) and a raw value.
struct Reading {
  double place = 0;
  int raw = 100;
  int second = -1;  // -1: a second after the one before
  std::uint8_t marks = 0;
};

Log LogOf(const std::vector<Reading>& readings) {
  Log log;
  log.s_texts.emplace_back();
  log.blocks.emplace_back();
  log.blocks[0].record_count = readings.size();
  std::int64_t time = 1000;
  for (const Reading& reading : readings) {
    Record record;
    record.time_s = reading.second >= 0 ? reading.second : time + 1;
    time = record.time_s;
    record.latitude_deg = 50;
    record.longitude_deg = reading.place;
    record.raw = static_cast<std::int16_t>(reading.raw);
    record.marks = reading.marks;
    log.records.push_back(record);
  }
  return log;
}

std::vector<int> Marks(const Log& log) {
  std::vector<int> marks;
  for (const Record& record : log.records) marks.push_back(record.marks);
  return marks;
}

TEST(Cleaning, APositionThatStandsStillIsMarkedButItsFirstRecord) {
  Log log = LogOf({{1, 9, 0}, {2, 9, 1}, {2, 9, 6}, {2, 9, 11}, {3, 9, 12}});
  MarkRuns(log, 0);
  EXPECT_THAT(Marks(log), ElementsAre(0, 0, kOldFix, kOldFix, 0));
}

TEST(Cleaning, SeveralReadingsBetweenTwoFixesAreNoStandstill) {
  Log log = LogOf({{1, 9, 0}, {1, 9, 0}, {1, 9, 1}, {1, 9, 1}, {1, 9, 9}, {2, 9, 10}});
  MarkRuns(log, 0);
  EXPECT_THAT(Marks(log), ElementsAre(0, 0, 0, 0, 0, 0));
}

TEST(Cleaning, AnotherDriveFromTheSamePlaceIsNoStandstill) {
  Log log = LogOf({{1, 9, 0}, {1, 9, 5}, {1, 9, 1000}, {1, 9, 1005}});
  MarkRuns(log, 0);
  EXPECT_THAT(Marks(log), ElementsAre(0, 0, 0, 0));
}

TEST(Cleaning, RecordsWithoutAFixBelongToNoStandstill) {
  Log log = LogOf({{1, 9, 0}, {1, 9, 5, kNoFix}, {1, 9, 20, kNoFix}, {1, 9, 25}, {2, 9, 26}});
  MarkRuns(log, 0);
  EXPECT_THAT(Marks(log), ElementsAre(0, kNoFix, kNoFix, 0, 0));
}

TEST(Cleaning, ARunOfZerosIsADeadRig) {
  Log log = LogOf({{1, 0}, {2, 0}, {3, 5}, {4, 0}, {5, 0}, {6, 0}, {7, 0}, {8, 0}, {9, 7}});
  MarkRuns(log, 0);
  EXPECT_THAT(Marks(log), ElementsAre(0, 0, 0, kDeadRig, kDeadRig, kDeadRig, kDeadRig, kDeadRig, 0));
}

TEST(Cleaning, RulesCanBeChanged) {
  Log log = LogOf({{1, 0, 0}, {1, 0, 3}, {2, 9, 4}});
  CleaningRules rules;
  rules.dead_rig_records = 2;
  rules.old_fix_s = 3;
  MarkRuns(log, 0, rules);
  EXPECT_THAT(Marks(log), ElementsAre(kDeadRig, kDeadRig | kOldFix, 0));
}

TEST(Cleaning, RecordByRecordGivesTheSameAsAllAtOnce) {
  std::vector<Reading> readings;
  unsigned random = 12345;
  for (int index = 0; index < 400; ++index) {
    random = random * 1103515245U + 12345U;
    const auto place = static_cast<double>((random >> 16) % 5 == 0 ? index : index / 20);
    readings.push_back({place, (random >> 20) % 4 == 0 ? 50 : 0, index * 2});
  }
  Log whole = LogOf(readings);
  MarkRuns(whole, 0);
  Log growing = LogOf({});
  for (std::size_t count = 0; count < readings.size(); ++count) {
    growing.records.push_back(LogOf(readings).records[count]);
    EXPECT_LE(MarkRuns(growing, count), count);
  }
  EXPECT_EQ(Marks(growing), Marks(whole));
  // Looking again changes nothing.
  MarkRuns(growing, 200);
  EXPECT_EQ(Marks(growing), Marks(whole));
}

TEST(Cleaning, CountsEveryMark) {
  Log log = LogOf({{1, 9}, {2, 9}, {3, 9}, {4, 9}});
  log.records[1].marks = kNoFix | kNoPosition;
  log.records[2].marks = kUnknownSignal;
  log.records[3].marks = kOldFix | kDeadRig;
  const MarkCounts counts = CountMarks(log);
  EXPECT_EQ(counts.records, 4U);
  EXPECT_EQ(counts.shown, 1U);
  EXPECT_EQ(counts.no_fix, 1U);
  EXPECT_EQ(counts.no_position, 1U);
  EXPECT_EQ(counts.unknown_signal, 1U);
  EXPECT_EQ(counts.old_fix, 1U);
  EXPECT_EQ(counts.dead_rig, 1U);
}

TEST(Cleaning, AnEmptyLogCanBeLookedAt) {
  Log log;
  EXPECT_EQ(MarkRuns(log, 0), 0U);
  EXPECT_EQ(MarkRuns(log, 7), 0U);
  EXPECT_EQ(CountMarks(log).records, 0U);
}

}  // namespace
}  // namespace orvandi
