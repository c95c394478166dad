// Every call of the serial line, failed one after the other, and its times to the millisecond
// on a clock that moves instead of waiting. Expected moments are worked out by hand.

#include "system_calls.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <pthread.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstring>
#include <filesystem>
#include <new>

#include "far_end.h"
#include "platform/posix/serial_pace.h"
#include "platform/serial.h"

namespace system_calls {

std::atomic<int> workerFlushes{0};
std::atomic<std::size_t> refusedBlock{0};

Plan& Mine() {
  static thread_local Plan plan;
  return plan;
}

namespace {

// The record that carries any rate cannot be named beside the portable one: its request, and
// where the output rate lies in it (four words of flags, the discipline and 19 characters,
// the input rate).
constexpr unsigned long kGetsAnyRate = 0x802C542A;
constexpr std::size_t kOutputRateAt = 40;

// Whether this call fails; `errno` says why.
bool Fails(const char* name) {
  Plan& plan = Mine();
  if (!plan.active) return false;
  plan.seen.push_back(name);
  if (!plan.failOnly.empty() && plan.failOnly != name) return false;
  ++plan.counted;
  if (plan.failFrom == 0 || plan.counted < plan.failFrom) return false;
  if (plan.counted >= plan.failFrom + plan.failCalls) return false;
  errno = plan.error;
  return true;
}

}  // namespace
}  // namespace system_calls

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  std::size_t refused = size;
  if (size > 0 && system_calls::refusedBlock.compare_exchange_strong(refused, 0)) return nullptr;
  return ::operator new(size);
}

extern "C" {

using system_calls::Fails;
using system_calls::Mine;

int __real_open(const char* path, int flags, ...);
ssize_t __real_read(int fd, void* bytes, size_t count);
ssize_t __real_write(int fd, const void* bytes, size_t count);
int __real_close(int fd);
int __real_ioctl(int fd, unsigned long request, ...);
int __real_ppoll(pollfd* fds, nfds_t count, const timespec* wait, const sigset_t* mask);
int __real_tcgetattr(int fd, termios* record);
int __real_tcsetattr(int fd, int when, const termios* record);
int __real_tcflush(int fd, int queue);
int __real_flock(int fd, int operation);
int __real_clock_gettime(clockid_t clock, timespec* now);
int __real_pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*work)(void*),
                          void* argument);

int __wrap_open(const char* path, int flags, ...) {
  va_list more;
  va_start(more, flags);
  const int mode = (flags & O_CREAT) != 0 ? va_arg(more, int) : 0;
  va_end(more);
  if (Fails("open")) return -1;
  Mine().openFlags = flags;
  return __real_open(path, flags, mode);
}

ssize_t __wrap_read(int fd, void* bytes, size_t count) {
  return Fails("read") ? -1 : __real_read(fd, bytes, count);
}

ssize_t __wrap_write(int fd, const void* bytes, size_t count) {
  if (Fails("write")) return -1;
  const system_calls::Plan& plan = Mine();
  if (plan.active && plan.mostBytes > 0) count = std::min(count, plan.mostBytes);
  const ssize_t taken = __real_write(fd, bytes, count);
  if (plan.active && plan.written && taken > 0) plan.written(static_cast<std::size_t>(taken));
  return taken;
}

// Closed in any case, as the system does.
int __wrap_close(int fd) {
  const bool fails = Fails("close");
  const int error = errno;
  const int answer = __real_close(fd);
  if (!fails) return answer;
  errno = error;
  return -1;
}

int __wrap_ioctl(int fd, unsigned long request, ...) {
  va_list more;
  va_start(more, request);
  void* argument = va_arg(more, void*);
  va_end(more);
  const char* name = request == TIOCEXCL ? "exclusive" : request == TIOCNXCL ? "free" : "ioctl";
  if (Fails(name)) return -1;
  const system_calls::Plan& plan = Mine();
  if (plan.active && request == TIOCOUTQ && plan.queued) {
    *static_cast<int*>(argument) = static_cast<int>(plan.queued());
    return 0;
  }
  const int answer = __real_ioctl(fd, request, argument);
  if (plan.active && request == system_calls::kGetsAnyRate && plan.takenRate != 0) {
    std::memcpy(static_cast<char*>(argument) + system_calls::kOutputRateAt, &plan.takenRate, 4);
  }
  return answer;
}

