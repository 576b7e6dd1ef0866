#include "log/log_file.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <optional>
#include <system_error>
#include <utility>

#include "log/text_encoding.h"
#include "logging/journal.h"

namespace orvandi {
namespace {

namespace fs = std::filesystem;
using kestrum::JournalPath;

constexpr std::size_t kPiece = std::size_t{1} << 20;
constexpr std::uint64_t kMostJournalBytes = std::uint64_t{4}
                                            << 20;  // a journal holds one block of 100 records
constexpr std::size_t kEndBytes = 256;  // of both ends, compared to see whether a file is still the same
constexpr std::uint64_t kShortLine = 80;
constexpr std::uint64_t kMostReserved = 4'000'000;  // records that memory is set aside for at once

// What the file system says of a path, without opening it: a pipe must not block.
struct FileState {
  enum class Kind { kMissing, kFile, kFolder, kOther } kind = Kind::kMissing;
  std::uint64_t size = 0;
  std::optional<fs::file_time_type> changed;

  bool operator==(const FileState&) const = default;
};

FileState StateOf(const std::string& path) {
  FileState state;
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (!fs::exists(status)) return state;
  state.kind = fs::is_directory(status)      ? FileState::Kind::kFolder
               : fs::is_regular_file(status) ? FileState::Kind::kFile
                                             : FileState::Kind::kOther;
  if (state.kind != FileState::Kind::kFile) return state;
  const auto size = fs::file_size(path, error);
  state.size = error ? 0 : size;
  const auto changed = fs::last_write_time(path, error);
  if (!error) state.changed = changed;
  return state;
}

std::string ReadAt(std::istream& file, std::uint64_t offset, std::size_t length) {
  std::string bytes(length, '\0');
  file.clear();
  file.seekg(static_cast<std::streamoff>(offset));
  file.read(bytes.data(), static_cast<std::streamsize>(length));
  bytes.resize(static_cast<std::size_t>(std::max<std::streamsize>(file.gcount(), 0)));
  return bytes;
}

bool IsUtf16(std::string_view start) {
  return start.starts_with("\xFF\xFE") || start.starts_with("\xFE\xFF");
}

bool SameReading(const Record& a, const Record& b) {
  const auto same = [](auto x, auto y) { return x == y || (x != x && y != y); };
  return (a.time_s - b.time_s) % 86400 == 0 && a.raw == b.raw && same(a.latitude_deg, b.latitude_deg) &&
         same(a.longitude_deg, b.longitude_deg) && same(a.millivolt_per_m, b.millivolt_per_m);
}

}  // namespace

struct LogFile::State {
  // How much of the log comes from complete lines of the file; the rest is read anew at each change.
  struct Sizes {
    std::size_t records = 0;
    std::size_t blocks = 0;
    std::size_t last_block_records = 0;
    std::size_t dropped = 0;
    std::uint64_t dropped_count = 0;
  };

  State(const CleaningRules& cleaning_rules, const ReaderLimits& reader_limits)
      : rules(cleaning_rules), limits(reader_limits), reader(log, LogReader::Source::kLog, limits) {}

  void Reset();
  void CutToComplete();
  void KeepComplete();
  Outcome ReadNew(const std::string& path, std::uint64_t size, const Progress& progress);
  void ReadTail();
  void ReadJournal(const std::string& path);
  void SkipJournalRecordsInLog(Log& journal) const;
  void AppendJournal(Log&& journal);
  bool StillSameFile(const std::string& path) const;

