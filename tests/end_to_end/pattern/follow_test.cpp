// A log that is read while Kestrum writes it.
#include <gtest/gtest.h>

#include <csignal>

#include "car.h"
#include "log/log_file.h"

namespace kestrum::end_to_end {
namespace {

TEST(FollowedDrive, IsReadFromTheJournalAndThenFromTheBlocks) {
  Car car(KESTRUM_PROGRAMS);
  car.Drive("FT840", 4);
  const auto kestrum = car.StartKestrum({"--start-logging"});
  ASSERT_TRUE(car.WaitForCommands(kReadMeter, 5));

  // The first block is not written yet: there is no log, and everything comes from the journal.
  orvandi::LogFile log(car.File("RSSI-GPS.log"));
  ASSERT_TRUE(process::Eventually([&] { return log.Open().ok; }));
  EXPECT_EQ(log.Content().pending_first, 0U);
  std::size_t seen = log.Content().records.size();
  bool reread = false;
  const auto follow = [&] {
    reread = log.Update().reread || reread;
    EXPECT_GE(log.Content().records.size(), seen);
    seen = log.Content().records.size();
    return seen;
  };
  ASSERT_TRUE(process::Eventually([&] { return follow() >= 110; }, std::chrono::seconds(60)));
  // A block has been written under the reader, and what came since stands in the next journal.
  EXPECT_GE(log.Content().pending_first, 100U);
  EXPECT_TRUE(log.Content().BlockOf(log.Content().records.back()).pending);

  kestrum->Signal(SIGTERM);
  EXPECT_EQ(kestrum->Wait(), 0);
  follow();
  EXPECT_FALSE(reread);
  EXPECT_EQ(log.Content().pending_first, log.Content().records.size());
  EXPECT_TRUE(log.Content().dropped.empty());
  const auto records = AllRecords(car.Log());
  ASSERT_EQ(log.Content().records.size(), records.size());
  for (std::size_t i = 0; i < records.size(); ++i) {
    EXPECT_EQ(std::to_string(log.Content().records[i].raw), records[i][kRaw]) << i;
  }
}

}  // namespace
}  // namespace kestrum::end_to_end
