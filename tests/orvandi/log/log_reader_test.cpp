#include "log/log_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cmath>

#include "analysis/summary.h"
#include "support/log_text.h"

namespace orvandi {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::string kHeader =
    "21-11-2026 01:55:34, 5157.00N, 00532.00E, 25 m,  FT840 LSB  3630 kHz, Antenna1, PWR 10W";

std::string HeaderAt(const std::string& stamp) {
  return stamp + kHeader.substr(19);
}

std::vector<std::string> Times(const Log& log) {
  std::vector<std::string> times;
  for (const Record& record : log.records) times.push_back(DateTimeText(record.time_s));
  return times;
}

std::vector<DropReason> Reasons(const Log& log) {
  std::vector<DropReason> reasons;
  for (const DroppedLine& line : log.dropped) reasons.push_back(line.reason);
  return reasons;
}

TEST(Reader, ReadsBlocksWithEveryLineEnd) {
  const auto first = BlockLines(kHeader, {"01:55:31", "01:55:33", "01:55:34"});
  const auto second = BlockLines(HeaderAt("21-11-2026 01:56:00"), {"01:55:50", "01:56:00"});
  for (const char* end : {"\r\n", "\n", "\r"}) {
    const Log log = Read(Text(first, end) + Text(second, end));
    ASSERT_EQ(log.records.size(), 5U);
    ASSERT_EQ(log.blocks.size(), 2U);
    EXPECT_EQ(log.blocks[1].first_record, 3U);
    EXPECT_EQ(log.blocks[1].record_count, 2U);
    EXPECT_EQ(log.records[4].block, 1U);
    EXPECT_EQ(log.records[4].line, 11U);
    EXPECT_EQ(log.blocks[1].line, 8U);
    EXPECT_EQ(log.SText(log.records[0]), "S8+");
    EXPECT_EQ(log.dropped_count, 0U);
    EXPECT_EQ(Times(log).back(), "2026-11-21 01:56:00");
  }
}

TEST(Reader, GivesEachRecordThePlaceOfItsLine) {
  const auto lines = BlockLines(kHeader, {"01:55:31", "01:55:33"});
  const std::string bytes = Text(lines);
  const Log log = Read(bytes);
  for (const Record& record : log.records) {
    EXPECT_EQ(bytes.substr(record.offset, 8), TimeOfDayText(record.time_s));
  }
}

TEST(Reader, ComputesDistanceAndBearingFromTheTransmitter) {
  RecordText north;
  north.latitude = "5158.00N";
  north.longitude = "00532.00E";
  RecordText lost;
  lost.latitude = "?";
  auto lines = HeaderLines(kHeader);
  lines.push_back(Line(north));
  lines.push_back(Line(lost));
  const Log log = Read(Text(lines));
  EXPECT_NEAR(log.records[0].distance_km, 6371.0088 * M_PI / 180 / 60, 1e-4);
  EXPECT_NEAR(log.records[0].bearing_deg, 0, 1e-4);
  // Where the position is unknown, what was logged.
  EXPECT_FLOAT_EQ(log.records[1].distance_km, 5.66F);
  EXPECT_FLOAT_EQ(log.records[1].bearing_deg, 43);
}

TEST(Reader, CountsBackwardsAcrossMidnight) {
  const Log log = Read(
      Text(BlockLines(HeaderAt("01-03-2028 00:00:05"), {"23:59:00", "23:59:59", "00:00:01", "00:00:05"})));
  EXPECT_THAT(Times(log), ElementsAre("2028-02-29 23:59:00", "2028-02-29 23:59:59", "2028-03-01 00:00:01",
                                      "2028-03-01 00:00:05"));
}

TEST(Reader, CountsBackwardsAcrossSeveralMidnights) {
  const Log log =
      Read(Text(BlockLines(HeaderAt("10-01-2026 08:00:00"), {"12:00:00", "07:00:00", "23:00:00"})));
  EXPECT_THAT(Times(log), ElementsAre("2026-01-08 12:00:00", "2026-01-09 07:00:00", "2026-01-09 23:00:00"));
}

TEST(Reader, AClockSetBackIsNoMidnight) {
  const Log log = Read(
      Text(BlockLines(HeaderAt("25-10-2026 02:00:03"), {"02:59:58", "02:59:59", "02:00:00", "02:00:03"})));
  EXPECT_THAT(Times(log), ElementsAre("2026-10-25 02:59:58", "2026-10-25 02:59:59", "2026-10-25 02:00:00",
                                      "2026-10-25 02:00:03"));
  const Log before_header = Read(Text(BlockLines(HeaderAt("25-10-2026 02:00:00"), {"02:59:58", "02:59:59"})));
  EXPECT_THAT(Times(before_header), ElementsAre("2026-10-25 02:59:58", "2026-10-25 02:59:59"));
}

TEST(Reader, ABlockRecoveredFromAJournalRunsForward) {
  const Log log = Read(
      Text(BlockLines(HeaderAt("20-11-2026 23:00:00"), {"23:00:00", "23:30:00", "00:10:00", "04:00:00"})));
  EXPECT_THAT(Times(log), ElementsAre("2026-11-20 23:00:00", "2026-11-20 23:30:00", "2026-11-21 00:10:00",
                                      "2026-11-21 04:00:00"));
}

TEST(Reader, AJournalRunsForward) {
  Log log;
  LogReader reader(log, LogReader::Source::kJournal);
  reader.Feed(Text(BlockLines(HeaderAt("20-11-2026 23:00:00"), {"23:30:00", "00:10:00"})));
  reader.Finish();
  EXPECT_THAT(Times(log), ElementsAre("2026-11-20 23:30:00", "2026-11-21 00:10:00"));
  EXPECT_TRUE(log.blocks.at(0).pending);
}

TEST(Reader, DropsNothingInSilence) {
  auto lines = BlockLines(kHeader, {"01:55:31"});
  lines.push_back("left home");
  lines.push_back("01:55:32, GPS Ok, 5159.2453N, 005");
  lines.push_back("25:55:32" + Line({}).substr(8));
  lines.push_back(std::string("\0\0\0\0", 4));
  lines.push_back(std::string(5000, 'x'));
  lines.push_back("31-02-2026 01:55:34" + kHeader.substr(19));
  lines.push_back(Line({}));
  lines.push_back("21-11-2026 01:58:00, 5157.00N");
  const Log log = Read(Text(lines));
  EXPECT_THAT(Reasons(log),
              ElementsAre(DropReason::kForeign, DropReason::kTorn, DropReason::kBadTime, DropReason::kBinary,
                          DropReason::kTooLong, DropReason::kBadHeader, DropReason::kTorn));
  EXPECT_EQ(log.dropped[0].text, "left home");
  EXPECT_EQ(log.dropped[0].line, 5U);
  EXPECT_EQ(log.dropped[4].text, std::string(200, 'x'));
  // A record behind a header that cannot be read has no date, but it is there.
  ASSERT_EQ(log.records.size(), 2U);
  EXPECT_FALSE(log.BlockOf(log.records[1]).has_header);
}

TEST(Reader, KeepsRecordsBeforeTheFirstHeader) {
  const Log log = Read(Line({}) + "\n" + Text(BlockLines(kHeader, {"01:55:31"})));
  ASSERT_EQ(log.records.size(), 2U);
  EXPECT_FALSE(log.blocks[0].has_header);
  EXPECT_EQ(log.records[0].time_s, 6934);
  EXPECT_FLOAT_EQ(log.records[0].distance_km, 5.66F);
  EXPECT_TRUE(log.BlockOf(log.records[1]).has_header);
}

TEST(Reader, ReadsAHeaderWithoutItsDashes) {
  const Log log = Read(kHeader + "\n" + Line({}) + "\n");
  ASSERT_EQ(log.blocks.size(), 1U);
  EXPECT_EQ(Times(log).at(0), "2026-11-21 01:55:34");
}

TEST(Reader, SkipsTheMarkOfUtf8AndReadsTextSavedSo) {
  const std::string antenna = kHeader + " \xC3\xBC";
  const Log log = Read("\xEF\xBB\xBF" + Text(HeaderLines(antenna)) + Line({}) + "\n");
  EXPECT_EQ(log.dropped_count, 0U);
  EXPECT_EQ(log.blocks.at(0).antenna, "Antenna1, PWR 10W \xC3\xBC");
}

TEST(Reader, TakesALastLineWithoutAnEnd) {
  const std::string bytes = Text(BlockLines(kHeader, {"01:55:31"})) + Line({});
  EXPECT_EQ(Read(bytes).records.size(), 2U);
  const Log torn = Read(bytes.substr(0, bytes.size() - 1));
  EXPECT_EQ(torn.records.size(), 1U);
  EXPECT_THAT(Reasons(torn), ElementsAre(DropReason::kTorn));
}

TEST(Reader, TheCutsBetweenPiecesMakeNoDifference) {
  auto lines = BlockLines(kHeader, {"23:55:31", "01:55:33"});
  lines.push_back(std::string(5000, 'y'));
  lines.push_back("foreign");
  const std::string bytes = Text(lines) + "\n\n" + Text(BlockLines(kHeader, {"01:55:34"}), "\n") + Line({});
  const Log whole = Read(bytes);
  for (const std::size_t step : {1U, 2U, 3U, 7U, 64U, 4096U, 4097U}) {
    Log log;
    LogReader reader(log);
    for (std::size_t place = 0; place < bytes.size(); place += step) {
      reader.Feed(std::string_view(bytes).substr(place, step));
      reader.SettleDates();
    }
    reader.Finish();
    ASSERT_EQ(log.records.size(), whole.records.size()) << step;
    EXPECT_EQ(Times(log), Times(whole)) << step;
    EXPECT_EQ(reader.Bytes(), bytes.size());
    for (std::size_t index = 0; index < log.records.size(); ++index) {
      EXPECT_EQ(log.records[index].offset, whole.records[index].offset) << step;
      EXPECT_EQ(log.records[index].line, whole.records[index].line) << step;
    }
    ASSERT_EQ(log.dropped.size(), whole.dropped.size()) << step;
    for (std::size_t index = 0; index < log.dropped.size(); ++index) {
      EXPECT_EQ(log.dropped[index].line, whole.dropped[index].line) << step;
      EXPECT_EQ(log.dropped[index].text, whole.dropped[index].text) << step;
    }
  }
}

TEST(Reader, CountsWhatItNoLongerKeeps) {
  std::string bytes;
  for (int line = 0; line < 12000; ++line) bytes += "x\n";
  const Log log = Read(bytes);
  EXPECT_EQ(log.dropped.size(), kMostDropped);
  EXPECT_EQ(log.dropped_count, 12000U);

  ReaderLimits limits;
  limits.most_records = 2;
  Log few;
  LogReader reader(few, LogReader::Source::kLog, limits);
  reader.Feed(Text(BlockLines(kHeader, {"01:55:31", "01:55:32", "01:55:33"})));
  reader.Finish();
  EXPECT_EQ(few.records.size(), 2U);
  EXPECT_THAT(Reasons(few), ElementsAre(DropReason::kTooMany));
}

TEST(Reader, AThousandSTextsDoNotConfuseIt) {
  auto lines = HeaderLines(kHeader);
  for (int number = 0; number < 1000; ++number) {
    RecordText record;
    record.s = "S" + std::to_string(number);
    lines.push_back(Line(record));
  }
  const Log log = Read(Text(lines));
  ASSERT_EQ(log.records.size(), 1000U);
  EXPECT_EQ(log.SText(log.records[0]), "S0");
  EXPECT_EQ(log.SText(log.records[253]), "S253");
  EXPECT_EQ(log.SText(log.records[999]), "");
}

TEST(Reader, AnEmptyLogHasNothing) {
  const Log log = Read("");
  EXPECT_THAT(log.records, IsEmpty());
  EXPECT_THAT(log.blocks, IsEmpty());
  EXPECT_EQ(log.dropped_count, 0U);
}

}  // namespace
}  // namespace orvandi
