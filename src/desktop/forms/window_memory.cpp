#include "desktop/forms/window_memory.h"

#include <QScreen>
#include <QSettings>
#include <QWidget>

namespace kestrum {

void WindowMemory::Restore(QWidget& window) const {
  if (path_.isEmpty()) return;
  const QSettings file(path_, QSettings::IniFormat);
  const QSize size = file.value(window.objectName() + QStringLiteral("/size")).toSize();
  const QSize room = window.screen()->availableSize();
  if (size.isValid() && !size.isEmpty()) window.resize(size.boundedTo(room).expandedTo(window.minimumSize()));
  if (file.value(window.objectName() + QStringLiteral("/maximised"), false).toBool()) {
    window.setWindowState(window.windowState() | Qt::WindowMaximized);
  }
}

void WindowMemory::Keep(const QWidget& window) const {
  if (path_.isEmpty()) return;
  QSettings file(path_, QSettings::IniFormat);
  const bool maximised = (window.windowState() & Qt::WindowMaximized) != 0;
  file.setValue(window.objectName() + QStringLiteral("/maximised"), maximised);
  // The size to which it goes back.
  const QSize size = maximised ? window.normalGeometry().size() : window.size();
  if (!size.isEmpty()) file.setValue(window.objectName() + QStringLiteral("/size"), size);
}

bool WindowMemory::Flag(const QString& name, bool otherwise) const {
  if (path_.isEmpty()) return otherwise;
  return QSettings(path_, QSettings::IniFormat).value(name, otherwise).toBool();
}

void WindowMemory::KeepFlag(const QString& name, bool on) const {
  if (path_.isEmpty()) return;
  QSettings(path_, QSettings::IniFormat).setValue(name, on);
}

int WindowMemory::Number(const QString& name, int otherwise) const {
  if (path_.isEmpty()) return otherwise;
  bool good = false;
  const int number = QSettings(path_, QSettings::IniFormat).value(name).toInt(&good);
  return good ? number : otherwise;
}

void WindowMemory::KeepNumber(const QString& name, int number) const {
  if (path_.isEmpty()) return;
  QSettings(path_, QSettings::IniFormat).setValue(name, number);
}

}  // namespace kestrum
