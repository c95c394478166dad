// Repeating timers. They keep their own moments and fire when the clock is moved.

#include "platform/timer.h"

#include <algorithm>
#include <vector>

#include "platform/clock.h"
#include "platform/headless/headless_internal.h"

namespace headless {
namespace {

struct Timer {
  int window = 0;
  int number = 0;
  std::uint64_t period = 1;
  std::uint64_t due = 0;
  std::uint64_t order = 0;  // of two that are due at once the one armed first fires first
};
std::vector<Timer> timers;
std::uint64_t nextOrder = 0;

void ResetTimers() {
  timers.clear();
  nextOrder = 0;
}
ResetHook hook(1, ResetTimers);

Timer* TimerOf(int window, int number) {
  for (Timer& timer : timers) {
    if (timer.window == window && timer.number == number) return &timer;
  }
  return nullptr;
}

Timer* EarliestTimer() {
  const auto before = [](const Timer& a, const Timer& b) {
    return a.due != b.due ? a.due < b.due : a.order < b.order;
  };
  const auto first = std::min_element(timers.begin(), timers.end(), before);
  return first == timers.end() ? nullptr : &*first;
}

}  // namespace

bool NextTimerDue(std::uint64_t& due) {
  const Timer* timer = EarliestTimer();
  if (timer) due = timer->due;
  return timer != nullptr;
}

void FireNextTimer() {
  Timer* timer = EarliestTimer();
  if (!timer) return;
  const Timer fired = *timer;
  // Ticks that were missed are not made up.
  timer->due = std::max(timer->due, platform::TickMilliseconds()) + timer->period;
  timer->order = nextOrder++;
  const platform::Events& events = platform::Listener();
  if (events.timer) events.timer(fired.window, fired.number);
}

}  // namespace headless

namespace platform {

void StartTimer(int window, int timer, int milliseconds) {
  if (headless::FaultFor("timer")) return;
  StopTimer(window, timer);
  const auto period = static_cast<std::uint64_t>(std::max(1, milliseconds));
  headless::timers.push_back(
      {window, timer, period, TickMilliseconds() + period, headless::nextOrder++});
}

void StopTimer(int window, int timer) {
  std::erase_if(headless::timers, [window, timer](const headless::Timer& t) {
    return t.window == window && t.number == timer;
  });
}

bool TimerRuns(int window, int timer) { return headless::TimerOf(window, timer) != nullptr; }

}  // namespace platform
