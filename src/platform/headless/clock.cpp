// The virtual clock.

#include "platform/clock.h"

#include <atomic>

#include "platform/headless/headless_internal.h"
#include "platform/headless/worker.h"

namespace headless {
namespace {

std::atomic<std::uint64_t> now{0};

void ResetClock() { now = 0; }
ResetHook hook(1, ResetClock);

}  // namespace

std::uint64_t VirtualNow() { return now; }

void MoveClockTo(std::uint64_t moment) {
  if (moment > now) now = moment;
}

}  // namespace headless

namespace platform {

std::uint64_t TickMilliseconds() { return headless::VirtualNow(); }

// The user's own thread sleeps by moving the clock; its timers are then overdue.
void SleepMilliseconds(int milliseconds) {
  if (milliseconds <= 0) return;
  const std::uint64_t end = headless::VirtualNow() + static_cast<std::uint64_t>(milliseconds);
  if (headless::OnWorker()) {
    headless::WaitInWorker(end, false);
  } else {
    headless::MoveClockTo(end);
  }
}

}  // namespace platform
