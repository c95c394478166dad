#include "forms/sheet.h"

#include <algorithm>
#include <string>

#include "app/join_table.h"
#include "app/limits.h"
#include "app/palette.h"
#include "app/stop.h"
#include "forms/form.h"

namespace morva {

namespace {

using platform::Canvas;
using platform::Rect;

constexpr int kArrow = 16;        // height of a scroll bar's arrow
constexpr int kLineStep = 36;     // pixels a step of the scroll bar
constexpr int kPageOverlap = 60;  // pixels that stay in view over a page
constexpr int kThumbLeast = 28;
constexpr int kShownAbove = 24;  // pixels above a control that comes into view
constexpr int kShownMore = 6;
constexpr int kShownBelow = 4;
constexpr int kMostNotches = 100;

struct SheetState {
  const Sheet* sheet = nullptr;
  const Form* form = nullptr;  // that is up on it
  bool joined = false;         // its views are heard
  int top = 0;                 // pixels scrolled away
  int width = 0;               // of the paper
  int height = 0;              // of the visible part
  int content = 0;             // of the rows
  bool dragging = false;
  int dragFrom = 0;  // pointer and top where the thumb was taken
  int dragTop = 0;
};
SheetState states[kMaxSheets];
JoinTable stateFill{u"sheets of forms", kMaxSheets};

SheetState& StateOf(const Sheet& sheet) {
  for (int i = 0; i < stateFill.count; ++i) {
    if (states[i].sheet == &sheet) return states[i];
  }
  SheetState& state = states[NextRow(stateFill)];
  state = SheetState();
  state.sheet = &sheet;
  return state;
}

int PaperHeight(const SheetState& state) {
  return state.sheet->height > 0 ? state.sheet->height : std::max(state.content, state.height);
}

int MostTop(const SheetState& state) { return std::max(0, PaperHeight(state) - state.height); }

void MovePaper(const SheetState& state) {
  platform::SetPlace(state.sheet->paper.id,
                     Rect{0, -state.top, state.width, PaperHeight(state) - state.top});
  platform::Repaint(state.sheet->bar.id);
}

void ScrollTo(SheetState& state, int top) {
  const int wanted = std::clamp(top, 0, MostTop(state));
  if (wanted == state.top) return;
  state.top = wanted;
  MovePaper(state);
}

int PageStep(const SheetState& state) { return std::max(kLineStep, state.height - kPageOverlap); }

// The thumb's top and bottom in the scroll bar's pixels.
void FindThumb(const SheetState& state, int& top, int& bottom) {
  const int track = std::max(1, state.height - 2 * kArrow);
  const int most = MostTop(state);
  int length = track;
  if (most > 0) length = std::max(kThumbLeast, track * state.height / PaperHeight(state));
  length = std::min(length, track);
  top = kArrow;
  if (most > 0) top += (track - length) * state.top / most;
  bottom = top + length;
}

void DragThumb(SheetState& state, int y) {
  const int track = std::max(1, state.height - 2 * kArrow);
  int top = 0;
  int bottom = 0;
  FindThumb(state, top, bottom);
  const int room = std::max(1, track - (bottom - top));
  ScrollTo(state, state.dragTop + (y - state.dragFrom) * MostTop(state) / room);
}

void PressBar(SheetState& state, int y) {
  int top = 0;
  int bottom = 0;
  FindThumb(state, top, bottom);
  if (y < kArrow) {
    ScrollTo(state, state.top - kLineStep);
  } else if (y >= state.height - kArrow) {
    ScrollTo(state, state.top + kLineStep);
  } else if (y < top) {
    ScrollTo(state, state.top - PageStep(state));
  } else if (y >= bottom) {
    ScrollTo(state, state.top + PageStep(state));
  } else {
    state.dragging = true;
    state.dragFrom = y;
    state.dragTop = state.top;
    platform::CapturePointer(state.sheet->bar.id);
  }
}

void PaintArrow(Canvas& canvas, int y, int tip, platform::Colour colour) {
  const double middle = kSheetBar / 2.0;
  const platform::PointF points[] = {
      {middle - 4, y - tip * 2.0}, {middle + 4, y - tip * 2.0}, {middle, y + tip * 2.5}};
  platform::FillPolygon(canvas, points, 3, colour);
}

void Stop(const Sheet& sheet, const char16_t* why) {
  StopProgram(u"MORVA cannot start. The sheet " + std::u16string(sheet.frame.className) + why);
}

void MakeOne(const SheetView& view, int parent) {
  if (platform::Exists(view.id)) return;
  platform::ViewSpec spec;
  spec.id = view.id;
  spec.className = view.className;
  spec.accessibleName = view.name;
  spec.background = kPanelBackground;
  spec.parent = parent;
  platform::MakeView(spec);
  platform::SetVisible(spec.id, false);
}

}  // namespace

bool JoinSheet(const Sheet& sheet) {
  SheetState& state = StateOf(sheet);
  const bool first = !state.joined;
  state.joined = true;
  return first;
}

void MakeSheet(const Sheet& sheet) {
  if (!StateOf(sheet).joined) Stop(sheet, u" is not registered.");
  if (!platform::Exists(sheet.parent)) Stop(sheet, u" has no parent.");
  MakeOne(sheet.frame, sheet.parent);
  MakeOne(sheet.bar, sheet.parent);
  MakeOne(sheet.paper, sheet.frame.id);
}

void PlaceSheet(const Sheet& sheet, const Form& form, const Rect& area) {
  SheetState& state = StateOf(sheet);
  if (state.form != &form) state.top = 0;
  state.form = &form;
  state.width = RectWidth(area) - kSheetBar;
  state.height = RectHeight(area);
  platform::SetPlace(sheet.frame.id,
                     Rect{area.left, area.top, area.right - kSheetBar, area.bottom});
  platform::SetPlace(sheet.bar.id, Rect{area.right - kSheetBar, area.top, area.right, area.bottom});
  for (const int id : {sheet.frame.id, sheet.bar.id, sheet.paper.id}) {
    platform::SetVisible(id, true);
  }
  state.top = std::min(state.top, MostTop(state));
  MovePaper(state);
}

const Form* FormOnSheet(const Sheet& sheet) { return StateOf(sheet).form; }

void HideSheet(const Sheet& sheet, const Form& form) {
  if (StateOf(sheet).form != &form) return;
  for (const int id : {sheet.frame.id, sheet.bar.id}) platform::SetVisible(id, false);
}

void SetSheetContent(const Sheet& sheet, int pixels) {
  SheetState& state = StateOf(sheet);
  if (state.content == pixels) return;
  state.content = pixels;
  state.top = std::min(state.top, MostTop(state));
  MovePaper(state);
}

Rect SheetPaper(const Sheet& sheet) {
  const SheetState& state = StateOf(sheet);
  return Rect{0, 0, state.width, PaperHeight(state)};
}

int SheetTop(const Sheet& sheet) { return StateOf(sheet).top; }

bool SheetScrolls(const Sheet& sheet) { return MostTop(StateOf(sheet)) > 0; }

void ScrollSheet(const Sheet& sheet, int pixels) {
  SheetState& state = StateOf(sheet);
  ScrollTo(state, state.top + pixels);
}

void ScrollSheetToTop(const Sheet& sheet) {
  SheetState& state = StateOf(sheet);
  state.top = 0;
  MovePaper(state);
}

void PageSheet(const Sheet& sheet, int pages) {
  ScrollSheet(sheet, pages * PageStep(StateOf(sheet)));
}

void ShowOnSheet(const Sheet& sheet, const Rect& place) {
  SheetState& state = StateOf(sheet);
  if (place.top < state.top + kShownAbove) {
    ScrollTo(state, place.top - kShownAbove - kShownMore);
  }
  if (place.bottom > state.top + state.height) {
    ScrollTo(state, place.bottom + kShownBelow - state.height);
  }
}

void ResetSheet(const Sheet& sheet) {
  SheetState& state = StateOf(sheet);
  const bool joined = state.joined;
  state = SheetState();
  state.sheet = &sheet;
  state.joined = joined;
}

void ResetSheets() { stateFill.count = 0; }

void PaintSheetFrame(Canvas& canvas) {
  platform::FillArea(canvas, platform::CanvasArea(canvas), kPanelBackground);
}

void PaintSheetPaper(const Sheet& sheet, Canvas& canvas) {
  PaintSheetFrame(canvas);
  PaintForms(canvas, sheet.paper.id);
}

void PaintSheetBar(const Sheet& sheet, Canvas& canvas) {
  const SheetState& state = StateOf(sheet);
  const Rect area = platform::CanvasArea(canvas);
  // Where all fits there is no bar.
  platform::FillArea(canvas, area, MostTop(state) == 0 ? kPanelBackground : kDarkBand);
  if (MostTop(state) == 0) return;
  int top = 0;
  int bottom = 0;
  FindThumb(state, top, bottom);
  platform::FillArea(canvas, Rect{area.left + 3, top, area.right - 3, bottom},
                     state.dragging ? kBrightAccent : kControlLine);
  PaintArrow(canvas, kArrow / 2, -1, state.top > 0 ? kMainText : kFaintText);
  PaintArrow(canvas, state.height - kArrow / 2, 1,
             state.top < MostTop(state) ? kMainText : kFaintText);
}

bool SheetWheel(const Sheet& sheet, const platform::PointerEvent& event) {
  if (event.action != platform::PointerAction::Wheel) return false;
  ScrollSheet(sheet, -std::clamp(event.wheel, -kMostNotches, kMostNotches) * kLineStep);
  return true;
}

bool SheetBarPointer(const Sheet& sheet, const platform::PointerEvent& event) {
  SheetState& state = StateOf(sheet);
  switch (event.action) {
    case platform::PointerAction::Press:
    case platform::PointerAction::DoubleClick:
      if (event.button != platform::PointerButton::Left) return false;
      PressBar(state, event.y);
      return true;
    case platform::PointerAction::Move:
      if (!state.dragging) return false;
      if (event.leftDown) {
        DragThumb(state, event.y);
        return true;
      }
      [[fallthrough]];
    case platform::PointerAction::Release:
    case platform::PointerAction::Lost:
      if (!state.dragging) return false;
      state.dragging = false;
      platform::ReleasePointer();
      platform::Repaint(sheet.bar.id);
      return true;
    case platform::PointerAction::Wheel:
      return SheetWheel(sheet, event);
    default:
      return false;
  }
}

}  // namespace morva
