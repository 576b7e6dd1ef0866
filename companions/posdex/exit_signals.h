#pragma once

#include <QObject>

namespace kestrum::posdex {

/// Turns SIGTERM, SIGINT and SIGHUP into a Qt signal of the event loop. One at a time in a process.
class ExitSignals : public QObject {
  Q_OBJECT

 public:
  explicit ExitSignals(QObject* parent = nullptr);
  ~ExitSignals() override;
  ExitSignals(const ExitSignals&) = delete;
  ExitSignals& operator=(const ExitSignals&) = delete;

 Q_SIGNALS:
  void Received();
};

}  // namespace kestrum::posdex
