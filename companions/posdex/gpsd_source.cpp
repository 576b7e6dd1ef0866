#include "gpsd_source.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace kestrum::posdex {
namespace {

constexpr int kConnectLimitMs = 5000;
constexpr int kSilenceMs = 5000;

}  // namespace

QString ReceiverTrouble(const QByteArray& report) {
  const QJsonObject object = QJsonDocument::fromJson(report).object();
  const QString kind = object[QLatin1String("class")].toString();
  const QJsonValue activated = object[QLatin1String("activated")];
  if (kind == QLatin1String("DEVICES") && object[QLatin1String("devices")].toArray().isEmpty()) {
    return QStringLiteral("gpsd has no receiver");
  }
  if (kind == QLatin1String("DEVICE") && activated.isDouble() && activated.toDouble() == 0.0) {
    return QStringLiteral("gpsd has lost its receiver");
  }
  return {};
}

GpsdSource::GpsdSource(const SourceChoice& choice) : choice_(choice) {
  socket_.setReadBufferSize(kReadBuffer);
  for (QTimer* timer : {&retry_, &connect_limit_, &silence_}) timer->setSingleShot(true);
  connect(&retry_, &QTimer::timeout, this, &GpsdSource::Connect);
  connect(&connect_limit_, &QTimer::timeout, this, [this] { Fail(QStringLiteral("gpsd does not answer")); });
  connect(&silence_, &QTimer::timeout, this, &GpsdSource::OnSilence);
  connect(&socket_, &QTcpSocket::connected, this, [this] {
    connect_limit_.stop();
    SetState(SourceState::Link::kConnected);
    Ask();
  });
  connect(&socket_, &QTcpSocket::errorOccurred, this, [this](QAbstractSocket::SocketError error) {
    const bool closed = error == QAbstractSocket::RemoteHostClosedError;
    Fail(closed ? QStringLiteral("gpsd has stopped") : socket_.errorString());
  });
  connect(&socket_, &QTcpSocket::disconnected, this, [this] { Fail(QStringLiteral("gpsd has stopped")); });
  connect(&socket_, &QTcpSocket::readyRead, this, [this] {
    asked_again_ = false;
    silence_.start(kSilenceMs);
    Feed(socket_.readAll());
  });
}

// The socket reports its own end, to a source that is half destroyed by then.
GpsdSource::~GpsdSource() {
  socket_.disconnect(this);
}

void GpsdSource::Start() {
  Connect();
}

QString GpsdSource::Description() const {
  const bool is_v6 = choice_.host.contains(QLatin1Char(':'));
  const QString host = is_v6 ? QLatin1Char('[') + choice_.host + QLatin1Char(']') : choice_.host;
  return QStringLiteral("gpsd on %1:%2").arg(host, QString::number(choice_.port));
}

void GpsdSource::Connect() {
  splitter().Clear();
  connect_limit_.start(kConnectLimitMs);
  socket_.connectToHost(choice_.host, choice_.port);
}

void GpsdSource::Ask() {
  socket_.write("?WATCH={\"enable\":true,\"nmea\":true};?DEVICES;\n");
  silence_.start(kSilenceMs);
}

void GpsdSource::Fail(const QString& reason) {
  if (retry_.isActive()) return;
  connect_limit_.stop();
  silence_.stop();
  asked_again_ = false;
  retry_.start(backoff_.NextMs());
  socket_.abort();
  SetState(SourceState::Link::kFailed, reason);
}

// gpsd stays up when its receiver is unplugged and then only reports it.
void GpsdSource::TakeLine(const QByteArray& line) {
  backoff_.Reset();
  if (line.startsWith('{')) {
    const QString trouble = ReceiverTrouble(line);
    if (!trouble.isEmpty()) SetState(SourceState::Link::kFailed, trouble);
  } else {
    SetState(SourceState::Link::kConnected);
    Q_EMIT LineReceived(line);
  }
}

// Asking again makes gpsd reopen a receiver that has returned, and shows whether the connection still lives.
void GpsdSource::OnSilence() {
  if (asked_again_) {
    Fail(QStringLiteral("gpsd does not answer"));
    return;
  }
  asked_again_ = true;
  Ask();
}

}  // namespace kestrum::posdex
