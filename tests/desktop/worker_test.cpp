#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTest>
#include <QTimer>
#include <future>
#include <vector>

#include "desktop/ports/qt_worker.h"
#include "support_process/qt_waits.h"

namespace kestrum {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

class WorkerTest : public ::testing::Test {
 protected:
  static void Enter(const QtWorker::Step& step) { step(); }

  std::vector<int> ran_;  // numbers of jobs, negative for their `done`
  QtWorker worker_{&Enter, nullptr};
};

TEST_F(WorkerTest, JobsRunInOrderBesideTheWindowThread) {
  const auto window_thread = std::this_thread::get_id();
  std::vector<std::thread::id> threads;
  for (int i = 1; i <= 50; ++i) {
    worker_.Post(
        [this, i, &threads] {
          ran_.push_back(i);
          threads.push_back(std::this_thread::get_id());
        },
        nullptr);
  }
  ASSERT_TRUE(worker_.Finish(seconds(20)));
  ASSERT_EQ(ran_.size(), 50U);
  for (int i = 1; i <= 50; ++i) EXPECT_EQ(ran_[static_cast<std::size_t>(i - 1)], i);
  for (const auto thread : threads) EXPECT_NE(thread, window_thread);
}

TEST_F(WorkerTest, DoneIsAWindowEventAndNeverRunsByItself) {
  std::promise<void> job_ran;
  std::thread::id done_on;
  worker_.Post([&] { job_ran.set_value(); }, [&] { done_on = std::this_thread::get_id(); });
  ASSERT_EQ(job_ran.get_future().wait_for(seconds(20)), std::future_status::ready);
  EXPECT_EQ(done_on, std::thread::id()) << "no event has run yet";
  EXPECT_TRUE(worker_.Busy());
  ASSERT_TRUE(process::WaitFor([&] { return done_on != std::thread::id(); }));
  EXPECT_EQ(done_on, std::this_thread::get_id());
  EXPECT_FALSE(worker_.Busy());
}

TEST_F(WorkerTest, PostReturnsWhileAJobWaitsForItsDisk) {
  std::promise<void> disk;
  const std::shared_future<void> answered(disk.get_future());
  worker_.Post([answered] { answered.wait(); }, [this] { ran_.push_back(-1); });
  worker_.Post(nullptr, [this] { ran_.push_back(-2); });
  QCoreApplication::processEvents();
  EXPECT_TRUE(ran_.empty());
  EXPECT_FALSE(worker_.Finish(milliseconds(20)));
  disk.set_value();
  EXPECT_TRUE(worker_.Finish(seconds(20)));
  EXPECT_EQ(ran_, (std::vector<int>{-1, -2}));
}

TEST_F(WorkerTest, FinishRunsEveryDoneOnceAndNoOtherEvent) {
  bool other = false;
  QTimer::singleShot(0, qApp, [&other] { other = true; });
  for (int i = 1; i <= 3; ++i) worker_.Post(nullptr, [this, i] { ran_.push_back(-i); });
  EXPECT_TRUE(worker_.Finish(seconds(20)));
  EXPECT_EQ(ran_, (std::vector<int>{-1, -2, -3}));
  EXPECT_FALSE(other);
  QCoreApplication::processEvents();
  EXPECT_EQ(ran_.size(), 3U);
  EXPECT_TRUE(other);
}

TEST_F(WorkerTest, FinishWaitsForWhatADonePosts) {
  worker_.Post(nullptr,
               [this] { worker_.Post([this] { ran_.push_back(2); }, [this] { ran_.push_back(-2); }); });
  EXPECT_TRUE(worker_.Finish(seconds(20)));
  EXPECT_EQ(ran_, (std::vector<int>{2, -2}));
}

TEST(Worker, AJobThatHangsKeepsNobodyAndWhatItUsesLivesOn) {
  std::promise<void> disk;
  const std::shared_future<void> answered(disk.get_future());
  std::promise<bool> ended;
  auto held = std::make_shared<int>(7);
  const std::weak_ptr<int> watched = held;
  bool second_ran = false;
  {
    QtWorker worker([](const QtWorker::Step& step) { step(); }, held);
    worker.Post(
        [answered, watched, &ended] {
          answered.wait();
          ended.set_value(!watched.expired());
        },
        [] { FAIL() << "nobody is there to hear it"; });
    worker.Post([&second_ran] { second_ran = true; }, nullptr);
    held.reset();
    EXPECT_FALSE(worker.Finish(milliseconds(20)));
    EXPECT_TRUE(worker.Busy());
  }
  disk.set_value();
  EXPECT_TRUE(ended.get_future().get()) << "the file store was gone under the job";
  EXPECT_TRUE(process::WaitFor([&] { return watched.expired(); }));
  QCoreApplication::processEvents();
  EXPECT_FALSE(second_ran);
}

TEST(Worker, EveryDoneEntersTheProgramByItsDoor) {
  int entered = 0;
  QtWorker worker(
      [&entered](const QtWorker::Step& step) {
        ++entered;
        step();
      },
      nullptr);
  worker.Post(nullptr, [] {});
  EXPECT_TRUE(process::WaitFor([&] { return entered == 1; }));
}

}  // namespace
}  // namespace kestrum
