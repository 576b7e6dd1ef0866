#include "rig_line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

namespace kestrum::drivesim {
namespace {

using sets::Bytes;
using sets::Model;
using testing::ElementsAre;

const Bytes kReadStatus = {0, 0, 0, 0, 0xE7};
const Bytes kReadMeter = {0, 0, 0, 0, 0xF7};

Moment At(double second) {
  return {second, second};
}

// A set on a line, with its log.
class Bench {
 public:
  explicit Bench(Model model, const char* script = "")
      : faults(ParseFaults(script).value()),
        rig(sets::MakeRig(model, {})),
        line(*rig, faults, log, [this](double) { return meter; }) {}

  Bytes Ask(const Bytes& command, double second) {
    line.Receive(command, At(second));
    return line.TakeOutput(At(second));
  }

  int meter = 7;
  FaultBoard faults;
  CommandLog log;
  std::unique_ptr<sets::Rig> rig;
  RigLine line;
};

TEST(RigLine, AnswersAtOnce) {
  Bench bench(Model::kFT817);
  EXPECT_THAT(bench.Ask(kReadStatus, 1), ElementsAre(7));
  EXPECT_EQ(bench.line.NextWallS(), kNoEnd);
}

TEST(RigLine, CommandsMayComeInPiecesOrTogether) {
  Bench bench(Model::kFT817);
  EXPECT_THAT(bench.Ask({0, 0}, 1), ElementsAre());
  EXPECT_THAT(bench.Ask({0, 0, 0xE7}, 1.1), ElementsAre(7));
  EXPECT_THAT(bench.Ask({0, 0, 0, 0, 0xE7, 0, 0, 0, 0, 0xF7, 0}, 2), ElementsAre(7, 0xFF));
  EXPECT_DOUBLE_EQ(bench.line.NextWallS(), 2.2);
}

TEST(RigLine, ForgetsAnIncompleteCommand) {
  Bench bench(Model::kFT817);
  bench.Ask({1, 2, 3}, 1);
  EXPECT_DOUBLE_EQ(bench.line.NextWallS(), 1.2);
  EXPECT_THAT(bench.Ask(kReadStatus, 1.3), ElementsAre(7));
}

TEST(RigLine, GapIsOfTheWallClock) {
  Bench bench(Model::kFT817);
  bench.line.Receive(Bytes{0, 0, 0}, {1.0, 100});
  bench.line.Receive(Bytes{0, 0xE7}, {1.1, 110});
  EXPECT_THAT(bench.line.TakeOutput({1.1, 110}), ElementsAre(7));
}

TEST(RigLine, Silence) {
  Bench bench(Model::kFT840, "10:silence:5");
  EXPECT_THAT(bench.Ask(kReadMeter, 9), ElementsAre(7, 7, 7, 7, 0xF7));
  EXPECT_THAT(bench.Ask(kReadMeter, 10), ElementsAre());
  EXPECT_THAT(bench.Ask(kReadMeter, 15), ElementsAre(7, 7, 7, 7, 0xF7));
}

TEST(RigLine, ShortLongAndWrongFiveByteReplies) {
  Bench bench(Model::kFT840, "1:short:1,2:long:1,3:wrong:1");
  EXPECT_THAT(bench.Ask(kReadMeter, 1), ElementsAre(7, 7, 7, 7));
  EXPECT_THAT(bench.Ask(kReadMeter, 2), ElementsAre(7, 7, 7, 7, 0xF7, 0x55, 0x55, 0x55, 0x55, 0x55));
  EXPECT_THAT(bench.Ask(kReadMeter, 3), ElementsAre(7, 7, 7, 7, 0xEE));
}

TEST(RigLine, ShortLongAndWrongOneByteReplies) {
  Bench bench(Model::kFT817, "1:short:1,2:long:1,3:wrong:1");
  EXPECT_THAT(bench.Ask(kReadStatus, 1), ElementsAre());
  EXPECT_THAT(bench.Ask(kReadStatus, 2), ElementsAre(7, 0x55, 0x55, 0x55, 0x55, 0x55));
  EXPECT_THAT(bench.Ask(kReadStatus, 3), ElementsAre(7, 0, 0, 0, 0xEE));
}

TEST(RigLine, GarbageIsTheSameOnEachDrive) {
  Bench a(Model::kFT840, "0:garbage");
  Bench b(Model::kFT840, "0:garbage");
  const Bytes right = {7, 7, 7, 7, 0xF7};
  for (int i = 1; i < 50; ++i) {
    const Bytes noise = a.Ask(kReadMeter, i);
    EXPECT_EQ(noise, b.Ask(kReadMeter, i));
    EXPECT_NE(noise, right);
    EXPECT_GE(noise.size(), 1U);
    EXPECT_LE(noise.size(), 12U);
  }
}

TEST(RigLine, LateRepliesComeAfterTheLoggerHasLooked) {
  Bench bench(Model::kFT817, "0:late:10");
  EXPECT_THAT(bench.Ask(kReadStatus, 1), ElementsAre());
  EXPECT_DOUBLE_EQ(bench.line.NextWallS(), 1.08);
  EXPECT_THAT(bench.line.TakeOutput(At(1.05)), ElementsAre());
  EXPECT_THAT(bench.line.TakeOutput(At(1.09)), ElementsAre(7));
}

TEST(RigLine, NothingOvertakesALateReply) {
  Bench bench(Model::kFT817, "0:late:1.01");
  bench.Ask(kReadStatus, 1);
  bench.meter = 9;
  EXPECT_THAT(bench.Ask(kReadStatus, 1.02), ElementsAre());
  EXPECT_THAT(bench.line.TakeOutput(At(1.1)), ElementsAre(7, 9));
}

TEST(RigLine, ResetForgetsEverything) {
  Bench bench(Model::kFT817, "0:late");
  bench.Ask(kReadStatus, 1);
  bench.Ask({0, 0}, 1);
  bench.line.Reset();
  EXPECT_EQ(bench.line.NextWallS(), kNoEnd);
  EXPECT_THAT(bench.line.TakeOutput(At(2)), ElementsAre());
}

TEST(RigLine, AnAcknowledgeThatNobodyTookComesBeforeTheNextReading) {
  // What the logger then sees: one reading of zero after each setting, because it never empties its input.
  Bench bench(Model::kFT817);
  bench.line.Receive(Bytes{0x01, 0x42, 0x00, 0x00, 0x01}, At(1));
  bench.line.Receive(kReadStatus, At(1.01));
  EXPECT_THAT(bench.line.TakeOutput(At(1.02)), ElementsAre(0x00, 7));
}

TEST(RigLine, LogHasOneLineForEachThing) {
  const auto path = std::filesystem::path(testing::TempDir()) / "drivesim_rig_line_log";
  Bench bench(Model::kFT840, "2:silence:1,3:short:1");
  ASSERT_TRUE(bench.log.Open(path.string()));
  bench.Ask(kReadMeter, 1.2345);
  bench.Ask({0x00, 0x00, 0x42, 0x01, 0x0A}, 1.5);
  bench.Ask(kReadMeter, 2);
  bench.Ask(kReadMeter, 3);
  bench.Ask({0x12, 0x34}, 3.5);
  bench.line.TakeOutput(At(3.75));
  std::ostringstream content;
  content << std::ifstream(path).rdbuf();
  std::filesystem::remove(path);
  EXPECT_EQ(content.str(),
            "1.234 rx 00 00 00 00 F7  read meter\n"
            "1.234 tx 07 07 07 07 F7  reply\n"
            "1.500 rx 00 00 42 01 0A  set frequency 14200.00 kHz\n"
            "2.000 rx 00 00 00 00 F7  read meter\n"
            "2.000 -- no reply (fault: silence)\n"
            "3.000 rx 00 00 00 00 F7  read meter\n"
            "3.000 tx 07 07 07 07  reply (fault: short)\n"
            "3.750 rx 12 34  incomplete, forgotten\n");
}

TEST(CommandLog, AFileThatCannotBeWritten) {
  CommandLog log;
  EXPECT_FALSE(log.Open("/no/such/folder/log"));
  log.Note(1, "nobody reads this");  // no file: nothing happens
}

}  // namespace
}  // namespace kestrum::drivesim