  CleaningRules rules;
  ReaderLimits limits;
  Log log;
  LogReader reader;
  Sizes complete;
  std::string head;  // the first bytes of the file
  std::string tail;  // the last bytes read
  bool utf16 = false;
  FileState file;
  FileState journal_file;
  bool told_missing = false;
};

void LogFile::State::Reset() {
  log = {};
  reader = LogReader(log, LogReader::Source::kLog, limits);
  complete = {};
  head.clear();
  tail.clear();
  utf16 = false;
}

// Takes away what an unfinished last line and the journal gave.
void LogFile::State::CutToComplete() {
  log.records.resize(complete.records);
  log.blocks.resize(complete.blocks);
  if (!log.blocks.empty()) log.blocks.back().record_count = complete.last_block_records;
  log.dropped.resize(complete.dropped);
  log.dropped_count = complete.dropped_count;
}

void LogFile::State::KeepComplete() {
  complete.records = log.records.size();
  complete.blocks = log.blocks.size();
  complete.last_block_records = log.blocks.empty() ? 0 : log.blocks.back().record_count;
  complete.dropped = log.dropped.size();
  complete.dropped_count = log.dropped_count;
}

LogFile::Outcome LogFile::State::ReadNew(const std::string& path, std::uint64_t size,
                                         const Progress& progress) {
  Outcome outcome;
  std::ifstream stream(path, std::ios::binary);
  if (!stream) {
    outcome.sentence = "The file cannot be opened: is it yours to read?";
    return outcome;
  }
  if (reader.Bytes() == 0) log.records.reserve(std::min(size / kShortLine, kMostReserved));
  stream.seekg(static_cast<std::streamoff>(reader.Bytes()));
  std::string piece(std::min<std::uint64_t>(kPiece, std::max<std::uint64_t>(size - reader.Bytes(), 1)), '\0');
  while (reader.Bytes() < size) {
    const std::uint64_t wanted = std::min<std::uint64_t>(piece.size(), size - reader.Bytes());
    stream.read(piece.data(), static_cast<std::streamsize>(wanted));
    const std::string_view got(piece.data(), static_cast<std::size_t>(stream.gcount()));
    if (got.empty()) break;
    if (reader.Bytes() == 0) utf16 = IsUtf16(got);
    reader.Feed(got);
    head.append(got.substr(0, kEndBytes - head.size()));
    tail.append(got.substr(got.size() - std::min(got.size(), kEndBytes)));
    tail.erase(0, tail.size() - std::min(tail.size(), kEndBytes));
    if (progress && !progress(reader.Bytes(), size)) {
      outcome.cancelled = true;
      return outcome;
    }
  }
  reader.SettleDates();
  outcome.ok = true;
  return outcome;
}

// A last line without an end may be complete or torn, or may be about to be completed: a copy of the reader
// takes it.
void LogFile::State::ReadTail() {
  LogReader last = reader;
  last.Finish();
}

bool LogFile::State::StillSameFile(const std::string& path) const {
  if (tail.empty()) return true;
  std::ifstream stream(path, std::ios::binary);
  return stream && ReadAt(stream, 0, head.size()) == head &&
         ReadAt(stream, reader.Bytes() - tail.size(), tail.size()) == tail;
}

void LogFile::State::ReadJournal(const std::string& path) {
  log.pending_first = log.records.size();
  if (journal_file.kind != FileState::Kind::kFile || journal_file.size == 0) return;
  std::ifstream stream(path, std::ios::binary);
  if (!stream) return;
  const std::string bytes =
      ReadAt(stream, 0, static_cast<std::size_t>(std::min(journal_file.size, kMostJournalBytes)));
  Log journal;
  LogReader journal_reader(journal, LogReader::Source::kJournal, limits);
  journal_reader.Feed(bytes);
  journal_reader.Finish();
  SkipJournalRecordsInLog(journal);
  AppendJournal(std::move(journal));
}

// For a moment a block stands in the log and still in the journal; after a power cut, perhaps until the next
// drive.
void LogFile::State::SkipJournalRecordsInLog(Log& journal) const {
  if (log.blocks.empty() || journal.blocks.empty()) return;
  const Block& last = log.blocks.back();
  const std::size_t both = std::min(last.record_count, journal.records.size());
  for (std::size_t index = 0; index < both; ++index) {
    if (!SameReading(log.records[last.first_record + index], journal.records[index])) return;
  }
  std::size_t left = both;
  for (Block& block : journal.blocks) {
    const std::size_t taken = std::min(left, block.record_count);
    block.first_record += taken;
    block.record_count -= taken;
    left -= taken;
  }
}

void LogFile::State::AppendJournal(Log&& journal) {
  for (Block& block : journal.blocks) {
    if (block.record_count == 0) continue;
    const auto first = journal.records.begin() + static_cast<std::ptrdiff_t>(block.first_record);
    const auto end = first + static_cast<std::ptrdiff_t>(block.record_count);
    block.first_record = log.records.size();
    for (auto record = first; record != end; ++record) {
      const std::string& text = journal.SText(*record);
      const auto known = std::find(log.s_texts.begin(), log.s_texts.end(), text);
      record->s_text = static_cast<std::uint8_t>(known - log.s_texts.begin());
      if (known == log.s_texts.end()) {
        record->s_text = log.s_texts.size() < 255 ? record->s_text : std::uint8_t{0};
        if (record->s_text != 0) log.s_texts.push_back(text);
      }
      record->block = static_cast<std::uint32_t>(log.blocks.size());
      log.records.push_back(*record);
    }
    log.blocks.push_back(std::move(block));
  }
  for (DroppedLine& line : journal.dropped) {
    if (log.dropped.size() < kMostDropped) log.dropped.push_back(std::move(line));
  }
  log.dropped_count += journal.dropped_count;
}

LogFile::LogFile(std::string path, const CleaningRules& rules, const ReaderLimits& limits)
    : path_(std::move(path)), state_(std::make_unique<State>(rules, limits)) {}
LogFile::~LogFile() = default;
LogFile::LogFile(LogFile&&) noexcept = default;
LogFile& LogFile::operator=(LogFile&&) noexcept = default;

const Log& LogFile::Content() const {
  return state_->log;
}

namespace {

// Why a path cannot be read as a log, "" when nothing speaks against it.
std::string ObjectionTo(const FileState& file, bool journal) {
  if (file.kind == FileState::Kind::kMissing && !journal) return "There is no such file.";
  if (file.kind == FileState::Kind::kFolder) return "This is a folder. Choose the log inside of it.";
  if (file.kind == FileState::Kind::kOther) return "This is a device or a pipe, not a file.";
  return {};
}

std::string OddityOf(const Log& log, const FileState& file, bool utf16) {
  if (!log.records.empty()) return {};
  if (utf16) return "This text is stored as UTF-16. Save it as UTF-8 or ANSI to read it here.";
  if (file.size == 0 && log.blocks.empty()) return "The file is empty: no record has been written yet.";
  const auto binary = static_cast<std::size_t>(
      std::count_if(log.dropped.begin(), log.dropped.end(),
                    [](const DroppedLine& line) { return line.reason == DropReason::kBinary; }));
  if (binary * 3 >= log.dropped.size() && binary > 0)
    return "This is no log: it holds binary data and no record.";
  if (!log.blocks.empty()) return "The log has a header, but no record yet.";
  return "This is no log: none of its lines is a record.";
}

}  // namespace

LogFile::Outcome LogFile::Open(const Progress& progress) {
  State& state = *state_;
  state.Reset();
  state.file = StateOf(path_);
  state.journal_file = StateOf(JournalPath(path_));
  const bool journal = state.journal_file.kind == FileState::Kind::kFile;
  Outcome outcome;
  outcome.sentence = ObjectionTo(state.file, journal);
  if (!outcome.sentence.empty()) return outcome;
  if (state.file.kind == FileState::Kind::kFile) {
    outcome = state.ReadNew(path_, state.file.size, progress);
    if (!outcome.ok) {
      state.Reset();
      state.file = {};
      return outcome;
    }
  }
  state.KeepComplete();
  state.ReadTail();
  state.ReadJournal(JournalPath(path_));
  MarkRuns(state.log, 0, state.rules);
  outcome.sentence = OddityOf(state.log, state.file, state.utf16);
  outcome.ok = !state.log.records.empty() || !state.log.blocks.empty() || state.file.size == 0;
  return outcome;
}

LogFile::Change LogFile::Update() {
  State& state = *state_;
  const FileState file = StateOf(path_);
  const FileState journal_file = StateOf(JournalPath(path_));
  Change change;
  if (file == state.file && journal_file == state.journal_file) return change;
  const bool gone = file.kind != FileState::Kind::kFile && state.reader.Bytes() > 0;
  if (gone) {
    // What has been read stays on the screen: a stick may have been pulled, or the file is being replaced.
    if (!std::exchange(state.told_missing, true)) {
      change.sentence = "The file is not there any more. What was read of it stays.";
    }
    return change;
  }
  state.told_missing = false;
  if (file.kind == FileState::Kind::kFolder || file.kind == FileState::Kind::kOther) return change;
  const bool shorter = file.size < state.reader.Bytes();
  const bool other = shorter || (file != state.file && !state.StillSameFile(path_));
  state.file = file;
  state.journal_file = journal_file;
  if (other) {
    state.Reset();
    change.reread = true;
    change.sentence = shorter ? "The file became shorter and was read again from its start."
                              : "Another file took the place of this one and was read from its start.";
  }
  state.CutToComplete();
  change.changed = true;
  change.first_changed = std::min(state.complete.records, state.reader.FirstUnsettled());
  if (file.kind == FileState::Kind::kFile) {
    const Outcome outcome = state.ReadNew(path_, file.size, {});
    if (!outcome.ok && change.sentence.empty()) change.sentence = outcome.sentence;
  }
  state.KeepComplete();
  state.ReadTail();
  state.ReadJournal(JournalPath(path_));
  change.first_changed = MarkRuns(state.log, change.first_changed, state.rules);
  return change;
}

std::string LogFile::LineOf(const Record& record) const {
  const bool pending = state_->log.BlockOf(record).pending;
  const std::string path = pending ? JournalPath(path_) : path_;
  if (StateOf(path).kind != FileState::Kind::kFile) return {};
  std::ifstream stream(path, std::ios::binary);
  if (!stream) return {};
  const std::string bytes = ReadAt(stream, record.offset, state_->limits.longest_line);
  return ToUtf8(std::string_view(bytes).substr(0, bytes.find_first_of("\r\n")));
}

}  // namespace orvandi
