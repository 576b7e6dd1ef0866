#include "cli/logger_log.h"

#include <QDir>
#include <QFile>

#include "log/text_encoding.h"
#include "text/text_file.h"

namespace orvandi {
namespace {

constexpr std::size_t kLineOfLogName = 21;
constexpr qint64 kLargestConfig = 1 << 20;
constexpr auto kDefaultName = "RSSI-GPS.log";

QString NameInConfig(const QString& folder) {
  QFile file(QDir(folder).filePath(QStringLiteral("Kestrum.cfg")));
  if (!file.open(QIODevice::ReadOnly) || file.size() > kLargestConfig) return {};
  const auto lines = kestrum::SplitLines(file.read(kLargestConfig).toStdString());
  if (lines.size() < kLineOfLogName) return {};
  const std::string name = ToUtf8(Trimmed(lines[kLineOfLogName - 1]));
  return QString::fromStdString(name);
}

}  // namespace

QString LoggerLog(const QString& folder) {
  QString name = NameInConfig(folder);
  if (name.startsWith(QLatin1Char('\\'))) name.remove(0, 1);
  if (name.isEmpty()) name = QString::fromLatin1(kDefaultName);
  return QDir::cleanPath(QDir(folder).absoluteFilePath(name));
}

}  // namespace orvandi
