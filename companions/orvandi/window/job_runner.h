#pragma once

#include <QObject>
#include <QString>
#include <atomic>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>

class QThread;

namespace orvandi {

// What a job in the background tells and is told. Safe from the job's thread.
class JobControl {
 public:
  // False: the user has cancelled; the job ends as soon as it can.
  bool Report(std::uint64_t done, std::uint64_t total);

 private:
  friend class JobRunner;
  std::atomic<bool> cancelled_ = false;
  std::atomic<int> percent_ = 0;
};

// Runs jobs one after the other in a thread, so that the windows stay alive.
class JobRunner final : public QObject {
  Q_OBJECT

 public:
  explicit JobRunner(QObject* parent = nullptr);
  ~JobRunner() override;  // cancels and waits

  // `work` runs in a thread; `done` then in this object's thread, not after its end.
  void Run(const QString& title, std::function<void(JobControl&)> work, std::function<void()> done);
  [[nodiscard]] bool Busy() const { return thread_ != nullptr; }
  [[nodiscard]] QString Title() const;
  [[nodiscard]] int Percent() const;

 public Q_SLOTS:
  void Cancel();  // of the running job and those that wait

 Q_SIGNALS:
  void Started();
  void Finished();  // no job runs or waits any more

 private:
  struct Job {
    QString title;
    std::function<void(JobControl&)> work;
    std::function<void()> done;
    JobControl control;
  };
  void StartNext();
  void End();

  std::deque<std::unique_ptr<Job>> jobs_;  // the first one runs
  QThread* thread_ = nullptr;
};

}  // namespace orvandi
