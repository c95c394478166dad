#include "shell/strip.h"

#include <algorithm>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/panels.h"
#include "app/router.h"
#include "platform/window.h"

namespace morva {

using platform::RectHeight;

namespace {

constexpr int kLine = 20;          // pixels that a key press moves the edge by
constexpr int kUsualHeight = 800;  // of the window, where the screen has room
constexpr int kClosesBelow = 27;   // pixels of the output

struct Strip {
  int height = 0;
  bool closed = false;
  bool openOver = false;
  int shown = 0;  // pixels of the output as they are, 0 while it is closed
  int foot = 0;   // where it ends
  int head = 0;   // from the edge down to the output
};
Strip strip;

// Whether what is up needs the height of the strip: lines side by side, and in a window on a small
// screen a panel over the code or a form with the view.
bool NeedsHeight() {
  if (app.compareActive) return true;
  if (app.surface != kSurfaceCode) return false;
  if (platform::ClientArea(platform::kMainWindow).bottom >= kUsualHeight) return false;
  return IsPanelAt(PanelSpot::Work) || HeightAboveView() > 0;
}

void SetClosed(bool closed) {
  if (NeedsHeight()) {
    strip.openOver = !closed;
  } else {
    strip.closed = closed;
  }
  RelayPanels();
}

void TakeHeight(int height) {
  if (height >= kClosesBelow) strip.height = std::max(height, kStripLeast);
  SetClosed(height < kClosesBelow);
}

// A wish beyond what the window has room for is not kept, so that the next key moves the edge.
bool MoveEdge(int height) {
  TakeHeight(height);
  if (!IsStripClosed()) strip.height = strip.shown;
  return true;
}

bool Raise() {
  return MoveEdge(IsStripClosed() ? std::max(strip.height, kStripLeast) : strip.shown + kLine);
}

bool Lower() { return MoveEdge(strip.shown <= kStripLeast ? 0 : strip.shown - kLine); }

constexpr ChordPlace kEdgeChords{u"key that closes the strip"};
constexpr KeyRow kKeys[] = {
    {PlainKey(kEdgeChords, platform::kKeyUp), u"Make the strip higher", Raise},
    {PlainKey(kEdgeChords, platform::kKeyDown), u"Make the strip lower", Lower},
};

}  // namespace

bool IsStripClosed() {
  const bool over = NeedsHeight();
  // What was opened in a review says nothing about the next one.
  if (!over) strip.openOver = false;
  return over ? !strip.openOver : strip.closed;
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

bool StripKey(const platform::KeyEvent& key) { return RunKeyRow(kKeys, key); }

bool StripChord(const platform::KeyEvent& key) {
  return app.surface == kSurfaceCode && RouteChord(kStripChords, key);
}

void RegisterStrip() {
  hooks.openOutput = OpenStrip;
  Handlers handlers;
  handlers.id = kIdStrip;
  handlers.key = StripKey;
  handlers.keys = kKeys;
  RegisterHandlers(handlers);
  RegisterCommand(RouterStage::Click, kIdStrip, platform::kNotifyClick,
                  [](int, int) { ToggleStrip(); });
}

void ResetStrip() { strip = Strip(); }

}  // namespace morva
