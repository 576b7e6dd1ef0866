#pragma once

#include "desktop/forms/form_window.h"
#include "forms/form1.h"

class QBoxLayout;

namespace kestrum {

class Panel;

// The main window.
class Form1Window : public FormWindow {
  Q_OBJECT

 public:
  Form1Window(Form1& form, Binder& binder);

 private:
  QLayout* BuildLamps(QWidget* parent);
  void BuildMenus();
  void BuildStatusBar();
  QWidget* BuildRigPanel(QWidget* parent);
  void AddReadings(QBoxLayout* rows, const Panel& panel);
  void AddTuning(QBoxLayout* rows, const Panel& panel);
  void AddModes(QBoxLayout* rows, const Panel& panel);
  void AddLoggingControls(QBoxLayout* rows, const Panel& panel);
  void AddCatEcho(QBoxLayout* rows, const Panel& panel);
  QWidget* BuildRxPanel(QWidget* parent);
  QWidget* BuildTxPanel(QWidget* parent);
  QWidget* BuildDdePanel(QWidget* parent);
  QLayout* BuildLogLines(QWidget* parent);

  Form1& form_;
};

}  // namespace kestrum
