// The worker thread and the clock of a real system.

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "far_end.h"
#include "platform/thread.h"
#include "system_calls.h"

namespace {

using far_end::WaitUntil;

std::atomic<int> begun{0};
std::atomic<int> ended{0};
std::atomic<bool> letGo{false};
std::atomic<bool> elsewhere{false};

void WaitForTheTest() {
  ++begun;
  WaitUntil([] { return letGo.load(); }, 20000);
  ++ended;
}

struct Worker : public ::testing::Test {
  Worker() { Begin(); }
  ~Worker() override {
    letGo = true;
    platform::EndWorkers();
  }
  static void Begin() {
    begun = ended = 0;
    letGo = elsewhere = false;
  }
};

TEST_F(Worker, RunsOnAThreadOfItsOwn) {
  static std::thread::id here;
  here = std::this_thread::get_id();
  ASSERT_TRUE(platform::StartWorker(platform::Worker::Transfer,
                                    [] { elsewhere = std::this_thread::get_id() != here; }));
  platform::EndWorkers();
  EXPECT_TRUE(elsewhere);
  EXPECT_FALSE(platform::WorkerRuns(platform::Worker::Transfer));
}

// The one before may still be on its way out when the next transfer starts.
TEST_F(Worker, StartsWhileTheOneBeforeIsStillOnItsWayOut) {
  ASSERT_TRUE(platform::StartWorker(platform::Worker::Transfer, WaitForTheTest));
  ASSERT_TRUE(platform::StartWorker(platform::Worker::Transfer, WaitForTheTest));
  EXPECT_TRUE(WaitUntil([] { return begun == 2; }, 20000));
  EXPECT_TRUE(platform::WorkerRuns(platform::Worker::Transfer));
  EXPECT_EQ(ended, 0);
  letGo = true;
  platform::EndWorkers();
  EXPECT_EQ(ended, 2);
  EXPECT_FALSE(platform::WorkerRuns(platform::Worker::Transfer));
}

// A disk that does not answer must not keep the window from closing behind an aborted transfer.
TEST_F(Worker, IsWaitedForWithoutTheOtherKind) {
  ASSERT_TRUE(platform::StartWorker(platform::Worker::Saver, WaitForTheTest));
  ASSERT_TRUE(platform::StartWorker(platform::Worker::Transfer, [] { elsewhere = true; }));
  platform::EndWorker(platform::Worker::Transfer);
  EXPECT_TRUE(elsewhere);
  EXPECT_TRUE(platform::WorkerRuns(platform::Worker::Saver));
  EXPECT_EQ(ended, 0);
  letGo = true;
  platform::EndWorker(platform::Worker::Saver);
  EXPECT_EQ(ended, 1);
}

TEST_F(Worker, TellsThatNoThreadCouldBeStarted) {
  {
    const system_calls::Watch watch;
    watch.plan.failOnly = "thread";
    watch.plan.failFrom = 1;
    watch.plan.failCalls = 1;
    watch.plan.error = EAGAIN;
    EXPECT_FALSE(platform::StartWorker(platform::Worker::Transfer, WaitForTheTest));
  }
  EXPECT_FALSE(platform::WorkerRuns(platform::Worker::Transfer));
  platform::EndWorkers();  // does not wait for one that never was
  EXPECT_EQ(begun, 0);
}

}  // namespace
