// Worker threads: one transfer over the line, one writer of files.
#pragma once

namespace platform {

enum class Worker { Transfer, Saver };

// Runs `work` on a thread of its own. False: no thread could be started, nothing runs.
// The thread is never joined by the application; EndWorkers waits for it at process end.
bool StartWorker(Worker kind, void (*work)());
// Whether a worker of this kind is still inside its function.
bool WorkerRuns(Worker kind);
// Waits until no worker of this kind runs; the other one goes on meanwhile.
void EndWorker(Worker kind);
// Waits until no worker of any kind runs. Used by tests and at process end.
void EndWorkers();

}  // namespace platform
