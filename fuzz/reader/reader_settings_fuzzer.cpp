#include "common/fault_text.h"
#include "reader_settings.h"
#include "support/fuzz.h"

// The input is a posdex.conf; its lines are tried as command lines too.
namespace kestrum::posdex {
namespace {

using fuzz::Require;

void CheckSource(const SourceChoice& source) {
  Require(source.port > 0, "a port to connect to");
  Require(source.baud >= 50 && source.baud <= 4000000, "a speed that exists");
  if (source.kind == SourceChoice::Kind::kAuto) return;
  const bool named =
      source.kind == SourceChoice::Kind::kGpsd ? !source.host.isEmpty() : !source.path.isEmpty();
  Require(named, "a source has a name");
}

QString Written(const SourceChoice& source) {
  switch (source.kind) {
    case SourceChoice::Kind::kSerial:
      return QStringLiteral("serial:%1@").arg(source.path) + QString::number(source.baud);
    case SourceChoice::Kind::kFile:
      return QStringLiteral("file:") + source.path + (source.loop ? QStringLiteral("?loop") : QString());
    case SourceChoice::Kind::kAuto:
      return QStringLiteral("auto");
    case SourceChoice::Kind::kGpsd:
      break;
  }
  const bool bracket = source.host.contains(QLatin1Char(':')) || source.host.startsWith(QLatin1Char('['));
  const QString host = bracket ? QLatin1Char('[') + source.host + QLatin1Char(']') : source.host;
  return QStringLiteral("gpsd:") + host + QLatin1Char(':') + QString::number(source.port);
}

void CheckComplaint(const std::optional<Fault>& fault) {
  if (!fault) return;
  const QString complaint = QString::fromStdString(TextOf(*fault));
  Require(complaint.size() < 200, "a complaint is short", complaint.toStdString());
  for (const QChar character : complaint)
    Require(character.isPrint(), "a complaint is one plain line", complaint.toStdString());
}

void CheckParsed(const QString& text) {
  const Result<SourceChoice> parsed = ParseSource(text);
  if (!parsed) {
    CheckComplaint(parsed.fault());
    return;
  }
  const SourceChoice& source = parsed.value();
  CheckSource(source);
  const QString written = Written(source);
  // Blanks at the ends and a path that itself ends in "?loop" cannot be written down again.
  if (written != written.trimmed() || source.path.endsWith(QLatin1String("?loop"))) return;
  const Result<SourceChoice> again = ParseSource(written);
  Require(again && again.value() == source, "a source written down is the same source",
          written.toStdString());
}

void CheckCommandLine(const QStringList& arguments) {
  const CommandLine line = ParseCommandLine(arguments);
  CheckComplaint(line.complaint);
  if (line.source) CheckSource(*line.source);
}

}  // namespace
}  // namespace kestrum::posdex

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kestrum::posdex;
  const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  const ReaderSettings settings = ParseConf(bytes);
  CheckSource(settings.source);
  CheckComplaint(settings.complaint);
  kestrum::fuzz::Require(ParseConf(bytes).source == settings.source, "the same file, the same source");
  const QStringList lines = QString::fromUtf8(bytes).split(QLatin1Char('\n'));
  for (const QString& line : lines) {
    CheckParsed(line);
    CheckParsed(line.mid(line.indexOf(QLatin1Char('=')) + 1));
  }
  CheckCommandLine(lines);
  return 0;
}
