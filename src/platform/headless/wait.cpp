// Waiting in virtual time.

#include "platform/wait.h"

#include "platform/headless/headless.h"
#include "platform/headless/worker.h"

namespace platform {

bool WaitUntil(bool (*done)(), int milliseconds) {
  const std::uint64_t target = headless::After(milliseconds);
  headless::DrainPosts();
  while (!done()) {
    if (headless::TakeTurn(target)) continue;
    headless::MoveClockTo(target);
    return done();
  }
  return true;
}

}  // namespace platform
