// The mapping program's window with a million records: opening, frames of panning, memory.
#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QSettings>
#include <QTemporaryDir>
#include <QTimer>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include "generated_drive.h"
#include "map/map_view.h"
#include "rows.h"
#include "window/orvandi_window.h"
#include "window/plot_deck.h"

namespace kestrum::bench {
namespace {

using orvandi::Camera;
using orvandi::MapView;
using orvandi::OrvandiWindow;
using orvandi::Plot;

constexpr unsigned kRecords = 1'000'000;
constexpr double kFrameMs = 1000.0 / 60;
constexpr std::chrono::minutes kPatience{2};

double MsSince(const QElapsedTimer& timer) {
  return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

template <typename Step>
std::vector<double> Frames(Step step, int count) {
  std::vector<double> frames;
  for (int i = 0; i < count; ++i) {
    QElapsedTimer timer;
    timer.start();
    step(i);
    frames.push_back(MsSince(timer));
  }
  return frames;
}

double PeakMb() {
  std::ifstream status("/proc/self/status");
  std::string line;
  while (std::getline(status, line)) {
    if (line.starts_with("VmHWM:")) return std::stod(line.substr(6)) / 1e3;
  }
  return 0;
}

void PanMap(OrvandiWindow& window) {
  MapView& map = window.Map();
  Camera whole = map.View();
  whole.size = QSizeF(map.size());
  for (const int nearer : {0, 2, 4}) {
    Camera at = whole;
    at.SetZoom(whole.Zoom() + nearer);
    map.SetView(at);
    map.repaint();
    const auto pan = [&](int i) {
      const double way = i % 120 < 60 ? 1 : -1;
      at.PanBy({7 * way, 4 * way});
      map.SetView(at);
      map.repaint();
    };
    const std::string view = nearer == 0 ? "whole drive" : std::to_string(nearer) + " steps nearer";
    Print({"Orvandi: a frame of panning the map of a million records, " + view,
           "ms",
           Frames(pan, 240),
           {kFrameMs, {}},
           ""});
  }
  map.Fit();
}

void PanPlot(Plot* plot, const char* name) {
  const auto pan = [&](int i) {
    plot->xAxis->moveRange(plot->xAxis->range().size() * (i % 40 < 20 ? 0.004 : -0.004));
    plot->replot(QCustomPlot::rpImmediateRefresh);
  };
  Print({std::string("Orvandi: a frame of panning a million records over ") + name,
         "ms",
         Frames(pan, 120),
         {kFrameMs, {}},
         ""});
}

int Run() {
  const QTemporaryDir folder;
  QSettings::setDefaultFormat(QSettings::IniFormat);
  QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder.path());
  const QString log = folder.filePath(QStringLiteral("drive.log"));
  std::ofstream(log.toStdString(), std::ios::binary) << GeneratedDrive(kRecords, 0);

  OrvandiWindow window(orvandi::StartOptions{});
  window.setWindowState(Qt::WindowNoState);
  window.resize(1280, 760);
  window.show();
  QApplication::processEvents();
  QElapsedTimer timer;
  QEventLoop loop;
  QObject::connect(&window.TheSession(), &orvandi::Session::ViewChanged, &loop, [&] {
    if (window.TheSession().ShownCount() > 0) loop.quit();
  });
  QTimer::singleShot(kPatience, &loop, &QEventLoop::quit);
  timer.start();
  window.OpenFiles({log});
  loop.exec();
  if (window.TheSession().ShownCount() == 0) {
    std::fputs("orvandi_window_bench: the log was not opened\n", stderr);
    return 1;
  }
  QApplication::processEvents();
  Print({"Orvandi: a log of a million records is on the screen", "ms", {MsSince(timer)}, {2000.0, {}}, ""});
  PanMap(window);
  PanPlot(window.Plots().Time(), "time");
  PanPlot(window.Plots().Distance(), "distance");
  Print({"Orvandi: peak memory with its window", "MB", {PeakMb()}, {400.0, {}}, ""});
  return 0;
}

}  // namespace
}  // namespace kestrum::bench

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication toolkit(argc, argv);
  return kestrum::bench::Run();
}
