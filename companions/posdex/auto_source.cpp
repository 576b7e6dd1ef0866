#include "auto_source.h"

#include <array>

#include "platform.h"

namespace kestrum::posdex {
namespace {

// The most usual ones first.
constexpr std::array kSpeeds{4800, 9600, 38400, 115200, 19200, 57600};
constexpr int kSentencesWanted = 2;

}  // namespace

AutoSource::AutoSource(const QString& folder, const QString& ports, const SourceChoice& gpsd)
    : folder_(folder), ports_(ports), gpsd_(gpsd) {
  limit_.setSingleShot(true);
  next_.setSingleShot(true);
  connect(&limit_, &QTimer::timeout, this, &AutoSource::TryNext);
  connect(&next_, &QTimer::timeout, this, &AutoSource::TryNext);
}

void AutoSource::Start() {
  BeginRound();
  TryNext();
}

QString AutoSource::Description() const {
  return found_ ? QStringLiteral("found: ") + source_->Description()
                : QStringLiteral("automatic: gpsd or a serial port");
}

void AutoSource::BeginRound() {
  waiting_ = {gpsd_};
  trouble_.clear();
  for (const QString& port : ReceiverPorts(folder_, ports_)) {
    for (const int speed : kSpeeds) {
      SourceChoice choice;
      choice.kind = SourceChoice::Kind::kSerial;
      choice.path = port;
      choice.baud = speed;
      waiting_.append(choice);
    }
  }
}

void AutoSource::TryNext() {
  limit_.stop();
  // At once, from a timer and never from its own signal: the next one may need the same port.
  source_.reset();
  if (waiting_.isEmpty()) {
    GiveUp();
    return;
  }
  Try(waiting_.takeFirst());
}

void AutoSource::Try(const SourceChoice& choice) {
  sentences_ = 0;
  is_serial_ = choice.kind == SourceChoice::Kind::kSerial;
  decoder_.NewStream();
  source_ = MakeSource(choice, folder_);
  const Source* const tried = source_.get();
  connect(tried, &Source::StateChanged, this, &AutoSource::TakeState);
  connect(tried, &Source::LineReceived, this, &AutoSource::TakeLine);
  connect(tried, &Source::PositionReported, this, [this](const Fix& fix) {
    Found();
    Q_EMIT PositionReported(fix);
  });
  connect(tried, &Source::SatellitesReported, this, &Source::SatellitesReported);
  SetState(SourceState::Link::kSearching, source_->Description());
  limit_.start(choice.kind == SourceChoice::Kind::kGpsd ? kGpsdMs : kListenMs);
  source_->Start();
}

void AutoSource::Found() {
  if (found_) return;
  found_ = true;
  limit_.stop();
  backoff_.Reset();
  SetState(SourceState::Link::kConnected);
  Q_EMIT DescriptionChanged();
}

void AutoSource::TakeLine(const QByteArray& line) {
  if (!found_ && decoder_.Decode(line)) {
    if (++sentences_ == kSentencesWanted) Found();
  }
  if (found_) Q_EMIT LineReceived(line);
}

void AutoSource::TakeState(const SourceState& state) {
  if (state.link != SourceState::Link::kFailed) return;
  if (found_) {
    found_ = false;
    SetState(state.link, state.detail);
    Q_EMIT DescriptionChanged();
    BeginRound();
    next_.start(backoff_.NextMs());
  } else {
    limit_.stop();
    if (is_serial_) trouble_ = state.detail;
    // Not from inside the source's own signal.
    next_.start(0);
  }
}

void AutoSource::GiveUp() {
  const QString reason = QStringLiteral("neither gpsd nor a serial port has one");
  SetState(SourceState::Link::kFailed,
           trouble_.isEmpty() ? reason : reason + QStringLiteral("; a port: ") + trouble_);
  BeginRound();
  next_.start(backoff_.NextMs());
}

}  // namespace kestrum::posdex
