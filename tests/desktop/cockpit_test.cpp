#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

#include "desktop/forms/windows.h"
#include "desktop/widgets/lamp_widget.h"
#include "desktop/widgets/log_button.h"
#include "desktop/widgets/meter_bar.h"
#include "desktop/widgets/pelorus_widget.h"
#include "desktop/widgets/picture_widget.h"
#include "desktop/widgets/readout.h"
#include "desktop/widgets/scheme.h"
#include "support/scripted_car.h"

// Lamps and dimming, read from the real widgets of both windows, fault by fault.
namespace kestrum::test {
namespace {

using namespace std::chrono_literals;

class CockpitOnScreen : public ::testing::Test {
 protected:
  CockpitOnScreen() : windows_(std::make_unique<Windows>(car.app.forms, binder)) {}

  void Drive(const Settings& settings = ScriptedCar::UsualSettings(), const std::string& power = "&Off") {
    car.WriteConfig(settings, power);
    car.s_meter = 148;
    Do([this] { car.Start({.start_logging = true}); });
    Do([this] { car.SendGps("5159.2177N", "00535.3967E", "A", "98.1", "27", "133.2"); });
    Pass(3100ms);
  }
  void Do(const std::function<void()>& deed) {
    binder.Enter(deed);
    QApplication::processEvents();
  }
  void Pass(std::chrono::milliseconds time) {
    Do([this, time] { car.RunFor(time); });
  }
  template <class T>
  T* On(const char* window, const char* name) {
    for (QWidget* top : QApplication::topLevelWidgets()) {
      if (top->objectName() == QLatin1String(window)) return top->findChild<T*>(QLatin1String(name));
    }
    return nullptr;
  }
  // In both windows; the words differ nowhere.
  std::string Words(const char* lamp) {
    const std::string words = On<LampWidget>("Form1", lamp)->Says().words;
    EXPECT_EQ(On<LampWidget>("Form5", lamp)->Says().words, words);
    EXPECT_TRUE(On<LampWidget>("Form1", lamp)->accessibleName().startsWith(QString::fromStdString(words)));
    return words;
  }
  bool SignalFaded() {
    const bool faded = On<TextLine>("Form1", "lblRSSI")->Stale();
    EXPECT_EQ(On<TextLine>("Form1", "lblFieldStrenght")->Stale(), faded);
    EXPECT_EQ(On<MeterBar>("Form1", "ProgressBar1")->Stale(), faded);
    EXPECT_EQ(On<MeterBar>("Form5", "ProgressBar1")->Stale(), faded);
    EXPECT_EQ(On<TextLine>("Form5", "Label1_4")->Stale(), faded);
    return faded;
  }
  bool PositionFaded() {
    const bool faded = On<PelorusWidget>("Form1", "Picture1")->Stale();
    EXPECT_EQ(On<PictureWidget>("Form5", "Picture1")->Stale(), faded);
    for (const char* name : {"lblRxDist", "lblRxBearing", "lblPelorus", "lblRxLat", "lblRxHeight"}) {
      EXPECT_EQ(On<TextLine>("Form1", name)->Stale(), faded) << name;
    }
    for (const char* name : {"Label1_0", "Label1_1", "Label1_2"}) {
      EXPECT_EQ(On<TextLine>("Form5", name)->Stale(), faded) << name;
    }
    return faded;
  }

  ScriptedCar car;
  Binder binder{car.world.program};

