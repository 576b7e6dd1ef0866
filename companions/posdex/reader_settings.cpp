#include "reader_settings.h"

#include <QFile>
#include <QFileInfo>
#include <string>

#include "platform.h"

namespace kestrum::posdex {
namespace {

constexpr qint64 kLongestConf = 65536;
constexpr qsizetype kQuotedLength = 40;

// Text of unknown origin for a message: one short line without control characters.
QString Quoted(const QString& text) {
  QString shown = text.left(kQuotedLength);
  for (QChar& character : shown) {
    if (!character.isPrint()) character = QLatin1Char('?');
  }
  if (text.size() > kQuotedLength) shown += QStringLiteral("...");
  return QLatin1Char('"') + shown + QLatin1Char('"');
}

std::optional<int> WholeNumber(QStringView text, int least, int most) {
  if (text.isEmpty() || text.size() > 9) return std::nullopt;
  int value = 0;
  for (const QChar character : text) {
    if (character < QLatin1Char('0') || character > QLatin1Char('9')) return std::nullopt;
    value = value * 10 + (character.unicode() - u'0');
  }
  if (value < least || value > most) return std::nullopt;
  return value;
}

Fault Refused(const QString& reason) {
  return {"", reason.toStdString()};
}

bool HasControlCharacter(const QString& text) {
  for (const QChar character : text) {
    if (character.category() == QChar::Other_Control) return true;
  }
  return false;
}

Result<SourceChoice> ParseGpsd(const QString& rest) {
  const bool bracketed = rest.startsWith(QLatin1Char('['));
  const qsizetype end = rest.indexOf(bracketed ? QLatin1Char(']') : QLatin1Char(':'));
  if (bracketed && end < 0) return Refused(QStringLiteral("no ] after the host in %1").arg(Quoted(rest)));
  SourceChoice choice;
  choice.host = bracketed ? rest.mid(1, end - 1) : rest.left(end);
  if (choice.host.isEmpty()) return Refused(QStringLiteral("no host after gpsd:"));
  const QString tail = end < 0 ? QString() : rest.mid(bracketed ? end + 1 : end);
  if (tail.isEmpty()) return choice;
  const std::optional<int> port = WholeNumber(QStringView(tail).mid(1), 1, 65535);
  if (!tail.startsWith(QLatin1Char(':')) || !port) {
    return Refused(QStringLiteral("bad gpsd port %1").arg(Quoted(tail)));
  }
  choice.port = static_cast<quint16>(*port);
  return choice;
}

Result<SourceChoice> ParseSerial(const QString& rest) {
  SourceChoice choice;
  choice.kind = SourceChoice::Kind::kSerial;
  const qsizetype at = rest.lastIndexOf(QLatin1Char('@'));
  choice.path = at < 0 ? rest : rest.left(at);
  if (choice.path.isEmpty()) return Refused(QStringLiteral("no device after serial:"));
  if (at >= 0) {
    const std::optional<int> baud = WholeNumber(QStringView(rest).mid(at + 1), 50, 4000000);
    if (!baud) return Refused(QStringLiteral("bad baud rate %1").arg(Quoted(rest.mid(at + 1))));
    choice.baud = *baud;
  }
  return choice;
}

Result<SourceChoice> ParseFile(const QString& rest) {
  SourceChoice choice;
  choice.kind = SourceChoice::Kind::kFile;
  choice.path = rest;
  if (choice.path.endsWith(QLatin1String("?loop"))) {
    choice.loop = true;
    choice.path.chop(5);
  }
  if (choice.path.isEmpty()) return Refused(QStringLiteral("no path after file:"));
  return choice;
}

QString TextOf(const QByteArray& bytes) {
  QByteArray plain = bytes;
  if (plain.startsWith("\xEF\xBB\xBF")) plain.remove(0, 3);
  return QString::fromUtf8(plain);
}

Outcome TakeConfLine(const QString& line, SourceChoice& source) {
  const QString trimmed = line.trimmed();
  if (trimmed.isEmpty() || trimmed.startsWith(QLatin1Char('#')) || trimmed.startsWith(QLatin1Char(';')))
    return Done{};
  const qsizetype equals = trimmed.indexOf(QLatin1Char('='));
  if (equals < 0) return Refused(QStringLiteral("not a setting: %1").arg(Quoted(trimmed)));
  const QString key = trimmed.left(equals).trimmed();
  if (key.compare(QLatin1String("source"), Qt::CaseInsensitive) != 0) {
    return Refused(QStringLiteral("unknown setting %1").arg(Quoted(key)));
  }
  const Result<SourceChoice> parsed = ParseSource(trimmed.mid(equals + 1));
  if (!parsed) return parsed.fault();
  source = parsed.value();
  return Done{};
}

}  // namespace

Result<SourceChoice> ParseSource(const QString& text) {
  const QString trimmed = text.trimmed();
  if (HasControlCharacter(trimmed))
    return Refused(QStringLiteral("bad characters in %1").arg(Quoted(trimmed)));
  if (trimmed == QLatin1String("auto")) {
    SourceChoice choice;
    choice.kind = SourceChoice::Kind::kAuto;
    return choice;
  }
  if (trimmed == QLatin1String("gpsd")) return SourceChoice{};
  if (trimmed.startsWith(QLatin1String("gpsd:"))) return ParseGpsd(trimmed.mid(5));
  if (trimmed.startsWith(QLatin1String("serial:"))) return ParseSerial(trimmed.mid(7));
  if (trimmed.startsWith(QLatin1String("file:"))) return ParseFile(trimmed.mid(5));
  return Refused(QStringLiteral("unknown source %1").arg(Quoted(trimmed)));
}

ReaderSettings ParseConf(const QByteArray& bytes) {
  ReaderSettings settings;
  QString text = TextOf(bytes);
  text.replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(QLatin1Char('\r'), QLatin1Char('\n'));
  int number = 0;
  int bad_lines = 0;
  for (const QString& line : text.split(QLatin1Char('\n'))) {
    ++number;
    const Outcome taken = TakeConfLine(line, settings.source);
    if (taken) continue;
    if (++bad_lines == 1) {
      settings.complaint = Fault{"posdex.conf line " + std::to_string(number), taken.fault().reason};
    }
  }
  if (bad_lines > 1) settings.complaint->reason += " (and " + std::to_string(bad_lines - 1) + " more)";
  return settings;
}

ReaderSettings LoadConf(const QString& path) {
  if (!QFileInfo::exists(path)) return {};
  QFile file(path);
  ReaderSettings settings;
  if (!QFileInfo(path).isFile()) {
    settings.complaint = Fault{"", "posdex.conf is not a file"};
  } else if (!file.open(QIODevice::ReadOnly)) {
    settings.complaint = Fault{"posdex.conf", file.errorString().toStdString()};
  } else {
    settings = ParseConf(file.read(kLongestConf));
  }
  return settings;
}

CommandLine ParseCommandLine(const QStringList& arguments) {
  CommandLine result;
  const auto take_source = [&result](const QString& text) {
    const Result<SourceChoice> parsed = ParseSource(text);
    result.source.reset();
    if (parsed) {
      result.source = parsed.value();
    } else {
      result.complaint = Fault{"--source", parsed.fault().reason};
    }
  };
  for (qsizetype i = 0; i < arguments.size(); ++i) {
    const QString& argument = arguments[i];
    if (argument == QLatin1String("--help") || argument == QLatin1String("-h")) {
      result.help = true;
    } else if (argument == QLatin1String("--version") || argument == QLatin1String("-v")) {
      result.version = true;
    } else if (argument == QLatin1String("--minimised") || argument == QLatin1String("--minimized")) {
      result.minimised = true;
    } else if (argument.startsWith(QLatin1String("--source="))) {
      take_source(argument.mid(9));
    } else if (argument == QLatin1String("--source") && i + 1 < arguments.size()) {
      take_source(arguments[++i]);
    } else if (argument == QLatin1String("--source")) {
      result.complaint = Fault{"", "--source needs a source"};
    } else {
      result.complaint = Refused(QStringLiteral("unknown option %1").arg(Quoted(argument)));
    }
  }
  return result;
}

QString HelpText() {
  return QStringLiteral(
             "Usage: Posdex [--source SOURCE] [--minimised]\n"
             "\n"
             "Reads a GPS receiver, shows its six values and hands them to Kestrum over %1.\n"
             "\n"
             "  --source gpsd:HOST:PORT       a running gpsd (default gpsd:localhost:2947)\n"
             "  --source serial:DEVICE@BAUD   an NMEA receiver on a serial port (default 4800 baud)\n"
             "  --source file:PATH            a recorded NMEA file at its own pace; file:PATH?loop repeats "
             "it\n"
             "  --source auto                 gpsd, else %2 at the usual speeds\n"
             "  --minimised                   start as an icon\n"
             "  --help, --version             print this text or the version, and end\n"
             "\n"
             "Without --source the last good \"source=\" line of posdex.conf beside the program counts.\n")
      .arg(LinkName(), PortsName());
}

}  // namespace kestrum::posdex
