// Program text into a table of points.
//
// A small line interpreter, not a control emulator: rapids, feeds, arcs in the G17 plane, inch
// and metric, absolute and incremental. What it does not understand it steps over.
#pragma once

#include <string_view>

#include "simulator/motion_path.h"

namespace morva {

struct ExtractOptions {
  // Points are in millimetres, else in inches. A program that names no unit is in that one.
  bool metric = false;
  // Leaves out what the active tab isolates away or hides. The feature line index must describe
  // the text.
  bool filtered = false;
};

// Fills a path from `text` (the first NUL ends it); the points that it had are gone. Nothing else
// changes: no play head, no picks, no other path.
void ExtractInto(MotionPath& out, std::u16string_view text, const ExtractOptions& options);

// Adds the points of `text` behind those that the path has already; no line leads into the first
// of them.
void ExtractBehind(MotionPath& out, std::u16string_view text, const ExtractOptions& options);

}  // namespace morva
