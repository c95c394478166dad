// The control at the far end of the cable, on a pseudo-terminal, for tests and for trying the
// workbench without a machine.
//
// A program of its own; it knows nothing of the workbench but the serial line. One loop, no
// threads: commands from standard input, the line, and what is due by the clock.

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>
#include <time.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "platform/posix/offered_lines.h"

namespace {

constexpr unsigned char kXon = 0x11;
constexpr unsigned char kXoff = 0x13;
constexpr int kClearedMs = 60;             // the far end has opened and cleared the line by then
constexpr int kTakenWaitMs = 2000;         // a program asked for waits that long for a taken line
constexpr int kGraceBytes = 64;            // what a sender's driver may hold when XOFF arrives
constexpr std::int64_t kSettleMs = 100;    // and how long the pseudo-terminal may carry it ...
constexpr int kSettleTurns = 20;           // ... to a control that a loaded machine lets run
constexpr std::int64_t kLongHoldMs = 200;  // of one in 32 in a storm; long enough to see more
constexpr int kBitsPerByte = 11;           // start, seven data bits, parity, two stop bits
constexpr int kSendPiece = 64;
constexpr int kArmedMs = 500;  // a line held this long is more than a port check

constexpr char kHelp[] =
    "control_sim: a machine control at the far end of a serial cable.\n"
    "\n"
    "It opens a pseudo-terminal, prints \"PORT <path>\" and waits. While it runs the setup\n"
    "panel of MORVA lists that line as a simulated control: choose it there, press SEND.\n"
    "\n"
    "Options\n"
    "  --hidden          MORVA is not to list the line\n"
    "  --ini FILE        write Port=<path> under [DNC] of this MORVA.ini; the rest stays\n"
    "  --save FILE       save each received program here\n"
    "  --send FILE       send this program each time MORVA has armed RECEIVE\n"
    "  --baud N          read and send at this rate instead of at once\n"
    "  --hold-after N    send XOFF once N bytes have arrived ...\n"
    "  --hold-ms MS      ... and XON after MS milliseconds (left out: at \"release\")\n"
    "  --storm SEED      hold and release at random all the time\n"
    "  --noise N         send N random bytes on the back channel\n"
    "  --stay            go on when standard input ends\n"
    "  --help            this page\n"
    "\n"
    "Commands on standard input\n"
    "  hold [MS]         send XOFF, with MS followed by XON after MS milliseconds\n"
    "  release           send XON\n"
    "  storm SEED        random holds; storm 0 ends them\n"
    "  noise N           N random bytes on the back channel, never XON or XOFF\n"
    "  type TEXT         exactly these bytes on the back channel; \\xHH is one byte\n"
    "  send FILE         send the file now, obeying XOFF and XON\n"
    "  save FILE         save received programs here from now on\n"
    "  silence, listen   stop and go on reading the line\n"
    "  vanish            the cable is gone\n"
    "  clear             forget what has arrived\n"
    "  status            one line of counts\n"
    "  help              this page\n"
    "  quit              end\n"
    "\n"
    "Reports\n"
    "  HOLD at=N         XOFF went out after N bytes\n"
    "  RELEASE held=MS after=N late=N\n"
    "                    XON went out; bytes since XOFF, and how many of them came later\n"
    "                    than 100 ms and 20 looks at the line after it\n"
    "  LATE N bytes      more than 64 of them: the sender did not stop\n"
    "  PROGRAM N         a program of N bytes has arrived, from % to %\n"
    "  SAVED FILE        and was saved\n"
    "  SENT N xoff=N     a file went out; how often we were stopped\n";

struct Options {
  std::string ini;
  std::string send;
  bool stay = false;
  bool hidden = false;
};

struct Control {
  int master = -1;
  int slave = -1;  // kept open, so that the workbench may open and close as it likes
  std::string path;
  bool silent = false;

  // Receiving.
  std::string savePath;
  std::string program;
  std::uint64_t received = 0;
  std::uint64_t programs = 0;
  bool inProgram = false;
  bool lineStart = true;
  bool closing = false;  // the closing % stands, its line end may follow
  std::int64_t lastByteMs = 0;

  // Rate: bytes that may pass, in 1/1000.
  std::int64_t baud = 0;
  std::int64_t credit = 0;
  std::int64_t creditAtUs = 0;

