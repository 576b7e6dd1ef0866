#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QGroupBox>
#include <QSet>
#include <QWidget>
#include <memory>

#include "desktop/forms/windows.h"
#include "support/scripted_car.h"

// Captions, check marks and what can be pressed when the program has just started with an FT840 on Com1.
namespace kestrum::test {
namespace {

class StartStateTest : public ::testing::Test {
 protected:
  void SetUp() override {
    car.WriteConfig(ScriptedCar::UsualSettings());
    windows_ = std::make_unique<Windows>(car.app.forms, binder);
    binder.Enter([this] { car.Start(); });
    QApplication::processEvents();
    for (QWidget* top : QApplication::topLevelWidgets()) {
      if (top->objectName() == QStringLiteral("Form1")) main = top;
    }
    ASSERT_NE(main, nullptr);
  }
  ScriptedCar car;
  Binder binder{car.world.program};
  QWidget* main = nullptr;

 private:
  std::unique_ptr<Windows> windows_;
};

TEST_F(StartStateTest, CaptionsOfButtonsAndPanels) {
  const std::pair<const char*, const char*> buttons[] = {{"chkLock", "Lock"},
                                                         {"chkBeep", "Beep"},
                                                         {"cmdFT817OnOff", "&Off"},
                                                         {"cmdLoggin", "Start&Log(F3)"},
                                                         {"optUsb", "Usb"},
                                                         {"optLsb", "Lsb"},
                                                         {"cmdUp", "> 9"},
                                                         {"cmdDown", " 9 <"},
                                                         {"cmdSetFreq", "&SetFrequency"},
                                                         {"cmdGetTxFix", "&GetTxLatLongNow"}};
  for (const auto& [name, caption] : buttons) {
    EXPECT_EQ(main->findChild<QAbstractButton*>(QLatin1String(name))->text(), QLatin1String(caption)) << name;
  }
  const std::pair<const char*, const char*> panels[] = {
      {"frmCatControl", "CatControl"}, {"frmRxSite", "RxSite"}, {"frmTxSite", "TxSite"}};
  for (const auto& [name, caption] : panels) {
    EXPECT_EQ(main->findChild<QGroupBox*>(QLatin1String(name))->title(), QLatin1String(caption)) << name;
  }
}

TEST_F(StartStateTest, OnlyRigPortAndShownPanelAreChecked) {
  const QSet<QString> checked = {QStringLiteral("mnuFT840"), QStringLiteral("mnuCom1"),
                                 QStringLiteral("mnuSHowDDE")};
  int items = 0;
  for (const QAction* action : main->findChildren<QAction*>()) {
    if (!action->objectName().startsWith(QStringLiteral("mnu")) || action->isSeparator()) continue;
    ++items;
    EXPECT_EQ(action->isChecked(), checked.contains(action->objectName()))
        << qPrintable(action->objectName());
    EXPECT_TRUE(action->isEnabled()) << qPrintable(action->objectName());
  }
  EXPECT_GE(items, 34);
}

TEST_F(StartStateTest, OnlyPowerAndFixButtonsCannotBePressed) {
  const QSet<QString> disabled = {QStringLiteral("cmdFT817OnOff"), QStringLiteral("cmdGetTxFix")};
  for (const auto* button : main->findChildren<QAbstractButton*>()) {
    if (button->objectName().isEmpty() || button->objectName().startsWith(QStringLiteral("qt_"))) continue;
    EXPECT_EQ(!button->isEnabled(), disabled.contains(button->objectName()))
        << qPrintable(button->objectName());
    const bool chosen = button->objectName() == QStringLiteral("optLsb");
    EXPECT_EQ(button->isChecked(), chosen) << qPrintable(button->objectName());
  }
}

}  // namespace
}  // namespace kestrum::test
