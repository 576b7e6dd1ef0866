#include "window/report.h"

#include <QBuffer>
#include <QPdfWriter>
#include <QSaveFile>

#include "analysis/summary.h"
#include "log/cleaning.h"
#include "map/map_view.h"
#include "plots/level_axis.h"
#include "window/picture_export.h"
#include "window/plot_deck.h"
#include "window/record_text.h"
#include "window/session.h"

namespace orvandi {
namespace {

constexpr double kMillimetresPerInch = 25.4;
constexpr int kDpi = 96;  // a unit of the page is a pixel of the screen, so the views keep their look
constexpr double kUnit = kDpi / kMillimetresPerInch;  // units to a millimetre
constexpr double kWidth = 180;                        // of the printed area in millimetres
constexpr double kMapHeight = 150;

using Rows = QList<std::pair<QString, QString>>;

// The page in millimetres.
class Page {
 public:
  Page(QPdfWriter& writer, QPainter& painter) : writer_(writer), painter_(painter) {}

  void Next() {
    writer_.newPage();
    y_ = 0;
  }
  void Title(const QString& text) { Text(text, 16, true, 10); }
  void Heading(const QString& text) { Text(text, 11, true, 7); }
  void Line(const QString& text) { Text(text, 9, false, 5); }
  void Table(const Rows& rows) {
    for (const auto& [name, value] : rows) {
      Font(9, false);
      painter_.setPen(QColor(0x5B, 0x63, 0x6A));
      painter_.drawText(QRectF(0, y_ * kUnit, 55 * kUnit, 5 * kUnit), Qt::AlignLeft | Qt::AlignVCenter, name);
      painter_.setPen(Qt::black);
      painter_.drawText(QRectF(57 * kUnit, y_ * kUnit, (kWidth - 57) * kUnit, 5 * kUnit),
                        Qt::AlignLeft | Qt::AlignVCenter, value);
      y_ += 5;
    }
    y_ += 3;
  }
  QRectF Take(double height) {
    const QRectF area(0, y_ * kUnit, kWidth * kUnit, height * kUnit);
    y_ += height + 4;
    return area;
  }
  void Frame(const QRectF& area) {
    painter_.setPen(QPen(QColor(0xA5, 0xAC, 0xB2), 0.2 * kUnit));
    painter_.setBrush(Qt::NoBrush);
    painter_.drawRect(area);
  }

 private:
  void Font(double points, bool bold) {
    QFont font = painter_.font();
    font.setPointSizeF(points);
    font.setBold(bold);
    painter_.setFont(font);
  }
  void Text(const QString& text, double points, bool bold, double height) {
    Font(points, bold);
    painter_.setPen(Qt::black);
    const QRectF room(0, y_ * kUnit, kWidth * kUnit, height * kUnit * 4);
    const QRectF taken =
        painter_.boundingRect(room, static_cast<int>(Qt::AlignLeft | Qt::AlignTop) | Qt::TextWordWrap, text);
    painter_.drawText(room, static_cast<int>(Qt::AlignLeft | Qt::AlignTop) | Qt::TextWordWrap, text);
    y_ += std::max(height, taken.height() / kUnit + 1);
  }

