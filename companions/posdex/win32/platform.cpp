#include "platform.h"

#include <windows.h>

#include <QDir>
#include <QFile>
#include <array>

#include "dde_service.h"

namespace kestrum::posdex {
namespace {

constexpr int kHighestPort = 64;

// The number in the second field of the second line of the logger's configuration; 0 for none.
int PortOfTheSet(const QString& folder) {
  QFile file(QDir(folder).filePath(QStringLiteral("Kestrum.cfg")));
  if (!file.open(QIODevice::ReadOnly)) return 0;
  file.readLine();
  const QList<QByteArray> fields = file.readLine().simplified().split(' ');
  return fields.size() > 1 ? fields[1].toInt() : 0;
}

}  // namespace

std::unique_ptr<TextService> MakeTextService() {
  return std::make_unique<DdeService>();
}

QStringList ReceiverPorts(const QString& folder, const QString& /*ports*/) {
  const int of_the_set = PortOfTheSet(folder);
  QStringList found;
  for (int number = 1; number <= kHighestPort; ++number) {
    const QString name = QStringLiteral("COM%1").arg(number);
    std::array<wchar_t, 512> room{};
    const DWORD length = ::QueryDosDeviceW(name.toStdWString().c_str(), room.data(), DWORD{room.size()});
    if (length == 0 || number == of_the_set) continue;
    // Opening one of these calls a telephone and waits for it.
    const QString device = QString::fromWCharArray(room.data());
    if (!device.contains(QLatin1String("BthModem"), Qt::CaseInsensitive)) found.append(name);
  }
  return found;
}

bool HasDisplay() {
  return true;
}

QString LinkName() {
  return QStringLiteral("DDE");
}

QString LinkScope() {
  return QStringLiteral("this desktop");
}

QString PortsName() {
  return QStringLiteral("the COM ports");
}

}  // namespace kestrum::posdex
