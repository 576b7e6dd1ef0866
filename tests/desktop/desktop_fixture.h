#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <memory>

#include "desktop/binding/binder.h"
#include "desktop/forms/windows.h"
#include "forms/forms.h"
#include "support/scripted_ports.h"

namespace kestrum::test {

// The five forms as data, bound to real windows that nobody sees.
class BoundForms : public ::testing::Test {
 protected:
  BoundForms() : windows_(std::make_unique<Windows>(forms, binder)) {}

  // The widget or menu action of a control.
  template <class T>
  T* Find(const QString& window, const QString& name) {
    for (QWidget* top : QApplication::topLevelWidgets()) {
      if (top->objectName() == window) return top->findChild<T*>(name);
    }
    return nullptr;
  }
  QWidget* Window(const QString& name) {
    for (QWidget* top : QApplication::topLevelWidgets()) {
      if (top->objectName() == name) return top;
    }
    return nullptr;
  }
  void ShowForm1() {
    forms.form1.visible = true;
    binder.Sync();
    QApplication::processEvents();
  }

  ScriptedProgram program;
  Binder binder{program};
  Forms forms;

 private:
  std::unique_ptr<Windows> windows_;
};

}  // namespace kestrum::test
