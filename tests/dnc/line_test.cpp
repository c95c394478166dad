// The seam's serial line on real pseudo-terminals with the real clock.
//
// A loaded machine may come late, so that times have wide upper bounds here; they are tried to
// the millisecond where the clock is the test's. A pseudo-terminal has no line rate, keeps neither
// data bits nor parity and makes no line errors; those are tried by themselves.

#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/ioctl.h>

#include <algorithm>
#include <atomic>
#include <thread>
#include <vector>

#include "far_end.h"
#include "platform/clock.h"
#include "platform/limits.h"
#include "platform/posix/serial_pace.h"
#include "platform/posix/serial_settings.h"
#include "platform/serial.h"

namespace {

using far_end::Clock;
using far_end::Milliseconds;
using far_end::Peer;
using far_end::WaitUntil;
using platform::SerialProblem;

struct Line : public ::testing::Test {
  Peer peer;
  SerialProblem problem = SerialProblem::None;
  platform::SerialSettings settings = peer.Settings();

  Line() { platform::pacePseudoTerminals = false; }
  bool Open() { return platform::OpenSerial(settings, problem); }
  ~Line() override {
    platform::CloseSerial();
    platform::pacePseudoTerminals = false;
  }

  // Reads until `count` bytes are here or two seconds are over.
  static std::string Read(std::size_t count) {
    std::string all;
    const Clock::time_point start = Clock::now();
    while (all.size() < count && Milliseconds(start) < 2000) {
      char bytes[256];
      std::size_t got = 0;
      if (!platform::ReadSerial(bytes, std::min(sizeof(bytes), count - all.size()), got)) break;
      all.append(bytes, got);
    }
    return all;
  }
};

TEST_F(Line, SetsEveryFieldOfTheTerminal) {
  ASSERT_TRUE(Open());
  termios taken = {};
  ASSERT_EQ(tcgetattr(peer.slave, &taken), 0);
  EXPECT_EQ(taken.c_iflag, static_cast<tcflag_t>(INPCK | PARMRK));
  EXPECT_EQ(taken.c_oflag & OPOST, 0u);
  EXPECT_EQ(taken.c_lflag & (ICANON | ECHO | ISIG | IEXTEN), 0u);
  EXPECT_EQ(taken.c_cflag & (CSTOPB | CREAD | CLOCAL | HUPCL | CRTSCTS),
            static_cast<tcflag_t>(CSTOPB | CREAD | CLOCAL));
  EXPECT_EQ(taken.c_cc[VMIN], 1);
  EXPECT_EQ(taken.c_cc[VTIME], 0);
  EXPECT_EQ(taken.c_cc[VSTART], 0x11);
  EXPECT_EQ(taken.c_cc[VSTOP], 0x13);
  EXPECT_EQ(cfgetospeed(&taken), static_cast<speed_t>(B9600));
  EXPECT_EQ(cfgetispeed(&taken), static_cast<speed_t>(B9600));
}

TEST_F(Line, LeavesHandshakeByWiresToTheDriver) {
  settings.flow = 2;
  settings.stopBits = 0;
  settings.baud = 115200;
  ASSERT_TRUE(Open());
  termios taken = {};
  ASSERT_EQ(tcgetattr(peer.slave, &taken), 0);
  EXPECT_EQ(taken.c_cflag & (CSTOPB | CRTSCTS), static_cast<tcflag_t>(CRTSCTS));
  EXPECT_EQ(cfgetospeed(&taken), static_cast<speed_t>(B115200));
}

TEST_F(Line, TakesARateWithoutAName) {
  settings.baud = 14400;
  ASSERT_TRUE(Open());
  EXPECT_EQ(platform::LineRateOf(peer.slave), 14400);
}

TEST_F(Line, RefusesValuesThatNameNoLine) {
  struct Case {
    std::int32_t platform::SerialSettings::*field;
    std::int32_t value;
  };
  const Case cases[] = {
      {&platform::SerialSettings::baud, -5},    {&platform::SerialSettings::baud, 0},
      {&platform::SerialSettings::stopBits, 1}, {&platform::SerialSettings::stopBits, 3},
      {&platform::SerialSettings::dataBits, 4}, {&platform::SerialSettings::dataBits, 9},
      {&platform::SerialSettings::parity, 5},   {&platform::SerialSettings::parity, 130}};
  for (const Case& each : cases) {
    settings = peer.Settings();
    settings.*each.field = each.value;
    EXPECT_FALSE(Open()) << each.value;
    EXPECT_EQ(problem, SerialProblem::Refused) << each.value;
  }
  settings = peer.Settings();
  EXPECT_TRUE(Open());
}

TEST_F(Line, RefusesAPortThatIsNotThere) {
  for (const char16_t* port : {u"/dev/pts/no-such", u"COM70", u"", u"COM0", u"ttyS0"}) {
    settings = platform::SerialSettings{};
    std::u16string(port).copy(settings.port, 31);
    EXPECT_FALSE(Open());
    EXPECT_EQ(problem, SerialProblem::Missing);
  }
}

TEST_F(Line, RefusesAFileThatIsNoLine) {
  settings = platform::SerialSettings{};
  std::u16string(u"/dev/null").copy(settings.port, 31);
  EXPECT_FALSE(Open());
}

TEST_F(Line, RefusesEverySecondOpener) {
  ASSERT_TRUE(Open());
  // The same thread, another thread, and another program that asks for the lock.
  SerialProblem second = SerialProblem::None;
  EXPECT_FALSE(platform::OpenSerial(settings, second));
  EXPECT_EQ(second, SerialProblem::Busy);
  std::thread([this, &second] {
    second = SerialProblem::None;
    EXPECT_FALSE(platform::OpenSerial(settings, second));
  }).join();
  EXPECT_EQ(second, SerialProblem::Busy);
  EXPECT_NE(flock(peer.slave, LOCK_EX | LOCK_NB), 0);
  int exclusive = 0;
  EXPECT_EQ(ioctl(peer.slave, TIOCGEXCL, &exclusive), 0);
  EXPECT_EQ(exclusive, 1);
  // The first opener is not disturbed.
  std::size_t written = 0;
  EXPECT_TRUE(platform::WriteSerial("ok", 2, written));
  EXPECT_TRUE(WaitUntil([this] { return peer.Received() == "ok"; }, 2000));
  platform::CloseSerial();
  EXPECT_EQ(ioctl(peer.slave, TIOCGEXCL, &exclusive), 0);
  EXPECT_EQ(exclusive, 0);
  EXPECT_TRUE(Open());
}

TEST_F(Line, RefusesAPortThatAnotherProgramHasLocked) {
  ASSERT_EQ(flock(peer.slave, LOCK_EX | LOCK_NB), 0);
  EXPECT_FALSE(Open());
  EXPECT_EQ(problem, SerialProblem::Busy);
  ASSERT_EQ(flock(peer.slave, LOCK_UN), 0);
  EXPECT_TRUE(Open());
}

TEST_F(Line, DropsWhatArrivedBeforeTheOpen) {
  peer.Send("old");
  ASSERT_TRUE(WaitUntil(
      [this] {
        int waiting = 0;
        return ioctl(peer.slave, FIONREAD, &waiting) == 0 && waiting == 3;
      },
      2000));
  ASSERT_TRUE(Open());
  peer.Send("new");
  EXPECT_EQ(Read(3), "new");
}

TEST_F(Line, ReadsAHundredMillisecondsOnASilentLine) {
  ASSERT_TRUE(Open());
  char bytes[256];
  std::size_t got = 1;
  const Clock::time_point start = Clock::now();
  EXPECT_TRUE(platform::ReadSerial(bytes, sizeof(bytes), got));
  EXPECT_EQ(got, 0u);
  EXPECT_GE(Milliseconds(start), 99);
  EXPECT_LT(Milliseconds(start), 3000);
}

TEST_F(Line, EndsAReadFiftyMillisecondsBehindTheLastByteAndAtOnceWhenFull) {
  ASSERT_TRUE(Open());
  char bytes[4];
  std::size_t got = 0;
  peer.Send("abcdef");
  EXPECT_EQ(Read(1), "a");
  EXPECT_TRUE(platform::ReadSerial(bytes, 4, got));
  EXPECT_EQ(std::string(bytes, got), "bcde");
  const Clock::time_point start = Clock::now();
  EXPECT_TRUE(platform::ReadSerial(bytes, 4, got));
  EXPECT_EQ(std::string(bytes, got), "f");
  EXPECT_GE(Milliseconds(start), 49);
  EXPECT_LT(Milliseconds(start), 3000);
}

TEST_F(Line, MasksSevenDataBitsAndPassesEight) {
  ASSERT_TRUE(Open());
  peer.Send("\xCD\xB3\xB0\xFF");
  EXPECT_EQ(Read(4), "M30\x7F");
  platform::CloseSerial();
  settings.dataBits = 8;
  ASSERT_TRUE(Open());
  // The driver doubles FF because it marks damaged bytes with it.
  const std::string all = std::string("\xFF\x00\xFF\xFF\x00", 5) + "A\xFF";
  peer.Send(all);
  EXPECT_EQ(Read(7), all);
  EXPECT_EQ(platform::SerialLineErrors(), 0u);
}

TEST_F(Line, ReceivesEveryByteValueThere) {
  settings.dataBits = 8;
  ASSERT_TRUE(Open());
  std::string all;
  for (int i = 0; i < 4 * 256; ++i) all.push_back(static_cast<char>(i));
  peer.Send(all);
  EXPECT_EQ(Read(all.size()), all);
}

TEST_F(Line, StopsTheFarEndWhenItsBufferNearsFullAndLetsItGo) {
  ASSERT_TRUE(Open());
  // Read in small steps, so that the buffer fills: 6144 bytes stop the far end, 2048 free it.
  peer.Send(std::string(8000, 'x'));
  EXPECT_EQ(Read(8000).size(), 8000u);
  EXPECT_TRUE(WaitUntil([this] { return peer.Received() == "\x13\x11"; }, 2000))
      << peer.Received().size();
}

TEST_F(Line, SendsNoFlowControlWithoutXonXoff) {
  settings.flow = 0;
  ASSERT_TRUE(Open());
  peer.Send(std::string(8000, 'x'));
  EXPECT_EQ(Read(8000).size(), 8000u);
  EXPECT_TRUE(peer.WaitQuiet(50, 2000));
  EXPECT_EQ(peer.Received(), "");
}

TEST_F(Line, FreesAFarEndThatItStoppedWhenItCloses) {
  ASSERT_TRUE(Open());
  peer.Send(std::string(8000, 'x'));
  EXPECT_TRUE(WaitUntil(
      [this] {
        Read(1);
        return peer.Received() == "\x13";
      },
      2000));
  platform::CloseSerial();
  EXPECT_TRUE(WaitUntil([this] { return peer.Received() == "\x13\x11"; }, 2000));
}

TEST_F(Line, SendsNothingOnceStoppedWhateverElseArrives) {
  ASSERT_TRUE(Open());
  std::size_t written = 0;
  for (const char* xoff : {"\x13", "\x93"}) {
    peer.Forget();
    peer.Send(xoff);
    peer.Send(std::string(1000, 'n'));
    ASSERT_TRUE(WaitUntil(
        [this] {
          int waiting = 0;
          return ioctl(peer.slave, FIONREAD, &waiting) == 0 && waiting == 1001;
        },
        2000));
    std::thread waker([] {
      const Clock::time_point start = Clock::now();
      WaitUntil([&] { return Milliseconds(start) >= 300; }, 1000);
      platform::WakeSerial();
    });
    EXPECT_TRUE(platform::WriteSerial("G0", 2, written));
    waker.join();
    EXPECT_EQ(written, 0u);
    EXPECT_EQ(platform::SerialBackChannelBytes(), 1000u);
    EXPECT_TRUE(peer.WaitQuiet(50, 2000));
    EXPECT_EQ(peer.Received(), "");
    platform::CloseSerial();
    ASSERT_TRUE(Open());
  }
}

TEST_F(Line, GoesOnAtXonWithOrWithoutTheEighthBit) {
  ASSERT_TRUE(Open());
  std::size_t written = 0;
  for (const char* xon : {"\x11", "\x91"}) {
    peer.Forget();
    peer.Send("\x13");
    std::thread far([&] {
      ASSERT_TRUE(peer.WaitQuiet(100, 2000));
      EXPECT_EQ(peer.Received(), "");
      EXPECT_TRUE(platform::SerialHeld());  // who waits for the writer sees why
      peer.Send(xon);
    });
    ASSERT_TRUE(WaitUntil(
        [this] {
          int waiting = 0;
          return ioctl(peer.slave, FIONREAD, &waiting) == 0 && waiting == 1;
        },
        2000));
    EXPECT_TRUE(platform::WriteSerial("G0", 2, written));
    far.join();
    EXPECT_EQ(written, 2u);
    EXPECT_TRUE(WaitUntil([this] { return peer.Received() == "G0"; }, 2000));
    EXPECT_FALSE(platform::SerialHeld());
  }
  EXPECT_EQ(platform::SerialBackChannelBytes(), 0u);
}

TEST_F(Line, CountsXoffAsAnOrdinaryByteWithoutXonXoff) {
  settings.flow = 0;
  ASSERT_TRUE(Open());
  peer.Send("\x13");
  ASSERT_TRUE(WaitUntil(
      [this] {
        int waiting = 0;
        return ioctl(peer.slave, FIONREAD, &waiting) == 0 && waiting == 1;
      },
      2000));
  std::size_t written = 0;
  EXPECT_TRUE(platform::WriteSerial("G0", 2, written));
  EXPECT_EQ(written, 2u);
  EXPECT_EQ(platform::SerialBackChannelBytes(), 1u);
}

TEST_F(Line, EndsAWriteAfterFiveSecondsInWhichNothingWasTaken) {
  ASSERT_TRUE(Open());
  // A far end that reads nothing: the pseudo-terminal fills up.
  peer.StopReading(true);
  const std::string much(1 << 20, 'x');
  std::size_t written = 0;
  const Clock::time_point start = Clock::now();
  EXPECT_TRUE(platform::WriteSerial(much.data(), much.size(), written));
  EXPECT_GE(Milliseconds(start), 4999);
  EXPECT_LT(Milliseconds(start), 15000);
  EXPECT_GT(written, 0u);
  EXPECT_LT(written, much.size());
}

// Each line belongs to the thread that opened it.
TEST_F(Line, IsOneOfEightThatMayBeOpenAtATime) {
  static_assert(platform::kMaxOpenLines == 8);
  std::atomic<int> open = 0;
  std::atomic<bool> over = false;
  std::vector<std::thread> others;
  for (int i = 0; i < 8; ++i) {
    others.emplace_back([&] {
      Peer each;
      SerialProblem none = SerialProblem::None;
      EXPECT_TRUE(platform::OpenSerial(each.Settings(), none));
      ++open;
      WaitUntil([&] { return over.load(); }, 20000);
      platform::CloseSerial();
    });
  }
  EXPECT_TRUE(WaitUntil([&] { return open == 8; }, 20000));
  EXPECT_FALSE(Open());
  over = true;
  for (std::thread& other : others) other.join();
  EXPECT_TRUE(Open());
}

TEST_F(Line, EndsEveryWaitAtOnceWhenWoken) {
  ASSERT_TRUE(Open());
  platform::WakeSerial();
  std::size_t count = 0;
  char bytes[16];
  const Clock::time_point start = Clock::now();
  EXPECT_TRUE(platform::ReadSerial(bytes, sizeof(bytes), count));
  EXPECT_TRUE(platform::WriteSerial("G0", 2, count));
  EXPECT_EQ(count, 0u);
  EXPECT_LT(Milliseconds(start), 3000);
  // The next open starts anew.
  platform::CloseSerial();
  ASSERT_TRUE(Open());
  EXPECT_TRUE(platform::WriteSerial("G0", 2, count));
  EXPECT_EQ(count, 2u);
  EXPECT_TRUE(platform::DrainSerial());
}

TEST_F(Line, TellsThatThePortIsGone) {
  ASSERT_TRUE(Open());
  peer.Vanish();
  char bytes[16];
  std::size_t count = 0;
  EXPECT_FALSE(platform::ReadSerial(bytes, sizeof(bytes), count));
  EXPECT_FALSE(platform::WriteSerial("G0", 2, count));
  EXPECT_EQ(count, 0u);
}

TEST_F(Line, KeepsWhatItSentInASlowFarEndWhenItCloses) {
  ASSERT_TRUE(Open());
  peer.StopReading(true);
  const std::string program(3000, 'G');
  std::size_t written = 0;
  EXPECT_TRUE(platform::WriteSerial(program.data(), program.size(), written));
  ASSERT_EQ(written, program.size());
  EXPECT_TRUE(platform::DrainSerial());
  platform::CloseSerial();
  // Another open must not take it from the far end either.
  ASSERT_TRUE(Open());
  platform::CloseSerial();
  peer.StopReading(false);
  EXPECT_TRUE(WaitUntil([&] { return peer.Received() == program; }, 2000)) << peer.Count();
}

TEST_F(Line, NamesTheGroupThatMayUseThePort) {
  // A terminal's slave belongs to the group "tty", which may write and not read it.
  EXPECT_EQ(platform::SerialGroup(settings), u"");
  ASSERT_EQ(fchmod(peer.slave, 0660), 0);
  EXPECT_NE(platform::SerialGroup(settings), u"");
}

// A real line sends no faster than its rate, whatever its driver would take.

TEST_F(Line, HandsDownNoMoreThanTheLineCanSend) {
  platform::pacePseudoTerminals = true;
  settings.baud = 115200;
  ASSERT_TRUE(Open());
  // 11 bits at 115,200 are 95.486 us: 4096 bytes last 391 ms, of which the last 64 may wait
  // in the driver when the write returns: 6.1 ms.
  const std::string program(4096, 'G');
  std::size_t written = 0;
  const Clock::time_point start = Clock::now();
  EXPECT_TRUE(platform::WriteSerial(program.data(), program.size(), written));
  EXPECT_EQ(written, program.size());
  EXPECT_GE(Milliseconds(start), 384);
  EXPECT_TRUE(platform::DrainSerial());
  EXPECT_GE(Milliseconds(start), 390);
  EXPECT_LT(Milliseconds(start), 5000);
}

TEST_F(Line, HasAtMost64BytesOnTheirWayWhenItIsStopped) {
  platform::pacePseudoTerminals = true;
  settings.baud = 9600;
  ASSERT_TRUE(Open());
  const std::string program(1000, 'G');  // 1.15 s
  std::size_t before = 0;
  std::thread far([&] {
    EXPECT_TRUE(WaitUntil([&] { return peer.Count() >= 100; }, 5000));
    peer.Send("\x13");
    before = peer.Arrived();
    EXPECT_TRUE(peer.WaitQuiet(200, 5000));
    EXPECT_LE(peer.Count(), before + 64);
    EXPECT_LT(peer.Count(), program.size());
    peer.Send("\x11");
  });
  std::size_t written = 0;
  EXPECT_TRUE(platform::WriteSerial(program.data(), program.size(), written));
  far.join();
  EXPECT_EQ(written, program.size());
  EXPECT_TRUE(WaitUntil([&] { return peer.Received() == program; }, 2000));
}

TEST_F(Line, EndsADrainAtOnceWhenWoken) {
  platform::pacePseudoTerminals = true;
  settings.baud = 110;  // 0.1 s a byte
  ASSERT_TRUE(Open());
  std::size_t written = 0;
  EXPECT_TRUE(platform::WriteSerial("0123456789012345678901234567890123456789", 40, written));
  EXPECT_EQ(written, 40u);
  const Clock::time_point start = Clock::now();
  std::thread waker([start] {
    WaitUntil([start] { return Milliseconds(start) >= 100; }, 1000);
    platform::WakeSerial();
  });
  EXPECT_FALSE(platform::DrainSerial());
  EXPECT_GE(Milliseconds(start), 99);
  EXPECT_LT(Milliseconds(start), 3000);  // 4 s without the wake
  waker.join();
}

}  // namespace
