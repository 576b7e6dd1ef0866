#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>

#include "map/map_view.h"
#include "support_process/qt_waits.h"
#include "window/orvandi_window.h"
#include "window/plot_deck.h"

// How long opening a log and frames of panning take in a real window:
//   orvandi_frames LOG WIDTH HEIGHT
namespace {

using namespace orvandi;

struct Frames {
  double median_ms = 0;
  double slowest_ms = 0;
};

template <typename Step>
Frames Measure(Step step, int count) {
  std::vector<double> times;
  for (int i = 0; i < count; ++i) {
    QElapsedTimer timer;
    timer.start();
    step(i);
    times.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
  }
  std::sort(times.begin(), times.end());
  return {times[times.size() / 2], times.back()};
}

void Tell(const char* what, const Frames& frames) {
  std::printf("%-32s median %6.2f ms, slowest %6.2f ms\n", what, frames.median_ms, frames.slowest_ms);
}

long PeakMegabytes() {
  QFile file(QStringLiteral("/proc/self/status"));
  if (!file.open(QIODevice::ReadOnly)) return 0;
  for (const QByteArray& line : file.readAll().split('\n')) {
    if (line.startsWith("VmHWM:")) return line.mid(6).simplified().split(' ').front().toLong() / 1024;
  }
  return 0;
}

void PanMap(OrvandiWindow& window) {
  MapView& map = window.Map();
  Camera camera = map.View();
  camera.size = QSizeF(map.size());
  for (const double zoom : {0.0, 2.0, 4.0}) {
    Camera at = camera;
    at.SetZoom(camera.Zoom() + zoom);
    map.SetView(at);
    map.repaint();
    const Frames frames = Measure(
        [&](int i) {
          at.PanBy({i % 120 < 60 ? 7.0 : -7.0, i % 120 < 60 ? 4.0 : -4.0});
          map.SetView(at);
          map.repaint();
        },
        240);
    Tell(qPrintable(QStringLiteral("map, %1 steps nearer").arg(zoom)), frames);
  }
  map.Fit();
}

void PanPlot(Plot* plot) {
  const Frames frames = Measure(
      [&](int i) {
        plot->xAxis->moveRange(plot->xAxis->range().size() * (i % 40 < 20 ? 0.004 : -0.004));
        plot->replot(QCustomPlot::rpImmediateRefresh);
      },
      120);
  Tell(qPrintable(plot->accessibleName()), frames);
}

}  // namespace

int main(int argc, char** argv) {
  const QApplication toolkit(argc, argv);
  const QStringList arguments = QApplication::arguments();
  if (arguments.size() != 4) {
    std::fputs("usage: orvandi_frames LOG WIDTH HEIGHT\n", stderr);
    return 2;
  }
  const QTemporaryDir folder;
  QSettings::setDefaultFormat(QSettings::IniFormat);
  QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder.path());
  OrvandiWindow window(StartOptions{});
  window.setWindowState(Qt::WindowNoState);
  window.resize(arguments.at(2).toInt(), arguments.at(3).toInt());
  window.show();
  kestrum::process::LetEventsRunFor(std::chrono::milliseconds(100));
  QElapsedTimer timer;
  timer.start();
  window.OpenFiles({arguments.at(1)});
  if (!kestrum::process::WaitFor([&] { return window.TheSession().ShownCount() > 0; },
                                 std::chrono::minutes(2)))
    return 1;
  QApplication::processEvents();
  std::printf("%zu records, open after %.2f s, at %d x %d\n", window.TheSession().View().Count(),
              static_cast<double>(timer.elapsed()) / 1000, window.width(), window.height());
  PanMap(window);
  PanPlot(window.Plots().Time());
  PanPlot(window.Plots().Distance());
  std::printf("peak memory %ld MB\n", PeakMegabytes());
  return 0;
}
