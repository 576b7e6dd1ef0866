#include "harness.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTcpServer>
#include <array>

namespace kestrum::posdex {

QByteArray Nmea(const QByteArray& body) {
  unsigned char sum = 0;
  for (const char byte : body) sum = static_cast<unsigned char>(sum ^ static_cast<unsigned char>(byte));
  const QByteArray hex = QByteArray(1, static_cast<char>(sum)).toHex().toUpper();
  return "$" + body + "*" + hex + "\r\n";
}

bool WaitFor(const std::function<bool()>& condition, int limit_ms) {
  QElapsedTimer clock;
  clock.start();
  while (!condition()) {
    if (clock.elapsed() > limit_ms) return false;
    RunFor(10);
  }
  return true;
}

void RunFor(int ms) {
  QEventLoop loop;
  QTimer::singleShot(ms, &loop, &QEventLoop::quit);
  loop.exec();
}

Pty::Pty() {
  std::array<char, 128> name{};
  termios raw{};
  cfmakeraw(&raw);
  if (openpty(&master_, &slave_, name.data(), &raw, nullptr) != 0) {
    ADD_FAILURE() << "no pseudo-terminal";
    return;
  }
  fcntl(master_, F_SETFL, O_NONBLOCK);
  fcntl(master_, F_SETFD, FD_CLOEXEC);
  fcntl(slave_, F_SETFD, FD_CLOEXEC);
  device_ = QString::fromLocal8Bit(name.data());
  // gpsd gives up being root before it opens its receiver.
  chmod(name.data(), 0666);
}

void Pty::Write(const QByteArray& bytes) const {
  // A full terminal drops what does not fit, as a receiver without a reader does.
  [[maybe_unused]] const auto written = write(master_, bytes.constData(), static_cast<size_t>(bytes.size()));
}

void Pty::Unplug() {
  for (int* end : {&slave_, &master_}) {
    if (*end >= 0) close(*end);
    *end = -1;
  }
}

Receiver::Receiver(const Pty& pty) : pty_(pty) {
  connect(&timer_, &QTimer::timeout, this, &Receiver::Send);
  timer_.start(200);
}

void Receiver::Send() {
  ++second_;
  const QByteArray time = QByteArray::number(120000 + second_ % 60) + ".00";
  if (has_fix_) {
    pty_.Write(Nmea("GPRMC," + time + ",A,5157.00000,N,00532.00000,E,10.0,45.0,010125,,,A"));
    pty_.Write(Nmea("GPGGA," + time + ",5157.00000,N,00532.00000,E,1,08,1.0,100.0,M,46.0,M,,"));
  } else {
    pty_.Write(Nmea("GPRMC," + time + ",V,,,,,,,010125,,,N"));
    pty_.Write(Nmea("GPGGA," + time + ",,,,,0,00,,,M,,M,,"));
  }
}

PrivateBus::PrivateBus(const QString& address) {
  QStringList arguments{Q("--session"), Q("--print-address"), Q("--nofork"), Q("--nopidfile")};
  if (!address.isEmpty()) arguments << Q("--address=") + address;
  daemon_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  daemon_.start(Q("dbus-daemon"), arguments);
  if (!daemon_.waitForStarted()) ADD_FAILURE() << "dbus-daemon is not installed";
  if (!WaitFor([this] { return daemon_.canReadLine(); }, 5000)) ADD_FAILURE() << "dbus-daemon is silent";
  address_ = QString::fromLatin1(daemon_.readLine().trimmed());
}

void PrivateBus::Stop() {
  daemon_.kill();
  daemon_.waitForFinished();
}

LinkClient::LinkClient(const QString& address)
    : name_(QStringLiteral("client%1").arg(reinterpret_cast<quintptr>(this))),
      bus_(QDBusConnection::connectToBus(address, name_)) {
  EXPECT_TRUE(bus_.isConnected());
  EXPECT_TRUE(bus_.connect(Q("org.kestrum.Posdex"), Q("/form1"), Q("org.freedesktop.DBus.Properties"),
                           Q("PropertiesChanged"), this, SLOT(OnChanged(QString, QVariantMap, QStringList))));
  EXPECT_TRUE(bus_.connect(Q("org.kestrum.Posdex"), Q("/form1"), Q("org.kestrum.Posdex"), Q("Heartbeat"),
                           this, SLOT(OnHeartbeat())));
}

LinkClient::~LinkClient() {
  QDBusConnection::disconnectFromBus(name_);
}

QDBusMessage LinkClient::Call(const char* interface, const char* method,
                              const QVariantList& arguments) const {
  QDBusMessage call =
      QDBusMessage::createMethodCall(Q("org.kestrum.Posdex"), Q("/form1"), Q(interface), Q(method));
  call.setArguments(arguments);
  // Objects of this process are served while it waits. A call that runs the event loop by itself
  // (BlockWithGui) waits for ever when the reply comes before its loop has begun.
  const QDBusPendingCallWatcher reply(bus_.asyncCall(call, 2000));
  QEventLoop loop;
  connect(&reply, &QDBusPendingCallWatcher::finished, &loop, &QEventLoop::quit);
  QTimer::singleShot(3000, &loop, &QEventLoop::quit);
  if (!reply.isFinished()) loop.exec();
  return reply.reply();
}

QString LinkClient::Get(const char* property) const {
  const QDBusMessage reply =
      Call("org.freedesktop.DBus.Properties", "Get", {Q("org.kestrum.Posdex"), Q(property)});
  if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty()) return {};
  return reply.arguments().at(0).value<QDBusVariant>().variant().toString();
}

bool LinkClient::WaitForValue(const char* property, const QString& value, int limit_ms) const {
  return WaitFor([&] { return Get(property) == value; }, limit_ms);
}

void LinkClient::Quit() const {
  Call("org.kestrum.Posdex", "Quit", {});
}

void LinkClient::OnChanged(const QString& interface, const QVariantMap& changed,
                           const QStringList& invalidated) {
  changes.append(changed);
  interface_of_last_change = interface;
  invalidated_of_last_change = invalidated;
}

quint16 FreePort() {
  QTcpServer server;
  EXPECT_TRUE(server.listen(QHostAddress::LocalHost));
  return server.serverPort();
}

}  // namespace kestrum::posdex
