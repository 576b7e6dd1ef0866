#include "serial_source.h"

#include "common/win32/wide_text.h"

namespace kestrum::posdex {
namespace {

constexpr int kPollMs = 50;
// Reads of one poll, so that no stream holds up the window.
constexpr int kMostReads = 16;

QString ReasonOf(unsigned long error) {
  switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
      return QStringLiteral("not plugged in");
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
      return QStringLiteral("in use by another program");
    default:
      return QString::fromStdWString(win32::WideReason(error));
  }
}

}  // namespace

SerialSource::SerialSource(const SourceChoice& choice, const QString& /*folder*/) : choice_(choice) {
  retry_.setSingleShot(true);
  poll_.setInterval(kPollMs);
  connect(&retry_, &QTimer::timeout, this, &SerialSource::Open);
  connect(&poll_, &QTimer::timeout, this, &SerialSource::Read);
}

void SerialSource::Start() {
  Open();
}

QString SerialSource::Description() const {
  return QStringLiteral("serial port %1 at %2 baud").arg(choice_.path, QString::number(choice_.baud));
}

void SerialSource::Open() {
  splitter().Clear();
  const win32::SerialSettings settings{.baud = static_cast<unsigned long>(choice_.baud)};
  if (const unsigned long error = line_.Open(choice_.path.toStdWString(), settings)) {
    Fail(ReasonOf(error));
    return;
  }
  poll_.start();
  SetState(SourceState::Link::kConnected);
}

void SerialSource::Read() {
  for (int i = 0; i < kMostReads; ++i) {
    std::string bytes;
    const unsigned long error = line_.Read(bytes);
    if (!bytes.empty()) {
      backoff_.Reset();
      Feed(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
    }
    if (error != 0) {
      Fail(QStringLiteral("unplugged"));
      return;
    }
    // Whoever was told a line may have closed this source's port.
    if (bytes.size() < win32::SerialLine::kMostBytes || !line_.IsOpen()) return;
  }
}

void SerialSource::Fail(const QString& reason) {
  poll_.stop();
  line_.Close();
  retry_.start(backoff_.NextMs());
  SetState(SourceState::Link::kFailed, reason);
}

}  // namespace kestrum::posdex
