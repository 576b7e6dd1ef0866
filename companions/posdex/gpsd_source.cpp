#include "gpsd_source.h"

namespace kestrum::posdex {
namespace {

constexpr int kConnectLimitMs = 5000;
constexpr int kSilenceMs = 5000;
// Another receiver's turn when the followed one has had no fix for this long.
constexpr qint64 kFollowMs = 3500;

}  // namespace

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
  followed_.clear();
  followed_fix_.invalidate();
  connect_limit_.start(kConnectLimitMs);
  socket_.connectToHost(choice_.host, choice_.port);
}

void GpsdSource::Ask() {
  socket_.write("?WATCH={\"enable\":true,\"json\":true};?DEVICES;\n");
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

// Two receivers in turn would make one position jump between them.
bool GpsdSource::Follows(const GpsdReport& report) {
  const bool is_current = followed_fix_.isValid() && followed_fix_.elapsed() < kFollowMs;
  if (report.receiver != followed_ && is_current) return false;
  if (!report.position) return report.receiver == followed_ || followed_.isEmpty();
  if (report.receiver != followed_ && !report.position->valid && !followed_.isEmpty()) return false;
  followed_ = report.receiver;
  if (report.position->valid) {
    followed_fix_.start();
  } else if (report.position->type == FixType::kNone) {
    followed_fix_.invalidate();
  }
  return true;
}

// gpsd stays up when its receiver is unplugged and then only reports it.
void GpsdSource::TakeLine(const QByteArray& line) {
  backoff_.Reset();
  const GpsdReport report = ParseGpsdReport(line);
  if (!report.trouble.isEmpty()) {
    if (!report.receiver.isEmpty() && !followed_.isEmpty() && report.receiver != followed_) return;
    followed_.clear();
    followed_fix_.invalidate();
    SetState(SourceState::Link::kFailed, report.trouble);
    return;
  }
  if ((!report.position && !report.satellites) || !Follows(report)) return;
  SetState(SourceState::Link::kConnected);
  if (report.position) Q_EMIT PositionReported(*report.position);
  if (report.satellites) Q_EMIT SatellitesReported(*report.satellites);
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
