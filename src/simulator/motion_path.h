// The motion path: program text as a flat list of 3D points, each tied to its source line.
//
// A small line interpreter, not a control emulator: rapids, feeds, arcs in the G17 plane, inch
// and metric, absolute and incremental. What it does not understand it steps over. Points are
// in display units.
#pragma once

#include <cstdint>
#include <string_view>

#include "app/limits.h"

namespace morva {

struct MotionPoint {
  double x = 0;
  double y = 0;
  double z = 0;
  bool rapid = false;           // the move into this point is a rapid
  std::int32_t sourceLine = 0;  // zero-based line of the program text
  bool jump = false;            // the tool is only known to have arrived here: not drawn
  std::int32_t tool = 0;        // number in force, 0 before the first T word
};

struct MotionPath {
  std::int32_t count = 0;
  MotionPoint points[kMaxMotionPoints];
};

struct FeatureLines {
  std::int32_t firstLine = 0;
  std::int32_t lastLine = 0;
  std::int32_t id = 0;
};

struct FeatureLineIndex {
  std::int32_t count = 0;
  FeatureLines rows[kMaxFeatureLines];
};

// Stock around the part, display units.
struct StockEnvelope {
  bool shown = false;
  double minX = 0, maxX = 0, minY = 0, maxY = 0;
  double top = 0;
  double bottom = 0;
  double thickness = 0;
};

extern MotionPath path;       // the main path
extern MotionPath ghostPath;  // code of excluded blocks
extern FeatureLineIndex featureLines;
extern StockEnvelope stockEnvelope;
extern std::uint32_t pathGeneration;  // grows by one at every extraction
// The 0-based line of the first point that found the table full, -1 when all fitted.
extern std::int32_t pathFullAtLine;

// Reads the active editor and refreshes both tables and the envelope.
void RebuildToolpath();
// Fills the main table from `text` (the first NUL ends it) and sets the play head to its end.
// The feature line index is made from the feature table, which must describe `text`.
void ExtractToolpath(std::u16string_view text, bool metric);
// The one place where points enter a table.
void AddMotionPoint(double x, double y, double z, bool rapid, std::int32_t sourceLine);

struct PathBounds {
  double minX = 0, maxX = 0, minY = 0, maxY = 0, minZ = 0, maxZ = 0;
};
// Over the main path; over the ghost path where that is empty; zeros where both are. Cached.
const PathBounds& Bounds();

// First row of the index that holds the line, -1 for none.
int FeatureRowOfLine(std::int32_t line);

void ResetSimulator();

}  // namespace morva
