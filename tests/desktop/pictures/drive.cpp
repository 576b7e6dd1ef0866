#include <QApplication>
#include <QDir>
#include <QSize>
#include <QWidget>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <iterator>

#include "desktop/forms/windows.h"
#include "support/scripted_car.h"

// Pictures of the whole program on a scripted drive, without a display:
//   drive_pictures FOLDER [--night] [--size=WIDTHxHEIGHT] [--font=POINTS] [--faults]
// QT_SCALE_FACTOR chooses the scale; --size is the size of both windows for the driver; --faults paints every
// state of the lamps instead of the drive.
namespace {

using kestrum::test::ScriptedCar;

class Album {
 public:
  Album(QString folder, QString ending, QSize size)
      : folder_(std::move(folder)), ending_(std::move(ending)), size_(size) {}

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
      const bool is_for_driver =
          top->objectName() == QLatin1String("Form1") || top->objectName() == QLatin1String("Form5");
      if (is_for_driver && size_.isValid()) top->resize(size_);
      QApplication::processEvents();
      const QString path =
          folder_ + QLatin1Char('/') + QLatin1String(name) + ending_ + QStringLiteral(".png");
      ok = top->grab().save(path) && ok;
    }
  }

 private:
  QString folder_;
  QString ending_;
  QSize size_;
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

// Both windows with each lamp in each of its states.
void Faults(Album& album) {
  ScriptedCar& car = album.car;
  auto settings = ScriptedCar::UsualSettings();
  settings.TxHeight = "25 m";
  car.WriteConfig(settings);
  album.Do([&] { car.Start(); });
  album.Take("Form1", "not-logging");
  album.Do([&] { car.form1.cmdLoggin.click(); });
  for (int step = 0; step < 320; ++step) {
    album.Do([&] {
      car.s_meter = 128 + static_cast<int>(70 * std::sin(step / 25.0) + 30 * std::sin(step / 4.0));
      car.rig_answers = step < 120 || step > 150;
      car.SendGps("5159.2177N", "00535.3967E", "A", "98.1", "27", std::to_string((step * 3) % 360));
    });
    album.Tick(1);
  }
  album.Do([&] { car.form1.mnuMinimalDisplay.click(); });
  album.Tick(1);
  const auto both = [&album](const char* name) {
    album.Take("Form1", (std::string("main-") + name).c_str());
    album.Take("Form5", (std::string("minimal-") + name).c_str());
  };
  both("well");
  car.world.links.Send("lblVal1", "V");
  album.Tick(14);
  both("no-fix");
  car.rig_answers = false;
  album.Tick(6);
  both("no-fix-and-silent");
  car.world.links.Send("lblVal1", "A");
  car.world.links.server_present = false;
  car.world.serial.Vanish();
  car.world.files.write_fault = "No space left on device";
  album.Tick(100);
  both("all-lost");
  car.world.links.server_present = true;
  car.world.links.silence = std::chrono::seconds(7);
  car.world.serial.Return();
  car.rig_answers = true;
  car.world.files.write_fault.clear();
  album.Tick(100);
  car.world.files.write_fault = "No such file or directory";
  car.form1.lmpLog.click();
  album.Tick(2);
  both("frozen-and-no-folder");
}

// The size of an option "--size=1024x560"; not valid when there is none.
QSize SizeOption(const QStringList& arguments) {
  for (const QString& argument : arguments) {
    if (!argument.startsWith(QStringLiteral("--size="))) continue;
    const QStringList parts = argument.mid(7).split(QLatin1Char('x'));
    if (parts.size() == 2) return {parts.at(0).toInt(), parts.at(1).toInt()};
  }
  return {};
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication toolkit(argc, argv);
  const QStringList arguments = QApplication::arguments();
  if (arguments.size() < 2 || !QDir().mkpath(arguments.at(1))) {
    std::fputs("Usage: drive_pictures FOLDER [--night] [--size=WxH] [--font=POINTS] [--faults]\n", stderr);
    return 2;
  }
  for (const QString& argument : arguments) {
    if (!argument.startsWith(QStringLiteral("--font="))) continue;
    QFont font = QApplication::font();
    font.setPointSizeF(argument.mid(7).toDouble());
    QApplication::setFont(font);
  }
  const bool night = arguments.contains(QStringLiteral("--night"));
  Album album(arguments.at(1), night ? QStringLiteral("-night") : QString(), SizeOption(arguments));
  album.Do([&] { album.car.app.forms.night = night; });
  if (arguments.contains(QStringLiteral("--faults"))) {
    Faults(album);
  } else {
    Drive(album);
  }
  return album.ok ? 0 : 1;
}
