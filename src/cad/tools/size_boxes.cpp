#include "cad/tools/size_boxes.h"

#include <algorithm>

#include "app/command_ids.h"
#include "app/limits.h"
#include "app/palette.h"
#include "app/panels.h"
#include "app/wells.h"
#include "cad/geometry/construct.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"
#include "cad/tools/edit_parts.h"
#include "cad/tools/polygon.h"
#include "cad/tools/tool_change.h"
#include "forms/form.h"
#include "platform/canvas.h"
#include "platform/control.h"
#include "platform/window.h"
#include "text/codetext.h"

namespace morva {

namespace {

constexpr int kBeside = 16;  // pixels from the cursor
constexpr int kBelow = 24;
constexpr int kRoomRight = 240;  // of the boxes and the key, up to the canvas's edges
constexpr int kRoomBottom = 45;
constexpr int kMargin = 6;  // of the ground below them
constexpr int kClear = 14;  // from the cursor's mark to that ground
constexpr int kBoxWidth = 106;
constexpr int kBoxHeight = 28;
constexpr int kPitch = 112;                     // from the first box to the second
constexpr int kKeyWidth = kRoomRight - kPitch;  // up to the edge
constexpr int kHeadHeight = 24;                 // of the caption and the key above the boxes
constexpr int kKeyRise = 2;                     // the key stands clear of the second box

platform::Point openedAt;  // canvas pixel of the cursor

bool TakesTwoSizes() {
  return tools.constructionMethod == kIdMethodPolygon || HasTwoSizes(tools.previewObject);
}

platform::Rect Box(int x, int y, int width, int height) {
  return platform::Rect{x, y, x + width, y + height};
}

// Where the parent of a control begins, in main-window pixels.
platform::Point ParentOrigin(int id) {
  const platform::Rect outer = platform::PlaceInMainWindow(id);
  const platform::Rect inner = platform::PlaceOf(id);
  return {outer.left - inner.left, outer.top - inner.top};
}

void Put(int id, const platform::Rect& place) {
  ShowAt(id, place);
  platform::BringToTop(id);
}

void FocusBox(int id) {
  platform::SetFocusTo(id);
  platform::SelectAllText(id);
}

bool CommitPolygon(double radius) {
  double sides = 0;
  if (!ReadStrictField(kIdCadSizeBox2, sides)) return false;
  if (!(sides >= kLeastSides && sides <= kMaxPolygonSides) || sides != static_cast<int>(sides)) {
    return false;
  }
  const SketchObject& shown = tools.previewObject;
  return MakePolygon(static_cast<int>(sides), radius, shown.x, shown.y, shown.angle);
}

bool Commit() {
  const int method = tools.constructionMethod;
  if (method == 0 || !tools.previewValid || IsTangentMethod(method)) return false;
  double size = 0;
  if (!ReadStrictField(kIdCadSizeBox1, size) || !(size > 0)) return false;
  if (method == kIdMethodPolygon) return CommitPolygon(size);
  double size2 = 0;
  if (TakesTwoSizes() && !ReadStrictField(kIdCadSizeBox2, size2)) return false;
  SketchObject object = tools.previewObject;
  return ObjectFromTypedSizes(method, size, size2, tools.pointsX[0], tools.pointsY[0], object) &&
         AppendDrawn(object, kDrawnByPoints);
}

}  // namespace

void CaptionSizeBoxes() {
  const int method = tools.constructionMethod;
  const bool diameter = method >= kIdMethodCircleRadius && method <= kIdMethodCircleThree;
  platform::SetText(kIdCadSizeCaption, diameter ? u"Diameter" : kLengthWords);
}

void FillSizeBoxes() {
  const SketchObject& shown = tools.previewObject;
  platform::SetText(kIdCadSizeBox1, SketchNumber(shown.size, 4));
  if (tools.constructionMethod == kIdMethodPolygon) {
    platform::SetText(kIdCadSizeBox2, IntegerText(static_cast<std::int32_t>(shown.size2)));
  } else {
    platform::SetText(kIdCadSizeBox2, TakesTwoSizes() ? SketchNumber(shown.size2, 4) : u"");
  }
}

void OpenSizeBoxes(int canvasX, int canvasY) {
  openedAt = {canvasX, canvasY};
  FillSizeBoxes();
  SetSizePanelShown(true);
  PlaceSizeBoxes();
  FocusSizeBoxes();
}

void PlaceSizeBoxes() {
  if (!tools.sizePanelShown) return;
  const platform::Rect canvas = platform::PlaceInMainWindow(kViewCadCanvas);
  const int leastX = canvas.left + kMargin;
  const int leastY = canvas.top + kMargin + kHeadHeight + kKeyRise;
  const int mostX = std::max(leastX, canvas.right - kRoomRight - kMargin);
  const int mostY = std::max(leastY, canvas.bottom - kRoomBottom);
  const platform::Point origin = ParentOrigin(kIdCadSizeBox1);
  const int cursorX = canvas.left + openedAt.x;
  const int cursorY = canvas.top + openedAt.y;
  int x = std::clamp(cursorX + kBeside, leastX, mostX);
  int y = std::clamp(cursorY + kBelow, leastY, mostY);
  if (x < cursorX + kBeside) {
    // Where they cannot stand beside the cursor they stand below or above it, not on it.
    y = cursorY + kClear + kMargin + kHeadHeight + kKeyRise;
    if (y > mostY) y = cursorY - kClear - kMargin - kBoxHeight;
    y = std::clamp(y, leastY, mostY);
  }
  x -= origin.x;
  y -= origin.y;
  const bool two = TakesTwoSizes();
  Put(kIdCadSizeCaption, Box(x, y - kHeadHeight, kBoxWidth, kHeadHeight));
  Put(kIdCadCreateTyped, Box(x + kPitch, y - kHeadHeight - kKeyRise, kKeyWidth, kHeadHeight));
  Put(kIdCadSizeBox1, Box(x, y, kBoxWidth, kBoxHeight));
  if (two) Put(kIdCadSizeBox2, Box(x + kPitch, y, kBoxWidth, kBoxHeight));
  // No form: the boxes follow the pointer over the canvas.
  platform::SetVisible(kIdCadSizeBox2, two);
}

void PaintSizeBoxes(platform::Canvas& canvas) {
  if (!tools.sizePanelShown) return;
  const platform::Rect view = platform::PlaceInMainWindow(kViewCadCanvas);
  const auto onCanvas = [&view](int id) {
    const platform::Rect place = platform::PlaceInMainWindow(id);
    return Box(place.left - view.left, place.top - view.top, platform::RectWidth(place),
               platform::RectHeight(place));
  };
  const platform::Rect first = onCanvas(kIdCadSizeBox1);
  const platform::Rect key = onCanvas(kIdCadCreateTyped);
  const platform::Rect ground{first.left - kMargin, key.top - kMargin, key.right + kMargin,
                              first.bottom + kMargin};
  FillArea(canvas, ground, kPanelBackground);
  platform::Pen edge;
  edge.colour = kControlLine;
  FrameArea(canvas, ground, edge);
  const int focused = platform::FocusedId();
  for (const int id : {kIdCadSizeBox1, kIdCadSizeBox2}) {
    if (platform::IsVisible(id)) FrameWell(canvas, onCanvas(id), focused == id);
  }
}

void FocusSizeBoxes() { FocusBox(kIdCadSizeBox1); }

bool SizeBoxKey(const platform::KeyEvent& key) {
  switch (key.key) {
    case platform::kKeyEnter:
      CommitTypedSize(false);
      return true;
    case platform::kKeyEscape:
      return EscapeTool();
    case platform::kKeyTab: {
      const bool inFirst = platform::FocusedId() == kIdCadSizeBox1;
      FocusBox(inFirst && platform::IsVisible(kIdCadSizeBox2) ? kIdCadSizeBox2 : kIdCadSizeBox1);
      return true;
    }
    default:
      return false;
  }
}

bool CommitTypedSize(bool fromButton) {
  if (Commit()) {
    RestartMethod();
    FocusCanvas();
    return true;
  }
  if (fromButton) {
    SetSketchStatus(u"Choose construction points and valid positive dimensions first.");
  }
  return false;
}

}  // namespace morva