 private:
  std::unique_ptr<Windows> windows_;
};

TEST_F(CockpitOnScreen, EachFaultIsSeenWithinTwoReadings) {
  Drive();
  EXPECT_EQ(Words("lmpLog"), "Logging");
  EXPECT_EQ(Words("lmpGps"), "GPS fix");
  EXPECT_EQ(Words("lmpRig"), "Rig");
  EXPECT_FALSE(SignalFaded());
  EXPECT_FALSE(PositionFaded());

  struct Fault {
    const char* lamp;
    const char* words;
    bool signal;
    bool position;
    std::function<void()> begin;
    std::function<void()> end;
  };
  const Fault faults[] = {
      {"lmpRig", "RIG SILENT", true, false, [this] { car.rig_answers = false; },
       [this] { car.rig_answers = true; }},
      {"lmpRig", "UNPLUGGED", true, false, [this] { car.world.serial.Vanish(); },
       [this] { car.world.serial.Return(); }},
      {"lmpGps", "READER GONE", false, true, [this] { car.world.links.server_present = false; },
       [this] { car.world.links.server_present = true; }},
      {"lmpGps", "READER FROZEN", false, true, [this] { car.world.links.silence = 5s; },
       [this] { car.world.links.silence = 0s; }},
      {"lmpGps", "NO GPS FIX", false, true, [this] { car.world.links.Send("lblVal1", "V"); },
       [this] { car.world.links.Send("lblVal1", "A"); }},
      {"lmpLog", "Check disk", false, false,
       [this] {
         car.world.files.write_fault = "No such file or directory";
         car.form1.lmpLog.click();
       },
       [this] {
         car.world.files.write_fault.clear();
         car.form1.lmpLog.click();
       }},
  };
  for (const Fault& fault : faults) {
    Do(fault.begin);
    Pass(2200ms);
    EXPECT_EQ(Words(fault.lamp), fault.words);
    EXPECT_EQ(SignalFaded(), fault.signal) << fault.words;
    EXPECT_EQ(PositionFaded(), fault.position) << fault.words;
    Do(fault.end);
    Pass(2200ms);
    EXPECT_NE(Words(fault.lamp), fault.words);
    EXPECT_FALSE(SignalFaded()) << fault.words;
    EXPECT_FALSE(PositionFaded()) << fault.words;
  }
}

TEST_F(CockpitOnScreen, ASwitchedOffSetAndAFullDiskAreSeen) {
  Settings settings = ScriptedCar::UsualSettings();
  settings.RigModel = kFT817;
  Drive(settings, "&On");
  Do([this] { car.world.files.write_fault = "No space left on device"; });
  Pass(110s);
  EXPECT_EQ(Words("lmpLog"), "NOT SAVED");
  Do([this] { car.form1.cmdFT817OnOff.click(); });
  Pass(1100ms);
  EXPECT_EQ(Words("lmpRig"), "RIG OFF");
  EXPECT_TRUE(SignalFaded());
}

TEST_F(CockpitOnScreen, TheBadgeTellsTheAge) {
  Drive();
  Do([this] { car.world.links.Send("lblVal1", "V"); });
  Pass(15000ms);
  EXPECT_EQ(On<PelorusWidget>("Form1", "Picture1")->Badge(), QStringLiteral("14 s old"));
  EXPECT_EQ(On<PictureWidget>("Form5", "Picture1")->Badge(), QStringLiteral("14 s old"));
}

TEST_F(CockpitOnScreen, AFadedNumberIsPaintedFainter) {
  Drive();
  auto* distance = On<TextLine>("Form1", "lblRxDist");
  const auto darkest = [distance] {
    const QImage image = distance->grab().toImage();
    int least = 255;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) least = std::min(least, qGray(image.pixel(x, y)));
    }
    return least;
  };
  EXPECT_LT(darkest(), 40);
  Do([this] { car.world.links.server_present = false; });
  Pass(2200ms);
  EXPECT_GT(darkest(), 130);
}

TEST_F(CockpitOnScreen, LettersTurnWithTheCourseAndGoWithTheFix) {
  Drive();
  EXPECT_EQ(On<PelorusWidget>("Form1", "Picture1")->Course(), 133.0);
  Do([this] { car.world.links.Send("lblCompas1", "32768"); });
  Pass(1100ms);
  EXPECT_EQ(On<PelorusWidget>("Form1", "Picture1")->Course(), std::nullopt);
}

TEST_F(CockpitOnScreen, ASpaceBarDoesNotEndADrive) {
  car.WriteConfig(ScriptedCar::UsualSettings());
  Do([this] { car.Start(); });
  auto* button = On<LogButton>("Form1", "cmdLoggin");
  button->window()->activateWindow();
  button->setFocus();
  QTest::mouseClick(button, Qt::LeftButton);
  ASSERT_TRUE(button->Logging());
  EXPECT_EQ(button->focusPolicy(), Qt::NoFocus);
  EXPECT_FALSE(button->hasFocus());
  QWidget* const focused = button->window()->focusWidget();
  if (focused != nullptr) QTest::keyClick(focused, Qt::Key_Space);
  EXPECT_TRUE(button->Logging());
  QTest::mouseClick(button, Qt::LeftButton);
  EXPECT_FALSE(button->Logging()) << "a click on it still does";
}

TEST_F(CockpitOnScreen, LampsAndUnitsArePressedWithTheKeyboard) {
  Drive();
  car.world.serial.events.clear();
  auto* rig = On<LampWidget>("Form1", "lmpRig");
  EXPECT_NE(rig->focusPolicy() & Qt::TabFocus, 0);
  QTest::keyClick(rig, Qt::Key_Return);
  EXPECT_EQ(car.world.serial.events.back(), "open");
  auto* unit = On<TextLine>("Form1", "lblFieldStrenght");
  EXPECT_NE(unit->focusPolicy() & Qt::TabFocus, 0);
  QTest::keyClick(unit, Qt::Key_Return);
  QTest::keyClick(unit, Qt::Key_Return);
  EXPECT_TRUE(unit->text().endsWith(QStringLiteral(" mV/m")));
  auto* bar = On<MeterBar>("Form1", "ProgressBar1");
  const bool segments = bar->Segments();
  QTest::keyClick(bar, Qt::Key_Return);
  EXPECT_NE(bar->Segments(), segments);
}

