// What a driver is told when something fails, read from the real widgets of both windows: a real reader on a
// real bus, a rig on a pseudo-terminal, a log on a real disk. Time is counted in looks of the lamps, one a
// second, so that a busy machine is not taken for a slow program.
#include <gtest/gtest.h>

#include <QApplication>
#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>

#include "desktop/widgets/lamp_widget.h"
#include "desktop/widgets/meter_bar.h"
#include "desktop/widgets/pelorus_widget.h"
#include "desktop/widgets/picture_widget.h"
#include "desktop/widgets/readout.h"
#include "panel.h"
#include "support_process/qt_waits.h"

namespace kestrum::end_to_end {
namespace {

namespace fs = std::filesystem;

constexpr std::chrono::seconds kLongPatience{40};
constexpr int kWithin = 2;          // looks: two seconds
constexpr int kBoundary = 1;        // a fault comes between two looks
constexpr int kReaderIsFrozen = 5;  // by then nothing was heard of it

class CockpitFaults : public Panel {
 protected:
  void Drive(CarSetup setup = {}) {
    setup.interval_ms = 100;
    BringReader();
    Start(setup);
    Timer& lamps = app().forms.form1.tmrLamps;
    lamps.tick = [this, tick = lamps.tick] {
      tick();
      ++looks_;
    };
    Press("cmdLoggin");
    ASSERT_TRUE(process::WaitFor([&] { return AllIsWell(); }, kLongPatience));
  }
  template <class T>
  static T* On(const char* window, const char* name) {
    for (QWidget* top : QApplication::topLevelWidgets()) {
      if (top->objectName() == QLatin1String(window)) return top->findChild<T*>(QLatin1String(name));
    }
    return nullptr;
  }
  // Both windows say the same.
  static std::string Words(const char* lamp) {
    const std::string words = On<LampWidget>("Form1", lamp)->Says().words;
    return On<LampWidget>("Form5", lamp)->Says().words == words ? words : "differ";
  }
  static bool SignalFaded() {
    return On<TextLine>("Form1", "lblRSSI")->Stale() && On<TextLine>("Form1", "lblFieldStrenght")->Stale() &&
           On<MeterBar>("Form1", "ProgressBar1")->Stale() && On<MeterBar>("Form5", "ProgressBar1")->Stale() &&
           On<TextLine>("Form5", "Label1_4")->Stale();
  }
  static bool PositionFaded() {
    return On<PelorusWidget>("Form1", "Picture1")->Stale() &&
           On<PictureWidget>("Form5", "Picture1")->Stale() && On<TextLine>("Form1", "lblRxDist")->Stale() &&
           On<TextLine>("Form5", "Label1_0")->Stale();
  }
  static bool NothingFaded() {
    return !On<TextLine>("Form1", "lblRSSI")->Stale() && !On<MeterBar>("Form5", "ProgressBar1")->Stale() &&
           !On<PelorusWidget>("Form1", "Picture1")->Stale() && !On<TextLine>("Form5", "Label1_0")->Stale();
  }
  static bool AllIsWell() {
    return Words("lmpLog") == "Logging" && Words("lmpGps") == "GPS fix" && Words("lmpRig") == "Rig" &&
           NothingFaded();
  }
  // From now on the lamp says so, and what is no longer true is faded, within so many looks.
  void ExpectTold(const char* lamp, const char* words, bool (*faded)(), int within = kWithin) {
    const int from = looks_;
    const bool told = process::WaitFor([&] { return Words(lamp) == words && (faded == nullptr || faded()); },
                                       kLongPatience);
    EXPECT_TRUE(told) << lamp << " says " << Words(lamp) << " instead of " << words;
    EXPECT_LE(looks_ - from, within + kBoundary) << words;
  }
  void ExpectWell() {
    EXPECT_TRUE(process::WaitFor([&] { return AllIsWell(); }, kLongPatience))
        << Words("lmpLog") << ", " << Words("lmpGps") << ", " << Words("lmpRig");
  }

 private:
  int looks_ = 0;
};

TEST_F(CockpitFaults, TheRigIsSilentThenUnplugged) {
  Drive();
  TellDrive("silence");
  ExpectTold("lmpRig", "RIG SILENT", SignalFaded);
  EXPECT_EQ(Words("lmpGps"), "GPS fix");
  TellDrive("clear");
  ExpectWell();
  TellDrive("vanish");
  ExpectTold("lmpRig", "UNPLUGGED", SignalFaded);
  TellDrive("clear");
  ExpectWell();
}

TEST_F(CockpitFaults, TheRigIsOff) {
  CarSetup setup;
  setup.rig = 1;
  setup.power_caption = "&On";
  Drive(setup);
  Press("cmdFT817OnOff");
  ExpectTold("lmpRig", "RIG OFF", SignalFaded);
}

TEST_F(CockpitFaults, TheReaderIsKilledAndStartedAgainByAPress) {
  Drive();
  ASSERT_EQ(Readers().size(), 1U);
  ::kill(Readers().front(), SIGKILL);
  ExpectTold("lmpGps", "READER GONE", PositionFaded);
  EXPECT_EQ(Words("lmpRig"), "Rig");
  On<LampWidget>("Form1", "lmpGps")->click();
  ExpectWell();
}

TEST_F(CockpitFaults, TheReaderIsFrozen) {
  Drive();
  ASSERT_EQ(Readers().size(), 1U);
  ::kill(Readers().front(), SIGSTOP);
  ExpectTold("lmpGps", "READER FROZEN", PositionFaded, kReaderIsFrozen + kWithin);
  ::kill(Readers().front(), SIGCONT);
  ExpectWell();
}

TEST_F(CockpitFaults, TheFixIsLost) {
  Drive();
  TellDrive("nofix");
  ExpectTold("lmpGps", "NO GPS FIX", PositionFaded);
  TellDrive("clear");
  ExpectWell();
}

TEST_F(CockpitFaults, TheFolderOfTheLogIsGone) {
  fs::create_directory(File("logs"));
  CarSetup setup;
  setup.log_file = File("logs/RSSI-GPS.log");
  Drive(setup);
  fs::rename(File("logs"), File("elsewhere"));
  ExpectTold("lmpLog", "Check disk", nullptr);
  EXPECT_TRUE(NothingFaded());
  fs::rename(File("elsewhere"), File("logs"));
  ExpectWell();
}

TEST_F(CockpitFaults, TheDiskIsFull) {
  CarSetup setup;
  setup.log_file = "/dev/full";
  BringReader();
  Start(setup);
  Press("cmdLoggin");
  const auto refused = [] {
    const auto tops = QApplication::topLevelWidgets();
    return std::any_of(tops.begin(), tops.end(), [](QWidget* top) {
      const auto* box = qobject_cast<QMessageBox*>(top);
      return box != nullptr && box->isVisible() && box->text().contains(QStringLiteral("No space left"));
    });
  };
  ASSERT_TRUE(process::WaitFor(refused, kLongPatience));
  ExpectTold("lmpLog", "NOT SAVED", nullptr, 0);
}

}  // namespace
}  // namespace kestrum::end_to_end
