#include "desktop/linux/bus_probe.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QFileInfo>
#include <QString>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <optional>

namespace kestrum {
namespace {

struct SocketName {
  sockaddr_un address{};
  socklen_t length = 0;
};

// The socket of the first unix transport of an address ("unix:path=/run/user/1000/bus,guid=...").
std::optional<SocketName> UnixSocket(const QByteArray& address) {
  for (const QByteArray& transport : address.split(';')) {
    if (!transport.startsWith("unix:")) continue;
    for (const QByteArray& field : transport.mid(5).split(',')) {
      const bool abstract = field.startsWith("abstract=");
      if (!abstract && !field.startsWith("path=")) continue;
      const QByteArray name = QByteArray::fromPercentEncoding(field.mid(field.indexOf('=') + 1));
      SocketName result;
      result.address.sun_family = AF_UNIX;
      const std::size_t start = abstract ? 1 : 0;
      const auto size = static_cast<std::size_t>(name.size());
      if (start + size >= sizeof(result.address.sun_path)) return std::nullopt;
      std::memcpy(result.address.sun_path + start, name.constData(), size);
      result.length =
          static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + start + size + (abstract ? 0 : 1));
      return result;
    }
  }
  return std::nullopt;
}

}  // namespace

BusProbe::~BusProbe() {
  Finish(State::kDead);
}

QByteArray BusProbe::SessionAddress() {
  QByteArray address = qgetenv("DBUS_SESSION_BUS_ADDRESS");
  if (!address.isEmpty()) return address;
  const QByteArray runtime = qgetenv("XDG_RUNTIME_DIR");
  const QByteArray socket = runtime + "/bus";
  if (runtime.isEmpty() || !QFileInfo::exists(QString::fromLocal8Bit(socket))) return {};
  return "unix:path=" + socket;
}

BusProbe::State BusProbe::Finish(State state) {
  if (socket_ >= 0) ::close(socket_);
  socket_ = -1;
  return state;
}

BusProbe::State BusProbe::Start(const QByteArray& address) {
  Finish(State::kDead);
  answer_.clear();
  const std::optional<SocketName> name = UnixSocket(address);
  if (!name) return State::kDead;
  socket_ = ::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
  if (socket_ < 0) return State::kDead;
  if (::connect(socket_, reinterpret_cast<const sockaddr*>(&name->address), name->length) != 0) {
    return Finish(State::kDead);
  }
  // The first line of every conversation with a bus: a zero byte, then who we are.
  const QByteArray user = QByteArray::number(::getuid()).toHex();
  const QByteArray hello = QByteArray(1, '\0') + "AUTH EXTERNAL " + user + "\r\n";
  if (::send(socket_, hello.constData(), static_cast<std::size_t>(hello.size()), MSG_NOSIGNAL) !=
      hello.size()) {
    return Finish(State::kDead);
  }
  return State::kWaiting;
}

BusProbe::State BusProbe::Advance() {
  std::array<char, 256> piece{};
  const ssize_t got = ::recv(socket_, piece.data(), piece.size(), MSG_DONTWAIT);
  if (got < 0 && (errno == EAGAIN || errno == EINTR)) return State::kWaiting;
  if (got <= 0) return Finish(State::kDead);
  answer_.append(piece.data(), got);
  if (answer_.startsWith("OK ")) return Finish(State::kAlive);
  return answer_.size() < 3 ? State::kWaiting : Finish(State::kDead);
}

BusProbe::State BusProbe::WaitFor(int longest_ms) {
  pollfd ready{socket_, POLLIN, 0};
  if (::poll(&ready, 1, longest_ms) <= 0) return State::kWaiting;
  return Advance();
}

}  // namespace kestrum
