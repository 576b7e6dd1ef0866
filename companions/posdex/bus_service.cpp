#include "bus_service.h"

#include <unistd.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingReply>
#include <QFileInfo>
#include <QThread>

namespace kestrum::posdex {
namespace {

constexpr const char* kName = "org.kestrum.Posdex";
constexpr const char* kPath = "/form1";
constexpr const char* kInterface = "org.kestrum.Posdex";
constexpr uint kDoNotQueue = 4;
constexpr uint kPrimaryOwner = 1;
constexpr uint kAlreadyOwner = 4;
constexpr uint kExists = 3;

QString Text(const char* latin1) {
  return QString::fromLatin1(latin1);
}

// The session bus's address, empty when there is none. A missing bus is not started from here.
QString BusAddress() {
  QString address = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
  if (!address.isEmpty()) return address;
  QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
  if (folder.isEmpty()) folder = QStringLiteral("/run/user/%1").arg(getuid());
  const QString socket = folder + QStringLiteral("/bus");
  return QFileInfo::exists(socket) ? QStringLiteral("unix:path=") + socket : QString();
}

QDBusMessage NameRequest() {
  QDBusMessage message =
      QDBusMessage::createMethodCall(Text("org.freedesktop.DBus"), Text("/org/freedesktop/DBus"),
                                     Text("org.freedesktop.DBus"), Text("RequestName"));
  message << Text(kName) << kDoNotQueue;
  return message;
}

}  // namespace

BusService::BusService(QObject* parent) : QObject(parent) {
  new BusAdaptor(this);
  retry_.setSingleShot(true);
  retry_.setInterval(kRetryMs);
  connect(&retry_, &QTimer::timeout, this, &BusService::Connect);
}

BusService::~BusService() {
  if (!connection_name_.isEmpty()) QDBusConnection::disconnectFromBus(connection_name_);
}

void BusService::Start() {
  Connect();
}

// Opening a connection waits for the bus's answer, so a thread does it; the rest is asynchronous anyway.
void BusService::Connect() {
  const QString address = BusAddress();
  if (address.isEmpty()) {
    Retry(QStringLiteral("no session bus, retrying"));
    return;
  }
  const QString name = QStringLiteral("posdex-%1-%2").arg(reinterpret_cast<quintptr>(this)).arg(++attempts_);
  connecting_ = QThread::create([address, name] { QDBusConnection::connectToBus(address, name); });
  connect(connecting_, &QThread::finished, this, [this, name] {
    connecting_->deleteLater();
    connecting_ = nullptr;
    OnConnected(name);
  });
  connecting_->start();
}

void BusService::OnConnected(const QString& connection_name) {
  QDBusConnection bus(connection_name);
  connection_name_ = connection_name;
  if (!bus.isConnected()) {
    Retry(QStringLiteral("no session bus, retrying"));
    return;
  }
  bus.connect(QString(), Text("/org/freedesktop/DBus/Local"), Text("org.freedesktop.DBus.Local"),
              Text("Disconnected"), this, SLOT(OnDisconnected()));
  bus.registerObject(Text(kPath), this, QDBusConnection::ExportAdaptors);
  auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(NameRequest()), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this, &BusService::OnNameReply);
}

void BusService::OnNameReply(QDBusPendingCallWatcher* watcher) {
  watcher->deleteLater();
  const QDBusPendingReply<uint> reply = *watcher;
  const uint answer = reply.isValid() ? reply.value() : 0;
  owned_ = answer == kPrimaryOwner || answer == kAlreadyOwner;
  if (owned_) {
    owned_once_ = true;
    Q_EMIT StateChanged(QStringLiteral("on the session bus"));
  } else if (answer == kExists && !owned_once_) {
    Q_EMIT NameTaken();
  } else if (answer == kExists) {
    Retry(QStringLiteral("another reader is on the session bus, retrying"));
  } else {
    Retry(QStringLiteral("the session bus refuses the name, retrying"));
  }
}

void BusService::OnDisconnected() {
  Retry(QStringLiteral("the session bus has gone, retrying"));
}

void BusService::Retry(const QString& state) {
  owned_ = false;
  if (!connection_name_.isEmpty()) QDBusConnection::disconnectFromBus(connection_name_);
  connection_name_.clear();
  if (!retry_.isActive()) retry_.start();
  Q_EMIT StateChanged(state);
}

void BusService::SetTexts(const GpsTexts& texts) {
  QVariantMap changed;
  for (const Item& item : kItems) {
    if (texts.*item.text != texts_.*item.text) changed.insert(Text(item.name), texts.*item.text);
  }
  texts_ = texts;
  if (changed.isEmpty() || !owned_) return;
  QDBusMessage signal = QDBusMessage::createSignal(Text(kPath), Text("org.freedesktop.DBus.Properties"),
                                                   Text("PropertiesChanged"));
  signal << Text(kInterface) << changed << QStringList();
  QDBusConnection(connection_name_).send(signal);
}

}  // namespace kestrum::posdex
