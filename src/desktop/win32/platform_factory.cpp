#include "desktop/platform_factory.h"

#include <QDir>

#include "desktop/text_convert.h"
#include "desktop/win32/instance_mark.h"
#include "desktop/win32/started_process.h"
#include "desktop/win32/win32_file_store.h"
#include "desktop/win32/win32_links.h"
#include "desktop/win32/win32_serial_port.h"

namespace kestrum {
namespace {

std::wstring Native(const QString& path) {
  return QDir::toNativeSeparators(path).toStdWString();
}

}  // namespace

std::unique_ptr<LinksAndWindows> MakeLinks() {
  return std::make_unique<Win32Links>();
}

std::unique_ptr<FileStore> MakeFileStore(const QString& folder) {
  return std::make_unique<Win32FileStore>(FromQt(QDir::toNativeSeparators(folder)), Native(folder));
}

// Port numbers are the system's own here.
std::unique_ptr<SerialPort> MakeSerialPort(const QString& /*application_folder*/) {
  return std::make_unique<Win32SerialPort>();
}

std::optional<qint64> StartProcess(const QString& path, const QString& folder, ShowStyle style) {
  const auto process = StartProgram(Native(path), Native(folder), style);
  if (!process) return std::nullopt;
  return static_cast<qint64>(*process);
}

QString ExecutableName(const QString& name) {
  const QString ending = QStringLiteral(".exe");
  return name.endsWith(ending, Qt::CaseInsensitive) ? name : name + ending;
}

bool ClaimSingleInstance(const QString& folder) {
  return MarkInstance(Native(folder));
}

std::optional<Fault> WhyNoDisplay(std::span<char*> /*arguments*/) {
  return std::nullopt;
}

}  // namespace kestrum
