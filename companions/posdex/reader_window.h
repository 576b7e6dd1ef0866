#pragma once

#include <QLabel>
#include <QWidget>
#include <array>

#include "position_texts.h"

class QFormLayout;

namespace kestrum::posdex {

// The reader's only window: the six values, what the receiver says about them, the source and the state.
class ReaderWindow : public QWidget {
  Q_OBJECT

 public:
  explicit ReaderWindow(const QString& source);

  void SetTexts(const GpsTexts& texts);
  void SetState(const QString& state);
  void SetSource(const QString& source);
  void SetFix(const QString& fix, const QString& age);
  void SetBusState(const QString& state);
  // A line about posdex.conf; hidden while it is empty.
  void SetComplaint(const QString& complaint);

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void GrowToFit();
  QLabel* AddLine(const QString& caption, const char* name);
  void Tell(QLabel* label, const QString& text);

  QFormLayout* form_;
  std::array<QLabel*, kItems.size()> values_{};
  QLabel* fix_ = nullptr;
  QLabel* age_ = nullptr;
  QLabel* source_ = nullptr;
  QLabel* state_ = nullptr;
  QLabel* bus_ = nullptr;
  QLabel* complaint_ = nullptr;
};

}  // namespace kestrum::posdex
