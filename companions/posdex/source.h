#pragma once

#include <QByteArrayView>
#include <QObject>
#include <QString>
#include <memory>

#include "line_splitter.h"
#include "position_texts.h"
#include "reader_settings.h"

namespace kestrum::posdex {

// How a source stands.
struct SourceState {
  enum class Link {
    kSearching,  // `detail` says where
    kConnecting,
    kConnected,
    kFailed,  // `detail` says why; the source tries again by itself
    kEnded    // a recording has been played to its end
  };
  Link link = Link::kConnecting;
  QString detail;

  bool operator==(const SourceState&) const = default;
};

// Somewhere positions come from: NMEA lines, or the reports of a gpsd. A source never blocks, never gives
// up, and reports every loss at once.
class Source : public QObject {
  Q_OBJECT

 public:
  // The longest line that is looked at, in bytes; gpsd's own reports are far longer than any sentence.
  static constexpr qsizetype kLongestLine = 16384;
  // At most this many bytes wait to be read, so that no stream can fill the memory.
  static constexpr qint64 kReadBuffer = 65536;

  virtual void Start() = 0;

  // For the user, as "gpsd on localhost:2947".
  virtual QString Description() const = 0;

 Q_SIGNALS:
  void LineReceived(const QByteArray& line);
  // One epoch as gpsd has put it together.
  void PositionReported(const kestrum::posdex::Fix& fix);
  // How many satellites are used for the position.
  void SatellitesReported(int count);
  // What follows has nothing to do with what came before, its times least of all.
  void Restarted();
  void DescriptionChanged();
  void StateChanged(const kestrum::posdex::SourceState& state);

 protected:
  // Cuts received bytes into lines and hands each to TakeLine.
  void Feed(QByteArrayView bytes);
  virtual void TakeLine(const QByteArray& line) { Q_EMIT LineReceived(line); }

  // Reports a change; the same state twice is reported once.
  void SetState(SourceState::Link link, const QString& detail = {});
  const SourceState& State() const { return state_; }

  LineSplitter& splitter() { return splitter_; }

 private:
  LineSplitter splitter_{kLongestLine};
  SourceState state_;
};

// The pause before the next attempt: short at first, 2 seconds at most.
class Backoff {
 public:
  int NextMs();
  void Reset() { next_ms_ = kFirstMs; }

 private:
  static constexpr int kFirstMs = 250;
  static constexpr int kLongestMs = 2000;
  int next_ms_ = kFirstMs;
};

// Builds the source. A relative path is looked up in `folder`; a serial device that is not there names one
// in /dev.
std::unique_ptr<Source> MakeSource(const SourceChoice& choice, const QString& folder);

}  // namespace kestrum::posdex
