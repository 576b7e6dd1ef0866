#include <QApplication>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <span>
#include <string_view>

#include "cli/command_line.h"
#include "cli/logger_log.h"
#include "cli/text_commands.h"
#include "start_options.h"
#include "start_style.h"

namespace {

using namespace orvandi;

QStringList ArgumentsOf(int argc, char** argv) {
  QStringList arguments;
  for (char* argument : std::span(argv, static_cast<std::size_t>(argc)).subspan(1)) {
    arguments << QString::fromLocal8Bit(argument);
  }
  return arguments;
}

QStringList LogsToOpen(const CommandLine& line) {
  if (line.files.isEmpty()) return {LoggerLog(QCoreApplication::applicationDirPath())};
  QStringList files;
  for (const QString& file : line.files) files << QFileInfo(file).absoluteFilePath();
  return files;
}

int Complain(const QString& complaint) {
  Print(stderr, QStringLiteral("Orvandi: %1; see --help\n").arg(complaint));
  return 2;
}

bool HasDisplay() {
#ifdef Q_OS_LINUX
  return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
         !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
#else
  return true;
#endif
}

bool NamesPlatform(const QStringList& arguments) {
  return arguments.contains(QLatin1String("-platform")) || arguments.contains(QLatin1String("--platform"));
}

int RunWindow(int argc, char** argv) {
  const QApplication app(argc, argv);
  QCoreApplication::setApplicationName(QStringLiteral("Orvandi"));
  QCoreApplication::setApplicationVersion(QStringLiteral(ORVANDI_VERSION));
  QCoreApplication::setOrganizationName(QStringLiteral("Kestrum"));
  // The toolkit has taken its own arguments out.
  const CommandLine line = ParseCommandLine(QCoreApplication::arguments().mid(1));
  if (!line.complaint.isEmpty()) return Complain(line.complaint);
  StartOptions options;
  options.folder = QCoreApplication::applicationDirPath();
  options.files = LogsToOpen(line);
  options.logger_log = line.files.isEmpty();
  options.minimised = StartedMinimised() || line.minimised;
  return RunMainWindow(options);
}

}  // namespace

int main(int argc, char** argv) {
  const QStringList arguments = ArgumentsOf(argc, argv);
  const CommandLine line = ParseCommandLine(arguments);
  if (line.help) {
    Print(stdout, HelpText());
    return 0;
  }
  if (line.version) {
    Print(stdout, QStringLiteral("Orvandi V" ORVANDI_VERSION "\n"));
    return 0;
  }
  if (line.TextOnly()) {
    if (!line.complaint.isEmpty()) return Complain(line.complaint);
    const QCoreApplication app(argc, argv);
    return RunTextCommand(line, LogsToOpen(line));
  }
  if (!HasDisplay() && !NamesPlatform(arguments)) {
    Print(stderr,
          QStringLiteral("Orvandi: there is no display to show the window on. Start it from a desktop "
                         "session, or use --export or --summary.\n"));
    return 1;
  }
  return RunWindow(argc, argv);
}
