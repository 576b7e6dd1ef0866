#pragma once

#include <QElapsedTimer>
#include <QFile>
#include <QTime>
#include <QTimer>
#include <optional>

#include "nmea_decoder.h"
#include "source.h"

namespace kestrum::posdex {

// A recorded NMEA file, played at the pace of the times in its sentences. It stops at its end, or starts
// again with "?loop". Gaps in the recording are shortened to 10 seconds.
class FileSource : public Source {
  Q_OBJECT

 public:
  FileSource(const SourceChoice& choice, const QString& folder);
  void Start() override;
  QString Description() const override;

 private:
  void Open();
  void Play();
  void AtEnd();
  qint64 PauseBeforeMs(QByteArrayView line);

  SourceChoice choice_;
  QString path_;
  QFile file_;
  NmeaDecoder decoder_;
  QTimer next_;
  QTimer retry_;
  Backoff backoff_;
  QElapsedTimer clock_;
  qint64 due_ms_ = 0;
  std::optional<QTime> last_time_;
  QByteArray waiting_;  // read, but its time has not come yet
};

}  // namespace kestrum::posdex
