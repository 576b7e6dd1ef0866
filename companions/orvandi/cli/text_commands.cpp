#include "cli/text_commands.h"

#include <QFile>
#include <QFileInfo>
#include <memory>
#include <vector>

#include "cli/summary_text.h"
#include "export/row.h"
#include "log/log_file.h"

namespace orvandi {
namespace {

constexpr qint64 kLargestCalibration = 1 << 21;

struct OpenLogs {
  std::vector<std::unique_ptr<LogFile>> files;
  std::vector<NamedLog> named;
  bool all_ok = true;
};

OpenLogs OpenAll(const QStringList& paths) {
  OpenLogs logs;
  for (const QString& path : paths) {
    auto file = std::make_unique<LogFile>(QFile::encodeName(path).toStdString());
    const LogFile::Outcome outcome = file->Open();
    if (!outcome.sentence.empty()) {
      Print(stderr, QStringLiteral("Orvandi: %1: %2\n").arg(path, ToQt(outcome.sentence)));
    }
    logs.all_ok = logs.all_ok && outcome.ok;
    if (!outcome.ok) continue;
    logs.named.push_back({&file->Content(), QFileInfo(path).fileName().toStdString()});
    logs.files.push_back(std::move(file));
  }
  return logs;
}

kestrum::Outcome LoadCalibration(const QString& path, Recalibration& recalibration) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly))
    return kestrum::Fault{path.toStdString(), file.errorString().toStdString()};
  return recalibration.Load(file.read(kLargestCalibration).toStdString());
}

ExportOutcome WriteExport(const CommandLine& line, std::span<const NamedLog> logs,
                          const ExportOptions& options) {
  if (!line.output.isEmpty() && line.output != QLatin1String("-")) {
    return ExportToFile(line.output, *line.format, logs, options);
  }
  QFile standard_output;
  if (!standard_output.open(stdout, QIODevice::WriteOnly)) {
    ExportOutcome outcome;
    outcome.sentence = QStringLiteral("standard output cannot be written");
    return outcome;
  }
  ExportOutcome outcome = ExportTo(standard_output, *line.format, logs, options);
  if (outcome.ok && !standard_output.flush()) {
    outcome.ok = false;
    outcome.sentence = standard_output.errorString();
  }
  return outcome;
}

int RunExport(const CommandLine& line, const OpenLogs& logs, const Recalibration* recalibration) {
  ExportOptions options;
  options.shown_marks = line.all ? kAllMarks : 0;
  options.recalibration = recalibration;
  const ExportOutcome outcome = WriteExport(line, logs.named, options);
  if (!outcome.ok) {
    Print(stderr, QStringLiteral("Orvandi: %1\n").arg(outcome.sentence));
    return 1;
  }
  QString told = QStringLiteral("Records written: %1").arg(outcome.written);
  if (outcome.marked > 0)
    told += QStringLiteral("; left out for their marks: %1 (--all)").arg(outcome.marked);
  if (outcome.without_position > 0) {
    told += QStringLiteral("; left out without a position: %1").arg(outcome.without_position);
  }
  Print(stderr, told + QLatin1Char('\n'));
  return logs.all_ok ? 0 : 1;
}

}  // namespace

int RunTextCommand(const CommandLine& line, const QStringList& logs) {
  const OpenLogs open = OpenAll(logs);
  if (open.named.empty()) return 1;
  Recalibration recalibration;
  const bool recalibrate = !line.calibration.isEmpty();
  if (recalibrate) {
    const auto loaded = LoadCalibration(line.calibration, recalibration);
    if (!loaded) {
      Print(stderr, QStringLiteral("Orvandi: %1: %2\n").arg(line.calibration, ToQt(loaded.fault().reason)));
      return 1;
    }
  }
  const Recalibration* used = recalibrate ? &recalibration : nullptr;
  if (line.format) return RunExport(line, open, used);
  Print(stdout, SummaryText(open.named, used));
  return open.all_ok ? 0 : 1;
}

void Print(std::FILE* stream, const QString& text) {
  std::fputs(text.toLocal8Bit().constData(), stream);
}

}  // namespace orvandi
