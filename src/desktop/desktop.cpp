#include "desktop/desktop.h"

#include <QApplication>
#include <QSessionManager>
#include <utility>

namespace kestrum {

Desktop::Desktop()
    : serial_(MakeSerialPort(QCoreApplication::applicationDirPath())),
      dialogs_(program_, [this] { binder_.Sync(); }),
      pump_(
          program_, [this] { binder_.SyncTimers(); }, [this] { binder_.Sync(); }),
      links_(MakeLinks()),
      files_(MakeFileStore(QCoreApplication::applicationDirPath())),
      worker_([this](const Handler& done) { binder_.Tick(done); }, files_) {
  // The main window is hidden while the minimal display is open; only Program::End ends the program.
  QApplication::setQuitOnLastWindowClosed(false);
  program_.on_started = [this](const std::string& name, qint64 process) { links_->Started(name, process); };
  pump_.deeds_wait = [this](bool wait) { binder_.HoldDeeds(wait); };
  links_->enter = [this](const Handler& arrived) { binder_.Tick(arrived); };
}

void Desktop::OnEndRequest(std::function<void()> end) {
  const auto once = [this, end = std::move(end)] { binder_.Enter(end); };
  OnEndRequests(&binder_, once);
  QObject::connect(qApp, &QGuiApplication::commitDataRequest, &binder_,
                   [once](QSessionManager& /*session*/) { once(); });
}

}  // namespace kestrum
