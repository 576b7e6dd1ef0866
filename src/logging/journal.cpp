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
constexpr std::size_t kMostBlocks = 1000;  // about 10 MB of records that wait for a disk
constexpr std::chrono::seconds kLongestEnd{30};

// What must stand between the first `size` bytes of a file and a new line.
std::string Healing(const FileStore& files, const std::string& path, std::uint64_t size) {
  if (size == 0) return {};
  std::string rest;
  if (files.ReadFrom(path, size - 1, rest, kLargestJournal)) return {};
  return rest.starts_with('\n') ? std::string() : std::string(kLineEnd);
}

std::string CommitLine(std::uint64_t log_size, const std::string& header) {
  return std::string(kCommitMark) + std::to_string(log_size) + " " + JoinLines({header});
}

// What a left journal says.
struct LeftJournal {
  Block block;
  std::size_t records = 0;
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
  if (lines.size() <= kHeadLines) return journal;
  journal.block.header = lines[1];
  for (auto line = lines.begin() + kHeadLines; line != lines.end(); ++line) {
    if (ReadCommit(*line, journal)) break;
    if (line->empty()) continue;
    journal.block.records += *line + std::string(kLineEnd);
    ++journal.records;
  }
  return journal;
}

// What is still missing at the end of the log of an append that was cut short; the whole block when it had
// not begun, or when somebody else has written there since.
std::string Missing(const FileStore& files, const std::string& path, const LeftJournal& journal) {
  const std::string block = BlockHead(journal.block.header) + journal.block.records;
  const std::uint64_t size = files.Size(path).value_or(0);
  if (journal.committed && size >= journal.log_size) {
    std::string tail;
    const std::string wanted = Healing(files, path, journal.log_size) + block;
    const FileFault fault = files.ReadFrom(path, journal.log_size, tail, wanted.size());
    if (!fault && wanted.starts_with(tail)) return wanted.substr(tail.size());
  }
  return Healing(files, path, size) + block;
}

}  // namespace

std::string JournalPath(const std::string& log_path) {
  return log_path + ".pending";
}

FileFault WriteBlock(FileStore& files, const std::string& log_path, const std::string& journal_path,
                     const std::string& unsent, const Block& block) {
  const std::uint64_t size = files.Size(log_path).value_or(0);
  if (!journal_path.empty()) files.Append(journal_path, unsent + CommitLine(size, block.header));
  const std::string bytes = Healing(files, log_path, size) + BlockHead(block.header) + block.records;
  const FileFault fault = files.Append(log_path, bytes);
  if (!journal_path.empty()) files.Remove(journal_path);
  return fault;
}

Recovery RecoverJournal(FileStore& files, const std::string& log_path) {
  const std::string path = JournalPath(log_path);
  if (log_path.empty() || !files.Exists(path)) return {};
  std::string bytes;
  if (FileFault fault = files.Read(path, bytes, kLargestJournal)) return {0, fault};
  const LeftJournal journal = ReadJournal(bytes);
  Recovery result;
  if (journal.records > 0) {
    const std::string missing = Missing(files, log_path, journal);
    if (!missing.empty()) {
      if (FileFault fault = files.Append(log_path, missing)) return {0, fault};
      result.records = journal.records;
    }
  }
  result.fault = files.Remove(path);
  return result;
}

Journal::Journal(FileStore& files, Worker& worker, std::string pointer_path, std::string usual_log_path)
    : files_(files),
      worker_(worker),
      pointer_path_(std::move(pointer_path)),
      usual_log_path_(std::move(usual_log_path)) {}

void Journal::Begin(const std::string& log_path, const std::string& header) {
  log_path_ = log_path;
  unsent_ = BlockHead(header);
  starts_ = true;
}

void Journal::Add(const std::string& record) {
  unsent_ += JoinLines({record});
  Send();
}

void Journal::Send() {
  if (busy_ || unsent_.empty()) return;
  busy_ = true;
  auto fault = std::make_shared<FileFault>();
  const bool point = log_path_ != usual_log_path_ && log_path_ != pointed_to_;
  if (point) pointed_to_ = log_path_;
  const auto write = [&files = files_, path = JournalPath(log_path_), bytes = std::exchange(unsent_, {}),
                      fault, starts = std::exchange(starts_, false),
                      pointer = point ? pointer_path_ : std::string(), pointed_to = pointed_to_] {
    if (!pointer.empty()) files.Replace(pointer, JoinLines({pointed_to}));
    // An older journal of this name belongs to no block any more.
    if (starts) files.Remove(path);
    *fault = files.Append(path, bytes);
  };
  worker_.Post(write, [this, fault] {
    busy_ = false;
    fault_ = *fault;
    Send();
  });
}

void Journal::Write(const std::string& log_path, Block block, std::function<void(const FileFault&)> written) {
  if (blocks_waiting_ >= kMostBlocks) {
    Drop();
    written("The disk does not keep up");
    return;
  }
  ++blocks_waiting_;
  auto fault = std::make_shared<FileFault>();
  const std::string journal_path = log_path_.empty() ? std::string() : JournalPath(log_path_);
  const auto write = [&files = files_, log_path, journal_path, fault, unsent = std::exchange(unsent_, {}),
                      block = std::move(block)] {
    *fault = WriteBlock(files, log_path, journal_path, unsent, block);
  };
  log_path_.clear();
  starts_ = false;
  worker_.Post(write, [this, fault, written = std::move(written)] {
    --blocks_waiting_;
    written(*fault);
  });
}

void Journal::Drop() {
  unsent_.clear();
  starts_ = false;
  if (log_path_.empty()) return;
  worker_.Post([&files = files_, path = JournalPath(std::exchange(log_path_, {}))] { files.Remove(path); },
               {});
}

void Journal::Recover(const std::string& log_path, std::function<void(const Recovery&)> recovered) {
  auto result = std::make_shared<Recovery>();
  const auto recover = [&files = files_, result, pointer = pointer_path_,
                        logs = std::vector<std::string>{usual_log_path_, log_path}]() mutable {
    std::string pointed_to;
    if (!files.Read(pointer, pointed_to, kLargestPointer)) {
      for (const std::string& line : SplitLines(pointed_to)) logs.push_back(line);
    }
    for (const std::string& log : logs) {
      const Recovery one = RecoverJournal(files, log);
      result->records += one.records;
      if (one.fault) result->fault = one.fault;
    }
    if (!pointed_to.empty() && !result->fault) files.Remove(pointer);
  };
  worker_.Post(recover, [result, recovered = std::move(recovered)] { recovered(*result); });
}

bool Journal::Finish() {
  return worker_.Finish(kLongestEnd);
}

}  // namespace kestrum