  // Holding.
  bool held = false;
  bool quiet = false;  // a hold of the storm, not reported one by one
  std::int64_t heldAtMs = 0;
  std::int64_t releaseAtMs = 0;  // 0: at "release"
  std::uint64_t heldFrom = 0;
  int heldTurns = 0;  // of the loop since then, with nothing left unread at the end of each
  std::uint64_t lateBytes = 0;
  bool lateTold = false;
  std::uint64_t holds = 0;
  std::uint64_t lateHolds = 0;
  std::uint64_t holdAfter = 0;  // 0: not
  std::int64_t holdAfterMs = 0;

  // Storm and noise.
  std::uint64_t seed = 0;  // 0: no storm
  std::uint64_t random = 1;
  std::uint64_t stormAt = 0;
  std::uint64_t noiseLeft = 0;

  // Sending.
  std::string outgoing;
  std::size_t outgoingAt = 0;
  bool sending = false;
  std::string wantedSend;  // asked for, waiting for the line to be taken
  std::int64_t wantedSinceMs = 0;
  std::int64_t wantedTakenMs = 0;
  bool stoppedByPeer = false;
  std::uint64_t stops = 0;
  std::int64_t lineHeldSinceMs = 0;
  std::uint64_t receivedAtOpen = 0;
  bool sentThisOpen = false;
};

std::int64_t NowUs() {
  timespec now = {};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return now.tv_sec * 1000000 + now.tv_nsec / 1000;
}

std::int64_t NowMs() { return NowUs() / 1000; }

// xorshift: the same storm for the same seed on every machine.
std::uint64_t Random(Control& c) {
  c.random ^= c.random << 13;
  c.random ^= c.random >> 7;
  c.random ^= c.random << 17;
  return c.random;
}

void Report(const char* form, unsigned long long a = 0, unsigned long long b = 0,
            unsigned long long d = 0) {
  std::printf(form, a, b, d);
  std::printf("\n");
  std::fflush(stdout);
}

// The file by which the line is listed among the ports of the same user; empty where none is.
std::string OfferLine(const std::string& line) {
  const std::string folder = platform::OfferedLinesFolder(std::getenv("XDG_RUNTIME_DIR"));
  if (mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST) return {};
  const std::string path = folder + "/" + std::to_string(getpid());
  FILE* file = std::fopen(path.c_str(), "wb");
  if (!file) return {};
  std::fprintf(file, "%s\nSimulated control\n", line.c_str());
  return std::fclose(file) == 0 ? path : std::string();
}

bool OpenLine(Control& c) {
  c.master = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
  if (c.master < 0 || grantpt(c.master) != 0 || unlockpt(c.master) != 0) return false;
  char path[128];
  if (ptsname_r(c.master, path, sizeof(path)) != 0) return false;
  c.path = path;
  c.slave = open(path, O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
  if (c.slave < 0) return false;
  // Without this the line would echo what we send until the workbench sets it up.
  termios raw;
  if (tcgetattr(c.slave, &raw) != 0) return false;
  cfmakeraw(&raw);
  return tcsetattr(c.slave, TCSANOW, &raw) == 0;
}

// Whether the workbench has the line open: it takes it for itself alone.
bool LineTaken(const Control& c) {
  int taken = 0;
  return c.slave >= 0 && ioctl(c.slave, TIOCGEXCL, &taken) == 0 && taken != 0;
}

// Control bytes must go out; what nobody takes is lost, as on a cable.
bool PutBytes(Control& c, const void* bytes, std::size_t count) {
  if (c.master < 0) return false;
  return write(c.master, bytes, count) == static_cast<ssize_t>(count);
}

void SaveProgram(Control& c) {
  ++c.programs;
  Report("PROGRAM %llu", c.program.size());
  if (!c.savePath.empty()) {
    FILE* file = std::fopen(c.savePath.c_str(), "wb");
    const bool saved =
        file && std::fwrite(c.program.data(), 1, c.program.size(), file) == c.program.size();
    if (file && std::fclose(file) == 0 && saved) {
      std::printf("SAVED %s\n", c.savePath.c_str());
    } else {
      std::printf("ERROR cannot write %s\n", c.savePath.c_str());
    }
    std::fflush(stdout);
  }
  c.program.clear();
  c.inProgram = false;
  c.closing = false;
  c.lineStart = true;
}

// A program runs from a % at a line start to the next one, with its line end.
void TakeProgramByte(Control& c, unsigned char byte) {
  if (c.closing && byte != '\r' && byte != '\n') SaveProgram(c);
  if (byte == '%' && c.lineStart) {
    c.closing = c.inProgram;
    c.inProgram = true;
  }
  if (c.inProgram) c.program.push_back(static_cast<char>(byte));
  c.lineStart = byte == '\n' || byte == '\r' || (c.lineStart && !c.inProgram);
  if (c.closing && byte == '\n') SaveProgram(c);
}

void SendXoff(Control& c, bool quiet, std::int64_t holdMs) {
  if (c.held) return;
  // In a storm the eighth bit comes and goes, as with a parity that does not match.
  const unsigned char byte = quiet && Random(c) % 4 == 0 ? (kXoff | 0x80) : kXoff;
  if (!PutBytes(c, &byte, 1)) return;
  c.held = true;
  c.quiet = quiet;
  c.heldAtMs = NowMs();
  c.releaseAtMs = holdMs > 0 ? c.heldAtMs + holdMs : 0;
  c.heldFrom = c.received;
  c.heldTurns = 0;
  c.lateBytes = 0;
  c.lateTold = false;
  ++c.holds;
  if (!quiet) Report("HOLD at=%llu", c.received);
}

void SendXon(Control& c) {
  const unsigned char byte = c.quiet && Random(c) % 4 == 0 ? (kXon | 0x80) : kXon;
  if (!PutBytes(c, &byte, 1) || !c.held) return;
  c.held = false;
  if (!c.quiet) {
    Report("RELEASE held=%llu after=%llu late=%llu",
           static_cast<unsigned long long>(NowMs() - c.heldAtMs), c.received - c.heldFrom,
           c.lateBytes);
  }
}

void CountHeldBytes(Control& c, std::size_t count) {
  if (!c.held || NowMs() - c.heldAtMs <= kSettleMs || c.heldTurns < kSettleTurns) return;
  c.lateBytes += count;
  if (c.lateBytes <= kGraceBytes || c.lateTold) return;
  c.lateTold = true;
  ++c.lateHolds;
  Report("LATE %llu bytes", c.lateBytes);
}

void TakeBytes(Control& c, const unsigned char* bytes, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    const unsigned char byte = bytes[i];
    if (byte == kXoff || byte == kXon) {
      if (byte == kXoff && !c.stoppedByPeer) ++c.stops;
      c.stoppedByPeer = byte == kXoff;
      continue;
    }
    TakeProgramByte(c, byte);
  }
  c.received += count;
  c.lastByteMs = NowMs();
  CountHeldBytes(c, count);
  if (c.holdAfter > 0 && c.received >= c.holdAfter) {
    c.holdAfter = 0;
    SendXoff(c, false, c.holdAfterMs);
  }
  if (c.seed != 0 && !c.held && c.received >= c.stormAt) {
    const bool longHold = c.holds % 32 == 0;
    SendXoff(c, true, longHold ? kLongHoldMs : 1 + static_cast<std::int64_t>(Random(c) % 3));
    c.stormAt = c.received + 1 + Random(c) % 65536;
  }
}

void GrowCredit(Control& c) {
  if (c.baud <= 0) return;
  const std::int64_t now = NowUs();
  const std::int64_t grown = (now - c.creditAtUs) * c.baud / (kBitsPerByte * 1000);
  c.credit += grown;
  c.creditAtUs = now;
  // A line that was quiet saves nothing up.
  if (c.credit > 64000) c.credit = 64000;
}

// How many bytes may pass now in either direction.
std::size_t Passing(const Control& c, std::size_t wanted) {
  if (c.baud <= 0) return wanted;
  const std::int64_t whole = c.credit / 1000;
  if (whole <= 0) return 0;
  return wanted < static_cast<std::size_t>(whole) ? wanted : static_cast<std::size_t>(whole);
}

bool ReadsLine(const Control& c) {
  return c.master >= 0 && !c.silent && (c.held || c.sending || Passing(c, 1) > 0);
}

void ReadLine(Control& c) {
  static unsigned char bytes[65536];
  // While held everything is read at once: what the pseudo-terminal carries was on its way.
  const std::size_t wanted = c.held || c.sending ? sizeof(bytes) : Passing(c, sizeof(bytes));
  if (wanted == 0) return;
  const ssize_t got = read(c.master, bytes, wanted);
  if (got <= 0) return;
  // What comes while we hold is a store that fills, not time on the line: a debt of it would keep
  // us from reading for seconds behind XON.
  if (c.baud > 0) c.credit = c.credit > got * 1000 ? c.credit - got * 1000 : 0;
  TakeBytes(c, bytes, static_cast<std::size_t>(got));
}

bool LoadFile(const std::string& path, std::string& bytes) {
  FILE* file = std::fopen(path.c_str(), "rb");
  if (!file) return false;
  bytes.clear();
  char buffer[65536];
  std::size_t got = 0;
  while ((got = std::fread(buffer, 1, sizeof(buffer), file)) > 0) bytes.append(buffer, got);
  const bool whole = std::ferror(file) == 0;
  std::fclose(file);
  return whole;
}

void BeginSend(Control& c, const std::string& path) {
  if (!LoadFile(path, c.outgoing)) {
    std::printf("ERROR cannot read %s\n", path.c_str());
    std::fflush(stdout);
    return;
  }
  c.outgoingAt = 0;
  c.stops = 0;
  c.stoppedByPeer = false;
  c.sending = true;
}

void SendSome(Control& c) {
  if (c.stoppedByPeer) return;
  std::size_t piece = c.outgoing.size() - c.outgoingAt;
  if (piece > kSendPiece) piece = kSendPiece;
  piece = Passing(c, piece);
  if (piece > 0) {
    const ssize_t taken = write(c.master, c.outgoing.data() + c.outgoingAt, piece);
    if (taken > 0) {
      c.outgoingAt += static_cast<std::size_t>(taken);
      if (c.baud > 0) c.credit -= taken * 1000;
    }
  }
  if (c.outgoingAt < c.outgoing.size()) return;
  c.sending = false;
  Report("SENT %llu xoff=%llu", c.outgoing.size(), c.stops);
}

void SendNoise(Control& c) {
  unsigned char bytes[16];
  std::size_t count = c.noiseLeft < sizeof(bytes) ? c.noiseLeft : sizeof(bytes);
  for (std::size_t i = 0; i < count; ++i) {
    do {
      bytes[i] = static_cast<unsigned char>(Random(c));
    } while ((bytes[i] & 0x7F) == kXon || (bytes[i] & 0x7F) == kXoff);
  }
  (void)PutBytes(c, bytes, count);
  c.noiseLeft -= count;
}

// A program asked for goes out once the far end has held the line for a moment: opening it
// drops what came before. Where nobody takes the line it goes out all the same.
void SendWhenTaken(Control& c, std::int64_t now) {
  if (c.wantedSend.empty()) return;
  if (c.master >= 0 && !LineTaken(c)) c.wantedTakenMs = now;
  const bool settled = now - c.wantedTakenMs >= kClearedMs;
  if (!settled && now - c.wantedSinceMs < kTakenWaitMs) return;
  const std::string path = c.wantedSend;
  c.wantedSend.clear();
  BeginSend(c, path);
}

void RunDue(Control& c, const Options& options) {
  const std::int64_t now = NowMs();
  if (c.held && c.releaseAtMs > 0 && now >= c.releaseAtMs) SendXon(c);
  if (c.closing && now - c.lastByteMs > 200) SaveProgram(c);
  if (c.noiseLeft > 0 && c.master >= 0) SendNoise(c);
  SendWhenTaken(c, now);
  if (options.send.empty() || c.master < 0) return;
  if (!LineTaken(c)) {
    c.lineHeldSinceMs = 0;
    c.sentThisOpen = false;
    return;
  }
  if (c.lineHeldSinceMs == 0) {
    c.lineHeldSinceMs = now;
    c.receivedAtOpen = c.received;
  }
  if (!c.sentThisOpen && now - c.lineHeldSinceMs >= kArmedMs && c.received == c.receivedAtOpen) {
    c.sentThisOpen = true;
    BeginSend(c, options.send);
  }
}

std::string Unescaped(const std::string& text) {
  std::string bytes;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text.compare(i, 2, "\\x") == 0 && i + 4 <= text.size()) {
      bytes.push_back(static_cast<char>(std::strtoul(text.substr(i + 2, 2).c_str(), nullptr, 16)));
      i += 3;
    } else {
      bytes.push_back(text[i]);
    }
  }
  return bytes;
}

