#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <cmath>

#include "analysis/summary.h"
#include "export/row_writer.h"

namespace orvandi {
namespace {

constexpr qsizetype kWriteBytes = 1 << 16;

QJsonValue Number(double value, int decimals) {
  return std::isfinite(value) ? QJsonValue(Rounded(value, decimals)) : QJsonValue();
}

// The float's shortest text as a number: 30.8 and not 30.799999237060547.
QJsonValue Number(float value) {
  return std::isfinite(value) ? QJsonValue(ShortNumber(value).toDouble()) : QJsonValue();
}

QJsonValue Text(std::string_view text) {
  return text.empty() ? QJsonValue() : QJsonValue(ToQt(text));
}

// RFC 7946: one feature a line, so that a million of them never lie in memory at once.
class GeoJsonWriter : public RowWriter {
 public:
  explicit GeoJsonWriter(QIODevice& device) : device_(device) {}

  void Begin(std::span<const NamedLog> /*logs*/, const ExportOptions& /*options*/) override {
    text_ = "{\"type\":\"FeatureCollection\",\"features\":[";
  }

  void BeginBlock(const Row& first) override {
    const Block& block = *first.block;
    common_ = QJsonObject{
        {QStringLiteral("rig"), Text(block.rig)},
        {QStringLiteral("mode"), Text(block.mode)},
        {QStringLiteral("frequency_khz"),
         block.frequency_khz > 0 ? QJsonValue(block.frequency_khz) : QJsonValue()},
        {QStringLiteral("antenna"), Text(block.antenna)},
        {QStringLiteral("tx_latitude"), Number(block.tx_latitude_deg, 7)},
        {QStringLiteral("tx_longitude"), Number(block.tx_longitude_deg, 7)},
        {QStringLiteral("tx_height_m"), Number(block.tx_height_m)},
        {QStringLiteral("log"), Text(first.named->name)},
        {QStringLiteral("block"), static_cast<qint64>(first.block_number)},
    };
  }

  void Write(const Row& row) override {
    const Record& record = *row.record;
    QJsonObject properties = common_;
    const auto set = [&](const char* name, const QJsonValue& value) {
      properties.insert(QLatin1String(name), value);
    };
    set("time",
        row.block->has_header ? QJsonValue(QLatin1String(times_.WithOffset(record.time_s))) : QJsonValue());
    set("time_of_day", ToQt(TimeOfDayText(record.time_s)));
    set("distance_km", Number(record.distance_km, 4));
    set("bearing_from_tx_deg", Number(record.bearing_deg, 2));
    set("height_m", Number(record.height_m));
    set("raw", record.raw >= 0 ? QJsonValue(record.raw) : QJsonValue());
    set("s", Text(row.s_text));
    set("uv", Number(row.microvolt));
    set("mv_per_m", Number(row.millivolt_per_m));
    set("dbuv_per_m", Number(row.DbMicrovoltPerM(), 2));
    set("dbm", Number(row.Dbm(), 2));
    set("marks", ToQt(MarksText(record.marks).toStdString()));
    set("line", static_cast<qint64>(record.line));
    const QJsonObject geometry{{QStringLiteral("type"), QStringLiteral("Point")},
                               {QStringLiteral("coordinates"), QJsonArray{Rounded(record.longitude_deg, 7),
                                                                          Rounded(record.latitude_deg, 7)}}};
    const QJsonObject feature{{QStringLiteral("type"), QStringLiteral("Feature")},
                              {QStringLiteral("geometry"), geometry},
                              {QStringLiteral("properties"), properties}};
    text_ += (any_ ? ",\n" : "\n") + QJsonDocument(feature).toJson(QJsonDocument::Compact);
    any_ = true;
    if (text_.size() >= kWriteBytes) Flush();
  }

  void End() override {
    text_ += "\n]}\n";
    Flush();
  }
  bool Ok() const override { return ok_; }

 private:
  void Flush() {
    ok_ = ok_ && device_.write(text_) == text_.size();
    text_.clear();
  }

  QIODevice& device_;
  LocalTimes times_;
  QByteArray text_;
  QJsonObject common_;  // what the records of a block have in common
  bool any_ = false;
  bool ok_ = true;
};

}  // namespace

std::unique_ptr<RowWriter> MakeGeoJsonWriter(QIODevice& device) {
  return std::make_unique<GeoJsonWriter>(device);
}

}  // namespace orvandi
