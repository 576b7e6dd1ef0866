#include "cli/summary_text.h"

#include <QStringList>
#include <array>
#include <utility>

#include "analysis/summary.h"
#include "export/row.h"

namespace orvandi {
namespace {

constexpr std::size_t kMostLinesTold = 20;

QString Db(double value) {
  return QLatin1String(FixedNumber(value, 1));
}

// "1 record", "2 records".
QString Counted(std::uint64_t count, const char* what) {
  return QStringLiteral("%1 %2%3").arg(count).arg(QLatin1String(what),
                                                  count == 1 ? QString() : QStringLiteral("s"));
}

QString Item(const char* name, const QString& text) {
  return QStringLiteral("  %1%2\n").arg(QLatin1String(name), -16).arg(text);
}

QString RecordsText(const Summary& summary) {
  QString text = QStringLiteral("%1 in %2").arg(summary.marks.records).arg(Counted(summary.blocks, "block"));
  if (summary.pending > 0) text += QStringLiteral(", %1 of them not yet in the log").arg(summary.pending);
  return text;
}

QString LeftOutText(const MarkCounts& marks) {
  const std::array<std::pair<std::size_t, Mark>, 5> counts = {{{marks.no_fix, kNoFix},
                                                               {marks.no_position, kNoPosition},
                                                               {marks.old_fix, kOldFix},
                                                               {marks.dead_rig, kDeadRig},
                                                               {marks.unknown_signal, kUnknownSignal}}};
  QStringList parts;
  for (const auto& [count, mark] : counts) {
    if (count > 0) parts << QStringLiteral("%1 %2").arg(count).arg(QLatin1String(MarksText(mark)));
  }
  return parts.join(QStringLiteral(", "));
}

QString LawText(const Law& law) {
  const QString range =
      QStringLiteral("%1 to %2 km")
          .arg(QLatin1String(FixedNumber(law.nearest_km, 2)), QLatin1String(FixedNumber(law.farthest_km, 2)));
  const QString level = QStringLiteral("%1 dB\u00B5V/m at 1 km").arg(Db(law.level_at_1km_db));
  if (law.kind == Law::Kind::kFreeSpace) {
    return QStringLiteral("%1 if it falls as in free space; %2 is too little to say more").arg(level, range);
  }
  return QStringLiteral("%1, exponent %2 (free space 2), spread %3 dB, from %4")
      .arg(level, QLatin1String(FixedNumber(law.exponent, 2)), Db(law.spread_db), range);
}

QString DroppedText(const NamedLog& named) {
  const Log& log = *named.log;
  QString text;
  std::size_t told = 0;
  for (const DroppedLine& line : log.dropped) {
    if (told++ == kMostLinesTold) break;
    text += QStringLiteral("    %1 line %2: %3: %4\n")
                .arg(ToQt(named.name), QString::number(line.line), ToQt(ReasonText(line.reason)),
                     ToQt(line.text));
  }
  if (log.dropped_count > kMostLinesTold) {
    text += QStringLiteral("    and %1 more\n").arg(log.dropped_count - kMostLinesTold);
  }
  return text;
}

QString LayersText(std::span<const NamedLog> logs, const Recalibration* recalibration) {
  const Layers layers = MakeLayers(logs, GroupBy::kAntenna);
  if (layers.layers.size() < 2) return {};
  QString text;
  for (std::uint32_t index = 0; index < layers.layers.size(); ++index) {
    SampleChoice choice;
    choice.recalibration = recalibration;
    choice.layers = &layers;
    choice.layer = index;
    std::vector<double> levels;
    for (const Sample& sample : CollectSamples(logs, choice)) levels.push_back(sample.level_db);
    const Distribution level = Describe(std::move(levels));
    text += QStringLiteral("    %1: %2, median %3 dB\u00B5V/m\n")
                .arg(ToQt(layers.layers[index].name), Counted(layers.layers[index].record_count, "record"),
                     level.count > 0 ? Db(level.median) : QStringLiteral("?"));
  }
  return text;
}

}  // namespace

QString SummaryText(std::span<const NamedLog> logs, const Recalibration* recalibration) {
  const Summary summary = Summarise(logs, recalibration);
  QStringList names;
  for (const NamedLog& named : logs) names << ToQt(named.name);
  QString text = names.join(QStringLiteral(", ")) + QLatin1Char('\n');
  text += Item("records", RecordsText(summary));
  if (summary.has_time) {
    text += Item("time", ToQt(DateTimeText(summary.first_s)) + QStringLiteral(" to ") +
                             ToQt(DateTimeText(summary.last_s)));
  }
  text += Item("shown", QString::number(summary.marks.shown));
  const QString left_out = LeftOutText(summary.marks);
  if (!left_out.isEmpty()) text += Item("left out", left_out);
  text += Item("driven", QLatin1String(FixedNumber(summary.driven_km, 2)) + QStringLiteral(" km"));
  if (summary.level.count > 0) {
    text += Item("field strength",
                 QStringLiteral("median %1 dB\u00B5V/m, 10 % below %2, 10 % above %3")
                     .arg(Db(summary.level.median), Db(summary.level.p10), Db(summary.level.p90)));
  }
  if (summary.law.kind != Law::Kind::kNone) text += Item("over distance", LawText(summary.law));
  const QString layers = LayersText(logs, recalibration);
  if (!layers.isEmpty()) text += QStringLiteral("  antennas\n") + layers;
  text += Item("not understood", Counted(summary.dropped_lines, "line"));
  for (const NamedLog& named : logs) text += DroppedText(named);
  return text;
}

}  // namespace orvandi
