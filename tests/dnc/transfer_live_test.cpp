// The transfer engine over real pseudo-terminals, with the real thread and serial line.
//
// The far end is a pseudo-terminal of the test or the control simulator. Waits are for states
// with deadlines.

#include <gtest/gtest.h>
#include <sys/file.h>

#include <algorithm>
#include <atomic>
#include <ctime>
#include <fstream>
#include <random>
#include <thread>

#include "documents/autosave.h"
#include "documents/program_tabs.h"
#include "far_end.h"
#include "platform/clock.h"
#include "platform/posix/serial_pace.h"
#include "platform/thread.h"
#include "system_calls.h"
#include "unit/dnc/dnc_stage.h"

namespace {

// The engine pauses 10 ms between reads of 256 bytes, so that 2 MiB take 84 s. The two tests of
// the limit shorten the pause; everything else runs at its own pace.
std::atomic<int> pauseDivider{1};

}  // namespace

namespace platform {

std::uint64_t TickMilliseconds() {
  timespec now = {};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<std::uint64_t>(now.tv_sec) * 1000 +
         static_cast<std::uint64_t>(now.tv_nsec) / 1000000;
}

void SleepMilliseconds(int milliseconds) {
  std::this_thread::sleep_for(std::chrono::microseconds(milliseconds * 1000 / pauseDivider.load()));
}

}  // namespace platform

namespace {

using far_end::Clock;
using far_end::Milliseconds;
using far_end::Peer;
using far_end::Simulator;
using far_end::WaitUntil;
using morva::transfer;

// The longest time from an abort to its message. Where other programs keep the processors, one
// in twenty may be late; it still comes long before any wait of the line ends by itself.
constexpr int kLongestAbortMs = 150;
constexpr int kLateEndMs = 4500;

// A program of at least `bytes` bytes with every kind of line; no line is like another.
std::string BigProgram(std::size_t bytes) {
  std::string text = "%\r\nO0001 (LONG)\r\n";
  std::mt19937 random(5);
  for (int n = 10; text.size() < bytes; n += 10) {
    text += "N" + std::to_string(n) + " G1 X" + std::to_string(random() % 100000) + " Y-" +
            std::to_string(random() % 100000) + " F" + std::to_string(random() % 300) + "\r\n";
  }
  return text + "M30\r\n%\r\n";
}

struct LiveTransfer : public DncStage {
  LiveTransfer() {
    platform::pacePseudoTerminals = false;
    morva::ResetDocuments();
  }
  ~LiveTransfer() override {
    pauseDivider = 1;
    platform::pacePseudoTerminals = false;
    morva::ResetTransfer();
    morva::FreeTabs();
    morva::ResetDocuments();
    morva::ResetAutosave();
  }

