// The plan of a guided skim: what the wizard asks for and the code of a facing job is made from.
//
// All lengths are in the plan's own unit, feeds in that unit a minute. There is one live plan;
// everybody reads it, only the functions here write it.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "app/limits.h"
#include "library/sketch_object.h"

namespace morva {

// How the cutter covers the stock. The numbers stand in records of blocks.
enum SkimStrategy : std::int32_t {
  kSkimZigzag = 0,
  kSkimRightToLeft = 1,
  kSkimLeftToRight = 2,
  kSkimSpiral = 3,
  // From here to kSkimLeftDown the rows of even passes run along Y. Bit 0: odd passes begin towards
  // the left. Bit 1: even passes begin at the top.
  kSkimRightUp = 4,
  kSkimLeftUp = 5,
  kSkimRightDown = 6,
  kSkimLeftDown = 7,
  kSkimCustom = 8,
};
inline constexpr int kSkimStrategies = kSkimCustom + 1;

inline bool IsAlternating(std::int32_t strategy) {
  return strategy >= kSkimRightUp && strategy <= kSkimLeftDown;
}
// Names of the strategies by number, as lists and code say them.
std::span<const char16_t* const> SkimStrategyNames();
// Empty for a number that is no strategy.
std::u16string_view SkimStrategyName(std::int32_t strategy);

// The drawn line that the custom strategy follows: copies of sketch lines, in the order of cutting.
// Only start, length and angle are used.
struct SkimCenterline {
  std::int32_t count = 0;  // 0 to kMaxSkimSegments
  SketchObject segments[kMaxSkimSegments];
};

struct SkimPlan {
  double xMin = 0;  // the stock's edges
  double yMin = 0;
  double xMax = 4;
  double yMax = 4;
  double diameter = 1;          // of the cutter
  double stepoverPercent = 60;  // of the diameter, above 0 to 100
  double rpm = 1500;            // a whole number
  double feed = 12;
  double plunge = 4;  // feed a minute
  double zTop = 0;    // the surface before the first pass
  double depthPerPass = 0.125;
  double totalDepth = 1;         // counts if useTotalDepth
  double passCount = 3;          // a whole number, counts if not useTotalDepth
  double clearance = 0.5;        // of the safe plane above zTop
  std::int32_t tool = 0;         // 0 keeps the machine's tool
  std::int32_t workOffset = 54;  // 54 to 59
  bool useTotalDepth = false;
  bool metric = false;
  double entry = 0.6;  // beyond the left edge; the lead-in of a spiral
  double exit = 0.6;   // beyond the right edge
  std::int32_t strategy = kSkimZigzag;
  double stockThickness = 0.5;  // of pictures; it never reaches the code
  SkimCenterline centerline;
};

// The 18 numbers of the form, in the order in which they are read.
enum SkimField : int {
  kSkimTool,
  kSkimWorkOffset,
  kSkimXMin,
  kSkimYMin,
  kSkimXMax,
  kSkimYMax,
  kSkimDiameter,
  kSkimStepover,
  kSkimRpm,
  kSkimFeed,
  kSkimPlunge,
  kSkimZTop,
  kSkimDepthPerPass,
  kSkimTotalDepth,
  kSkimPassCount,
  kSkimClearance,
  kSkimEntry,
  kSkimExit,
  kSkimFields,  // how many there are
};

struct SkimFieldRow {
  const char16_t* label = u"";
  double SkimPlan::*number = nullptr;         // null: `integer` holds it
  std::int32_t SkimPlan::*integer = nullptr;  // null: `number` holds it
  bool whole = false;                         // shown without decimals
  bool length = false;                        // follows the plan's unit; feeds do too
};
// The row of a field, 0 to kSkimFields - 1.
const SkimFieldRow& SkimRow(int field);
double SkimValue(const SkimPlan& plan, int field);
// Integers are cut off behind the point.
void SetSkimValue(SkimPlan& plan, int field, double value);
// What the field shows: 4 decimals, or none.
inline constexpr int kSkimDecimals = 4;
std::u16string SkimText(const SkimPlan& plan, int field);

// The plan into another unit: lengths, feeds and the centerline. Nothing where it is in that unit.
void ConvertSkimPlan(SkimPlan& plan, bool metric);
// Moves the stock's lower left corner to (x, y) and its surface to zTop; the size stays.
void PlaceSkimStock(SkimPlan& plan, double x, double y, double zTop);

// The live plan; the defaults above until somebody sets it.
extern SkimPlan skimPlan;
void SetSkimPlan(const SkimPlan& plan);
void ResetSkimPlan();

}  // namespace morva
