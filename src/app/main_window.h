#pragma once

#include "forms/forms.h"

namespace kestrum {

class Application;

// Menus, keys and tool tips of the main window; each entry ends in the floor that does the work.
class MainWindow {
 public:
  explicit MainWindow(Application& application);

  void Wire();
  // Tool tips of start-up.
  void ShowToolTips();
  // The panel of raw GPS fields, by ShowDDE.
  void ShowDDEPanel();

 private:
  void ShowMenuToolTips();
  bool KeyDown(Key key);
  void mnuSHowDDE_Click();
  void Activate();

  Application& application_;
};

}  // namespace kestrum
