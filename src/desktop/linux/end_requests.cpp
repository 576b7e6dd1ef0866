#include <fcntl.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <array>
#include <cerrno>
#include <csignal>
#include <utility>

#include "desktop/platform_factory.h"

// SIGTERM, SIGINT and SIGHUP as window events.
namespace kestrum {
namespace {

// The handler of a signal can reach nothing but a global: the writing end of a pipe to ourselves.
volatile int signal_pipe = -1;

void OnSignal(int /*number*/) {
  const int saved = errno;
  const char byte = 1;
  // A full pipe already holds the message.
  [[maybe_unused]] const ssize_t written = ::write(signal_pipe, &byte, 1);
  errno = saved;
}

}  // namespace

void OnEndRequests(QObject* context, std::function<void()> ask_to_end) {
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
  signal_pipe = ends[1];
  auto* notifier = new QSocketNotifier(ends[0], QSocketNotifier::Read, context);
  QObject::connect(notifier, &QSocketNotifier::activated, context,
                   [read_end = ends[0], ask_to_end = std::move(ask_to_end)] {
                     std::array<char, 16> bytes{};
                     while (::read(read_end, bytes.data(), bytes.size()) > 0) {
                     }
                     ask_to_end();
                   });
  struct sigaction action {};
  action.sa_handler = &OnSignal;
  action.sa_flags = SA_RESTART;
  for (const int number : {SIGTERM, SIGINT, SIGHUP}) ::sigaction(number, &action, nullptr);
}

}  // namespace kestrum
