// The canvas records its calls, so that a frame is text and can be looked at.

#include "platform/canvas.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "platform/headless/headless_internal.h"

namespace headless {
namespace {

struct CallMaker {
  DrawCall call;

  explicit CallMaker(const char* name) { call.name = name; }
  CallMaker& Number(double value) {
    call.numbers.push_back(value);
    return *this;
  }
  CallMaker& Place(const platform::Rect& r) {
    return Number(r.left).Number(r.top).Number(r.right).Number(r.bottom);
  }
  CallMaker& At(platform::PointF p) { return Number(p.x).Number(p.y); }
  CallMaker& At(const platform::PointF* points, int count) {
    for (int i = 0; i < count; ++i) At(points[i]);
    return *this;
  }
  CallMaker& In(platform::Colour colour) {
    call.colours.push_back(colour);
    return *this;
  }
  CallMaker& With(const platform::Pen& pen) {
    return In(pen.colour).Number(pen.width).Number(pen.dashed).Number(pen.smooth);
  }
};

void Keep(platform::Canvas& canvas, CallMaker& maker) {
  canvas.calls.push_back(std::move(maker.call));
}

// Fixed widths and heights stand in for fonts, by role: body, emphasis, small, title, code.
constexpr int kWidths[] = {8, 8, 6, 15, 9};
constexpr int kHeights[] = {21, 21, 17, 40, 20};

platform::DrawState StateOf(const Item& item) {
  platform::DrawState state;
  state.area = platform::ClientArea(item.id);
  state.pressed = item.pressed;
  state.focused = platform::FocusedId() == item.id;
  state.enabled = platform::IsEnabled(item.id);
  state.checked = item.checked;
  state.hovered = platform::IdUnderPointer() == item.id;
  return state;
}

void DrawRows(const Item& item, platform::Canvas& canvas) {
  const platform::Events& events = platform::Listener();
  const int id = item.id;
  const int count = platform::RowCount(id);
  for (int row = platform::TopRow(id); row < count; ++row) {
    const platform::Rect place = platform::RowPlace(id, row);
    if (platform::RectHeight(place) == 0) break;
    platform::DrawState state = StateOf(item);
    state.area = place;
    state.row = row;
    state.selected = platform::IsRowSelected(id, row);
    events.drawItem(id, state, canvas);
  }
}

}  // namespace

std::vector<DrawCall> PaintOf(int id) {
  platform::Canvas canvas;
  canvas.area = platform::ClientArea(id);
  const platform::Events& events = platform::Listener();
  const Item* item = Find(id);
  if (id == platform::kMainWindow || (item && item->kind == Kind::View)) {
    if (events.paint) events.paint(id, canvas);
  } else if (item && events.drawItem) {
    if (item->kind == Kind::List || item->kind == Kind::MultiList) {
      if (item->list.ownerDrawn) DrawRows(*item, canvas);
    } else if (item->kind == Kind::Button) {
      events.drawItem(id, StateOf(*item), canvas);
    }
  }
  return std::move(canvas.calls);
}

}  // namespace headless

namespace platform {

using headless::CallMaker;
using headless::Keep;

Rect CanvasArea(const Canvas& canvas) { return canvas.area; }

void FillArea(Canvas& canvas, const Rect& area, Colour colour) {
  Keep(canvas, CallMaker("FillArea").Place(area).In(colour));
}

void FillGradient(Canvas& canvas, const Rect& area, Colour top, Colour bottom) {
  Keep(canvas, CallMaker("FillGradient").Place(area).In(top).In(bottom));
}

void FrameArea(Canvas& canvas, const Rect& area, const Pen& pen) {
  Keep(canvas, CallMaker("FrameArea").Place(area).With(pen));
}

void PaintLine(Canvas& canvas, PointF from, PointF to, const Pen& pen) {
  Keep(canvas, CallMaker("PaintLine").At(from).At(to).With(pen));
}

void PaintPolyline(Canvas& canvas, const PointF* points, int count, const Pen& pen) {
  Keep(canvas, CallMaker("PaintPolyline").At(points, count).With(pen));
}

void FillPolygon(Canvas& canvas, const PointF* points, int count, Colour colour) {
  Keep(canvas, CallMaker("FillPolygon").At(points, count).In(colour));
}

void PaintPolygon(Canvas& canvas, const PointF* points, int count, Colour fill, const Pen& pen) {
  Keep(canvas, CallMaker("PaintPolygon").At(points, count).In(fill).With(pen));
}

void PaintEllipse(Canvas& canvas, PointF centre, double radiusX, double radiusY, const Pen& pen) {
  Keep(canvas, CallMaker("PaintEllipse").At(centre).Number(radiusX).Number(radiusY).With(pen));
}

void FillEllipse(Canvas& canvas, PointF centre, double radiusX, double radiusY, Colour colour) {
  Keep(canvas, CallMaker("FillEllipse").At(centre).Number(radiusX).Number(radiusY).In(colour));
}

void PaintSegments(Canvas& canvas, const Segment* segments, int count, const Pen& pen) {
  CallMaker maker("PaintSegments");
  for (int i = 0; i < count; ++i) {
    const Segment& s = segments[i];
    maker.Number(s.x0).Number(s.y0).Number(s.x1).Number(s.y1);
  }
  Keep(canvas, maker.With(pen));
}

void PaintText(Canvas& canvas, const Rect& area, std::u16string_view text, FontRole font,
               Colour colour, unsigned align) {
  CallMaker maker("PaintText");
  maker.Place(area).Number(static_cast<int>(font)).Number(align).In(colour);
  maker.call.text = text;
  Keep(canvas, maker);
}

void PaintLabel(Canvas& canvas, const Rect& area, std::u16string_view text, FontRole font,
                Colour colour, Colour ground, unsigned align) {
  FillArea(canvas, area, ground);
  PaintText(canvas, area, text, font, colour, align);
}

int TextWidth(FontRole font, std::u16string_view text) {
  return headless::kWidths[static_cast<int>(font)] * static_cast<int>(text.size());
}

int TextHeight(FontRole font) { return headless::kHeights[static_cast<int>(font)]; }

void PushClip(Canvas& canvas, const Rect& area) { Keep(canvas, CallMaker("PushClip").Place(area)); }

void PopClip(Canvas& canvas) {
  CallMaker maker("PopClip");
  Keep(canvas, maker);
}

}  // namespace platform
