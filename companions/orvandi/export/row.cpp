#include "export/row.h"

#include <QDateTime>
#include <array>
#include <charconv>
#include <cmath>
#include <string>

#include "analysis/summary.h"
#include "analysis/units.h"
#include "log/cleaning.h"

namespace orvandi {
namespace {

constexpr std::int64_t kQuarterS = 900;

QByteArray Iso(std::int64_t time_s) {
  return QByteArray::fromStdString(DateText(time_s) + "T" + TimeOfDayText(time_s));
}

QByteArray OffsetText(int offset_s) {
  if (offset_s == 0) return "+00:00";
  const std::string digits = TimeOfDayText(std::abs(offset_s));
  return (offset_s < 0 ? "-" : "+") + QByteArray::fromStdString(digits.substr(0, 5));
}

}  // namespace

double Row::DbMicrovoltPerM() const {
  return orvandi::DbMicrovoltPerM(millivolt_per_m);
}

double Row::Dbm() const {
  return DbmOfMicrovolt(microvolt);
}

Row RowOf(const NamedLog& named, const Record& record, const Recalibration* recalibration) {
  Row row;
  row.named = &named;
  row.block = &named.log->BlockOf(record);
  row.record = &record;
  row.block_number = std::size_t{record.block} + 1;
  if (recalibration == nullptr) {
    row.microvolt = record.microvolt;
    row.millivolt_per_m = record.millivolt_per_m;
    row.s_text = named.log->SText(record);
  } else {
    const Recalibration::Reading& reading = recalibration->Of(record.raw);
    row.microvolt = reading.microvolt;
    row.millivolt_per_m = reading.millivolt_per_m;
    row.s_text = reading.s_text;
  }
  return row;
}

QByteArray FixedNumber(double value, int decimals) {
  return std::isfinite(value) ? QByteArray::number(value, 'f', decimals) : QByteArray();
}

QByteArray ShortNumber(float value) {
  if (!std::isfinite(value)) return {};
  std::array<char, 64> buffer{};
  const auto end =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed);
  return {buffer.data(), end.ptr - buffer.data()};
}

double Rounded(double value, int decimals) {
  const double scale = std::pow(10, decimals);
  return std::round(value * scale) / scale;
}

int LocalTimes::OffsetOf(std::int64_t time_s) {
  const std::int64_t quarter = time_s / kQuarterS;
  if (quarter != quarter_) {
    const QDateTime as_utc = QDateTime::fromSecsSinceEpoch(time_s, Qt::UTC);
    offset_s_ = QDateTime(as_utc.date(), as_utc.time(), Qt::LocalTime).offsetFromUtc();
    quarter_ = quarter;
  }
  return offset_s_;
}

QByteArray LocalTimes::WithOffset(std::int64_t time_s) {
  return Iso(time_s) + OffsetText(OffsetOf(time_s));
}

QByteArray LocalTimes::Utc(std::int64_t time_s) {
  return Iso(time_s - OffsetOf(time_s)) + 'Z';
}

QByteArray MarksText(std::uint8_t marks) {
  QByteArray text;
  for (const MarkName& name : MarkNames()) {
    if ((marks & name.mark) == 0) continue;
    if (!text.isEmpty()) text += "; ";
    text.append(name.text.data(), static_cast<qsizetype>(name.text.size()));
  }
  return text;
}

QString ToQt(std::string_view utf8) {
  return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

QString XmlText(std::string_view utf8) {
  QString text = ToQt(utf8);
  text.removeIf([](QChar character) { return character.unicode() >= 0xFFFE; });
  return text;
}

}  // namespace orvandi