void StartStorm(Control& c, std::uint64_t seed) {
  c.seed = seed;
  c.random = seed * 0x9E3779B97F4A7C15u + 1;
  c.stormAt = c.received;
  if (seed == 0 && c.held && c.quiet) SendXon(c);
}

void TellStatus(const Control& c) {
  std::printf(
      "STATUS received=%llu programs=%llu line=%s held=%d holds=%llu late=%llu noise=%llu "
      "sending=%d\n",
      static_cast<unsigned long long>(c.received), static_cast<unsigned long long>(c.programs),
      c.master < 0   ? "gone"
      : LineTaken(c) ? "taken"
                     : "free",
      c.held ? 1 : 0, static_cast<unsigned long long>(c.holds),
      static_cast<unsigned long long>(c.lateHolds), static_cast<unsigned long long>(c.noiseLeft),
      c.sending ? 1 : 0);
  std::fflush(stdout);
}

void Forget(Control& c) {
  c.received = 0;
  c.program.clear();
  c.inProgram = false;
  c.closing = false;
  c.lineStart = true;
  c.stormAt = 0;
}

void Vanish(Control& c) {
  if (c.master >= 0) close(c.master);
  if (c.slave >= 0) close(c.slave);
  c.master = -1;
  c.slave = -1;
}

