#include "desktop/ports/qt_worker.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <utility>

namespace kestrum {

// What both threads know. The last of them to go takes it away.
struct QtWorker::Shared {
  struct Task {
    Step job;
    Step done;
  };

  std::shared_ptr<const void> held;
  std::mutex mutex;
  std::condition_variable work;      // a job has come, or the end
  std::condition_variable finished;  // a job is through
  QtWorker* owner = nullptr;         // none once it has gone
  std::deque<Task> waiting;
  std::deque<Step> done;
  bool at_work = false;

  bool Idle() const { return waiting.empty() && !at_work; }
};

QtWorker::QtWorker(std::function<void(const Step&)> enter, std::shared_ptr<const void> held)
    : enter_(std::move(enter)), shared_(std::make_shared<Shared>()) {
  shared_->held = std::move(held);
  shared_->owner = this;
  thread_ = std::thread([shared = shared_] { Serve(shared); });
}

QtWorker::~QtWorker() {
  bool hangs = false;
  {
    const std::lock_guard lock(shared_->mutex);
    shared_->owner = nullptr;
    shared_->waiting.clear();
    hangs = shared_->at_work;
  }
  shared_->work.notify_all();
  if (hangs) {
    thread_.detach();
  } else {
    thread_.join();
  }
}

void QtWorker::Post(Step job, Step done) {
  {
    const std::lock_guard lock(shared_->mutex);
    shared_->waiting.push_back({std::move(job), std::move(done)});
  }
  shared_->work.notify_one();
}

bool QtWorker::Busy() const {
  const std::lock_guard lock(shared_->mutex);
  return !shared_->Idle() || !shared_->done.empty();
}

bool QtWorker::Finish(std::chrono::milliseconds longest) {
  const auto deadline = std::chrono::steady_clock::now() + longest;
  for (;;) {
    while (const Step done = TakeDone()) done();
    std::unique_lock lock(shared_->mutex);
    const auto news = [this] { return !shared_->done.empty() || shared_->Idle(); };
    if (!shared_->finished.wait_until(lock, deadline, news)) return false;
    if (shared_->done.empty()) return true;
  }
}

QtWorker::Step QtWorker::TakeDone() {
  const std::lock_guard lock(shared_->mutex);
  if (shared_->done.empty()) return {};
  Step next = std::move(shared_->done.front());
  shared_->done.pop_front();
  return next;
}

void QtWorker::RunDone() {
  if (const Step done = TakeDone()) enter_(done);
}

void QtWorker::Serve(const std::shared_ptr<Shared>& shared) {
  std::unique_lock lock(shared->mutex);
  for (;;) {
    shared->work.wait(lock, [&] { return shared->owner == nullptr || !shared->waiting.empty(); });
    if (shared->owner == nullptr) return;
    Shared::Task task = std::move(shared->waiting.front());
    shared->waiting.pop_front();
    shared->at_work = true;
    lock.unlock();
    if (task.job) task.job();
    task.job = nullptr;  // what it holds goes before anybody hears that it is through
    lock.lock();
    shared->at_work = false;
    if (task.done && shared->owner != nullptr) {
      shared->done.push_back(std::move(task.done));
      // One event for each: a `done` that Finish has taken leaves an event without work.
      QMetaObject::invokeMethod(shared->owner, &QtWorker::RunDone, Qt::QueuedConnection);
    }
    shared->finished.notify_all();
  }
}

}  // namespace kestrum
