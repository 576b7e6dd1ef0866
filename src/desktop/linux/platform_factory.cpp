#include "desktop/platform_factory.h"

#include <QProcess>
#include <QProcessEnvironment>
#include <algorithm>
#include <array>
#include <string_view>

#include "desktop/linux/bus_links.h"
#include "desktop/linux/posix_file_store.h"
#include "desktop/linux/qt_serial_port.h"

namespace kestrum {
namespace {

constexpr QLatin1String kStartMinimised("KESTRUM_START_MINIMISED");

}  // namespace

std::unique_ptr<LinksAndWindows> MakeLinks() {
  return std::make_unique<BusLinks>();
}

std::unique_ptr<FileStore> MakeFileStore(const QString& folder) {
  return std::make_unique<PosixFileStore>(folder);
}

std::unique_ptr<SerialPort> MakeSerialPort(const QString& application_folder) {
  return std::make_unique<QtSerialPort>(application_folder);
}

// A desktop here has no show style that one program could give another: our programs take the wish from the
// environment. A started program does not take the focus from the one that the user works in.
std::optional<qint64> StartProcess(const QString& path, const QString& folder, ShowStyle style) {
  QProcess companion;
  companion.setProgram(path);
  companion.setWorkingDirectory(folder);
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.remove(kStartMinimised);
  if (style == ShowStyle::kMinimisedWithFocus) environment.insert(kStartMinimised, QStringLiteral("1"));
  companion.setProcessEnvironment(environment);
  qint64 process = 0;
  if (!companion.startDetached(&process)) return std::nullopt;
  return process;
}

QString ExecutableName(const QString& name) {
  const QString ending = QStringLiteral(".exe");
  return name.endsWith(ending, Qt::CaseInsensitive) ? name.chopped(ending.size()) : name;
}

std::optional<Fault> WhyNoDisplay(std::span<char*> arguments) {
  constexpr std::array kDisplays = {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"};
  const bool has_display = std::any_of(kDisplays.begin(), kDisplays.end(),
                                       [](const char* name) { return !qEnvironmentVariableIsEmpty(name); });
  const bool chosen = std::any_of(arguments.begin(), arguments.end(),
                                  [](std::string_view argument) { return argument == "-platform"; });
  if (has_display || chosen) return std::nullopt;
  return Fault{"",
               "there is no display to show the windows on. Start it from a desktop session, or with "
               "QT_QPA_PLATFORM=offscreen to run it without windows."};
}

}  // namespace kestrum
