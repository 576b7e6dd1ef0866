#include "window/job_runner.h"

#include <QThread>
#include <algorithm>

#include "map/wide_registers.h"

namespace orvandi {

bool JobControl::Report(std::uint64_t done, std::uint64_t total) {
  constexpr std::uint64_t kPercent = 100;
  if (total > 0) percent_ = static_cast<int>(std::min(done, total) * kPercent / total);
  return !cancelled_;
}

JobRunner::JobRunner(QObject* parent) : QObject(parent) {}

JobRunner::~JobRunner() {
  Cancel();
  if (thread_ != nullptr) thread_->wait();
  delete thread_;
}

void JobRunner::Run(const QString& title, std::function<void(JobControl&)> work, std::function<void()> done) {
  auto job = std::make_unique<Job>();
  job->title = title;
  job->work = std::move(work);
  job->done = std::move(done);
  jobs_.push_back(std::move(job));
  if (thread_ == nullptr) StartNext();
}

void JobRunner::StartNext() {
  Job* job = jobs_.front().get();
  thread_ = QThread::create([job] {
    ForgetWideRegisters();  // a thread begins with those of the one that made it
    job->work(job->control);
  });
  connect(thread_, &QThread::finished, this, &JobRunner::End);
  thread_->start();
  Q_EMIT Started();
}

void JobRunner::End() {
  thread_->deleteLater();
  thread_ = nullptr;
  const std::unique_ptr<Job> job = std::move(jobs_.front());
  jobs_.pop_front();
  if (!jobs_.empty()) StartNext();
  if (job->done) job->done();
  if (thread_ == nullptr && jobs_.empty()) Q_EMIT Finished();
}

QString JobRunner::Title() const {
  return jobs_.empty() ? QString() : jobs_.front()->title;
}

int JobRunner::Percent() const {
  return jobs_.empty() ? 0 : jobs_.front()->control.percent_.load();
}

void JobRunner::Cancel() {
  while (jobs_.size() > 1) jobs_.pop_back();
  if (!jobs_.empty()) jobs_.front()->control.cancelled_ = true;
}

}  // namespace orvandi
