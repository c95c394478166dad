// The application comes to the front again, and what stands open over it.

#include "platform/events.h"
#include "platform/headless/headless_internal.h"
#include "platform/window.h"

namespace headless {
namespace {

bool owed = false;
int asking = 0;  // boxes, dialogs and menus, one over the other

void ResetFront() { owed = false; }
ResetHook hook(1, ResetFront);

}  // namespace

Asking::Asking() {
  ++asking;
  LosePointer();
}

Asking::~Asking() { --asking; }

bool AnythingAsks() { return asking > 0; }

bool DropFiles(const std::vector<std::u16string>& paths) {
  const platform::Events& events = platform::Listener();
  if (AnythingAsks() || !platform::Exists(platform::kMainWindow) || !events.dropped) return false;
  events.dropped(paths);
  return true;
}

void ComeToFront() {
  owed = true;
  TellFront();
}

void TellFront() {
  if (!owed || asking > 0) return;
  owed = false;
  const platform::Events& events = platform::Listener();
  if (platform::Exists(platform::kMainWindow) && events.activated) events.activated();
}

}  // namespace headless
