#include <pthread.h>

#include <condition_variable>
#include <mutex>

#include "platform/thread.h"

namespace platform {
namespace {

// A new worker may start while the one before it, whose last message has been handled
// already, is still on its way out.
std::mutex gate;
std::condition_variable oneOut;
constexpr int kWorkers = 2;  // kinds
int running[kWorkers] = {};

int& RunningOf(Worker kind) { return running[static_cast<int>(kind)]; }

template <Worker kind>
void* RunWork(void* work) {
  reinterpret_cast<void (*)()>(work)();
  const std::lock_guard<std::mutex> hold(gate);
  --RunningOf(kind);
  oneOut.notify_all();
  return nullptr;
}

}  // namespace

// The system's own call, because the library's thread ends the program where none can start.
bool StartWorker(Worker kind, void (*work)()) {
  pthread_attr_t detached;
  if (pthread_attr_init(&detached) != 0) return false;
  pthread_attr_setdetachstate(&detached, PTHREAD_CREATE_DETACHED);
  const std::lock_guard<std::mutex> hold(gate);
  pthread_t thread;
  void* (*const run)(void*) =
      kind == Worker::Saver ? RunWork<Worker::Saver> : RunWork<Worker::Transfer>;
  const bool started = pthread_create(&thread, &detached, run, reinterpret_cast<void*>(work)) == 0;
  if (started) ++RunningOf(kind);
  pthread_attr_destroy(&detached);
  return started;
}

bool WorkerRuns(Worker kind) {
  const std::lock_guard<std::mutex> hold(gate);
  return RunningOf(kind) > 0;
}

void EndWorker(Worker kind) {
  std::unique_lock<std::mutex> hold(gate);
  while (RunningOf(kind) > 0) oneOut.wait(hold);
}

// None starts another one, so that one after the other is enough.
void EndWorkers() {
  EndWorker(Worker::Transfer);
  EndWorker(Worker::Saver);
}

}  // namespace platform