// False: quit.
bool Obey(Control& c, const std::string& line) {
  const std::size_t blank = line.find(' ');
  const std::string word = line.substr(0, blank);
  const std::string rest = blank == std::string::npos ? "" : line.substr(blank + 1);
  const std::int64_t number = std::strtoll(rest.c_str(), nullptr, 10);
  if (word == "quit") return false;
  if (word == "help") {
    std::fputs(kHelp, stdout);
    std::fflush(stdout);
  } else if (word == "hold") {
    SendXoff(c, false, number);
  } else if (word == "release") {
    SendXon(c);
  } else if (word == "storm") {
    StartStorm(c, static_cast<std::uint64_t>(number));
  } else if (word == "noise") {
    c.noiseLeft += static_cast<std::uint64_t>(number > 0 ? number : 0);
  } else if (word == "type") {
    const std::string bytes = Unescaped(rest);
    (void)PutBytes(c, bytes.data(), bytes.size());
  } else if (word == "send") {
    c.wantedSend = rest;
    c.wantedSinceMs = c.wantedTakenMs = NowMs();
  } else if (word == "save") {
    c.savePath = rest;
  } else if (word == "silence" || word == "listen") {
    c.silent = word == "silence";
  } else if (word == "vanish") {
    Vanish(c);
  } else if (word == "clear") {
    Forget(c);
  } else if (word == "status") {
    TellStatus(c);
  } else if (!word.empty()) {
    std::printf("ERROR unknown command \"%s\"; see help\n", word.c_str());
    std::fflush(stdout);
  }
  return true;
}

