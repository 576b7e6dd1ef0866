#include "serial_source.h"

#include <QDir>
#include <QFileInfo>

namespace kestrum::posdex {
namespace {

constexpr int kSilenceMs = 3000;

QString ReasonOf(const QSerialPort& port) {
  switch (port.error()) {
    case QSerialPort::DeviceNotFoundError:
      return QStringLiteral("not plugged in");
    case QSerialPort::PermissionError:
      return QStringLiteral("no permission or in use (is the user in the group dialout?)");
    default:
      return port.errorString();
  }
}

}  // namespace

SerialSource::SerialSource(const SourceChoice& choice, const QString& folder)
    : choice_(choice), folder_(folder) {
  port_.setReadBufferSize(kReadBuffer);
  retry_.setSingleShot(true);
  connect(&retry_, &QTimer::timeout, this, &SerialSource::Open);
  connect(&silence_, &QTimer::timeout, this, &SerialSource::OnSilence);
  connect(&port_, &QSerialPort::readyRead, this, [this] {
    backoff_.Reset();
    silence_.start(kSilenceMs);
    Feed(port_.readAll());
  });
  // Queued, because the port must not be closed from inside its own read.
  connect(
      &port_, &QSerialPort::errorOccurred, this,
      [this](QSerialPort::SerialPortError error) {
        if (error != QSerialPort::NoError && port_.isOpen()) Fail(QStringLiteral("unplugged"));
      },
      Qt::QueuedConnection);
}

void SerialSource::Start() {
  Open();
}

QString SerialSource::Description() const {
  return QStringLiteral("serial port %1 at %2 baud").arg(choice_.path, QString::number(choice_.baud));
}

QString SerialSource::DevicePath() const {
  const QString beside = QDir(folder_).absoluteFilePath(choice_.path);
  return QFileInfo::exists(beside) ? beside : QDir(QStringLiteral("/dev")).absoluteFilePath(choice_.path);
}

void SerialSource::Open() {
  splitter().Clear();
  const QString device = DevicePath();
  if (!QFileInfo::exists(device)) {
    Fail(QStringLiteral("not plugged in"));
    return;
  }
  port_.setPortName(device);
  port_.setBaudRate(choice_.baud);
  if (!port_.open(QIODevice::ReadOnly)) {
    Fail(ReasonOf(port_));
    return;
  }
  port_.clearError();
  opened_ = QFileInfo(device).canonicalFilePath();
  silence_.start(kSilenceMs);
  SetState(SourceState::Link::kConnected);
}

void SerialSource::Fail(const QString& reason) {
  silence_.stop();
  if (port_.isOpen()) port_.close();
  retry_.start(backoff_.NextMs());
  SetState(SourceState::Link::kFailed, reason);
}

// A receiver that was pulled and plugged in again may have left a silent, open port behind.
void SerialSource::OnSilence() {
  if (QFileInfo(DevicePath()).canonicalFilePath() != opened_) Fail(QStringLiteral("unplugged"));
}

}  // namespace kestrum::posdex
