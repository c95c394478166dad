// Program text into a table of points.
//
// A small line interpreter, not a control emulator: rapids, feeds, arcs in the G17 plane, inch
// and metric, absolute and incremental. What it does not understand it steps over.
#pragma once

#include <cstdint>
#include <string_view>

#include "simulator/motion_path.h"

namespace morva {

struct ExtractOptions {
  // Points are in millimetres, else in inches. A program that names no unit is in that one.
  bool metric = false;
  // Leaves out what the active tab isolates away or hides. The feature line index must describe
  // the text.
  bool filtered = false;
  // Leaves out the lines for which it says so; null for none. In place of `filtered`.
  bool (*dropsLine)(std::int32_t line) = nullptr;
};

// Fills a path from `text` (the first NUL ends it); the points that it had are gone. Nothing else
// changes: no play head, no picks, no other path.
void ExtractInto(MotionPath& out, std::u16string_view text, const ExtractOptions& options);

// Adds the points of `text` behind those that the path has already; no line leads into the first
// of them.
void ExtractBehind(MotionPath& out, std::u16string_view text, const ExtractOptions& options);

// Adds the corners of a polyline on the Z 0 plane as feeds; no line leads into the first of them.
// They have the source lines -1, -2 and on, as no line of a text made them.
void AddPolyline(MotionPath& out, const double* xs, const double* ys, int count);

}  // namespace morva
