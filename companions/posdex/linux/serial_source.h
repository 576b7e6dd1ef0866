#pragma once

#include <QSerialPort>
#include <QTimer>

#include "source.h"

namespace kestrum::posdex {

// An NMEA receiver on a serial port, 8-N-1.
class SerialSource : public Source {
  Q_OBJECT

 public:
  SerialSource(const SourceChoice& choice, const QString& folder);
  void Start() override;
  QString Description() const override;

 private:
  void Open();
  void Fail(const QString& reason);
  void OnSilence();
  QString DevicePath() const;

  SourceChoice choice_;
  QString folder_;
  QString opened_;  // what the device's name stood for when it was opened
  QSerialPort port_;
  QTimer retry_;
  QTimer silence_;
  Backoff backoff_;
};

}  // namespace kestrum::posdex
