#include "reader.h"

namespace kestrum::posdex {

Reader::Reader(std::unique_ptr<Source> source) : source_(std::move(source)) {
  clock_.start();
  gather_.setSingleShot(true);
  gather_.setInterval(kGatherMs);
  connect(source_.get(), &Source::LineReceived, this, &Reader::TakeLine);
  connect(source_.get(), &Source::StateChanged, this, &Reader::TakeState);
  connect(&gather_, &QTimer::timeout, this, &Reader::Publish);
  connect(&tick_, &QTimer::timeout, this, &Reader::OnTick);
  tick_.start(kTickMs);
}

void Reader::TakeLine(const QByteArray& line) {
  last_line_ms_ = clock_.elapsed();
  const std::optional<Sentence> sentence = decoder_.Decode(line);
  if (!sentence) return;
  last_sentence_ms_ = last_line_ms_;
  tracker_.Take(*sentence, last_line_ms_);
  Gather();
}

void Reader::TakeState(const SourceState& state) {
  source_state_ = state;
  last_line_ms_ = last_sentence_ms_ = clock_.elapsed();
  if (state.link == SourceState::Link::kFailed) tracker_.Lose();
  Gather();
}

void Reader::OnTick() {
  tracker_.Expire(clock_.elapsed());
  if (!gather_.isActive()) Publish();
}

// Never restarted while it runs: a receiver that talks without a pause is published all the same.
void Reader::Gather() {
  if (!gather_.isActive()) gather_.start();
}

void Reader::Publish() {
  const GpsTexts texts = TextsOf(tracker_.Current());
  if (texts != texts_) {
    texts_ = texts;
    Q_EMIT TextsChanged(texts_);
  }
  const QString state = StateText();
  if (state != state_) {
    state_ = state;
    Q_EMIT StateChanged(state_);
  }
}

QString Reader::StateText() const {
  switch (source_state_.link) {
    case SourceState::Link::kConnecting:
      return QStringLiteral("connecting");
    case SourceState::Link::kFailed:
      return QStringLiteral("no receiver: %1, retrying").arg(source_state_.detail);
    case SourceState::Link::kEnded:
      return QStringLiteral("the recording has ended");
    case SourceState::Link::kConnected:
      break;
  }
  return ConnectedText();
}

QString Reader::ConnectedText() const {
  const qint64 quiet_since_ms = clock_.elapsed() - FixTracker::kLostAfterMs;
  if (tracker_.Current().valid) return QStringLiteral("connected, fix");
  if (last_line_ms_ <= quiet_since_ms) return QStringLiteral("connected, no data");
  if (last_sentence_ms_ <= quiet_since_ms) {
    return QStringLiteral("connected, but no NMEA sentences (is the baud rate right?)");
  }
  return QStringLiteral("waiting for a fix");
}

}  // namespace kestrum::posdex
