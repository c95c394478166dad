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

// What builders draw: fills first, then lines.
inline constexpr platform::Colour kPictureGround = kWindowBackground;
inline constexpr platform::Colour kPictureFace = 0x123048;
inline constexpr platform::Colour kPictureOpening = kPictureGround;
inline constexpr platform::Colour kPicturePocket = 0x0B2233;
inline constexpr platform::Colour kPictureShadeDark = 0x1B3E57;
inline constexpr platform::Colour kPictureShadeMid = 0x3B6C8E;
inline constexpr platform::Colour kPictureShadeLight = 0x86AFCB;
inline constexpr platform::Colour kPictureStock = 0x96A7BD;
inline constexpr platform::Colour kPictureConstruction = 0x8F83C9;
inline constexpr platform::Colour kPictureHidden = 0x35506A;
inline constexpr platform::Colour kPictureOutline = 0x9CC3E0;
inline constexpr platform::Colour kPictureFeature = 0x48D3B8;
inline constexpr platform::Colour kPictureBlind = 0x5B9BE6;
inline constexpr platform::Colour kPictureDimension = 0xB4C6D8;
inline constexpr platform::Colour kPictureSelected = 0xF1BE4C;

}  // namespace morva
