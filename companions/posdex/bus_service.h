#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusPendingCallWatcher>
#include <QObject>
#include <QTimer>

#include "position_texts.h"

class QThread;

namespace kestrum::posdex {

/// The reader's title, by which the logger recognises it.
inline constexpr const char* kTitle = "Posdex Version 1.19";

/// Offers the six texts on the session bus: name org.kestrum.Posdex, object /form1, interface
/// org.kestrum.Posdex. Without a bus it keeps trying in the background; nothing here blocks the window.
class BusService : public QObject {
  Q_OBJECT

 public:
  static constexpr int kRetryMs = 2000;

  explicit BusService(QObject* parent = nullptr);
  ~BusService() override;
  BusService(const BusService&) = delete;
  BusService& operator=(const BusService&) = delete;

  void Start();
  void SetTexts(const GpsTexts& texts);
  const GpsTexts& Texts() const { return texts_; }

  /// True while a bus that does not answer holds the background thread; the process cannot wait for that.
  bool IsConnecting() const { return connecting_ != nullptr; }

 Q_SIGNALS:
  /// A line for the user, as "on the session bus" or "no session bus, retrying".
  void StateChanged(const QString& state);
  /// Another reader already owns the name, and this one never did; it does not try again.
  void NameTaken();
  /// The logger asks the reader to close.
  void QuitRequested();

 private Q_SLOTS:
  void OnDisconnected();

 private:
  void Connect();
  void OnConnected(const QString& connection_name);
  void OnNameReply(QDBusPendingCallWatcher* watcher);
  void Retry(const QString& state);

  GpsTexts texts_;
  QThread* connecting_ = nullptr;
  QString connection_name_;
  int attempts_ = 0;
  bool owned_once_ = false;
  bool owned_ = false;
  QTimer retry_;
};

/// The exported face of BusService.
class BusAdaptor : public QDBusAbstractAdaptor {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.kestrum.Posdex")
  Q_PROPERTY(QString Title READ Title CONSTANT)
  Q_PROPERTY(QString lblLat1 READ Latitude)
  Q_PROPERTY(QString lblLong1 READ Longitude)
  Q_PROPERTY(QString lblVal1 READ Validity)
  Q_PROPERTY(QString lblCompas1 READ Compass)
  Q_PROPERTY(QString lblHeight1 READ Height)
  Q_PROPERTY(QString lblSpeed1 READ Speed)

 public:
  explicit BusAdaptor(BusService* service) : QDBusAbstractAdaptor(service), service_(service) {}

  QString Title() const { return QString::fromLatin1(kTitle); }
  QString Latitude() const { return service_->Texts().latitude; }
  QString Longitude() const { return service_->Texts().longitude; }
  QString Validity() const { return service_->Texts().validity; }
  QString Compass() const { return service_->Texts().compass; }
  QString Height() const { return service_->Texts().height; }
  QString Speed() const { return service_->Texts().speed; }

 public Q_SLOTS:
  void Quit() { Q_EMIT service_->QuitRequested(); }

 private:
  BusService* service_;
};

}  // namespace kestrum::posdex
