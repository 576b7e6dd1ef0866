#include "window/orvandi_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QMimeData>
#include <QProgressBar>
#include <QScreen>
#include <QSettings>
#include <QSplitter>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTabWidget>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>
#include <cmath>

#include "map/map_view.h"
#include "window/elided_label.h"
#include "window/notice_bar.h"
#include "window/plot_deck.h"
#include "window/side_panels.h"
#include "window/start_page.h"

namespace orvandi {
namespace {

constexpr int kFollowMs = 400;
constexpr int kJobShownMs = 300;  // a job that is quicker shows no progress
const QSize kUsualSize(1440, 900);

// Cards, tool bar and tabs; colours come from the palette.
QString StyleText(const QPalette& palette) {
  const QString line = palette.color(QPalette::Mid).name();
  const QString base = palette.color(QPalette::Base).name();
  QColor hover = palette.color(QPalette::Highlight);
  hover.setAlpha(36);
  QColor pressed = palette.color(QPalette::Highlight);
  pressed.setAlpha(64);
  return QStringLiteral(
             "QToolBar { border: none; border-bottom: 1px solid %1; spacing: 1px; padding: 2px 4px; }"
             "QToolBar QToolButton { border: 1px solid transparent; border-radius: 6px; padding: 3px 5px; }"
             "QToolBar QToolButton:hover { background: %3; }"
             "QToolBar QToolButton:pressed, QToolBar QToolButton:checked { background: %4; border-color: %4; "
             "}"
             "QToolBar QToolButton:focus { border-color: %5; }"
             "QToolBar QToolButton::menu-indicator { image: none; width: 0px; }"
             "QToolBar QToolButton[popupMode=\"1\"] { padding-right: 18px; }"
             "QToolBar QToolButton::menu-button { border: none; width: 16px; }"
             "QCheckBox::indicator, QListView::indicator { width: 14px; height: 14px; border: 1px solid %8;"
             " border-radius: 3px; background: %2; }"
             "QCheckBox::indicator:checked, QListView::indicator:checked { border-color: %9; background: %9;"
             " image: url(:/orvandi/icons/check.svg); }"
             "QCheckBox::indicator:focus { border-color: %5; }"
             "QCheckBox::indicator:disabled { border-color: %1; }"
             "QWidget#card, QStackedWidget#left { background: %2; border: 1px solid %1; border-radius: 6px; }"
             "QWidget#startPage { background: %2; }"
             "QWidget#startPage QPushButton { padding: 8px 18px; border: 1px solid %1; border-radius: 6px; }"
             "QWidget#startPage QPushButton:hover, QWidget#startPage QPushButton:focus { border-color: %5;"
             " background: %3; }"
             "QTabWidget::pane { background: %2; border: 1px solid %1; border-radius: 6px; top: -1px; }"
             "QTabBar::tab { padding: 5px 10px; border: none; border-bottom: 2px solid transparent; }"
             "QTabBar::tab:selected { border-bottom-color: %5; }"
             "QTabBar::tab:focus { background: %3; }"
             "QFrame#notice { background: %6; border-bottom: 1px solid %1; }"
             "QFrame#notice QLabel { color: %7; }"
             "QWidget#map QToolButton { background: %2; border: 1px solid %1; border-radius: 6px;"
             " font-size: 15px; }"
             "QWidget#map QToolButton:hover, QWidget#map QToolButton:focus { border-color: %5; }"
             "QStatusBar::item { border: none; }"
             "QSplitter::handle { background: transparent; }")
      .arg(line, base, hover.name(QColor::HexArgb), pressed.name(QColor::HexArgb),
           palette.color(QPalette::Highlight).name(),
           palette.color(QPalette::Window).lightness() < 128 ? QStringLiteral("#4A3B12")
                                                             : QStringLiteral("#FFF3CD"),
           palette.color(QPalette::WindowText).name(), palette.color(QPalette::PlaceholderText).name(),
           QStringLiteral("#1565C0"));
}

}  // namespace

OrvandiWindow::OrvandiWindow(const StartOptions& options, QWidget* parent)
    : QMainWindow(parent),
      options_(options),
      settings_(std::make_unique<QSettings>(QStringLiteral("Kestrum"), QStringLiteral("Orvandi"))),
      map_(new MapView),
      plots_(new PlotDeck),
      start_page_(new StartPage),
      notice_(new NoticeBar),
      left_(new QStackedWidget),
      split_(new QSplitter(Qt::Horizontal)) {
  setObjectName(QStringLiteral("Orvandi"));
  setWindowTitle(QStringLiteral("Orvandi"));
  setAcceptDrops(true);
  left_->setObjectName(QStringLiteral("left"));
  left_->addWidget(start_page_);
  left_->addWidget(map_);
  split_->setObjectName(QStringLiteral("split"));
  split_->setHandleWidth(6);
  split_->setChildrenCollapsible(false);
  split_->addWidget(left_);
  split_->addWidget(MakeRightSide());
  split_->setStretchFactor(0, 5);
  split_->setStretchFactor(1, 4);

  auto* middle = new QWidget;
  auto* layout = new QVBoxLayout(middle);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(notice_);
  auto* margins = new QHBoxLayout;
  margins->setContentsMargins(6, 6, 6, 0);
  margins->addWidget(split_);
  layout->addLayout(margins, 1);
  setCentralWidget(middle);

  MakeStatusBar();
  MakeToolBar();
  Connect();
  RestoreLayout();
  start_page_->SetDemoLog(DemoLog());
  start_page_->SetWaitingFor(options_.logger_log && !options_.files.isEmpty() ? options_.files.front()
                                                                              : QString());
  ShowView(Session::PlaceChange::kNew);
  // A log that is waited for is looked for by following.
  QStringList present;
  for (const QString& path : options_.files) {
    if (!options_.logger_log || LogIsThere(path)) present << path;
  }
  OpenFiles(present);
}

OrvandiWindow::~OrvandiWindow() = default;

QWidget* OrvandiWindow::MakeRightSide() {
  lists_ = new QTabWidget;
  lists_->setObjectName(QStringLiteral("lists"));
  lists_->setDocumentMode(false);
  compare_ = new ComparePanel(session_);
  dropped_ = new DroppedPanel(session_);
  lists_->addTab(new LayerPanel(session_), QStringLiteral("Layers"));
  lists_->addTab(new CleaningPanel(session_), QStringLiteral("Cleaning"));
  lists_->addTab(compare_, QStringLiteral("Compare"));
  lists_->addTab(dropped_, QStringLiteral("Dropped lines"));
  lists_->setMinimumHeight(150);
  right_split_ = new QSplitter(Qt::Vertical);
  right_split_->setObjectName(QStringLiteral("rightSplit"));
  right_split_->setHandleWidth(6);
  right_split_->setChildrenCollapsible(false);
  right_split_->addWidget(plots_);
  right_split_->addWidget(lists_);
  right_split_->setStretchFactor(0, 3);
  right_split_->setStretchFactor(1, 1);
  return right_split_;
}

void OrvandiWindow::MakeStatusBar() {
  told_ = new ElidedLabel;
  told_->setObjectName(QStringLiteral("told"));
  told_->setContentsMargins(8, 0, 0, 0);
  counts_ = new QLabel;
  counts_->setObjectName(QStringLiteral("counts"));
  counts_->setContentsMargins(0, 0, 8, 0);
  job_title_ = new QLabel;
  job_title_->setObjectName(QStringLiteral("jobTitle"));
  job_bar_ = new QProgressBar;
  job_bar_->setObjectName(QStringLiteral("jobBar"));
  job_bar_->setAccessibleName(QStringLiteral("Progress"));
  job_bar_->setRange(0, 100);
  job_bar_->setFixedWidth(160);
  job_cancel_ = new QToolButton;
  job_cancel_->setObjectName(QStringLiteral("jobCancel"));
  job_cancel_->setText(QStringLiteral("Cancel"));
  job_cancel_->setToolTip(QStringLiteral("Stop what is going on (Esc)"));
  job_cancel_->setShortcut(QKeySequence(Qt::Key_Escape));
  statusBar()->addWidget(told_, 1);
  statusBar()->addPermanentWidget(job_title_);
  statusBar()->addPermanentWidget(job_bar_);
  statusBar()->addPermanentWidget(job_cancel_);
  statusBar()->addPermanentWidget(counts_);
  for (QWidget* widget : QList<QWidget*>{job_title_, job_bar_, job_cancel_}) widget->hide();
  job_timer_.setInterval(100);
}

void OrvandiWindow::Connect() {
  connect(&session_, &Session::ViewChanged, this, &OrvandiWindow::ShowView);
  connect(&session_, &Session::ChosenChanged, this, &OrvandiWindow::ShowChosen);
  connect(&session_, &Session::HoverChanged, this, &OrvandiWindow::ShowHovered);
  connect(&session_, &Session::LogsChanged, this, &OrvandiWindow::WatchFiles);
  connect(&session_, &Session::News, notice_, &NoticeBar::Say);
  connect(map_, &MapView::Hovered, &session_, &Session::Hover);
  connect(map_, &MapView::Chosen, &session_, &Session::Choose);
  connect(map_, &MapView::HoveredPlace, this, [this](double latitude, double longitude) {
    told_->SetFullText(QStringLiteral("%1%2 %3%4")
                           .arg(std::abs(latitude), 0, 'f', 5)
                           .arg(latitude < 0 ? QLatin1Char('S') : QLatin1Char('N'))
                           .arg(std::abs(longitude), 0, 'f', 5)
                           .arg(longitude < 0 ? QLatin1Char('W') : QLatin1Char('E')));
  });
  connect(&map_->Tiles(), &TileLayer::Complaint, this, [this](const QString& text) {
    if (!text.isEmpty() || notice_->Text().startsWith(QStringLiteral("The map server"))) notice_->Say(text);
  });
  for (Plot* plot : plots_->All()) {
    connect(plot, &Plot::Hovered, &session_, &Session::Hover);
    connect(plot, &Plot::Chosen, &session_, &Session::Choose);
  }
  connect(plots_->Sectors(), &QComboBox::activated, this,
          [this] { session_.SetSectorDeg(plots_->Sectors()->currentData().toDouble()); });
  connect(start_page_, &StartPage::OpenWanted, this, &OrvandiWindow::AskForFiles);
  connect(start_page_, &StartPage::DemoWanted, this, [this] { OpenFiles({DemoLog()}); });
  connect(dropped_, &DroppedPanel::CountChanged, this, [this] {
    const auto count = dropped_->Count();
    lists_->setTabText(lists_->indexOf(dropped_), count == 0
                                                      ? QStringLiteral("Dropped lines")
                                                      : QStringLiteral("Dropped lines (%1)").arg(count));
  });
  connect(&jobs_, &JobRunner::Started, this,
          [this] { QTimer::singleShot(kJobShownMs, this, [this] { ShowJob(); }); });
  connect(&jobs_, &JobRunner::Finished, this, &OrvandiWindow::ShowJob);
  connect(&job_timer_, &QTimer::timeout, this, &OrvandiWindow::ShowJob);
  connect(job_cancel_, &QToolButton::clicked, &jobs_, &JobRunner::Cancel);
  connect(&watcher_, &QFileSystemWatcher::fileChanged, this, &OrvandiWindow::FollowTick);
  connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, &OrvandiWindow::FollowTick);
  connect(&follow_timer_, &QTimer::timeout, this, &OrvandiWindow::FollowTick);
  follow_timer_.start(kFollowMs);
}

