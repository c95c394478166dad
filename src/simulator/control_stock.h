// The stock under the machine's motion: what the cuts leave of it, and what runs into it.
//
// A false stop costs more trust than a missed hint. Nothing is said where no stock is known, where
// something was cut that the reader did not follow, and where a tool may have cleared the way. All
// lengths are in display units, about the drawing's zero.
#pragma once

#include <cstdint>
#include <memory>

#include "app/limits.h"
#include "library/tools.h"
#include "simulator/control_run.h"
#include "simulator/stock_envelope.h"

namespace morva {

// Where a tool cuts when it goes straight down.
enum class ToolCut : unsigned char {
  Centre,  // everywhere, as far as anybody knows
  Rim,     // at its rim alone: face and shell mills
  Hole,    // it follows a hole: taps, reamers, boring bars, thread mills
};

struct StockTool {
  std::int32_t number = 0;
  ToolShape shape = ToolShape::Flat;
  double radius = 0;
  ToolCut cut = ToolCut::Centre;

  bool operator==(const StockTool&) const = default;
};

// What is known before the run.
struct KnownStock {
  StockEnvelope box;  // not shown: none is known
  // Work offset that it was described in, as in ControlModes; -1: that of the first move.
  int workRow = -1;
  std::int32_t toolCount = 0;
  StockTool tools[kMaxTools];

  bool operator==(const KnownStock&) const = default;
};

// How a tool of the library cuts, by the text of its type.
ToolCut CutOfTool(std::u16string_view type);

// From here on the run is checked against it; not where no stock is known. `known` stays valid.
void BeginStock(ControlRun& run, const KnownStock& known);
// The first move is drawn, or the first to a place of a work offset: its work offset is the
// drawing's zero, and the stock's.
void NoteStockZero(ControlRun& run);
// Whether the stock is known, and its place: the rapids that follow are judged by it.
bool SeesStock(const ControlRun& run);
// The tool goes straight from one shown place to another.
void NoteStockWay(ControlRun& run, const Vec3& from, const Vec3& to, bool rapid);
// The run is over: what only the whole program tells.
void NoteStockEnd(ControlRun& run);

// Of one run: the stock's heights in a grid, and what is known no more.
struct StockCheck {
  const KnownStock* known = nullptr;
  std::unique_ptr<float[]> heights;  // a row is one Y from the least up
  double stepX = 0, stepY = 0;
  std::int32_t stamped = 0;         // points of the path whose cuts are in the heights
  const StockTool* tool = nullptr;  // in the spindle, null for one that nobody described
  std::int32_t toolNumber = -1;
  int workRow = -1;       // work offset that the stock belongs to, -1 before the first move
  bool lost = false;      // something was cut that nobody followed: nothing is said any more
  bool otherRow = false;  // cuts in several work offsets: whose stock it is nobody knows
  bool cut = false;       // the program has cut in the stock
  bool drilled = false;   // the program has made a hole in the stock
  bool cleared = false;   // an unknown tool has cut last, at the place below
  double clearedX = 0, clearedY = 0;
  std::int64_t workLeft = 0;  // samples and stretches that may still be looked at
};

}  // namespace morva
