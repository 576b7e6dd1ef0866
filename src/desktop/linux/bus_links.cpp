#include "desktop/linux/bus_links.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <utility>

#include "desktop/text_convert.h"

namespace kestrum {
namespace {

constexpr int kRetry_ms = 2000;
constexpr int kProbeWait_ms = 50;
constexpr int kTitleWait_ms = 100;

constexpr const char* kTopic = "Posdex|form1";
QString Service() {
  return QStringLiteral("org.kestrum.Posdex");
}
QString Path() {
  return QStringLiteral("/form1");
}
QString ConnectionName() {
  return QStringLiteral("kestrum-links");
}
QString Properties() {
  return QStringLiteral("org.freedesktop.DBus.Properties");
}

QDBusMessage Call(const QString& interface, const QString& method, const QVariantList& arguments) {
  QDBusMessage call = QDBusMessage::createMethodCall(Service(), Path(), interface, method);
  call.setAutoStartService(false);
  call.setArguments(arguments);
  return call;
}

}  // namespace

BusLinks::BusLinks() : bus_(QString()) {
  retry_.setInterval(kRetry_ms);
  retry_.setSingleShot(true);
  connect(&retry_, &QTimer::timeout, this, &BusLinks::TryToConnect);
}

BusLinks::~BusLinks() {
  if (!connected_) return;
  if (quit_sent_) {
    // The close message leaves before the line is cut: an answer of the bus comes after it.
    QDBusMessage ask =
        QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/"),
                                       QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId"));
    bus_.asyncCall(ask, kProbeWait_ms).waitForFinished();
  }
  QDBusConnection::disconnectFromBus(ConnectionName());
}

// Asks the bus itself first, without waiting; only a bus that answers is connected to.
void BusLinks::TryToConnect() {
  if (connected_ || probe_notifier_) return;
  const BusProbe::State state = probe_.Start(BusProbe::SessionAddress());
  if (state != BusProbe::State::kWaiting) {
    OnProbe(state);
    return;
  }
  probe_notifier_ = std::make_unique<QSocketNotifier>(probe_.socket(), QSocketNotifier::Read);
  connect(probe_notifier_.get(), &QSocketNotifier::activated, this, [this] { OnProbe(probe_.Advance()); });
}

void BusLinks::OnProbe(BusProbe::State state) {
  if (state == BusProbe::State::kWaiting) return;
  if (probe_notifier_) {
    probe_notifier_->setEnabled(false);
    probe_notifier_.release()->deleteLater();
  }
  if (state == BusProbe::State::kAlive) Connect();
  if (!connected_) retry_.start();
}

void BusLinks::Connect() {
  const QString address = QString::fromLocal8Bit(BusProbe::SessionAddress());
  bus_ = QDBusConnection::connectToBus(address, ConnectionName());
  connected_ = bus_.isConnected();
  if (!connected_) {
    QDBusConnection::disconnectFromBus(ConnectionName());
    return;
  }
  // Without a service name: with one, the library would ask the bus for its owner and wait for the answer.
  bus_.connect(QString(), Path(), Properties(), QStringLiteral("PropertiesChanged"), this,
               SLOT(OnPropertiesChanged(QString, QVariantMap, QStringList, QDBusMessage)));
  bus_.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
               QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
               SLOT(OnDisconnected()));
  watcher_ = std::make_unique<QDBusServiceWatcher>(Service(), bus_, QDBusServiceWatcher::WatchForOwnerChange);
  connect(watcher_.get(), &QDBusServiceWatcher::serviceOwnerChanged, this, &BusLinks::OnOwnerChanged);
  FetchAll();
}

void BusLinks::OnDisconnected() {
  connected_ = false;
  owner_.clear();
  title_.clear();
  watcher_.reset();
  QDBusConnection::disconnectFromBus(ConnectionName());
  retry_.start();
}

void BusLinks::OnOwnerChanged(const QString& /*service*/, const QString& /*old_owner*/,
                              const QString& new_owner) {
  owner_ = new_owner;
  title_.clear();
  if (!owner_.isEmpty()) FetchAll();
}

void BusLinks::FetchAll() {
  ++fetches_;
  const QDBusPendingCall call = bus_.asyncCall(Call(Properties(), QStringLiteral("GetAll"), {Service()}));
  auto* watcher = new QDBusPendingCallWatcher(call, this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this, &BusLinks::OnAll);
}

void BusLinks::OnAll(QDBusPendingCallWatcher* watcher) {
  --fetches_;
  watcher->deleteLater();
  const QDBusPendingReply<QVariantMap> reply = *watcher;
  if (reply.isError()) return;
  owner_ = reply.reply().service();
  const QVariantMap properties = reply.value();
  title_ = properties.value(QStringLiteral("Title")).toString();
  Deliver(properties);
}

void BusLinks::OnPropertiesChanged(const QString& interface, const QVariantMap& changed,
                                   const QStringList& invalidated, const QDBusMessage& message) {
  if (interface != Service()) return;
  if (message.service() != owner_) {
    // Perhaps a new reader whose name has not been announced yet; the bus knows who it is.
    if (fetches_ == 0) FetchAll();
    return;
  }
  Deliver(changed);
  if (!invalidated.isEmpty()) FetchAll();
}

void BusLinks::Deliver(const QVariantMap& properties) {
  for (auto it = properties.cbegin(); it != properties.cend(); ++it) {
    const auto link = links_.find(it.key());
    if (link == links_.end()) continue;
    // A copy: the handler may end the link.
    const auto on_text = link->second;
    enter([on_text, text = FromQt(it.value().toString())] { on_text(text); });
  }
}

void BusLinks::LinkAutomatic(const std::string& topic, const std::string& item,
                             std::function<void(const std::string&)> on_text) {
  // Only the reader is linked to; any other server is one that never comes.
  if (topic != kTopic) return;
  links_[ToQt(item)] = std::move(on_text);
  if (!connected_) {
    if (!retry_.isActive()) TryToConnect();
  } else if (fetches_ == 0) {
    FetchAll();
  }
}

void BusLinks::Unlink(const std::string& topic, const std::string& item) {
  if (topic == kTopic) links_.erase(ToQt(item));
}

bool BusLinks::ServerPresent(const std::string& topic) const {
  return topic == kTopic && connected_ && !owner_.isEmpty();
}

void BusLinks::ConnectForAnswer() {
  if (connected_ || asked_) return;
  BusProbe probe;
  BusProbe::State state = probe.Start(BusProbe::SessionAddress());
  if (state == BusProbe::State::kWaiting) state = probe.WaitFor(kProbeWait_ms);
  if (state == BusProbe::State::kAlive) Connect();
}

void BusLinks::AskForTitle() {
  const QDBusPendingReply<QDBusVariant> reply = bus_.asyncCall(
      Call(Properties(), QStringLiteral("Get"), {Service(), QStringLiteral("Title")}), kTitleWait_ms);
  QDBusPendingCall(reply).waitForFinished();
  if (reply.isError()) return;
  title_ = reply.value().variant().toString();
  owner_ = reply.reply().service();
}

bool BusLinks::Exists(const std::string& title) {
  ConnectForAnswer();
  if (connected_ && title_.isEmpty() && !asked_) AskForTitle();
  asked_ = true;
  return !title_.isEmpty() && title_ == ToQt(title);
}

void BusLinks::Close(const std::string& title) {
  if (!connected_ || title_.isEmpty() || title_ != ToQt(title)) return;
  QDBusMessage quit = Call(Service(), QStringLiteral("Quit"), {});
  bus_.send(quit);
  quit_sent_ = true;
}

}  // namespace kestrum
