// Timers and posted messages: what comes when, and in which order.

#include <thread>

#include "contract/contract.h"
#include "platform/clock.h"
#include "platform/post.h"
#include "platform/timer.h"
#include "platform/wait.h"

namespace contract {
namespace {

using platform::StartTimer;
using platform::StopTimer;
using platform::TimerRuns;

constexpr int kWindow = platform::kMainWindow;

class Time : public Contract {
 protected:
  void TearDown() override {
    for (int timer = 1; timer <= 5; ++timer) StopTimer(kWindow, timer);
    Contract::TearDown();
  }
  // Waits until as many ticks were told.
  static bool Ticks(std::size_t count) {
    return hands::Until([count] { return Told("timer").size() >= count; });
  }
  static Lines First(std::size_t count) {
    Lines lines = Told("timer");
    lines.resize(std::min(lines.size(), count));
    return lines;
  }
};

TEST_F(Time, RepeatsATimerUntilItIsStopped) {
  StartTimer(kWindow, 1, 5);
  EXPECT_TRUE(TimerRuns(kWindow, 1));
  ASSERT_TRUE(Ticks(3));
  StopTimer(kWindow, 1);
  EXPECT_FALSE(TimerRuns(kWindow, 1));
  Forget();
  hands::Pass(30);
  EXPECT_EQ(Told("timer"), Lines{});
}

TEST_F(Time, GoesOnWithTimersAndPostsWhileSomebodyWaits) {
  StartTimer(kWindow, 1, 5);
  EXPECT_TRUE(platform::WaitUntil([] { return Told("timer").size() >= 3; }, 5000));
  platform::PostToMain(7, 1, 0);
  EXPECT_TRUE(platform::WaitUntil([] { return WasTold("posted 7 1"); }, 5000));
}

TEST_F(Time, WaitsNoLongerThanItIsTold) {
  const std::uint64_t start = platform::TickMilliseconds();
  EXPECT_FALSE(platform::WaitUntil([] { return false; }, 30));
  EXPECT_GE(platform::TickMilliseconds() - start, 29u);
}

TEST_F(Time, FiresTheTimerThatIsDueFirst) {
  StartTimer(kWindow, 1, 60);
  StartTimer(kWindow, 2, 5);
  listening.timer = [](int window, int timer) { StopTimer(window, timer); };
  ASSERT_TRUE(Ticks(2));
  EXPECT_EQ(First(2), (Lines{"timer 20000 2", "timer 20000 1"}));
}

TEST_F(Time, FiresTimersOfOnePeriodInTheOrderOfTheirStart) {
  for (int timer = 1; timer <= 3; ++timer) StartTimer(kWindow, timer, 10);
  listening.timer = [](int window, int timer) { StopTimer(window, timer); };
  ASSERT_TRUE(Ticks(3));
  EXPECT_EQ(First(3), (Lines{"timer 20000 1", "timer 20000 2", "timer 20000 3"}));
}

TEST_F(Time, TellsATimerWithItsWindow) {
  StartTimer(50, 1, 5);
  StartTimer(60, 1, 5);
  listening.timer = [](int window, int timer) { StopTimer(window, timer); };
  ASSERT_TRUE(Ticks(2));
  EXPECT_EQ(First(2), (Lines{"timer 50 1", "timer 60 1"}));
}

TEST_F(Time, BeginsAnewWhenATimerIsStartedAgain) {
  StartTimer(kWindow, 1, 1);
  StartTimer(kWindow, 1, 60);
  StartTimer(kWindow, 2, 10);
  listening.timer = [](int window, int timer) { StopTimer(window, timer); };
  ASSERT_TRUE(Ticks(2));
  EXPECT_EQ(First(2), (Lines{"timer 20000 2", "timer 20000 1"}));
}

TEST_F(Time, FiresATimerOfZeroAndBelowAsOneOfOne) {
  StartTimer(kWindow, 1, 0);
  StartTimer(kWindow, 2, -5);
  EXPECT_TRUE(TimerRuns(kWindow, 1));
  EXPECT_TRUE(TimerRuns(kWindow, 2));
  EXPECT_TRUE(hands::Until([] { return WasTold("timer 20000 1") && WasTold("timer 20000 2"); }));
}

TEST_F(Time, FiresNoTimerThatAnotherOneStoppedInItsTurn) {
  StartTimer(kWindow, 1, 10);
  StartTimer(kWindow, 2, 10);
  listening.timer = [](int window, int timer) {
    StopTimer(window, timer);
    StopTimer(window, 2);
  };
  ASSERT_TRUE(Ticks(1));
  hands::Pass(30);
  EXPECT_EQ(Told("timer"), Lines{"timer 20000 1"});
}

TEST_F(Time, RunsATimerThatItsOwnTickStartsAgain) {
  listening.timer = [](int window, int timer) {
    if (Told("timer").size() < 3) StartTimer(window, timer, 5);
    if (Told("timer").size() >= 3) StopTimer(window, timer);
  };
  StartTimer(kWindow, 1, 5);
  ASSERT_TRUE(Ticks(3));
  EXPECT_FALSE(TimerRuns(kWindow, 1));
}

TEST_F(Time, IsStillRunningInsideItsTick) {
  bool ran = false;
  listening.timer = [&ran](int window, int timer) {
    ran = TimerRuns(window, timer);
    StopTimer(window, timer);
  };
  StartTimer(kWindow, 1, 5);
  ASSERT_TRUE(Ticks(1));
  EXPECT_TRUE(ran);
}

TEST_F(Time, DoesNotMakeUpForTicksThatWereMissed) {
  StartTimer(kWindow, 1, 20);
  platform::SleepMilliseconds(210);
  Forget();
  hands::Pass(1);
  EXPECT_LE(Told("timer").size(), 2u);
}

TEST_F(Time, HandsMessagesOverInTheOrderOfTheirPosting) {
  for (std::uint32_t message = 1; message <= 4; ++message) {
    platform::PostToMain(message, message * 10, 0);
  }
  EXPECT_EQ(Told("posted"), (Lines{"posted 1 10", "posted 2 20", "posted 3 30", "posted 4 40"}));
}

TEST_F(Time, HandsNoMessageOverBeforeThePosterHasReturned) {
  bool posting = false;
  bool during = false;
  listening.posted = [&](std::uint32_t message, std::uint64_t) {
    during = during || posting;
    if (message != 1) return;
    posting = true;
    platform::PostToMain(2, 0, 0);
    posting = false;
  };
  platform::PostToMain(1, 0, 0);
  EXPECT_TRUE(hands::Until([] { return Told("posted").size() == 2; }));
  EXPECT_FALSE(during);
}

TEST_F(Time, PutsAMessageOfAHandlerBehindThoseThatWait) {
  listening.posted = [](std::uint32_t message, std::uint64_t) {
    if (message == 1) platform::PostToMain(9, 0, 0);
  };
  platform::PostToMain(1, 0, 0);
  platform::PostToMain(2, 0, 0);
  EXPECT_TRUE(hands::Until([] { return Told("posted").size() == 3; }));
  EXPECT_EQ(Told("posted"), (Lines{"posted 1 0", "posted 2 0", "posted 9 0"}));
}

TEST_F(Time, TakesMessagesOfAnotherThreadInTheirOrder) {
  std::thread poster([] {
    for (std::uint64_t i = 0; i < 500; ++i) platform::PostToMain(3, i, 0);
  });
  poster.join();
  ASSERT_TRUE(hands::Until([] { return Told("posted").size() == 500; }));
  const Lines told = Told("posted");
  for (std::size_t i = 0; i < 500; ++i) EXPECT_EQ(told[i], "posted 3 " + std::to_string(i));
}

TEST_F(Time, TurnsNoClockBack) {
  const std::uint64_t before = platform::TickMilliseconds();
  hands::Pass(5);
  EXPECT_GE(platform::TickMilliseconds(), before + 5);
}

}  // namespace
}  // namespace contract
