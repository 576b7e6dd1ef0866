#include "harness.h"

#include <gtest/gtest.h>

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>

namespace kestrum::posdex {

QByteArray Nmea(const QByteArray& body) {
  unsigned char sum = 0;
  for (const char byte : body) sum = static_cast<unsigned char>(sum ^ static_cast<unsigned char>(byte));
  const QByteArray hex = QByteArray(1, static_cast<char>(sum)).toHex().toUpper();
  return "$" + body + "*" + hex + "\r\n";
}

QString DeviceOf(const Pty& pty) {
  return QString::fromStdString(pty.device());
}

void Send(const Pty& pty, const QByteArray& bytes) {
  pty.Write({bytes.constData(), static_cast<std::size_t>(bytes.size())});
}

Receiver::Receiver(const Pty& pty) : pty_(pty) {
  connect(&timer_, &QTimer::timeout, this, &Receiver::Send);
  timer_.start(200);
}

void Receiver::Send() {
  ++second_;
  const QByteArray time = QByteArray::number(120000 + second_ % 60) + ".00";
  if (has_fix_) {
    posdex::Send(pty_, Nmea("GPRMC," + time + ",A,5157.00000,N,00532.00000,E,10.0,45.0,010125,,,A"));
    posdex::Send(pty_, Nmea("GPGGA," + time + ",5157.00000,N,00532.00000,E,1,08,1.0,100.0,M,46.0,M,,"));
  } else {
    posdex::Send(pty_, Nmea("GPRMC," + time + ",V,,,,,,,010125,,,N"));
    posdex::Send(pty_, Nmea("GPGGA," + time + ",,,,,0,00,,,M,,M,,"));
  }
}

LinkClient::LinkClient(const std::string& address)
    : name_(QStringLiteral("client%1").arg(reinterpret_cast<quintptr>(this))),
      bus_(QDBusConnection::connectToBus(QString::fromStdString(address), name_)) {
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
  return WaitFor([&] { return Get(property) == value; }, milliseconds(limit_ms));
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

}  // namespace kestrum::posdex