void OrvandiWindow::RestoreLayout() {
  SetTheme(static_cast<Theme>(settings_->value(QStringLiteral("theme"), 0).toInt()));
  if (!restoreGeometry(settings_->value(QStringLiteral("geometry")).toByteArray())) {
    const QSize room = screen()->availableSize();
    resize(kUsualSize.boundedTo(room));
    if (room.width() <= kUsualSize.width()) setWindowState(Qt::WindowMaximized);
    if (room.width() >= 2 * kUsualSize.width()) resize(room * 0.8);
  }
  if (!split_->restoreState(settings_->value(QStringLiteral("split")).toByteArray())) {
    split_->setSizes({width() * 52 / 100, width() * 48 / 100});
  }
  if (!right_split_->restoreState(settings_->value(QStringLiteral("rightSplit")).toByteArray())) {
    right_split_->setSizes({height() * 76 / 100, height() * 24 / 100});
  }
  plots_->SetOrder(settings_->value(QStringLiteral("plots")).toString());
  lists_->setCurrentIndex(settings_->value(QStringLiteral("list"), 0).toInt());
  const int unit =
      qBound(0, settings_->value(QStringLiteral("unit"), 0).toInt(), static_cast<int>(kUnits.size()) - 1);
  session_.SetUnit(kUnits.at(static_cast<std::size_t>(unit)));
  const int sectors = plots_->Sectors()->findData(settings_->value(QStringLiteral("sectors"), 10).toInt());
  if (sectors >= 0) plots_->Sectors()->setCurrentIndex(sectors);
  session_.SetSectorDeg(plots_->Sectors()->currentData().toDouble());
  background_ = LoadBackground(*settings_);
  notice_->Say(ShowBackground(map_->Tiles(), background_));
}

