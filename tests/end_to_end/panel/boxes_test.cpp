// The boxes of the menus on the real toolkit: while one stands open, the set is read and records are made as
// before.
#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <optional>

#include "panel.h"
#include "support_process/qt_waits.h"

namespace kestrum::end_to_end {
namespace {

constexpr int kIntervalMs = 200;

// How long each box is held open; KESTRUM_BOX_SECONDS lengthens it.
std::chrono::milliseconds HeldOpen() {
  const char* const seconds = std::getenv("KESTRUM_BOX_SECONDS");
  return seconds != nullptr ? std::chrono::seconds(std::atoi(seconds)) : std::chrono::milliseconds(1200);
}

struct BoxRow {
  const char* name;
  const char* menu;
  bool in_editor = false;
  int boxes_before = 0;  // that are answered at once
  const char* typed = "";
};

class MenuBox : public Panel, public testing::WithParamInterface<BoxRow> {};

QAction* EditorMenu(const char* name) {
  for (QWidget* top : QApplication::topLevelWidgets()) {
    if (top->objectName() == QStringLiteral("Form3")) return top->findChild<QAction*>(QLatin1String(name));
  }
  return nullptr;
}

TEST_P(MenuBox, StopsNoMeasuring) {
  const BoxRow& row = GetParam();
  CarSetup setup;
  setup.interval_ms = kIntervalMs;
  Start(setup);
  process::WriteFile(File("there.cfg"), "x");
  Press("cmdLoggin");
  ASSERT_TRUE(process::WaitFor([this] { return Readings() >= 2; }));
  if (row.in_editor) Menu("mnuCalibration");

  int before = row.boxes_before;
  std::optional<std::chrono::steady_clock::time_point> opened;
  std::size_t readings = 0;
  int records = 0;
  bool measured = false;
  QTimer watch;
  QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
    auto* const box = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (box == nullptr) return;
    if (measured) {  // what comes after it
      box->reject();
      return;
    }
    const int made = QString::fromStdString(Text("lblCatCount")).toInt();
    if (before > 0) {
      --before;
      if (auto* edit = box->findChild<QLineEdit*>(); edit != nullptr && *row.typed != 0) {
        edit->setText(QLatin1String(row.typed));
      }
      box->accept();
      return;
    }
    if (!opened) {
      opened = std::chrono::steady_clock::now();
      readings = Readings();
      records = made;
    }
    if (std::chrono::steady_clock::now() - *opened < HeldOpen()) return;
    readings = Readings() - readings;
    records = made - records;
    measured = true;
    box->reject();
  });
  UnderABox([] {});
  watch.start(10);
  (row.in_editor ? EditorMenu(row.menu) : Find<QAction>(row.menu))->trigger();
  ASSERT_TRUE(measured) << "no box came";
  // A cycle takes the 50 ms of its reading beside the interval, and a loaded machine a little more.
  const auto due = static_cast<std::size_t>(HeldOpen().count() / (kIntervalMs + 50));
  std::printf("%-18s open %5d ms: %3zu readings, %3d records\n", row.name,
              static_cast<int>(HeldOpen().count()), readings, records);
  EXPECT_GE(readings * 2, due);
  EXPECT_LE(std::abs(static_cast<int>(readings) - records), 1) << "one may be under way";
}

INSTANTIATE_TEST_SUITE_P(Menus, MenuBox,
                         testing::Values(BoxRow{"DefaultCfg", "mnuDefaultCfg"},
                                         BoxRow{"SaveLogfile", "mnuSaveLogfile"},
                                         BoxRow{"LoadConfig1", "mnuLoadConfig1"},
                                         BoxRow{"LoadConfig2", "mnuLoadConfig2"}, BoxRow{"Load", "mnuLoad"},
                                         BoxRow{"Orvandi", "mnuOrvandi"}, BoxRow{"Latitude", "mnuTxLatLong"},
                                         BoxRow{"WrongLatitude", "mnuTxLatLong", false, 1, "north"},
                                         BoxRow{"FT847", "mnuFT847"}, BoxRow{"FT897", "mnuFT897"},
                                         BoxRow{"ShortCuts", "mnuShortCuts"}, BoxRow{"About", "mnuAbout"},
                                         BoxRow{"EditorLoad", "mnuLoad", true},
                                         BoxRow{"EditorSaveAs", "mnuSaveAs", true},
                                         BoxRow{"EditorOverwrites", "mnuSaveAs", true, 1, "there.cfg"},
                                         BoxRow{"EditorAbout", "mnuAbout", true}),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace kestrum::end_to_end
