#pragma once

#include <QByteArray>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>
#include <QTimer>
#include <QVariantMap>
#include <functional>
#include <ostream>

// How a failed expectation shows a text.
inline void PrintTo(const QString& text, std::ostream* out) {
  *out << '"' << text.toStdString() << '"';
}

namespace kestrum::posdex {

/// A literal as QString.
inline QString Q(const char* latin1) {
  return QString::fromLatin1(latin1);
}

/// "$", the body, "*", its checksum and CR LF.
QByteArray Nmea(const QByteArray& body);

/// Runs the event loop until the condition holds; false when it does not within the time.
bool WaitFor(const std::function<bool()>& condition, int limit_ms);

/// Runs the event loop for a while.
void RunFor(int ms);

/// A pseudo-terminal whose slave side is the receiver's device. Unplugging closes it.
class Pty {
 public:
  Pty();
  ~Pty() { Unplug(); }
  Pty(const Pty&) = delete;
  Pty& operator=(const Pty&) = delete;

  QString Device() const { return device_; }
  int Master() const { return master_; }
  void Write(const QByteArray& bytes) const;
  void Unplug();

 private:
  int master_ = -1;
  int slave_ = -1;
  QString device_;
};

/// A receiver: writes RMC and GGA to a pseudo-terminal five times a second while it lives.
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

/// A session bus of its own; its end takes everything on it along.
class PrivateBus {
 public:
  /// Listens where `address` says, or anywhere.
  explicit PrivateBus(const QString& address = {});
  ~PrivateBus() { Stop(); }
  PrivateBus(const PrivateBus&) = delete;
  PrivateBus& operator=(const PrivateBus&) = delete;

  QString Address() const { return address_; }
  void Stop();

 private:
  QProcess daemon_;
  QString address_;
};

/// The logger's side of the link.
class LinkClient : public QObject {
  Q_OBJECT

 public:
  explicit LinkClient(const QString& address);
  ~LinkClient() override;
  LinkClient(const LinkClient&) = delete;
  LinkClient& operator=(const LinkClient&) = delete;

  /// One property; empty when nobody answers.
  QString Get(const char* property) const;
  bool WaitForValue(const char* property, const QString& value, int limit_ms) const;
  void Quit() const;

  /// What each PropertiesChanged has said so far.
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

/// A TCP port of this machine that nobody listens on.
quint16 FreePort();

}  // namespace kestrum::posdex
