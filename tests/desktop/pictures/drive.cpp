#include <QApplication>
#include <QDir>
#include <QPalette>
#include <QStyle>
#include <cstdio>
#include <fstream>
#include <iterator>

#include "desktop/forms/windows.h"
#include "support/scripted_car.h"

// Pictures of the whole program on a scripted drive, without a display:
//   drive_pictures FOLDER [--dark] [--small]
// QT_SCALE_FACTOR chooses the scale; --small makes the main window as large as a small car display.
namespace {

using kestrum::test::ScriptedCar;

void UseDarkPalette() {
  QPalette dark(QColor(0x3A, 0x3A, 0x3A), QColor(0x2B, 0x2B, 0x2B));
  dark.setColor(QPalette::Base, QColor(0x1E, 0x1E, 0x1E));
  dark.setColor(QPalette::Highlight, QColor(0x3D, 0x8E, 0xE0));
  QApplication::setPalette(dark);
}

class Album {
 public:
  Album(QString folder, QString ending, bool small)
      : folder_(std::move(folder)), ending_(std::move(ending)), small_(small) {}

  ScriptedCar car;
  kestrum::Binder binder{car.world.program};
  kestrum::Windows windows{car.app.forms, binder};
  bool ok = true;

  void Do(const std::function<void()>& deed) {
    binder.Enter(deed);
    QApplication::processEvents();
  }
  void Tick(int count) {
    for (int n = 0; n < count; ++n) Do([this] { car.RunFor(std::chrono::milliseconds(1050)); });
  }
  void Take(const char* window, const char* name) {
    for (QWidget* top : QApplication::topLevelWidgets()) {
      if (top->objectName() != QLatin1String(window)) continue;
      if (small_ && top->objectName() == QLatin1String("Form1")) top->resize(1024, 560);
      if (top->objectName() == QLatin1String("Form5")) top->resize(480, 320);
      QApplication::processEvents();
      const QString path =
          folder_ + QLatin1Char('/') + QLatin1String(name) + ending_ + QStringLiteral(".png");
      ok = top->grab().save(path) && ok;
    }
  }

 private:
  QString folder_;
  QString ending_;
  bool small_;
};

std::string InfoText() {
  std::ifstream file(KESTRUM_INFO_TEXT, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void Drive(Album& album) {
  ScriptedCar& car = album.car;
  auto& form1 = car.app.forms.form1;
  auto settings = ScriptedCar::UsualSettings();
  settings.TxHeight = "25 m";
  car.WriteConfig(settings);
  car.world.files.files["/car/Kestrum.txt"] = InfoText();
  album.Do([&] { car.Start(); });
  album.Take("Form1", "start");
  album.Do([&] { form1.cmdLoggin.click(); });
  car.s_meter = 148;
  album.Do([&] { car.SendGps("5159.2177N", "00535.3967E", "A", "98.1", "27", "133.2"); });
  album.Tick(19);
  album.Take("Form1", "main-window");
  album.Do([&] { car.world.links.Send("lblVal1", "V"); });
  album.Tick(12);
  album.Take("Form1", "no-fix");
  album.Do([&] { car.world.links.Send("lblVal1", "A"); });
  album.Tick(1);
  album.Do([&] { form1.mnuTiming.click(); });
  album.Take("Form4", "timing");
  album.Do([&] { form1.mnuInfo.click(); });
  album.Take("Form2", "info");
  album.Do([&] { form1.mnuCalibration.click(); });
  album.Tick(1);
  album.Take("Form3", "calibration-editor");
  album.Do([&] { form1.mnuMinimalDisplay.click(); });
  album.Tick(1);
  album.Take("Form5", "minimal-display");
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication toolkit(argc, argv);
  const QStringList arguments = QApplication::arguments();
  if (arguments.size() < 2 || !QDir().mkpath(arguments.at(1))) {
    std::fputs("Usage: drive_pictures FOLDER [--dark] [--small]\n", stderr);
    return 2;
  }
  const bool dark = arguments.contains(QStringLiteral("--dark"));
  const bool small = arguments.contains(QStringLiteral("--small"));
  if (dark) UseDarkPalette();
  Album album(arguments.at(1), dark ? QStringLiteral("-dark") : QString(), small);
  Drive(album);
  return album.ok ? 0 : 1;
}
