#include "shell/strip.h"

#include <algorithm>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/panels.h"
#include "app/router.h"

namespace morva {

using platform::RectHeight;

namespace {

constexpr int kLine = 20;         // pixels that a key press moves the edge by
constexpr int kClosesBelow = 27;  // pixels of the output

struct Strip {
  int height = 0;
  bool closed = false;
  bool openInReview = false;
  int shown = 0;  // pixels of the output as they are, 0 while it is closed
  int foot = 0;   // where it ends
  int head = 0;   // from the edge down to the output
};
Strip strip;

void SetClosed(bool closed) {
  if (app.compareActive) {
    strip.openInReview = !closed;
  } else {
    strip.closed = closed;
  }
  RelayPanels();
}

void TakeHeight(int height) {
  if (height >= kClosesBelow) strip.height = std::max(height, kStripLeast);
  SetClosed(height < kClosesBelow);
}

}  // namespace

bool IsStripClosed() {
  // What was opened in a review says nothing about the next one.
  if (!app.compareActive) strip.openInReview = false;
  return app.compareActive ? !strip.openInReview : strip.closed;
}

int StripHeight() { return strip.height; }

void NoteStripPlace(const LayoutAreas& areas) {
  strip.shown = RectHeight(areas.output);
  strip.foot = areas.stripFoot;
  strip.head = areas.stripTop - areas.stripEdge.top;
}

void OpenStrip() {
  if (IsStripClosed()) SetClosed(false);
}

void ToggleStrip() { SetClosed(!IsStripClosed()); }

void DragStrip(int y) { TakeHeight(strip.foot - y - strip.head); }

bool StripKey(const platform::KeyEvent& key) {
  if (key.ctrl || key.alt || key.shift) return false;
  if (key.key == platform::kKeyUp) {
    TakeHeight(IsStripClosed() ? std::max(strip.height, kStripLeast) : strip.shown + kLine);
  } else if (key.key == platform::kKeyDown) {
    TakeHeight(strip.shown <= kStripLeast ? 0 : strip.shown - kLine);
  } else {
    return false;
  }
  // A wish beyond what the window has room for is not kept, so that the next key moves the edge.
  if (!IsStripClosed()) strip.height = strip.shown;
  return true;
}

bool StripChord(const platform::KeyEvent& key) {
  return app.surface == kSurfaceCode && RouteChord(kStripChords, key);
}

void RegisterStrip() {
  hooks.openOutput = OpenStrip;
  Handlers handlers;
  handlers.id = kIdStrip;
  handlers.key = StripKey;
  RegisterHandlers(handlers);
  RegisterCommand(RouterStage::Click, kIdStrip, platform::kNotifyClick,
                  [](int, int) { ToggleStrip(); });
}

void ResetStrip() { strip = Strip(); }

}  // namespace morva
