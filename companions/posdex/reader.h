#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <memory>

#include "fix_tracker.h"
#include "nmea_decoder.h"
#include "position_texts.h"
#include "source.h"

namespace kestrum::posdex {

// From the lines of a source to the six texts and a line about the state of the receiver.
class Reader : public QObject {
  Q_OBJECT

 public:
  // The sentences of one moment arrive one by one; what they change is published together when the next
  // moment begins, after this time at the latest. A gpsd's reports are complete and go out at once.
  static constexpr int kGatherMs = 200;
  // How often silence is looked for. With the other two times a lost fix shows after 4.2 seconds at most.
  static constexpr int kTickMs = 500;

  explicit Reader(std::unique_ptr<Source> source);

  // Starts the source. The signals come from the event loop only.
  void Start() { source_->Start(); }

  QString Description() const { return source_->Description(); }
  const GpsTexts& Texts() const { return texts_; }
  const QString& State() const { return state_; }
  // Kind of fix and satellites, as "3D fix, 8 satellites".
  QString FixText() const;
  // Time since the position was confirmed last, as "under 1 s".
  QString AgeText() const;

 Q_SIGNALS:
  void TextsChanged(const kestrum::posdex::GpsTexts& texts);
  void StateChanged(const QString& state);
  void FixChanged(const QString& fix, const QString& age);
  void DescriptionChanged(const QString& description);

 private:
  void TakeLine(const QByteArray& line);
  void TakeReport(const Fix& fix);
  void NewStream();
  void TakeState(const SourceState& state);
  void OnTick();
  void Gather();
  void Publish();
  QString StateText() const;
  QString ConnectedText() const;

  std::unique_ptr<Source> source_;
  NmeaDecoder decoder_;
  FixTracker tracker_;
  QElapsedTimer clock_;
  QTimer gather_;
  QTimer tick_;
  SourceState source_state_;
  qint64 last_line_ms_ = 0;
  qint64 last_sentence_ms_ = 0;
  GpsTexts texts_;
  QString state_ = QStringLiteral("connecting");
  QString fix_text_;
  QString age_text_;
};

}  // namespace kestrum::posdex