bool SameWord(const std::string& a, const char* b) { return strcasecmp(a.c_str(), b) == 0; }

// The file with Port under [DNC] set; every other line stays byte for byte.
std::string WithPort(const std::string& file, const std::string& port) {
  std::string out;
  bool inSection = false;
  bool done = false;
  for (std::size_t at = 0; at < file.size();) {
    std::size_t end = file.find('\n', at);
    end = end == std::string::npos ? file.size() : end + 1;
    const std::string raw = file.substr(at, end - at);
    at = end;
    std::string line = raw;
    while (!line.empty() && (line.back() == '\n' || line.back() == '\r' || line.back() == ' ')) {
      line.pop_back();
    }
    if (!line.empty() && line[0] == '[') {
      if (inSection && !done) {
        out += "Port=" + port + "\r\n";
        done = true;
      }
      inSection = SameWord(line, "[DNC]");
    }
    if (inSection && !done && SameWord(line.substr(0, line.find('=')), "Port")) {
      out += "Port=" + port + "\r\n";
      done = true;
      continue;
    }
    out += raw;
  }
  if (done) return out;
  if (!out.empty() && out.back() != '\n') out += "\r\n";
  if (!inSection) out += "[DNC]\r\n";
  return out + "Port=" + port + "\r\n";
}

bool WriteIni(const std::string& path, const std::string& port) {
  std::string file;
  (void)LoadFile(path, file);  // a missing one is made
  file = WithPort(file, port);
  const std::string temporary = path + ".new";
  FILE* out = std::fopen(temporary.c_str(), "wb");
  if (!out) return false;
  const bool whole = std::fwrite(file.data(), 1, file.size(), out) == file.size();
  return std::fclose(out) == 0 && whole && std::rename(temporary.c_str(), path.c_str()) == 0;
}

