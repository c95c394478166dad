// The cutter that a tool number means: size and shape, from the library of tools.
//
// Lengths are in display units. The library keeps inches, so a cutter is good for as long as the
// unit stands.
#pragma once

#include <cstdint>

#include "app/limits.h"
#include "library/tools.h"

namespace morva {

struct Cutter {
  std::int32_t tool = 0;  // the number that it was asked for
  ToolShape shape = ToolShape::Flat;
  double diameter = 0;
  double fluteLength = 0;    // from the tip; the tool's stickout
  double overallLength = 0;  // from the tip; the tool's gauge length

  bool operator==(const Cutter&) const = default;
};

// All cutters that the path on show can ask for, in the order in which they are looked up.
struct CutterTable {
  std::int32_t count = 0;
  Cutter rows[kMaxTools + 1];  // a demonstration's stands in front of the library
};

// Fills the table with what holds now.
void ReadCutters(CutterTable& out);
bool SameCutters(const CutterTable& a, const CutterTable& b);
// The first cutter with this number, null for none.
const Cutter* FindCutter(const CutterTable& cutters, std::int32_t number);

// The same, out of what holds now. False: no tool has this number.
bool CutterOfTool(std::int32_t number, Cutter& out);

// While an example is shown, a cutter that stands for tool 0 until it is removed: the library never
// holds that number, and a demonstration names no tool. Lengths in inches.
struct DemoCutter {
  ToolShape shape = ToolShape::Flat;
  double diameter = 0;
  double fluteLength = 0;
  double overallLength = 0;
};
void StandDemoCutter(const DemoCutter& cutter);
void RemoveDemoCutter();

}  // namespace morva
