#include "faults.h"

#include <gtest/gtest.h>

#include <array>

#include "control.h"

namespace kestrum::drivesim {
namespace {

TEST(ParseFaults, RowsSeparatedByCommas) {
  const Result<std::vector<FaultRow>> script = ParseFaults("10:silence:5,20:garbage:3.5,40:nofix");
  ASSERT_TRUE(script);
  ASSERT_EQ(script.value().size(), 3U);
  EXPECT_EQ(script.value()[0].kind, FaultKind::kSilence);
  EXPECT_DOUBLE_EQ(script.value()[0].at_s, 10);
  EXPECT_DOUBLE_EQ(script.value()[0].duration_s, 5);
  EXPECT_EQ(script.value()[1].kind, FaultKind::kGarbage);
  EXPECT_DOUBLE_EQ(script.value()[1].duration_s, 3.5);
  EXPECT_EQ(script.value()[2].kind, FaultKind::kNoFix);
  EXPECT_EQ(script.value()[2].duration_s, kNoEnd);
}

TEST(ParseFaults, LinesCommentsAndBlanks) {
  const Result<std::vector<FaultRow>> script =
      ParseFaults("# a bad day\r\n 1 : late : 2 , \n\n 3:vanish:4 # unplugged\n,,");
  ASSERT_TRUE(script);
  ASSERT_EQ(script.value().size(), 2U);
  EXPECT_EQ(script.value()[0].kind, FaultKind::kLate);
  EXPECT_EQ(script.value()[1].kind, FaultKind::kVanish);
}

TEST(ParseFaults, EmptyIsNoFault) {
  EXPECT_TRUE(ParseFaults("").value().empty());
}

TEST(ParseFaults, EveryKindHasAName) {
  constexpr std::array kKinds = {"silence", "garbage", "short", "long",        "late",
                                 "wrong",   "vanish",  "nofix", "gps-silence", "gps-vanish"};
  for (const char* name : kKinds) {
    const auto kind = FaultOf(name);
    ASSERT_TRUE(kind.has_value()) << name;
    EXPECT_EQ(FaultName(*kind), name);
  }
}

TEST(ParseFaults, MalformedRowsAreRejectedWhole) {
  constexpr std::array kBad = {
      "silence",        "10",           "10:",          "10:noise:5",  "x:silence:5",
      "10:silence:",    "10:silence:x", "-1:silence:5", ":silence:5",  "10:silence:5:6",
      "10:silence:-5",  "1e3:silence",  "10:SILENCE:5", "inf:silence", "10:silence:nan",
      "5:short:1,oops", "10 silence 5", "/no/such/file"};
  for (const char* text : kBad) {
    EXPECT_FALSE(ParseFaults(text)) << text;
  }
  EXPECT_NE(ParseFaults("5:short:1,oops").fault().reason.find("\"oops\""), std::string::npos);
}

TEST(FaultBoard, IsOnFromItsStartUpToItsEnd) {
  const FaultBoard board(ParseFaults("10:silence:5").value());
  EXPECT_FALSE(board.Active(FaultKind::kSilence, 9.999));
  EXPECT_TRUE(board.Active(FaultKind::kSilence, 10));
  EXPECT_TRUE(board.Active(FaultKind::kSilence, 14.999));
  EXPECT_FALSE(board.Active(FaultKind::kSilence, 15));
  EXPECT_FALSE(board.Active(FaultKind::kGarbage, 12));
}

TEST(FaultBoard, NextChange) {
  FaultBoard board(ParseFaults("10:silence:5,12:nofix").value());
  EXPECT_DOUBLE_EQ(board.NextChange(0), 10);
  EXPECT_DOUBLE_EQ(board.NextChange(10), 12);
  EXPECT_DOUBLE_EQ(board.NextChange(12), 15);
  EXPECT_EQ(board.NextChange(15), kNoEnd);
  EXPECT_EQ(FaultBoard().NextChange(0), kNoEnd);
}

TEST(FaultBoard, ClearEndsWhatIsOnAndKeepsWhatIsToCome) {
  FaultBoard board(ParseFaults("0:silence,0:nofix:50,20:garbage:5").value());
  board.Clear(5, FaultKind::kNoFix);
  EXPECT_TRUE(board.Active(FaultKind::kSilence, 5));
  EXPECT_FALSE(board.Active(FaultKind::kNoFix, 5));
  board.Clear(6);
  EXPECT_FALSE(board.Active(FaultKind::kSilence, 6));
  EXPECT_TRUE(board.Active(FaultKind::kGarbage, 21));
}

TEST(FaultBoard, StartedLive) {
  FaultBoard board;
  board.Start({0.1, FaultKind::kLate, 0.2});
  EXPECT_TRUE(board.Active(FaultKind::kLate, 0.1));
  board.Clear(0.1);
  EXPECT_FALSE(board.Active(FaultKind::kLate, 0.1));
}

TEST(Control, Faults) {
  const auto timed = ParseControl("silence 5");
  ASSERT_TRUE(timed.has_value());
  EXPECT_EQ(timed->kind, ControlCommand::Kind::kFault);
  EXPECT_EQ(timed->fault, FaultKind::kSilence);
  EXPECT_DOUBLE_EQ(timed->duration_s, 5);
  const auto open = ParseControl("  gps-silence \r");
  ASSERT_TRUE(open.has_value());
  EXPECT_EQ(open->fault, FaultKind::kGpsSilence);
  EXPECT_EQ(open->duration_s, kNoEnd);
}

TEST(Control, ClearMeterAutoQuit) {
  const auto all = ParseControl("clear");
  ASSERT_TRUE(all.has_value());
  EXPECT_EQ(all->kind, ControlCommand::Kind::kClear);
  EXPECT_FALSE(all->fault.has_value());
  const auto one = ParseControl("clear vanish");
  ASSERT_TRUE(one.has_value());
  EXPECT_EQ(one->fault, FaultKind::kVanish);
  const auto meter = ParseControl("smeter 200");
  ASSERT_TRUE(meter.has_value());
  EXPECT_EQ(meter->kind, ControlCommand::Kind::kMeter);
  EXPECT_EQ(meter->meter, 200);
  const auto follow = ParseControl("auto");
  ASSERT_TRUE(follow.has_value());
  EXPECT_EQ(follow->kind, ControlCommand::Kind::kAuto);
  const auto quit = ParseControl("quit");
  ASSERT_TRUE(quit.has_value());
  EXPECT_EQ(quit->kind, ControlCommand::Kind::kQuit);
}

TEST(Control, RejectsTheRest) {
  constexpr std::array kBad = {"",           " ",          "noise",        "silence x", "silence 5 6",
                               "silence -1", "clear x",    "clear late 1", "smeter",    "smeter x",
                               "smeter -1",  "smeter 1 2", "auto now",     "quit now",  "Silence"};
  for (const char* text : kBad) EXPECT_FALSE(ParseControl(text).has_value()) << text;
}

TEST(LineSplitter, JoinsPiecesAndKeepsTheRest) {
  LineSplitter lines;
  EXPECT_TRUE(lines.Add("sil").empty());
  EXPECT_EQ(lines.Add("ence 5\nauto\ncl"), (std::vector<std::string>{"silence 5", "auto"}));
  EXPECT_EQ(lines.Add("ear\n"), (std::vector<std::string>{"clear"}));
}

TEST(LineSplitter, CutsALineWithoutEnd) {
  LineSplitter lines;
  const auto cut = lines.Add(std::string(5000, 'x'));
  ASSERT_EQ(cut.size(), 1U);
  EXPECT_EQ(cut[0].size(), 4096U);
}

}  // namespace
}  // namespace kestrum::drivesim
