#pragma once

#include <QObject>

namespace kestrum {

// Turns SIGTERM, SIGINT and SIGHUP, or what other systems have in their place, into a Qt signal of the event
// loop. One at a time in a process.
class EndSignals : public QObject {
  Q_OBJECT

 public:
  explicit EndSignals(QObject* parent = nullptr);
  ~EndSignals() override;
  EndSignals(const EndSignals&) = delete;
  EndSignals& operator=(const EndSignals&) = delete;

 Q_SIGNALS:
  void Received();
};

}  // namespace kestrum
