// Moving the clock: timers and the worker take their turns in the order of their moments.

#include <cstdint>

#include "platform/headless/headless_internal.h"
#include "platform/headless/worker.h"

namespace headless {

void Advance(int milliseconds) {
  const std::uint64_t target =
      VirtualNow() + static_cast<std::uint64_t>(milliseconds > 0 ? milliseconds : 0);
  DrainPosts();
  for (;;) {
    std::uint64_t timer = 0;
    std::uint64_t worker = 0;
    const bool timerDue = NextTimerDue(timer) && timer <= target;
    const bool workerDue = NextWorkerDue(worker) && worker <= target;
    if (!timerDue && !workerDue) break;
    if (timerDue && (!workerDue || timer <= worker)) {
      MoveClockTo(timer);
      FireNextTimer();
    } else {
      MoveClockTo(worker);
      RunWorker();
    }
    DrainPosts();
  }
  MoveClockTo(target);
}

}  // namespace headless
