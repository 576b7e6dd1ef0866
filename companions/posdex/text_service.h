#pragma once

#include <QObject>

#include "position_texts.h"

namespace kestrum::posdex {

// Offers the six texts to the logger as common/reader_contract.h says. Nothing here blocks the window.
class TextService : public QObject {
  Q_OBJECT

 public:
  using QObject::QObject;

  virtual void Start() = 0;
  virtual void SetTexts(const GpsTexts& texts) = 0;

 Q_SIGNALS:
  // A line for the user, as "on the session bus" or "no session bus, retrying".
  void StateChanged(const QString& state);
  // Another reader already offers them, and this one never did; it does not try again.
  void NameTaken();
  // The logger asks the reader to close.
  void QuitRequested();
};

}  // namespace kestrum::posdex
