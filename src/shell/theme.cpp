#include "shell/theme.h"

#include "app/app_state.h"
#include "app/icon_names.h"
#include "app/palette.h"

namespace morva {

namespace {

struct PanelColours {
  platform::Colour top;
  platform::Colour bottom;
  platform::Colour selectedTop;
  platform::Colour selectedBottom;
};

constexpr PanelColours kPanels[] = {
    {kPlainTop, kPlainBottom, kPlainOnTop, kPlainOnBottom},
    {kGreenTop, kGreenBottom, kGreenTop, kGreenBottom},
    {kAmberTop, kAmberBottom, kAmberTop, kAmberBottom},
    {kDeepTop, kDeepBottom, kDeepTop, kDeepBottom},
};

}  // namespace

void DrawPanel(platform::Canvas& canvas, const platform::Rect& area, bool selected,
               PanelStyle style) {
  const PanelColours& colours = kPanels[style];
  FillGradient(canvas, area, selected ? colours.selectedTop : colours.top,
               selected ? colours.selectedBottom : colours.bottom);
}

int ModeIcon(int mode) {
  switch (mode) {
    case kModeHome:
      return kIconHome;
    case kModeWizard:
      return kIconWizard;
    case kModeTools:
      return kIconTools;
    case kModeCodeIndex:
      return kIconCodeIndex;
    case kModeMacros:
      return kIconMacros;
    case kModeShapes:
      return kIconShapes;
    case kModeSimulator:
      return kIconSimulator;
    case kModeFind:
      return kIconFind;
    case kModeCadItem:
      return kIconCad;
    case kModePlateItem:
      return kIconPlate;
    default:
      return kIconLink;
  }
}

}  // namespace morva
