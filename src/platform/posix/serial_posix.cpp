// The serial line over the system's terminal calls: open, read, write, drain, close, wake.
//
// XON/XOFF is done here and not by the driver. Each thread has a line of its own, so that a
// port tried by one thread never disturbs the transfer of another.

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <termios.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <mutex>

#include "platform/limits.h"
#include "platform/posix/offered_lines.h"
#include "platform/posix/serial_line.h"
#include "platform/posix/serial_names.h"
#include "platform/posix/serial_pace.h"
#include "platform/posix/serial_settings.h"
#include "platform/serial.h"

namespace platform {

std::atomic<bool> pacePseudoTerminals{true};

namespace {

constexpr std::int64_t kMillisecond = 1000000;
constexpr std::int64_t kStall = kWriteStallMs * kMillisecond;
constexpr std::int64_t kReadInterval = kReadGapMs * kMillisecond;
constexpr std::int64_t kReadTotal = kReadTotalMs * kMillisecond;
constexpr std::int64_t kRetry = kMillisecond;  // a full driver that says it is ready
// A pseudo-terminal does not always tell that its far end made room.
constexpr std::int64_t kLookAgain = 10 * kMillisecond;

struct Line {
  int fd = -1;
  int wake = -1;
  std::int32_t dataBits = 8;
  std::int32_t flow = 0;
  bool emptied = true;         // nothing of ours waits in the driver
  bool stoppedPeer = false;    // our XOFF is out and no XON since
  bool stalled = false;        // the last write ended because nothing was taken any more
  std::int64_t lastTaken = 0;  // when the driver last took a byte
  std::int64_t unsent = 0;     // bytes of ours that the driver held when it was asked last
  bool gone = false;
  LineRate rate;
  BackChannel back;
  MarkDecoder marks;
  ReceiveBuffer received;
};

thread_local Line line;
// `back.stopped` of the line that was written to last, for the threads that wait for its writer.
std::atomic<bool> held{false};

std::mutex wakeGate;
int wakes[kMaxOpenLines] = {-1, -1, -1, -1, -1, -1, -1, -1};

std::int64_t Now() {
  timespec now = {};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return now.tv_sec * 1000000000 + now.tv_nsec;
}

bool MakeWake(Line& l) {
  l.wake = eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC);
  if (l.wake < 0) return false;
  const std::lock_guard<std::mutex> hold(wakeGate);
  for (int& slot : wakes) {
    if (slot >= 0) continue;
    slot = l.wake;
    return true;
  }
  return false;
}

void DropWake(Line& l) {
  if (l.wake < 0) return;
  const std::lock_guard<std::mutex> hold(wakeGate);
  for (int& slot : wakes) {
    if (slot == l.wake) slot = -1;
  }
  close(l.wake);
  l.wake = -1;
}

struct Ready {
  bool input = false;
  bool output = false;
  bool woken = false;
  bool gone = false;
};

// Waits at most `wait` nanoseconds for the line or the wake.
Ready WaitForLine(const Line& l, bool output, std::int64_t wait) {
  pollfd watched[2] = {{l.fd, static_cast<short>(output ? POLLIN | POLLOUT : POLLIN), 0},
                       {l.wake, POLLIN, 0}};
  if (wait < 0) wait = 0;
  const timespec limit = {wait / 1000000000, wait % 1000000000};
  Ready ready;
  if (ppoll(watched, 2, &limit, nullptr) < 0) {
    ready.gone = errno != EINTR && errno != EAGAIN;
    return ready;
  }
  ready.input = (watched[0].revents & POLLIN) != 0;
  ready.output = (watched[0].revents & POLLOUT) != 0;
  ready.gone = (watched[0].revents & (POLLHUP | POLLERR | POLLNVAL)) != 0;
  ready.woken = (watched[1].revents & POLLIN) != 0;
  return ready;
}

enum class Look { Some, Nothing, Gone };

// One read of at most `capacity` bytes. `ready`: the system said that there is something, so
// that a read of nothing means a port that is gone.
Look ReadDriver(const Line& l, unsigned char* bytes, std::size_t capacity, bool ready,
                std::size_t& got) {
  const ssize_t count = read(l.fd, bytes, capacity);
  got = count > 0 ? static_cast<std::size_t>(count) : 0;
  if (count > 0) return Look::Some;
  if (count == 0) return ready ? Look::Gone : Look::Nothing;
  return errno == EAGAIN || errno == EINTR ? Look::Nothing : Look::Gone;
}

// What came back while sending: flow control is obeyed, the rest counted. False: gone.
bool TakeBackChannel(Line& l) {
  unsigned char bytes[4096];
  // A far end that never stops talking must not keep us from sending.
  for (int turn = 0; turn < 16; ++turn) {
    std::size_t got = 0;
    const Look look = ReadDriver(l, bytes, sizeof(bytes), turn == 0, got);
    if (look == Look::Gone) return false;
    for (std::size_t i = 0; i < got; ++i) {
      unsigned char byte = 0;
      const std::size_t errors = l.marks.errors;
      if (!DecodeMark(l.marks, bytes[i], byte)) continue;
      if (l.flow == 1) {
        ObeyBackChannel(l.back, byte, l.marks.errors > errors);
      } else {
        ++l.back.ordinary;
      }
    }
    if (got < sizeof(bytes)) break;
  }
  held = l.back.stopped;
  return true;
}

// Bytes that have not left: what the driver tells, and what the line rate allows.
std::int64_t Waiting(const Line& l, std::int64_t now) {
  int queued = 0;
  if (ioctl(l.fd, TIOCOUTQ, &queued) != 0 || queued < 0) queued = 0;
  const std::int64_t backlog = Backlog(l.rate, now);
  return backlog > queued ? backlog : queued;
}

// The end of a port that is gone: what it held then stays unsent.
bool Lost(Line& l) {
  l.gone = true;
  return false;
}

// What may go down now, and how long to wait for the line or for more.
struct Allowance {
  std::size_t bytes = 0;
  std::int64_t wait = 0;
};

Allowance AllowanceOf(const Line& l, std::size_t left, std::int64_t now, std::int64_t retryAt) {
  Allowance allowed;
  allowed.wait = std::max<std::int64_t>(0, l.lastTaken + kStall - now);
  if (l.back.stopped) return allowed;
  const std::int64_t room = kDriverBytes - l.unsent;
  const int wanted = PieceWanted(l.rate, left);
  if (room < wanted) {
    const std::int64_t refill = std::max(kRetry, (wanted - room) * l.rate.byteNs);
    allowed.wait = std::min(allowed.wait, refill);
  } else if (now < retryAt) {
    allowed.wait = std::min(allowed.wait, retryAt - now);
  } else {
    allowed.bytes = static_cast<std::size_t>(room);
    allowed.wait = std::min(allowed.wait, kLookAgain);
  }
  return allowed;
}

// Reads what the driver holds as far as there is room. False: gone.
bool FillReceiveBuffer(Line& l, bool ready) {
  unsigned char bytes[kReceiveBuffer];
  const std::size_t room = ReceiveRoom(l.received);
  if (room == 0) return true;
  std::size_t got = 0;
  if (ReadDriver(l, bytes, room, ready, got) == Look::Gone) return false;
  for (std::size_t i = 0; i < got; ++i) {
    unsigned char byte = 0;
    if (!DecodeMark(l.marks, bytes[i], byte)) continue;
    if (l.dataBits == 7) byte &= 0x7F;
    PutReceived(l.received, byte);
  }
  return true;
}

// Stops the far end when our buffer nears full and lets it go when it nears empty.
void HoldFarEnd(Line& l) {
  if (l.flow != 1) return;
  const bool hold =
      l.stoppedPeer ? l.received.count > kReceiveNearEmpty : l.received.count >= kReceiveNearFull;
  if (hold == l.stoppedPeer) return;
  const unsigned char byte = hold ? kXoff : kXon;
  if (write(l.fd, &byte, 1) == 1) l.stoppedPeer = hold;
}

SerialProblem ProblemOf(int error) {
  switch (error) {
    case EBUSY:
    case EWOULDBLOCK:
      return SerialProblem::Busy;
    case EACCES:
    case EPERM:
      return SerialProblem::Rights;
    default:
      return SerialProblem::Missing;
  }
}

// The far ends of pseudo-terminals have majors of their own.
bool IsPseudoTerminal(int fd) {
  struct stat node = {};
  if (fstat(fd, &node) != 0 || !S_ISCHR(node.st_mode)) return false;
  const unsigned number = major(node.st_rdev);
  return number == 3 || (number >= 136 && number <= 143);
}

bool ClaimLine(const Line& l, SerialProblem& problem) {
  // The lock stops every second opener, the system's own mark those without its rights.
  if (flock(l.fd, LOCK_EX | LOCK_NB) != 0 || ioctl(l.fd, TIOCEXCL) != 0) {
    problem = errno == ENOTTY ? SerialProblem::Missing : ProblemOf(errno);
    return false;
  }
  return true;
}

void RaiseModemLines(const Line& l) {
  int bits = l.flow == 2 ? TIOCM_DTR : TIOCM_DTR | TIOCM_RTS;
  // A pseudo-terminal has none; that is no error.
  (void)ioctl(l.fd, TIOCMBIS, &bits);
}

void GiveBack(Line& l) {
  (void)ioctl(l.fd, TIOCNXCL);
  close(l.fd);
  l.fd = -1;
  DropWake(l);
}

}  // namespace

