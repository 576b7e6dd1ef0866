#include "harness.h"

#include <gtest/gtest.h>

#include <QDBusMessage>
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

QString LinkClient::Get(const char* property) const {
  QDBusMessage call = QDBusMessage::createMethodCall(Q("org.kestrum.Posdex"), Q("/form1"),
                                                     Q("org.freedesktop.DBus.Properties"), Q("Get"));
  call << Q("org.kestrum.Posdex") << Q(property);
  // Serving in-process objects while it waits.
  const QDBusMessage reply = bus_.call(call, QDBus::BlockWithGui, 2000);
  if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty()) return {};
  return reply.arguments().at(0).value<QDBusVariant>().variant().toString();
}

bool LinkClient::WaitForValue(const char* property, const QString& value, int limit_ms) const {
  return WaitFor([&] { return Get(property) == value; }, milliseconds(limit_ms));
}

void LinkClient::Quit() const {
  bus_.call(QDBusMessage::createMethodCall(Q("org.kestrum.Posdex"), Q("/form1"), Q("org.kestrum.Posdex"),
                                           Q("Quit")),
            QDBus::BlockWithGui, 2000);
}

void LinkClient::OnChanged(const QString& interface, const QVariantMap& changed,
                           const QStringList& invalidated) {
  changes.append(changed);
  interface_of_last_change = interface;
  invalidated_of_last_change = invalidated;
}

}  // namespace kestrum::posdex
