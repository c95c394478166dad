// Messages from any thread, in order, with one wake for however many are waiting.

#include <QElapsedTimer>
#include <QMetaObject>
#include <QObject>
#include <deque>
#include <mutex>

#include "platform/post.h"
#include "platform/qt/qt_internal.h"

namespace platform {

namespace {

// A burst gives the loop a chance to paint after this long.
constexpr qint64 kBurst = 5;  // ms

struct Post {
  std::uint32_t message = 0;
  std::uint64_t first = 0;
  std::uint64_t second = 0;
};

std::mutex guard;
std::deque<Post> waiting;
bool wakePending = false;
QObject* host = nullptr;

void Deliver();

// With the guard held.
void Wake() {
  if (wakePending || host == nullptr) return;
  wakePending = true;
  QMetaObject::invokeMethod(
      host, [] { Deliver(); }, Qt::QueuedConnection);
}

// A handler may open a box, whose own loop delivers the next messages. So each message is
// taken alone, and a wake stays under way as long as more are waiting.
void Deliver() {
  QElapsedTimer clock;
  clock.start();
  {
    const std::lock_guard<std::mutex> lock(guard);
    wakePending = false;
  }
  while (true) {
    Post post;
    {
      const std::lock_guard<std::mutex> lock(guard);
      if (waiting.empty()) return;
      post = waiting.front();
      waiting.pop_front();
      if (!waiting.empty()) Wake();
    }
    if (Listener().posted != nullptr) Listener().posted(post.message, post.first, post.second);
    if (clock.elapsed() >= kBurst) return;
  }
}

}  // namespace

void PostToMain(std::uint32_t message, std::uint64_t first, std::uint64_t second) {
  const std::lock_guard<std::mutex> lock(guard);
  waiting.push_back(Post{message, first, second});
  Wake();
}

void BeginPosts() {
  const std::lock_guard<std::mutex> lock(guard);
  host = new QObject;
  if (!waiting.empty()) Wake();
}

void EndPosts() {
  const std::lock_guard<std::mutex> lock(guard);
  delete host;
  host = nullptr;
  waiting.clear();
  wakePending = false;
}

}  // namespace platform