  void UsePort(const std::string& path, const char* more = "") {
    PutIni("[DNC]\r\nPort=" + path + "\r\n" + more);
    ASSERT_TRUE(morva::LoadSerialProfile());
  }
  // At the rate of a real line, so that a send cannot end before the test has seen it run.
  void UseSlowPort(const std::string& path) {
    platform::pacePseudoTerminals = true;
    UsePort(path, "Baud=115200\r\n");
  }
  static void StartSend(std::string bytes) { morva::StartSend(std::move(bytes), u"Sending."); }
  static void StartReceive() {
    flushes = system_calls::workerFlushes;
    morva::dncState = morva::kDncOffline;
    morva::ReceiveProgram();
  }
  // Until the worker's open, which drops what came before it, is done.
  static void WaitArmed() {
    ASSERT_TRUE(WaitUntil([] { return system_calls::workerFlushes > flushes; }, 5000));
  }
  inline static int flushes = 0;
  // Handles messages until the state is reached.
  static bool Pump(const std::function<bool()>& reached, int milliseconds) {
    return WaitUntil(
        [&] {
          headless::DrainPosts();
          return reached();
        },
        milliseconds);
  }
  static bool PumpToTheEnd(int milliseconds) {
    return Pump([] { return !transfer.active; }, milliseconds);
  }
  // From the abort to the terminal message.
  static std::int64_t AbortAndWait() {
    const Clock::time_point start = Clock::now();
    morva::AbortTransfer();
    EXPECT_TRUE(PumpToTheEnd(10000));
    return Milliseconds(start);
  }
};

TEST_F(LiveTransfer, SendsTheEditorsProgramByteForByteToTheSimulator) {
  const std::string saved = (folder / "saved.nc").string();
  Simulator control({"--save", saved});
  UsePort(control.port);
  platform::SetEditorText(morva::kIdEditor, u"O1234 (PLATE — TOP)\r\nG0 X0\r\nM30");
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  morva::RouteCommand(morva::kIdSend, 0);
  ASSERT_TRUE(PumpToTheEnd(10000));
  EXPECT_EQ(morva::dncState, morva::kDncConnected);
  EXPECT_EQ(control.WaitFor("PROGRAM", 5000), "PROGRAM 39");
  EXPECT_EQ(control.WaitFor("SAVED", 5000), "SAVED " + saved);
  EXPECT_EQ(support::ReadRaw(saved), "%\r\nO1234 (PLATE ? TOP)\r\nG0 X0\r\nM30\r\n%\r\n");
}

TEST_F(LiveTransfer, ReceivesAProgramByteForByteFromTheSimulator) {
  const std::string program = BigProgram(20000);
  const std::string file = (folder / "out.nc").string();
  support::WriteRaw(file, program);
  Simulator control({"--send", file});
  UsePort(control.port);
  morva::RouteCommand(morva::kIdReceive, 0);
  EXPECT_TRUE(transfer.active);
  ASSERT_TRUE(PumpToTheEnd(30000));
  EXPECT_EQ(morva::dncState, morva::kDncConnected);
  ASSERT_EQ(morva::app.tabCount, 1);
  // The new tab's text is a block of foreign text; the program itself is in it as it came.
  EXPECT_NE(Text().find(support::Wide(program)), std::u16string::npos);
  EXPECT_EQ(control.WaitFor("SENT", 5000).substr(0, 5), "SENT ");
}

TEST_F(LiveTransfer, WritesThePortIntoTheSettingsFileForANewcomer) {
  PutIni("[Tool0]\r\nName=x\r\n[DNC]\r\nBaud=4800\r\nport=COM1\r\n[View]\r\nA=1\r\n");
  Simulator control({"--ini", (folder / "bin" / "MORVA.ini").string()});
  // The port is told first; the file is written by the time that commands are obeyed.
  control.Tell("status");
  EXPECT_NE(control.WaitFor("STATUS", 5000), "");
  EXPECT_EQ(Ini(), "[Tool0]\r\nName=x\r\n[DNC]\r\nBaud=4800\r\nPort=" + control.port +
                       "\r\n[View]\r\nA=1\r\n");
  EXPECT_TRUE(morva::AutoConnect());
}

TEST_F(LiveTransfer, SendsNothingOnceStoppedThoughAThousandBytesArrive) {
  Peer peer;
  UseSlowPort(peer.Path());
  const std::string program = BigProgram(20000);
  StartSend(program);
  ASSERT_TRUE(WaitUntil([&] { return peer.Count() > 0; }, 5000));
  peer.Send("\x13");
  ASSERT_TRUE(peer.WaitQuiet(100, 5000));
  const std::size_t before = peer.Count();
  ASSERT_LT(before, program.size());
  peer.Send(std::string(1000, 'n'));
  EXPECT_TRUE(peer.WaitQuiet(300, 5000));
  EXPECT_EQ(peer.Count(), before);
  EXPECT_TRUE(transfer.active);
  peer.Send("\x11");
  ASSERT_TRUE(PumpToTheEnd(20000));
  EXPECT_TRUE(WaitUntil([&] { return peer.Count() == program.size(); }, 5000));
  EXPECT_EQ(peer.Received(), program);
  EXPECT_EQ(morva::dncState, morva::kDncConnected);
}

TEST_F(LiveTransfer, EndsInErrorWhenTheFarEndHoldsLongerThanFiveSeconds) {
  Peer peer;
  UseSlowPort(peer.Path());
  StartSend(BigProgram(20000));
  ASSERT_TRUE(WaitUntil([&] { return peer.Count() > 0; }, 5000));
  const Clock::time_point start = Clock::now();
  peer.Send("\x13");
  ASSERT_TRUE(PumpToTheEnd(20000));
  EXPECT_GE(Milliseconds(start), 4900);
  EXPECT_LT(Milliseconds(start), 15000);
  EXPECT_EQ(morva::dncState, morva::kDncError);
  EXPECT_EQ(Status(), u"DNC transfer error — check COM port, cable, and matching settings.");
}

TEST_F(LiveTransfer, GoesOnWhenTheSimulatorEndsItsHold) {
  const std::string saved = (folder / "saved.nc").string();
  Simulator control({"--save", saved, "--hold-after", "5000", "--hold-ms", "700"});
  UsePort(control.port);
  const std::string program = BigProgram(4 << 20);
  StartSend(program);
  ASSERT_TRUE(PumpToTheEnd(20000));
  EXPECT_EQ(morva::dncState, morva::kDncConnected);
  EXPECT_NE(control.WaitFor("HOLD", 5000), "");
  const std::string release = control.WaitFor("RELEASE", 5000);
  EXPECT_GE(Simulator::Number(release, "held"), 700);
  EXPECT_LE(Simulator::Number(release, "late"), 64) << release;
  EXPECT_NE(control.WaitFor("SAVED", 5000), "");
  EXPECT_EQ(support::ReadRaw(saved), program);
}

// As a user does it by hand: a long program, and holds at several places of it.
TEST_F(LiveTransfer, CarriesALongProgramThroughHoldsOfUpToFourSeconds) {
  platform::pacePseudoTerminals = true;
  const std::string saved = (folder / "saved.nc").string();
  Simulator control({"--save", saved, "--baud", "460800"});
  UsePort(control.port, "Baud=460800\r\n");
  const std::string program = BigProgram(200000);
  StartSend(program);
  for (const int held : {1000, 2000, 4000}) {
    const std::size_t lines = statusLines.size();
    ASSERT_TRUE(Pump([&] { return statusLines.size() > lines + 100; }, 10000)) << held;
    control.Tell("hold " + std::to_string(held));
    std::string release;
    ASSERT_TRUE(
        Pump([&] { return !(release = control.WaitFor("RELEASE", 20)).empty(); }, held + 8000));
    EXPECT_GE(Simulator::Number(release, "held"), held);
    // Those that were on their way, by far not what a pseudo-terminal carries.
    EXPECT_LE(Simulator::Number(release, "after"), 9000) << release;
    EXPECT_TRUE(transfer.active) << held;
  }
  ASSERT_TRUE(PumpToTheEnd(20000));
  EXPECT_EQ(morva::dncState, morva::kDncConnected);
  EXPECT_NE(control.WaitFor("SAVED", 5000), "");
  EXPECT_EQ(support::ReadRaw(saved), program);
}

// What a pseudo-terminal carries when the control holds comes at once; the control that takes it
// goes on reading at XON all the same.
TEST_F(LiveTransfer, GoesOnBehindAHoldOfASlowControlThatManyBytesWereUnderWayTo) {
  const std::string saved = (folder / "saved.nc").string();
  Simulator control(
      {"--save", saved, "--baud", "19200", "--hold-after", "1500", "--hold-ms", "300"});
  UsePort(control.port);
  const std::string program = BigProgram(46000);
  StartSend(program);
  ASSERT_TRUE(PumpToTheEnd(60000));
  EXPECT_EQ(morva::dncState, morva::kDncConnected);
  EXPECT_GT(Simulator::Number(control.WaitFor("RELEASE", 5000), "after"), 9000);
  EXPECT_NE(control.WaitFor("SAVED", 60000), "");
  EXPECT_EQ(support::ReadRaw(saved), program);
}

TEST_F(LiveTransfer, EndsInErrorWhenTheCableGoesInMidSend) {
  Simulator control({"--baud", "115200"});
  UsePort(control.port);
  StartSend(BigProgram(4 << 20));
  ASSERT_TRUE(Pump([this] { return statusLines.size() > 20; }, 10000));
  control.Tell("vanish");
  ASSERT_TRUE(PumpToTheEnd(5000));
  EXPECT_EQ(morva::dncState, morva::kDncError);
  EXPECT_TRUE(transfer.sendBuffer.empty());
}

TEST_F(LiveTransfer, EndsInErrorWhenTheCableGoesInMidReceive) {
  Peer peer;
  UsePort(peer.Path());
  StartReceive();
  WaitArmed();
  peer.Send("%\r\nO1\r\n");
  ASSERT_TRUE(peer.WaitTaken(5000));
  peer.Vanish();
  ASSERT_TRUE(PumpToTheEnd(5000));
  EXPECT_EQ(morva::dncState, morva::kDncError);
  EXPECT_EQ(morva::app.tabCount, 0);
}

TEST_F(LiveTransfer, OpensAProgramThatHadComeWholeWhenTheCableGoes) {
  Peer peer;
  UsePort(peer.Path());
  StartReceive();
  WaitArmed();
  peer.Send("%\r\nO1\r\nM30\r\n%\r\n");
  ASSERT_TRUE(peer.WaitTaken(5000));
  ASSERT_TRUE(Pump([] { return Status() == u"DNC receiving: 15 bytes"; }, 5000));
  peer.Vanish();
  ASSERT_TRUE(PumpToTheEnd(1900));
  EXPECT_EQ(morva::dncState, morva::kDncError);
  ASSERT_EQ(morva::app.tabCount, 1);
  EXPECT_EQ(Text(), u"%\r\nO1\r\nM30\r\n%\r\n");
}

TEST_F(LiveTransfer, EndsAReceiveTwoSecondsBehindTheLastByte) {
  Peer peer;
  UsePort(peer.Path());
  StartReceive();
  WaitArmed();
  const Clock::time_point start = Clock::now();
  peer.Send("%\r\nO1\r\n%\r\n");
  ASSERT_TRUE(PumpToTheEnd(10000));
  EXPECT_GT(Milliseconds(start), 2000);
  EXPECT_LT(Milliseconds(start), 8000);
  EXPECT_EQ(morva::app.tabCount, 1);
}

// A control sends XON when it opens its port. A tape punch is switched on by DC2, off by DC4.
TEST_F(LiveTransfer, TakesTheProgramOfAControlThatSendsXonAndPunchCodesBeforeIt) {
  Peer peer;
  UsePort(peer.Path());
  StartReceive();
  WaitArmed();
  const Clock::time_point start = Clock::now();
  peer.Send("\x11");
  ASSERT_FALSE(Pump([] { return !transfer.active; }, 2500));
  peer.Send(std::string("\x12\0\0%\r\nO1\x7F\r\n%\r\n\x14\x13", 16));
  ASSERT_TRUE(PumpToTheEnd(10000));
  EXPECT_GT(Milliseconds(start), 4500);
  EXPECT_EQ(morva::dncState, morva::kDncConnected);
  ASSERT_EQ(morva::app.tabCount, 1);
  EXPECT_EQ(Text(), u"%\r\nO1\r\n%\r\n");
}

// Sends `count` bytes to a receive with the shortened pause.
void ReceiveMuch(std::size_t count) {
  Peer peer;
  pauseDivider = 50;
  morva::serialProfile = morva::SerialProfile{};
  platform::FromUtf8(peer.Path()).copy(morva::serialProfile.port, 31);
  morva::dncState = morva::kDncConnected;
  const int flushes = system_calls::workerFlushes;
  morva::ReceiveProgram();
  ASSERT_TRUE(transfer.active);
  // The worker's open drops what came before it.
  ASSERT_TRUE(WaitUntil([&] { return system_calls::workerFlushes > flushes; }, 5000));
  std::string bytes(count, 'G');
  for (std::size_t i = 0; i < count; ++i) bytes[i] = static_cast<char>('A' + i % 23);
  // The far end obeys XOFF, as a control does.
  std::size_t sent = 0;
  bool stopped = false;
  const Clock::time_point start = Clock::now();
  while (sent < bytes.size() && transfer.active && Milliseconds(start) < 60000) {
    const std::string back = peer.Received();
    stopped = !back.empty() && back.back() == '\x13';
    if (!stopped) {
      const std::size_t piece = std::min<std::size_t>(512, bytes.size() - sent);
      peer.Send(std::string_view(bytes).substr(sent, piece));
      sent += piece;
    } else {
      std::this_thread::sleep_for(std::chrono::microseconds(100));
    }
    headless::DrainPosts();
  }
  ASSERT_TRUE(WaitUntil(
      [] {
        headless::DrainPosts();
        return !transfer.active;
      },
      30000));
}

TEST_F(LiveTransfer, AcceptsOneByteLessThanTwoMebibytes) {
  ReceiveMuch(2097151);
  EXPECT_EQ(morva::dncState, morva::kDncConnected);
  ASSERT_EQ(morva::app.tabCount, 1);
  std::u16string wanted(2097151, u'G');
  for (std::size_t i = 0; i < wanted.size(); ++i) wanted[i] = static_cast<char16_t>(u'A' + i % 23);
  EXPECT_NE(Text().find(wanted), std::u16string::npos);
}

TEST_F(LiveTransfer, RefusesTwoMebibytes) {
  ReceiveMuch(2097152);
  EXPECT_EQ(morva::dncState, morva::kDncError);
  EXPECT_EQ(morva::app.tabCount, 0);
  EXPECT_TRUE(transfer.receivedData.empty());
}

TEST_F(LiveTransfer, CarriesSixteenMegabytesThroughStormsOfXoffAndNoise) {
  const std::string saved = (folder / "saved.nc").string();
  Simulator control({"--save", saved, "--storm", "7", "--noise", "100000000"});
  UsePort(control.port);
  const std::string program = BigProgram(16000000);
  const Clock::time_point start = Clock::now();
  StartSend(program);
  ASSERT_TRUE(PumpToTheEnd(60000));
  EXPECT_EQ(morva::dncState, morva::kDncConnected);
  EXPECT_NE(control.WaitFor("SAVED", 20000), "");
  EXPECT_LT(Milliseconds(start), 60000);
  EXPECT_TRUE(support::ReadRaw(saved) == program) << "the saved program differs";
  control.Tell("status");
  const std::string status = control.WaitFor("STATUS", 5000);
  EXPECT_GT(Simulator::Number(status, "holds"), 100) << status;
  EXPECT_EQ(Simulator::Number(status, "late"), 0) << status;
  EXPECT_LT(Simulator::Number(status, "noise"), 100000000) << status;
}

TEST_F(LiveTransfer, RefusesAPortThatAnotherProgramHolds) {
  Peer peer;
  UsePort(peer.Path());
  ASSERT_EQ(flock(peer.slave, LOCK_EX | LOCK_NB), 0);
  EXPECT_FALSE(morva::AutoConnect());
  EXPECT_EQ(morva::dncState, morva::kDncConnectionFailed);
  ASSERT_EQ(flock(peer.slave, LOCK_UN), 0);
  EXPECT_TRUE(morva::AutoConnect());
}

TEST_F(LiveTransfer, RefusesSettingsThatNameNoLine) {
  Peer peer;
  UsePort(peer.Path(), "Baud=-5\r\n");
  EXPECT_FALSE(morva::AutoConnect());
  UsePort(peer.Path(), "Baud=9600\r\nStopBits=1\r\n");
  EXPECT_FALSE(morva::AutoConnect());
  UsePort(peer.Path(), "Baud=9600\r\nStopBits=0\r\nFlow=7\r\n");
  EXPECT_TRUE(morva::AutoConnect());
}

TEST_F(LiveTransfer, RefusesAReceiveWhileTheWorkerHoldsThePort) {
  Peer peer;
  UseSlowPort(peer.Path());
  const std::string program = BigProgram(20000);
  StartSend(program);
  ASSERT_TRUE(WaitUntil([&] { return peer.Count() > 0; }, 5000));
  peer.Send("\x13");
  ASSERT_TRUE(peer.WaitQuiet(50, 5000));
  morva::ReceiveProgram();
  EXPECT_EQ(State(), u"DNC: TRANSFERRING");
  EXPECT_TRUE(transfer.active);
  peer.Send("\x11");
  ASSERT_TRUE(PumpToTheEnd(20000));
  EXPECT_EQ(State(), u"DNC: CONNECTED");
  EXPECT_TRUE(WaitUntil([&] { return peer.Received() == program; }, 5000));
}

TEST_F(LiveTransfer, EndsWithTheProgramAndLeavesThePortFree) {
  Peer peer;
  UsePort(peer.Path());
  StartReceive();
  ASSERT_TRUE(WaitUntil([&] { return peer.IsTaken(); }, 5000));
  const Clock::time_point start = Clock::now();
  morva::ResetTransfer();
  EXPECT_LE(Milliseconds(start), kLateEndMs);
  EXPECT_FALSE(platform::WorkerRuns(platform::Worker::Transfer));
  EXPECT_FALSE(peer.IsTaken());
}

TEST_F(LiveTransfer, EndsAReceiveInErrorWithoutMemoryForIt) {
  Peer peer;
  UsePort(peer.Path());
  system_calls::refusedBlock = morva::kMaxReceivedBytes;
  StartReceive();
  ASSERT_TRUE(PumpToTheEnd(10000));
  EXPECT_EQ(system_calls::refusedBlock, 0u);
  EXPECT_EQ(morva::dncState, morva::kDncError);
  EXPECT_FALSE(peer.IsTaken());
}

// The window closes while the control holds a send, with bytes of it on the line.
TEST_F(LiveTransfer, EndsWithTheProgramInAHeldSend) {
  Peer peer;
  UseSlowPort(peer.Path());
  StartSend(BigProgram(20000));
  ASSERT_TRUE(WaitUntil([&] { return peer.Count() > 0; }, 5000));
  peer.Send("\x13");
  ASSERT_TRUE(peer.WaitQuiet(50, 5000));
  ASSERT_TRUE(platform::WorkerRuns(platform::Worker::Transfer));
  const Clock::time_point start = Clock::now();
  morva::ResetTransfer();
  EXPECT_LE(Milliseconds(start), kLateEndMs);
  EXPECT_FALSE(platform::WorkerRuns(platform::Worker::Transfer));
  EXPECT_FALSE(peer.IsTaken());
  EXPECT_EQ(flock(peer.slave, LOCK_EX | LOCK_NB), 0);
}

TEST_F(LiveTransfer, SaysThatNoThreadOfASendCouldStart) {
  Peer peer;
  UsePort(peer.Path());
  {
    const system_calls::Watch watch;
    watch.plan.failOnly = "thread";
    watch.plan.failFrom = 1;
    watch.plan.failCalls = 1;
    watch.plan.error = EAGAIN;
    StartSend("%\r\n%\r\n");
  }
  EXPECT_FALSE(transfer.active);
  EXPECT_EQ(Log().back(), u"Could not start transfer thread.");
  EXPECT_EQ(morva::dncState, morva::kDncError);
  // The next one finds everything as it should be.
  StartSend("%\r\n%\r\n");
  ASSERT_TRUE(PumpToTheEnd(10000));
  EXPECT_EQ(morva::dncState, morva::kDncConnected);
}

// Whether no processor is idle, now or on the average of the last minute.
bool IsCrowded() {
  std::ifstream in("/proc/loadavg");
  double minute = 0;
  double ignored = 0;
  int running = 0;
  in >> minute >> ignored >> ignored >> running;
  const unsigned processors = std::thread::hardware_concurrency();
  return running >= static_cast<int>(processors) || minute >= 0.75 * processors;
}

// 300 aborts in every state, each on the line that the one before it left.

struct Abort : public LiveTransfer {
#ifdef __SANITIZE_THREAD__
  static constexpr std::size_t kTurns = 50;  // ten times slower; what races, races in these
#else
  static constexpr std::size_t kTurns = 300;
#endif
  Peer peer;
  std::size_t late = 0;
  std::vector<std::int64_t> times;

