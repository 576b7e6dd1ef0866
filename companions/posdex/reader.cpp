#include "reader.h"

namespace kestrum::posdex {

Reader::Reader(std::unique_ptr<Source> source) : source_(std::move(source)) {
  clock_.start();
  gather_.setSingleShot(true);
  gather_.setInterval(kGatherMs);
  connect(source_.get(), &Source::LineReceived, this, &Reader::TakeLine);
  connect(source_.get(), &Source::PositionReported, this, &Reader::TakeReport);
  connect(source_.get(), &Source::SatellitesReported, this,
          [this](int count) { tracker_.TakeSatellites(count, clock_.elapsed()); });
  connect(source_.get(), &Source::Restarted, this, &Reader::NewStream);
  connect(source_.get(), &Source::DescriptionChanged, this,
          [this] { Q_EMIT DescriptionChanged(source_->Description()); });
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
  if (tracker_.Begins(*sentence)) Publish();
  tracker_.Take(*sentence, last_line_ms_);
  Gather();
}

void Reader::TakeReport(const Fix& fix) {
  last_line_ms_ = last_sentence_ms_ = clock_.elapsed();
  tracker_.Take(fix, last_line_ms_);
  Publish();
}

void Reader::NewStream() {
  decoder_.NewStream();
  tracker_.NewStream();
}

void Reader::TakeState(const SourceState& state) {
  Publish();
  NewStream();
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
  gather_.stop();
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
  const QString fix = FixText();
  const QString age = AgeText();
  if (fix == fix_text_ && age == age_text_) return;
  fix_text_ = fix;
  age_text_ = age;
  Q_EMIT FixChanged(fix, age);
}

QString Reader::FixText() const {
  const Fix& fix = tracker_.Current();
  QString text = QStringLiteral("no fix");
  if (fix.valid) {
    text = fix.type == FixType::k2D   ? QStringLiteral("2D fix")
           : fix.type == FixType::k3D ? QStringLiteral("3D fix")
                                      : QStringLiteral("fix");
  }
  if (!fix.satellites) return text;
  const QString count = QString::number(*fix.satellites);
  return text + (*fix.satellites == 1 ? QStringLiteral(", 1 satellite")
                                      : QStringLiteral(", %1 satellites").arg(count));
}

QString Reader::AgeText() const {
  const std::optional<qint64> age_ms = tracker_.AgeMs(clock_.elapsed());
  if (!age_ms) return QStringLiteral("no position yet");
  const qint64 seconds = *age_ms / 1000;
  if (seconds == 0) return QStringLiteral("under 1 s");
  if (seconds < 60) return QStringLiteral("%1 s").arg(seconds);
  return QStringLiteral("%1 min %2 s").arg(seconds / 60).arg(seconds % 60);
}

QString Reader::StateText() const {
  switch (source_state_.link) {
    case SourceState::Link::kSearching:
      return QStringLiteral("looking for a receiver: %1").arg(source_state_.detail);
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
