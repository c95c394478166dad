#include "simulator/shown_path.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "app/app_state.h"
#include "platform/timer.h"
#include "platform/window.h"
#include "simulator/machine_path.h"

namespace morva {

Playback playback;
MeasurePicks measure;
ViewState view;

namespace {

MotionPoint builderPoints[kMaxMotionPoints];
MotionPath builderPath{builderPoints};
MotionPoint contextPoints[kMaxMotionPoints];
MotionPath builderContext{contextPoints};
Playback builderPlay;
MeasurePicks builderPicks;
ViewState builderView;
StockEnvelope builderStock;

Playback machinePlay;
MeasurePicks machinePicks;

// A row an owner, in the order of PathOwner.
constexpr OwnedPath kOwned[] = {
    {path, ghostPath, playback, measure, view, stockEnvelope},
    {builderPath, builderContext, builderPlay, builderPicks, builderView, builderStock},
    {machinePath, machineProgrammed, machinePlay, machinePicks, view, stockEnvelope,
     machineSeconds},
};
static_assert(std::size(kOwned) == kMaxPathOwners);
static_assert(static_cast<int>(PathOwner::Machine) == kMaxPathOwners - 1);

PathOwner shownOwner = PathOwner::Program;

}  // namespace

const OwnedPath& OwnedBy(PathOwner owner) { return kOwned[static_cast<std::size_t>(owner)]; }

std::span<const OwnedPath> OwnedPaths() { return kOwned; }

PathOwner ShownOwner() { return shownOwner; }

const OwnedPath& ShownPath() { return OwnedBy(shownOwner); }

const PathBounds& Bounds() {
  const OwnedPath& shown = ShownPath();
  return BoundsOf(shown.path.count == 0 ? shown.context : shown.path);
}

bool EditorPathIsShown() { return shownOwner != PathOwner::Builder; }

bool ExampleIsShown() { return ShownPath().play.loops; }

void SetSpeedOf(PathOwner owner, std::int32_t speedIndex) {
  OwnedBy(owner).play.speedIndex = speedIndex;
}

void SetStockOf(PathOwner owner, const StockEnvelope& stock) { OwnedBy(owner).stock = stock; }

// The timer runs for the path that is shown.
void HaltPlayback(PathOwner owner) {
  OwnedBy(owner).play.playing = false;
  if (owner == ShownOwner()) platform::StopTimer(platform::kMainWindow, kTimerPlay);
}

void ForgetMeasurePicks() {
  for (const OwnedPath& owned : kOwned) owned.picks = MeasurePicks{};
}

void ForgetHead(PathOwner owner) { OwnedBy(owner).play.headInUse = false; }

void ResetPlayback(PathOwner owner) {
  const OwnedPath& owned = OwnedBy(owner);
  HaltPlayback(owner);
  ForgetHead(owner);
  owned.play.playHead = owned.path.count;
  owned.play.segmentFraction = 0.0;
  owned.play.loops = false;
  owned.picks = MeasurePicks{};
}

void SettlePlayback(PathOwner owner, bool keepPicks) {
  const OwnedPath& owned = OwnedBy(owner);
  Playback& play = owned.play;
  const std::int32_t count = owned.path.count;
  play.playHead = play.headInUse ? std::min(play.playHead, count) : count;
  if (play.playHead >= count) play.segmentFraction = 0.0;
  if (!keepPicks) owned.picks = MeasurePicks{};
}

void SetShownOwner(PathOwner owner) { shownOwner = owner; }

void ResetOwnedPaths() {
  HaltPlayback(shownOwner);
  shownOwner = PathOwner::Program;
  for (const OwnedPath& owned : kOwned) {
    EmptyPath(owned.path);
    EmptyPath(owned.context);
    owned.play = Playback{};
    owned.picks = MeasurePicks{};
    owned.stock = StockEnvelope{};
  }
}

}  // namespace morva
