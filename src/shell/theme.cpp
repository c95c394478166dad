#include "shell/theme.h"

#include "app/app_state.h"
#include "app/icon_names.h"

namespace morva {

namespace {

struct PanelColours {
  platform::Colour top;
  platform::Colour bottom;
  platform::Colour selectedTop;
  platform::Colour selectedBottom;
};

constexpr PanelColours kPanels[] = {
    {0x031A27, 0x02111C, 0x042D43, 0x033A54},
    {0x032217, 0x044428, 0x032217, 0x044428},
    {0x241A09, 0x352206, 0x241A09, 0x352206},
    {0x031E2F, 0x01121F, 0x031E2F, 0x01121F},
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
