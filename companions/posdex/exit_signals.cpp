#include "exit_signals.h"

#include <fcntl.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <array>
#include <cerrno>
#include <csignal>

namespace kestrum::posdex {
namespace {

constexpr std::array kSignals{SIGTERM, SIGINT, SIGHUP};

// A signal handler can reach nothing but globals; the pipe carries the news into the event loop.
std::array<int, 2> g_pipe{-1, -1};

extern "C" void OnExitSignal(int /*number*/) {
  const int saved_errno = errno;
  const char byte = 1;
  // A full pipe already holds the news.
  [[maybe_unused]] const auto written = write(g_pipe[1], &byte, 1);
  errno = saved_errno;
}

}  // namespace

ExitSignals::ExitSignals(QObject* parent) : QObject(parent) {
  if (pipe2(g_pipe.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
  auto* notifier = new QSocketNotifier(g_pipe[0], QSocketNotifier::Read, this);
  connect(notifier, &QSocketNotifier::activated, this, [this] {
    char byte = 0;
    while (read(g_pipe[0], &byte, 1) > 0) {
    }
    Q_EMIT Received();
  });
  struct sigaction action {};
  action.sa_handler = OnExitSignal;
  action.sa_flags = SA_RESTART;
  for (const int number : kSignals) sigaction(number, &action, nullptr);
}

ExitSignals::~ExitSignals() {
  for (const int number : kSignals) std::signal(number, SIG_DFL);
  for (int& end : g_pipe) {
    if (end >= 0) close(end);
    end = -1;
  }
}

}  // namespace kestrum::posdex
