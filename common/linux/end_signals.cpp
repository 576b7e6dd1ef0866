#include "common/end_signals.h"

#include <fcntl.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>

namespace kestrum {
namespace {

constexpr std::array kSignals{SIGTERM, SIGINT, SIGHUP};

// A signal handler can reach nothing but globals; a pipe to ourselves carries the news into the event loop.
std::atomic<int> g_read_end{-1};
std::atomic<int> g_write_end{-1};
static_assert(std::atomic<int>::is_always_lock_free);

extern "C" void OnEndSignal(int /*number*/) {
  const int saved_errno = errno;
  const char byte = 1;
  // A full pipe already holds the news.
  [[maybe_unused]] const ssize_t written = ::write(g_write_end, &byte, 1);
  errno = saved_errno;
}

}  // namespace

EndSignals::EndSignals(QObject* parent) : QObject(parent) {
  std::array<int, 2> ends{-1, -1};
  if (::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
  g_read_end = ends[0];
  g_write_end = ends[1];
  auto* notifier = new QSocketNotifier(ends[0], QSocketNotifier::Read, this);
  connect(notifier, &QSocketNotifier::activated, this, [this, read_end = ends[0]] {
    std::array<char, 16> bytes{};
    while (::read(read_end, bytes.data(), bytes.size()) > 0) {
    }
    Q_EMIT Received();
  });
  struct sigaction action {};
  action.sa_handler = OnEndSignal;
  action.sa_flags = SA_RESTART;
  for (const int number : kSignals) ::sigaction(number, &action, nullptr);
}

EndSignals::~EndSignals() {
  for (const int number : kSignals) std::signal(number, SIG_DFL);
  for (std::atomic<int>* end : {&g_write_end, &g_read_end}) {
    const int descriptor = end->exchange(-1);
    if (descriptor >= 0) ::close(descriptor);
  }
}

}  // namespace kestrum
