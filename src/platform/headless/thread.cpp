// The workers: real threads that run only while they hold the baton.

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

// One baton for each kind of worker. Shared with the thread, so that a worker that is left
// behind keeps its own.
constexpr int kWorkers = 2;
std::shared_ptr<Baton> batons[kWorkers];
thread_local Baton* mine = nullptr;

std::shared_ptr<Baton>& BatonOf(platform::Worker kind) { return batons[static_cast<int>(kind)]; }

// A worker that does not end although nothing holds it back is left behind after this long,
// in real time.
constexpr std::chrono::seconds kPatience{10};
// A worker that goes on for longer in virtual time is told to finish.
constexpr std::uint64_t kLongestJobMs = 600000;

bool Alive(const std::shared_ptr<Baton>& baton) {
  if (!baton) return false;
  const std::lock_guard<std::mutex> lock(baton->guard);
  return baton->alive;
}

void Finish(std::shared_ptr<Baton>& baton) {
  if (!Alive(baton)) return;
  std::unique_lock<std::mutex> lock(baton->guard);
  baton->mustFinish = true;
  baton->workersTurn = true;
  baton->turned.notify_all();
  const std::shared_ptr<Baton> held = baton;
  held->turned.wait_for(lock, kPatience, [&held] { return !held->alive; });
  lock.unlock();
  baton.reset();
}

void FinishWorkers() {
  for (std::shared_ptr<Baton>& baton : batons) Finish(baton);
}
ResetHook hook(0, FinishWorkers);

void HandBatonTo(const std::shared_ptr<Baton>& held) {
  std::unique_lock<std::mutex> lock(held->guard);
  held->workersTurn = true;
  held->turned.notify_all();
  held->turned.wait(lock, [&held] { return !held->workersTurn; });
}

std::uint64_t WakeOf(const std::shared_ptr<Baton>& baton) {
  const std::lock_guard<std::mutex> lock(baton->guard);
  return baton->wakeAt;
}

// The worker that goes on first; null where none runs.
std::shared_ptr<Baton> NextBaton() {
  std::shared_ptr<Baton> next;
  for (const std::shared_ptr<Baton>& baton : batons) {
    if (Alive(baton) && (!next || WakeOf(baton) < WakeOf(next))) next = baton;
  }
  return next;
}

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
  const std::shared_ptr<Baton>& baton = BatonOf(platform::Worker::Transfer);
  if (!baton || mine) return;
  const std::lock_guard<std::mutex> lock(baton->guard);
  if (baton->onTheLine) baton->wakeAt = VirtualNow();
}

bool NextWorkerDue(std::uint64_t& due) {
  const std::shared_ptr<Baton> next = NextBaton();
  if (!next) return false;
  due = WakeOf(next);
  return true;
}

void RunWorker() {
  if (const std::shared_ptr<Baton> next = NextBaton()) HandBatonTo(next);
}

}  // namespace headless

namespace platform {

bool StartWorker(Worker kind, void (*work)()) {
  std::shared_ptr<headless::Baton>& baton = headless::BatonOf(kind);
  if (headless::FaultFor("worker") || headless::Alive(baton)) return false;
  baton = std::make_shared<headless::Baton>();
  baton->wakeAt = headless::VirtualNow();
  std::thread(headless::RunThread, baton, work).detach();
  // A disk that answers at once leaves nothing to wait for.
  if (kind == Worker::Saver) headless::HandBatonTo(baton);
  return true;
}

bool WorkerRuns(Worker kind) { return headless::Alive(headless::BatonOf(kind)); }

// Time passes for the workers alone; no timer fires meanwhile.
void EndWorker(Worker kind) {
  std::uint64_t due = 0;
  const std::uint64_t last = headless::VirtualNow() + headless::kLongestJobMs;
  while (WorkerRuns(kind) && headless::NextWorkerDue(due) && due <= last) {
    headless::MoveClockTo(due);
    headless::RunWorker();
  }
  headless::Finish(headless::BatonOf(kind));
}

void EndWorkers() {
  EndWorker(Worker::Transfer);
  EndWorker(Worker::Saver);
}

}  // namespace platform
