#include "plate/canvas/plate_paint.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "app/palette.h"
#include "forms/picture.h"
#include "plate/canvas/plate_view.h"
#include "plate/geometry/plate_layout.h"
#include "plate/model/plate.h"
#include "plate/tools/plate_editor.h"
#include "text/codetext.h"

namespace morva {

namespace {

using platform::Canvas;
using platform::Colour;
using platform::FontRole;
using platform::Rect;

constexpr int kPad = 10;        // pixels
constexpr int kWords = 20;      // height of a line of words
constexpr int kTitle = 26;      // of the preview's head
constexpr int kHint = 22;       // and of its foot
constexpr int kBarWidth = 190;  // of the section's drawing
constexpr int kBarMost = 34;    // its height for a plate of any thickness
constexpr int kCutWidth = 46;   // of the cut in it

void Words(Canvas& canvas, const Rect& place, std::u16string_view text, Colour colour, int align) {
  PaintText(canvas, place, text, FontRole::Small, colour, align | platform::kAlignMiddle);
}

void PaintTitle(Canvas& canvas, const Rect& client) {
  PaintText(canvas, {client.left + kPad, client.top, client.right - kPad, client.top + kTitle},
            u"PLATE PREVIEW  \u2022  outline + mounting features", FontRole::Emphasis,
            kBrightAccent, platform::kAlignLeft | platform::kAlignMiddle);
}

void PaintHint(Canvas& canvas, const Rect& client) {
  Words(canvas, {client.left + kPad, client.bottom - kHint, client.right - kPad, client.bottom},
        u"Click to edit \u2022 drag dimensions to reposition \u2022 amber = selected feature",
        kDimText, platform::kAlignLeft);
}

// A bar as thick as the plate, with the default cut in it, not to scale along X.
void PaintBar(Canvas& canvas, const Rect& bar, const PlateNumbers& numbers) {
  FillArea(canvas, bar, kPictureFace);
  const double part =
      numbers.thickness > 0 ? std::clamp(-numbers.depth / numbers.thickness, 0.0, 1.0) : 0;
  const int depth = static_cast<int>(std::lround(part * RectHeight(bar)));
  const int left = (bar.left + bar.right - kCutWidth) / 2;
  if (depth > 0)
    FillArea(canvas, {left, bar.top, left + kCutWidth, bar.top + depth}, kPictureGround);
  FrameArea(canvas, bar, {.colour = kPictureOutline});
}

std::u16string NumberLine(const char16_t* words, double number) {
  return std::u16string(words) + u"  " + DimensionText(number, plate.metric);
}

void PaintSection(Canvas& canvas, const Rect& area) {
  if (RectHeight(area) <= 0) return;
  const PlateNumbers numbers = NumbersOf(plate);
  const bool edited = plateEditor.target == kDepthSection;
  const Colour colour = edited ? kPictureSelected : kMainText;
  FillArea(canvas, {area.left, area.top, area.right, area.top + 1}, kPanelLine);
  Words(canvas, {area.left + kPad, area.top + 2, area.right - kPad, area.top + 2 + kWords},
        u"SECTION \u2022 click to edit", edited ? kPictureSelected : kDimText,
        platform::kAlignLeft);
  const int top = area.top + kWords + 8;
  const Rect bar{area.left + kPad, top, area.left + kPad + kBarWidth, top + kBarMost};
  PaintBar(canvas, bar, numbers);
  const int left = bar.right + 2 * kPad;
  Words(canvas, {left, bar.top - 2, area.right - kPad, bar.top - 2 + kWords},
        NumberLine(u"Thickness", numbers.thickness), colour, platform::kAlignLeft);
  Words(canvas, {left, bar.top + 16, area.right - kPad, bar.top + 16 + kWords},
        NumberLine(u"Cut depth", numbers.depth), colour, platform::kAlignLeft);
}

}  // namespace

void PaintPlate(Canvas& canvas) {
  const Rect client = platform::CanvasArea(canvas);
  FillArea(canvas, client, kPictureGround);
  if (plate.unnamed) {
    PaintTitle(canvas, client);
    PaintText(canvas, client, u"Choose a plate shape to start a new named plate.", FontRole::Body,
              kDimText, platform::kAlignCentre | platform::kAlignMiddle);
    return;
  }
  PaintPlatePicture(canvas);
  PaintTitle(canvas, client);
  PaintSection(canvas, PlateSectionArea());
  PaintHint(canvas, client);
}

}  // namespace morva
