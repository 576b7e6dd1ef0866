#pragma once

#include "desktop/form_window.h"
#include "forms/form1.h"

class QBoxLayout;

namespace kestrum {

// The main window.
class Form1Window : public FormWindow {
  Q_OBJECT

 public:
  Form1Window(Form1& form, Binder& binder);

 private:
  void BuildMenus();
  void BuildStatusBar();
  QWidget* BuildRigPanel(QWidget* parent);
  void AddReadings(QBoxLayout* rows, QWidget* panel);
  void AddTuning(QBoxLayout* rows, QWidget* panel);
  void AddModes(QBoxLayout* rows, QWidget* panel);
  void AddLoggingControls(QBoxLayout* rows, QWidget* panel);
  void AddCatEcho(QBoxLayout* rows, QWidget* panel);
  QWidget* BuildRxPanel(QWidget* parent);
  QWidget* BuildTxPanel(QWidget* parent);
  QWidget* BuildDdePanel(QWidget* parent);
  QLayout* BuildLogLines(QWidget* parent);
  // A bound label of normal size.
  QLabel* Value(Label& label, const QString& name, QWidget* parent);

  Form1& form_;
};

}  // namespace kestrum
