#include "logging/journal.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <string_view>
#include <utility>
#include <vector>

#include "logging/log_record.h"
#include "text/text_file.h"

namespace kestrum {
namespace {

constexpr std::string_view kCommitMark = "=> ";
constexpr std::string_view kLineEnd = "\r\n";
constexpr std::size_t kHeadLines = 3;
constexpr std::uint64_t kLargestJournal = 64U << 20U;
constexpr std::uint64_t kLargestPointer = 8192;
constexpr std::size_t kMostPointers = 20;
constexpr int kMostSetAside = 9;
constexpr std::size_t kMostBlocks = 1000;  // about 10 MB of records that wait for a disk
constexpr std::chrono::seconds kLongestEnd{30};

// What must stand between the first `size` bytes of a file and a new line.
std::string Healing(const FileStore& files, const std::string& path, std::uint64_t size) {
  if (size == 0) return {};
  const Result<std::string> last = files.ReadFrom(path, size - 1, 1);
  const bool ends_open = last && last.value() != "\n";
  return ends_open ? std::string(kLineEnd) : std::string();
}

Outcome Append(FileStore& files, const std::string& log_path, std::uint64_t size, const Block& block) {
  return files.Append(log_path, Healing(files, log_path, size) + BlockHead(block.header) + block.records);
}

std::string CommitLine(std::uint64_t log_size, const std::string& header) {
  return std::string(kCommitMark) + std::to_string(log_size) + " " + JoinLines({header});
}

// What a left journal says.
struct LeftJournal {
  Block block;
  std::size_t records = 0;
  bool readable = true;    // else it is none of ours, and stays
  bool committed = false;  // appending had begun
  std::uint64_t log_size = 0;
};

bool ReadCommit(std::string_view line, LeftJournal& journal) {
  if (!line.starts_with(kCommitMark)) return false;
  line.remove_prefix(kCommitMark.size());
  const auto* const end = line.data() + line.size();
  const auto [rest, error] = std::from_chars(line.data(), end, journal.log_size);
  if (error != std::errc() || rest == end || *rest != ' ') return false;
  journal.block.header.assign(rest + 1, end);
  journal.committed = true;
  return true;
}

LeftJournal ReadJournal(std::string_view bytes) {
  LeftJournal journal;
  const auto end = bytes.rfind('\n');
  if (end == std::string_view::npos) return journal;
  const auto lines = SplitLines(bytes.substr(0, end + 1));  // a torn last line is dropped
  if (lines.size() < kHeadLines) return journal;
  const std::string dashes(lines[1].size(), '-');
  journal.readable = lines[0] == dashes && lines[2] == dashes;
  if (!journal.readable) return journal;
  journal.block.header = lines[1];
  for (auto line = lines.begin() + kHeadLines; line != lines.end(); ++line) {
    if (ReadCommit(*line, journal)) break;
    if (line->empty()) continue;
    journal.block.records += *line + std::string(kLineEnd);
    ++journal.records;
  }
  return journal;
}

std::string WithCommit(const Block& block, std::uint64_t log_size) {
  return BlockHead(block.header) + block.records + CommitLine(log_size, block.header);
}

// What is still missing at the end of the log of an append that was cut short; the whole block when it had
// not begun, or when somebody else has written there since.
std::string Missing(const FileStore& files, const std::string& path, const LeftJournal& journal) {
  const std::string block = BlockHead(journal.block.header) + journal.block.records;
  const std::uint64_t size = files.Size(path).value_or(0);
  if (size >= journal.log_size) {
    const std::string wanted = Healing(files, path, journal.log_size) + block;
    const Result<std::string> there = files.ReadFrom(path, journal.log_size, wanted.size());
    if (there && wanted.starts_with(there.value())) return wanted.substr(there.value().size());
  }
  return Healing(files, path, size) + block;
}

// One left journal file of a log.
Recovery RecoverFile(FileStore& files, const std::string& log_path, const std::string& path) {
  if (!files.Exists(path)) return {};
  const Result<std::string> bytes = files.Read(path, kLargestJournal);
  if (!bytes) return {0, bytes.fault()};
  LeftJournal journal = ReadJournal(bytes.value());
  if (!journal.readable) return {0, Fault{path, "Not a journal of records"}};
  Recovery result;
  if (journal.committed || journal.records > 0) {
    if (!journal.committed) {
      // From here on a second cut repeats nothing.
      journal.log_size = files.Size(log_path).value_or(0);
      const Outcome begun = files.Replace(path, WithCommit(journal.block, journal.log_size));
      if (!begun) return {0, begun.fault()};
    }
    const std::string missing = Missing(files, log_path, journal);
    if (!missing.empty()) {
      const Outcome appended = files.Append(log_path, missing);
      if (!appended) return {0, Fault{path, appended.fault().reason}};
      result.records = journal.records;
    }
  }
  (void)files.Remove(path);  // one that stays is found complete the next time
  return result;
}

std::string SetAsidePath(const std::string& path, int number) {
  return path + "." + std::to_string(number);
}

// A left journal that cannot be recovered now keeps its records under a name of its own.
Outcome SetAside(FileStore& files, const std::string& path) {
  for (int number = 1; number <= kMostSetAside; ++number) {
    if (!files.Exists(SetAsidePath(path, number))) return files.Rename(path, SetAsidePath(path, number));
  }
  return Fault{path, "Too many journals of earlier drives wait here"};
}

// Makes room for the journal of a log. One that an earlier drive has left is recovered or set aside; where
// neither works it stays, and is a fault.
Result<Recovery> MakeRoom(FileStore& files, const std::string& log_path) {
  const std::string path = JournalPath(log_path);
  if (!files.Exists(path)) return Recovery();
  Recovery recovery = RecoverJournal(files, log_path);
  if (files.Exists(path)) {
    if (const Outcome aside = SetAside(files, path); !aside) return aside.fault();
  }
  return recovery;
}

std::vector<std::string> ReadPointer(const FileStore& files, const std::string& pointer) {
  const Result<std::string> bytes = files.Read(pointer, kLargestPointer);
  return bytes ? SplitLines(bytes.value()) : std::vector<std::string>();
}

void AddToPointer(FileStore& files, const std::string& pointer, const std::string& log_path) {
  auto logs = ReadPointer(files, pointer);
  if (std::find(logs.begin(), logs.end(), log_path) != logs.end()) return;
  logs.push_back(log_path);
  if (logs.size() > kMostPointers) logs.erase(logs.begin());
  // Without the pointer the journal is found when its log is named again.
  (void)files.Replace(pointer, JoinLines(logs));
}

}  // namespace

std::string JournalPath(const std::string& log_path) {
  return log_path + ".pending";
}

Outcome WriteBlock(FileStore& files, const std::string& log_path, const std::string& other_journal,
                   const Block& block) {
  const std::string journal = JournalPath(log_path);
  const std::uint64_t size = files.Size(log_path).value_or(0);
  // Neither a journal that cannot be written nor one that stays is a fault of the block.
  (void)files.Replace(journal, WithCommit(block, size));
  Outcome appended = Append(files, log_path, size, block);
  (void)files.Remove(journal);
  if (!other_journal.empty()) (void)files.Remove(other_journal);
  return appended;
}

Recovery RecoverJournal(FileStore& files, const std::string& log_path) {
  if (log_path.empty()) return {};
  const std::string path = JournalPath(log_path);
  Recovery result;
  for (int number = 1; number <= kMostSetAside + 1; ++number) {
    const bool own = number > kMostSetAside;
    const Recovery one = RecoverFile(files, log_path, own ? path : SetAsidePath(path, number));
    result.records += one.records;
    if (one.fault) result.fault = one.fault;
  }
  return result;
}

Journal::Journal(FileStore& files, Worker& worker, std::string pointer_path, std::string usual_log_path)
    : files_(files),
      worker_(worker),
      pointer_path_(std::move(pointer_path)),
      usual_log_path_(std::move(usual_log_path)) {}

void Journal::Begin(const std::string& log_path, const std::string& header) {
  Close();
  log_path_ = log_path;
  text_ = BlockHead(header);
  first_ = whole_ = true;
  ours_ = std::make_shared<bool>(false);
}

void Journal::Close() {
  log_path_.clear();
  text_.clear();
  sent_ = 0;
  first_ = whole_ = false;
  ours_ = std::make_shared<bool>(false);
  ++generation_;
}

void Journal::Add(const std::string& record) {
  text_ += JoinLines({record});
  Send();
}

void Journal::Send() {
  if (busy_ || sent_ == text_.size()) return;
  busy_ = true;
  auto outcome = std::make_shared<Outcome>(Done{});
  auto left = std::make_shared<Recovery>();
  const bool whole = std::exchange(whole_, false);
  const bool first = std::exchange(first_, false);
  const std::string pointer = log_path_ == usual_log_path_ ? std::string() : pointer_path_;
  const auto write = [&files = files_, log_path = log_path_, bytes = whole ? text_ : text_.substr(sent_),
                      outcome, left, ours = ours_, whole, first, pointer] {
    const std::string path = JournalPath(log_path);
    if (first && !pointer.empty()) AddToPointer(files, pointer, log_path);
    if (!*ours) {
      const Result<Recovery> room = MakeRoom(files, log_path);
      if (!room) {
        *outcome = room.fault();
        return;
      }
      *left = room.value();
    }
    *ours = true;
    *outcome = whole ? files.Replace(path, bytes) : files.Append(path, bytes);
  };
  sent_ = text_.size();
  worker_.Post(write, [this, outcome, left, generation = generation_] {
    busy_ = false;
    fault_.reset();
    if (!*outcome) fault_ = outcome->fault();
    if (left->records > 0 && recovered_late) recovered_late(*left);
    if (fault_ && generation == generation_) {
      // With the next record all of it is written once more: a journal has no holes.
      whole_ = true;
      sent_ = 0;
      return;
    }
    Send();
  });
}

void Journal::Write(const std::string& log_path, Block block, std::function<void(const Outcome&)> written) {
  if (blocks_waiting_ >= kMostBlocks) {
    Close();
    written(Fault{log_path, "The disk does not keep up"});
    return;
  }
  ++blocks_waiting_;
  auto outcome = std::make_shared<Outcome>(Done{});
  const bool elsewhere = !log_path_.empty() && log_path_ != log_path;
  const auto write = [&files = files_, log_path, other_log = elsewhere ? log_path_ : std::string(),
                      ours = ours_, outcome, block = std::move(block)] {
    const std::string other = *ours && !other_log.empty() ? JournalPath(other_log) : std::string();
    const bool journal_is_ours = *ours && other_log.empty();
    const bool room = journal_is_ours || MakeRoom(files, log_path).ok();
    *outcome = room ? WriteBlock(files, log_path, other, block)
                    : Append(files, log_path, files.Size(log_path).value_or(0), block);
  };
  Close();
  worker_.Post(write, [this, outcome, written = std::move(written)] {
    --blocks_waiting_;
    written(*outcome);
  });
}

void Journal::Recover(const std::string& log_path, std::function<void(const Recovery&)> recovered) {
  auto result = std::make_shared<Recovery>();
  const auto recover = [&files = files_, result, pointer = pointer_path_, usual = usual_log_path_, log_path] {
    const auto recover_one = [&files, &result](const std::string& log) {
      Recovery one = RecoverJournal(files, log);
      result->records += one.records;
      if (one.fault) result->fault = one.fault;
      return !one.fault;
    };
    recover_one(usual);
    if (log_path != usual) recover_one(log_path);
    const auto named = ReadPointer(files, pointer);
    std::vector<std::string> open;
    for (const std::string& log : named) {
      // Neither log nor journal: the stick is not plugged in, so it is looked for once more the next time.
      const bool reachable = files.Exists(log) || files.Exists(JournalPath(log));
      if (!recover_one(log) || !reachable) open.push_back(log);
    }
    if (open == named) return;
    // A pointer that stays as it was is followed once more the next time.
    (void)(open.empty() ? files.Remove(pointer) : files.Replace(pointer, JoinLines(open)));
  };
  worker_.Post(recover, [result, recovered = std::move(recovered)] { recovered(*result); });
}

bool Journal::Finish() {
  return worker_.Finish(kLongestEnd);
}

}  // namespace kestrum
