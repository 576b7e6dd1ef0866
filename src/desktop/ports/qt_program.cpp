#include "desktop/ports/qt_program.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QWidget>
#include <csignal>
#include <cstdio>

#include "desktop/platform_factory.h"
#include "desktop/text_convert.h"

namespace kestrum {
namespace {

QString WithoutBackslash(const std::string& name) {
  QString result = ToQt(name);
  if (result.startsWith(QLatin1Char('\\'))) result.remove(0, 1);
  return result;
}

// A name that begins with a single backslash lies in the application folder on every system; with two it is
// a network path where there are such.
bool IsAbsolute(const QString& name) {
  const bool backslash = name.startsWith(QLatin1Char('\\'));
  if (backslash && QDir::separator() != QLatin1Char('\\')) return false;
  if (backslash) return name.startsWith(QLatin1String("\\\\"));
  // A colon at the beginning would mean data inside the executable.
  return QDir::isAbsolutePath(name) && !name.startsWith(QLatin1Char(':'));
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
  return !ClaimSingleInstance(folder_);
}

std::string QtProgram::PathOf(const std::string& name) const {
  const QString typed = ToQt(name);
  if (typed.isEmpty() || IsAbsolute(typed)) return name;
  return FromQt(QDir::toNativeSeparators(folder_ + QLatin1Char('/') + WithoutBackslash(name)));
}

std::string QtProgram::CompanionPath(const std::string& name) const {
  return FromQt(
      QDir::toNativeSeparators(folder_ + QLatin1Char('/') + ExecutableName(WithoutBackslash(name))));
}

bool QtProgram::StartCompanion(const std::string& name, ShowStyle style) {
  const QString path = folder_ + QLatin1Char('/') + ExecutableName(WithoutBackslash(name));
  if (!QFileInfo(path).isFile()) return false;
  const std::optional<qint64> process = StartProcess(path, folder_, style);
  if (!process) return false;
  if (on_started) on_started(name, *process);
  return true;
}

void QtProgram::ReportLoss(const std::string& text) {
  lost_ = true;
#ifdef SIGPIPE
  std::signal(SIGPIPE, SIG_IGN);  // a reader that has gone must not cost the exit code
#endif
  const QByteArray line = QStringLiteral("Kestrum: %1\n").arg(ToQtLines(text)).toLocal8Bit();
  std::fputs(line.constData(), stderr);
}

void QtProgram::End() {
  ended_ = true;
  for (QWidget* window : QApplication::topLevelWidgets()) window->hide();
  // Leaves every open box and every wait loop; unlike quit() it asks no window.
  QCoreApplication::exit(0);
}

}  // namespace kestrum
