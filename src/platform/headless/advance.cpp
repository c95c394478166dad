// Moving the clock: timers and the worker take their turns in the order of their moments.

#include <cstdint>

#include "platform/headless/headless_internal.h"
#include "platform/headless/worker.h"

namespace headless {

bool TakeTurn(std::uint64_t target) {
  std::uint64_t timer = 0;
  std::uint64_t worker = 0;
  const bool timerDue = NextTimerDue(timer) && timer <= target;
  const bool workerDue = NextWorkerDue(worker) && worker <= target;
  if (!timerDue && !workerDue) return false;
  if (timerDue && (!workerDue || timer <= worker)) {
    MoveClockTo(timer);
    FireNextTimer();
  } else {
    MoveClockTo(worker);
    RunWorker();
  }
  DrainPosts();
  return true;
}

std::uint64_t After(int milliseconds) {
  return VirtualNow() + static_cast<std::uint64_t>(milliseconds > 0 ? milliseconds : 0);
}

void Advance(int milliseconds) {
  const std::uint64_t target = After(milliseconds);
  DrainPosts();
  while (TakeTurn(target)) {
  }
  MoveClockTo(target);
}

}  // namespace headless
