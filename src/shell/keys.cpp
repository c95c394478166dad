#include "shell/keys.h"

#include "app/app_state.h"
#include "app/command_ids.h"
#include "platform/control.h"
#include "platform/window.h"
#include "shell/icons.h"
#include "simulator/playback.h"
#include "simulator/view.h"

namespace morva {

namespace {

using platform::FontRole;

constexpr FontRole kBody = FontRole::Body;
constexpr FontRole kStrong = FontRole::Emphasis;
constexpr FontRole kSmall = FontRole::Small;

// The playback bar speaks with one voice: its keys share one hint.
constexpr const char16_t* kBarHint =
    u"Playback: start | previous operation | rewind | play/pause | fast forward | next operation "
    u"| end | stop. Slider: slower / faster simulation (0.125x\u201364x); center = 1x.";

// In the order in which they are made.
constexpr KeySpec kKeys[] = {
    {kIdNew, u"NEW", u"", u"New program (Ctrl+N)", kBody, kPanelPlain, -1, false},
    {kIdOpen, u"OPEN", u"", u"Open a program (Ctrl+O)", kBody, kPanelPlain, -1, false},
    {kIdSaveMenu, u"SAVE  \u25BC", u"", u"Save, Save As, Save All (Ctrl+S)", kBody, kPanelPlain, -1,
     false},
    {kIdFind, u"FIND", u"", u"Find and replace (Ctrl+F)", kBody, kPanelPlain, -1, false},
    {kIdSend, u"SEND", u"", u"Send the program to the control", kBody, kPanelAmber, -1, false},
    {kIdReceive, u"RECEIVE", u"", u"Receive a program from the control", kBody, kPanelAmber, -1,
     false},
    {kIdSetup, u"SETUP", u"", u"DNC setup", kBody, kPanelPlain, -1, false},
    {kIdMachine, u"Machine: Haas VF-3  \u25BE", u"", u"DNC setup of this machine", kBody,
     kPanelPlain, -1, false},
    {kIdInch, u"INCH *", u"", u"Working units: inch", kBody, kPanelPlain, -1, false},
    {kIdMm, u"MM", u"", u"Working units: millimeter", kBody, kPanelPlain, -1, false},
    {kIdBack, u"\u2190  Home", u"Back", u"Back to where you were", kBody, kPanelPlain, -1, false},
    {kIdSurfaceCode, u"Code", u"", u"Program workspace", kBody, kPanelPlain, -1, false},
    {kIdSurfaceCad, u"CAD", u"", u"CAD workspace", kBody, kPanelPlain, -1, false},
    {kIdSurfacePlate, u"Plate", u"", u"Plate builder", kBody, kPanelPlain, -1, false},
    {kIdRewind, u"Rewind", u"", u"Rewind ten toolpath points; playback pauses.", kSmall,
     kPanelPlain, kIconRewind, true},
    {kIdFastForward, u"Fast forward", u"", u"Fast forward through the visible toolpath.", kSmall,
     kPanelPlain, kIconForward, true},
    {kIdDimensions, u"Dimensions", u"",
     u"Dimensions: display X/Y/Z extents of the visible toolpath.", kSmall, kPanelPlain,
     kIconDimensions, true},
    {kIdMeasure, u"Measure", u"",
     u"Measure: choose two displayed endpoints for distance and X/Y/Z differences.", kSmall,
     kPanelPlain, kIconMeasure, true},
    {kIdPan, u"Pan", u"",
     u"Switch left-drag between orbit and pan. Middle or Shift-drag always pans.", kSmall,
     kPanelPlain, kIconPan, true},
    {kIdFit, u"Fit", u"", u"Fit the visible toolpath and reset pan/zoom.", kSmall, kPanelPlain,
     kIconFit, true},
    {kIdPath, u"PATH", u"", u"Rebuild the toolpath from the program", kBody, kPanelPlain, -1,
     false},
    {kIdPlay, u"PLAY", u"", u"Play or pause the toolpath", kBody, kPanelGreen, -1, false},
    {kIdViewMenu, u"VIEW", u"", u"Top, front, right and isometric views", kBody, kPanelPlain, -1,
     false},
    {kIdZoomOut, u"-", u"Zoom out", u"Zoom out", kStrong, kPanelPlain, -1, false},
    {kIdZoomIn, u"+", u"Zoom in", u"Zoom in", kStrong, kPanelPlain, -1, false},
    {kIdZoomReset, u"RESET", u"", u"Reset zoom and pan", kBody, kPanelPlain, -1, false},
    {kIdTabFirst + 0, u"", u"", u"Ctrl+click chooses for comparison", kSmall, kPanelPlain, -1,
     false},
    {kIdTabFirst + 1, u"", u"", u"Ctrl+click chooses for comparison", kSmall, kPanelPlain, -1,
     false},
    {kIdTabFirst + 2, u"", u"", u"Ctrl+click chooses for comparison", kSmall, kPanelPlain, -1,
     false},
    {kIdTabFirst + 3, u"", u"", u"Ctrl+click chooses for comparison", kSmall, kPanelPlain, -1,
     false},
    {kIdTabFirst + 4, u"", u"", u"Ctrl+click chooses for comparison", kSmall, kPanelPlain, -1,
     false},
    {kIdTabFirst + 5, u"", u"", u"Ctrl+click chooses for comparison", kSmall, kPanelPlain, -1,
     false},
    {kIdTabFirst + 6, u"", u"", u"Ctrl+click chooses for comparison", kSmall, kPanelPlain, -1,
     false},
    {kIdTabFirst + 7, u"", u"", u"Ctrl+click chooses for comparison", kSmall, kPanelPlain, -1,
     false},
    {kIdTabNew, u"+", u"New program tab", u"New program in a tab", kStrong, kPanelPlain, -1, false},
    {kIdCommandWords, u"COMMAND WORDS", u"", u"Show the program in plain words", kSmall,
     kPanelPlain, -1, false},
    {kIdCompareSecond, u"COMPARE", u"", u"Compare two open programs", kSmall, kPanelPlain, -1,
     false},
    {kIdClose, u"CLOSE", u"", u"Close this program (Ctrl+W)", kSmall, kPanelPlain, -1, false},
    {kIdShowFeatures, u"FEATURES", u"", u"Show the program's features", kSmall, kPanelPlain, -1,
     false},
    {kIdShowIndex, u"CODE INDEX", u"", u"Show the index of codes", kSmall, kPanelPlain, -1, false},
    {kIdFeatureEdit, u"Edit feature", u"", u"Edit selected feature settings", kSmall, kPanelPlain,
     kIconEdit, false},
    {kIdFeatureNew, u"New feature", u"", u"Add a new feature", kSmall, kPanelPlain, kIconNew,
     false},
    {kIdFeatureInclude, u"Include code: ON", u"",
     u"Include / exclude machining code; keep geometry", kSmall, kPanelPlain, kIconInclude, false},
    {kIdFeatureDelete, u"Delete feature", u"", u"Delete selected feature (Undo restores)", kSmall,
     kPanelPlain, kIconDelete, false},
    {kIdFeatureLock, u"Lock feature", u"", u"Lock or unlock the feature's settings", kSmall,
     kPanelPlain, -1, false},
    {kIdFeatureHide, u"Show / hide feature", u"", u"Show or hide the feature in the simulator",
     kSmall, kPanelPlain, -1, false},
    {kIdFeatureRename, u"RENAME", u"", u"Rename the selected feature", kSmall, kPanelPlain, -1,
     false},
    {kIdPreflight, u"RUN PROGRAM PREFLIGHT", u"", u"Check the program (F5)", kSmall, kPanelGreen,
     -1, false},
    {kIdRenumber, u"RENUMBER", u"", u"Number the program's lines N10, N20, ...", kSmall,
     kPanelPlain, -1, false},
    {kIdViewRefresh, u"Refresh toolpath", u"", u"Refresh toolpath", kSmall, kPanelPlain,
     kIconRefresh, true},
    {kIdViewFit, u"Fit toolpath to view", u"", u"Fit toolpath to view", kSmall, kPanelPlain,
     kIconFit, true},
    {kIdViewPan, u"Toggle pan / orbit; middle or Shift-drag pans", u"",
     u"Toggle pan / orbit; middle or Shift-drag pans", kSmall, kPanelPlain, kIconPan, true},
    {kIdViewExtents, u"Show path dimensions", u"", u"Show path dimensions", kSmall, kPanelPlain,
     kIconDimensions, true},
    {kIdViewMeasure, u"Measure between two path points", u"", u"Measure between two path points",
     kSmall, kPanelPlain, kIconMeasure, true},
    {kIdViewGrid, u"Toggle world grid", u"", u"Toggle world grid", kSmall, kPanelPlain, kIconGrid,
     true},
    {kIdViewGridMenu, u"Grid settings: spacing and color", u"", u"Grid settings: spacing and color",
     kSmall, kPanelPlain, kIconGridMenu, true},
    {kIdViewLayers, u"Preview layers: rapid moves, overlap, context and approximate cut surface",
     u"", u"Preview layers: rapid moves, overlap, context and approximate cut surface", kSmall,
     kPanelPlain, kIconLayers, true},
    {kIdPlayStart, kBarHint, u"Go to start", u"Go to start", kSmall, kPanelPlain, kIconStart, true},
    {kIdPlayPrevious, kBarHint, u"Previous operation", u"Previous operation", kSmall, kPanelPlain,
     kIconPrevious, true},
    {kIdPlayRewind, kBarHint, u"Rewind ten points", u"Rewind ten points", kSmall, kPanelPlain,
     kIconRewind, true},
    {kIdPlayToggle, kBarHint, u"Play / pause", u"Play / pause", kSmall, kPanelGreen, kIconPlay,
     true},
    {kIdPlayForward, kBarHint, u"Play faster", u"Fast forward", kSmall, kPanelPlain, kIconForward,
     true},
    {kIdPlayNext, kBarHint, u"Next operation", u"Next operation", kSmall, kPanelPlain, kIconNext,
     true},
    {kIdPlayEnd, kBarHint, u"Go to end", u"Go to end", kSmall, kPanelPlain, kIconEnd, true},
    {kIdPlayStop, kBarHint, u"Stop", u"Stop", kSmall, kPanelPlain, kIconStop, true},
};

constexpr int kKeyCount = static_cast<int>(sizeof(kKeys) / sizeof(kKeys[0]));

bool shownOn[kKeyCount];  // as last drawn
int shownSpeed = -1;

}  // namespace

const KeySpec* Keys(int& count) {
  count = kKeyCount;
  return kKeys;
}

const KeySpec* KeyOf(int id) {
  for (const KeySpec& key : kKeys) {
    if (key.id == id) return &key;
  }
  return nullptr;
}

bool KeyIsOn(int id) {
  switch (id) {
    case kIdInch:
      return !app.unitsMetric;
    case kIdMm:
      return app.unitsMetric;
    case kIdSurfaceCode:
    case kIdSurfaceCad:
    case kIdSurfacePlate:
      return app.surface == id - kIdSurfaceCode;
    case kIdShowFeatures:
      return app.sidebarShowsFeatures;
    case kIdShowIndex:
      return !app.sidebarShowsFeatures;
    case kIdPlay:
    case kIdPlayToggle:
      return playback.playing;
    case kIdPan:
    case kIdViewPan:
      return switches.panMode;
    case kIdDimensions:
    case kIdViewExtents:
      return switches.showExtents;
    case kIdMeasure:
    case kIdViewMeasure:
      return switches.measureMode;
    case kIdViewGrid:
      return view.gridOn;
    default:
      return id >= kIdTabFirst && id <= kIdTabLast && app.activeTab == id - kIdTabFirst;
  }
}

void RefreshKeyStates() {
  for (int i = 0; i < kKeyCount; ++i) {
    const bool on = KeyIsOn(kKeys[i].id);
    if (on == shownOn[i]) continue;
    shownOn[i] = on;
    platform::SetChecked(kKeys[i].id, on);
    platform::Repaint(kKeys[i].id);
  }
  if (shownSpeed == playback.speedIndex) return;
  shownSpeed = playback.speedIndex;
  platform::Repaint(kIdSpeedSlider);
}

void ResetKeyStates() {
  for (bool& on : shownOn) on = false;
  shownSpeed = -1;
}

}  // namespace morva
