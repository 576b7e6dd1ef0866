#include "common/linux/session_bus.h"

#include <poll.h>
#include <unistd.h>

#include <QFileInfo>
#include <QList>
#include <algorithm>
#include <cstdint>

namespace kestrum {
namespace {

// Messages are dealt with for this long at a stretch, then timers and windows have their turn.
constexpr qint64 kSliceMs = 10;
// A line that falls behind for this long is given up for a new one: old messages are worth nothing.
constexpr qint64 kLongestBehindMs = 2000;

// The sockets in an address ("unix:path=/run/user/1000/bus,guid=..."), without the identity that the bus had
// when the address was made.
QByteArray SocketsOf(const QByteArray& address) {
  QList<QByteArray> sockets;
  for (const QByteArray& transport : address.split(';')) {
    if (!transport.startsWith("unix:")) continue;
    for (const QByteArray& field : transport.mid(5).split(',')) {
      if (field.startsWith("path=") || field.startsWith("abstract=")) sockets.append("unix:" + field);
    }
  }
  return sockets.join(';');
}

bool ReadOneText(sd_bus_message* message, std::map<std::string, std::string>& texts) {
  const char* name = nullptr;
  const char* text = nullptr;
  const char* content = nullptr;
  if (sd_bus_message_read_basic(message, SD_BUS_TYPE_STRING, &name) <= 0) return false;
  if (sd_bus_message_peek_type(message, nullptr, &content) <= 0) return false;
  if (std::string_view(content) != "s") return sd_bus_message_skip(message, "v") > 0;
  if (sd_bus_message_read(message, "v", "s", &text) <= 0) return false;
  texts[name] = text;
  return true;
}

}  // namespace

SessionBus::SessionBus() {
  retry_.setSingleShot(true);
  due_.setSingleShot(true);
  connect(&retry_, &QTimer::timeout, this, &SessionBus::Call);
  connect(&due_, &QTimer::timeout, this, &SessionBus::Process);
}

SessionBus::~SessionBus() = default;

QByteArray SessionBus::Address() {
  const QByteArray address = qgetenv("DBUS_SESSION_BUS_ADDRESS");
  if (!address.isEmpty()) return SocketsOf(address);
  QByteArray folder = qgetenv("XDG_RUNTIME_DIR");
  if (folder.isEmpty()) folder = "/run/user/" + QByteArray::number(::getuid());
  const QByteArray socket = folder + "/bus";
  if (!QFileInfo::exists(QString::fromLocal8Bit(socket))) return {};
  return "unix:path=" + socket.toPercentEncoding("/");
}

void SessionBus::Start() {
  if (!line_ && !retry_.isActive()) Call();
}

void SessionBus::Call() {
  const QByteArray address = Address();
  sd_bus* line = nullptr;
  if (address.isEmpty() || sd_bus_new(&line) < 0) {
    Lose(kRetryMs);
    return;
  }
  line_.reset(line);
  // Starting opens a socket without blocking and says hello; the rest happens as answers arrive.
  if (sd_bus_set_address(line, address.constData()) < 0 || sd_bus_set_bus_client(line, 1) < 0 ||
      sd_bus_start(line) < 0) {
    Lose(kRetryMs);
    return;
  }
  behind_.invalidate();
  hang_up_ = false;
  FollowLine(false);
  SetState(State::kConnecting);
}

void SessionBus::Process() {
  if (processing_ || !line_) return;
  processing_ = true;
  QElapsedTimer slice;
  slice.start();
  int outcome = 0;
  do {
    outcome = sd_bus_process(line_.get(), nullptr);
  } while (outcome > 0 && !hang_up_ && slice.elapsed() < kSliceMs);
  processing_ = false;
  if (outcome < 0 || hang_up_) {
    Lose(kRetryMs);
    return;
  }
  const bool more_waits = outcome > 0;
  if (!more_waits) {
    behind_.invalidate();
  } else if (!behind_.isValid()) {
    behind_.start();
  } else if (behind_.elapsed() > kLongestBehindMs) {
    Lose(0);
    return;
  }
  FollowLine(more_waits);
  if (state_ == State::kConnecting && sd_bus_is_ready(line_.get()) > 0) SetState(State::kReady);
}

// The descriptor, the direction and the next time that the line waits for change as it goes on.
void SessionBus::FollowLine(bool more_waits) {
  const int descriptor = sd_bus_get_fd(line_.get());
  if (!readable_ || readable_->socket() != descriptor) {
    StopWatching();
    readable_ = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
    writable_ = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Write);
    for (QSocketNotifier* notifier : {readable_.get(), writable_.get()})
      connect(notifier, &QSocketNotifier::activated, this, &SessionBus::Process);
  }
  const int events = std::max(sd_bus_get_events(line_.get()), 0);
  writable_->setEnabled((events & POLLOUT) != 0);
  std::uint64_t until_us = UINT64_MAX;
  sd_bus_get_timeout(line_.get(), &until_us);
  if (more_waits) {
    due_.start(0);
  } else if (until_us == UINT64_MAX) {
    due_.stop();
  } else {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    const auto wait = std::chrono::microseconds(until_us) - now;
    const auto wait_ms = std::chrono::ceil<std::chrono::milliseconds>(wait).count();
    due_.start(static_cast<int>(std::clamp<decltype(wait_ms)>(wait_ms, 0, 60000)));
  }
}

// Perhaps from inside a notifier's own signal.
void SessionBus::StopWatching() {
  for (auto* notifier : {&readable_, &writable_}) {
    if (!*notifier) continue;
    (*notifier)->setEnabled(false);
    notifier->release()->deleteLater();
  }
}

void SessionBus::Lose(int retry_ms) {
  StopWatching();
  due_.stop();
  line_.reset();
  retry_.start(retry_ms);
  SetState(State::kNoBus);
}

void SessionBus::HangUp() {
  hang_up_ = processing_;
  if (line_ && !processing_) Lose(kRetryMs);
}

void SessionBus::SetState(State state) {
  // Told again when another attempt has failed: somebody may be waiting for the first one.
  if (state == state_ && state != State::kNoBus) return;
  state_ = state;
  Q_EMIT StateChanged(state);
}

bool SessionBus::WaitFor(const std::function<bool()>& done, std::chrono::milliseconds longest) {
  QElapsedTimer clock;
  clock.start();
  while (!done()) {
    const auto left = static_cast<int>(longest.count() - clock.elapsed());
    if (!line_ || left <= 0) return false;
    const int events = std::max(sd_bus_get_events(line_.get()), 0);
    pollfd waiting{sd_bus_get_fd(line_.get()), static_cast<short>(events), 0};
    ::poll(&waiting, 1, due_.isActive() ? std::min(left, due_.remainingTime()) : left);
    Process();
  }
  return true;
}

bool ReadTexts(sd_bus_message* message, std::map<std::string, std::string>& texts) {
  if (sd_bus_message_enter_container(message, SD_BUS_TYPE_ARRAY, "{sv}") < 0) return false;
  while (sd_bus_message_enter_container(message, SD_BUS_TYPE_DICT_ENTRY, "sv") > 0) {
    if (!ReadOneText(message, texts) || sd_bus_message_exit_container(message) < 0) return false;
  }
  return sd_bus_message_exit_container(message) >= 0;
}

}  // namespace kestrum
