#include "faults.h"

#include <gtest/gtest.h>

#include <array>

#include "control.h"

namespace kestrum::drivesim {
namespace {

TEST(ParseFaults, RowsSeparatedByCommas) {
  const FaultScript script = ParseFaults("10:silence:5,20:garbage:3.5,40:nofix");
  EXPECT_EQ(script.error, "");
  ASSERT_EQ(script.rows.size(), 3U);
  EXPECT_EQ(script.rows[0].kind, Fault::Silence);
  EXPECT_DOUBLE_EQ(script.rows[0].at_s, 10);
  EXPECT_DOUBLE_EQ(script.rows[0].duration_s, 5);
  EXPECT_EQ(script.rows[1].kind, Fault::Garbage);
  EXPECT_DOUBLE_EQ(script.rows[1].duration_s, 3.5);
  EXPECT_EQ(script.rows[2].kind, Fault::NoFix);
  EXPECT_EQ(script.rows[2].duration_s, kNoEnd);
}

TEST(ParseFaults, LinesCommentsAndBlanks) {
  const FaultScript script = ParseFaults("# a bad day\r\n 1 : late : 2 , \n\n 3:vanish:4 # unplugged\n,,");
  EXPECT_EQ(script.error, "");
  ASSERT_EQ(script.rows.size(), 2U);
  EXPECT_EQ(script.rows[0].kind, Fault::Late);
  EXPECT_EQ(script.rows[1].kind, Fault::Vanish);
}

TEST(ParseFaults, EmptyIsNoFault) {
  EXPECT_TRUE(ParseFaults("").rows.empty());
  EXPECT_EQ(ParseFaults("").error, "");
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
    const FaultScript script = ParseFaults(text);
    EXPECT_NE(script.error, "") << text;
    EXPECT_TRUE(script.rows.empty()) << text;
  }
  EXPECT_NE(ParseFaults("5:short:1,oops").error.find("\"oops\""), std::string::npos);
}

TEST(FaultBoard, IsOnFromItsStartUpToItsEnd) {
  const FaultBoard board(ParseFaults("10:silence:5").rows);
  EXPECT_FALSE(board.Active(Fault::Silence, 9.999));
  EXPECT_TRUE(board.Active(Fault::Silence, 10));
  EXPECT_TRUE(board.Active(Fault::Silence, 14.999));
  EXPECT_FALSE(board.Active(Fault::Silence, 15));
  EXPECT_FALSE(board.Active(Fault::Garbage, 12));
}

TEST(FaultBoard, NextChange) {
  FaultBoard board(ParseFaults("10:silence:5,12:nofix").rows);
  EXPECT_DOUBLE_EQ(board.NextChange(0), 10);
  EXPECT_DOUBLE_EQ(board.NextChange(10), 12);
  EXPECT_DOUBLE_EQ(board.NextChange(12), 15);
  EXPECT_EQ(board.NextChange(15), kNoEnd);
  EXPECT_EQ(FaultBoard().NextChange(0), kNoEnd);
}

TEST(FaultBoard, ClearEndsWhatIsOnAndKeepsWhatIsToCome) {
  FaultBoard board(ParseFaults("0:silence,0:nofix:50,20:garbage:5").rows);
  board.Clear(5, Fault::NoFix);
  EXPECT_TRUE(board.Active(Fault::Silence, 5));
  EXPECT_FALSE(board.Active(Fault::NoFix, 5));
  board.Clear(6);
  EXPECT_FALSE(board.Active(Fault::Silence, 6));
  EXPECT_TRUE(board.Active(Fault::Garbage, 21));
}

TEST(FaultBoard, StartedLive) {
  FaultBoard board;
  board.Start({0.1, Fault::Late, 0.2});
  EXPECT_TRUE(board.Active(Fault::Late, 0.1));
  board.Clear(0.1);
  EXPECT_FALSE(board.Active(Fault::Late, 0.1));
}

TEST(Control, Faults) {
  const auto timed = ParseControl("silence 5");
  ASSERT_TRUE(timed.has_value());
  EXPECT_EQ(timed->kind, ControlCommand::Kind::Fault);
  EXPECT_EQ(timed->fault, Fault::Silence);
  EXPECT_DOUBLE_EQ(timed->duration_s, 5);
  const auto open = ParseControl("  gps-silence \r");
  ASSERT_TRUE(open.has_value());
  EXPECT_EQ(open->fault, Fault::GpsSilence);
  EXPECT_EQ(open->duration_s, kNoEnd);
}

TEST(Control, ClearMeterAutoQuit) {
  const auto all = ParseControl("clear");
  ASSERT_TRUE(all.has_value());
  EXPECT_EQ(all->kind, ControlCommand::Kind::Clear);
  EXPECT_FALSE(all->fault.has_value());
  const auto one = ParseControl("clear vanish");
  ASSERT_TRUE(one.has_value());
  EXPECT_EQ(one->fault, Fault::Vanish);
  const auto meter = ParseControl("smeter 200");
  ASSERT_TRUE(meter.has_value());
  EXPECT_EQ(meter->kind, ControlCommand::Kind::Meter);
  EXPECT_EQ(meter->meter, 200);
  const auto follow = ParseControl("auto");
  ASSERT_TRUE(follow.has_value());
  EXPECT_EQ(follow->kind, ControlCommand::Kind::Auto);
  const auto quit = ParseControl("quit");
  ASSERT_TRUE(quit.has_value());
  EXPECT_EQ(quit->kind, ControlCommand::Kind::Quit);
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
