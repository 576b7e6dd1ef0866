#include "common/end_signals.h"

#include <windows.h>

#include <QAbstractNativeEventFilter>
#include <QCoreApplication>
#include <atomic>
#include <memory>

namespace kestrum {
namespace {

// The system calls with nothing but the event.
std::atomic<EndSignals*> g_told{nullptr};

// On a thread of the system's own. The process ends when this returns from a close, a log-off or a shutdown,
// so that the program gets the time to end by itself.
BOOL WINAPI OnConsoleEvent(DWORD event) {
  constexpr DWORD kLongestMs = 5000;
  EndSignals* const told = g_told;
  if (told == nullptr) return FALSE;
  QMetaObject::invokeMethod(told, &EndSignals::Received, Qt::QueuedConnection);
  if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) ::Sleep(kLongestMs);
  return TRUE;
}

// The end of the user's session: whatever has to be done is done before the message returns.
class SessionEnd : public QAbstractNativeEventFilter {
 public:
  explicit SessionEnd(EndSignals& told) : told_(told) {
    QCoreApplication::instance()->installNativeEventFilter(this);
  }
  ~SessionEnd() override {
    if (QCoreApplication::instance() != nullptr) QCoreApplication::instance()->removeNativeEventFilter(this);
  }
  SessionEnd(const SessionEnd&) = delete;
  SessionEnd& operator=(const SessionEnd&) = delete;

  bool nativeEventFilter(const QByteArray& /*type*/, void* message, qintptr* /*result*/) override {
    const auto* const event = static_cast<const MSG*>(message);
    if (event->message == WM_ENDSESSION && event->wParam != 0) Q_EMIT told_.Received();
    return false;
  }

 private:
  EndSignals& told_;
};

std::unique_ptr<SessionEnd> g_session_end;

}  // namespace

EndSignals::EndSignals(QObject* parent) : QObject(parent) {
  g_told = this;
  g_session_end = std::make_unique<SessionEnd>(*this);
  ::SetConsoleCtrlHandler(&OnConsoleEvent, TRUE);
}

EndSignals::~EndSignals() {
  ::SetConsoleCtrlHandler(&OnConsoleEvent, FALSE);
  g_session_end.reset();
  g_told = nullptr;
}

}  // namespace kestrum
