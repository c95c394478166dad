#include "shell/keys.h"

#include "app/command_ids.h"

namespace morva {

namespace {

using platform::FontRole;

constexpr FontRole kBody = FontRole::Body;
constexpr FontRole kStrong = FontRole::Emphasis;
constexpr FontRole kSmall = FontRole::Small;

// In the order in which they are made.
constexpr KeyLook kKeys[] = {
    {kIdNew, kBody},
    {kIdOpen, kBody, kPanelPlain, Face::Arrow},
    {kIdSaveMenu, kBody},
    {kIdFind, kBody},
    {kIdSend, kBody, kPanelAmber},
    {kIdReceive, kBody, kPanelAmber},
    {kIdAbortTransfer, kSmall, kPanelAmber},
    {kIdSetup, kBody},
    {kIdMachine, kBody},
    {kIdInch, kBody},
    {kIdMm, kBody},
    {kIdBack, kBody},
    {kIdSurfaceCode, kBody, kPanelPlain, Face::Words, kIdSurfaceLast},
    {kIdRewind, kSmall, kPanelPlain, Face::Icon, kIdFit},
    {kIdPath, kBody},
    {kIdPlay, kBody, kPanelGreen},
    {kIdViewMenu, kBody},
    {kIdZoomOut, kStrong},
    {kIdZoomIn, kStrong},
    {kIdZoomReset, kBody},
    {kIdTabFirst, kSmall, kPanelPlain, Face::Tab, kIdTabLast},
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
    {kIdFeatureLock, kSmall, kPanelPlain, Face::IconAndWords},
    {kIdFeatureHide, kSmall, kPanelPlain, Face::IconAndWords},
    {kIdFeatureRename, kSmall},
    {kIdPreflight, kSmall, kPanelGreen},
    {kIdRenumber, kSmall},
    {kIdStrip, kSmall},
    {kIdViewRefresh, kSmall, kPanelPlain, Face::Icon, kIdViewLayers},
    {kIdPlayStart, kSmall, kPanelPlain, Face::Icon, kIdPlayRewind},
    {kIdPlayToggle, kSmall, kPanelGreen, Face::Icon},
    {kIdPlayForward, kSmall, kPanelPlain, Face::Icon, kIdPlayStop},
};

}  // namespace

std::span<const KeyLook> Keys() { return kKeys; }

KeyLook KeyOf(int id) {
  for (const KeyLook& key : kKeys) {
    if (id >= key.id && id <= LastOf(key)) return {id, key.font, key.style, key.face};
  }
  return {};
}

}  // namespace morva
