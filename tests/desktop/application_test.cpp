#include <gtest/gtest.h>

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QInputDialog>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <memory>

#include "desktop/forms/windows.h"
#include "desktop/widgets/readout.h"
#include "support/scripted_car.h"
#include "support_process/qt_waits.h"

namespace kestrum::test {
namespace {

// The whole program in a scripted car, behind real windows that nobody sees.
class ApplicationTest : public ::testing::Test {
 protected:
  void Start(const Settings& settings = ScriptedCar::UsualSettings()) {
    car.WriteConfig(settings);
    windows_ = std::make_unique<Windows>(car.app.forms, binder);
    binder.Enter([this] { car.Start(); });
    QApplication::processEvents();
  }
  // The averaging timer and the main timer tick by hand.
  void Tick() { binder.Enter(car.form1.tmrMain.tick); }

  static QWidget* Window(const char* name) {
    for (QWidget* top : QApplication::topLevelWidgets()) {
      if (top->objectName() == QLatin1String(name)) return top;
    }
    return nullptr;
  }
  template <class T>
  T* On1(const char* name) {
    return Window("Form1")->findChild<T*>(QLatin1String(name));
  }
  QString Text(const char* label) { return On1<QWidget>(label)->property("text").toString(); }

  ScriptedCar car;
  Binder binder{car.world.program};

