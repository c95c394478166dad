#include <time.h>

#include <cerrno>

#include "platform/clock.h"

namespace platform {

std::uint64_t TickMilliseconds() {
  timespec now = {};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<std::uint64_t>(now.tv_sec) * 1000 +
         static_cast<std::uint64_t>(now.tv_nsec) / 1000000;
}

void SleepMilliseconds(int milliseconds) {
  if (milliseconds <= 0) return;
  timespec left = {milliseconds / 1000, (milliseconds % 1000) * 1000000L};
  while (nanosleep(&left, &left) != 0 && errno == EINTR) {
  }
}

}  // namespace platform
