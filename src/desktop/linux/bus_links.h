#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QElapsedTimer>
#include <QSocketNotifier>
#include <QTimer>
#include <QVariantMap>
#include <map>
#include <memory>

#include "desktop/linux/bus_probe.h"
#include "desktop/platform_factory.h"

class QDBusPendingCallWatcher;

namespace kestrum {

// The GPS reader's texts over the session bus. Everything is asynchronous, with one exception: whether the
// reader runs has to be known on the spot at start-up, and that question waits for at most 150 ms.
class BusLinks : public QObject, public LinksAndWindows {
  Q_OBJECT

 public:
  BusLinks();
  ~BusLinks() override;
  BusLinks(const BusLinks&) = delete;
  BusLinks& operator=(const BusLinks&) = delete;

  void LinkAutomatic(const std::string& topic, const std::string& item,
                     std::function<void(const std::string&)> on_text) override;
  void Unlink(const std::string& topic, const std::string& item) override;
  bool ServerPresent(const std::string& topic) const override;
  // Nothing: this reader gives no sign of life.
  std::optional<std::chrono::milliseconds> SilentFor(const std::string& /*topic*/) const override { return {}; }
  bool Exists(const std::string& title) override;
  void Close(const std::string& title) override;

 private slots:
  void OnPropertiesChanged(const QString& interface, const QVariantMap& changed,
                           const QStringList& invalidated, const QDBusMessage& message);
  void OnOwnerChanged(const QString& service, const QString& old_owner, const QString& new_owner);
  void OnDisconnected();

 private:
  void TryToConnect();
  void OnProbe(BusProbe::State state);
  void Connect();
  void ConnectForAnswer();
  void AskForTitle();
  void FetchAll();
  void OnAll(QDBusPendingCallWatcher* watcher);
  void Deliver(const QVariantMap& properties);

  std::map<QString, std::function<void(const std::string&)>> links_;
  BusProbe probe_;
  std::unique_ptr<QSocketNotifier> probe_notifier_;
  QTimer retry_;
  QDBusConnection bus_;
  std::unique_ptr<QDBusServiceWatcher> watcher_;
  bool connected_ = false;
  QString owner_;  // unique name of the reader; empty when it is not there
  QString title_;
  int fetches_ = 0;     // outstanding
  bool asked_ = false;  // the question of start-up has had its time
  bool quit_sent_ = false;
};

}  // namespace kestrum
