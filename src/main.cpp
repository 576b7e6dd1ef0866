#include <QApplication>
#include <QIcon>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "app/application.h"
#include "common/descriptor_guard.h"
#include "common/toolkit_start.h"
#include "config/app_title.h"
#include "desktop/desktop.h"
#include "desktop/forms/windows.h"
#include "desktop/platform_factory.h"
#include "desktop/sound/speaker.h"

namespace {

constexpr const char* kHelp =
    "Usage: Kestrum [options]\n"
    "Automatic RF field strength logger for use in a vehicle.\n"
    "\n"
    "Options:\n"
    "  --start-logging  start logging once the program is up, as F3 does\n"
    "  --minimal        open the minimal display once the program is up, as F5 does\n"
    "  --night          dim amber on black, as F2 does\n"
    "  --help           show this text\n"
    "  --version        show the version\n"
    "\n"
    "The files of the program lie in the folder of the executable.\n";

// What is answered without a display.
bool AnswerOnly(std::span<char*> arguments) {
  for (const std::string_view argument : arguments) {
    if (argument == "--help" || argument == "-h") return std::puts(kHelp) >= 0;
    if (argument == "--version" || argument == "-v")
      return std::printf("Kestrum %s\n", kestrum::Version.c_str()) >= 0;
  }
  return false;
}

// False when an option is not known. The toolkit has already taken its own out.
bool ReadOptions(std::span<char*> arguments, kestrum::StartOptions& options) {
  for (const std::string_view argument : arguments) {
    if (argument == "--start-logging") {
      options.start_logging = true;
    } else if (argument == "--minimal") {
      options.minimal = true;
    } else if (argument == "--night") {
      options.night = true;
    } else {
      std::fprintf(stderr, "Kestrum: unknown option %s; see --help\n", std::string(argument).c_str());
      return false;
    }
  }
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  kestrum::OpenStandardDescriptors();
  const std::span<char*> arguments(argv, static_cast<std::size_t>(argc));
  if (AnswerOnly(arguments.subspan(1))) return 0;
  if (const auto fault = kestrum::WhyNoDisplay(arguments)) {
    std::fprintf(stderr, "Kestrum: %s\n", fault->reason.c_str());
    return 1;
  }
  std::optional<kestrum::ToolkitStart> starting("Kestrum");
  const QApplication toolkit(argc, argv);
  starting.reset();
  QGuiApplication::setDesktopFileName(QStringLiteral("org.kestrum.kestrum"));
  QApplication::setWindowIcon(QIcon::fromTheme(QStringLiteral("org.kestrum.kestrum")));
  kestrum::StartOptions options;
  if (!ReadOptions(std::span(argv, static_cast<std::size_t>(argc)).subspan(1), options)) return 2;

  kestrum::Desktop desktop;
  kestrum::Application application(desktop.ports());
  const auto speaker = kestrum::MakeSpeaker();
  const kestrum::Windows windows(application.forms, desktop.binder(),
                                 QCoreApplication::applicationDirPath() + QStringLiteral("/Kestrum.windows"),
                                 speaker.get());
  desktop.OnEndRequest([&application] { application.ExitWithoutAsking(); });
  desktop.binder().Enter([&application, &options] { application.Start(options); });
  if (!desktop.program().Ended()) QApplication::exec();
  // A disk that never answers must not keep the process: nothing is torn down under the job that waits for
  // it.
  if (desktop.StillWriting()) std::_Exit(desktop.program().ExitCode());
  return desktop.program().ExitCode();
}
