#pragma once

#include <QObject>
#include <QTimer>

#include "common/session_bus.h"
#include "position_texts.h"

namespace kestrum::posdex {

/// Offers the six texts on the session bus as common/reader_contract.h says. Without a bus it keeps trying;
/// nothing here blocks the window.
class BusService : public QObject {
  Q_OBJECT

 public:
  explicit BusService(QObject* parent = nullptr);

  void Start() { bus_.Start(); }
  void SetTexts(const GpsTexts& texts);
  const GpsTexts& Texts() const { return texts_; }

 Q_SIGNALS:
  /// A line for the user, as "on the session bus" or "no session bus, retrying".
  void StateChanged(const QString& state);
  /// Another reader already owns the name, and this one never did; it does not try again.
  void NameTaken();
  /// The logger asks the reader to close.
  void QuitRequested();

 private:
  void OnBus(SessionBus::State state);
  void Offer();
  void TakeNameReply(sd_bus_message* reply);
  void Retry(const QString& state);
  void Beat();

  GpsTexts texts_;
  QTimer heartbeat_;
  bool owned_once_ = false;
  bool owned_ = false;
  QString retrying_ = QStringLiteral("no session bus, retrying");
  SessionBus bus_;
};

}  // namespace kestrum::posdex
