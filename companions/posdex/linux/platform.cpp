#include "platform.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>

#include "bus_service.h"

namespace kestrum::posdex {
namespace {

constexpr int kSerialPortNumbers = 6;

}  // namespace

std::unique_ptr<TextService> MakeTextService() {
  return std::make_unique<BusService>();
}

QStringList ReceiverPorts(const QString& folder, const QString& ports) {
  QSet<QString> of_the_set;
  for (int number = 1; number <= kSerialPortNumbers; ++number) {
    const QString named = qEnvironmentVariable(qPrintable(QStringLiteral("KESTRUM_COM%1").arg(number)));
    for (const QString& link : {named, QStringLiteral("%1/com%2").arg(folder).arg(number)})
      of_the_set.insert(QFileInfo(link).canonicalFilePath());
  }
  QStringList found;
  for (const QFileInfo& port : QDir(ports).entryInfoList(QDir::System | QDir::Files, QDir::Name)) {
    if (!of_the_set.contains(port.canonicalFilePath())) found.append(port.absoluteFilePath());
  }
  return found;
}

bool HasDisplay() {
  return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
         !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}

QString LinkName() {
  return QStringLiteral("the session bus");
}

QString LinkScope() {
  return QStringLiteral("this session bus");
}

QString PortsName() {
  return QStringLiteral("the serial ports below /dev/serial/by-id");
}

}  // namespace kestrum::posdex
