// Repeating timers, keyed by window and number, on the user-interface thread.
#pragma once

namespace platform {

// Starts or restarts: the first tick comes `milliseconds` from now, 1 at least. Of two that are due
// the one that is due longer comes first. Ticks that were missed are not made up. A one-shot
// timer is one that its handler stops on entry.
void StartTimer(int window, int timer, int milliseconds);
void StopTimer(int window, int timer);
bool TimerRuns(int window, int timer);

}  // namespace platform
