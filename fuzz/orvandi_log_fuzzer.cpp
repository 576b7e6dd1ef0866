#include <algorithm>
#include <cmath>

#include "analysis/comparison.h"
#include "analysis/layers.h"
#include "analysis/pattern.h"
#include "analysis/recalibration.h"
#include "analysis/samples.h"
#include "analysis/summary.h"
#include "log/cleaning.h"
#include "log/log_reader.h"
#include "log/text_encoding.h"
#include "support/fuzz.h"

// The input is a log, and once more a calibration file, as the mapping program reads them.
namespace kestrum::fuzz {
namespace {

using orvandi::Log;
using orvandi::LogReader;
using orvandi::Record;

bool SameNumber(double a, double b) {
  return a == b || (std::isnan(a) && std::isnan(b));
}

void CheckRecord(const Log& log, const Record& record) {
  Require(record.block < log.blocks.size(), "a record has a block");
  const orvandi::Block& block = log.BlockOf(record);
  const auto index = static_cast<std::size_t>(&record - log.records.data());
  Require(index >= block.first_record && index < block.first_record + block.record_count,
          "and is one of its");
  Require(record.s_text < log.s_texts.size(), "a record has an S text");
  Require(record.raw >= -1 && record.raw <= 255, "raw value");
  if (record.HasPosition()) {
    Require(std::fabs(record.latitude_deg) <= 90 && std::fabs(record.longitude_deg) <= 180, "on the globe");
  }
  if (record.HasPosition() && block.HasTransmitter()) {
    Require(record.distance_km >= 0 && record.distance_km < 20040, "a distance on the globe");
  }
  if (!std::isnan(record.bearing_deg)) {
    Require(record.bearing_deg >= 0 && record.bearing_deg <= 360, "a bearing");
  }
}

void CheckLog(const Log& log) {
  for (const Record& record : log.records) CheckRecord(log, record);
  std::size_t records = 0;
  for (const orvandi::Block& block : log.blocks) {
    Require(block.first_record == records, "blocks follow each other");
    records += block.record_count;
  }
  Require(records == log.records.size(), "every record is in a block");
  Require(log.dropped.size() == std::min<std::uint64_t>(log.dropped_count, orvandi::kMostDropped),
          "dropped lines are listed");
}

Log ReadInPieces(const std::string& bytes, std::size_t step) {
  Log log;
  LogReader reader(log);
  for (std::size_t place = 0; place < bytes.size(); place += step) {
    reader.Feed(std::string_view(bytes).substr(place, step));
    if (place / step % 3 == 0) reader.SettleDates();
  }
  reader.Finish();
  Require(reader.Bytes() == bytes.size(), "every byte is read");
  MarkRuns(log, 0);
  return log;
}

void CheckSame(const Log& whole, const Log& pieces) {
  Require(whole.records.size() == pieces.records.size(), "cuts make no records");
  Require(whole.dropped_count == pieces.dropped_count, "cuts drop no lines");
  for (std::size_t index = 0; index < whole.records.size(); ++index) {
    const Record& a = whole.records[index];
    const Record& b = pieces.records[index];
    Require(a.offset == b.offset && a.line == b.line && a.marks == b.marks && a.time_s == b.time_s &&
                SameNumber(a.distance_km, b.distance_km),
            "cuts change no record");
  }
}

// What stands in the file at a record's place is its line.
void CheckOffsets(const Log& log, const std::string& bytes) {
  for (const Record& record : log.records) {
    Require(record.offset < bytes.size(), "a record lies in the file");
    const auto end = bytes.find_first_of("\r\n", record.offset);
    std::string_view line = std::string_view(bytes).substr(record.offset, end - record.offset);
    if (line.starts_with("\xEF\xBB\xBF")) line.remove_prefix(3);
    const auto parsed = orvandi::ParseRecord(line);
    Require(parsed.fault == orvandi::RecordFault::kNone, "there is a record", line);
    Require(SameNumber(parsed.record.millivolt_per_m, record.millivolt_per_m), "it is this one", line);
  }
}

void CheckStatistics(const Log& log) {
  const std::vector<orvandi::NamedLog> logs = {{&log, "fuzzed"}};
  orvandi::SampleChoice choice;
  choice.shown_marks = orvandi::kAllMarks;
  const auto samples = orvandi::CollectSamples(logs, choice);
  const orvandi::Law law = orvandi::FitLawWithinSectors(samples, 10);
  if (law.kind != orvandi::Law::Kind::kNone) {
    Require(std::isfinite(law.exponent) && std::isfinite(law.level_at_1km_db) && law.spread_db >= 0, "a law");
  }
  std::size_t counted = 0;
  for (const auto& sector : orvandi::AntennaPattern(samples, law, 30).sectors) {
    counted += sector.count;
    Require(sector.lower_quartile_db <= sector.median_db && sector.median_db <= sector.upper_quartile_db,
            "quartiles stand in order");
  }
  Require(counted <= samples.size(), "no sample counts twice");
  orvandi::CompareByPlace(samples, samples, 50, 1);
  for (const auto by : {orvandi::GroupBy::kAntenna, orvandi::GroupBy::kFrequency, orvandi::GroupBy::kDate}) {
    Require(orvandi::MakeLayers(logs, by).of_block[0].size() == log.blocks.size(), "each block has a layer");
  }
  orvandi::Summarise(logs);
}

void CheckRecalibration(const std::string& bytes) {
  orvandi::Recalibration table;
  if (!table.Load(bytes)) return;
  for (int raw = 0; raw < 256; ++raw) {
    const auto& reading = table.Of(raw);
    Require(orvandi::ToUtf8(reading.s_text) == reading.s_text, "texts are UTF-8", reading.s_text);
  }
}

}  // namespace
}  // namespace kestrum::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kestrum::fuzz;
  const std::string bytes = Text(data, size);
  const orvandi::Log whole = ReadInPieces(bytes, std::max<std::size_t>(bytes.size(), 1));
  CheckLog(whole);
  CheckOffsets(whole, bytes);
  CheckSame(whole, ReadInPieces(bytes, 1 + Mix(bytes) % 50));
  CheckStatistics(whole);
  CheckRecalibration(bytes);
  auto rows = bytes;
  for (int row = 0; row < 256; ++row) rows += "\n, , ";
  CheckRecalibration(rows);
  return 0;
}
