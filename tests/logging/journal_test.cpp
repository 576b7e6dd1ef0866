#include "logging/journal.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/reason_of.h"
#include "support/scripted_ports.h"
#include "text/text_file.h"

namespace kestrum::test {
namespace {

constexpr const char* kLog = "/car/RSSI-GPS.log";
constexpr const char* kPending = "/car/RSSI-GPS.log.pending";
const std::string kHead = "------\r\nheader\r\n------\r\n";
const std::string kFinalHead = "-----\r\nfinal\r\n-----\r\n";

struct JournalBench : testing::Test {
  ScriptedPorts world;
  std::map<std::string, std::string>& files = world.files.files;
  Journal journal{world.files, world.worker, "/car/Kestrum.pending", kLog};
  std::vector<std::string> faults;
  std::size_t written = 0;
  std::vector<Recovery> recoveries;

  void Write(const std::string& path, Block block) {
    journal.Write(path, std::move(block), [this](const Outcome& outcome) {
      ++written;
      if (!outcome) faults.push_back(outcome.fault().reason);
    });
  }
  Recovery Recover(const std::string& path = kLog) {
    Recovery result;
    journal.Recover(path, [&result](const Recovery& recovery) { result = recovery; });
    return result;
  }
};

TEST_F(JournalBench, EachRecordGoesToTheDiskAtOnceAfterTheHead) {
  journal.Begin(kLog, "header");
  EXPECT_FALSE(files.contains(kPending)) << "the head waits for the first record";
  journal.Add("one");
  EXPECT_EQ(files[kPending], kHead + "one\r\n");
  journal.Add("two");
  EXPECT_EQ(files[kPending], kHead + "one\r\ntwo\r\n");
  EXPECT_FALSE(files.contains(kLog));
}

TEST_F(JournalBench, ItGoesWhenTheBlockIsWritten) {
  journal.Begin(kLog, "header");
  journal.Add("one");
  Write(kLog, {"final", "one\r\n"});
  EXPECT_EQ(files[kLog], kFinalHead + "one\r\n");
  EXPECT_FALSE(files.contains(kPending));
  EXPECT_FALSE(journal.IsOpen());
  EXPECT_EQ(written, 1U);
  EXPECT_TRUE(faults.empty());
}

TEST_F(JournalBench, ALeftJournalOfTheNameIsRecoveredFirst) {
  std::size_t late = 0;
  journal.recovered_late = [&late](const Recovery& recovery) { late = recovery.records; };
  files[kPending] = kHead + "left\r\n";
  journal.Begin(kLog, "header");
  journal.Add("one");
  EXPECT_EQ(files[kLog], kHead + "left\r\n");
  EXPECT_EQ(files[kPending], kHead + "one\r\n");
  EXPECT_EQ(late, 1U);
}

TEST_F(JournalBench, ALeftJournalThatCannotBeRecoveredIsSetAside) {
  files[kPending] = kHead + "left\r\n";
  world.files.write_fault = "Read-only file system";
  world.files.faulty_path = kLog;
  journal.Begin(kLog, "header");
  journal.Add("one");
  EXPECT_EQ(files[kPending], kHead + "one\r\n");
  EXPECT_THAT(files["/car/RSSI-GPS.log.pending.1"], testing::StartsWith(kHead + "left\r\n"));
  world.files.write_fault = "";
  EXPECT_EQ(Recover().records, 2U);
  EXPECT_EQ(files[kLog], kHead + "left\r\n" + kHead + "one\r\n");
}

TEST_F(JournalBench, AfterAFaultAllOfItIsWrittenOnceMore) {
  world.files.write_fault = "No space left on device";
  journal.Begin(kLog, "header");
  journal.Add("one");
  journal.Add("two");
  world.files.write_fault = "";
  journal.Add("three");
  EXPECT_EQ(files[kPending], kHead + "one\r\ntwo\r\nthree\r\n");
  journal.Add("four");
  EXPECT_EQ(files[kPending], kHead + "one\r\ntwo\r\nthree\r\nfour\r\n");
}

TEST_F(JournalBench, ABlockIntoAnotherFileIsCommittedThere) {
  journal.Begin(kLog, "header");
  journal.Add("one");
  std::string committed;
  world.files.on_append = [&](const std::string& path) {
    if (path == "/new.log") committed = files["/new.log.pending"];
  };
  Write("/new.log", {"final", "one\r\n"});
  EXPECT_EQ(committed, kFinalHead + "one\r\n=> 0 final\r\n");
  EXPECT_FALSE(files.contains(kPending));
  EXPECT_FALSE(files.contains("/new.log.pending"));
}

TEST_F(JournalBench, ABlockWithoutRecordsIsCommittedToo) {
  files[kLog] = "old\r\n-----\r\nfi";
  files[kPending] = kFinalHead + "=> 5 final\r\n";
  EXPECT_EQ(Recover().records, 0U);
  EXPECT_EQ(files[kLog], "old\r\n" + kFinalHead);
}

TEST_F(JournalBench, AFileThatIsNoJournalIsLeftAlone) {
  files[kPending] = "somebody's\r\nown\r\ntext\r\nhere\r\n";
  const Recovery recovery = Recover();
  EXPECT_EQ(recovery.fault, (Fault{kPending, "Not a journal of records"}));
  EXPECT_TRUE(files.contains(kPending));
}

// Neither readable nor movable: the records of this drive do without a journal rather than write over it.
TEST_F(JournalBench, WhatCannotBeSetAsideStaysAndTheBlockIsWrittenWithoutAJournal) {
  files[kPending] = "somebody's\r\nown\r\ntext\r\nhere\r\n";
  world.files.write_fault = "Operation not permitted";
  world.files.faulty_path = std::string(kPending) + ".1";
  journal.Begin(kLog, "header");
  journal.Add("one");
  EXPECT_EQ(ReasonOf(journal.fault()), "Operation not permitted");
  EXPECT_EQ(files[kPending], "somebody's\r\nown\r\ntext\r\nhere\r\n");
  Write(kLog, {"final", "one\r\n"});
  EXPECT_TRUE(faults.empty());
  EXPECT_EQ(files[kLog], kFinalHead + "one\r\n");
  EXPECT_EQ(files[kPending], "somebody's\r\nown\r\ntext\r\nhere\r\n");
  // Once it can be moved, the next journal stands in its place.
  world.files.write_fault.clear();
  journal.Begin(kLog, "header");
  journal.Add("two");
  EXPECT_EQ(files[kPending], kHead + "two\r\n");
  EXPECT_EQ(files[std::string(kPending) + ".1"], "somebody's\r\nown\r\ntext\r\nhere\r\n");
}

// Whenever the power goes during a recovery, the next one repeats nothing.
TEST_F(JournalBench, ARecoveryCutShortIsCompleted) {
  const std::string left = kHead + "one\r\ntwo\r\n";
  for (std::size_t cut = 0; cut <= left.size(); ++cut) {
    files[kLog] = "old\r\n" + left.substr(0, cut);
    files[kPending] = left + "=> 5 header\r\n";
    Recover();
    EXPECT_EQ(files[kLog], "old\r\n" + left) << cut;
    // The journal could not be removed, and the log has grown since.
    files[kLog] += "later\r\n";
    files[kPending] = left + "=> 5 header\r\n";
    EXPECT_EQ(Recover().records, 0U);
    EXPECT_EQ(files[kLog], "old\r\n" + left + "later\r\n");
  }
}

TEST_F(JournalBench, ARecoveryIsCommittedBeforeItAppends) {
  files[kLog] = "old\r\n";
  files[kPending] = kHead + "one\r\n";
  std::string committed;
  world.files.on_append = [&](const std::string&) { committed = files[kPending]; };
  Recover();
  EXPECT_EQ(committed, kHead + "one\r\n=> 5 header\r\n");
}

TEST_F(JournalBench, RecordsOfABusyDiskGoTogetherInOneWrite) {
  world.worker.hold = true;
  journal.Begin(kLog, "header");
  for (int i = 0; i < 50; ++i) journal.Add("r" + std::to_string(i));
  EXPECT_EQ(world.worker.jobs, 1U);
  world.worker.Release();
  EXPECT_EQ(world.worker.jobs, 2U);
  EXPECT_EQ(SplitLines(files[kPending]).size(), 53U);
}

TEST_F(JournalBench, ABlockOvertakesNoRecordThatWaits) {
  world.worker.hold = true;
  journal.Begin(kLog, "header");
  journal.Add("one");
  journal.Add("two");
  Write(kLog, {"final", "one\r\ntwo\r\n"});
  journal.Begin(kLog, "header");
  journal.Add("three");
  world.worker.Release();
  EXPECT_EQ(files[kLog], kFinalHead + "one\r\ntwo\r\n");
  EXPECT_EQ(files[kPending], kHead + "three\r\n");
}

TEST_F(JournalBench, AFileThatDoesNotEndInALineEndGetsOneFirst) {
  for (const auto& [before, healed] :
       std::vector<std::pair<std::string, std::string>>{{"torn", "torn\r\n"},
                                                        {"whole\r\n", "whole\r\n"},
                                                        {"unix\n", "unix\n"},
                                                        {"old mac\r", "old mac\r\r\n"}}) {
    files[kLog] = before;
    Write(kLog, {"final", "one\r\n"});
    EXPECT_EQ(files[kLog], healed + kFinalHead + "one\r\n");
  }
}

TEST_F(JournalBench, AFaultIsToldAndAJournalThatCannotBeWrittenIsNoneOfTheBlock) {
  world.files.write_fault = "No space left on device";
  journal.Begin(kLog, "header");
  journal.Add("one");
  EXPECT_EQ(ReasonOf(journal.fault()), "No space left on device");
  world.files.faulty_path = kPending;
  Write(kLog, {"final", "one\r\n"});
  EXPECT_TRUE(faults.empty());
  EXPECT_EQ(files[kLog], kFinalHead + "one\r\n");
  world.files.faulty_path = kLog;
  Write(kLog, {"final", "two\r\n"});
  EXPECT_EQ(faults, std::vector<std::string>{"No space left on device"});
  world.files.write_fault = "";
  journal.Begin(kLog, "header");
  journal.Add("three");
  EXPECT_EQ(journal.fault(), std::nullopt);
}

TEST_F(JournalBench, ADiskThatNeverAnswersIsNotWaitedForWithoutEnd) {
  world.worker.hold = true;
  for (int block = 0; block < 1001; ++block) Write(kLog, {"final", "one\r\n"});
  EXPECT_EQ(faults, std::vector<std::string>{"The disk does not keep up"});
  EXPECT_EQ(world.worker.jobs, 1000U);
  world.worker.hangs = true;
  EXPECT_FALSE(journal.Finish());
  world.worker.hangs = false;
  EXPECT_TRUE(journal.Finish());
  EXPECT_EQ(written, 1001U);
}

struct LeftRow {
  const char* name;
  std::string pending;
  std::string log;
  std::size_t records;
  std::string recovered;
};

struct LeftJournal : JournalBench, testing::WithParamInterface<LeftRow> {};

TEST_P(LeftJournal, BecomesABlockOfItsLog) {
  const LeftRow& row = GetParam();
  if (!row.log.empty()) files[kLog] = row.log;
  files[kPending] = row.pending;
  const Recovery recovery = Recover();
  EXPECT_EQ(recovery.records, row.records);
  EXPECT_EQ(recovery.fault, std::nullopt);
  EXPECT_EQ(files[kLog], row.recovered);
  EXPECT_FALSE(files.contains(kPending));
}

const std::string kOld = "old\r\n";
const std::string kTwo = "one\r\ntwo\r\n";
const std::string kBlock = kFinalHead + kTwo;

INSTANTIATE_TEST_SUITE_P(
    Rows, LeftJournal,
    testing::Values(
        LeftRow{"whole", kHead + kTwo, kOld, 2, kOld + kHead + kTwo},
        LeftRow{"torn_last_line", kHead + kTwo + "thr", kOld, 2, kOld + kHead + kTwo},
        LeftRow{"torn_between_cr_and_lf", kHead + kTwo + "three\r", kOld, 2, kOld + kHead + kTwo},
        LeftRow{"torn_head", "------\r\nhea", kOld, 0, kOld}, LeftRow{"head_alone", kHead, kOld, 0, kOld},
        LeftRow{"empty", "", kOld, 0, kOld}, LeftRow{"no_log_yet", kHead + kTwo, "", 2, kHead + kTwo},
        LeftRow{"log_without_line_end", kHead + kTwo, "old", 2, "old\r\n" + kHead + kTwo},
        LeftRow{"append_not_begun", kHead + kTwo + "=> 5 final\r\n", kOld, 2, kOld + kBlock},
        LeftRow{"append_cut_in_the_head", kHead + kTwo + "=> 5 final\r\n", kOld + "--", 2, kOld + kBlock},
        LeftRow{"append_cut_in_a_record", kHead + kTwo + "=> 5 final\r\n", kOld + kFinalHead + "one\r\ntw", 2,
                kOld + kBlock},
        LeftRow{"append_complete", kHead + kTwo + "=> 5 final\r\n", kOld + kBlock, 0, kOld + kBlock},
        LeftRow{"append_cut_in_the_healing", kHead + kTwo + "=> 4 final\r\n", "torn\r", 2,
                "torn\r\n" + kBlock},
        LeftRow{"append_healed_and_cut", kHead + kTwo + "=> 4 final\r\n", "torn\r\n" + kFinalHead, 2,
                "torn\r\n" + kBlock},
        LeftRow{"somebody_else_wrote", kHead + kTwo + "=> 5 final\r\n", kOld + "other\r\n", 2,
                kOld + "other\r\n" + kBlock},
        LeftRow{"log_was_emptied", kHead + kTwo + "=> 5 final\r\n", "x", 2, "x\r\n" + kBlock},
        LeftRow{"torn_commit", kHead + kTwo + "=> 5 fin", kOld, 2, kOld + kHead + kTwo}),
    [](const auto& row) { return std::string(row.param.name); });

// Wherever the power goes during an append, the next start completes it and no line is torn or doubled.
TEST_F(JournalBench, AnAppendCutAtAnyByteIsCompletedAtTheNextStart) {
  const std::string pending = kHead + kTwo + "=> 5 final\r\n";
  for (std::size_t cut = 0; cut <= kBlock.size(); ++cut) {
    files[kLog] = kOld + kBlock.substr(0, cut);
    files[kPending] = pending;
    Recover();
    EXPECT_EQ(files[kLog], kOld + kBlock) << cut;
  }
}

TEST_F(JournalBench, AJournalCutAtAnyByteLosesAtMostItsLastLine) {
  const std::string whole = kHead + kTwo;
  for (std::size_t cut = kHead.size(); cut <= whole.size(); ++cut) {
    files[kLog] = kOld;
    files[kPending] = whole.substr(0, cut);
    const std::size_t lines = cut == whole.size() ? 2 : cut >= kHead.size() + 5 ? 1 : 0;
    EXPECT_EQ(Recover().records, lines) << cut;
  }
}

TEST_F(JournalBench, ALogThatCannotBeWrittenKeepsTheJournalForTheNextTime) {
  files[kPending] = kHead + kTwo;
  world.files.write_fault = "Read-only file system";
  EXPECT_EQ(ReasonOf(Recover().fault), "Read-only file system");
  EXPECT_TRUE(files.contains(kPending));
  world.files.write_fault = "";
  EXPECT_EQ(Recover().records, 2U);
}

TEST_F(JournalBench, AJournalElsewhereIsFoundByThePointer) {
  journal.Begin("/stick/drive.log", "header");
  journal.Add("one");
  EXPECT_EQ(files["/car/Kestrum.pending"], "/stick/drive.log\r\n");
  EXPECT_EQ(files["/stick/drive.log.pending"], kHead + "one\r\n");
  Journal next(world.files, world.worker, "/car/Kestrum.pending", kLog);
  Recovery result;
  next.Recover(kLog, [&result](const Recovery& recovery) { result = recovery; });
  EXPECT_EQ(result.records, 1U);
  EXPECT_EQ(files["/stick/drive.log"], kHead + "one\r\n");
  EXPECT_FALSE(files.contains("/car/Kestrum.pending"));
}

TEST_F(JournalBench, APointerToAStickThatIsNotPluggedInStays) {
  files["/car/Kestrum.pending"] = "/stick/drive.log\r\n/gone/other.log\r\n";
  files["/stick/drive.log.pending"] = kHead + "one\r\n";
  EXPECT_EQ(Recover().records, 1U);
  EXPECT_EQ(files["/car/Kestrum.pending"], "/gone/other.log\r\n");
}

TEST_F(JournalBench, TheUsualPlaceNeedsNoPointer) {
  journal.Begin(kLog, "header");
  journal.Add("one");
  EXPECT_FALSE(files.contains("/car/Kestrum.pending"));
}

}  // namespace
}  // namespace kestrum::test