// What the far end has sent already is seen; with nothing there the time passes at once. A far
// end that still reads what it was given is waited for, in time that does not count.
int __wrap_ppoll(pollfd* fds, nfds_t count, const timespec* wait, const sigset_t* mask) {
  if (Fails("poll")) return -1;
  system_calls::Plan& plan = Mine();
  if (!plan.active || !plan.moveClock || !wait) return __real_ppoll(fds, count, wait, mask);
  if ((fds[0].events & POLLOUT) != 0) return __real_ppoll(fds, count, wait, mask);
  const timespec none = {};
  const int ready = __real_ppoll(fds, count, &none, mask);
  if (ready == 0) plan.now += wait->tv_sec * 1000000000 + wait->tv_nsec;
  return ready;
}

int __wrap_tcgetattr(int fd, termios* record) {
  return Fails("get") ? -1 : __real_tcgetattr(fd, record);
}

int __wrap_tcsetattr(int fd, int when, const termios* record) {
  return Fails("set") ? -1 : __real_tcsetattr(fd, when, record);
}

int __wrap_tcflush(int fd, int queue) {
  const char* name = queue == TCOFLUSH ? "flush out" : queue == TCIFLUSH ? "flush in" : "flush";
  if (Fails(name)) return -1;
  const int answer = __real_tcflush(fd, queue);
  if (queue != TCOFLUSH && gettid() != getpid()) ++system_calls::workerFlushes;
  return answer;
}

int __wrap_flock(int fd, int operation) { return Fails("lock") ? -1 : __real_flock(fd, operation); }

int __wrap_pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*work)(void*),
                          void* argument) {
  if (Fails("thread")) return errno;
  return __real_pthread_create(thread, attributes, work, argument);
}

int __wrap_clock_gettime(clockid_t clock, timespec* now) {
  const system_calls::Plan& plan = Mine();
  if (!plan.active || !plan.moveClock) return __real_clock_gettime(clock, now);
  now->tv_sec = 1000 + plan.now / 1000000000;
  now->tv_nsec = plan.now % 1000000000;
  return 0;
}

}  // extern "C"

namespace {

using far_end::Peer;
using far_end::WaitUntil;
using platform::SerialProblem;
using system_calls::Plan;
using system_calls::Watch;

constexpr std::int64_t kMs = 1000000;

int OpenFiles() {
  int count = 0;
  for (const auto& each : std::filesystem::directory_iterator("/proc/self/fd")) {
    (void)each;
    ++count;
  }
  return count;
}

struct Calls : public ::testing::Test {
  Peer peer;
  SerialProblem problem = SerialProblem::None;
  platform::SerialSettings settings = peer.Settings();

