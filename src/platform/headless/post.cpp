// Messages to the user-interface thread. Real threads post here as well, so a lock guards them.

#include "platform/post.h"

#include <deque>
#include <mutex>

#include "platform/headless/headless_internal.h"
#include "platform/limits.h"

namespace headless {
namespace {

struct Message {
  std::uint32_t number = 0;
  std::uint64_t first = 0;
  std::uint64_t second = 0;
};
std::mutex guard;
std::deque<Message> queue;

void ResetPosts() {
  const std::lock_guard<std::mutex> lock(guard);
  queue.clear();
}
ResetHook hook(1, ResetPosts);

bool TakeMessage(Message& message) {
  const std::lock_guard<std::mutex> lock(guard);
  if (queue.empty()) return false;
  message = queue.front();
  queue.pop_front();
  return true;
}

}  // namespace

void DrainPosts() {
  TellFront();
  // A handler that posts to itself for ever must not stop the run.
  Message message;
  for (int i = 0; i < platform::kMaxPostsAtOnce && TakeMessage(message); ++i) {
    const platform::Events& events = platform::Listener();
    if (events.posted) events.posted(message.number, message.first, message.second);
  }
}

}  // namespace headless

namespace platform {

void PostToMain(std::uint32_t message, std::uint64_t first, std::uint64_t second) {
  const std::lock_guard<std::mutex> lock(headless::guard);
  headless::queue.push_back({message, first, second});
}

}  // namespace platform
