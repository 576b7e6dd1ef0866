#include "log/block_dates.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace orvandi {
namespace {

constexpr std::int64_t kDayS = std::int64_t{24} * 3600;
// The clock may be set back under way, by an hour at the end of summer time; a larger step back is a
// midnight.
constexpr std::int64_t kSetBackS = std::int64_t{2} * 3600;
// A header that was written first stands at most this long before its first record.
constexpr std::int64_t kAtOnceS = 120;

std::int64_t TimeOfDay(std::int64_t time_s) {
  const std::int64_t rest = time_s % kDayS;
  return rest < 0 ? rest + kDayS : rest;
}

std::int64_t Midnight(std::int64_t time_s) {
  return time_s - TimeOfDay(time_s);
}

void SettleForward(std::span<Record> records, std::int64_t header_s) {
  std::int64_t midnight = Midnight(header_s);
  std::int64_t before = TimeOfDay(header_s);
  for (Record& record : records) {
    const std::int64_t time = TimeOfDay(record.time_s);
    if (before - time > kSetBackS) midnight += kDayS;
    record.time_s = midnight + time;
    before = time;
  }
}

void SettleBackward(std::span<Record> records, std::int64_t header_s) {
  std::int64_t midnight = Midnight(header_s);
  std::int64_t after = TimeOfDay(header_s);
  for (std::size_t left = records.size(); left > 0; --left) {
    Record& record = records[left - 1];
    const std::int64_t time = TimeOfDay(record.time_s);
    if (time - after > kSetBackS) midnight -= kDayS;
    record.time_s = midnight + time;
    after = time;
  }
}

std::span<Record> RecordsOf(Log& log, const Block& block) {
  return std::span(log.records).subspan(block.first_record, block.record_count);
}

}  // namespace

bool BeginsAtHeader(const Log& log, const Block& block) {
  if (!block.has_header || block.record_count == 0) return false;
  const std::int64_t header = TimeOfDay(block.time_s);
  const std::int64_t first = TimeOfDay(log.records[block.first_record].time_s);
  const std::int64_t last = TimeOfDay(log.records[block.first_record + block.record_count - 1].time_s);
  const std::int64_t to_first = TimeOfDay(first - header);
  const std::int64_t from_last = TimeOfDay(header - last);
  return to_first <= kAtOnceS && to_first < from_last;
}

void SettleBlockDates(Log& log, const Block& block, bool forward) {
  if (!block.has_header) return;
  if (forward) {
    SettleForward(RecordsOf(log, block), block.time_s);
  } else {
    SettleBackward(RecordsOf(log, block), block.time_s);
  }
}

}  // namespace orvandi