void OrvandiWindow::SaveLayout() {
  settings_->setValue(QStringLiteral("geometry"), saveGeometry());
  settings_->setValue(QStringLiteral("split"), split_->saveState());
  settings_->setValue(QStringLiteral("rightSplit"), right_split_->saveState());
  settings_->setValue(QStringLiteral("plots"), plots_->Order());
  settings_->setValue(QStringLiteral("list"), lists_->currentIndex());
  settings_->setValue(QStringLiteral("unit"), static_cast<int>(session_.View().unit));
  settings_->setValue(QStringLiteral("sectors"), static_cast<int>(session_.SectorDeg()));
  settings_->setValue(QStringLiteral("theme"), static_cast<int>(theme_));
  SaveBackground(*settings_, background_);
}

void OrvandiWindow::Restyle() {
  setStyleSheet(StyleText(palette()));
  for (const auto& [action, icon] : icons_) action->setIcon(IconFor(icon, palette()));
  plots_->SetIcons(palette());
  start_page_->SetIcons(palette());
}

void OrvandiWindow::ShowMinimisedWithFocus() {
  showMinimized();
  activateWindow();
  map_->setFocus();
}

void OrvandiWindow::closeEvent(QCloseEvent* event) {
  SaveLayout();
  jobs_.Cancel();
  QMainWindow::closeEvent(event);
}

void OrvandiWindow::dragEnterEvent(QDragEnterEvent* event) {
  if (event->mimeData()->hasUrls()) event->acceptProposedAction();
}

void OrvandiWindow::dropEvent(QDropEvent* event) {
  QStringList paths;
  for (const QUrl& url : event->mimeData()->urls()) {
    if (url.isLocalFile()) paths << url.toLocalFile();
  }
  OpenFiles(paths);
  event->acceptProposedAction();
}

}  // namespace orvandi