int ListSerialPorts(SerialName* names, int capacity) {
  const int count = ListPortsIn("/dev", "/sys", names, capacity);
  return AddOfferedLines(OfferedLinesFolder(std::getenv("XDG_RUNTIME_DIR")), names, count,
                         capacity);
}

std::u16string SerialGroup(const SerialSettings& settings) {
  return GroupOfPath(DevicePath(settings.port, "/dev"));
}

bool OpenSerial(const SerialSettings& settings, SerialProblem& problem) {
  problem = SerialProblem::Busy;
  if (line.fd >= 0) return false;
  line = Line{};
  Line& l = line;
  const std::string path = DevicePath(settings.port, "/dev");
  problem = SerialProblem::Missing;
  if (path.empty()) return false;
  do {
    l.fd = open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
  } while (l.fd < 0 && errno == EINTR);
  if (l.fd < 0) {
    problem = ProblemOf(errno);
    return false;
  }
  if (!ClaimLine(l, problem)) {
    close(l.fd);
    l.fd = -1;
    return false;
  }
  const bool pseudo = IsPseudoTerminal(l.fd);
  if (!ConfigureLine(l.fd, settings, pseudo) || !MakeWake(l)) {
    problem = SerialProblem::Refused;
    GiveBack(l);
    return false;
  }
  l.dataBits = settings.dataBits;
  l.flow = settings.flow;
  // A divider may make the line a little slower than asked; reckoned with the rate asked for,
  // its bytes would pile up below.
  SerialSettings taken = settings;
  taken.baud = std::min(settings.baud, LineRateOf(l.fd));
  l.rate.byteNs = pseudo && !pacePseudoTerminals ? 0 : ByteNanoseconds(taken);
  RaiseModemLines(l);
  // What a pseudo-terminal holds in this direction belongs to the reader at its other end.
  (void)tcflush(l.fd, pseudo ? TCIFLUSH : TCIOFLUSH);
  problem = SerialProblem::None;
  return true;
}

