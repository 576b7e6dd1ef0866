#include "log/log_reader.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

#include "log/block_dates.h"
#include "log/geo.h"
#include "log/text_encoding.h"

namespace orvandi {
namespace {

constexpr std::size_t kLongestDroppedText = 200;  // bytes of UTF-8
constexpr std::size_t kMostSTexts = 255;
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

bool IsBinary(std::string_view line) {
  return std::any_of(line.begin(), line.end(), [](char character) {
    const auto code = static_cast<unsigned char>(character);
    return code < 0x20 && character != '\t';
  });
}

// Finds line ends of either kind, each place of the bytes looked at once.
class LineEnds {
 public:
  explicit LineEnds(std::string_view bytes) : end_(bytes.data() + bytes.size()) {}

  // How many bytes stand before the next line end, or to the end when there is none. `rest` is a tail of the
  // bytes.
  std::size_t Next(std::string_view rest) {
    const char* start = rest.data();
    if (feed_ == nullptr || feed_ < start) feed_ = Find(start, '\n');
    if (return_ == nullptr || return_ < start) return_ = Find(start, '\r');
    return static_cast<std::size_t>(std::min(feed_, return_) - start);
  }

 private:
  const char* Find(const char* start, char character) const {
    const auto* found = std::memchr(start, character, static_cast<std::size_t>(end_ - start));
    return found == nullptr ? end_ : static_cast<const char*>(found);
  }

  const char* end_;
  const char* feed_ = nullptr;
  const char* return_ = nullptr;
};

std::uint32_t LineNumber(std::uint64_t number) {
  return static_cast<std::uint32_t>(
      std::min<std::uint64_t>(number, std::numeric_limits<std::uint32_t>::max()));
}

}  // namespace

LogReader::LogReader(Log& log, Source source, const ReaderLimits& limits)
    : log_(&log), source_(source), limits_(limits) {
  if (log_->s_texts.empty()) log_->s_texts.emplace_back();
}

void LogReader::Feed(std::string_view bytes) {
  LineEnds ends(bytes);
  while (!bytes.empty()) {
    if (after_return_ && bytes.front() == '\n') {
      bytes.remove_prefix(1);
      ++bytes_;
      line_offset_ = bytes_;
    }
    after_return_ = false;
    const std::size_t length = ends.Next(bytes);
    const std::string_view piece = bytes.substr(0, length);
    if (length == bytes.size()) {
      const std::size_t room = limits_.longest_line + 1 - std::min(waiting_.size(), limits_.longest_line + 1);
      waiting_.append(piece.substr(0, room));
      bytes_ += length;
      return;
    }
    after_return_ = bytes[length] == '\r';
    bytes_ += length + 1;
    bytes.remove_prefix(length + 1);
    if (waiting_.empty()) {
      TakeLine(piece);
    } else {
      waiting_.append(piece.substr(0, limits_.longest_line + 1));
      TakeLine(std::exchange(waiting_, {}));
    }
    line_offset_ = bytes_;
  }
}

void LogReader::Finish() {
  if (!waiting_.empty()) TakeLine(std::exchange(waiting_, {}));
  line_offset_ = bytes_;
  SettleDates();
}

void LogReader::TakeLine(std::string_view line) {
  ++line_number_;
  if (line.size() > limits_.longest_line) return Drop(line, DropReason::kTooLong);
  if (line_number_ == 1 && line.starts_with(kUtf8Mark)) line.remove_prefix(kUtf8Mark.size());
  if (IsBinary(line)) return Drop(line, DropReason::kBinary);
  switch (KindOf(line)) {
    case LineKind::kBlank:
    case LineKind::kDashes:
      return;
    case LineKind::kHeader:
      return TakeHeader(line);
    case LineKind::kRecord:
      return TakeRecord(line);
    case LineKind::kOther:
      return Drop(line, DropReason::kForeign);
  }
}

void LogReader::TakeHeader(std::string_view line) {
  const auto header = ParseHeader(line);
  if (!header) Drop(line, DropReason::kBadHeader);
  if (header && !header->complete) Drop(line, DropReason::kTorn);
  // Records after a header that cannot be read are not of the block before it.
  StartBlock(header ? header->block : Block());
}

void LogReader::TakeRecord(std::string_view line) {
  if (log_->records.size() >= limits_.most_records) return Drop(line, DropReason::kTooMany);
  ParsedRecord parsed = ParseRecord(line);
  if (parsed.fault == RecordFault::kTorn) return Drop(line, DropReason::kTorn);
  if (parsed.fault == RecordFault::kBadTime) return Drop(line, DropReason::kBadTime);
  if (!in_block_) {
    StartBlock({});
    log_->blocks.back().line = LineNumber(line_number_);
  }
  Block& block = log_->blocks.back();
  Record& record = parsed.record;
  record.offset = line_offset_;
  record.line = LineNumber(line_number_);
  record.block = static_cast<std::uint32_t>(log_->blocks.size() - 1);
  record.s_text = InternSText(parsed.s_text);
  AddDistance(block, record);
  log_->records.push_back(record);
  ++block.record_count;
}

void LogReader::AddDistance(const Block& block, Record& record) const {
  if (!block.HasTransmitter() || !record.HasPosition()) return;
  const Place transmitter{block.tx_latitude_deg, block.tx_longitude_deg};
  const Place car{record.latitude_deg, record.longitude_deg};
  record.distance_km = static_cast<float>(DistanceKm(transmitter, car));
  record.bearing_deg = static_cast<float>(BearingDeg(transmitter, car));
}

void LogReader::Drop(std::string_view line, DropReason reason) {
  ++log_->dropped_count;
  if (log_->dropped.size() >= kMostDropped) return;
  DroppedLine dropped;
  dropped.line = line_number_;
  // Three times as many bytes hold at least as many characters as are kept.
  dropped.text = ToUtf8(line.substr(0, 3 * kLongestDroppedText));
  dropped.text.resize(CutUtf8(dropped.text, kLongestDroppedText).size());
  dropped.reason = reason;
  dropped.pending = source_ == Source::kJournal;
  log_->dropped.push_back(std::move(dropped));
}

void LogReader::StartBlock(Block block) {
  SettleDates();
  block.first_record = log_->records.size();
  block.record_count = 0;
  block.line = LineNumber(line_number_);
  block.pending = source_ == Source::kJournal;
  log_->blocks.push_back(std::move(block));
  in_block_ = true;
}

std::uint8_t LogReader::InternSText(std::string_view text) {
  auto& texts = log_->s_texts;
  const auto same = [&](const std::string& known) { return known == text; };
  if (const auto found = std::find_if(texts.begin(), texts.end(), same); found != texts.end()) {
    return static_cast<std::uint8_t>(found - texts.begin());
  }
  // Texts of the code page beyond ASCII are stored as UTF-8, and found so.
  const std::string utf8 = ToUtf8(text);
  if (utf8 != text) {
    const auto found = std::find(texts.begin(), texts.end(), utf8);
    if (found != texts.end()) return static_cast<std::uint8_t>(found - texts.begin());
  }
  if (texts.size() >= kMostSTexts) return 0;
  texts.push_back(utf8);
  return static_cast<std::uint8_t>(texts.size() - 1);
}

void LogReader::SettleDates() {
  if (!in_block_) return;
  const Block& block = log_->blocks.back();
  SettleBlockDates(*log_, block, source_ == Source::kJournal || BeginsAtHeader(*log_, block));
}

std::size_t LogReader::FirstUnsettled() const {
  return in_block_ ? log_->blocks.back().first_record : log_->records.size();
}

}  // namespace orvandi
