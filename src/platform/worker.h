#pragma once

#include <chrono>
#include <functional>

namespace kestrum {

// One thread beside the window thread for what may wait for a disk. A job touches nothing but what it holds
// itself and the FileStore.
class Worker {
 public:
  virtual ~Worker() = default;

  // Returns at once. The jobs run one after the other in this order; `done` runs on the window thread as a
  // window event after its job.
  virtual void Post(std::function<void()> job, std::function<void()> done) = 0;
  // Waits until every job and its `done` has run, for at most `longest`; false when something is left then.
  // No window event but `done` runs meanwhile.
  virtual bool Finish(std::chrono::milliseconds longest) = 0;
};

}  // namespace kestrum
