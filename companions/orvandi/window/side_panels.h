#pragma once

#include <QAbstractTableModel>
#include <QWidget>

#include "window/session.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QListWidget;
class QTableView;

namespace orvandi {

// What is shown in which colour: logs or blocks by antenna, rig, frequency or date, a check box each.
class LayerPanel final : public QWidget {
  Q_OBJECT

 public:
  LayerPanel(Session& session, QWidget* parent = nullptr);

 private:
  void Refill();

  Session& session_;
  QComboBox* group_;
  QListWidget* list_;
  bool filling_ = false;
};

// Records that would falsify the picture: how many there are of which kind, and a check box to show them.
class CleaningPanel final : public QWidget {
  Q_OBJECT

 public:
  CleaningPanel(Session& session, QWidget* parent = nullptr);

 private:
  void Recount();
  void Apply();

  Session& session_;
  QLabel* summary_;
  std::vector<QCheckBox*> boxes_;
};

// Two layers and how they differ.
class ComparePanel final : public QWidget {
  Q_OBJECT

 public:
  ComparePanel(Session& session, QWidget* parent = nullptr);
  // One sentence of figures, or why there are none.
  void SetOutcome(const QString& text);

 private:
  void Refill();
  void Sync();
  void Apply();

  Session& session_;
  QComboBox* first_;
  QComboBox* second_;
  QComboBox* cell_;
  QCheckBox* shown_;
  QLabel* outcome_;
  bool filling_ = false;
};

// Lines of all logs that were not understood.
class DroppedModel final : public QAbstractTableModel {
  Q_OBJECT

 public:
  explicit DroppedModel(Session& session, QObject* parent = nullptr);
  void Refresh();
  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  struct Row {
    std::size_t log = 0;
    std::size_t line = 0;
  };
  Session& session_;
  std::vector<Row> rows_;
};

class DroppedPanel final : public QWidget {
  Q_OBJECT

 public:
  DroppedPanel(Session& session, QWidget* parent = nullptr);
  [[nodiscard]] std::uint64_t Count() const { return count_; }

 Q_SIGNALS:
  void CountChanged();

 private:
  void Refresh();

  Session& session_;
  DroppedModel model_;
  QLabel* summary_;
  QTableView* table_;
  std::uint64_t count_ = 0;
};

}  // namespace orvandi
