// The one worker thread of a transfer.
#pragma once

namespace platform {

// Runs `work` on a thread of its own. False: no thread could be started, nothing runs.
// The thread is never joined by the application; EndWorkers waits for it at process end.
bool StartWorker(void (*work)());
// Whether a worker is still inside its function.
bool WorkerRuns();
// Waits until no worker runs. Used by tests and at process end.
void EndWorkers();

}  // namespace platform
