#include "simulator/coverage.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "simulator/preview_state.h"
#include "simulator/shown_path.h"
#include "simulator/view_parts.h"

namespace morva {

namespace {

Coverage grid;                                   // whole moves only
Coverage withPart;                               // the same and the move in progress
double lastWay[kCoverageCells][kCoverageCells];  // along the path, where a cell was swept last

// What the grid is good for.
struct CoverageKey {
  bool known = false;
  std::uint32_t generation = 0;
  double diameter = 0;
  bool levels = false;
  PathLevel level;
};
CoverageKey key;
std::int32_t stamped = 0;  // points whose moves are in the grid
double way = 0;            // path length up to there
// Chords of an arc are shorter than a cell; they are put together from here on.
bool chordOpen = false;
MotionPoint chordStart;
double chordWay = 0;

bool Sweeps(const MotionPoint& from, const MotionPoint& to) {
  if (to.rapid || to.jump) return false;
  return !key.levels || LiesInLevel(key.level, from, to);
}

// Over all feeds of the path, so that the cells stay in place while the head moves.
bool PlaceGrid(const MotionPath& of) {
  double minX = 0, maxX = 0, minY = 0, maxY = 0;
  bool any = false;
  for (std::int32_t i = 1; i < of.count; ++i) {
    if (of.points[i].rapid || of.points[i].jump) continue;
    for (const MotionPoint& p : {of.points[i - 1], of.points[i]}) {
      minX = any ? std::min(minX, p.x) : p.x;
      maxX = any ? std::max(maxX, p.x) : p.x;
      minY = any ? std::min(minY, p.y) : p.y;
      maxY = any ? std::max(maxY, p.y) : p.y;
      any = true;
    }
  }
  if (!any) return false;
  const double width = maxX - minX + key.diameter;
  const double height = maxY - minY + key.diameter;
  grid.cell = std::max(width, height) / kCoverageCells;
  if (!(grid.cell > 0) || !std::isfinite(grid.cell)) return false;
  grid.minX = minX - key.diameter / 2;
  grid.minY = minY - key.diameter / 2;
  grid.columns = std::clamp(static_cast<int>(std::ceil(width / grid.cell)), 1, kCoverageCells);
  grid.rows = std::clamp(static_cast<int>(std::ceil(height / grid.cell)), 1, kCoverageCells);
  return true;
}

int CellAt(double place, double least, int count) {
  const double number = std::floor((place - least) / grid.cell);
  return number > 0 ? static_cast<int>(std::min(number, count - 1.0)) : 0;
}

// A cell that the cutter left is swept again when it comes back; while it passes over a cell, the
// cell lies below it for no more than its own width of the way.
void Sweep(int row, int column, double at) {
  Swept& cell = grid.cells[row][column];
  double& last = lastWay[row][column];
  if (cell == Swept::Never) {
    cell = Swept::Once;
  } else if (at - last > key.diameter) {
    cell = Swept::Again;
  }
  last = std::max(last, at);
}

// The straight way between two places, which begins at `wayBefore` of the path.
void StampStraight(const MotionPoint& from, const MotionPoint& to, double wayBefore) {
  const double radius = key.diameter / 2;
  const int firstRow = CellAt(std::min(from.y, to.y) - radius, grid.minY, grid.rows);
  const int lastRow = CellAt(std::max(from.y, to.y) + radius, grid.minY, grid.rows);
  const int firstColumn = CellAt(std::min(from.x, to.x) - radius, grid.minX, grid.columns);
  const int lastColumn = CellAt(std::max(from.x, to.x) + radius, grid.minX, grid.columns);
  const double wayX = to.x - from.x, wayY = to.y - from.y;
  const double square = wayX * wayX + wayY * wayY;
  const double perSquare = square > 0 ? 1 / square : 0;
  const double length = std::sqrt(square);
  for (int row = firstRow; row <= lastRow; ++row) {
    const double y = grid.minY + (row + 0.5) * grid.cell - from.y;
    for (int column = firstColumn; column <= lastColumn; ++column) {
      const double x = grid.minX + (column + 0.5) * grid.cell - from.x;
      const double t = std::clamp((x * wayX + y * wayY) * perSquare, 0.0, 1.0);
      const double dx = x - wayX * t, dy = y - wayY * t;
      if (dx * dx + dy * dy <= radius * radius) Sweep(row, column, wayBefore + t * length);
    }
  }
}

double Length(const MotionPoint& from, const MotionPoint& to) {
  return std::hypot(to.x - from.x, to.y - from.y);
}

void CloseChord(const MotionPoint& at) {
  if (chordOpen) StampStraight(chordStart, at, chordWay);
  chordOpen = false;
}

// Stamps the moves up to a head.
void StampTo(const MotionPath& of, std::int32_t head) {
  for (std::int32_t i = std::max(stamped, 1); i < head; ++i) {
    const MotionPoint& from = of.points[i - 1];
    const MotionPoint& to = of.points[i];
    const bool sweeps = Sweeps(from, to);
    if (!sweeps) CloseChord(from);
    if (sweeps && !chordOpen) {
      chordOpen = true;
      chordStart = from;
      chordWay = way;
    }
    way += Length(from, to);
    const double reach = std::max(std::fabs(to.x - chordStart.x), std::fabs(to.y - chordStart.y));
    if (chordOpen && reach >= grid.cell / 2) CloseChord(to);
  }
  if (head > 0) CloseChord(of.points[head - 1]);
  stamped = head;
}

// The move in progress on a copy, so that the next frame finds the grid without it.
const Coverage* WithMoveInProgress(const OwnedPath& shown, std::int32_t head) {
  const double part = shown.play.segmentFraction;
  if (!shown.play.headInUse || !(part > 0) || head < 1 || head >= shown.path.count) return &grid;
  const MotionPoint& from = shown.path.points[head - 1];
  MotionPoint to = shown.path.points[head];
  if (!Sweeps(from, to)) return &grid;
  to.x = from.x + (to.x - from.x) * part;
  to.y = from.y + (to.y - from.y) * part;
  static Coverage whole;
  static double wholeWay[kCoverageCells][kCoverageCells];
  whole = grid;
  std::memcpy(wholeWay, lastWay, sizeof lastWay);
  StampStraight(from, to, way);
  withPart = grid;
  grid = whole;
  std::memcpy(lastWay, wholeWay, sizeof lastWay);
  return &withPart;
}

void ClearGrid() {
  for (auto& row : grid.cells) std::fill(std::begin(row), std::end(row), Swept::Never);
  for (auto& row : lastWay) std::fill(std::begin(row), std::end(row), 0.0);
  stamped = 0;
  way = 0;
  chordOpen = false;
  grid.z = key.level.z;
}

}  // namespace

const Coverage* CoverageNow() {
  if (!HasCoverage()) return nullptr;
  const MotionPath& shown = ShownPath().path;
  const std::int32_t head = DrawnPoints();
  CoverageKey now;
  now.known = true;
  now.generation = shown.generation;
  now.diameter = previewState.diameter;
  now.levels = HasLevels();
  now.level = DeepestLevel(shown, head);
  if (!now.level.known) return nullptr;
  const bool samePath = key.known && key.generation == now.generation &&
                        key.diameter == now.diameter && key.levels == now.levels;
  const bool sameLevel = !now.levels || (key.level.known && key.level.z == now.level.z);
  if (!samePath || !sameLevel || head < stamped) {
    key = now;
    if (!PlaceGrid(shown)) {
      key.known = false;
      return nullptr;
    }
    ClearGrid();
  }
  grid.z = now.level.z;
  StampTo(shown, head);
  return WithMoveInProgress(ShownPath(), head);
}

}  // namespace morva
