// The serial line with its far end in the test's hand.
//
// The line has no rate of its own: what may be sent is accepted at once. Waits pass in
// virtual time. What a cable does between two calls of the application is told from outside
// while the clock stands still.

#include "platform/serial.h"

#include <algorithm>
#include <deque>
#include <string>
#include <utility>
#include <vector>

#include "platform/headless/headless_internal.h"
#include "platform/headless/worker.h"

namespace headless {
namespace {

constexpr int kListedPorts = 64;  // COM1 to COM64

struct Port {
  std::u16string name;
  PortState state = PortState::Absent;
};

struct Arrived {
  unsigned char byte = 0;
  std::uint64_t moment = 0;
};

struct Line {
  std::vector<Port> ports;
  platform::SerialSettings settings;
  std::u16string openPort;
  bool open = false;
  bool unplugged = false;
  bool woken = false;
  bool stopped = false;  // by an XOFF among the peer's bytes
  std::uint64_t stalledUntil = 0;
  std::deque<Arrived> incoming;
  std::size_t buffer = 0;  // bytes that the port takes while the peer holds it
  std::string pending;     // those
  std::string sent;
  std::size_t backChannel = 0;
};
Line line;

void ResetLine() { line = Line(); }
ResetHook hook(1, ResetLine);

std::u16string Folded(std::u16string_view name) {
  std::u16string out(name);
  for (char16_t& c : out) {
    if (c >= u'a' && c <= u'z') c = static_cast<char16_t>(c - u'a' + u'A');
  }
  return out;
}

Port* PortOf(std::u16string_view name) {
  const std::u16string folded = Folded(name);
  for (Port& port : line.ports) {
    if (Folded(port.name) == folded) return &port;
  }
  return nullptr;
}

std::u16string ComName(int number) {
  std::u16string name = u"COM";
  if (number >= 10) name.push_back(static_cast<char16_t>(u'0' + number / 10));
  name.push_back(static_cast<char16_t>(u'0' + number % 10));
  return name;
}

template <std::size_t Units>
void CopyName(char16_t (&to)[Units], std::u16string_view from) {
  const std::size_t count = std::min(from.size(), Units - 1);
  std::copy_n(from.begin(), count, to);
  to[count] = 0;
}

bool Accepted(const platform::SerialSettings& s) {
  return s.baud > 0 && s.dataBits >= 5 && s.dataBits <= 8 && s.parity >= 0 && s.parity <= 2 &&
         (s.stopBits == 0 || s.stopBits == 2);
}

bool Gone() { return !line.open || line.unplugged || WorkerMustFinish(); }

// The wait of whoever holds the line. On the user's own thread nobody else can act meanwhile.
void WaitOnLine(std::uint64_t moment) {
  if (OnWorker()) {
    WaitInWorker(moment, true);
  } else {
    MoveClockTo(moment);
  }
}

unsigned char Masked(unsigned char byte) {
  return line.settings.dataBits == 7 ? static_cast<unsigned char>(byte & 0x7F) : byte;
}

// Bytes that came back while sending: flow control is obeyed, all else counted.
void TakeBackChannel() {
  for (const Arrived& each : line.incoming) {
    const auto plain = static_cast<unsigned char>(each.byte & 0x7F);
    if (line.settings.flow == 1 && plain == platform::kXon) {
      line.stopped = false;
    } else if (line.settings.flow == 1 && plain == platform::kXoff) {
      line.stopped = true;
    } else {
      ++line.backChannel;
    }
  }
  line.incoming.clear();
}

// A control that holds the line has done it by XOFF or by its ready wire; a line without
// flow control does not listen.
bool HeldByPeer() {
  const bool listens = line.settings.flow == 1 || line.settings.flow == 2;
  return line.stopped || (listens && VirtualNow() < line.stalledUntil);
}

bool HeldByXoff() { return HeldByPeer() && line.settings.flow == 1; }

void LetPendingGo() {
  line.sent += line.pending;
  line.pending.clear();
}

std::size_t TakeIncoming(unsigned char* to, std::size_t capacity) {
  std::size_t count = 0;
  while (count < capacity && !line.incoming.empty()) {
    to[count++] = Masked(line.incoming.front().byte);
    line.incoming.pop_front();
  }
  return count;
}

}  // namespace

void SetPort(std::u16string_view name, PortState state) {
  Port* port = PortOf(name);
  if (!port) {
    line.ports.push_back({std::u16string(name), PortState::Absent});
    port = &line.ports.back();
  }
  port->state = state;
  const bool held = line.open && Folded(line.openPort) == Folded(name);
  line.unplugged = held && state == PortState::Absent;
  PokeWorker();
}

void PeerSend(std::string_view bytes) {
  for (char byte : bytes) {
    line.incoming.push_back({static_cast<unsigned char>(byte), VirtualNow()});
  }
  PokeWorker();
}

void PeerStall(int milliseconds) {
  line.stalledUntil = VirtualNow() + static_cast<std::uint64_t>(std::max(0, milliseconds));
  PokeWorker();
}

void SetPortBuffer(std::size_t bytes) { line.buffer = bytes; }

void PeerUnplug() {
  line.unplugged = true;
  PokeWorker();
}

std::string TakeSent() { return std::exchange(line.sent, {}); }

}  // namespace headless

