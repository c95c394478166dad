// The baton between the user's thread and each worker, and the virtual clock that all read.
//
// Exactly one thread runs at any moment. A worker runs only while the clock is being
// moved, the saver from its start on too, and hands the baton back whenever it sleeps or waits on the line, so that a job of a
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

// When the first of the workers goes on; false without one.
bool NextWorkerDue(std::uint64_t& due);
// Gives that one the baton until it waits or ends.
void RunWorker();

// This many virtual milliseconds from now.
std::uint64_t After(int milliseconds);
// The next turn up to `target`, of a timer before that of a worker due at the same moment; what it
// posted is handed out. False: there is none.
bool TakeTurn(std::uint64_t target);

}  // namespace headless
