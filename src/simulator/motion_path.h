// The motion path: a flat list of 3D points, each tied to its line of the program text. Points are
// in display units.
#pragma once

#include <cstdint>
#include <vector>

#include "app/limits.h"
#include "simulator/path_notes.h"

namespace morva {

struct MotionPoint {
  double x = 0;
  double y = 0;
  double z = 0;
  bool rapid = false;           // the move into this point is a rapid
  std::int32_t sourceLine = 0;  // zero-based line of the program text
  bool jump = false;            // the tool is only known to have arrived here: not drawn
  // A bit for X, Y, Z: the machine's own place, not one of the part. Bounds leave it out.
  std::uint8_t machineAxes = 0;
  std::int32_t tool = 0;  // number in force, 0 before the first T word
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
  PathNotes notes = {};          // lines of the text that are not shown as they run

  // What BoundsOf has found, and the points that it is good for.
  PathBounds bounds = {};
  std::uint32_t boundsGeneration = 0;
  std::int32_t boundsCount = -1;
};

extern MotionPath path;       // of the program
extern MotionPath ghostPath;  // code of the program's excluded blocks

// Those of the program's path.
inline const std::uint32_t& pathGeneration = path.generation;
inline const std::int32_t& pathFullAtLine = path.fullAtLine;

// Leaves no point in a path.
void EmptyPath(MotionPath& out);

// Moves all points of a path, in display units: they count from another zero.
void ShiftPath(MotionPath& out, double byX, double byY, double byZ);

// A path out of its table, with its bounds.
struct StoredPath {
  std::vector<MotionPoint> points;
  std::int32_t fullAtLine = -1;
  PathNotes notes = {};
  PathBounds bounds = {};
};
void StorePath(MotionPath& of, StoredPath& into);
// Puts it into a table that is no smaller, as a run of its own.
void RestorePath(const StoredPath& from, MotionPath& into);

// Over all points of a path, zeros where it has none. Cached in the record.
const PathBounds& BoundsOf(MotionPath& of);

}  // namespace morva
