// Timers, posts, the worker and the line in virtual time.

#include "machine_for_test.h"
#include "platform/clock.h"
#include "platform/limits.h"
#include "platform/post.h"
#include "platform/serial.h"
#include "platform/thread.h"
#include "platform/timer.h"
#include "platform/wait.h"

namespace {

using headless_test::HeadlessTest;
using headless_test::heard;
using Lines = std::vector<std::string>;

class Time : public HeadlessTest {};

TEST_F(Time, TimersFireInTheOrderOfTheirMoments) {
  platform::StartTimer(1, 12, 150);
  platform::StartTimer(1, 3, 100);
  headless::Advance(99);
  EXPECT_TRUE(heard.empty());
  headless::Advance(201);
  EXPECT_EQ(heard, (Lines{"timer 3", "timer 12", "timer 3", "timer 12", "timer 3"}));
  EXPECT_EQ(platform::TickMilliseconds(), 300u);
}

TEST_F(Time, ARestartedTimerCountsFromAnew) {
  platform::StartTimer(1, 1, 150);
  headless::Advance(100);
  platform::StartTimer(1, 1, 150);
  headless::Advance(149);
  EXPECT_TRUE(heard.empty());
  headless::Advance(1);
  EXPECT_EQ(heard, Lines{"timer 1"});
}

TEST_F(Time, AStoppedTimerIsSilent) {
  platform::StartTimer(1, 1, 10);
  platform::StartTimer(2, 1, 10);
  platform::StopTimer(1, 1);
  EXPECT_FALSE(platform::TimerRuns(1, 1));
  headless::Advance(10);
  EXPECT_EQ(heard, Lines{"timer 1"});
}

TEST_F(Time, PostsWaitForTheirTurnAndKeepTheirOrder) {
  platform::PostToMain(7, 1, 0);
  platform::PostToMain(8, 2, 0);
  EXPECT_TRUE(heard.empty());
  headless::DrainPosts();
  EXPECT_EQ(heard, (Lines{"post 7 1", "post 8 2"}));
  EXPECT_EQ(platform::TickMilliseconds(), 0u);
}

void PostAgain(std::uint32_t message, std::uint64_t first, std::uint64_t) {
  platform::PostToMain(message, first + 1, 0);
  heard.assign(1, std::to_string(first));
}

TEST_F(Time, ADrainEndsThoughAHandlerPostsForEver) {
  static_assert(platform::kMaxPostsAtOnce == 1000000);
  static platform::Events endless;
  endless.posted = PostAgain;
  platform::ListenTo(&endless);
  platform::PostToMain(7, 1, 0);
  headless::DrainPosts();
  EXPECT_EQ(heard, Lines{"1000000"});
}

void SleepTwice() {
  platform::PostToMain(1, platform::TickMilliseconds(), 0);
  platform::SleepMilliseconds(100);
  platform::PostToMain(2, platform::TickMilliseconds(), 0);
  platform::SleepMilliseconds(100);
  platform::PostToMain(3, platform::TickMilliseconds(), 0);
}

TEST_F(Time, TheWorkerRunsOnlyWhileTimeIsLetPass) {
  ASSERT_TRUE(platform::StartWorker(platform::Worker::Transfer, SleepTwice));
  EXPECT_FALSE(platform::StartWorker(platform::Worker::Transfer, SleepTwice));
  headless::DrainPosts();
  EXPECT_TRUE(heard.empty());
  platform::StartTimer(1, 5, 100);
  headless::Advance(150);
  // At 100 both are due: the timer is first.
  EXPECT_EQ(heard, (Lines{"post 1 0", "timer 5", "post 2 100"}));
  EXPECT_TRUE(platform::WorkerRuns(platform::Worker::Transfer));
  headless::Advance(50);
  EXPECT_FALSE(platform::WorkerRuns(platform::Worker::Transfer));
  EXPECT_EQ(heard.back(), "post 3 200");
}

int saverTurns = 0;
void WriteSlowly() {
  ++saverTurns;
  platform::SleepMilliseconds(300);
  ++saverTurns;
}

TEST_F(Time, TheSaverRunsAtOnceUntilItHasToWait) {
  saverTurns = 0;
  ASSERT_TRUE(platform::StartWorker(platform::Worker::Saver, WriteSlowly));
  EXPECT_EQ(saverTurns, 1);
  EXPECT_TRUE(platform::WorkerRuns(platform::Worker::Saver));
  EXPECT_FALSE(platform::StartWorker(platform::Worker::Saver, WriteSlowly));
  headless::Advance(299);
  EXPECT_EQ(saverTurns, 1);
  headless::Advance(1);
  EXPECT_EQ(saverTurns, 2);
  EXPECT_FALSE(platform::WorkerRuns(platform::Worker::Saver));
}

TEST_F(Time, SaverAndTransferTakeTheirTurnsBesideEachOther) {
  saverTurns = 0;
  ASSERT_TRUE(platform::StartWorker(platform::Worker::Transfer, SleepTwice));
  ASSERT_TRUE(platform::StartWorker(platform::Worker::Saver, WriteSlowly));
  headless::Advance(150);
  EXPECT_EQ(heard, (Lines{"post 1 0", "post 2 100"}));
  EXPECT_EQ(saverTurns, 1);
  headless::Advance(150);
  EXPECT_EQ(heard.back(), "post 3 200");
  EXPECT_EQ(saverTurns, 2);
}

TEST_F(Time, WaitUntilLetsTimersAndWorkersGoOn) {
  saverTurns = 0;
  platform::StartTimer(1, 3, 100);
  ASSERT_TRUE(platform::StartWorker(platform::Worker::Saver, WriteSlowly));
  EXPECT_TRUE(platform::WaitUntil([] { return saverTurns == 2; }, 1000));
  EXPECT_EQ(platform::TickMilliseconds(), 300u);
  EXPECT_EQ(heard.size(), 3u);
  EXPECT_FALSE(platform::WaitUntil([] { return false; }, 50));
  EXPECT_EQ(platform::TickMilliseconds(), 350u);
}

TEST_F(Time, EndWorkerWaitsForNoOtherKind) {
  saverTurns = 0;
  ASSERT_TRUE(platform::StartWorker(platform::Worker::Saver, WriteSlowly));
  ASSERT_TRUE(platform::StartWorker(platform::Worker::Transfer, SleepTwice));
  platform::EndWorker(platform::Worker::Transfer);
  EXPECT_EQ(platform::TickMilliseconds(), 200u);
  EXPECT_FALSE(platform::WorkerRuns(platform::Worker::Transfer));
  EXPECT_TRUE(platform::WorkerRuns(platform::Worker::Saver));
  platform::EndWorker(platform::Worker::Saver);
  EXPECT_EQ(saverTurns, 2);
}

TEST_F(Time, EndWorkersLetsTheWorkerComeToItsEnd) {
  ASSERT_TRUE(platform::StartWorker(platform::Worker::Transfer, SleepTwice));
  platform::EndWorkers();
  EXPECT_FALSE(platform::WorkerRuns(platform::Worker::Transfer));
  headless::DrainPosts();
  EXPECT_EQ(heard.back(), "post 3 200");
}

void SleepForEver() {
  while (platform::TickMilliseconds() < 3600000) platform::SleepMilliseconds(10);
}

TEST_F(Time, ResetEndsAWorkerThatWouldSleepForAnHour) {
  ASSERT_TRUE(platform::StartWorker(platform::Worker::Transfer, SleepForEver));
  headless::Advance(50);
  headless::Reset(home_.u16string());
  EXPECT_FALSE(platform::WorkerRuns(platform::Worker::Transfer));
  EXPECT_EQ(platform::TickMilliseconds(), 0u);
}

TEST_F(Time, AWorkerCanBeToldNotToStart) {
  headless::FailCall("worker", 1);
  EXPECT_FALSE(platform::StartWorker(platform::Worker::Transfer, SleepTwice));
  EXPECT_TRUE(platform::StartWorker(platform::Worker::Transfer, SleepTwice));
}

platform::SerialSettings Settings(std::u16string_view port) {
  platform::SerialSettings settings;
  port.copy(settings.port, 31);
  return settings;
}

class Cable : public HeadlessTest {
 protected:
  void SetUp() override {
    HeadlessTest::SetUp();
    headless::SetPort(u"COM3", headless::PortState::Present);
  }
  platform::SerialProblem Open(const platform::SerialSettings& settings) {
    platform::SerialProblem problem = platform::SerialProblem::None;
    const bool opened = platform::OpenSerial(settings, problem);
    EXPECT_EQ(opened, problem == platform::SerialProblem::None);
    return problem;
  }
};

TEST_F(Cable, PresentPortsAreListedInRisingOrder) {
  headless::SetPort(u"COM40", headless::PortState::Busy);
  headless::SetPort(u"COM1", headless::PortState::Present);
  headless::SetPort(u"COM2", headless::PortState::Absent);
  headless::SetPort(u"COM70", headless::PortState::Present);
  platform::SerialName names[2];
  EXPECT_EQ(platform::ListSerialPorts(names, 2), 3);
  EXPECT_EQ(std::u16string(names[0].name), u"COM1");
  EXPECT_EQ(std::u16string(names[1].name), u"COM3");
}

TEST_F(Cable, AnOpenFailsForItsOwnReason) {
  headless::SetPort(u"COM4", headless::PortState::Busy);
  EXPECT_EQ(Open(Settings(u"COM9")), platform::SerialProblem::Missing);
  EXPECT_EQ(Open(Settings(u"COM4")), platform::SerialProblem::Busy);
  platform::SerialSettings odd = Settings(u"COM3");
  odd.baud = -5;
  EXPECT_EQ(Open(odd), platform::SerialProblem::Refused);
  odd = Settings(u"COM3");
  odd.stopBits = 1;
  EXPECT_EQ(Open(odd), platform::SerialProblem::Refused);
  EXPECT_EQ(Open(Settings(u"com3")), platform::SerialProblem::None);
  EXPECT_EQ(Open(Settings(u"COM3")), platform::SerialProblem::Busy);
  platform::CloseSerial();
  EXPECT_EQ(Open(Settings(u"COM3")), platform::SerialProblem::None);
}

std::string taken;
std::vector<std::uint64_t> moments;

void ReadThreeTimes() {
  platform::SerialProblem problem;
  if (!platform::OpenSerial(Settings(u"COM3"), problem)) return;
  for (int i = 0; i < 3; ++i) {
    char bytes[8];
    std::size_t got = 0;
    if (!platform::ReadSerial(bytes, sizeof bytes, got)) break;
    taken.append(bytes, got).push_back('|');
    moments.push_back(platform::TickMilliseconds());
  }
  platform::CloseSerial();
}

TEST_F(Cable, AReadReturnsOnAFullBufferAfterAGapOrAfterTheWholeTime) {
  taken.clear();
  moments.clear();
  ASSERT_TRUE(platform::StartWorker(platform::Worker::Transfer, ReadThreeTimes));
  headless::PeerSend("12345678AB");
  headless::Advance(20);
  headless::Advance(500);
  // Eight bytes fill the buffer at once, two end by the gap of 50 ms, none takes 100 ms.
  EXPECT_EQ(taken, "12345678|AB||");
  EXPECT_EQ(moments, (std::vector<std::uint64_t>{0, 50, 150}));
}

TEST_F(Cable, BytesThatComeDuringTheWaitJoinTheRead) {
  taken.clear();
  moments.clear();
  ASSERT_TRUE(platform::StartWorker(platform::Worker::Transfer, ReadThreeTimes));
  headless::Advance(80);
  headless::PeerSend("A");
  headless::Advance(300);
  EXPECT_EQ(taken, "A|||");
  EXPECT_EQ(moments, (std::vector<std::uint64_t>{100, 200, 300}));
}

TEST_F(Cable, AnUnpluggedCableFailsTheReadThatWaits) {
  taken.clear();
  ASSERT_TRUE(platform::StartWorker(platform::Worker::Transfer, ReadThreeTimes));
  headless::Advance(30);
  headless::PeerUnplug();
  headless::Advance(0);
  EXPECT_FALSE(platform::WorkerRuns(platform::Worker::Transfer));
  EXPECT_EQ(taken, "");
}

TEST_F(Cable, WakingEndsTheWaitAtOnce) {
  taken.clear();
  moments.clear();
  ASSERT_TRUE(platform::StartWorker(platform::Worker::Transfer, ReadThreeTimes));
  headless::Advance(30);
  platform::WakeSerial();
  headless::Advance(0);
  EXPECT_EQ(taken, "|||");
  EXPECT_EQ(moments, (std::vector<std::uint64_t>{30, 30, 30}));
}

std::size_t written = 99;
bool wrote = false;
bool heldAtEnd = false;

void WriteOnce() {
  platform::SerialProblem problem;
  if (!platform::OpenSerial(Settings(u"COM3"), problem)) return;
  wrote = platform::WriteSerial("G0X1", 4, written);
  heldAtEnd = platform::SerialHeld();
  moments.push_back(platform::TickMilliseconds());
  platform::CloseSerial();
}

TEST_F(Cable, AStallWithinTheTimeOutOnlyDelays) {
  moments.clear();
  headless::PeerStall(4999);
  ASSERT_TRUE(platform::StartWorker(platform::Worker::Transfer, WriteOnce));
  headless::Advance(6000);
  EXPECT_TRUE(wrote);
  EXPECT_EQ(written, 4u);
  EXPECT_FALSE(heldAtEnd);
  EXPECT_EQ(moments, std::vector<std::uint64_t>{4999});
  EXPECT_EQ(headless::TakeSent(), "G0X1");
  EXPECT_EQ(headless::TakeSent(), "");
}

TEST_F(Cable, ALongerStallIsAWriteOfNothing) {
  moments.clear();
  headless::PeerStall(8000);
  ASSERT_TRUE(platform::StartWorker(platform::Worker::Transfer, WriteOnce));
  headless::Advance(6000);
  EXPECT_TRUE(wrote);
  EXPECT_EQ(written, 0u);
  EXPECT_TRUE(heldAtEnd);
  EXPECT_EQ(moments, std::vector<std::uint64_t>{5000});
  EXPECT_EQ(headless::TakeSent(), "");
}

TEST_F(Cable, XoffAmongTheBytesThatComeBackStopsTheLineUntilXon) {
  moments.clear();
  ASSERT_TRUE(platform::StartWorker(platform::Worker::Transfer, WriteOnce));
  headless::PeerSend("\x93?");  // XOFF with the eighth bit, and noise
  headless::Advance(1000);
  EXPECT_TRUE(moments.empty());
  headless::PeerSend("\x11");
  headless::Advance(0);
  EXPECT_EQ(moments, std::vector<std::uint64_t>{1000});
  EXPECT_EQ(platform::SerialBackChannelBytes(), 1u);
}

TEST_F(Cable, SevenDataBitsAreMasked) {
  ASSERT_EQ(Open(Settings(u"COM3")), platform::SerialProblem::None);
  headless::PeerSend("\xC1\x30");
  char bytes[4];
  std::size_t got = 0;
  ASSERT_TRUE(platform::ReadSerial(bytes, 4, got));
  EXPECT_EQ(std::string(bytes, got), "A0");
}

TEST_F(Cable, NoWriteSucceedsAfterResetIsUnderWay) {
  headless::PeerStall(100000);
  ASSERT_TRUE(platform::StartWorker(platform::Worker::Transfer, WriteOnce));
  headless::Advance(10);
  wrote = true;
  headless::Reset(home_.u16string());
  EXPECT_FALSE(wrote);
}

}  // namespace
