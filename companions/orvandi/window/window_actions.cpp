#include <QActionGroup>
#include <QApplication>
#include <QMenu>
#include <QSettings>
#include <QToolBar>
#include <QToolButton>

#include "map/map_view.h"
#include "plots/level_axis.h"
#include "window/notice_bar.h"
#include "window/orvandi_window.h"
#include "window/plot_deck.h"
#include "window/side_panels.h"
#include "window/vector_pictures.h"

namespace orvandi {
namespace {

QString Text(const char* text) {
  return QString::fromUtf8(text);
}

}  // namespace

QAction* OrvandiWindow::MakeAction(const ActionLook& look) {
  auto* action = new QAction(Text(look.text), this);
  action->setObjectName(Text(look.name));
  const QKeySequence keys{Text(look.keys)};
  action->setShortcut(keys);
  action->setToolTip(keys.isEmpty() ? Text(look.tip)
                                    : QStringLiteral("%1 (%2)").arg(Text(look.tip),
                                                                    keys.toString(QKeySequence::NativeText)));
  icons_.append({action, Text(look.icon)});
  actions_.insert(Text(look.name), action);
  tools_->addAction(action);
  addAction(action);
  return action;
}

void OrvandiWindow::AddMenuButton(QAction* action, QMenu* menu) {
  action->setMenu(menu);
  menu->setToolTipsVisible(true);
  if (auto* button = qobject_cast<QToolButton*>(tools_->widgetForAction(action))) {
    button->setPopupMode(QToolButton::InstantPopup);
  }
}

void OrvandiWindow::MakeToolBar() {
  tools_ = addToolBar(QStringLiteral("Tools"));
  tools_->setObjectName(QStringLiteral("tools"));
  tools_->setMovable(false);
  tools_->setContextMenuPolicy(Qt::PreventContextMenu);
  tools_->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
  tools_->setIconSize(QSize(20, 20));
  AddFileActions();
  tools_->addSeparator();
  AddViewActions();
  tools_->addSeparator();
  AddOutputActions();
  for (QAction* action : tools_->actions()) {
    if (QWidget* widget = tools_->widgetForAction(action)) {
      widget->setFocusPolicy(Qt::TabFocus);
      widget->setObjectName(action->objectName() + QStringLiteral("Button"));
      widget->setAccessibleName(action->text());
    }
  }
}

void OrvandiWindow::AddFileActions() {
  QAction* open = MakeAction({"open", "Open", "open", "Ctrl+O", "Open logs; several at once become layers"});
  connect(open, &QAction::triggered, this, &OrvandiWindow::AskForFiles);
  recent_menu_ = new QMenu(this);
  recent_menu_->setObjectName(QStringLiteral("recent"));
  open->setMenu(recent_menu_);
  if (auto* button = qobject_cast<QToolButton*>(tools_->widgetForAction(open))) {
    button->setPopupMode(QToolButton::MenuButtonPopup);
  }
  connect(recent_menu_, &QMenu::aboutToShow, this, &OrvandiWindow::FillRecentMenu);
  QAction* follow = MakeAction(
      {"follow", "Follow", "follow", "Ctrl+L", "Show what comes to the logs while a drive goes on"});
  follow->setCheckable(true);
  follow->setChecked(settings_->value(QStringLiteral("follow"), true).toBool());
  connect(follow, &QAction::toggled, this, [this](bool on) {
    settings_->setValue(QStringLiteral("follow"), on);
    if (on) FollowTick();
  });
}

void OrvandiWindow::AddViewActions() {
  QAction* fit = MakeAction({"fit", "Fit", "fit", "Ctrl+0", "Show everything on the map and in the plots"});
  connect(fit, &QAction::triggered, this, [this] {
    map_->Fit();
    for (Plot* plot : plots_->All()) plot->FitAll();
  });
  QAction* choose =
      MakeAction({"choose", "Choose", "choose", "Ctrl+E",
                  "Dragging chooses records instead of moving; Shift and dragging does so at any time"});
  choose->setCheckable(true);
  connect(choose, &QAction::toggled, this, [this](bool on) {
    map_->SetChoosing(on);
    for (Plot* plot : plots_->All()) plot->SetChoosing(on);
  });
  QAction* hide = MakeAction({"hide", "Hide", "hide", "Del", "Leave the chosen records out of all views"});
  connect(hide, &QAction::triggered, &session_, &Session::HideChosen);
  QAction* undo = MakeAction({"undo", "Undo", "undo", "Ctrl+Z", "Bring back what was hidden last"});
  connect(undo, &QAction::triggered, &session_.Undo(), &QUndoStack::undo);
  connect(&session_.Undo(), &QUndoStack::canUndoChanged, undo, &QAction::setEnabled);
  undo->setEnabled(false);
  hide->setEnabled(false);
  auto* redo = new QAction(this);
  redo->setObjectName(QStringLiteral("redo"));
  redo->setShortcut(QKeySequence(QStringLiteral("Ctrl+Shift+Z")));
  connect(redo, &QAction::triggered, &session_.Undo(), &QUndoStack::redo);
  addAction(redo);
  for (const int by : {-1, 1}) {
    auto* step = new QAction(this);
    step->setObjectName(by < 0 ? QStringLiteral("previousRecord") : QStringLiteral("nextRecord"));
    step->setShortcut(QKeySequence(by < 0 ? QStringLiteral("Ctrl+Left") : QStringLiteral("Ctrl+Right")));
    connect(step, &QAction::triggered, this, [this, by] { StepRecord(by); });
    addAction(step);
  }
  tools_->addSeparator();
  AddMenuButton(MakeAction({"unit", "Unit", "unit", "", "The unit of all views"}), MakeUnitMenu());
  AddMenuButton(MakeAction({"colors", "Colours", "colors", "", "Colours by signal or by layer"}),
                MakeColorMenu());
  AddMenuButton(MakeAction({"background", "Map", "background", "", "What lies under the dots"}),
                MakeBackgroundMenu());
}

void OrvandiWindow::AddOutputActions() {
  QAction* compare = MakeAction(
      {"compare", "Compare", "compare", "Ctrl+D", "How two layers differ, by place and by direction"});
  connect(compare, &QAction::triggered, this, [this] {
    lists_->setCurrentWidget(compare_);
    compare_->setFocus();
  });
  AddMenuButton(MakeAction({"calibrate", "Calibrate", "calibrate", "",
                            "Read the raw values with another calibration; the log stays as it is"}),
                MakeCalibrationMenu());
  tools_->addSeparator();
  AddMenuButton(MakeAction({"export", "Export", "export", "", "Records and pictures for other programs"}),
                MakeExportMenu());
  QAction* report =
      MakeAction({"report", "Report", "report", "Ctrl+P", "The drive on paper: map, plots, numbers (PDF)"});
  connect(report, &QAction::triggered, this, &OrvandiWindow::AskForReport);
  auto* spring = new QWidget;
  spring->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  tools_->addWidget(spring);
  AddMenuButton(MakeAction({"theme", "Theme", "theme", "", "Dark or light"}), MakeThemeMenu());
}

QMenu* OrvandiWindow::MakeUnitMenu() {
  static const std::array<const char*, 5> kTexts = {
      "Field strength in dB over 1 \u00B5V/m", "Field strength in mV/m",
      "Voltage at the antenna input in \u00B5V", "Power at the antenna input in dBm", "S-points"};
  auto* menu = new QMenu(this);
  auto* group = new QActionGroup(menu);
  for (std::size_t i = 0; i < kUnits.size(); ++i) {
    const Unit unit = kUnits.at(i);
    QAction* action = menu->addAction(UnitName(unit));
    action->setObjectName(QStringLiteral("unit%1").arg(i));
    action->setToolTip(Text(kTexts.at(i)));
    action->setCheckable(true);
    group->addAction(action);
    connect(action, &QAction::triggered, this, [this, unit] { session_.SetUnit(unit); });
  }
  connect(menu, &QMenu::aboutToShow, this,
          [this, group] { group->actions().at(static_cast<int>(session_.View().unit))->setChecked(true); });
  return menu;
}

QMenu* OrvandiWindow::MakeColorMenu() {
  auto* menu = new QMenu(this);
  auto* group = new QActionGroup(menu);
  const auto add = [&](const QString& text, const QString& name, DotStyle::Coloring coloring) {
    QAction* action = menu->addAction(text);
    action->setObjectName(name);
    action->setCheckable(true);
    group->addAction(action);
    connect(action, &QAction::triggered, this, [this, coloring] { session_.SetColoring(coloring); });
    return action;
  };
  add(QStringLiteral("By signal"), QStringLiteral("colorBySignal"), DotStyle::Coloring::kValue)
      ->setChecked(true);
  add(QStringLiteral("By layer"), QStringLiteral("colorByLayer"), DotStyle::Coloring::kLayer);
  return menu;
}

QMenu* OrvandiWindow::MakeBackgroundMenu() {
  auto* menu = new QMenu(this);
  auto* group = new QActionGroup(menu);
  const auto add = [&](const QString& text, const QString& name) {
    QAction* action = menu->addAction(text);
    action->setObjectName(name);
    action->setCheckable(true);
    group->addAction(action);
    return action;
  };
  QAction* grid = add(QStringLiteral("Grid, no map"), QStringLiteral("mapGrid"));
  QAction* file = add(QStringLiteral("Map from a file (MBTiles)\u2026"), QStringLiteral("mapFile"));
  QAction* online = add(QStringLiteral("Online map\u2026"), QStringLiteral("mapOnline"));
  connect(grid, &QAction::triggered, this, [this] {
    Background background = background_;
    background.kind = Background::Kind::kGrid;
    ChooseBackground(background);
  });
  connect(file, &QAction::triggered, this, &OrvandiWindow::AskForTilesFile);
  connect(online, &QAction::triggered, this, &OrvandiWindow::AskForOnlineMap);
  connect(menu, &QMenu::aboutToShow, this, [this, grid, file, online] {
    grid->setChecked(background_.kind == Background::Kind::kGrid);
    file->setChecked(background_.kind == Background::Kind::kFile);
    online->setChecked(background_.kind == Background::Kind::kOnline);
  });
  return menu;
}

QMenu* OrvandiWindow::MakeCalibrationMenu() {
  auto* menu = new QMenu(this);
  QAction* as_logged = menu->addAction(QStringLiteral("As logged"));
  as_logged->setObjectName(QStringLiteral("asLogged"));
  as_logged->setCheckable(true);
  QAction* file = menu->addAction(QStringLiteral("With a calibration file\u2026"));
  file->setObjectName(QStringLiteral("withCalibration"));
  file->setCheckable(true);
  connect(as_logged, &QAction::triggered, this, [this] { Calibrate(QString()); });
  connect(file, &QAction::triggered, this, &OrvandiWindow::AskForCalibration);
  connect(menu, &QMenu::aboutToShow, this, [this, as_logged, file] {
    as_logged->setChecked(session_.Calibration() == nullptr);
    file->setChecked(session_.Calibration() != nullptr);
  });
  return menu;
}

QMenu* OrvandiWindow::MakeExportMenu() {
  auto* menu = new QMenu(this);
  const auto records = [&](const char* text, const char* ending, Format format) {
    QAction* action = menu->addAction(Text(text));
    action->setObjectName(QStringLiteral("export") + Text(ending));
    const QString name = Text(ending);
    connect(action, &QAction::triggered, this, [this, format, name] { AskForExport(format, name); });
  };
  menu->addSection(QStringLiteral("Records"));
  records("KML for Google Earth\u2026", "kml", Format::kKml);
  records("GPX, a track\u2026", "gpx", Format::kGpx);
  records("GeoJSON\u2026", "geojson", Format::kGeoJson);
  records("CSV, a table\u2026", "csv", Format::kCsv);
  menu->addSection(WritesSvg() ? QStringLiteral("Pictures (PNG, SVG, PDF)")
                               : QStringLiteral("Pictures (PNG, PDF)"));
  const auto picture = [&](const QString& text, QWidget* view, const QString& name) {
    QAction* action = menu->addAction(text);
    action->setObjectName(QStringLiteral("picture") + name);
    connect(action, &QAction::triggered, this, [this, view, name] { AskForPicture(view, name); });
  };
  picture(QStringLiteral("Map\u2026"), map_, QStringLiteral("map"));
  picture(QStringLiteral("Signal over time\u2026"), plots_->Time(), QStringLiteral("time"));
  picture(QStringLiteral("Signal over distance\u2026"), plots_->Distance(), QStringLiteral("distance"));
  picture(QStringLiteral("Antenna pattern\u2026"), plots_->Pattern(), QStringLiteral("pattern"));
  picture(QStringLiteral("Distribution\u2026"), plots_->Distribution(), QStringLiteral("distribution"));
  return menu;
}

QMenu* OrvandiWindow::MakeThemeMenu() {
  auto* menu = new QMenu(this);
  auto* group = new QActionGroup(menu);
  const std::array<std::pair<Theme, QString>, 3> themes = {
      {{Theme::kDesktop, QStringLiteral("As the desktop")},
       {Theme::kLight, QStringLiteral("Light")},
       {Theme::kDark, QStringLiteral("Dark")}}};
  for (const auto& entry : themes) {
    const Theme theme = entry.first;
    QAction* action = menu->addAction(entry.second);
    action->setObjectName(QStringLiteral("theme%1").arg(static_cast<int>(theme)));
    action->setCheckable(true);
    group->addAction(action);
    connect(action, &QAction::triggered, this, [this, theme] { SetTheme(theme); });
  }
  connect(menu, &QMenu::aboutToShow, this,
          [this, group] { group->actions().at(static_cast<int>(theme_))->setChecked(true); });
  return menu;
}

void OrvandiWindow::SetTheme(Theme theme) {
  theme_ = theme;
  ApplyTheme(theme);
  setPalette(QApplication::palette());
  Restyle();
  const PlotInk ink = PlotInkOf(QApplication::palette());
  for (Plot* plot : plots_->All()) {
    plot->setPalette(QApplication::palette());
    plot->Restyle(ink);
  }
  map_->setPalette(QApplication::palette());
  ShowView(Session::PlaceChange::kNone);
}

void OrvandiWindow::FillRecentMenu() {
  recent_menu_->clear();
  for (const QString& path : settings_->value(QStringLiteral("recent")).toStringList()) {
    QAction* action = recent_menu_->addAction(path);
    connect(action, &QAction::triggered, this, [this, path] { OpenFiles({path}); });
  }
  if (recent_menu_->isEmpty()) recent_menu_->addAction(QStringLiteral("No recent logs"))->setEnabled(false);
  recent_menu_->addSeparator();
  QAction* close = recent_menu_->addAction(QStringLiteral("Close all logs"));
  close->setObjectName(QStringLiteral("closeAll"));
  close->setEnabled(!session_.Logs().empty());
  connect(close, &QAction::triggered, this, [this] {
    session_.CloseAll();
    notice_->Say(QString());
  });
}

}  // namespace orvandi
