// The system's calls of the serial line, as the test program's linker hands them to the test:
// seen, failed, cut short, and with a clock that moves instead of waiting.
//
// Only the thread that sets a plan is touched by it; every other call goes to the system.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace system_calls {

struct Plan {
  bool active = false;
  std::vector<std::string> seen;  // the line's calls in their order: "open", "write", ...
  int failFrom = 0;               // the n-th call on, counted from 1; 0: none
  int failCalls = 0;              // how many fail; a port that is gone fails all
  int error = 0;
  std::string failOnly;                // only calls of this name are counted; empty: every call
  std::size_t mostBytes = 0;           // that one write takes; 0: as many as it is given
  int counted = 0;                     // so far
  int openFlags = 0;                   // of the last open
  std::int32_t takenRate = 0;          // that the driver tells it made; 0: what was set
  std::int64_t (*queued)() = nullptr;  // bytes in the driver; null: what the system tells
  // Waiting moves this clock instead of time. Nanoseconds since the plan began.
  bool moveClock = false;
  std::int64_t now = 0;
  void (*written)(std::size_t bytes) = nullptr;  // each write's result, at `now`
};

// How often a thread other than the first has dropped what had come in. An open ends with it:
// what the far end sends from then on is received.
extern std::atomic<int> workerFlushes;

// The next block of just this many bytes that somebody can do without is refused; 0: none.
extern std::atomic<std::size_t> refusedBlock;

// The plan of this thread.
Plan& Mine();

// A plan from here to the end of the block.
struct Watch {
  Watch() {
    plan = Plan{};
    plan.active = true;
  }
  ~Watch() { Mine() = Plan{}; }
  Watch(const Watch&) = delete;
  Watch& operator=(const Watch&) = delete;
  Plan& plan = Mine();
};

// The far end's own calls in between.
struct Pause {
  Pause() { Mine().active = false; }
  ~Pause() { Mine().active = was; }
  Pause(const Pause&) = delete;
  Pause& operator=(const Pause&) = delete;
  const bool was = Mine().active;
};

}  // namespace system_calls
