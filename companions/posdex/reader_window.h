#pragma once

#include <QLabel>
#include <QWidget>
#include <array>

#include "position_texts.h"

class QFormLayout;

namespace kestrum::posdex {

/// The reader's only window: the six values, the source and the state.
class ReaderWindow : public QWidget {
  Q_OBJECT

 public:
  explicit ReaderWindow(const QString& source);

  void SetTexts(const GpsTexts& texts);
  void SetState(const QString& state) { state_->setText(state); }
  void SetBusState(const QString& state) { bus_->setText(state); }
  /// A line about posdex.conf; hidden while it is empty.
  void SetComplaint(const QString& complaint);

 private:
  QLabel* AddLine(QFormLayout* form, const QString& caption, const char* name);

  std::array<QLabel*, kItems.size()> values_{};
  QFormLayout* states_ = nullptr;
  QLabel* state_ = nullptr;
  QLabel* bus_ = nullptr;
  QLabel* complaint_ = nullptr;
};

}  // namespace kestrum::posdex
