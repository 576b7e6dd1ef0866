#include "file_source.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>

namespace kestrum::posdex {
namespace {

constexpr qint64 kLongestPauseMs = 10000;
// A sentence that is older than the one before it by no more than this is late and takes no time.
constexpr qint64 kLatestMs = 2000;
constexpr qint64 kDayMs = 24LL * 60 * 60 * 1000;
constexpr qint64 kPieceLength = 4096;
constexpr int kLinesATurn = 100;
constexpr int kLoopPauseMs = 1000;

}  // namespace

FileSource::FileSource(const SourceChoice& choice, const QString& folder)
    : choice_(choice), path_(QDir(folder).absoluteFilePath(choice.path)) {
  next_.setSingleShot(true);
  retry_.setSingleShot(true);
  next_.setTimerType(Qt::PreciseTimer);
  connect(&next_, &QTimer::timeout, this, &FileSource::Play);
  connect(&retry_, &QTimer::timeout, this, &FileSource::Open);
}

void FileSource::Start() {
  Open();
}

QString FileSource::Description() const {
  return (choice_.loop ? QStringLiteral("recording %1, repeated") : QStringLiteral("recording %1"))
      .arg(choice_.path);
}

void FileSource::Open() {
  file_.close();
  file_.setFileName(path_);
  QString reason;
  if (!QFileInfo::exists(path_)) {
    reason = QStringLiteral("no such file");
  } else if (!QFileInfo(path_).isFile()) {
    reason = QStringLiteral("not a file");
  } else if (!file_.open(QIODevice::ReadOnly)) {
    reason = file_.errorString();
  }
  if (!reason.isEmpty()) {
    retry_.start(backoff_.NextMs());
    SetState(SourceState::Link::kFailed, reason);
    return;
  }
  backoff_.Reset();
  splitter().Clear();
  waiting_.clear();
  decoder_.NewStream();
  last_time_.reset();
  due_ms_ = 0;
  clock_.start();
  SetState(SourceState::Link::kConnected);
  Q_EMIT Restarted();
  next_.start(0);
}

void FileSource::Play() {
  for (int lines = 0; lines < kLinesATurn; ++lines) {
    if (waiting_.isEmpty()) {
      waiting_ = file_.readLine(kPieceLength);
      if (waiting_.isEmpty()) {
        AtEnd();
        return;
      }
      due_ms_ += PauseBeforeMs(waiting_.trimmed());
    }
    const qint64 wait_ms = due_ms_ - clock_.elapsed();
    if (wait_ms > 0) {
      next_.start(static_cast<int>(wait_ms));
      return;
    }
    Feed(waiting_);
    waiting_.clear();
  }
  next_.start(0);
}

void FileSource::AtEnd() {
  Feed("\n");
  if (choice_.loop) {
    retry_.start(kLoopPauseMs);
  } else {
    SetState(SourceState::Link::kEnded);
  }
}

qint64 FileSource::PauseBeforeMs(QByteArrayView line) {
  const std::optional<Sentence> sentence = decoder_.Decode(line);
  if (!sentence) return 0;
  const QTime time = sentence->info.timestamp().time();
  if (!time.isValid()) return 0;
  const qint64 step_ms = last_time_ ? last_time_->msecsTo(time) : 0;
  if (step_ms < 0 && step_ms >= -kLatestMs) return 0;
  last_time_ = time;
  const bool past_midnight = step_ms < -kDayMs / 2;
  return std::clamp(past_midnight ? step_ms + kDayMs : step_ms, qint64{0}, kLongestPauseMs);
}

}  // namespace kestrum::posdex
