// The keys of playback and view, and what fires the play timer.
#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/panels.h"
#include "app/router.h"
#include "platform/window.h"
#include "simulator/example.h"
#include "simulator/line_highlight.h"
#include "simulator/machine_motion.h"
#include "simulator/place_pick.h"
#include "simulator/playback.h"
#include "simulator/preview.h"
#include "simulator/shown_path.h"
#include "simulator/toolpath.h"
#include "simulator/view.h"
#include "simulator/view_commands.h"
#include "simulator/view_parts.h"
#include "simulator/view_switches.h"
#include "simulator/view_words.h"

namespace morva {

namespace {

// What the user wrote into the settings file since counts from here on.
void ReadAgain() {
  ForgetControlSettings();
  RebuildToolpath();
}

void RefreshAndFit() {
  ReadAgain();
  ViewFit();
}

void ZoomKeyOut() { ZoomBy(0.89); }
void ZoomKeyIn() { ZoomBy(1.12); }

struct Key {
  int id;
  void (*action)();
};
constexpr Key kKeys[] = {
    {kIdPath, ReadAgain},
    {kIdPlay, PlayPause},
    {kIdViewMenu, ShowViewMenu},
    {kIdZoomOut, ZoomKeyOut},
    {kIdZoomIn, ZoomKeyIn},
    {kIdZoomReset, ViewFit},
    {kIdRewind, Rewind},
    {kIdFastForward, FastForward},
    {kIdDimensions, ToggleExtents},
    {kIdMeasure, ToggleMeasure},
    {kIdPan, TogglePan},
    {kIdFit, ViewFit},
    {kIdViewRefresh, RefreshAndFit},
    {kIdViewFit, ViewFit},
    {kIdViewPan, TogglePan},
    {kIdViewExtents, ToggleExtents},
    {kIdViewMeasure, ToggleMeasure},
    {kIdViewGrid, ToggleGrid},
    {kIdViewGridMenu, ShowGridMenu},
    {kIdViewLayers, ShowLayersMenu},
    {kIdPlayStart, GoToStart},
    {kIdPlayPrevious, PreviousOperation},
    {kIdPlayRewind, Rewind},
    {kIdPlayToggle, PlayPause},
    {kIdPlayForward, FastForward},
    {kIdPlayNext, NextOperation},
    {kIdPlayEnd, GoToEnd},
    {kIdPlayStop, StopPlayback},
};

void OnSimulatorKey(int id, int /*notification*/) {
  for (const Key& key : kKeys) {
    if (key.id != id) continue;
    key.action();
    platform::Repaint(kViewToolpath);
    return;
  }
}

}  // namespace

void RegisterSimulatorCommands() {
  AddCommands(SimulatorCommands());
  for (const Key& key : kKeys) {
    // These three are asked last, with the keys of the other rooms.
    const bool late = key.id == kIdPath || key.id == kIdZoomOut || key.id == kIdZoomIn;
    RegisterCommand(late ? RouterStage::Click : RouterStage::Simulator, key.id, 0, OnSimulatorKey);
  }
  RegisterTimer(kTimerPlay, PlayTick);
  Handlers ofView;
  ofView.id = kViewToolpath;
  ofView.paint = PaintToolpathView;
  ofView.pointer = ToolpathPointer;
  ofView.key = ToolpathKey;
  ofView.keys = ToolpathKeys();
  ofView.timer = ViewTimer;
  ofView.value = [](platform::ViewValue& value) { value.words = ToolpathWords(); };
  RegisterHandlers(ofView);
  Handlers ofPick;
  ofPick.id = kViewToolpath;
  ofPick.keys = PlacePickKeys();  // ToolpathKey runs them first
  RegisterHandlers(ofPick);
  hooks.rebuildToolpath = [] {
    RebuildToolpath();
    FollowExampleUnits();
    FollowPreviewedProgram();
  };
  // A builder has one path: an example and a preview make room for each other.
  hooks.showExample = [](int operation) {
    LeavePreview();
    ShowExample(operation);
  };
  hooks.leaveExample = LeaveExample;
  hooks.showPreview = [](const PathPreview& preview) {
    LeaveExample();
    ShowPreview(preview);
  };
  hooks.markPreview = MarkPreview;
  hooks.leavePreview = LeavePreview;
  hooks.pickPlace = BeginPlacePick;
  hooks.dropPlacePick = DropPlacePick;
  hooks.checkMachine = [] {
    if (PathIsStale()) RebuildToolpath();
    return MachineCheckReport();
  };
  hooks.textChanged = ShowStalePath;
  hooks.textTagged = FollowTag;
  hooks.highlightLine = [](int line) { HighlightSourceLine(line); };
  hooks.fitView = [] {
    ViewFitOf(PathOwner::Program);
    platform::Repaint(kViewToolpath);
  };
}

}  // namespace morva
