#pragma once

#include <QObject>
#include <functional>
#include <memory>
#include <thread>

#include "platform/worker.h"

namespace kestrum {

class QtWorker : public QObject, public Worker {
  Q_OBJECT

 public:
  using Step = std::function<void()>;

  // `enter` runs what a window event has set off. `held` is what the jobs use: it lives on while one of them
  // hangs in a dead disk.
  QtWorker(std::function<void(const Step&)> enter, std::shared_ptr<const void> held);
  // Never waits for a job that has outlasted Finish: the thread is left to itself. Jobs that have not begun
  // are dropped.
  ~QtWorker() override;

  void Post(Step job, Step done) override;
  bool Finish(std::chrono::milliseconds longest) override;
  // Whether a job or its `done` is still to come.
  bool Busy() const;

 private:
  struct Shared;

  static void Serve(const std::shared_ptr<Shared>& shared);
  // The next `done` that is due; empty when there is none.
  Step TakeDone();
  void RunDone();

  std::function<void(const Step&)> enter_;
  std::shared_ptr<Shared> shared_;
  std::thread thread_;
};

}  // namespace kestrum
