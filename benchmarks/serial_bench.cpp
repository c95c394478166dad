// How fast the transfer engine fills a pseudo-terminal, beside a bare write loop over the same
// one in the same run, and what it costs the processor while a far end reads at 115,200 baud.
//
// The far end is a process of its own, so that the times here are the sender's alone.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <string>
#include <thread>

#include "app/router.h"
#include "dnc/serial_profile.h"
#include "dnc/transfer.h"
#include "platform/events.h"
#include "platform/file.h"
#include "platform/headless/headless.h"
#include "platform/posix/serial_pace.h"
#include "targets.h"

namespace {

constexpr std::size_t kMuch = 16u << 20;
constexpr int kBaud = 115200;
constexpr int kBitsPerByte = 11;
constexpr int kLoadMilliseconds = 3000;

// Reads everything that comes, at once or at a rate in bytes per second.
[[noreturn]] void ReadFarEnd(int master, int rate) {
  static char bytes[65536];
  for (;;) {
    std::size_t wanted = sizeof(bytes);
    if (rate > 0) {
      const timespec pause = {0, 5000000};
      nanosleep(&pause, nullptr);
      wanted = static_cast<std::size_t>(rate / 200);
    }
    if (read(master, bytes, wanted) < 0) _exit(0);
  }
}

struct FarEnd {
  std::string path;
  int slave = -1;  // open for as long as the far end is there
  pid_t process = -1;

  explicit FarEnd(int rate) {
    const int master = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (master < 0 || grantpt(master) != 0 || unlockpt(master) != 0) std::abort();
    path = ptsname(master);
    slave = open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    termios raw = {};
    if (slave < 0 || tcgetattr(slave, &raw) != 0) std::abort();
    cfmakeraw(&raw);
    tcsetattr(slave, TCSANOW, &raw);
    process = fork();
    if (process < 0) std::abort();
    if (process == 0) {
      close(slave);
      ReadFarEnd(master, rate);
    }
    close(master);
  }
  ~FarEnd() {
    kill(process, SIGKILL);
    waitpid(process, nullptr, 0);
    close(slave);
  }
};

void PrepareEngine(const FarEnd& far) {
  // The engine's own limit is measured; where a rate counts, the far end holds it.
  platform::pacePseudoTerminals = false;
  morva::ClearCommands();
  morva::ResetSerialProfile();
  morva::RegisterTransferCommands();
  static const platform::Events kEvents = [] {
    platform::Events events;
    events.posted = [](std::uint32_t message, std::uint64_t first, std::uint64_t second) {
      morva::RouteMessage(message, first, second);
    };
    return events;
  }();
  platform::ListenTo(&kEvents);
  platform::FromUtf8(far.path).copy(morva::serialProfile.port, morva::kPortNameUnits - 1);
}

void HandleMessages() {
  headless::DrainPosts();
  std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

double bareRate = 0;  // MB/s of the last round

void BareWriteLoop(benchmark::State& state) {
  const FarEnd far(0);
  const std::string bytes(kMuch, 'G');
  for (auto _ : state) {
    const auto start = std::chrono::steady_clock::now();
    for (std::size_t at = 0; at < bytes.size();) {
      const std::size_t chunk = std::min<std::size_t>(morva::kSendChunk, bytes.size() - at);
      const ssize_t taken = write(far.slave, bytes.data() + at, chunk);
      if (taken > 0) {
        at += static_cast<std::size_t>(taken);
        continue;
      }
      pollfd watched = {far.slave, POLLOUT, 0};
      poll(&watched, 1, 10);
    }
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - start;
    bareRate = kMuch * 1e-6 / passed.count();
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * kMuch));
}
BENCHMARK(BareWriteLoop)->UseRealTime()->Unit(benchmark::kMillisecond);

void Engine(benchmark::State& state) {
  const FarEnd far(0);
  PrepareEngine(far);
  for (auto _ : state) {
    const auto start = std::chrono::steady_clock::now();
    morva::StartSend(std::string(kMuch, 'G'), u"Sending.");
    while (morva::transfer.active) HandleMessages();
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - start;
    targets::Note({"Serial line without a rate", "MB/s", 5, 0, 0, "bare write loop"},
                  kMuch * 1e-6 / passed.count(), bareRate);
    if (morva::dncState != morva::kDncConnected) state.SkipWithError("the send failed");
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * kMuch));
}
BENCHMARK(Engine)->UseRealTime()->Unit(benchmark::kMillisecond);

double ProcessorSeconds() {
  timespec now = {};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

// Both threads together, in percent of one processor.
void LoadAt115200Baud(benchmark::State& state) {
  const FarEnd far(kBaud / kBitsPerByte);
  PrepareEngine(far);
  double load = 0;
  for (auto _ : state) {
    const auto start = std::chrono::steady_clock::now();
    const double before = ProcessorSeconds();
    morva::StartSend(std::string(kMuch, 'G'), u"Sending.");
    std::chrono::duration<double> passed{0};
    while (morva::transfer.active && passed.count() * 1000 < kLoadMilliseconds) {
      HandleMessages();
      passed = std::chrono::steady_clock::now() - start;
    }
    load = 100 * (ProcessorSeconds() - before) / passed.count();
    morva::AbortTransfer();
    while (morva::transfer.active) HandleMessages();
  }
  state.counters["percent"] = load;
  targets::Note({"Processor load at 115,200 baud", "%", 0, 5}, load);
}
BENCHMARK(LoadAt115200Baud)->Iterations(1)->UseRealTime()->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
