#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QVariantMap>

namespace kestrum::test {

// A GPS reader on a bus, inside the test.
class FakeReader : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.kestrum.Posdex")
  Q_PROPERTY(QString Title MEMBER title)
  Q_PROPERTY(QString lblLat1 MEMBER latitude)
  Q_PROPERTY(QString lblVal1 MEMBER validity)

 public:
  FakeReader(const QString& address, const QString& name)
      : name_(name), bus_(QDBusConnection::connectToBus(address, name)) {
    bus_.registerObject(QStringLiteral("/form1"), this,
                        QDBusConnection::ExportAllProperties | QDBusConnection::ExportAllSlots);
    bus_.registerService(QStringLiteral("org.kestrum.Posdex"));
  }
  ~FakeReader() override { QDBusConnection::disconnectFromBus(name_); }
  FakeReader(const FakeReader&) = delete;
  FakeReader& operator=(const FakeReader&) = delete;

  void Change(const QString& item, const QString& text) {
    setProperty(item.toLatin1().constData(), text);
    Announce(item, text);
  }
  void Announce(const QString& item, const QString& text) {
    QDBusMessage signal = QDBusMessage::createSignal(QStringLiteral("/form1"),
                                                     QStringLiteral("org.freedesktop.DBus.Properties"),
                                                     QStringLiteral("PropertiesChanged"));
    signal << QStringLiteral("org.kestrum.Posdex") << QVariantMap{{item, text}} << QStringList();
    bus_.send(signal);
  }

  void Beat() {
    bus_.send(QDBusMessage::createSignal(QStringLiteral("/form1"), QStringLiteral("org.kestrum.Posdex"),
                                         QStringLiteral("Heartbeat")));
  }

  QString title = QStringLiteral("Posdex Version 1.19");
  QString latitude = QStringLiteral("5157.0000N");
  QString validity = QStringLiteral("A");
  int quits = 0;

 public slots:
  void Quit() { ++quits; }

 private:
  QString name_;
  QDBusConnection bus_;
};

}  // namespace kestrum::test
