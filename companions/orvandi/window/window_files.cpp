#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QProgressBar>
#include <QSettings>
#include <QToolButton>

#include "export/row.h"
#include "map/map_view.h"
#include "window/elided_label.h"
#include "window/notice_bar.h"
#include "window/orvandi_window.h"
#include "window/picture_export.h"
#include "window/plot_deck.h"
#include "window/record_text.h"
#include "window/report.h"
#include "window/vector_pictures.h"

namespace orvandi {
namespace {

constexpr qsizetype kMostRecent = 10;
// What came since the last look is read at once; more than this in the background.
constexpr qint64 kReadAtOnceBytes = qint64{8} * 1024 * 1024;

// What an export needs, detached from the session: that one may change while the export runs.
struct ExportJob {
  std::vector<NamedLog> logs;
  std::vector<std::shared_ptr<LogFile>> keep;
  std::vector<std::vector<std::uint8_t>> hidden;
  std::vector<std::vector<std::uint8_t>> block_shown;  // layers that are switched off
  std::optional<Recalibration> recalibration;
  ExportOutcome outcome;
};

std::shared_ptr<ExportJob> MakeExportJob(const Session& session) {
  auto job = std::make_shared<ExportJob>();
  job->logs = session.NamedLogs();
  const Layers& layers = session.LayersOfBlocks();
  for (std::size_t i = 0; i < session.Logs().size(); ++i) {
    const OpenLog& log = session.Logs()[i];
    job->keep.push_back(log.file);
    job->hidden.push_back(log.hidden);
    std::vector<std::uint8_t> shown;
    for (const std::uint32_t layer : layers.of_block[i])
      shown.push_back(session.View().layers[layer].visible ? 1 : 0);
    job->block_shown.push_back(std::move(shown));
  }
  if (session.Calibration() != nullptr) job->recalibration = *session.Calibration();
  return job;
}

QString OutcomeText(const ExportOutcome& outcome, const QString& path) {
  if (outcome.cancelled) return QStringLiteral("Cancelled; %1 is as it was.").arg(path);
  if (!outcome.ok) return outcome.sentence;
  QStringList parts{CountText(outcome.written) + QStringLiteral(" records written to %1").arg(path)};
  if (outcome.marked > 0) parts << CountText(outcome.marked) + QStringLiteral(" marked ones left out");
  if (outcome.without_position > 0) {
    parts << CountText(outcome.without_position) + QStringLiteral(" without a position left out");
  }
  return parts.join(QStringLiteral(", ")) + QLatin1Char('.');
}

}  // namespace

bool OrvandiWindow::LogIsThere(const QString& path) {
  return QFileInfo::exists(path) || QFileInfo::exists(JournalOf(path));
}

void OrvandiWindow::OpenFiles(const QStringList& paths) {
  if (!jobs_.Busy()) complaints_.clear();
  for (const QString& path : paths) Load(QFileInfo(path).absoluteFilePath());
}

void OrvandiWindow::Load(const QString& path) {
  struct Reading {
    std::shared_ptr<LogFile> file;
    LogFile::Outcome outcome;
  };
  auto reading = std::make_shared<Reading>();
  reading->file = std::make_shared<LogFile>(QFile::encodeName(path).toStdString());
  jobs_.Run(
      QStringLiteral("Reading %1").arg(QFileInfo(path).fileName()),
      [reading](JobControl& control) {
        reading->outcome = reading->file->Open(
            [&control](std::uint64_t done, std::uint64_t total) { return control.Report(done, total); });
      },
      [this, reading, path] { Loaded(reading->file, path, reading->outcome); });
}

void OrvandiWindow::Loaded(const std::shared_ptr<LogFile>& file, const QString& path,
                           const LogFile::Outcome& outcome) {
  if (outcome.cancelled) {
    notice_->Say(QStringLiteral("Reading %1 was cancelled.").arg(QFileInfo(path).fileName()));
    return;
  }
  if (!outcome.sentence.empty()) {
    complaints_ << QFileInfo(path).fileName() + QStringLiteral(": ") +
                       QString::fromStdString(outcome.sentence);
  }
  notice_->Say(complaints_.join(QLatin1Char('\n')));
  if (!outcome.ok) return;
  sizes_[path] = QFileInfo(path).size();
  session_.AddLog(file, path);
  AddRecent(path);
}

void OrvandiWindow::FollowTick() {
  if (jobs_.Busy() || !actions_.value(QStringLiteral("follow"))->isChecked()) return;
  if (session_.Logs().empty()) {
    if (!options_.logger_log || options_.files.isEmpty() || !LogIsThere(options_.files.front())) return;
    options_.logger_log = false;
    OpenFiles(options_.files);
    return;
  }
  QStringList large;
  for (const OpenLog& log : session_.Logs()) {
    const QFileInfo info(log.path);
    const qint64 before = std::exchange(sizes_[log.path], info.size());
    const bool shrunk = info.exists() && before > info.size() && before > kReadAtOnceBytes;
    if (shrunk || info.size() - before > kReadAtOnceBytes) large << log.path;
  }
  if (large.isEmpty()) {
    session_.LookForNews();
  } else {
    OpenFiles(large);
  }
}

void OrvandiWindow::WatchFiles() {
  QStringList wanted;
  for (const OpenLog& log : session_.Logs()) {
    wanted << log.path << JournalOf(log.path);
  }
  for (const QString& path : watcher_.files()) {
    if (!wanted.contains(path)) watcher_.removePath(path);
  }
  for (const QString& path : wanted) {
    if (QFileInfo::exists(path) && !watcher_.files().contains(path)) watcher_.addPath(path);
  }
}

void OrvandiWindow::AddRecent(const QString& path) {
  QStringList recent = settings_->value(QStringLiteral("recent")).toStringList();
  recent.removeAll(path);
  recent.prepend(path);
  settings_->setValue(QStringLiteral("recent"), recent.mid(0, kMostRecent));
}

void OrvandiWindow::ShowJob() {
  const bool busy = jobs_.Busy();
  for (QWidget* widget : QList<QWidget*>{job_title_, job_bar_, job_cancel_}) widget->setVisible(busy);
  job_title_->setText(jobs_.Title());
  job_bar_->setValue(jobs_.Percent());
  if (busy && !job_timer_.isActive()) job_timer_.start();
  if (!busy) job_timer_.stop();
}

QString OrvandiWindow::DemoLog() const {
  const QDir folder(options_.folder);
  for (const QString& name :
       {QStringLiteral("demo.log"), QStringLiteral("demo/RSSI-GPS.log"),
        QStringLiteral("../demo/RSSI-GPS.log"), QStringLiteral("../../demo/RSSI-GPS.log")}) {
    if (!options_.folder.isEmpty() && QFileInfo(folder.filePath(name)).isFile()) {
      return QDir::cleanPath(folder.absoluteFilePath(name));
    }
  }
  return {};
}

QString OrvandiWindow::Proposed(const QString& ending) const {
  if (session_.Logs().empty()) return ending;
  const QFileInfo log(session_.Logs().front().path);
  return log.dir().filePath(log.completeBaseName() + ending);
}

void OrvandiWindow::AskForFiles() {
  const QString folder =
      session_.Logs().empty() ? options_.folder : QFileInfo(session_.Logs().front().path).path();
  OpenFiles(QFileDialog::getOpenFileNames(this, QStringLiteral("Open logs"), folder,
                                          QStringLiteral("Logs (*.log *.txt);;All files (*)")));
}

void OrvandiWindow::AskForExport(Format format, const QString& ending) {
  const QString path =
      QFileDialog::getSaveFileName(this, QStringLiteral("Export"), Proposed(QLatin1Char('.') + ending),
                                   QStringLiteral("*.%1").arg(ending));
  if (!path.isEmpty()) ExportRecords(format, path);
}

void OrvandiWindow::AskForPicture(QWidget* view, const QString& name) {
  const QString path = QFileDialog::getSaveFileName(
      this, QStringLiteral("Save picture"), Proposed(QStringLiteral("-%1.png").arg(name)),
      WritesSvg() ? QStringLiteral("Pictures (*.png *.svg *.pdf)")
                  : QStringLiteral("Pictures (*.png *.pdf)"));
  if (!path.isEmpty()) SavePicture(view, path);
}

void OrvandiWindow::AskForReport() {
  const QString path = QFileDialog::getSaveFileName(
      this, QStringLiteral("Save report"), Proposed(QStringLiteral("-report.pdf")), QStringLiteral("*.pdf"));
  if (!path.isEmpty()) SaveReportTo(path);
}

void OrvandiWindow::AskForCalibration() {
  const QString path = QFileDialog::getOpenFileName(
      this, QStringLiteral("Calibration file"), options_.folder,
      QStringLiteral("Calibration files (Calibration*.cfg *.cfg);;All files (*)"));
  if (!path.isEmpty()) Calibrate(path);
}

void OrvandiWindow::AskForTilesFile() {
  const QString path =
      QFileDialog::getOpenFileName(this, QStringLiteral("Map file"), background_.file,
                                   QStringLiteral("Raster MBTiles (*.mbtiles);;All files (*)"));
  if (path.isEmpty()) return;
  Background background = background_;
  background.kind = Background::Kind::kFile;
  background.file = path;
  ChooseBackground(background);
}

void OrvandiWindow::AskForOnlineMap() {
  OnlineMapDialog dialog(background_.online, this);
  if (dialog.exec() != QDialog::Accepted) return;
  Background background = background_;
  background.kind = Background::Kind::kOnline;
  background.online = dialog.Source();
  ChooseBackground(background);
}

void OrvandiWindow::ChooseBackground(const Background& background) {
  background_ = background;
  const QString complaint = ShowBackground(map_->Tiles(), background);
  if (!complaint.isEmpty()) background_.kind = Background::Kind::kGrid;
  notice_->Say(complaint);
}

void OrvandiWindow::ExportRecords(Format format, const QString& path) {
  const std::shared_ptr<ExportJob> job = MakeExportJob(session_);
  const std::uint8_t marks = session_.ShownMarks();
  jobs_.Run(
      QStringLiteral("Writing %1").arg(QFileInfo(path).fileName()),
      [job, format, path, marks](JobControl& control) {
        ExportOptions options;
        options.shown_marks = marks;
        options.recalibration = job->recalibration ? &*job->recalibration : nullptr;
        options.hidden = [&job](std::uint32_t log, std::uint32_t record) {
          const Record& one = job->logs[log].log->records[record];
          return job->hidden[log][record] != 0 || job->block_shown[log][one.block] == 0;
        };
        options.progress = [&control](std::size_t done, std::size_t total) {
          return control.Report(done, total);
        };
        job->outcome = ExportToFile(path, format, job->logs, options);
      },
      [this, job, path] { notice_->Say(OutcomeText(job->outcome, path)); });
}

void OrvandiWindow::SavePicture(QWidget* view, const QString& path) {
  QString complaint;
  if (view == map_) {
    complaint = SaveMapPicture(*map_, path);
  } else if (auto* plot = qobject_cast<Plot*>(view)) {
    complaint = SavePlotPicture(*plot, path);
  }
  notice_->Say(complaint.isEmpty() ? QStringLiteral("Saved %1.").arg(path) : complaint);
}

void OrvandiWindow::SaveReportTo(const QString& path) {
  const QString complaint = SaveReport(session_, *map_, *plots_, path);
  notice_->Say(complaint.isEmpty() ? QStringLiteral("Saved %1.").arg(path) : complaint);
}

void OrvandiWindow::Calibrate(const QString& path) {
  if (path.isEmpty()) {
    session_.SetRecalibration(std::nullopt);
    notice_->Say(QString());
    return;
  }
  QFile file(path);
  constexpr qint64 kMostBytes = qint64{1024} * 1024;
  if (!file.open(QIODevice::ReadOnly)) {
    notice_->Say(QStringLiteral("%1 cannot be read: %2").arg(path, file.errorString()));
    return;
  }
  Recalibration recalibration;
  const auto loaded = recalibration.Load(file.read(kMostBytes).toStdString());
  if (!loaded) {
    notice_->Say(QFileInfo(path).fileName() + QStringLiteral(": ") + ToQt(loaded.fault().reason));
    return;
  }
  const QString header = QString::fromStdString(recalibration.Header()).trimmed();
  session_.SetRecalibration(std::move(recalibration));
  const double shift = session_.RecalibrationShift();
  notice_->Say(
      QStringLiteral("Levels are those of %1 (%2): %3 dB from the log in the middle. The log is as it was.")
          .arg(QFileInfo(path).fileName(), header,
               (shift >= 0 ? QStringLiteral("+") : QString()) + QString::number(shift, 'f', 1)));
}

}  // namespace orvandi
