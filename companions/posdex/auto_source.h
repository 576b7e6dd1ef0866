#pragma once

#include <QList>
#include <QStringList>
#include <QTimer>
#include <memory>

#include "nmea_decoder.h"
#include "source.h"

namespace kestrum::posdex {

// Looks for a receiver and stays with the first that speaks: gpsd on this computer, then each serial port at
// each usual speed. It only listens. A port that a link com1 to com6 of the program's folder stands for is
// the set's and is left alone. When a receiver is lost the search begins anew.
class AutoSource : public Source {
  Q_OBJECT

 public:
  static constexpr int kGpsdMs = 4000;
  // Two seconds of a receiver that speaks once in a second, and the time to open.
  static constexpr int kListenMs = 2600;

  // `folder` is the program's; `ports` holds a link for each serial port that is plugged in.
  explicit AutoSource(const QString& folder, const QString& ports = QStringLiteral("/dev/serial/by-id"),
                      const SourceChoice& gpsd = {});
  void Start() override;
  QString Description() const override;

 private:
  void BeginRound();
  void TryNext();
  void Try(const SourceChoice& choice);
  void Found();
  void GiveUp();
  void TakeLine(const QByteArray& line) override;
  void TakeState(const SourceState& state);

  QString folder_;
  QString ports_;
  SourceChoice gpsd_;
  QList<SourceChoice> waiting_;
  std::unique_ptr<Source> source_;  // that is tried or has been found
  bool is_serial_ = false;
  QString trouble_;  // of the last port in this round that could not be opened
  bool found_ = false;
  int sentences_ = 0;
  NmeaDecoder decoder_;
  QTimer limit_;
  QTimer next_;
  Backoff backoff_;
};

}  // namespace kestrum::posdex
