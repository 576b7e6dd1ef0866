#include <QXmlStreamWriter>

#include "export/row_writer.h"

namespace orvandi {
namespace {

const QString kGpx = QStringLiteral("http://www.topografix.com/GPX/1/1");
const QString kSignal = QStringLiteral("urn:kestrum:orvandi:1");

// GPX 1.1: a track a log, a segment a block. The log's height is computed from the speed and is no elevation,
// so it is told as what it is, among the extensions.
class GpxWriter : public RowWriter {
 public:
  explicit GpxWriter(QIODevice& device) : xml_(&device) {
    xml_.setAutoFormatting(true);
    xml_.setAutoFormattingIndent(0);  // a line an element; blanks would be a third of the file
  }

  void Begin(std::span<const NamedLog> /*logs*/, const ExportOptions& /*options*/) override {
    xml_.writeStartDocument();
    xml_.writeDefaultNamespace(kGpx);
    xml_.writeNamespace(kSignal, QStringLiteral("signal"));
    xml_.writeStartElement(kGpx, QStringLiteral("gpx"));
    xml_.writeAttribute(QStringLiteral("version"), QStringLiteral("1.1"));
    xml_.writeAttribute(QStringLiteral("creator"), QStringLiteral("Orvandi"));
  }
  void BeginLog(const NamedLog& named) override {
    xml_.writeStartElement(kGpx, QStringLiteral("trk"));
    xml_.writeTextElement(kGpx, QStringLiteral("name"), XmlText(named.name));
  }
  void BeginBlock(const Row& /*first*/) override { xml_.writeStartElement(kGpx, QStringLiteral("trkseg")); }

  void Write(const Row& row) override {
    const Record& record = *row.record;
    xml_.writeStartElement(kGpx, QStringLiteral("trkpt"));
    xml_.writeAttribute(QStringLiteral("lat"), QLatin1String(FixedNumber(record.latitude_deg, 7)));
    xml_.writeAttribute(QStringLiteral("lon"), QLatin1String(FixedNumber(record.longitude_deg, 7)));
    if (row.block->has_header) {
      xml_.writeTextElement(kGpx, QStringLiteral("time"), QLatin1String(times_.Utc(record.time_s)));
    }
    xml_.writeStartElement(kGpx, QStringLiteral("extensions"));
    if (record.raw >= 0) Signal("raw", QByteArray::number(record.raw));
    if (!row.s_text.empty()) {
      xml_.writeTextElement(kSignal, QStringLiteral("s"), XmlText(row.s_text));
    }
    Signal("uv", ShortNumber(row.microvolt));
    Signal("mv_per_m", ShortNumber(row.millivolt_per_m));
    Signal("dbuv_per_m", FixedNumber(row.DbMicrovoltPerM(), 2));
    Signal("dbm", FixedNumber(row.Dbm(), 2));
    Signal("distance_km", FixedNumber(record.distance_km, 4));
    Signal("bearing_from_tx_deg", FixedNumber(record.bearing_deg, 2));
    Signal("height_as_logged_m", ShortNumber(record.height_m));
    Signal("marks", MarksText(record.marks));
    xml_.writeEndElement();
    xml_.writeEndElement();
  }

  void EndBlock() override { xml_.writeEndElement(); }
  void EndLog() override { xml_.writeEndElement(); }
  void End() override { xml_.writeEndDocument(); }
  bool Ok() const override { return !xml_.hasError(); }

 private:
  void Signal(const char* name, const QByteArray& text) {
    if (!text.isEmpty()) xml_.writeTextElement(kSignal, QLatin1String(name), QLatin1String(text));
  }

  QXmlStreamWriter xml_;
  LocalTimes times_;
};

}  // namespace

std::unique_ptr<RowWriter> MakeGpxWriter(QIODevice& device) {
  return std::make_unique<GpxWriter>(device);
}

}  // namespace orvandi
