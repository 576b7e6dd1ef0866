#include "analysis/summary.h"
#include "export/row_writer.h"

namespace orvandi {
namespace {

constexpr qsizetype kWriteBytes = 1 << 16;

// A field of RFC 4180: in quotation marks where it holds a comma, a quotation mark or a line end.
QByteArray Field(QByteArray text) {
  if (!text.contains(',') && !text.contains('"') && !text.contains('\n') && !text.contains('\r')) return text;
  return '"' + text.replace('"', "\"\"") + '"';
}

QByteArray Field(std::string_view text) {
  return Field(QByteArray(text.data(), static_cast<qsizetype>(text.size())));
}

class CsvWriter : public RowWriter {
 public:
  explicit CsvWriter(QIODevice& device) : device_(device) {}

  void Begin(std::span<const NamedLog> /*logs*/, const ExportOptions& /*options*/) override {
    text_ =
        "time,time_of_day,latitude,longitude,distance_km,bearing_from_tx_deg,height_m,raw,s,uv,mv_per_m,"
        "dbuv_per_m,dbm,rig,mode,frequency_khz,antenna,tx_latitude,tx_longitude,tx_height_m,marks,log,block,"
        "line\r\n";
  }

  void BeginBlock(const Row& first) override {
    const Block& block = *first.block;
    block_ = ',' + Field(block.rig) + ',' + Field(block.mode) + ',' +
             (block.frequency_khz > 0 ? QByteArray::number(block.frequency_khz, 'g', 12) : QByteArray()) +
             ',' + Field(block.antenna) + ',' + FixedNumber(block.tx_latitude_deg, 7) + ',' +
             FixedNumber(block.tx_longitude_deg, 7) + ',' + ShortNumber(block.tx_height_m) + ',';
    log_ = ',' + Field(first.named->name) + ',' +
           QByteArray::number(static_cast<qulonglong>(first.block_number)) + ',';
  }

  void Write(const Row& row) override {
    const Record& record = *row.record;
    if (row.block->has_header) text_ += times_.WithOffset(record.time_s);
    text_ += ',' + QByteArray::fromStdString(TimeOfDayText(record.time_s));
    text_ += ',' + FixedNumber(record.latitude_deg, 7) + ',' + FixedNumber(record.longitude_deg, 7);
    text_ += ',' + FixedNumber(record.distance_km, 4) + ',' + FixedNumber(record.bearing_deg, 2);
    text_ += ',' + ShortNumber(record.height_m) + ',';
    if (record.raw >= 0) text_ += QByteArray::number(record.raw);
    text_ +=
        ',' + Field(row.s_text) + ',' + ShortNumber(row.microvolt) + ',' + ShortNumber(row.millivolt_per_m);
    text_ += ',' + FixedNumber(row.DbMicrovoltPerM(), 2) + ',' + FixedNumber(row.Dbm(), 2);
    text_ += block_ + MarksText(record.marks) + log_ + QByteArray::number(record.line) + "\r\n";
    if (text_.size() >= kWriteBytes) Flush();
  }

  void End() override { Flush(); }
  bool Ok() const override { return ok_; }
  bool TakesAll() const override { return true; }

 private:
  void Flush() {
    ok_ = ok_ && device_.write(text_) == text_.size();
    text_.clear();
  }

  QIODevice& device_;
  LocalTimes times_;
  QByteArray text_;
  QByteArray block_;  // what the records of a block have in common
  QByteArray log_;
  bool ok_ = true;
};

}  // namespace

std::unique_ptr<RowWriter> MakeCsvWriter(QIODevice& device) {
  return std::make_unique<CsvWriter>(device);
}

}  // namespace orvandi
