#include "window/record_text.h"

#include <cmath>

#include "analysis/summary.h"
#include "log/cleaning.h"
#include "logging/journal.h"
#include "plots/level_axis.h"

namespace orvandi {
namespace {

QString FromUtf8(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QString SignalText(const Session& session, std::uint32_t number) {
  const Record& record = session.RecordOf(number);
  const RecordPlace place = session.PlaceOf(number);
  const Log& log = session.Logs()[place.log].file->Content();
  QStringList parts;
  parts << LevelText(session.View().level_db[number], session.View().unit);
  if (session.View().unit != Unit::kSPoint) parts << QString::fromStdString(log.SText(record));
  if (!std::isnan(record.microvolt) && session.View().unit != Unit::kMicrovolt) {
    parts << QStringLiteral("%1 %2").arg(record.microvolt).arg(UnitName(Unit::kMicrovolt));
  }
  if (record.raw >= 0) parts << QStringLiteral("raw %1").arg(record.raw);
  parts.removeAll(QString());
  return parts.join(QStringLiteral(", "));
}

QString FarText(const Record& record) {
  if (std::isnan(record.distance_km)) return QStringLiteral("distance unknown");
  QString text = QStringLiteral("%1 km").arg(record.distance_km, 0, 'f', 2);
  if (!std::isnan(record.bearing_deg)) {
    text += QStringLiteral(", seen from the transmitter at %1%2")
                .arg(std::lround(record.bearing_deg))
                .arg(QChar(0xB0));
  }
  return text;
}

QString RigText(const Block& block) {
  if (!block.has_header) return QStringLiteral("no header");
  QStringList parts{FromUtf8(block.rig), FromUtf8(block.mode)};
  if (block.frequency_khz > 0) parts << QStringLiteral("%1 kHz").arg(block.frequency_khz);
  parts.removeAll(QString());
  return parts.join(QLatin1Char(' '));
}

QString LineText(const Session& session, std::uint32_t number) {
  const RecordPlace place = session.PlaceOf(number);
  const Record& record = session.RecordOf(number);
  const Log& log = session.Logs()[place.log].file->Content();
  const QString& name = session.Logs()[place.log].name;
  return QStringLiteral("%1, line %2")
      .arg(log.BlockOf(record).pending ? JournalOf(name) : name)
      .arg(record.line);
}

}  // namespace

QString JournalOf(const QString& log) {
  return QString::fromStdString(kestrum::JournalPath(log.toStdString()));
}

QString CountText(std::uint64_t count) {
  QString text = QString::number(count);
  constexpr std::uint64_t kGrouped = 10'000;
  constexpr qsizetype kGroup = 3;
  for (qsizetype at = text.size() - kGroup; at > 0 && count >= kGrouped; at -= kGroup)
    text.insert(at, QChar(0x202F));
  return text;
}

QString RecordsText(std::uint64_t count) {
  return CountText(count) + (count == 1 ? QStringLiteral(" record") : QStringLiteral(" records"));
}

QString WhenText(const Log& log, const Record& record) {
  const bool dated = log.BlockOf(record).has_header;
  return QString::fromStdString(dated ? DateTimeText(record.time_s) : TimeOfDayText(record.time_s));
}

QString WhereText(const Record& record) {
  if (!record.HasPosition() || std::isnan(record.latitude_deg)) return QStringLiteral("no position");
  return QStringLiteral("%1%2 %3%4")
      .arg(std::abs(record.latitude_deg), 0, 'f', 5)
      .arg(record.latitude_deg < 0 ? QLatin1Char('S') : QLatin1Char('N'))
      .arg(std::abs(record.longitude_deg), 0, 'f', 5)
      .arg(record.longitude_deg < 0 ? QLatin1Char('W') : QLatin1Char('E'));
}

QString MarksText(const Record& record) {
  QStringList names;
  for (const MarkName& mark : MarkNames()) {
    if ((record.marks & mark.mark) != 0) names << FromUtf8(mark.text);
  }
  return names.join(QStringLiteral(", "));
}

QString RecordLine(const Session& session, std::uint32_t number) {
  const Record& record = session.RecordOf(number);
  const RecordPlace place = session.PlaceOf(number);
  const Log& log = session.Logs()[place.log].file->Content();
  QStringList parts{LineText(session, number), WhenText(log, record), SignalText(session, number),
                    FarText(record), WhereText(record)};
  if (record.marks != 0) parts << MarksText(record);
  return parts.join(QStringLiteral(" \u00B7 "));
}

QString RecordTip(const Session& session, std::uint32_t number) {
  const Record& record = session.RecordOf(number);
  const RecordPlace place = session.PlaceOf(number);
  const OpenLog& open = session.Logs()[place.log];
  const Log& log = open.file->Content();
  const Block& block = log.BlockOf(record);
  QStringList lines;
  lines << QStringLiteral("<b>%1</b>").arg(SignalText(session, number).toHtmlEscaped());
  lines << WhenText(log, record) + QStringLiteral(" \u00B7 ") + WhereText(record);
  lines << FarText(record);
  lines << (RigText(block) + QStringLiteral(" \u00B7 ") + FromUtf8(block.antenna)).toHtmlEscaped();
  if (record.marks != 0) lines << QStringLiteral("marked: ") + MarksText(record);
  lines << QStringLiteral("<b>%1</b>").arg(LineText(session, number).toHtmlEscaped());
  lines << FromUtf8(open.file->LineOf(record)).toHtmlEscaped();
  return QStringLiteral("<p style='white-space:pre'>%1</p>").arg(lines.join(QStringLiteral("<br>")));
}

}  // namespace orvandi
