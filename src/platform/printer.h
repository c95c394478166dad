// Printing: one job at a time, on a printer that the user chooses. A file that is written in place
// of paper (PDF) counts as a printer.
//
// The order is ChoosePrinter, StartDocument, then StartPage and EndPage for each page, EndDocument,
// ReleasePrinter. A printer that was chosen is held until it is released, whatever failed between.
// Nothing here scales a page: a pixel of the canvas is a dot of the printer.
#pragma once

#include <string_view>

namespace platform {

struct Canvas;

// What a printer tells of its page. A broken one may tell values below 1.
struct PrinterFigures {
  int width = 0;  // printable pixels
  int height = 0;
  int dpiX = 0;  // dots per inch
  int dpiY = 0;
};

enum class PrinterChoice {
  Chosen,
  Cancelled,  // by the user, or because a printer is held already
  Missing,    // the system has no way to print
};

// Asks the user for a printer, its paper and the orientation, not for a range of pages. Modal: what
// was looked up before may be gone behind it. `fileName` is what a file is to be called that is
// printed into, unless the user names another; it bears no folder and no extension.
PrinterChoice ChoosePrinter(std::u16string_view fileName);
// Of the printer that is held; zeros where none is.
PrinterFigures FiguresOfPrinter();
// False: the printer refused, no job was started.
bool StartDocument(std::u16string_view name);
// The canvas of a new page, until EndPage: coordinates are printer pixels, Y down, from the corner
// of the printable area. Null: no document is open, or the page could not be started. The document
// has failed then, and is still to be ended.
//
// A text has the size in inches that its font has on a screen of kTextDots: its width in pixels is
// TextWidth times the printer's dots, divided by kTextDots.
Canvas* StartPage();
inline constexpr int kTextDots = 96;  // per inch
void EndPage();
// Ends the job, with a page that is still open. False: none was open, a page failed, or what was
// printed is not complete.
bool EndDocument();
// Ends what is still open and lets the printer go. Does nothing where none is held.
void ReleasePrinter();

}  // namespace platform