 private:
  std::unique_ptr<Windows> windows_;
};

TEST_F(ApplicationTest, NoPlaceholderSurvivesTheStart) {
  Start();
  EXPECT_TRUE(Window("Form1")->isVisible());
  EXPECT_EQ(Window("Form1")->windowTitle(), QStringLiteral("Kestrum Auto field strenght logger V1.02"));
  for (const auto* label : Window("Form1")->findChildren<TextLine*>()) {
    EXPECT_FALSE(label->text().startsWith(QStringLiteral("xxxxx"))) << qPrintable(label->objectName());
  }
  EXPECT_EQ(Text("lblRxVal"), QStringLiteral("No GPS"));
  EXPECT_EQ(On1<QLineEdit>("lblLoggingInto")->text(), QStringLiteral("Not logging now !"));
  EXPECT_TRUE(Text("lblLog").startsWith(QStringLiteral("Start @")));
  EXPECT_FALSE(On1<QPushButton>("cmdGetTxFix")->isEnabled());
  EXPECT_FALSE(On1<QPushButton>("cmdFT817OnOff")->isEnabled()) << "only with the FT817";
}

TEST_F(ApplicationTest, ToolTipsAtTheStart) {
  Start();
  const std::pair<const char*, const char16_t*> expected[] = {
      {"lblLoggingInto", u"Program puts the logged data here ! ."},
      {"lblTxLat", u"Latitude from TX"},
      {"lblTxLong", u"Longitude from TX"},
      {"lblTxHeight", u"TX height in metres."},
      {"cmbTxAntenna", u"Tx antenna description and RF power."},
      {"cmdGetTxFix", u"Push me to set the TX site Latitude and longitude from GPS."},
      {"lblRxLat", u"Latitude from RX."},
      {"lblRxLong", u"Longitude from RX."},
      {"lblRxDist", u"Distance to TX site in km."},
      {"lblRxBearing", u"Bearing in \u00B0 to TX site from RX site relative to North."},
      {"lblRxHeight", u"RX altitude in metres."},
      {"lblPelorus", u"Relative heading to TX site. Front of the car is 0\u00B0"},
      {"lblOpticalDistance", u"Maximal Optical distance."},
      {"lblFieldStrenght", u"Recalc RSSI-value to mV/m or uV, dBm across 50 Ohm Click me to change."},
      {"lblRSSI", u"Latest RSSI-value reading from set."},
      {"lblFreq", u"Frequency where the set is recieving."},
      {"lblCatCmd", u"Cmd's  send or recieved to the tranceiver"},
      {"lblCatCount", u"Measurements in buffer now."},
      {"chkBeep", u"If checked then I beep every Timer fetch."},
      {"chkLock", u"Lock dial knob of Cat controlled rig."},
      {"cmdFT817OnOff", u"Switch FT817 On/Off."},
      {"txtFrequency", u"Type the frequency you want to set the tranceiver on. "},
      {"lblLog", u"The data for the logfile."},
      {"sldSquelch", u"Squelch adjust only if averaged"},
      {"lblSquelch", u"Red = No or reset average RSSI values, Green = collecting average RSSI"}};
  for (const auto& [name, tip] : expected) {
    EXPECT_EQ(On1<QWidget>(name)->toolTip(), QString::fromUtf16(tip)) << name;
  }
}

TEST_F(ApplicationTest, AnF3InTheFrequencyBoxStartsAndStopsLogging) {
  Start();
  auto* edit = On1<QLineEdit>("txtFrequency");
  edit->setFocus();
  QTest::keyClick(edit, Qt::Key_F3);
  EXPECT_EQ(On1<QPushButton>("cmdLoggin")->text(), QStringLiteral("&Logging(F3)"));
  EXPECT_EQ(On1<QLineEdit>("lblLoggingInto")->text(), QStringLiteral("Data to /car/RSSI-GPS.log"));
  EXPECT_EQ(On1<QLineEdit>("lblLoggingInto")->selectedText(), QStringLiteral("Data to /car/RSSI-GPS.log"));
  Tick();
  EXPECT_EQ(Text("lblCatCount"), QStringLiteral("1"));
  QTest::mouseClick(On1<QPushButton>("cmdLoggin"), Qt::LeftButton);
  EXPECT_EQ(On1<QPushButton>("cmdLoggin")->text(), QStringLiteral("Start&Log(F3)"));
  EXPECT_EQ(car.Log().size(), 4U) << "a header of three lines and one record";
}

TEST_F(ApplicationTest, F5SwitchesToTheMinimalDisplayAndBack) {
  Start();
  QTest::keyClick(Window("Form1"), Qt::Key_F5);
  EXPECT_TRUE(Window("Form1")->isHidden());
  EXPECT_TRUE(Window("Form5")->isVisible());
  EXPECT_TRUE(On1<QAction>("mnuMinimalDisplay")->isChecked());
  QTest::keyClick(Window("Form5"), Qt::Key_F5);
  EXPECT_TRUE(Window("Form1")->isVisible());
  EXPECT_TRUE(Window("Form5")->isHidden());
  QTest::keyClick(Window("Form1"), Qt::Key_F5);
  QTest::mouseClick(Window("Form5")->findChild<QPushButton*>(QStringLiteral("Command1")), Qt::LeftButton);
  EXPECT_TRUE(Window("Form1")->isVisible());
}

TEST_F(ApplicationTest, F1AndTheMenusOpenTheOtherWindows) {
  car.world.files.files["/car/Kestrum.txt"] = "Hello\r\n";
  Start();
  QTest::keyClick(Window("Form1"), Qt::Key_F1);
  EXPECT_TRUE(Window("Form2")->isVisible());
  Window("Form2")->close();
  EXPECT_TRUE(Window("Form2")->isHidden());
  On1<QAction>("mnuCalibration")->trigger();
  EXPECT_TRUE(Window("Form3")->isVisible());
  On1<QAction>("mnuTiming")->trigger();
  EXPECT_TRUE(Window("Form4")->isVisible());
  On1<QAction>("mnuPower")->trigger();
  EXPECT_TRUE(Window("Form2")->isVisible());
}

TEST_F(ApplicationTest, TheInfoWindowOpensByItselfAtTheFirstStart) {
  const Windows windows(car.app.forms, binder);
  binder.Enter([this] { car.Start(); });
  EXPECT_TRUE(process::WaitFor([] { return Window("Form2")->isVisible(); }));
}

TEST_F(ApplicationTest, RigPortAndSpeedMenus) {
  Start();
  On1<QAction>("mnuFT817")->trigger();
  EXPECT_TRUE(On1<QAction>("mnuFT817")->isChecked());
  EXPECT_FALSE(On1<QAction>("mnuFT840")->isChecked());
  EXPECT_TRUE(On1<QPushButton>("cmdFT817OnOff")->isEnabled());
  EXPECT_EQ(On1<QPushButton>("cmdFT817OnOff")->text(), QStringLiteral("&Off"));
  On1<QAction>("mnuFT847")->trigger();
  EXPECT_EQ(car.world.dialogs.messages.back().text, "Not yet implemented !");
  EXPECT_TRUE(On1<QAction>("mnuFT817")->isChecked());
  On1<QAction>("mnuCom3")->trigger();
  EXPECT_TRUE(On1<QAction>("mnuCom3")->isChecked());
  EXPECT_FALSE(On1<QAction>("mnuCom1")->isChecked());
  EXPECT_EQ(Text("StatusBar1_2").left(5), QStringLiteral("Com3="));
  On1<QAction>("mnuBaud")->trigger();
  EXPECT_EQ(On1<QAction>("mnuBaud")->text(), QStringLiteral("Baud(19200)"));
}

TEST_F(ApplicationTest, TheFrequencyBoxTunesWithItsEnterKey) {
  Start();
  auto* edit = On1<QLineEdit>("txtFrequency");
  edit->setFocus();
  EXPECT_EQ(edit->selectedText(), edit->text()) << "receiving the focus selects all";
  QTest::keyClicks(edit, QStringLiteral("7050"));
  QTest::keyClick(edit, Qt::Key_Return);
  EXPECT_EQ(Text("lblFreq").trimmed(), QStringLiteral("7050 kHz"));
}

TEST_F(ApplicationTest, AReadingAndAFixAreShown) {
  Start();
  car.s_meter = 120;
  car.SendGps("5150.0000N", "00532.0000E", "A", "100", "27", "45");
  Tick();
  EXPECT_EQ(Text("lblRxVal"), QStringLiteral("GPS Ok"));
  EXPECT_EQ(Text("lblDDELat"), QStringLiteral("5150.0000N"));
  EXPECT_EQ(Text("lblCatComment"), QStringLiteral("Done"));
  EXPECT_NE(Text("lblRSSI"), QString());
}

TEST_F(ApplicationTest, TheDdePanelFollowsItsMenu) {
  Settings settings = ScriptedCar::UsualSettings();
  settings.ShowDDE = false;
  Start(settings);
  EXPECT_TRUE(On1<QWidget>("frmDDE")->isHidden());
  On1<QAction>("mnuSHowDDE")->trigger();
  EXPECT_FALSE(On1<QWidget>("frmDDE")->isHidden());
}

TEST_F(ApplicationTest, ClosingTheMainWindowEndsTheProgram) {
  Start();
  Window("Form1")->close();
  EXPECT_TRUE(car.world.program.Ended());
  EXPECT_TRUE(car.world.files.files.contains("/car/Kestrum.cfg"));
}

TEST_F(ApplicationTest, AltF4EndsTheProgram) {
  Start();
  QTest::keyClick(Window("Form1"), Qt::Key_F4, Qt::AltModifier);
  EXPECT_TRUE(car.world.program.Ended());
}

// Every entry is pressed once, also those that open boxes: nothing may be left without an effect or fall
// over.
TEST_F(ApplicationTest, EveryMenuItemCanBePressed) {
  Start();
  int pressed = 0;
  for (QAction* action : Window("Form1")->findChildren<QAction*>()) {
    const QString name = action->objectName();
    if (!name.startsWith(QStringLiteral("mnu")) || action->isSeparator() || action->menu() != nullptr)
      continue;
    if (name == QStringLiteral("mnuExit") || name == QStringLiteral("mnuDefaultCfg")) continue;
    action->trigger();
    QApplication::processEvents();
    EXPECT_FALSE(car.world.program.Ended()) << qPrintable(name);
    ++pressed;
  }
  EXPECT_EQ(pressed, 31);
}

}  // namespace
}  // namespace kestrum::test
