#include "shell/theme.h"

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

}  // namespace morva