namespace platform {

using headless::line;

int ListSerialPorts(SerialName* names, int capacity) {
  int count = 0;
  for (int number = 1; number <= headless::kListedPorts; ++number) {
    const std::u16string name = headless::ComName(number);
    const headless::Port* port = headless::PortOf(name);
    if (!port || port->state == headless::PortState::Absent) continue;
    if (count < capacity) {
      names[count] = SerialName();
      headless::CopyName(names[count].name, name);
      headless::CopyName(names[count].device, name);
    }
    ++count;
  }
  return count;
}

bool OpenSerial(const SerialSettings& settings, SerialProblem& problem) {
  const headless::Port* port = headless::PortOf(settings.port);
  problem = SerialProblem::None;
  if (!port || port->state == headless::PortState::Absent) {
    problem = SerialProblem::Missing;
  } else if (port->state == headless::PortState::Busy || line.open) {
    problem = SerialProblem::Busy;
  } else if (!headless::Accepted(settings)) {
    problem = SerialProblem::Refused;
  }
  if (problem != SerialProblem::None) return false;
  line.open = true;
  line.openPort = settings.port;
  line.settings = settings;
  line.woken = line.stopped = false;
  line.backChannel = 0;
  // What lay in the driver is purged. Bytes of this very moment came after the user's key,
  // whose worker only now gets its turn.
  std::erase_if(line.incoming,
                [](const headless::Arrived& each) { return each.moment < headless::VirtualNow(); });
  return true;
}

std::u16string SerialGroup(const SerialSettings&) { return {}; }

bool ReadSerial(void* bytes, std::size_t capacity, std::size_t& got) {
  auto* out = static_cast<unsigned char*>(bytes);
  const std::uint64_t last = headless::VirtualNow() + kReadTotalMs;
  std::uint64_t end = last;
  got = 0;
  for (;;) {
    if (headless::Gone()) return false;
    const std::size_t more = headless::TakeIncoming(out + got, capacity - got);
    got += more;
    const std::uint64_t now = headless::VirtualNow();
    if (more > 0) end = std::min(last, now + kReadGapMs);
    if (got == capacity || line.woken || now >= end) return true;
    headless::WaitOnLine(end);
  }
}

bool WriteSerial(const void* bytes, std::size_t count, std::size_t& written) {
  const std::uint64_t end = headless::VirtualNow() + kWriteStallMs;
  written = 0;
  for (;;) {
    if (headless::Gone()) return false;
    headless::TakeBackChannel();
    if (line.woken) return true;
    const std::size_t left = count - written;
    const bool held = headless::HeldByPeer();
    const std::size_t room = line.buffer - std::min(line.buffer, line.pending.size());
    const std::size_t taken = held ? std::min(left, room) : left;
    line.pending.append(static_cast<const char*>(bytes) + written, taken);
    written += taken;
    if (!held) headless::LetPendingGo();
    if (written == count) return true;
    const std::uint64_t now = headless::VirtualNow();
    if (now >= end) return true;
    const bool stalled = now < line.stalledUntil;
    headless::WaitOnLine(stalled ? std::min(end, line.stalledUntil) : end);
  }
}

bool SerialHeld() { return line.open && headless::HeldByXoff(); }

bool DrainSerial() {
  const std::uint64_t end = headless::VirtualNow() + kWriteStallMs;
  for (;;) {
    if (headless::Gone()) return false;
    headless::TakeBackChannel();
    if (!headless::HeldByPeer()) headless::LetPendingGo();
    if (line.pending.empty()) return true;
    const std::uint64_t now = headless::VirtualNow();
    if (line.woken || now >= end) return false;
    const bool stalled = now < line.stalledUntil;
    headless::WaitOnLine(stalled ? std::min(end, line.stalledUntil) : end);
  }
}

std::size_t SerialUnsent() { return line.pending.size(); }

void CloseSerial() {
  line.open = false;
  line.pending.clear();
  line.openPort.clear();
}

void WakeSerial() {
  line.woken = true;
  headless::PokeWorker();
}

std::size_t SerialLineErrors() { return 0; }
std::size_t SerialBackChannelBytes() { return line.backChannel; }

}  // namespace platform
