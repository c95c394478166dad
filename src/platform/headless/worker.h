// The baton between the user's thread and the one worker, and the virtual clock both read.
//
// Exactly one of the two runs at any moment. The worker runs only while the clock is being
// moved and hands the baton back whenever it sleeps or waits on the line, so that a job of a
// minute takes no time and always takes the same turns.
#pragma once

#include <cstdint>

namespace headless {

std::uint64_t VirtualNow();
void MoveClockTo(std::uint64_t moment);  // never back

// Whether the caller is the worker.
bool OnWorker();
// The worker hands the baton back until `moment`. A wait on the line may be ended before.
// Returns at once when the worker is told to finish; the clock then moves by the wait.
void WaitInWorker(std::uint64_t moment, bool onTheLine);
// The worker must come to its end: the line fails, sleeps are over at once.
bool WorkerMustFinish();
// Something happened on the line: a worker that waits there looks again.
void PokeWorker();

// When the worker goes on; false without one.
bool NextWorkerDue(std::uint64_t& due);
// Gives it the baton until it waits or ends.
void RunWorker();

}  // namespace headless
