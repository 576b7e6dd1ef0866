#include "log/log_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "analysis/summary.h"
#include "support/log_text.h"

namespace orvandi {
namespace {

using testing::HasSubstr;

const std::string kHeader =
    "21-11-2026 01:55:34, 5157.00N, 00532.00E, 25 m,  FT840 LSB  3630 kHz, Antenna1, PWR 10W";

std::string LineAt(const std::string& time) {
  RecordText record;
  record.time = time;
  record.latitude = "5159.00" + time.substr(6) + "N";
  return Line(record);
}

std::string BlockAt(const std::string& stamp, const std::vector<std::string>& times) {
  std::vector<std::string> lines = HeaderLines(stamp + kHeader.substr(19));
  for (const std::string& time : times) lines.push_back(LineAt(time));
  return Text(lines);
}

const std::string kBlock = BlockAt("21-11-2026 01:55:34", {"01:55:31", "01:55:33", "01:55:34"});

TEST(LogFile, OpensALog) {
  const Folder folder;
  LogFile file(folder.Write("drive.log", kBlock));
  const auto outcome = file.Open();
  EXPECT_TRUE(outcome.ok);
  EXPECT_EQ(outcome.sentence, "");
  EXPECT_EQ(file.Content().records.size(), 3U);
  EXPECT_EQ(file.Content().pending_first, 3U);
  EXPECT_EQ(
      file.LineOf(file.Content().records[1]),
      "01:55:33, GPS Ok, 5159.0033N, 00535.3546E, 5.66 km, 4.3 m, 223\xC2\xB0, 121, S8+, 44.2 uV, 18.3 mV/m");
}

TEST(LogFile, SaysWhatIsOddAboutAFile) {
  const Folder folder;
  std::filesystem::create_directory(folder.Path("folder"));
  ASSERT_EQ(mkfifo(folder.Path("pipe").c_str(), 0600), 0);
  folder.Write("empty.log", "");
  folder.Write("header.log", Text(HeaderLines(kHeader)));
  folder.Write("letter.txt", "Dear reader,\nthis is no log.\n");
  folder.Write("picture.png", std::string("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16));
  folder.Write("utf16.log", std::string("\xFF\xFE-\0-\0\n\0", 8));
  struct Row {
    const char* name;
    bool ok;
    const char* sentence;
  };
  for (const Row& row :
       {Row{"missing.log", false, "There is no such file."}, Row{"folder", false, "This is a folder."},
        Row{"pipe", false, "This is a device or a pipe"}, Row{"empty.log", true, "The file is empty"},
        Row{"header.log", true, "The log has a header, but no record yet."},
        Row{"letter.txt", false, "This is no log: none of its lines is a record."},
        Row{"picture.png", false, "This is no log: it holds binary data"},
        Row{"utf16.log", false, "UTF-16"}}) {
    LogFile file(folder.Path(row.name));
    const auto outcome = file.Open();
    EXPECT_EQ(outcome.ok, row.ok) << row.name;
    EXPECT_THAT(outcome.sentence, HasSubstr(row.sentence)) << row.name;
    EXPECT_FALSE(file.Update().changed) << row.name;
  }
}

TEST(LogFile, TwoGigabytesOfNothingAreNoLog) {
  const Folder folder;
  const std::string path = folder.Write("sparse.log", "");
  std::filesystem::resize_file(path, std::uintmax_t{2} << 30);
  LogFile file(path);
  std::uint64_t last = 0;
  const auto outcome = file.Open([&](std::uint64_t done, std::uint64_t total) {
    EXPECT_GT(done, last);
    EXPECT_EQ(total, std::uint64_t{2} << 30);
    last = done;
    return true;
  });
  EXPECT_FALSE(outcome.ok);
  EXPECT_THAT(outcome.sentence, HasSubstr("This is no log"));
  EXPECT_EQ(file.Content().dropped_count, 1U);
}

TEST(LogFile, CanBeCancelled) {
  const Folder folder;
  const std::string path = folder.Write("sparse.log", "");
  std::filesystem::resize_file(path, std::uintmax_t{2} << 30);
  LogFile file(path);
  int calls = 0;
  const auto outcome = file.Open([&](std::uint64_t, std::uint64_t) { return ++calls < 3; });
  EXPECT_FALSE(outcome.ok);
  EXPECT_TRUE(outcome.cancelled);
  EXPECT_EQ(calls, 3);
}

TEST(LogFile, FollowsAGrowingFile) {
  const Folder folder;
  LogFile file(folder.Write("drive.log", kBlock));
  ASSERT_TRUE(file.Open().ok);
  EXPECT_FALSE(file.Update().changed);
  const std::string more = BlockAt("21-11-2026 01:56:10", {"01:56:05", "01:56:10"});
  // As the system may hand it over: in the middle of a line.
  for (std::size_t place = 0; place < more.size(); place += 37) {
    folder.Append("drive.log", more.substr(place, 37));
    const auto change = file.Update();
    EXPECT_TRUE(change.changed);
    EXPECT_FALSE(change.reread);
    EXPECT_LE(change.first_changed, 5U);
  }
  ASSERT_EQ(file.Content().records.size(), 5U);
  EXPECT_EQ(file.Content().blocks.size(), 2U);
  EXPECT_EQ(file.Content().dropped_count, 0U);
  EXPECT_EQ(DateTimeText(file.Content().records[4].time_s), "2026-11-21 01:56:10");
  EXPECT_FALSE(file.Update().changed);
}

TEST(LogFile, ATornLineIsTakenBackWhenItIsCompleted) {
  const Folder folder;
  const std::string line = LineAt("01:55:40");
  LogFile file(folder.Write("drive.log", kBlock + line.substr(0, 50)));
  ASSERT_TRUE(file.Open().ok);
  EXPECT_EQ(file.Content().records.size(), 3U);
  EXPECT_EQ(file.Content().dropped_count, 1U);
  folder.Append("drive.log", line.substr(50));
  EXPECT_TRUE(file.Update().changed);
  EXPECT_EQ(file.Content().records.size(), 4U);
  EXPECT_EQ(file.Content().dropped_count, 0U);
  folder.Append("drive.log", "\r\n" + LineAt("01:55:41") + "\r\n");
  EXPECT_TRUE(file.Update().changed);
  EXPECT_EQ(file.Content().records.size(), 5U);
  EXPECT_EQ(file.Content().blocks.at(0).record_count, 5U);
}

TEST(LogFile, ReadsAFileThatBecameShorterAgain) {
  const Folder folder;
  LogFile file(folder.Write("drive.log", kBlock + kBlock));
  ASSERT_TRUE(file.Open().ok);
  folder.Write("drive.log", kBlock);
  const auto change = file.Update();
  EXPECT_TRUE(change.reread);
  EXPECT_EQ(change.first_changed, 0U);
  EXPECT_THAT(change.sentence, HasSubstr("became shorter"));
  EXPECT_EQ(file.Content().records.size(), 3U);
  folder.Write("drive.log", "");
  EXPECT_TRUE(file.Update().reread);
  EXPECT_TRUE(file.Content().records.empty());
  folder.Append("drive.log", kBlock);
  EXPECT_TRUE(file.Update().changed);
  EXPECT_EQ(file.Content().records.size(), 3U);
}

TEST(LogFile, NoticesAnotherFileInItsPlace) {
  const Folder folder;
  LogFile file(folder.Write("drive.log", kBlock));
  ASSERT_TRUE(file.Open().ok);
  folder.Write("drive.log", BlockAt("22-11-2026 02:55:34", {"02:55:30", "02:55:31", "02:55:32", "02:55:34"}));
  const auto change = file.Update();
  EXPECT_TRUE(change.reread);
  EXPECT_THAT(change.sentence, HasSubstr("Another file"));
  EXPECT_EQ(DateTimeText(file.Content().records.at(0).time_s), "2026-11-22 02:55:30");
}

TEST(LogFile, KeepsWhatItReadWhenTheFileGoes) {
  const Folder folder;
  LogFile file(folder.Write("drive.log", kBlock));
  ASSERT_TRUE(file.Open().ok);
  folder.Remove("drive.log");
  EXPECT_THAT(file.Update().sentence, HasSubstr("not there any more"));
  EXPECT_EQ(file.Update().sentence, "");
  EXPECT_EQ(file.Content().records.size(), 3U);
  EXPECT_EQ(file.LineOf(file.Content().records[0]), "");
  folder.Write("drive.log", kBlock + kBlock);
  EXPECT_TRUE(file.Update().changed);
  EXPECT_EQ(file.Content().records.size(), 6U);
}

TEST(LogFile, WaitsForALogThatIsNotThereYet) {
  const Folder folder;
  LogFile file(folder.Path("drive.log"));
  EXPECT_FALSE(file.Open().ok);
  EXPECT_FALSE(file.Update().changed);
  folder.Write("drive.log", kBlock);
  EXPECT_TRUE(file.Update().changed);
  EXPECT_EQ(file.Content().records.size(), 3U);
}

TEST(LogFile, ReadsTheJournalOfADriveThatGoesOn) {
  const Folder folder;
  LogFile file(folder.Write("drive.log", kBlock));
  ASSERT_TRUE(file.Open().ok);
  const std::string journal = BlockAt("21-11-2026 23:59:00", {"23:59:10"});
  folder.Write("drive.log.pending", journal);
  auto change = file.Update();
  EXPECT_TRUE(change.changed);
  EXPECT_EQ(change.first_changed, 0U);
  ASSERT_EQ(file.Content().records.size(), 4U);
  EXPECT_EQ(file.Content().pending_first, 3U);
  EXPECT_TRUE(file.Content().BlockOf(file.Content().records[3]).pending);
  EXPECT_EQ(file.LineOf(file.Content().records[3]).substr(0, 8), "23:59:10");

  folder.Append("drive.log.pending", LineAt("00:00:05") + "\r\n" + LineAt("00:00:06").substr(0, 40));
  EXPECT_TRUE(file.Update().changed);
  ASSERT_EQ(file.Content().records.size(), 5U);
  EXPECT_EQ(DateTimeText(file.Content().records[4].time_s), "2026-11-22 00:00:05");
  ASSERT_EQ(file.Content().dropped.size(), 1U);
  EXPECT_TRUE(file.Content().dropped[0].pending);

  // The block is in the log and the journal is still there.
  folder.Append("drive.log", BlockAt("22-11-2026 00:00:05", {"23:59:10", "00:00:05"}));
  folder.Write("drive.log.pending", journal + LineAt("00:00:05") + "\r\n");
  EXPECT_TRUE(file.Update().changed);
  EXPECT_EQ(file.Content().records.size(), 5U);
  EXPECT_EQ(file.Content().pending_first, 5U);

  folder.Remove("drive.log.pending");
  change = file.Update();
  EXPECT_EQ(file.Content().records.size(), 5U);
  EXPECT_EQ(file.Content().dropped_count, 0U);
  EXPECT_EQ(DateTimeText(file.Content().records[3].time_s), "2026-11-21 23:59:10");
}

TEST(LogFile, AJournalAloneIsADriveThatBegins) {
  const Folder folder;
  folder.Write("drive.log.pending", BlockAt("21-11-2026 23:59:00", {"23:59:10"}));
  LogFile file(folder.Path("drive.log"));
  const auto outcome = file.Open();
  EXPECT_TRUE(outcome.ok);
  EXPECT_EQ(file.Content().records.size(), 1U);
  EXPECT_EQ(file.Content().pending_first, 0U);
}

TEST(LogFile, MarksARunThatGrows) {
  const Folder folder;
  std::vector<std::string> lines = HeaderLines(kHeader);
  for (const char* time : {"01:55:10", "01:55:15"}) {
    RecordText record;
    record.time = time;
    lines.push_back(Line(record));
  }
  LogFile file(folder.Write("drive.log", Text(lines)));
  ASSERT_TRUE(file.Open().ok);
  EXPECT_EQ(CountMarks(file.Content()).old_fix, 0U);
  RecordText record;
  record.time = "01:55:25";
  folder.Append("drive.log", Line(record) + "\r\n");
  const auto change = file.Update();
  EXPECT_EQ(change.first_changed, 0U);
  EXPECT_EQ(CountMarks(file.Content()).old_fix, 2U);
}

TEST(LogFile, OneRecordAndNoFixAtAllAreLogs) {
  const Folder folder;
  LogFile one(folder.Write("one.log", BlockAt("21-11-2026 01:55:34", {"01:55:31"})));
  EXPECT_TRUE(one.Open().ok);
  EXPECT_EQ(one.Content().records.size(), 1U);

  std::vector<std::string> lines = HeaderLines(kHeader);
  RecordText record;
  record.fix = "No GPS";
  record.latitude = record.longitude = "?";
  for (int count = 0; count < 50; ++count) lines.push_back(Line(record));
  LogFile none(folder.Write("none.log", Text(lines)));
  EXPECT_TRUE(none.Open().ok);
  EXPECT_EQ(CountMarks(none.Content()).no_fix, 50U);
  EXPECT_EQ(CountMarks(none.Content()).shown, 0U);
}

}  // namespace
}  // namespace orvandi