  Calls() { platform::pacePseudoTerminals = false; }
  bool Open() { return platform::OpenSerial(settings, problem); }
  ~Calls() override {
    platform::CloseSerial();
    platform::pacePseudoTerminals = false;
  }
  // Until the far end's bytes lie before the line.
  void SendAndWait(std::string_view bytes) {
    const system_calls::Pause pause;
    peer.Send(bytes);
    ASSERT_TRUE(WaitUntil(
        [&] {
          int waiting = 0;
          return ioctl(peer.slave, FIONREAD, &waiting) == 0 &&
                 waiting >= static_cast<int>(bytes.size());
        },
        5000));
  }
  // A whole short job. False: some step told that the port is gone or could not be opened.
  bool Job(std::string& got) {
    got.clear();
    if (!Open()) return false;
    std::size_t written = 0;
    bool there = platform::WriteSerial(kProgram, std::strlen(kProgram), written);
    there = platform::DrainSerial() && there;
    if (there) SendAndWait("reply");
    while (there && got.size() < 5) {
      char bytes[16];
      std::size_t count = 0;
      there = platform::ReadSerial(bytes, sizeof(bytes), count);
      got.append(bytes, count);
    }
    platform::CloseSerial();
    return there && written == std::strlen(kProgram);
  }
  static constexpr const char* kProgram = "%\r\nO0001\r\nG0 X1. Y2.\r\nM30\r\n%\r\n";
};

TEST_F(Calls, OpenWithoutWaitingTerminalOrChildren) {
  const Watch watch;
  ASSERT_TRUE(Open());
  EXPECT_EQ(watch.plan.openFlags, O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
  // Claimed before anything is changed; bytes of the time before are dropped last.
  const std::vector<std::string>& seen = watch.plan.seen;
  ASSERT_GE(seen.size(), 5u);
  EXPECT_EQ(seen[0], "open");
  EXPECT_EQ(seen[1], "lock");
  EXPECT_EQ(seen[2], "exclusive");
  EXPECT_EQ(seen.back(), "flush in");
  EXPECT_EQ(std::count(seen.begin(), seen.end(), "set"), 1);
  EXPECT_EQ(std::count(seen.begin(), seen.end(), "get"), 2);
}

// The port goes at the n-th call, n = 1, 2, 3, ..., and every later one fails as well.
TEST_F(Calls, TellAPortThatGoesAtAnyOfThemAndLeaveNothingBehind) {
  for (const int error : {EIO, ENXIO, ENODEV}) {
    bool met = true;
    for (int n = 1; met && n < 200; ++n) {
      const int before = OpenFiles();
      std::string got;
      bool whole = false;
      std::vector<std::string> seen;
      {
        const Watch watch;
        watch.plan.failFrom = n;
        watch.plan.failCalls = 10000;
        watch.plan.error = error;
        whole = Job(got);
        met = watch.plan.counted >= n;
        seen = watch.plan.seen;
      }
      EXPECT_EQ(OpenFiles(), before) << n;
      // Only what comes behind the last byte read may fail unseen.
      const auto last = std::find(seen.rbegin(), seen.rend(), "read");
      const bool readDone = seen.rend() - last < n;
      EXPECT_EQ(whole, readDone && got == "reply") << n << " " << seen[seen.size() - 1];
      // A mark that could not be taken off went with the port; here it stays with the test's.
      ASSERT_EQ(ioctl(peer.slave, TIOCNXCL), 0);
      ASSERT_EQ(flock(peer.slave, LOCK_EX | LOCK_NB), 0) << n << ": a lock is left";
      ASSERT_EQ(flock(peer.slave, LOCK_UN), 0);
    }
    EXPECT_FALSE(met) << "no run met no fault";
  }
}

TEST_F(Calls, OutliveAnInterruptionAndATryAgainAtAnyOfThem) {
  struct Case {
    const char* call;
    int error;
  };
  for (const Case& each :
       {Case{"open", EINTR}, Case{"poll", EINTR}, Case{"poll", EAGAIN}, Case{"read", EINTR},
        Case{"read", EAGAIN}, Case{"write", EINTR}, Case{"write", EAGAIN}}) {
    bool met = true;
    for (int n = 1; met && n < 50; ++n) {
      peer.Forget();
      std::string got;
      {
        const Watch watch;
        watch.plan.failOnly = each.call;
        watch.plan.failFrom = n;
        watch.plan.failCalls = 1;
        watch.plan.error = each.error;
        EXPECT_TRUE(Job(got)) << each.call << " " << n;
        met = watch.plan.counted >= n;
      }
      EXPECT_EQ(got, "reply") << each.call << " " << n;
      ASSERT_TRUE(WaitUntil([&] { return peer.Received() == kProgram; }, 5000)) << peer.Received();
    }
    EXPECT_FALSE(met);
  }
}

TEST_F(Calls, GoOnBehindAShortWrite) {
  for (const std::size_t most : {1u, 2u, 5u}) {
    peer.Forget();
    const Watch watch;
    watch.plan.mostBytes = most;
    std::string got;
    EXPECT_TRUE(Job(got));
    EXPECT_TRUE(WaitUntil([&] { return peer.Received() == kProgram; }, 5000)) << peer.Received();
  }
}

TEST_F(Calls, TellWhyAPortCannotBeOpened) {
  struct Case {
    int error;
    SerialProblem problem;
  };
  for (const Case& each :
       {Case{EBUSY, SerialProblem::Busy}, Case{EACCES, SerialProblem::Rights},
        Case{EPERM, SerialProblem::Rights}, Case{ENOENT, SerialProblem::Missing},
        Case{ENXIO, SerialProblem::Missing}, Case{EIO, SerialProblem::Missing}}) {
    const Watch watch;
    watch.plan.failFrom = 1;
    watch.plan.failCalls = 1;
    watch.plan.error = each.error;
    EXPECT_FALSE(Open());
    EXPECT_EQ(problem, each.problem) << each.error;
  }
}

// What still waits in the driver is dropped before the close, which would wait for it.
TEST_F(Calls, CloseOnlyBehindAnEmptiedQueue) {
  const Watch watch;
  watch.plan.moveClock = true;
  ASSERT_TRUE(Open());
  std::size_t written = 0;
  EXPECT_TRUE(platform::WriteSerial("M30", 3, written));
  watch.plan.queued = [] { return std::int64_t{3}; };
  // A wire that holds the driver's bytes: nothing leaves for five seconds.
  const std::int64_t start = watch.plan.now;
  EXPECT_FALSE(platform::DrainSerial());
  EXPECT_EQ((watch.plan.now - start) / kMs, 5000);
  EXPECT_EQ(platform::SerialUnsent(), 3u);
  watch.plan.seen.clear();
  platform::CloseSerial();
  const std::vector<std::string>& seen = watch.plan.seen;
  const auto flush = std::find(seen.begin(), seen.end(), "flush out");
  const auto shut = std::find(seen.begin(), seen.end(), "close");
  ASSERT_NE(flush, seen.end());
  EXPECT_LT(flush - seen.begin(), shut - seen.begin());
}

TEST_F(Calls, DrainAsLongAsBytesKeepLeaving) {
  const Watch watch;
  watch.plan.moveClock = true;
  ASSERT_TRUE(Open());
  std::size_t written = 0;
  EXPECT_TRUE(platform::WriteSerial("G0X1", 4, written));
  // A byte every 4.9 s: 19.6 s in all.
  static std::int64_t start = 0;
  start = watch.plan.now;
  watch.plan.queued = [] { return 4 - (system_calls::Mine().now - start) / (4900 * kMs); };
  EXPECT_EQ(platform::SerialUnsent(), 4u);
  EXPECT_TRUE(platform::DrainSerial());
  EXPECT_EQ((watch.plan.now - start) / kMs, 19600);
  EXPECT_EQ(platform::SerialUnsent(), 0u);
  watch.plan.seen.clear();
  platform::CloseSerial();
  const std::vector<std::string>& seen = watch.plan.seen;
  EXPECT_EQ(std::count(seen.begin(), seen.end(), "flush out"), 0);
}

TEST_F(Calls, EndAWriteFiveSecondsBehindTheLastByteTaken) {
  const Watch watch;
  watch.plan.moveClock = true;
  ASSERT_TRUE(Open());
  SendAndWait("\x13");
  std::size_t written = 1;
  const std::int64_t start = watch.plan.now;
  EXPECT_TRUE(platform::WriteSerial("G0", 2, written));
  EXPECT_EQ(written, 0u);
  EXPECT_EQ(watch.plan.now - start, 5000 * kMs);
}

// A part of a chunk went out, then the driver took no more: the write ends short, and the next
// one at once with nothing. The five seconds are not begun anew.
TEST_F(Calls, EndTheNextWriteAtOnceBehindAChunkThatStalled) {
  const Watch watch;
  watch.plan.moveClock = true;
  ASSERT_TRUE(Open());
  static std::size_t below = 0;
  below = 0;
  watch.plan.written = [](std::size_t bytes) { below += bytes; };
  watch.plan.queued = [] { return static_cast<std::int64_t>(below); };  // nothing ever leaves
  const std::string chunk(128, 'G');
  std::size_t written = 0;
  const std::int64_t start = watch.plan.now;
  EXPECT_TRUE(platform::WriteSerial(chunk.data(), chunk.size(), written));
  EXPECT_EQ(written, 64u);
  EXPECT_EQ((watch.plan.now - start) / kMs, 5000);
  EXPECT_TRUE(platform::WriteSerial(chunk.data() + 64, 64, written));
  EXPECT_EQ(written, 0u);
  EXPECT_EQ((watch.plan.now - start) / kMs, 5000);
}

TEST_F(Calls, EndAReadAfterAHundredMillisecondsOrFiftyBehindTheLastByte) {
  const Watch watch;
  watch.plan.moveClock = true;
  ASSERT_TRUE(Open());
  char bytes[4];
  std::size_t got = 1;
  std::int64_t start = watch.plan.now;
  EXPECT_TRUE(platform::ReadSerial(bytes, 4, got));
  EXPECT_EQ(got, 0u);
  EXPECT_EQ(watch.plan.now - start, 100 * kMs);
  SendAndWait("abcdef");
  start = watch.plan.now;
  EXPECT_TRUE(platform::ReadSerial(bytes, 4, got));
  EXPECT_EQ(std::string(bytes, got), "abcd");
  EXPECT_EQ(watch.plan.now - start, 0);
  EXPECT_TRUE(platform::ReadSerial(bytes, 4, got));
  EXPECT_EQ(std::string(bytes, got), "ef");
  EXPECT_EQ(watch.plan.now - start, 50 * kMs);
}

TEST_F(Calls, EndEveryWaitAtOnceWhenWoken) {
  const Watch watch;
  watch.plan.moveClock = true;
  ASSERT_TRUE(Open());
  SendAndWait("\x13");
  platform::WakeSerial();
  char bytes[4];
  std::size_t count = 1;
  const std::int64_t start = watch.plan.now;
  EXPECT_TRUE(platform::WriteSerial("G0", 2, count));
  EXPECT_EQ(count, 0u);
  watch.plan.queued = [] { return std::int64_t{3}; };
  EXPECT_FALSE(platform::DrainSerial());
  while (platform::ReadSerial(bytes, sizeof(bytes), count) && count > 0) {
  }
  EXPECT_EQ(watch.plan.now, start);
}

// How far the bytes handed down are ahead of what a line of one byte in `byteNs` can send.
struct Ahead {
  std::int64_t byteNs = 0;
  std::int64_t emptyAt = 0;
  std::int64_t most = 0;
  int writes = 0;
};
Ahead ahead;

void CountAhead(std::size_t bytes) {
  const std::int64_t now = system_calls::Mine().now;
  ahead.emptyAt = std::max(ahead.emptyAt, now) + static_cast<std::int64_t>(bytes) * ahead.byteNs;
  ahead.most = std::max(ahead.most, (ahead.emptyAt - now + ahead.byteNs - 1) / ahead.byteNs);
  ++ahead.writes;
}

struct Rate {
  std::int32_t baud;   // asked for
  std::int32_t taken;  // what the driver's divider made; 0: the same
};

struct Paced : public Calls, public ::testing::WithParamInterface<Rate> {};

TEST_P(Paced, HaveAtMost64BytesWaitBelowAndTheLineNeverIdle) {
  platform::pacePseudoTerminals = true;
  const Watch watch;
  watch.plan.moveClock = true;
  watch.plan.takenRate = GetParam().taken;
  settings.baud = GetParam().baud;
  ASSERT_TRUE(Open());
  // 11 bits a byte at the rate that the line really has.
  const std::int32_t rate = GetParam().taken != 0 ? GetParam().taken : GetParam().baud;
  ahead = Ahead{};
  ahead.byteNs = 11000000000 / rate;
  watch.plan.written = CountAhead;
  watch.plan.mostBytes = 64;
  const std::int64_t start = watch.plan.now;
  const std::string program(20000, 'G');
  for (std::size_t sent = 0; sent < program.size();) {
    std::size_t written = 0;
    ASSERT_TRUE(platform::WriteSerial(program.data() + sent,
                                      std::min<std::size_t>(128, program.size() - sent), written));
    ASSERT_GT(written, 0u);
    sent += written;
  }
  EXPECT_TRUE(platform::DrainSerial());
  EXPECT_LE(ahead.most, 64);
  EXPECT_GE(ahead.most, 33);
  const std::int64_t least = 20000 * ahead.byteNs;
  EXPECT_GE(watch.plan.now - start, least);
  EXPECT_LE(watch.plan.now - start, least + least / 100);
  EXPECT_TRUE(WaitUntil([&] { return peer.Received() == program; }, 5000));
}

INSTANTIATE_TEST_SUITE_P(Rates, Paced,
                         ::testing::Values(Rate{1200, 0}, Rate{9600, 0}, Rate{115200, 0},
                                           Rate{115200, 113000}, Rate{38400, 37700}));

TEST_F(Calls, RefuseARateThatTheDriverMissesByMoreThanTwoPercent) {
  const Watch watch;
  settings.baud = 9600;
  for (const std::int32_t taken : {9407, 9793, 4800}) {
    watch.plan.takenRate = taken;
    EXPECT_FALSE(Open()) << taken;
    EXPECT_EQ(problem, SerialProblem::Refused);
  }
  for (const std::int32_t taken : {9408, 9792}) {
    watch.plan.takenRate = taken;
    EXPECT_TRUE(Open()) << taken;
    platform::CloseSerial();
  }
}

}  // namespace
