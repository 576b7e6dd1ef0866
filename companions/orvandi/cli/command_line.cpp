#include "cli/command_line.h"

namespace orvandi {
namespace {

// Splits "--name=value"; the value may also be the next argument.
struct Argument {
  QString name;
  std::optional<QString> value;
};

Argument Split(const QString& text) {
  const auto equals = text.startsWith(QLatin1String("--")) ? text.indexOf(QLatin1Char('=')) : -1;
  if (equals < 0) return {text, {}};
  return {text.left(equals), text.mid(equals + 1)};
}

class Parser {
 public:
  explicit Parser(const QStringList& arguments) : arguments_(arguments) {}

  CommandLine Run() {
    while (next_ < arguments_.size() && line_.complaint.isEmpty()) {
      const QString& argument = arguments_[next_++];
      if (only_files_ || !argument.startsWith(QLatin1Char('-')) || argument == QLatin1String("-")) {
        line_.files << argument;
      } else if (argument == QLatin1String("--")) {
        only_files_ = true;
      } else {
        Option(Split(argument));
      }
    }
    if (line_.complaint.isEmpty()) CheckWhole();
    return line_;
  }

 private:
  void Option(const Argument& argument) {
    const auto is = [&](const char* name, const char* letter) {
      return argument.name == QLatin1String(name) || argument.name == QLatin1String(letter);
    };
    if (is("--export", "-e")) return TakeFormat(argument);
    if (is("--output", "-o")) return TakeValue(argument, line_.output);
    if (is("--calibration", "-c")) return TakeValue(argument, line_.calibration);
    if (argument.value) return Complain(QStringLiteral("%1 takes no value").arg(argument.name));
    if (is("--help", "-h")) {
      line_.help = true;
    } else if (is("--version", "-v")) {
      line_.version = true;
    } else if (is("--summary", "-s")) {
      line_.summary = true;
    } else if (is("--all", "-a")) {
      line_.all = true;
    } else if (argument.name == QLatin1String("--minimised")) {
      line_.minimised = true;
    } else {
      Complain(QStringLiteral("unknown option %1").arg(argument.name));
    }
  }

  void TakeValue(const Argument& argument, QString& value) {
    if (argument.value) {
      value = *argument.value;
    } else if (next_ < arguments_.size()) {
      value = arguments_[next_++];
    }
    if (value.isEmpty()) Complain(QStringLiteral("%1 needs a value").arg(argument.name));
  }

  void TakeFormat(const Argument& argument) {
    QString name;
    TakeValue(argument, name);
    if (!line_.complaint.isEmpty()) return;
    line_.format = FormatOfName(name);
    if (!line_.format) {
      Complain(QStringLiteral("unknown format %1; there are csv, geojson, gpx and kml").arg(name));
    }
  }

  void CheckWhole() {
    if (line_.summary && line_.format)
      return Complain(QStringLiteral("choose --export or --summary, not both"));
    if (!line_.output.isEmpty() && !line_.format) Complain(QStringLiteral("--output needs --export"));
    if (line_.all && !line_.format) Complain(QStringLiteral("--all needs --export"));
    if (!line_.calibration.isEmpty() && !line_.TextOnly()) {
      Complain(QStringLiteral("--calibration needs --export or --summary"));
    }
  }

  void Complain(const QString& complaint) { line_.complaint = complaint; }

  const QStringList& arguments_;
  qsizetype next_ = 0;
  bool only_files_ = false;
  CommandLine line_;
};

}  // namespace

CommandLine ParseCommandLine(const QStringList& arguments) {
  return Parser(arguments).Run();
}

QString HelpText() {
  return QStringLiteral(
      "Usage: Orvandi [options] [LOG...]\n"
      "Shows the logs of Kestrum: map, field strength over time and distance, antenna patterns.\n"
      "\n"
      "Without LOG it opens the logger's log: the one named in Kestrum.cfg beside the program, else "
      "RSSI-GPS.log\n"
      "there.\n"
      "\n"
      "Options:\n"
      "  -e, --export FORMAT     write the records as csv, geojson, gpx or kml, without a window\n"
      "  -o, --output FILE       where to; without it, or with -, to standard output\n"
      "  -a, --all               export marked records, too: no fix, old fix, silent rig, outside of the\n"
      "                          calibration\n"
      "  -s, --summary           tell the drive in numbers, without a window\n"
      "  -c, --calibration FILE  convert the raw values with this calibration file (with --export, "
      "--summary)\n"
      "      --minimised         come up minimised; so does KESTRUM_START_MINIMISED=1 in the environment\n"
      "  -h, --help              show this text\n"
      "  -v, --version           show the version\n");
}

}  // namespace orvandi
