#pragma once

#include <QWidget>

class QLabel;
class QPushButton;

namespace orvandi {

// What stands in place of the map while no log is open: what to do.
class StartPage final : public QWidget {
  Q_OBJECT

 public:
  explicit StartPage(QWidget* parent = nullptr);

  // A log that is waited for, or "".
  void SetWaitingFor(const QString& path);
  void SetDemoLog(const QString& path);  // "": there is none
  void SetIcons(const QPalette& palette);

 Q_SIGNALS:
  void OpenWanted();
  void DemoWanted();

 private:
  QLabel* picture_;
  QLabel* waiting_;
  QPushButton* open_;
  QPushButton* demo_;
};

}  // namespace orvandi
