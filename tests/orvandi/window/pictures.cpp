#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTabWidget>
#include <QTest>
#include <cstdio>

#include "map/map_view.h"
#include "support_process/qt_waits.h"
#include "window/orvandi_window.h"
#include "window/plot_deck.h"
#include "window/sample_drive.h"

// Pictures of the window, for looking at them and for the documents, with a log of the demo or, without one,
// with a made-up drive:
//   orvandi_pictures FOLDER WIDTH HEIGHT light|dark [LOG]
// QT_SCALE_FACTOR chooses the scale; WIDTH and HEIGHT are in its units.
namespace {

using namespace orvandi;
using kestrum::process::LetEventsRunFor;
using kestrum::process::WaitFor;

bool Settle(OrvandiWindow& window) {
  const bool idle = WaitFor([&] { return !window.Jobs().Busy(); }, std::chrono::minutes(1));
  LetEventsRunFor(std::chrono::milliseconds(200));
  return idle;
}

void Shoot(OrvandiWindow& window, const QString& path) {
  LetEventsRunFor(std::chrono::milliseconds(150));
  if (!window.grab().save(path)) std::fprintf(stderr, "cannot save %s\n", qPrintable(path));
}

void ChooseSector(OrvandiWindow& window) {
  PatternPlot* pattern = window.Plots().Pattern();
  QTest::mouseClick(pattern, Qt::LeftButton, {}, pattern->SectorPlace(6));
}

bool WriteSampleLog(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly)) return false;
  file.write(
      QByteArray::fromStdString(test::SampleLog({}) + "a line of a foreign program\r\n10:41:12, GPS Ok, 51"));
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  const QApplication toolkit(argc, argv);
  const QStringList arguments = QApplication::arguments();
  if (arguments.size() < 4) {
    std::fputs("usage: orvandi_pictures FOLDER WIDTH HEIGHT light|dark [LOG]\n", stderr);
    return 2;
  }
  const QDir folder(arguments.at(1));
  folder.mkpath(QStringLiteral("."));
  QSettings::setDefaultFormat(QSettings::IniFormat);
  QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder.filePath(QStringLiteral("settings")));
  QSettings settings(QStringLiteral("Kestrum"), QStringLiteral("Orvandi"));
  settings.clear();
  settings.setValue(QStringLiteral("theme"),
                    static_cast<int>(arguments.value(4) == QLatin1String("dark") ? 2 : 1));
  settings.sync();
  QString log = arguments.value(5);
  if (log.isEmpty()) {
    log = folder.filePath(QStringLiteral("drive.log"));
    if (!WriteSampleLog(log)) return 1;
  }

  OrvandiWindow window(StartOptions{{}, false, folder.path(), false});
  window.setWindowState(Qt::WindowNoState);
  window.resize(arguments.at(2).toInt(), arguments.at(3).toInt());
  window.show();
  Shoot(window, folder.filePath(QStringLiteral("start.png")));
  window.OpenFiles({log});
  if (!Settle(window)) return 1;
  Shoot(window, folder.filePath(QStringLiteral("drive.png")));
  ChooseSector(window);
  Shoot(window, folder.filePath(QStringLiteral("chosen.png")));
  window.TheSession().Choose({}, false);
  auto* lists = window.findChild<QTabWidget*>(QStringLiteral("lists"));
  lists->setCurrentIndex(1);
  window.Plots().Bring(PlotDeck::kDistance);
  Shoot(window, folder.filePath(QStringLiteral("cleaning.png")));
  lists->setCurrentIndex(3);
  window.Plots().Bring(PlotDeck::kDistribution);
  Shoot(window, folder.filePath(QStringLiteral("dropped.png")));
  window.TheSession().SetGroupBy(GroupBy::kAntenna);
  window.TheSession().SetColoring(DotStyle::Coloring::kLayer);
  lists->setCurrentIndex(0);
  window.Plots().Bring(PlotDeck::kPattern);
  Shoot(window, folder.filePath(QStringLiteral("layers.png")));
  lists->setCurrentIndex(2);
  window.TheSession().SetComparison(ComparisonChoice{0, 1, 100});
  Shoot(window, folder.filePath(QStringLiteral("compare.png")));
  window.TheSession().SetComparison(std::nullopt);
  window.TheSession().SetColoring(DotStyle::Coloring::kValue);
  window.TheSession().SetGroupBy(GroupBy::kFile);
  window.SaveReportTo(folder.filePath(QStringLiteral("report.pdf")));
  window.SavePicture(&window.Map(), folder.filePath(QStringLiteral("map.svg")));
  window.SavePicture(window.Plots().Pattern(), folder.filePath(QStringLiteral("pattern.png")));
  return 0;
}
