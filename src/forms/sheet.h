// Sheets: the ground of a form that scrolls. A frame shows part of a paper, a bar scrolls it.
// Several forms may share one, of which one is up at a time.
#pragma once

#include "app/panels.h"
#include "platform/canvas.h"
#include "platform/events.h"
#include "platform/geometry.h"
#include "platform/window.h"

namespace morva {

struct Form;  // forms/form.h

struct SheetView {
  int id = 0;
  const char16_t* className = u"";
  const char16_t* name = u"";  // for assistive technology
};

struct Sheet {
  SheetView frame;
  SheetView paper;  // a child of the frame; the form's controls stand on it
  SheetView bar;
  int parent = 0;  // the view that the frame and the bar stand on
  int height = 0;  // pixels of the paper, whatever is shown on it; 0: as high as its rows
};

inline constexpr int kSheetBar = 16;  // pixels, width of the scroll bar

// Makes the three views unless they stand already. The program stops with words where the sheet
// was not registered or has no parent.
void MakeSheet(const Sheet& sheet);
// In the parent's pixels, the scroll bar included. A form that was up keeps its scrolling where it
// can be, another one begins at its top.
void PlaceSheet(const Sheet& sheet, const Form& form, const platform::Rect& area);
const Form* FormOnSheet(const Sheet& sheet);  // that was placed last, null for none
// Nothing while another form is up on it.
void HideSheet(const Sheet& sheet, const Form& form);
// How high the rows on it are; looked at where the sheet has no height of its own.
void SetSheetContent(const Sheet& sheet, int pixels);
platform::Rect SheetPaper(const Sheet& sheet);  // width and height of the paper
int SheetTop(const Sheet& sheet);               // pixels scrolled away
// Whether not all of it is in sight; its bar is empty where all is.
bool SheetScrolls(const Sheet& sheet);
void ScrollSheet(const Sheet& sheet, int pixels);
void ScrollSheetToTop(const Sheet& sheet);
// Pages down, or up where negative; a page is the visible height less 60 pixels.
void PageSheet(const Sheet& sheet, int pages);
// Scrolls until a place of the paper is in view.
void ShowOnSheet(const Sheet& sheet, const platform::Rect& place);
void ResetSheet(const Sheet& sheet);
void ResetSheets();

void PaintSheetFrame(platform::Canvas& canvas);
void PaintSheetPaper(const Sheet& sheet, platform::Canvas& canvas);
void PaintSheetBar(const Sheet& sheet, platform::Canvas& canvas);
bool SheetWheel(const Sheet& sheet, const platform::PointerEvent& event);
bool SheetBarPointer(const Sheet& sheet, const platform::PointerEvent& event);

// False: the sheet is registered already.
bool JoinSheet(const Sheet& sheet);
// Joins the three views to the events of the window, at start-up; a second call does nothing.
template <const Sheet& sheet>
void RegisterSheet() {
  if (!JoinSheet(sheet)) return;
  Handlers frame;
  frame.id = sheet.frame.id;
  frame.paint = PaintSheetFrame;
  frame.pointer = [](const platform::PointerEvent& event) { return SheetWheel(sheet, event); };
  RegisterHandlers(frame);
  Handlers paper = frame;
  paper.id = sheet.paper.id;
  paper.paint = [](platform::Canvas& canvas) { PaintSheetPaper(sheet, canvas); };
  RegisterHandlers(paper);
  Handlers bar;
  bar.id = sheet.bar.id;
  bar.paint = [](platform::Canvas& canvas) { PaintSheetBar(sheet, canvas); };
  bar.pointer = [](const platform::PointerEvent& event) { return SheetBarPointer(sheet, event); };
  RegisterHandlers(bar);
}

}  // namespace morva
