#pragma once

#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>

#include "harness.h"

namespace kestrum::posdex {

/// The reader's executable, copied into a folder of its own as a user installs it.
class Program {
 public:
  explicit Program(const QString& bus_address) {
    QFile::copy(Q(POSDEX_PROGRAM), Path());
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(Q("QT_QPA_PLATFORM"), Q("offscreen"));
    environment.insert(Q("XDG_RUNTIME_DIR"), folder_.path());
    environment.remove(Q("DBUS_SESSION_BUS_ADDRESS"));
    if (!bus_address.isEmpty()) environment.insert(Q("DBUS_SESSION_BUS_ADDRESS"), bus_address);
    process_.setProcessEnvironment(environment);
    process_.setWorkingDirectory(folder_.path());
  }
  ~Program() {
    process_.kill();
    process_.waitForFinished();
  }
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  QString File(const char* name) const { return folder_.filePath(Q(name)); }
  void WriteFile(const char* name, const QByteArray& bytes) const {
    QFile file(File(name));
    if (file.open(QIODevice::WriteOnly)) file.write(bytes);
  }
  void Start(const QStringList& arguments = {}) {
    process_.start(Path(), arguments);
    process_.waitForStarted();
  }
  bool WaitForEnd(int limit_ms) {
    return WaitFor([this] { return process_.state() == QProcess::NotRunning; }, limit_ms);
  }
  QProcess& Process() { return process_; }

 private:
  QString Path() const { return File("Posdex"); }

  QTemporaryDir folder_;
  QProcess process_;
};

}  // namespace kestrum::posdex
