#pragma once

#include <QByteArray>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <QTemporaryDir>
#include <QTimer>
#include <QVariantMap>
#include <ostream>
#include <string>

#include "support_process/daemons.h"
#include "support_process/pty.h"
#include "support_process/qt_waits.h"

// How a failed expectation shows a text.
inline void PrintTo(const QString& text, std::ostream* out) {
  *out << '"' << text.toStdString() << '"';
}

namespace kestrum::posdex {

// A literal as QString.
inline QString Q(const char* latin1) {
  return QString::fromLatin1(latin1);
}

// "$", the body, "*", its checksum and CR LF.
QByteArray Nmea(const QByteArray& body);

using process::FreePort;
using process::PrivateBus;
using process::Pty;
using process::StaysTrueWhileEventsRun;
using process::WaitFor;
using std::chrono::milliseconds;

// The receiver's device.
QString DeviceOf(const Pty& pty);
void Send(const Pty& pty, const QByteArray& bytes);

// A receiver: writes RMC and GGA to a pseudo-terminal five times a second while it lives.
class Receiver : public QObject {
  Q_OBJECT

 public:
  explicit Receiver(const Pty& pty);
  void SetFix(bool has_fix) { has_fix_ = has_fix; }

 private:
  void Send();

  const Pty& pty_;
  QTimer timer_;
  bool has_fix_ = true;
  int second_ = 0;
};

// The logger's side of the link.
class LinkClient : public QObject {
  Q_OBJECT

 public:
  explicit LinkClient(const std::string& address);
  ~LinkClient() override;
  LinkClient(const LinkClient&) = delete;
  LinkClient& operator=(const LinkClient&) = delete;

  // One property; empty when nobody answers.
  QString Get(const char* property) const;
  bool WaitForValue(const char* property, const QString& value, int limit_ms) const;
  void Quit() const;

  // What each PropertiesChanged has said so far.
  QList<QVariantMap> changes;
  int heartbeats = 0;
  QString interface_of_last_change;
  QStringList invalidated_of_last_change;

 private Q_SLOTS:
  void OnHeartbeat() { ++heartbeats; }
  void OnChanged(const QString& interface, const QVariantMap& changed, const QStringList& invalidated);

 private:
  QDBusMessage Call(const char* interface, const char* method, const QVariantList& arguments) const;

  QString name_;
  QDBusConnection bus_;
};

}  // namespace kestrum::posdex
