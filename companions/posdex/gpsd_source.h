#pragma once

#include <QElapsedTimer>
#include <QTcpSocket>
#include <QTimer>

#include "gpsd_report.h"
#include "source.h"

namespace kestrum::posdex {

// The reports (JSON) of a gpsd: whatever the receiver speaks, they read the same. Of several receivers one
// is followed, as long as it has a fix.
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
  bool Follows(const GpsdReport& report);

  SourceChoice choice_;
  QTcpSocket socket_;
  QTimer retry_;
  QTimer connect_limit_;
  QTimer silence_;
  Backoff backoff_;
  bool asked_again_ = false;
  QString followed_;            // the receiver's device
  QElapsedTimer followed_fix_;  // since its last fix; not valid when it has none
};

}  // namespace kestrum::posdex
