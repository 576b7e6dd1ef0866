#pragma once

#include <QTimer>
#include <string>

#include "common/win32/serial_line.h"
#include "source.h"

namespace kestrum::posdex {

// An NMEA receiver on a serial port ("COM4"), 8-N-1. The line is asked for what it has several times a
// second.
class SerialSource : public Source {
  Q_OBJECT

 public:
  SerialSource(const SourceChoice& choice, const QString& folder);
  void Start() override;
  QString Description() const override;

 private:
  void Open();
  void Read();
  void Fail(const QString& reason);

  SourceChoice choice_;
  win32::SerialLine line_;
  QTimer poll_;
  QTimer retry_;
  Backoff backoff_;
};

}  // namespace kestrum::posdex