TEST_F(CockpitOnScreen, AScreenReaderHearsValuesLampsAndAngles) {
  Drive();
  const auto spoken = [](QWidget* widget) {
    return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name).toStdString();
  };
  EXPECT_EQ(spoken(On<QWidget>("Form1", "lblRxDist")), car.form1.lblRxDist.caption);
  EXPECT_EQ(QAccessible::queryAccessibleInterface(On<QWidget>("Form1", "lblRxDist"))
                ->text(QAccessible::Description),
            QStringLiteral("Distance to TX site in km."));
  auto* lamp = QAccessible::queryAccessibleInterface(On<QWidget>("Form1", "lmpRig"));
  EXPECT_EQ(lamp->role(), QAccessible::Button);
  EXPECT_EQ(lamp->text(QAccessible::Name), QStringLiteral("Rig, Done, FT840, Com1=9k6"));
  Do([this] { car.form1.Picture1.needle = 45; });
  EXPECT_EQ(spoken(On<QWidget>("Form1", "Picture1")), "Needle 45 degrees");
  Do([this] { car.form1.Picture1.needle.reset(); });
  EXPECT_EQ(spoken(On<QWidget>("Form1", "Picture1")), "Needle, no direction");
  Do([this] { car.form1.mnuMinimalDisplay.click(); });
  for (int turn = 0; turn < 10; ++turn) QApplication::processEvents();  // its coming to the front
  Do([this] { car.app.minimal.ShowPelorusMinimized("270"); });
  EXPECT_EQ(spoken(On<QWidget>("Form5", "Picture1")), "Needle 270 degrees");
}

TEST_F(CockpitOnScreen, F2TurnsDayIntoNight) {
  Drive();
  QWidget* const window = On<QWidget>("Form1", "lblRSSI")->window();
  QTest::keyClick(window, Qt::Key_F2);
  EXPECT_EQ(&SchemeOf(QApplication::palette()), &NightScheme());
  QApplication::processEvents();
  const QImage image = window->grab().toImage();
  qint64 light = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) light += qGray(image.pixel(x, y));
  }
  EXPECT_LT(light / (image.width() * image.height()), 40) << "no large light area";
  QTest::keyClick(window, Qt::Key_F2);
  EXPECT_EQ(&SchemeOf(QApplication::palette()), &DayScheme());
}

TEST_F(CockpitOnScreen, ReadingsAskForNoNewLayout) {
  Drive();
  QWidget* const window = On<QWidget>("Form1", "lblRSSI")->window();
  struct Counter : QObject {
    QStringList layouts;
    bool eventFilter(QObject* watched, QEvent* event) override {
      if (event->type() == QEvent::LayoutRequest) layouts << watched->objectName();
      return false;
    }
  } counter;
  for (int turn = 0; turn < 10; ++turn) QApplication::processEvents();  // those of its opening
  for (QWidget* widget : window->findChildren<QWidget*>()) widget->installEventFilter(&counter);
  window->installEventFilter(&counter);
  for (int raw = 0; raw < 250; raw += 10) {
    car.s_meter = raw;
    Pass(1100ms);
  }
  EXPECT_TRUE(counter.layouts.isEmpty()) << qPrintable(counter.layouts.join(QLatin1Char(' ')));
}

TEST(WindowMemoryTest, SizesAndNightSurviveARestart) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("Kestrum.windows"));
  const auto find = [](const char* name) -> QWidget* {
    for (QWidget* top : QApplication::topLevelWidgets()) {
      if (top->objectName() == QLatin1String(name)) return top;
    }
    return nullptr;
  };
  ScriptedProgram program;
  {
    Forms forms;
    Binder binder(program);
    const Windows windows(forms, binder, path);
    EXPECT_FALSE(forms.night);
    find("Form5")->resize(500, 333);
    forms.night = true;
    binder.Sync();
  }
  {
    Forms forms;
    Binder binder(program);
    const Windows windows(forms, binder, path);
    EXPECT_TRUE(forms.night);
    EXPECT_EQ(find("Form5")->size(), QSize(500, 333));
    find("Form1")->setWindowState(Qt::WindowMaximized);
  }
  {
    Forms forms;
    Binder binder(program);
    forms.night = false;
    const Windows windows(forms, binder, path);
    EXPECT_TRUE(find("Form1")->isMaximized());
    forms.night = false;
    binder.Sync();
  }
  QFile damaged(path);
  ASSERT_TRUE(damaged.open(QIODevice::WriteOnly));
  damaged.write("\x00\xFF[[[]]]=\n[Form5]\nsize=@Size(nonsense)\n", 40);
  damaged.close();
  Forms forms;
  Binder binder(program);
  const Windows windows(forms, binder, path);
  EXPECT_FALSE(find("Form5")->size().isEmpty());
}

}  // namespace
}  // namespace kestrum::test