  QPdfWriter& writer_;
  QPainter& painter_;
  double y_ = 0;
};

QString Names(const Session& session) {
  QStringList names;
  for (const OpenLog& log : session.Logs()) names << log.name;
  return names.join(QStringLiteral(", "));
}

Rows NumberRows(const Session& session, const Summary& summary) {
  Rows rows;
  const Unit unit = session.View().unit;
  std::vector<double> levels;
  for (std::size_t i = 0; i < session.View().Count(); ++i) {
    if (session.View().Shows(i)) levels.push_back(session.View().level_db[i]);
  }
  const Distribution level = Describe(levels);
  rows << std::pair(QStringLiteral("Log"), Names(session));
  if (summary.has_time) {
    rows << std::pair(QStringLiteral("From, to"), QString::fromStdString(DateTimeText(summary.first_s)) +
                                                      QStringLiteral("  \u2013  ") +
                                                      QString::fromStdString(DateTimeText(summary.last_s)));
  }
  rows << std::pair(QStringLiteral("Driven"), QStringLiteral("%1 km").arg(summary.driven_km, 0, 'f', 1));
  rows << std::pair(QStringLiteral("Records"), QStringLiteral("%1 in %2 blocks, %3 of them in the views")
                                                   .arg(summary.marks.records)
                                                   .arg(summary.blocks)
                                                   .arg(session.ShownCount()));
  if (level.count > 0) {
    rows << std::pair(
        QStringLiteral("Signal"),
        QStringLiteral("median %1, 10 % below %2, 90 % below %3")
            .arg(LevelText(level.median, unit), LevelText(level.p10, unit), LevelText(level.p90, unit)));
  }
  rows << std::pair(QStringLiteral("With distance"), LawText(session.FittedLaw(), unit));
  if (session.Calibration() != nullptr) {
    rows << std::pair(QStringLiteral("Recalibrated with"),
                      QStringLiteral("%1, median shift %2 dB")
                          .arg(QString::fromStdString(session.Calibration()->Header()).trimmed())
                          .arg(session.RecalibrationShift(), 0, 'f', 1));
  }
  return rows;
}

Rows CleaningRows(const Session& session, const Summary& summary) {
  const std::array<std::size_t, 5> counts = {summary.marks.no_fix, summary.marks.no_position,
                                             summary.marks.old_fix, summary.marks.dead_rig,
                                             summary.marks.unknown_signal};
  const std::array<std::uint8_t, 5> marks = {kNoFix, kNoPosition, kOldFix, kDeadRig, kUnknownSignal};
  const std::array<const char*, 5> names = {"Without a fix", "Without a position", "Old fix", "Dead rig",
                                            "Unknown signal"};
  Rows rows;
  for (std::size_t i = 0; i < counts.size(); ++i) {
    const bool shown = (session.ShownMarks() & marks.at(i)) != 0;
    rows << std::pair(QString::fromLatin1(names.at(i)),
                      QStringLiteral("%1 records, %2")
                          .arg(counts.at(i))
                          .arg(shown ? QStringLiteral("shown all the same") : QStringLiteral("left out")));
  }
  rows << std::pair(QStringLiteral("Hidden by hand"), RecordsText(session.HiddenCount()));
  rows << std::pair(QStringLiteral("Not understood"), QStringLiteral("%1 lines").arg(summary.dropped_lines));
  return rows;
}

void Write(QPdfWriter& writer, const Session& session, MapView& map, PlotDeck& plots) {
  QCPPainter painter(&writer);
  painter.setMode(QCPPainter::pmVectorized);
  const std::vector<NamedLog> logs = session.NamedLogs();
  const Summary summary = Summarise(logs, session.Calibration());
  Page page(writer, painter);
  page.Title(QStringLiteral("Field strength on the road"));
  page.Table(NumberRows(session, summary));
  page.Heading(QStringLiteral("Map"));
  const QRectF map_area = page.Take(kMapHeight);
  PaintMap(painter, map, map_area);
  page.Frame(map_area);
  page.Heading(QStringLiteral("Cleaning"));
  page.Table(CleaningRows(session, summary));

  page.Next();
  const std::array<std::pair<PlotDeck::Kind, double>, 4> panels = {{{PlotDeck::kTime, 105},
                                                                    {PlotDeck::kDistance, 105},
                                                                    {PlotDeck::kPattern, 120},
                                                                    {PlotDeck::kDistribution, 95}}};
  for (const auto& [kind, height] : panels) {
    if (kind == PlotDeck::kPattern) page.Next();
    Plot* plot = plots.All().at(kind);
    page.Heading(plot->accessibleName());
    page.Line(plots.Caption(kind));
    PaintPlot(painter, *plot, page.Take(height));
  }
}

}  // namespace

QString SaveReport(const Session& session, MapView& map, PlotDeck& plots, const QString& path) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  {
    QPdfWriter writer(&buffer);
    writer.setTitle(QStringLiteral("Field strength on the road: ") + Names(session));
    writer.setCreator(QStringLiteral("Orvandi"));
    writer.setResolution(kDpi);
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageMargins(QMarginsF(15, 15, 15, 15), QPageLayout::Millimeter);
    Write(writer, session, map, plots);
  }
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
    return QStringLiteral("%1 cannot be written: %2").arg(path, file.errorString());
  }
  return {};
}

}  // namespace orvandi
