// The one worker: a real thread that runs only when it holds the baton.

#include "platform/thread.h"

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>

#include "platform/headless/headless_internal.h"
#include "platform/headless/worker.h"

namespace headless {
namespace {

struct Baton {
  std::mutex guard;
  std::condition_variable turned;
  bool alive = true;
  bool workersTurn = false;
  bool mustFinish = false;
  bool onTheLine = false;
  std::uint64_t wakeAt = 0;
};

// Shared with the thread, so that a worker that is left behind keeps its own.
std::shared_ptr<Baton> baton;
thread_local Baton* mine = nullptr;

// A worker that does not end although nothing holds it back is left behind after this long,
// in real time.
constexpr std::chrono::seconds kPatience{10};
// A worker that goes on for longer in virtual time is told to finish.
constexpr std::uint64_t kLongestJobMs = 600000;

bool Alive() {
  if (!baton) return false;
  const std::lock_guard<std::mutex> lock(baton->guard);
  return baton->alive;
}

void FinishWorker() {
  if (!Alive()) return;
  std::unique_lock<std::mutex> lock(baton->guard);
  baton->mustFinish = true;
  baton->workersTurn = true;
  baton->turned.notify_all();
  const std::shared_ptr<Baton> held = baton;
  held->turned.wait_for(lock, kPatience, [&held] { return !held->alive; });
  lock.unlock();
  baton.reset();
}
ResetHook hook(0, FinishWorker);

void RunThread(const std::shared_ptr<Baton>& shared, void (*work)()) {
  mine = shared.get();
  {
    std::unique_lock<std::mutex> lock(shared->guard);
    shared->turned.wait(lock, [&shared] { return shared->workersTurn; });
  }
  work();
  const std::lock_guard<std::mutex> lock(shared->guard);
  shared->alive = false;
  shared->workersTurn = false;
  shared->turned.notify_all();
}

}  // namespace

bool OnWorker() { return mine != nullptr; }

bool WorkerMustFinish() {
  if (!mine) return false;
  const std::lock_guard<std::mutex> lock(mine->guard);
  return mine->mustFinish;
}

void WaitInWorker(std::uint64_t moment, bool onTheLine) {
  std::unique_lock<std::mutex> lock(mine->guard);
  if (!mine->mustFinish) {
    mine->wakeAt = moment;
    mine->onTheLine = onTheLine;
    mine->workersTurn = false;
    mine->turned.notify_all();
    mine->turned.wait(lock, [] { return mine->workersTurn; });
  }
  // A finishing worker still sees its time pass, or it might wait for ever.
  if (mine->mustFinish) MoveClockTo(moment);
}

void PokeWorker() {
  if (!baton || mine) return;
  const std::lock_guard<std::mutex> lock(baton->guard);
  if (baton->onTheLine) baton->wakeAt = VirtualNow();
}

bool NextWorkerDue(std::uint64_t& due) {
  if (!Alive()) return false;
  const std::lock_guard<std::mutex> lock(baton->guard);
  due = baton->wakeAt;
  return true;
}

void RunWorker() {
  if (!Alive()) return;
  const std::shared_ptr<Baton> held = baton;
  std::unique_lock<std::mutex> lock(held->guard);
  held->workersTurn = true;
  held->turned.notify_all();
  held->turned.wait(lock, [&held] { return !held->workersTurn; });
}

}  // namespace headless

namespace platform {

bool StartWorker(void (*work)()) {
  if (headless::FaultFor("worker") || headless::Alive()) return false;
  headless::baton = std::make_shared<headless::Baton>();
  headless::baton->wakeAt = headless::VirtualNow();
  std::thread(headless::RunThread, headless::baton, work).detach();
  return true;
}

bool WorkerRuns() { return headless::Alive(); }

// Time passes for the worker alone; no timer fires meanwhile.
void EndWorkers() {
  std::uint64_t due = 0;
  const std::uint64_t last = headless::VirtualNow() + headless::kLongestJobMs;
  while (headless::NextWorkerDue(due) && due <= last) {
    headless::MoveClockTo(due);
    headless::RunWorker();
  }
  headless::FinishWorker();
}

}  // namespace platform
