#pragma once

#include <QTimer>

#include "common/linux/session_bus.h"
#include "position_texts.h"
#include "text_service.h"

namespace kestrum::posdex {

// On the session bus. Without a bus it keeps trying.
class BusService : public TextService {
  Q_OBJECT

 public:
  explicit BusService(QObject* parent = nullptr);

  void Start() override { bus_.Start(); }
  void SetTexts(const GpsTexts& texts) override;
  const GpsTexts& Texts() const { return texts_; }

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
