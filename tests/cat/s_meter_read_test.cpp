#include <gtest/gtest.h>

#include "cat/rig_bench.h"

namespace kestrum::test {
namespace {

constexpr int kOldReading = 77;

struct ReadRow {
  int rig_model;
  std::string received;
  int reading;
  const char* comment;
};

// The set is on and the port open.
void ExpectReading(const ReadRow& row) {
  RigBench bench(row.rig_model);
  bench.Connect();
  bench.PowerButtonSays("&On");
  bench.state.RssiRaw = kOldReading;
  bench.outside.serial.replies = {row.received};
  int shown = -1;
  bench.rig.on_reading = [&] { shown = bench.state.RssiRaw; };
  bench.rig.ReadRssi();
  SCOPED_TRACE("rig " + std::to_string(row.rig_model) + ": " + bench.Echo());
  EXPECT_EQ(bench.state.RssiRaw, row.reading);
  EXPECT_EQ(bench.Comment(), row.comment);
  EXPECT_EQ(shown, row.reading);
  const int opcode = row.rig_model == kFT840 ? 247 : 231;
  EXPECT_EQ(bench.Written(), (Texts{Bytes({0, 0, 0, 0, opcode})}));
  EXPECT_EQ(bench.outside.clock.sleeps_ms, (Numbers{50}));
}

TEST(ReadRssi, TakesTheLowFourBitsOfTheReceiveStatus) {
  for (const int rig_model : {kFT817, kFT857, kFT897}) {
    const ReadRow rows[] = {
        {rig_model, Bytes({0x8F}), 240, "Done"},
        {rig_model, Bytes({0x05}), 80, "Done"},
        {rig_model, Bytes({0xF0}), 0, "Done"},
        {rig_model, "", 0, "Done"},
        {rig_model, Bytes({1, 2, 3, 4}), 16, "Done"},
        {rig_model, Bytes({9, 255, 255, 255, 0, 99}), 144, "Done"},
        {rig_model, Bytes({9, 0, 0, 0, 1}), 0, "Wrong CatCmd rx-ed!"},
        {rig_model, Bytes({9, 0, 0, 0, 231}), 0, "Wrong CatCmd rx-ed!"},
        {rig_model, Bytes({9, 0, 0, 0, 231, 0, 0}), 0, "Wrong CatCmd rx-ed!"},
    };
    for (const auto& row : rows) ExpectReading(row);
    for (int bits = 0; bits < 16; ++bits) ExpectReading({rig_model, Bytes({0x40 | bits}), 16 * bits, "Done"});
  }
}

TEST(ReadRssi, TakesTheFullByteOfTheFT840sMeter) {
  const ReadRow rows[] = {
      {kFT840, Bytes({200, 0, 0, 0, 247}), 200, "Done"},
      {kFT840, Bytes({255, 1, 2, 3, 247, 9}), 255, "Done"},
      {kFT840, Bytes({0, 0, 0, 0, 247}), 0, "Done"},
      {kFT840, Bytes({0, 0, 0, 0, 0}), 0, "Nothing rx-ed!"},
      {kFT840, "", 0, "Nothing rx-ed!"},
      {kFT840, Bytes({200, 200, 200, 200}), 0, "Nothing rx-ed!"},
      {kFT840, Bytes({200, 0, 0, 0, 1}), 0, "Wrong CatCmd rx-ed!"},
      {kFT840, Bytes({200, 0, 0, 0, 231}), 0, "Wrong CatCmd rx-ed!"},
  };
  for (const auto& row : rows) ExpectReading(row);
}

TEST(ReadRssi, TakesFiveBitsOfTheFT847sStatusUpTo255) {
  const ReadRow rows[] = {
      {kFT847, Bytes({0, 0, 0, 0, 231}), 0, "Done"},    {kFT847, Bytes({1, 0, 0, 0, 231}), 32, "Done"},
      {kFT847, Bytes({7, 0, 0, 0, 231}), 224, "Done"},  {kFT847, Bytes({8, 0, 0, 0, 231}), 255, "Done"},
      {kFT847, Bytes({16, 0, 0, 0, 231}), 255, "Done"}, {kFT847, Bytes({0xE0, 0, 0, 0, 231}), 0, "Done"},
      {kFT847, Bytes({31, 0, 0, 0, 231}), 255, "Done"}, {kFT847, Bytes({0xE2, 0, 0, 0, 231}), 64, "Done"},
  };
  for (const auto& row : rows) ExpectReading(row);
}

TEST(ReadRssi, TellsAWrongReplyOfTheFT847WithTheWordsOfAClosedPort) {
  const ReadRow rows[] = {
      {kFT847, "", 0, "Comport not open !"},
      {kFT847, Bytes({5}), 0, "Comport not open !"},
      {kFT847, Bytes({5, 0, 0, 0, 0}), 0, "Comport not open !"},
      {kFT847, Bytes({5, 0, 0, 0, 247}), 0, "Comport not open !"},
  };
  for (const auto& row : rows) ExpectReading(row);
}

TEST(ReadRssi, AsksNothingWhileThePowerButtonSaysOff) {
  for (const int rig_model : {kFT817, kFT857, kFT897}) {
    for (const char* caption : {"&Off", "&OFF", "&off"}) {
      RigBench bench(rig_model);
      bench.Connect();
      bench.PowerButtonSays(caption);
      bench.state.RssiRaw = kOldReading;
      int shown = 0;
      bench.rig.on_reading = [&] { ++shown; };
      bench.rig.ReadRssi();
      EXPECT_TRUE(bench.Written().empty()) << rig_model;
      EXPECT_TRUE(bench.outside.clock.sleeps_ms.empty());
      EXPECT_EQ(bench.state.RssiRaw, kOldReading);
      EXPECT_EQ(bench.Echo(), "Cmd=");
      EXPECT_EQ(bench.Comment(), "Comment");
      EXPECT_EQ(shown, 1);
    }
  }
}

TEST(ReadRssi, OfTheOtherRigsDoesNotLookAtThePowerButton) {
  for (const int rig_model : {kFT840, kFT847}) {
    RigBench bench(rig_model);
    bench.Connect();
    bench.PowerButtonSays("&Off");
    bench.rig.ReadRssi();
    EXPECT_EQ(bench.Written().size(), 1U) << rig_model;
  }
}

TEST(ReadRssi, WithTheClosedPortIsAZeroReading) {
  for (const int rig_model : {kFT817, kFT840, kFT857, kFT897}) {
    RigBench bench(rig_model);
    bench.PowerButtonSays("&On");
    bench.state.RssiRaw = kOldReading;
    int shown = -1;
    bench.rig.on_reading = [&] { shown = bench.state.RssiRaw; };
    bench.rig.ReadRssi();
    EXPECT_EQ(bench.state.RssiRaw, 0) << rig_model;
    EXPECT_EQ(bench.Comment(), "Comport not open !");
    EXPECT_EQ(bench.Echo(), "Cmd=");
    EXPECT_EQ(shown, 0);
    EXPECT_TRUE(bench.outside.clock.sleeps_ms.empty());
  }
}

TEST(ReadRssi, OfTheFT847WithTheClosedPortSaysNothingAndKeepsTheReading) {
  RigBench bench(kFT847);
  bench.state.RssiRaw = kOldReading;
  int shown = 0;
  bench.rig.on_reading = [&] { ++shown; };
  bench.rig.ReadRssi();
  EXPECT_EQ(bench.state.RssiRaw, kOldReading);
  EXPECT_EQ(bench.Comment(), "Comment");
  EXPECT_EQ(bench.Echo(), "Cmd=");
  EXPECT_EQ(shown, 1);
}

TEST(ReadRssi, WorksWithoutAListener) {
  RigBench bench(kFT840);
  bench.Connect();
  bench.outside.serial.replies = {Bytes({12, 0, 0, 0, 247})};
  bench.rig.ReadRssi();
  EXPECT_EQ(bench.state.RssiRaw, 12);
}

TEST(ReadRssi, AsksNothingOfAnUnknownRig) {
  for (const int rig_model : {-1, 0, 6, 1000}) {
    RigBench bench(rig_model);
    bench.Connect();
    bench.PowerButtonSays("&On");
    bench.state.RssiRaw = kOldReading;
    bench.rig.ReadRssi();
    EXPECT_TRUE(bench.Written().empty()) << rig_model;
    EXPECT_EQ(bench.state.RssiRaw, kOldReading);
  }
}

TEST(ReadRssi, SurvivesALineThatVanishesBeforeTheReply) {
  RigBench bench(kFT840);
  bench.Connect();
  bench.rig.ReadRssi();
  bench.outside.serial.Vanish();
  bench.state.RssiRaw = kOldReading;
  bench.outside.serial.trouble = Fault{"/dev/scripted1", "The adapter was pulled out."};
  bench.rig.ReadRssi();
  EXPECT_EQ(bench.state.RssiRaw, 0);
  EXPECT_EQ(bench.Comment(), "Comport not open !");
  EXPECT_EQ(bench.form.StatusBar1[2].tool_tip, "The adapter was pulled out.");
}

}  // namespace
}  // namespace kestrum::test
