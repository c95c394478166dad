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

struct PathBounds {
  double minX = 0, maxX = 0, minY = 0, maxY = 0, minZ = 0, maxZ = 0;
};

// One path. Its table of points stands apart and belongs to it alone, so a record is never
// copied.
struct MotionPath {
  MotionPoint* const points;     // room for kMaxMotionPoints, 40 bytes each
  std::int32_t count = 0;        // points in the table
  std::int32_t fullAtLine = -1;  // 0-based line that found the table full, -1 when all fitted
  std::uint32_t generation = 0;  // grows by one at every run into the table

  // What BoundsOf has found, and the points that it is good for.
  PathBounds bounds = {};
  std::uint32_t boundsGeneration = 0;
  std::int32_t boundsCount = -1;
};

// Whose path it is. Each owner has a table of its own; shown_path.h tells which one the view
// shows.
enum class PathOwner : unsigned char {
  Program,  // the program in the editor
  Builder,  // the builder that is open: its example, or a preview of its code
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

extern MotionPath path;       // of the program
extern MotionPath ghostPath;  // code of the program's excluded blocks
extern FeatureLineIndex featureLines;
extern StockEnvelope stockEnvelope;  // of the program

// Those of the program's path.
inline std::uint32_t& pathGeneration = path.generation;
inline std::int32_t& pathFullAtLine = path.fullAtLine;

struct ExtractOptions {
  // Points are in millimetres, else in inches. A program that names no unit is in that one.
  bool metric = false;
  // Leaves out what the active tab isolates away or hides. The feature line index must describe
  // the text.
  bool filtered = false;
};

// Leaves no point in a path.
void EmptyPath(MotionPath& out);

// Fills a path from `text` (the first NUL ends it); the points that it had are gone. Nothing else
// changes: no play head, no picks, no other path.
void ExtractInto(MotionPath& out, std::u16string_view text, const ExtractOptions& options);

// Fills the owner's path, puts its play head to the end and clears its picks. Isolating and
// hiding leave lines out of the program's path alone; for that one the feature table must
// describe `text`.
void ExtractPathOf(PathOwner owner, std::u16string_view text, bool metric);
// The same for the program's path.
void ExtractToolpath(std::u16string_view text, bool metric);

// Reads the active editor and refreshes the program's path, its ghosts and its envelope. The
// path of another owner goes on undisturbed where that is shown.
void RebuildToolpath();

// The one place where points enter a table: that of the run under way, else the program's.
void AddMotionPoint(double x, double y, double z, bool rapid, std::int32_t sourceLine);

// Over all points of a path, zeros where it has none. Cached in the record.
const PathBounds& BoundsOf(MotionPath& of);
// Over the path that the view shows; where that is empty, over its ghosts.
const PathBounds& Bounds();

// First row of the index that holds the line, -1 for none.
int FeatureRowOfLine(std::int32_t line);

void ResetSimulator();

}  // namespace morva
