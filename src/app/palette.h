// The palette of the dark look, open to every room that sets colours.
#pragma once

#include "platform/geometry.h"

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
inline constexpr platform::Colour kWellLine = 0x0E3A5C;  // around editor, view, fields, logs
inline constexpr platform::Colour kEditorText = 0xDCE0E6;

}  // namespace morva
