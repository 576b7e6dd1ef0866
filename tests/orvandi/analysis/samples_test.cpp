#include "analysis/samples.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "analysis/layers.h"
#include "support/log_text.h"

namespace orvandi {
namespace {

using testing::ElementsAre;

std::string Header(const std::string& date, const std::string& rig, const std::string& antenna) {
  return date + " 01:55:34, 5157.00N, 00532.00E, 25 m,  " + rig + ", " + antenna;
}

Log TwoAntennas() {
  return Read(
      Text(BlockLines(Header("21-11-2026", "FT840 LSB  3630 kHz", "Loop"), {"01:55:31", "01:55:32"})) +
      Text(BlockLines(Header("22-11-2026", "FT817  145500.5 kHz", "Yagi, 3 el"), {"01:55:33"})) +
      Text(BlockLines(Header("22-11-2026", "FT840 LSB  3630 kHz", "Loop"), {"01:55:34"})));
}

std::vector<std::string> Names(const Layers& layers) {
  std::vector<std::string> names;
  for (const Layer& layer : layers.layers) names.push_back(layer.name);
  return names;
}

TEST(Layers, GroupBlocks) {
  const Log log = TwoAntennas();
  const std::vector<NamedLog> logs = {{&log, "drive.log"}, {&log, "drive.log"}};
  EXPECT_THAT(Names(MakeLayers(logs, GroupBy::kFile)), ElementsAre("drive.log", "drive.log"));
  EXPECT_THAT(Names(MakeLayers(logs, GroupBy::kAntenna)), ElementsAre("Loop", "Yagi, 3 el"));
  EXPECT_THAT(Names(MakeLayers(logs, GroupBy::kRig)), ElementsAre("FT840 LSB", "FT817"));
  EXPECT_THAT(Names(MakeLayers(logs, GroupBy::kFrequency)), ElementsAre("3630 kHz", "145500.5 kHz"));
  EXPECT_THAT(Names(MakeLayers(logs, GroupBy::kDate)), ElementsAre("2026-11-21", "2026-11-22"));
  const Layers by_antenna = MakeLayers(logs, GroupBy::kAntenna);
  EXPECT_THAT(by_antenna.of_block[0], ElementsAre(0, 1, 0));
  EXPECT_EQ(by_antenna.layers[0].record_count, 6U);
}

TEST(Layers, SayWhatIsNotTold) {
  const Log log = Read(Line({}) + "\n");
  const std::vector<NamedLog> logs = {{&log, "x"}};
  EXPECT_THAT(Names(MakeLayers(logs, GroupBy::kAntenna)), ElementsAre("not told"));
  EXPECT_THAT(Names(MakeLayers(logs, GroupBy::kDate)), ElementsAre("not told"));
}

TEST(Samples, TakeTheShownRecordsOfALayer) {
  Log log = TwoAntennas();
  log.records[1].marks = kOldFix;
  log.records[2].millivolt_per_m = 0;
  const std::vector<NamedLog> logs = {{&log, "drive.log"}};
  const Layers layers = MakeLayers(logs, GroupBy::kAntenna);
  SampleChoice choice;
  EXPECT_EQ(CollectSamples(logs, choice).size(), 2U);
  choice.shown_marks = kOldFix;
  EXPECT_EQ(CollectSamples(logs, choice).size(), 3U);
  choice.layers = &layers;
  choice.layer = 1;
  EXPECT_EQ(CollectSamples(logs, choice).size(), 0U);
  choice.unit = Unit::kDbm;
  EXPECT_EQ(CollectSamples(logs, choice).size(), 1U);
  choice.layer = 0;
  choice.hidden = [](std::uint32_t, std::uint32_t record) { return record == 0; };
  const auto samples = CollectSamples(logs, choice);
  ASSERT_EQ(samples.size(), 2U);
  EXPECT_EQ(samples[1].record, 3U);
  EXPECT_NEAR(samples[0].level_db, DbmOfMicrovolt(44.2), 1e-5);
}

TEST(Samples, ValuesInEveryUnit) {
  const Log log = TwoAntennas();
  const Record& record = log.records[0];
  EXPECT_NEAR(ValueOf(log, record, Unit::kDbMicrovoltPerM), 85.249, 1e-3);
  EXPECT_NEAR(ValueOf(log, record, Unit::kMillivoltPerM), 18.3, 1e-6);
  EXPECT_NEAR(ValueOf(log, record, Unit::kMicrovolt), 44.2, 1e-5);
  EXPECT_NEAR(ValueOf(log, record, Unit::kDbm), -74.081, 1e-3);
  EXPECT_DOUBLE_EQ(ValueOf(log, record, Unit::kSPoint), 8.5);
  EXPECT_NEAR(LevelOf(log, record, Unit::kMillivoltPerM), 85.249, 1e-3);
  EXPECT_NEAR(LevelOf(log, record, Unit::kMicrovolt), -74.081, 1e-3);
  EXPECT_DOUBLE_EQ(LevelOf(log, record, Unit::kSPoint), 51);
}

}  // namespace
}  // namespace orvandi
