// The dark look: palette, panel gradients, icons and owner drawing.
//
// Drawing is a pure function from a control's state to canvas calls.
#pragma once

#include "platform/canvas.h"
#include "platform/events.h"

namespace morva {

inline constexpr platform::Colour kWindowBackground = 0x010F19;
inline constexpr platform::Colour kPanelBackground = 0x021726;
inline constexpr platform::Colour kInputBackground = 0x031929;
inline constexpr platform::Colour kDarkBand = 0x010D15;
inline constexpr platform::Colour kOutputBackground = 0x03080E;
inline constexpr platform::Colour kAccent = 0x0089B2;
inline constexpr platform::Colour kBrightAccent = 0x00D3F2;
inline constexpr platform::Colour kMainText = 0xDEE9F2;
inline constexpr platform::Colour kDimText = 0x91AAC4;
inline constexpr platform::Colour kWorkArea = 0x0A192B;
inline constexpr platform::Colour kSidePanel = 0x091627;
inline constexpr platform::Colour kPanelLine = 0x12528B;
inline constexpr platform::Colour kEditorText = 0xDCE0E6;

enum PanelStyle { kPanelPlain = 0, kPanelGreen = 1, kPanelAmber = 2, kPanelDeep = 3 };

void DrawPanel(platform::Canvas& canvas, const platform::Rect& area, bool selected,
               PanelStyle style);
// One of the 42 icons, ids 0 to 41, `size` pixels high.
void DrawIcon(platform::Canvas& canvas, int icon, int centreX, int centreY, int size,
              platform::Colour colour);
int ModeIcon(int mode);
// Every owner-drawn control and list row.
void DrawOwnerItem(int id, const platform::DrawState& state, platform::Canvas& canvas);
// Panels and top band of the main window.
void PaintMainWindow(platform::Canvas& canvas);

}  // namespace morva
