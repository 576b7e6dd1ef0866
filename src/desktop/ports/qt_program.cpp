#include "desktop/ports/qt_program.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QWidget>

#include "desktop/platform_factory.h"
#include "desktop/text_convert.h"

namespace kestrum {
namespace {

QString WithoutBackslash(const std::string& name) {
  QString result = ToQt(name);
  if (result.startsWith(QLatin1Char('\\'))) result.remove(0, 1);
  return result;
}

}  // namespace

QtProgram::QtProgram() : folder_(QCoreApplication::applicationDirPath()) {}

std::string QtProgram::Folder() const {
  return FromQt(QDir::toNativeSeparators(folder_));
}

std::string QtProgram::ExeName() const {
  return FromQt(QFileInfo(QCoreApplication::applicationFilePath()).fileName());
}

bool QtProgram::AnotherInstanceRuns() {
  return !ClaimSingleInstance();
}

std::string QtProgram::PathOf(const std::string& name) const {
  return FromQt(QDir::toNativeSeparators(folder_ + QLatin1Char('/') + WithoutBackslash(name)));
}

std::string QtProgram::CompanionPath(const std::string& name) const {
  return FromQt(
      QDir::toNativeSeparators(folder_ + QLatin1Char('/') + ExecutableName(WithoutBackslash(name))));
}

bool QtProgram::StartCompanion(const std::string& name, ShowStyle /*style*/) {
  // How its window comes up is for the desktop to say here; a started program does not take the focus from
  // the one that the user works in.
  const QString path = folder_ + QLatin1Char('/') + ExecutableName(WithoutBackslash(name));
  return QFileInfo(path).isFile() && QProcess::startDetached(path, {}, folder_);
}

void QtProgram::End() {
  ended_ = true;
  for (QWidget* window : QApplication::topLevelWidgets()) window->hide();
  // Leaves every open box and every wait loop; unlike quit() it asks no window.
  QCoreApplication::exit(0);
}

}  // namespace kestrum
