#pragma once

#include <QTcpSocket>
#include <QTimer>

#include "source.h"

namespace kestrum::posdex {

/// What one of gpsd's own reports (a line of JSON) says about a missing receiver, for the user; empty when it
/// says nothing of the kind or makes no sense.
QString ReceiverTrouble(const QByteArray& report);

/// The NMEA stream of a gpsd.
class GpsdSource : public Source {
  Q_OBJECT

 public:
  explicit GpsdSource(const SourceChoice& choice);
  ~GpsdSource() override;
  GpsdSource(const GpsdSource&) = delete;
  GpsdSource& operator=(const GpsdSource&) = delete;
  void Start() override;
  QString Description() const override;

 protected:
  void TakeLine(const QByteArray& line) override;

 private:
  void Connect();
  void Ask();
  void Fail(const QString& reason);
  void OnSilence();

  SourceChoice choice_;
  QTcpSocket socket_;
  QTimer retry_;
  QTimer connect_limit_;
  QTimer silence_;
  Backoff backoff_;
  bool asked_again_ = false;
};

}  // namespace kestrum::posdex