bool ReadSerial(void* bytes, std::size_t capacity, std::size_t& got) {
  got = 0;
  Line& l = line;
  if (l.fd < 0) return false;
  unsigned char* out = static_cast<unsigned char*>(bytes);
  const std::int64_t start = Now();
  std::int64_t until = start + kReadTotal;
  bool alive = FillReceiveBuffer(l, false);
  while (true) {
    const std::size_t taken = TakeReceived(l.received, out + got, capacity - got);
    got += taken;
    HoldFarEnd(l);
    if (got == capacity) return true;
    // What arrived before the end is handed on; the next call tells the end.
    if (!alive) return got > 0;
    const std::int64_t now = Now();
    if (taken > 0) until = std::min(now + kReadInterval, start + kReadTotal);
    if (now >= until) return true;
    const Ready ready = WaitForLine(l, false, until - now);
    if (ready.woken) return true;
    if (ready.input) {
      alive = FillReceiveBuffer(l, true);
    } else {
      alive = !ready.gone;
    }
  }
}

bool WriteSerial(const void* bytes, std::size_t count, std::size_t& written) {
  written = 0;
  Line& l = line;
  if (l.fd < 0) return false;
  const unsigned char* in = static_cast<const unsigned char*>(bytes);
  // A chunk of which a part went out before the stall does not start the five seconds anew.
  if (!l.stalled) l.lastTaken = Now();
  l.stalled = false;
  std::int64_t retryAt = 0;
  while (written < count) {
    const std::int64_t now = Now();
    const std::size_t left = count - written;
    if (!l.back.stopped) l.unsent = Waiting(l, now);
    const Allowance allowed = AllowanceOf(l, left, now, retryAt);
    const Ready ready = WaitForLine(l, allowed.bytes > 0, allowed.wait);
    if (ready.woken) return true;
    if (ready.gone || (ready.input && !TakeBackChannel(l))) return Lost(l);
    if (!l.back.stopped && allowed.bytes > 0 && ready.output) {
      const ssize_t taken = write(l.fd, in + written, std::min(left, allowed.bytes));
      if (taken < 0 && errno != EAGAIN && errno != EINTR) return Lost(l);
      if (taken > 0) {
        l.emptied = false;
        l.lastTaken = Now();
        l.unsent += taken;
        AddToLine(l.rate, l.lastTaken, taken);
        written += static_cast<std::size_t>(taken);
        continue;
      }
      retryAt = now + kRetry;
    }
    if (now - l.lastTaken >= kStall) {
      l.stalled = true;
      return true;
    }
  }
  return true;
}

