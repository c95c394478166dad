// Waiting in a program without a window: there is nothing to paint, and nobody fires timers.

#include "platform/clock.h"
#include "platform/wait.h"

namespace platform {

bool WaitUntil(bool (*done)(), int milliseconds) {
  const std::uint64_t start = TickMilliseconds();
  while (!done()) {
    if (TickMilliseconds() - start >= static_cast<std::uint64_t>(milliseconds)) return done();
    SleepMilliseconds(1);
  }
  return true;
}

}  // namespace platform
