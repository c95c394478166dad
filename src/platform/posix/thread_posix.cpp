#include <pthread.h>

#include <condition_variable>
#include <mutex>

#include "platform/thread.h"

namespace platform {
namespace {

// A new worker may start while the one before it, whose last message has been handled
// already, is still on its way out.
std::mutex gate;
std::condition_variable allOut;
int running = 0;

void* RunWork(void* work) {
  reinterpret_cast<void (*)()>(work)();
  const std::lock_guard<std::mutex> hold(gate);
  if (--running == 0) allOut.notify_all();
  return nullptr;
}

}  // namespace

// The system's own call, because the library's thread ends the program where none can start.
bool StartWorker(void (*work)()) {
  pthread_attr_t detached;
  if (pthread_attr_init(&detached) != 0) return false;
  pthread_attr_setdetachstate(&detached, PTHREAD_CREATE_DETACHED);
  const std::lock_guard<std::mutex> hold(gate);
  pthread_t thread;
  const bool started =
      pthread_create(&thread, &detached, RunWork, reinterpret_cast<void*>(work)) == 0;
  if (started) ++running;
  pthread_attr_destroy(&detached);
  return started;
}

bool WorkerRuns() {
  const std::lock_guard<std::mutex> hold(gate);
  return running > 0;
}

void EndWorkers() {
  std::unique_lock<std::mutex> hold(gate);
  while (running > 0) allOut.wait(hold);
}

}  // namespace platform
