// A calibration table made on the bench: levels of the simulated set in, a file out, the same table back.
#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <filesystem>

#include "panel.h"
#include "support_process/qt_waits.h"

namespace kestrum::end_to_end {
namespace {

template <class T>
T* InEditor(const char* name) {
  for (QWidget* top : QApplication::topLevelWidgets()) {
    if (top->objectName() == QStringLiteral("Form3")) return top->findChild<T*>(QLatin1String(name));
  }
  return nullptr;
}

void PressInEditor(const char* name) {
  QTest::mouseClick(InEditor<QPushButton>(name), Qt::LeftButton);
}

// All but the header, whose frequency text is that of the box.
std::string Rows(const std::string& file) {
  const std::string bytes = process::ReadFile(file);
  return bytes.substr(bytes.find("\r\n") + 2);
}

bool IsThere(const std::string& file) {
  return process::WaitFor([&] { return std::filesystem::exists(file); });
}

TEST_F(Panel, ATableMadeFromLiveReadingsComesBackFromItsFile) {
  CarSetup setup;
  setup.rig = 2;
  setup.interval_ms = 50;
  Start(setup);
  Menu("mnuCalibration");
  InEditor<QAction>("mnuClearCalibration")->trigger();
  struct Level {
    const char* raw;
    const char* microvolt;
  };
  for (const Level& level : {Level{"010", "0.15"}, {"140", "33"}, {"200", "700"}}) {
    TellDrive(std::string("smeter ") + level.raw);
    ASSERT_TRUE(process::WaitFor([&] {
      return InEditor<QWidget>("lblSraw")->property("text").toString() == QLatin1String(level.raw);
    })) << level.raw;
    InEditor<QLineEdit>("txtEdit")->setText(QString());
    QTest::keyClicks(InEditor<QLineEdit>("txtEdit"), QLatin1String(level.microvolt));
    PressInEditor("cmduVStore");
  }
  PressInEditor("cmdSup");
  TellDrive("smeter 40");
  ASSERT_TRUE(process::WaitFor(
      [&] { return InEditor<QWidget>("lblSraw")->property("text").toString() == QStringLiteral("040"); }));
  PressInEditor("cmdSstore");

  InEditor<QAction>("mnuSave1")->trigger();
  ASSERT_TRUE(IsThere(File("Calibration1.cfg")));
  const std::string made = Rows(File("Calibration1.cfg"));
  EXPECT_NE(made.find(", 0.15, \r\n"), std::string::npos);
  EXPECT_NE(made.find("S1, 0.2, 0.083\r\n"), std::string::npos);
  EXPECT_NE(made.find(", 33, \r\n"), std::string::npos);
  EXPECT_NE(made.find(", 700, \r\n"), std::string::npos);

  InEditor<QAction>("mnuDefaultCalibration")->trigger();
  InEditor<QAction>("mnuSave2")->trigger();
  ASSERT_TRUE(IsThere(File("Calibration2.cfg")));
  EXPECT_NE(Rows(File("Calibration2.cfg")), made);
  InEditor<QAction>("mnuLoadConf1")->trigger();
  InEditor<QAction>("mnuSave2")->trigger();
  EXPECT_TRUE(process::WaitFor([&] { return Rows(File("Calibration2.cfg")) == made; }));
  EXPECT_TRUE(boxes().empty());
}

}  // namespace
}  // namespace kestrum::end_to_end