  void SetUp() override { UsePort(peer.Path()); }
  void TearDown() override {
    ASSERT_EQ(times.size(), kTurns);
    std::sort(times.begin(), times.end());
    EXPECT_LE(late, kTurns / 20);
    EXPECT_LE(times.back(), kLateEndMs);
    RecordProperty("median_ms", static_cast<int>(times[kTurns / 2]));
    RecordProperty("worst_ms", static_cast<int>(times.back()));
  }
  void AbortNow(std::int32_t wantedState) {
    times.push_back(AbortAndWait());
    if (times.back() > kLongestAbortMs) {
      ++late;
      EXPECT_TRUE(IsCrowded()) << "abort " << times.size() << ": " << times.back() << " ms";
    }
    EXPECT_EQ(morva::dncState, wantedState);
    peer.Forget();
  }
};

TEST_F(Abort, EndsASendThatIsOpeningItsPort) {
  // A small one may be away before the abort where other programs keep the processors.
  const std::string program = BigProgram(8 << 20);
  for (std::size_t i = 0; i < kTurns; ++i) {
    StartSend(program);
    AbortNow(morva::kDncOffline);
  }
}

TEST_F(Abort, EndsARunningSend) {
  const std::string program = BigProgram(8 << 20);
  for (std::size_t i = 0; i < kTurns; ++i) {
    StartSend(program);
    // Messages are left alone until the abort, or handling them might outlast the send.
    ASSERT_TRUE(WaitUntil([&] { return peer.Count() > 0; }, 5000));
    AbortNow(morva::kDncOffline);
  }
}

TEST_F(Abort, EndsASendHeldByXoff) {
  platform::pacePseudoTerminals = true;
  morva::serialProfile.baud = 115200;
  const std::string program = BigProgram(4 << 20);
  for (std::size_t i = 0; i < kTurns; ++i) {
    StartSend(program);
    ASSERT_TRUE(WaitUntil([&] { return peer.Count() > 0; }, 5000));
    peer.Send("\x13");
    // At this rate a piece goes out every 3 ms.
    ASSERT_TRUE(peer.WaitQuiet(30, 5000));
    AbortNow(morva::kDncOffline);
  }
}

// At 75 baud the ten bytes that the driver has taken are on the line for 1.5 s more.
TEST_F(Abort, EndsASendAtItsDrain) {
  platform::pacePseudoTerminals = true;
  morva::serialProfile.baud = 75;
  for (std::size_t i = 0; i < kTurns; ++i) {
    StartSend("%\r\nG0\r\n%\r\n");
    ASSERT_TRUE(WaitUntil([&] { return peer.Count() == 10; }, 5000));
    ASSERT_TRUE(transfer.active);
    headless::DrainPosts();
    ASSERT_TRUE(transfer.active);
    AbortNow(morva::kDncOffline);
  }
}

TEST_F(LiveTransfer, EndsASendOnlyWhenItsLastByteHasLeft) {
  platform::pacePseudoTerminals = true;
  Peer peer;
  UsePort(peer.Path(), "Baud=300\r\n");
  const Clock::time_point start = Clock::now();
  StartSend("%\r\nG0\r\n%\r\n");
  ASSERT_TRUE(PumpToTheEnd(5000));
  EXPECT_GE(Milliseconds(start), 365);  // 10 bytes of 11 bits
  EXPECT_EQ(morva::dncState, morva::kDncConnected);
}

TEST_F(Abort, EndsAReceiveInTheMidstOfItsData) {
  for (std::size_t i = 0; i < kTurns; ++i) {
    StartReceive();
    WaitArmed();
    peer.Send(std::string(3000, 'G'));
    AbortNow(morva::kDncError);
  }
}

TEST_F(Abort, EndsAReceiveThatWaitsForItsFirstByte) {
  for (std::size_t i = 0; i < kTurns; ++i) {
    StartReceive();
    WaitArmed();
    AbortNow(morva::kDncError);
  }
}

}  // namespace
