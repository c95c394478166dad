// The plate on paper: at true size, in pixels of the printer.
//
// Nothing is shrunk. Every point of an outline is scaled by itself, and the place of a feature is
// rounded to a whole pixel from the plate's centre, so that no error adds up from hole to hole.
#pragma once

#include "plate/geometry/plate_layout.h"
#include "platform/canvas.h"
#include "platform/printer.h"

namespace morva {

// A plate in the middle of the printable area; pixels, Y down.
struct PlateSheet {
  platform::PrinterFigures page;
  PlateNumbers numbers;
  double scaleX = 0;  // pixels for one of the plate's units
  double scaleY = 0;
  int left = 0;  // the plate's own corner and size
  int top = 0;
  int width = 0;
  int height = 0;
};

// Whether the printer tells of a page that can be printed on.
bool IsUsablePage(const platform::PrinterFigures& page);
// A round plate has its length both ways. False: a side is larger than the printable area, by a
// pixel or more, and `sheet` is as it was.
bool LayOnPage(const PlateNumbers& numbers, const platform::PrinterFigures& page,
               PlateSheet& sheet);

struct PaperNotes {
  bool barIsOn = false;  // the check bar and the plate's name found a free margin
  int cutOff = 0;        // features that reach beyond the printable area
};
// Draws outline, marks of the centre, features with their crosshairs, and in a free margin a bar of
// 100 mm with the plate's name.
PaperNotes PaintSheet(platform::Canvas& canvas, const PlateRecord& record, const PlateSheet& sheet);

}  // namespace morva
