#include <QXmlStreamWriter>
#include <algorithm>
#include <cmath>
#include <set>
#include <utility>
#include <vector>

#include "analysis/distribution.h"
#include "analysis/palette.h"
#include "analysis/samples.h"
#include "analysis/summary.h"
#include "export/row_writer.h"

namespace orvandi {
namespace {

const QString kKml = QStringLiteral("http://www.opengis.net/kml/2.2");
constexpr int kColours = 32;

// KML writes colours as alpha, blue, green, red.
QString KmlColour(const Colour& colour) {
  return QStringLiteral("ff%1%2%3")
      .arg(colour.blue, 2, 16, QLatin1Char('0'))
      .arg(colour.green, 2, 16, QLatin1Char('0'))
      .arg(colour.red, 2, 16, QLatin1Char('0'));
}

QString StyleName(int colour) {
  return QStringLiteral("level%1").arg(colour);
}

// KML 2.2 (OGC 07-147r2): a folder a block, dots coloured by field strength.
class KmlWriter : public RowWriter {
 public:
  explicit KmlWriter(QIODevice& device) : xml_(&device) {
    xml_.setAutoFormatting(true);
    xml_.setAutoFormattingIndent(0);  // a line an element; blanks would be a third of the file
  }

  void Begin(std::span<const NamedLog> logs, const ExportOptions& options) override {
    ChooseScale(logs, options);
    xml_.writeStartDocument();
    xml_.writeDefaultNamespace(kKml);
    Start("kml");
    Start("Document");
    Text("name", QStringLiteral("Field strength"));
    if (!logs.empty()) {
      Text("description",
           QStringLiteral("Dark blue: %1 dB\u00B5V/m and less. Yellow: %2 dB\u00B5V/m and more.")
               .arg(QLatin1String(FixedNumber(lowest_db_, 1)), QLatin1String(FixedNumber(highest_db_, 1))));
    }
    for (int colour = 0; colour < kColours; ++colour) {
      WriteStyle(StyleName(colour), KmlColour(Viridis(static_cast<double>(colour) / (kColours - 1))));
    }
    WriteStyle(QStringLiteral("unknown"), QStringLiteral("ff808080"));
    WriteTransmitters(logs);
  }

  void BeginBlock(const Row& first) override {
    const Block& block = *first.block;
    Start("Folder");
    const QString when =
        block.has_header ? ToQt(DateTimeText(block.time_s)) : QStringLiteral("without a header");
    Text("name",
         (QStringLiteral("%1 %2 %3").arg(when, XmlText(block.rig), XmlText(block.antenna))).trimmed());
    Text("visibility", QStringLiteral("1"));
  }

  void Write(const Row& row) override {
    const Record& record = *row.record;
    Start("Placemark");
    if (row.block->has_header) {
      Start("TimeStamp");
      Text("when", QLatin1String(times_.WithOffset(record.time_s)));
      xml_.writeEndElement();
    }
    Text("styleUrl", QLatin1Char('#') + StyleOf(row.DbMicrovoltPerM()));
    Start("ExtendedData");
    Data("s", XmlText(row.s_text));
    Data("raw", record.raw >= 0 ? QString::number(record.raw) : QString());
    Data("uv", QLatin1String(ShortNumber(row.microvolt)));
    Data("mv_per_m", QLatin1String(ShortNumber(row.millivolt_per_m)));
    Data("dbuv_per_m", QLatin1String(FixedNumber(row.DbMicrovoltPerM(), 2)));
    Data("dbm", QLatin1String(FixedNumber(row.Dbm(), 2)));
    Data("distance_km", QLatin1String(FixedNumber(record.distance_km, 4)));
    Data("bearing_from_tx_deg", QLatin1String(FixedNumber(record.bearing_deg, 2)));
    Data("marks", QLatin1String(MarksText(record.marks)));
    xml_.writeEndElement();
    WritePoint(record.longitude_deg, record.latitude_deg);
    xml_.writeEndElement();
  }

  void EndBlock() override { xml_.writeEndElement(); }
  void End() override { xml_.writeEndDocument(); }
  bool Ok() const override { return !xml_.hasError(); }

 private:
  void Start(const char* name) { xml_.writeStartElement(kKml, QLatin1String(name)); }
  void Text(const char* name, const QString& text) { xml_.writeTextElement(kKml, QLatin1String(name), text); }
  void Data(const char* name, const QString& value) {
    if (value.isEmpty()) return;
    Start("Data");
    xml_.writeAttribute(QStringLiteral("name"), QLatin1String(name));
    Text("value", value);
    xml_.writeEndElement();
  }

  // From the 2nd to the 98th hundredth, so that one odd reading does not take the colour from all others.
  void ChooseScale(std::span<const NamedLog> logs, const ExportOptions& options) {
    SampleChoice choice;
    choice.recalibration = options.recalibration;
    choice.shown_marks = options.shown_marks;
    choice.hidden = options.hidden;
    std::vector<double> levels;
    for (const Sample& sample : CollectSamples(logs, choice)) levels.push_back(sample.level_db);
    if (levels.empty()) return;
    lowest_db_ = Quantile(levels, 0.02);
    highest_db_ = Quantile(levels, 0.98);
  }

  QString StyleOf(double level_db) const {
    if (!std::isfinite(level_db)) return QStringLiteral("unknown");
    const double width = highest_db_ - lowest_db_;
    const double share = width > 0 ? std::clamp((level_db - lowest_db_) / width, 0.0, 1.0) : 0.5;
    return StyleName(static_cast<int>(std::lround(share * (kColours - 1))));
  }

  void WriteStyle(const QString& name, const QString& colour) {
    Start("Style");
    xml_.writeAttribute(QStringLiteral("id"), name);
    Start("IconStyle");
    Text("color", colour);
    Text("scale", QStringLiteral("0.4"));
    Start("Icon");
    Text("href", QStringLiteral("http://maps.google.com/mapfiles/kml/shapes/placemark_circle.png"));
    xml_.writeEndElement();
    xml_.writeEndElement();
    Start("LabelStyle");
    Text("scale", QStringLiteral("0"));
    xml_.writeEndElement();
    xml_.writeEndElement();
  }

  void WritePoint(double longitude_deg, double latitude_deg) {
    Start("Point");
    Text("coordinates", QLatin1String(FixedNumber(longitude_deg, 7) + ',' + FixedNumber(latitude_deg, 7)));
    xml_.writeEndElement();
  }

  void WriteTransmitters(std::span<const NamedLog> logs) {
    std::set<std::pair<double, double>> known;
    for (const NamedLog& named : logs) {
      for (const Block& block : named.log->blocks) {
        if (!block.HasTransmitter()) continue;
        if (!known.emplace(block.tx_longitude_deg, block.tx_latitude_deg).second) continue;
        Start("Placemark");
        Text("name", QStringLiteral("Transmitter"));
        WritePoint(block.tx_longitude_deg, block.tx_latitude_deg);
        xml_.writeEndElement();
      }
    }
  }

  QXmlStreamWriter xml_;
  LocalTimes times_;
  double lowest_db_ = 0;
  double highest_db_ = 0;
};

}  // namespace

std::unique_ptr<RowWriter> MakeKmlWriter(QIODevice& device) {
  return std::make_unique<KmlWriter>(device);
}

}  // namespace orvandi
