#pragma once

#include <QTimer>
#include <QWidget>
#include <vector>

#include "bridge.h"

class QComboBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace kestrum::rigbridge {

// The bridge's only window: which rig, where it is, and how it goes.
class BridgeWindow : public QWidget {
  Q_OBJECT

 public:
  // How often the state is looked at.
  static constexpr int kRefreshMs = 200;

  BridgeWindow(Bridge& bridge, const std::vector<RigModel>& rigs);

  // A line about rigbridge.conf or the link; hidden while it is empty.
  void SetComplaint(const QString& complaint);

 private:
  void AddChoice();
  void AddState();
  QLabel* AddLine(const QString& caption, const char* name);
  void FillPorts();
  void FilterRigs();
  void ShowSettings();
  void ShowHints();
  void Connect();
  void Refresh();
  const RigModel* ChosenRig() const;
  void GrowToFit();

  Bridge& bridge_;
  const std::vector<RigModel>& rigs_;
  QFormLayout* form_;
  QLineEdit* search_ = nullptr;
  QListWidget* list_ = nullptr;
  QComboBox* device_ = nullptr;
  QComboBox* speed_ = nullptr;
  QComboBox* act_as_ = nullptr;
  QPushButton* connect_ = nullptr;
  QLabel* rig_ = nullptr;
  QLabel* state_ = nullptr;
  QLabel* reading_ = nullptr;
  QLabel* frequency_ = nullptr;
  QLabel* link_ = nullptr;
  QLabel* notes_ = nullptr;
  QLabel* complaint_ = nullptr;
  QTimer refresh_;
};

}  // namespace kestrum::rigbridge
