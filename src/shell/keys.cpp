#include "shell/keys.h"

#include <string>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/commands.h"
#include "codetools/index_panel.h"
#include "platform/control.h"
#include "platform/window.h"
#include "shell/icons.h"
#include "simulator/playback.h"
#include "simulator/shown_path.h"
#include "simulator/view_switches.h"

namespace morva {

namespace {

using platform::FontRole;

constexpr FontRole kBody = FontRole::Body;
constexpr FontRole kStrong = FontRole::Emphasis;
constexpr FontRole kSmall = FontRole::Small;

// In the order in which they are made.
constexpr KeyLook kKeys[] = {
    {kIdNew, kBody},
    {kIdOpen, kBody},
    {kIdSaveMenu, kBody},
    {kIdFind, kBody},
    {kIdSend, kBody, kPanelAmber},
    {kIdReceive, kBody, kPanelAmber},
    {kIdSetup, kBody},
    {kIdMachine, kBody},
    {kIdInch, kBody},
    {kIdMm, kBody},
    {kIdBack, kBody},
    {kIdSurfaceCode, kBody},
    {kIdSurfaceCad, kBody},
    {kIdSurfacePlate, kBody},
    {kIdRewind, kSmall, kPanelPlain, Face::Icon},
    {kIdFastForward, kSmall, kPanelPlain, Face::Icon},
    {kIdDimensions, kSmall, kPanelPlain, Face::Icon},
    {kIdMeasure, kSmall, kPanelPlain, Face::Icon},
    {kIdPan, kSmall, kPanelPlain, Face::Icon},
    {kIdFit, kSmall, kPanelPlain, Face::Icon},
    {kIdPath, kBody},
    {kIdPlay, kBody, kPanelGreen},
    {kIdViewMenu, kBody},
    {kIdZoomOut, kStrong},
    {kIdZoomIn, kStrong},
    {kIdZoomReset, kBody},
    {kIdTabFirst + 0, kSmall},
    {kIdTabFirst + 1, kSmall},
    {kIdTabFirst + 2, kSmall},
    {kIdTabFirst + 3, kSmall},
    {kIdTabFirst + 4, kSmall},
    {kIdTabFirst + 5, kSmall},
    {kIdTabFirst + 6, kSmall},
    {kIdTabFirst + 7, kSmall},
    {kIdTabNew, kStrong},
    {kIdCommandWords, kSmall},
    {kIdCompareSecond, kSmall},
    {kIdClose, kSmall},
    {kIdShowFeatures, kSmall},
    {kIdShowIndex, kSmall},
    {kIdFeatureEdit, kSmall, kPanelPlain, Face::IconAndWords},
    {kIdFeatureNew, kSmall, kPanelPlain, Face::IconAndWords},
    {kIdFeatureInclude, kSmall, kPanelPlain, Face::IconAndWords},
    {kIdFeatureDelete, kSmall, kPanelPlain, Face::IconAndWords},
    {kIdFeatureLock, kSmall, kPanelPlain, Face::Fallback},
    {kIdFeatureHide, kSmall, kPanelPlain, Face::Fallback},
    {kIdFeatureRename, kSmall},
    {kIdPreflight, kSmall, kPanelGreen},
    {kIdRenumber, kSmall},
    {kIdViewRefresh, kSmall, kPanelPlain, Face::Icon},
    {kIdViewFit, kSmall, kPanelPlain, Face::Icon},
    {kIdViewPan, kSmall, kPanelPlain, Face::Icon},
    {kIdViewExtents, kSmall, kPanelPlain, Face::Icon},
    {kIdViewMeasure, kSmall, kPanelPlain, Face::Icon},
    {kIdViewGrid, kSmall, kPanelPlain, Face::Icon},
    {kIdViewGridMenu, kSmall, kPanelPlain, Face::Icon},
    {kIdViewLayers, kSmall, kPanelPlain, Face::Icon},
    {kIdPlayStart, kSmall, kPanelPlain, Face::Icon},
    {kIdPlayPrevious, kSmall, kPanelPlain, Face::Icon},
    {kIdPlayRewind, kSmall, kPanelPlain, Face::Icon},
    {kIdPlayToggle, kSmall, kPanelGreen, Face::Icon},
    {kIdPlayForward, kSmall, kPanelPlain, Face::Icon},
    {kIdPlayNext, kSmall, kPanelPlain, Face::Icon},
    {kIdPlayEnd, kSmall, kPanelPlain, Face::Icon},
    {kIdPlayStop, kSmall, kPanelPlain, Face::Icon},
};

constexpr int kKeyCount = static_cast<int>(sizeof(kKeys) / sizeof(kKeys[0]));

bool shownOn[kKeyCount];  // as last drawn
int shownSpeed = -1;

}  // namespace

const KeyLook* Keys(int& count) {
  count = kKeyCount;
  return kKeys;
}

const KeyLook* KeyOf(int id) {
  for (const KeyLook& key : kKeys) {
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
    TellState(kKeys[i].id, on);
  }
  const int speed = ShownPath().play.speedIndex;
  if (shownSpeed == speed) return;
  shownSpeed = speed;
  platform::SetToolTip(kIdSpeedSlider, SpeedHelp());
  platform::Repaint(kIdSpeedSlider);
}

void ResetKeyStates() {
  for (bool& on : shownOn) on = false;
  shownSpeed = -1;
}

}  // namespace morva