bool SerialHeld() { return held; }

bool DrainSerial() {
  Line& l = line;
  if (l.fd < 0) return false;
  std::int64_t lastLeft = Now();
  std::int64_t least = kDriverBytes + 1;
  while (true) {
    const std::int64_t now = Now();
    const std::int64_t waiting = l.unsent = Waiting(l, now);
    if (waiting == 0) {
      l.emptied = true;
      return true;
    }
    if (waiting < least) {
      least = waiting;
      lastLeft = now;
    }
    if (now - lastLeft >= kStall) return false;
    std::int64_t wait = waiting * l.rate.byteNs;
    if (wait < kRetry) wait = kRetry;
    if (wait > 100 * kMillisecond) wait = 100 * kMillisecond;
    const Ready ready = WaitForLine(l, false, wait);
    if (ready.woken) return false;
    if (ready.gone || (ready.input && !TakeBackChannel(l))) return Lost(l);
  }
}

std::size_t SerialUnsent() {
  Line& l = line;
  if (l.fd >= 0 && !l.gone) l.unsent = Waiting(l, Now());
  return static_cast<std::size_t>(l.unsent);
}

void CloseSerial() {
  Line& l = line;
  if (l.fd < 0) return;
  // A close with bytes waiting behind a stopped line blocks for up to half a minute.
  if (!l.emptied) (void)tcflush(l.fd, TCOFLUSH);
  (void)tcflush(l.fd, TCIFLUSH);
  if (l.stoppedPeer) (void)!write(l.fd, &kXon, 1);
  held = false;
  (void)tcflow(l.fd, TCOON);
  GiveBack(l);
}

void WakeSerial() {
  const std::lock_guard<std::mutex> hold(wakeGate);
  for (const int wake : wakes) {
    const std::uint64_t one = 1;
    if (wake >= 0) (void)!write(wake, &one, sizeof(one));
  }
}

std::size_t SerialLineErrors() { return line.marks.errors; }

std::size_t SerialBackChannelBytes() { return line.back.ordinary; }

}  // namespace platform