// False: unknown or incomplete.
bool ReadOptions(int count, char** words, Control& c, Options& options) {
  for (int i = 1; i < count; ++i) {
    const std::string word = words[i];
    if (word == "--stay" || word == "--hidden") {
      (word == "--stay" ? options.stay : options.hidden) = true;
      continue;
    }
    if (i + 1 >= count) return false;
    const std::string value = words[++i];
    const std::int64_t number = std::strtoll(value.c_str(), nullptr, 10);
    if (word == "--ini") {
      options.ini = value;
    } else if (word == "--save") {
      c.savePath = value;
    } else if (word == "--send") {
      options.send = value;
    } else if (word == "--baud" && number > 0) {
      c.baud = number;
    } else if (word == "--hold-after" && number > 0) {
      c.holdAfter = static_cast<std::uint64_t>(number);
    } else if (word == "--hold-ms" && number > 0) {
      c.holdAfterMs = number;
    } else if (word == "--storm" && number > 0) {
      StartStorm(c, static_cast<std::uint64_t>(number));
    } else if (word == "--noise" && number > 0) {
      c.noiseLeft = static_cast<std::uint64_t>(number);
    } else {
      return false;
    }
  }
  return true;
}

// Milliseconds until something may be due; with nothing at hand the loop wakes rarely.
int WaitMs(const Control& c, const Options& options) {
  if (c.baud > 0 || c.held || c.noiseLeft > 0) return 1;
  if (!c.wantedSend.empty()) return 10;
  if (c.closing || !options.send.empty()) return 50;
  return 1000;
}

// Commands come in whole lines. False: quit.
bool ReadCommands(Control& c, std::string& pending, bool& ended) {
  char bytes[4096];
  const ssize_t got = read(STDIN_FILENO, bytes, sizeof(bytes));
  if (got == 0) ended = true;
  if (got <= 0) return true;
  pending.append(bytes, static_cast<std::size_t>(got));
  for (std::size_t end = 0; (end = pending.find('\n')) != std::string::npos;) {
    const std::string line = pending.substr(0, end);
    pending.erase(0, end + 1);
    if (!Obey(c, line)) return false;
  }
  return true;
}

void Run(Control& c, const Options& options) {
  std::string pending;
  bool ended = false;
  while (!ended || options.stay) {
    GrowCredit(c);
    pollfd watched[2] = {{c.master, 0, 0}, {ended ? -1 : STDIN_FILENO, POLLIN, 0}};
    if (ReadsLine(c)) watched[0].events |= POLLIN;
    if (c.sending && !c.stoppedByPeer && Passing(c, 1) > 0) watched[0].events |= POLLOUT;
    if (watched[0].events == 0) watched[0].fd = -1;
    if (poll(watched, 2, WaitMs(c, options)) < 0 && errno != EINTR) return;
    if (c.held) ++c.heldTurns;
    if (watched[0].revents & POLLIN) ReadLine(c);
    if (c.sending && c.master >= 0 && (watched[0].revents & POLLOUT)) SendSome(c);
    RunDue(c, options);
    if (watched[1].revents != 0 && !ReadCommands(c, pending, ended)) return;
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 2 && std::strcmp(argv[1], "--help") == 0) {
    std::fputs(kHelp, stdout);
    return 0;
  }
  Control control;
  Options options;
  if (!ReadOptions(argc, argv, control, options)) {
    std::fputs("control_sim: unknown or incomplete option; see --help\n", stderr);
    return 2;
  }
  std::signal(SIGPIPE, SIG_IGN);
  control.creditAtUs = NowUs();
  if (!OpenLine(control)) {
    std::perror("control_sim: no pseudo-terminal");
    return 1;
  }
  if (!options.ini.empty() && !WriteIni(options.ini, control.path)) {
    std::fprintf(stderr, "control_sim: cannot write %s\n", options.ini.c_str());
    return 1;
  }
  const std::string offer = options.hidden ? std::string() : OfferLine(control.path);
  std::printf("PORT %s\n", control.path.c_str());
  std::fflush(stdout);
  Run(control, options);
  Vanish(control);
  if (!offer.empty()) std::remove(offer.c_str());
  return 0;
}
