#include "logging/log_record.h"

#include <gtest/gtest.h>

namespace kestrum {
namespace {

const Site kFix = {"GPS Ok", "5158.2034N", "00534.1000E", ".5 km", "3 m", "007\xB0"};
const Site kEmpty = {"", "", "", "", "", ""};

Reading ReadingOf(std::int16_t raw, const TableRow& cells) {
  return {raw, cells, {}};
}

TEST(LogRecord, JoinsElevenFieldsByCommaAndBlank) {
  EXPECT_EQ(LogRecord({2026, 5, 17, 14, 3, 9}, kFix, ReadingOf(128, {"S9", " 50", " 20.7"})),
            "14:03:09, GPS Ok, 5158.2034N, 00534.1000E, .5 km, 3 m, 007\xB0, 128, S9, 50 uV, 20.7 mV/m");
}

TEST(LogRecord, TakesTheTextsAsTheyStand) {
  const Site none = {"No GPS", "????.??", "?????.??", "", "?? m", "???\xB0"};
  EXPECT_EQ(LogRecord({2026, 1, 2, 3, 4, 5}, none, ReadingOf(0, {"S0", "0", "0"})),
            "03:04:05, No GPS, ????.??, ?????.??, , ?? m, ???\xB0, 0, S0, 0 uV, 0 mV/m");
}

TEST(LogRecord, ASiteThatIsNotKnownYetShowsQuestionMarks) {
  EXPECT_EQ(LogRecord({2026, 1, 2, 3, 4, 5}, Site(), ReadingOf(0, {"S0", "0", "0"})),
            "03:04:05, No GPS, ????.???, ?????.???, ??? km, ??? m, ???\xB0, 0, S0, 0 uV, 0 mV/m");
}

TEST(LogRecord, CommasAndLineEndsOfAReceiverAddNoFieldAndNoLine) {
  const Site odd = {"GPS Ok", "5158,2034N", "005\r\n34.1E", ".5 km", "3,5 m", "007\xB0"};
  EXPECT_EQ(LogRecord({2026, 1, 2, 3, 4, 5}, odd, ReadingOf(1, {"S,1", "1", "2"})),
            "03:04:05, GPS Ok, 5158 2034N, 005  34.1E, .5 km, 3 5 m, 007\xB0, 1, S 1, 1 uV, 2 mV/m");
}

TEST(SignalText, KeepsTheCellsAsTheyStand) {
  EXPECT_EQ(SignalText({"S8+", " 26.7", " 11.09"}), "S8+,  26.7 uV,  11.09 mV/m");
  EXPECT_EQ(SignalText({"S9", "50", "20.7"}), "S9, 50 uV, 20.7 mV/m");
}

TEST(BlockHead, IsTheHeaderBetweenDashesOfItsLength) {
  EXPECT_EQ(BlockHead("abc"), "---\r\nabc\r\n---\r\n");
}

struct CellRow {
  TableRow cells;
  const char* end_of_record;
};

class LogRecordCells : public testing::TestWithParam<CellRow> {};

TEST_P(LogRecordCells, LeadingBlanksOfNumbersGoAndTheTextStays) {
  const std::string record = LogRecord({}, kEmpty, ReadingOf(7, GetParam().cells));
  EXPECT_EQ(record.substr(record.find(", 7, ")), GetParam().end_of_record);
}

INSTANTIATE_TEST_SUITE_P(Rows, LogRecordCells,
                         testing::Values(CellRow{{"S4", "1.56", "0.65"}, ", 7, S4, 1.56 uV, 0.65 mV/m"},
                                         CellRow{{" S4 ", "   1.6 ", "  .7"}, ", 7,  S4 , 1.6  uV, .7 mV/m"},
                                         CellRow{{"", "", ""}, ", 7, ,  uV,  mV/m"},
                                         CellRow{{"S9 + 10dB", " 158", " 65"},
                                                 ", 7, S9 + 10dB, 158 uV, 65 mV/m"}));

struct RawRow {
  std::int16_t raw;
  const char* text;
};

class LogRecordRaw : public testing::TestWithParam<RawRow> {};

TEST_P(LogRecordRaw, IsPlainDecimalWithoutLeadingBlank) {
  EXPECT_EQ(LogRecord({}, kEmpty, ReadingOf(GetParam().raw, {"x", "1", "2"})),
            std::string("00:00:00, , , , , , , ") + GetParam().text + ", x, 1 uV, 2 mV/m");
}

INSTANTIATE_TEST_SUITE_P(Rows, LogRecordRaw,
                         testing::Values(RawRow{0, "0"}, RawRow{9, "9"}, RawRow{255, "255"}, RawRow{-1, "-1"},
                                         RawRow{32767, "32767"}));

struct StampRow {
  DateTime moment;
  const char* time;
  const char* block_stamp;
  const char* start_stamp;
};

class Stamps : public testing::TestWithParam<StampRow> {};

TEST_P(Stamps, AreWrittenInTwentyFourHours) {
  EXPECT_EQ(TimeText(GetParam().moment), GetParam().time);
  EXPECT_EQ(BlockStampText(GetParam().moment), GetParam().block_stamp);
  EXPECT_EQ(StartStampText(GetParam().moment), GetParam().start_stamp);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, Stamps,
    testing::Values(
        StampRow{{2026, 5, 17, 14, 3, 9}, "14:03:09", "17-05-2026 14:03:09", "05-17-26 14:03:09"},
        StampRow{{2000, 1, 2, 0, 0, 0}, "00:00:00", "02-01-2000 00:00:00", "01-02-00 00:00:00"},
        StampRow{{1999, 12, 31, 23, 59, 59}, "23:59:59", "31-12-1999 23:59:59", "12-31-99 23:59:59"},
        StampRow{{2009, 10, 9, 12, 0, 1}, "12:00:01", "09-10-2009 12:00:01", "10-09-09 12:00:01"}));

}  // namespace
}  // namespace kestrum
