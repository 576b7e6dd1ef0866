#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "log/line_parser.h"
#include "log/log.h"

namespace orvandi {

struct ReaderLimits {
  std::size_t longest_line = 4096;        // bytes; what is longer is dropped as a whole
  std::size_t most_records = 20'000'000;  // 1.3 GB; what comes after is dropped and counted
};

// Turns the bytes of a log into records, piece by piece. The pieces may be cut anywhere; a copy of a reader
// goes on from the same place of the same log.
//
// The dates: the header of a block in a log is written after its records, so the last record is the one
// before it and times that rise when read backwards crossed a midnight. A block whose first record follows
// its header at once is one that was recovered from a journal, and its times run forward. A clock set back by
// up to two hours (end of summer time) is no midnight.
class LogReader {
 public:
  enum class Source : std::uint8_t { kLog, kJournal };

  // Adds to `log`, which must outlive the reader.
  explicit LogReader(Log& log, Source source = Source::kLog, const ReaderLimits& limits = {});

  // The next bytes. Lines that are complete become records; the rest waits.
  void Feed(std::string_view bytes);
  // Takes what waits (a last line without an end) as a line.
  void Finish();
  // Gives the records of the present block their dates, as far as it is known. A new block and Finish do so,
  // too.
  void SettleDates();

  // Fed so far.
  std::uint64_t Bytes() const { return bytes_; }
  // Records from here on may still change: their block goes on.
  std::size_t FirstUnsettled() const;

 private:
  void TakeLine(std::string_view line);
  void TakeHeader(std::string_view line);
  void TakeRecord(std::string_view line);
  void Drop(std::string_view line, DropReason reason);
  void StartBlock(Block block);
  std::uint8_t InternSText(std::string_view text);
  void AddDistance(const Block& block, Record& record) const;

  Log* log_;
  Source source_;
  ReaderLimits limits_;
  std::string waiting_;        // the start of a line whose end has not come
  bool after_return_ = false;  // a line feed now belongs to the line end before it
  bool in_block_ = false;      // the last block of the log is ours
  std::uint64_t bytes_ = 0;
  std::uint64_t line_offset_ = 0;  // where the present line begins
  std::uint64_t line_number_ = 0;
};

}  // namespace orvandi
