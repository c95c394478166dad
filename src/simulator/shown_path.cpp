#include "simulator/shown_path.h"

#include <cstddef>
#include <iterator>

#include "app/command_ids.h"
#include "platform/control.h"
#include "platform/window.h"
#include "simulator/view_parts.h"

namespace morva {

namespace {

MotionPoint builderPoints[kMaxMotionPoints];
MotionPath builderPath{builderPoints};
Playback builderPlay;
MeasurePicks builderPicks;
ViewState builderView;
StockEnvelope builderStock;

// A row an owner, in the order of PathOwner.
constexpr OwnedPath kOwned[] = {
    {path, &ghostPath, playback, measure, view, stockEnvelope},
    {builderPath, nullptr, builderPlay, builderPicks, builderView, builderStock},
};
static_assert(std::size(kOwned) == kMaxPathOwners);
static_assert(static_cast<int>(PathOwner::Builder) == kMaxPathOwners - 1);

PathOwner shownOwner = PathOwner::Program;

}  // namespace

const OwnedPath& OwnedBy(PathOwner owner) { return kOwned[static_cast<std::size_t>(owner)]; }

std::span<const OwnedPath> OwnedPaths() { return kOwned; }

PathOwner ShownOwner() { return shownOwner; }

const OwnedPath& ShownPath() { return OwnedBy(shownOwner); }

void ShowPathOf(PathOwner owner) {
  if (owner == shownOwner) return;
  HaltPlayback(shownOwner);
  LetGoOfView();
  shownOwner = owner;
  platform::SetText(kIdPlay, u"PLAY");
  platform::Repaint(kViewToolpath);
}

void ResetOwnedPaths() {
  HaltPlayback(shownOwner);
  shownOwner = PathOwner::Program;
  for (const OwnedPath& owned : kOwned) {
    EmptyPath(owned.path);
    owned.play = Playback{};
    owned.picks = MeasurePicks{};
    owned.stock = StockEnvelope{};
  }
}

}  // namespace morva
