#include "ui/lamps.h"

#include <gtest/gtest.h>

#include <vector>

namespace kestrum {
namespace {

using std::chrono::milliseconds;

struct LogRow {
  const char* what;
  LogFacts facts;
  LampState state;
  const char* words;
  const char* detail;
  double fill;
};

LogFacts Logging(int in_buffer) {
  LogFacts facts;
  facts.logging = true;
  facts.in_buffer = in_buffer;
  return facts;
}

TEST(Lamps, LogSaysWhereTheRecordsAre) {
  LogFacts off;
  off.in_buffer = 7;
  LogFacts written = Logging(38);
  written.written = 1200;
  written.last_written = DateTime{2026, 5, 17, 13, 4, 12};
  LogFacts lost = written;
  lost.lost = 100;
  lost.lost_at = DateTime{2026, 5, 17, 13, 4, 59};
  lost.folder_fault = Fault{"/log", "No space left on device"};
  LogFacts lost_and_off = lost;
  lost_and_off.logging = false;
  LogFacts one_lost = lost;
  one_lost.lost = 1;
  LogFacts folder = written;
  folder.folder_fault = Fault{"/log", "No such file or directory"};
  LogFacts journal = written;
  journal.journal_fault = Fault{"/log", "No space left on device"};
  const std::vector<LogRow> rows = {
      {"off", off, LampState::kOff, "Not logging", "7 of 100 in memory", 0.07},
      {"begun", Logging(1), LampState::kGood, "Logging", "1 of 100, none written yet", 0.01},
      {"going", written, LampState::kGood, "Logging", "38 of 100, last written 13:04:12", 0.38},
      {"lost", lost, LampState::kTrouble, "NOT SAVED", "100 records lost 13:04", 0.38},
      {"lost, then off", lost_and_off, LampState::kTrouble, "NOT SAVED", "100 records lost 13:04", 0.38},
      {"one lost", one_lost, LampState::kTrouble, "NOT SAVED", "1 record lost 13:04", 0.38},
      {"folder", folder, LampState::kNote, "Check disk", "No such file or directory", 0.38},
      {"journal", journal, LampState::kNote, "Check disk", "No space left on device", 0.38},
  };
  for (const LogRow& row : rows) {
    const LampText says = LogLamp(row.facts);
    EXPECT_EQ(says.state, row.state) << row.what;
    EXPECT_EQ(says.words, row.words) << row.what;
    EXPECT_EQ(says.detail, row.detail) << row.what;
    EXPECT_DOUBLE_EQ(says.fill, row.fill) << row.what;
    EXPECT_FALSE(says.advice.empty()) << row.what;
  }
}

struct GpsRow {
  const char* what;
  GpsFacts facts;
  LampState state;
  const char* words;
  const char* detail;
  bool is_true;
  const char* badge;
};

TEST(Lamps, GpsSaysHowOldThePositionIs) {
  const std::vector<GpsRow> rows = {
      {"a fix",
       {true, milliseconds(400), true, milliseconds(1400)},
       LampState::kGood,
       "GPS fix",
       "1 s old",
       true,
       "1 s old"},
      {"no fix",
       {true, milliseconds(400), false, milliseconds(14900)},
       LampState::kNote,
       "NO GPS FIX",
       "no fix, 14 s old",
       false,
       "14 s old"},
      {"never a fix",
       {true, milliseconds(0), false, {}},
       LampState::kNote,
       "NO GPS FIX",
       "no fix yet",
       false,
       "no fix"},
      {"gone",
       {false, {}, true, milliseconds(3000)},
       LampState::kTrouble,
       "READER GONE",
       "press to start it, position 3 s old",
       false,
       "3 s old"},
      {"gone from the start",
       {false, {}, false, {}},
       LampState::kTrouble,
       "READER GONE",
       "press to start it, no fix yet",
       false,
       "no fix"},
      {"a beat away from frozen",
       {true, milliseconds(4999), true, milliseconds(4999)},
       LampState::kGood,
       "GPS fix",
       "4 s old",
       true,
       "4 s old"},
      {"frozen",
       {true, milliseconds(5000), true, milliseconds(5000)},
       LampState::kTrouble,
       "READER FROZEN",
       "not heard for 5 s",
       false,
       "5 s old"},
      {"a reader without a sign of life",
       {true, {}, true, milliseconds(0)},
       LampState::kGood,
       "GPS fix",
       "0 s old",
       true,
       "0 s old"},
      {"minutes",
       {true, milliseconds(0), false, milliseconds(120000)},
       LampState::kNote,
       "NO GPS FIX",
       "no fix, 2 min old",
       false,
       "2 min old"},
      {"hours",
       {true, milliseconds(0), false, milliseconds(7200000)},
       LampState::kNote,
       "NO GPS FIX",
       "no fix, 2 h old",
       false,
       "2 h old"},
  };
  for (const GpsRow& row : rows) {
    const LampText says = GpsLamp(row.facts);
    EXPECT_EQ(says.state, row.state) << row.what;
    EXPECT_EQ(says.words, row.words) << row.what;
    EXPECT_EQ(says.detail, row.detail) << row.what;
    EXPECT_EQ(PositionIsTrue(row.facts), row.is_true) << row.what;
    EXPECT_EQ(AgeBadge(row.facts), row.badge) << row.what;
  }
}

struct RigRow {
  const char* what;
  RigFacts facts;
  LampState state;
  const char* words;
  const char* detail;
  bool is_true;
};

TEST(Lamps, RigSaysWhetherItAnswers) {
  const RigFacts good{true, true, false, {}, false, 0, milliseconds(0), "Done", "FT840", "Com1=9k6"};
  RigFacts one_missed = good;
  one_missed.missed_readings = 1;
  RigFacts silent = good;
  silent.missed_readings = 2;
  silent.silent_for = milliseconds(6100);
  RigFacts nothing = silent;
  nothing.outcome = "Nothing rx-ed!";
  RigFacts garbled = silent;
  garbled.outcome = "Wrong CatCmd rx-ed!";
  RigFacts unplugged = good;
  unplugged.port_is_open = false;
  unplugged.device_is_gone = true;
  RigFacts closed = unplugged;
  closed.device_is_gone = false;
  RigFacts no_port = closed;
  no_port.port_chosen = false;
  RigFacts off = good;
  off.switched_off = true;
  const std::vector<RigRow> rows = {
      {"good", good, LampState::kGood, "Rig", "Done, FT840, Com1=9k6", true},
      {"one missed", one_missed, LampState::kGood, "Rig", "Done, FT840, Com1=9k6", true},
      {"silence that counts as done", silent, LampState::kTrouble, "RIG SILENT", "silent 6 s", false},
      {"silence", nothing, LampState::kTrouble, "RIG SILENT", "silent 6 s", false},
      {"garbage", garbled, LampState::kTrouble, "RIG GARBLED", "wrong replies", false},
      {"unplugged", unplugged, LampState::kTrouble, "UNPLUGGED", "opens when it is back", false},
      {"closed", closed, LampState::kTrouble, "PORT CLOSED", "press to open it", false},
      {"no port", no_port, LampState::kTrouble, "NO PORT", "choose one: Rig + Comport", false},
      {"off", off, LampState::kTrouble, "RIG OFF", "FT840 is not read", false},
  };
  for (const RigRow& row : rows) {
    const LampText says = RigLamp(row.facts);
    EXPECT_EQ(says.state, row.state) << row.what;
    EXPECT_EQ(says.words, row.words) << row.what;
    EXPECT_EQ(says.detail, row.detail) << row.what;
    EXPECT_EQ(SignalIsTrue(row.facts), row.is_true) << row.what;
  }
}

TEST(Lamps, AClosedPortSaysWhyAndWhatToPress) {
  RigFacts closed;
  closed.port_chosen = true;
  EXPECT_EQ(RigLamp(closed).advice, "Press to open the port again.");
  closed.trouble = Fault{"/dev/ttyUSB0", "/dev/ttyUSB0 was lost."};
  EXPECT_EQ(RigLamp(closed).advice, "/dev/ttyUSB0 was lost. Press to open the port again.");
}

}  // namespace
}  // namespace kestrum
