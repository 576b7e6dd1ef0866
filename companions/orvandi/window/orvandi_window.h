#pragma once

#include <QFileSystemWatcher>
#include <QHash>
#include <QMainWindow>
#include <QTimer>
#include <memory>

#include "export/exporter.h"
#include "start_options.h"
#include "window/background.h"
#include "window/job_runner.h"
#include "window/session.h"
#include "window/theme.h"

class QActionGroup;
class QLabel;
class QMenu;
class QProgressBar;
class QSettings;
class QSplitter;
class QStackedWidget;
class QTabWidget;
class QToolButton;

namespace orvandi {

class ComparePanel;
class DroppedPanel;
class ElidedLabel;
class MapView;
class NoticeBar;
class PlotDeck;
class StartPage;

// The window of the mapping program: map left, plots right, lists below them.
class OrvandiWindow final : public QMainWindow {
  Q_OBJECT

 public:
  explicit OrvandiWindow(const StartOptions& options, QWidget* parent = nullptr);
  ~OrvandiWindow() override;

  // Comes up as an icon that has the focus when it is opened.
  void ShowMinimisedWithFocus();

  void OpenFiles(const QStringList& paths);
  void ExportRecords(Format format, const QString& path);
  void SavePicture(QWidget* view, const QString& path);
  void SaveReportTo(const QString& path);
  void Calibrate(const QString& path);  // "": as logged
  void ChooseBackground(const Background& background);

  [[nodiscard]] Session& TheSession() { return session_; }
  [[nodiscard]] MapView& Map() { return *map_; }
  [[nodiscard]] PlotDeck& Plots() { return *plots_; }
  [[nodiscard]] JobRunner& Jobs() { return jobs_; }

 protected:
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  // Layout, in orvandi_window.cpp.
  QWidget* MakeRightSide();
  void MakeStatusBar();
  void Connect();
  void RestoreLayout();
  void SaveLayout();
  void Restyle();

  // Tool bar, in window_actions.cpp.
  struct ActionLook {
    const char* name;
    const char* text;
    const char* icon;
    const char* keys;  // "" for none
    const char* tip;
  };
  QAction* MakeAction(const ActionLook& look);
  void MakeToolBar();
  void AddFileActions();
  void AddViewActions();
  void AddOutputActions();
  void AddMenuButton(QAction* action, QMenu* menu);
  QMenu* MakeUnitMenu();
  QMenu* MakeColorMenu();
  QMenu* MakeBackgroundMenu();
  QMenu* MakeExportMenu();
  QMenu* MakeCalibrationMenu();
  QMenu* MakeThemeMenu();
  void FillRecentMenu();
  void SetTheme(Theme theme);

  // Files, in window_files.cpp.
  void AskForFiles();
  void AskForExport(Format format, const QString& ending);
  void AskForPicture(QWidget* view, const QString& name);
  void AskForReport();
  void AskForCalibration();
  void AskForTilesFile();
  void AskForOnlineMap();
  void Load(const QString& path);
  void Loaded(const std::shared_ptr<LogFile>& file, const QString& path, const LogFile::Outcome& outcome);
  void FollowTick();
  // The log, or the journal of its first block.
  [[nodiscard]] static bool LogIsThere(const QString& path);
  void WatchFiles();
  void AddRecent(const QString& path);
  void ShowJob();
  [[nodiscard]] QString DemoLog() const;
  [[nodiscard]] QString Proposed(const QString& ending) const;

  // What is seen, in window_view.cpp.
  void ShowView(Session::PlaceChange places);
  void ShowMap(Session::PlaceChange places);
  struct Patterns;
  [[nodiscard]] static Patterns PatternsOf(const Session& session);
  void ShowPlots(Patterns patterns);
  void ShowComparison();
  void ShowChosen();
  void TellChosen();
  void ShowHovered(qint64 record);
  void ShowCounts();
  void StepRecord(int by);

  StartOptions options_;
  std::unique_ptr<QSettings> settings_;
  Session session_;
  JobRunner jobs_;
  Background background_;
  QFileSystemWatcher watcher_;
  QTimer follow_timer_;
  QTimer job_timer_;
  QHash<QString, qint64> sizes_;  // of followed files at the last look
  QHash<QString, QAction*> actions_;
  QList<std::pair<QAction*, QString>> icons_;
  Theme theme_ = Theme::kDesktop;

  MapView* map_;
  PlotDeck* plots_;
  StartPage* start_page_;
  NoticeBar* notice_;
  QStringList complaints_;  // about the files that were opened together
  QStackedWidget* left_;
  QSplitter* split_;
  QSplitter* right_split_ = nullptr;
  QTabWidget* lists_ = nullptr;
  ComparePanel* compare_ = nullptr;
  DroppedPanel* dropped_ = nullptr;
  ElidedLabel* told_ = nullptr;
  QLabel* counts_ = nullptr;
  QLabel* job_title_ = nullptr;
  QProgressBar* job_bar_ = nullptr;
  QToolButton* job_cancel_ = nullptr;
  QToolBar* tools_ = nullptr;
  QMenu* recent_menu_ = nullptr;
};

}  // namespace orvandi
