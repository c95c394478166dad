#include "shell/keys.h"

#include <string>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/hover.h"
#include "codetools/index_panel.h"
#include "platform/control.h"
#include "platform/window.h"
#include "shell/icons.h"
#include "simulator/playback.h"
#include "simulator/shown_path.h"
#include "simulator/view.h"

namespace morva {

namespace {

using platform::FontRole;

constexpr FontRole kBody = FontRole::Body;
constexpr FontRole kStrong = FontRole::Emphasis;
constexpr FontRole kSmall = FontRole::Small;

// In the order in which they are made.
constexpr KeySpec kKeys[] = {
    {kIdNew, u"NEW", u"", u"New program (Ctrl+N)", kBody, kPanelPlain, -1, Face::Words},
    {kIdOpen, u"OPEN", u"", u"Open a program (Ctrl+O)", kBody, kPanelPlain, -1, Face::Words},
    {kIdSaveMenu, u"SAVE  \u25BC", u"", u"Save, Save As, Save All (Ctrl+S)", kBody, kPanelPlain, -1,
     Face::Words},
    {kIdFind, u"FIND", u"", u"Find and replace (Ctrl+F)", kBody, kPanelPlain, -1, Face::Words},
    {kIdSend, u"SEND", u"", u"Send the program to the control", kBody, kPanelAmber, -1,
     Face::Words},
    {kIdReceive, u"RECEIVE", u"", u"Receive a program from the control", kBody, kPanelAmber, -1,
     Face::Words},
    {kIdSetup, u"SETUP", u"", u"DNC setup", kBody, kPanelPlain, -1, Face::Words},
    {kIdMachine, u"Machine: Haas VF-3  \u25BE", u"", u"DNC setup of this machine", kBody,
     kPanelPlain, -1, Face::Words},
    {kIdInch, u"INCH *", u"", u"Working units: inch", kBody, kPanelPlain, -1, Face::Words},
    {kIdMm, u"MM", u"", u"Working units: millimeter", kBody, kPanelPlain, -1, Face::Words},
    {kIdBack, u"\u2190  Home", u"Back", u"Back to where you were", kBody, kPanelPlain, -1,
     Face::Words},
    {kIdSurfaceCode, u"Code", u"", u"Program workspace", kBody, kPanelPlain, -1, Face::Words},
    {kIdSurfaceCad, u"CAD", u"", u"CAD workspace", kBody, kPanelPlain, -1, Face::Words},
    {kIdSurfacePlate, u"Plate", u"", u"Plate builder", kBody, kPanelPlain, -1, Face::Words},
    {kIdRewind, u"Rewind", u"", u"Rewind ten toolpath points; playback pauses.", kSmall,
     kPanelPlain, kIconRewind, Face::Icon},
    {kIdFastForward, u"Fast forward", u"", u"Fast forward through the visible toolpath.", kSmall,
     kPanelPlain, kIconForward, Face::Icon},
    {kIdDimensions, u"Dimensions", u"",
     u"Dimensions: display X/Y/Z extents of the visible toolpath.", kSmall, kPanelPlain,
     kIconDimensions, Face::Icon},
    {kIdMeasure, u"Measure", u"",
     u"Measure: choose two displayed endpoints for distance and X/Y/Z differences.", kSmall,
     kPanelPlain, kIconMeasure, Face::Icon},
    {kIdPan, u"Pan", u"",
     u"Switch left-drag between orbit and pan. Middle or Shift-drag always pans.", kSmall,
     kPanelPlain, kIconPan, Face::Icon},
    {kIdFit, u"Fit", u"", u"Fit the visible toolpath and reset pan/zoom.", kSmall, kPanelPlain,
     kIconFit, Face::Icon},
    {kIdPath, u"PATH", u"", u"Rebuild the toolpath from the program", kBody, kPanelPlain, -1,
     Face::Words},
    {kIdPlay, u"PLAY", u"", u"Play or pause the toolpath", kBody, kPanelGreen, -1, Face::Words},
    {kIdViewMenu, u"VIEW", u"", u"Top, front, right and isometric views", kBody, kPanelPlain, -1,
     Face::Words},
    {kIdZoomOut, u"-", u"Zoom out", u"Zoom out", kStrong, kPanelPlain, -1, Face::Words},
    {kIdZoomIn, u"+", u"Zoom in", u"Zoom in", kStrong, kPanelPlain, -1, Face::Words},
    {kIdZoomReset, u"RESET", u"", u"Reset zoom and pan", kBody, kPanelPlain, -1, Face::Words},
    {kIdTabFirst + 0, u"", u"", u"Ctrl+click chooses for comparison", kSmall, kPanelPlain, -1,
     Face::Words},
    {kIdTabFirst + 1, u"", u"", u"Ctrl+click chooses for comparison", kSmall, kPanelPlain, -1,
     Face::Words},
    {kIdTabFirst + 2, u"", u"", u"Ctrl+click chooses for comparison", kSmall, kPanelPlain, -1,
     Face::Words},
    {kIdTabFirst + 3, u"", u"", u"Ctrl+click chooses for comparison", kSmall, kPanelPlain, -1,
     Face::Words},
    {kIdTabFirst + 4, u"", u"", u"Ctrl+click chooses for comparison", kSmall, kPanelPlain, -1,
     Face::Words},
    {kIdTabFirst + 5, u"", u"", u"Ctrl+click chooses for comparison", kSmall, kPanelPlain, -1,
     Face::Words},
    {kIdTabFirst + 6, u"", u"", u"Ctrl+click chooses for comparison", kSmall, kPanelPlain, -1,
     Face::Words},
    {kIdTabFirst + 7, u"", u"", u"Ctrl+click chooses for comparison", kSmall, kPanelPlain, -1,
     Face::Words},
    {kIdTabNew, u"+", u"New program tab", u"New program in a tab", kStrong, kPanelPlain, -1,
     Face::Words},
    {kIdCommandWords, u"COMMAND WORDS", u"", u"Show the program in plain words", kSmall,
     kPanelPlain, -1, Face::Words},
    {kIdCompareSecond, u"COMPARE", u"", u"Compare two open programs", kSmall, kPanelPlain, -1,
     Face::Words},
    {kIdClose, u"CLOSE", u"", u"Close this program (Ctrl+W)", kSmall, kPanelPlain, -1, Face::Words},
    {kIdShowFeatures, u"FEATURES", u"", u"Show the program's features", kSmall, kPanelPlain, -1,
     Face::Words},
    {kIdShowIndex, u"CODE INDEX", u"", u"Show the index of codes", kSmall, kPanelPlain, -1,
     Face::Words},
    {kIdFeatureEdit, u"Edit feature", u"", u"Edit selected feature settings", kSmall, kPanelPlain,
     kIconEdit, Face::IconAndWords},
    {kIdFeatureNew, u"New feature", u"", u"Add a new feature", kSmall, kPanelPlain, kIconNew,
     Face::IconAndWords},
    {kIdFeatureInclude, u"Include code: ON", u"",
     u"Include / exclude machining code; keep geometry", kSmall, kPanelPlain, kIconInclude,
     Face::IconAndWords},
    {kIdFeatureDelete, u"Delete feature", u"", u"Delete selected feature (Undo restores)", kSmall,
     kPanelPlain, kIconDelete, Face::IconAndWords},
    {kIdFeatureLock, u"Lock feature", u"", u"Lock or unlock the feature's settings", kSmall,
     kPanelPlain, kIconLock, Face::Fallback},
    {kIdFeatureHide, u"Show / hide feature", u"", u"Show or hide the feature in the simulator",
     kSmall, kPanelPlain, kIconEye, Face::Fallback},
    {kIdFeatureRename, u"RENAME", u"", u"Rename the selected feature", kSmall, kPanelPlain, -1,
     Face::Words},
    {kIdPreflight, u"RUN PROGRAM PREFLIGHT", u"", u"Check the program (F5)", kSmall, kPanelGreen,
     -1, Face::Words},
    {kIdRenumber, u"RENUMBER", u"", u"Number the program's lines N10, N20, ...", kSmall,
     kPanelPlain, -1, Face::Words},
    {kIdViewRefresh, u"Refresh toolpath", u"", u"Refresh toolpath", kSmall, kPanelPlain,
     kIconRefresh, Face::Icon},
    {kIdViewFit, u"Fit toolpath to view", u"", u"Fit toolpath to view", kSmall, kPanelPlain,
     kIconFit, Face::Icon},
    {kIdViewPan, u"Toggle pan / orbit; middle or Shift-drag pans", u"",
     u"Toggle pan / orbit; middle or Shift-drag pans", kSmall, kPanelPlain, kIconPan, Face::Icon},
    {kIdViewExtents, u"Show path dimensions", u"", u"Show path dimensions", kSmall, kPanelPlain,
     kIconDimensions, Face::Icon},
    {kIdViewMeasure, u"Measure between two path points", u"", u"Measure between two path points",
     kSmall, kPanelPlain, kIconMeasure, Face::Icon},
    {kIdViewGrid, u"Toggle world grid", u"", u"Toggle world grid", kSmall, kPanelPlain, kIconGrid,
     Face::Icon},
    {kIdViewGridMenu, u"Grid settings: spacing and color", u"", u"Grid settings: spacing and color",
     kSmall, kPanelPlain, kIconGridMenu, Face::Icon},
    {kIdViewLayers, u"Preview layers: rapid moves, overlap, context and approximate cut surface",
     u"", u"Preview layers: rapid moves, overlap, context and approximate cut surface", kSmall,
     kPanelPlain, kIconLayers, Face::Icon},
    {kIdPlayStart, kPlaybackHint, u"Go to start", u"Go to start", kSmall, kPanelPlain, kIconStart,
     Face::Icon},
    {kIdPlayPrevious, kPlaybackHint, u"Previous operation", u"Previous operation", kSmall,
     kPanelPlain, kIconPrevious, Face::Icon},
    {kIdPlayRewind, kPlaybackHint, u"Rewind ten points", u"Rewind ten points", kSmall, kPanelPlain,
     kIconRewind, Face::Icon},
    {kIdPlayToggle, kPlaybackHint, u"Play / pause", u"Play / pause", kSmall, kPanelGreen, kIconPlay,
     Face::Icon},
    {kIdPlayForward, kPlaybackHint, u"Play faster", u"Fast forward", kSmall, kPanelPlain,
     kIconForward, Face::Icon},
    {kIdPlayNext, kPlaybackHint, u"Next operation", u"Next operation", kSmall, kPanelPlain,
     kIconNext, Face::Icon},
    {kIdPlayEnd, kPlaybackHint, u"Go to end", u"Go to end", kSmall, kPanelPlain, kIconEnd,
     Face::Icon},
    {kIdPlayStop, kPlaybackHint, u"Stop", u"Stop", kSmall, kPanelPlain, kIconStop, Face::Icon},
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
    case kIdCompareSecond:
      return app.compareActive;
    case kIdShowFeatures:
      return app.sidebarShowsFeatures;
    case kIdShowIndex:
      return !app.sidebarShowsFeatures;
    case kIdIndexAll:
    case kIdIndexG:
    case kIdIndexM:
    case kIdIndexN:
    case kIdIndexMacro:
    case kIdIndexText:
      return IsIndexKeyOn(id);
    case kIdPlay:
    case kIdPlayToggle:
      return ShownPath().play.playing;
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

bool KeyHoldsState(int id) {
  switch (id) {
    case kIdInch:
    case kIdMm:
    case kIdSurfaceCode:
    case kIdSurfaceCad:
    case kIdSurfacePlate:
    case kIdShowFeatures:
    case kIdShowIndex:
    case kIdPan:
    case kIdViewPan:
    case kIdDimensions:
    case kIdViewExtents:
    case kIdMeasure:
    case kIdViewMeasure:
    case kIdViewGrid:
      return true;
    default:
      return id >= kIdTabFirst && id <= kIdTabLast;
  }
}

void RefreshKeyStates() {
  for (int i = 0; i < kKeyCount; ++i) {
    const bool on = KeyIsOn(kKeys[i].id);
    if (on == shownOn[i]) continue;
    shownOn[i] = on;
    if (KeyHoldsState(kKeys[i].id)) platform::SetChecked(kKeys[i].id, on);
    // The tip is what a screen reader gives for a description.
    platform::SetToolTip(kKeys[i].id, kKeys[i].tip + std::u16string(on ? u"  (on)" : u""));
    platform::Repaint(kKeys[i].id);
  }
  const int speed = ShownPath().play.speedIndex;
  if (shownSpeed == speed) return;
  shownSpeed = speed;
  platform::SetToolTip(kIdSpeedSlider, std::u16string(u"Simulation speed: ") +
                                           SpeedWord(shownSpeed) +
                                           u". Drag left to slow down, right to speed up.");
  platform::Repaint(kIdSpeedSlider);
}

void ResetKeyStates() {
  for (bool& on : shownOn) on = false;
  shownSpeed = -1;
}

}  // namespace morva
