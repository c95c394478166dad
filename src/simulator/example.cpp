#include "simulator/example.h"

#include <iterator>

#include "app/limits.h"
#include "library/units.h"
#include "simulator/cutter.h"
#include "simulator/machine_motion.h"
#include "simulator/playback.h"
#include "simulator/shown_path.h"
#include "simulator/toolpath.h"
#include "simulator/view.h"
#include "simulator/view_parts.h"

namespace morva {

namespace {

constexpr int kHalfSpeed = 2;  // of the table of speeds
constexpr int kDecimals = 3;
constexpr double kFromYaw = -45;
constexpr double kFromElevation = 32;
constexpr double kFromAfar = 0.85;  // zoom

constexpr char16_t kUp[] = u"G00 Z0.6";
constexpr char16_t kProfile[] =
    u"G00 X-1.8 Y-0.8\r\n"
    u"G01 Z-0.15 F8\r\n"
    u"G01 X1.8 F20\r\n"
    u"G01 Y0.8\r\n"
    u"G01 X-1.8\r\n"
    u"G01 Y-0.8\r\n"
    u"G00 Z0.6\r\n"
    u"G00 X0.6 Y0\r\n"
    u"G01 Z-0.25 F8\r\n"
    u"G03 X-0.6 Y0 I-0.6 J0 F20\r\n"
    u"G03 X0.6 Y0 I0.6 J0";

// What stands in the example's hand, in inches.
constexpr DemoCutter kMill{ToolShape::Flat, 0.5, 1.0, 1.75};
constexpr DemoCutter kDrill{ToolShape::Drill, 0.25, 1.0, 1.75};

int shownOperation = -1;
bool shownMetric = false;
// The builder's own, which an example does not change for good.
ViewState viewBefore;
std::int32_t speedBefore = 0;

void MoveTo(CodeWriter& out, std::u16string_view word, double x, double y) {
  Put(out, word);
  Put(out, u" X", x, kDecimals);
  Put(out, u" Y", y, kDecimals);
  Line(out, u"");
}

void PlungeTo(CodeWriter& out, double z) {
  Put(out, u"G01 Z", z, kDecimals);
  Line(out, u" F6");
}

// To and fro, wider than the stock, each stroke over a part of the one before.
void WriteFace(CodeWriter& out) {
  constexpr int kStrokes = 7;
  constexpr double kReach = 2.3, kStep = 0.35, kDepth = -0.1;
  for (int i = 0; i < kStrokes; ++i) {
    const double y = kStep * (i - kStrokes / 2);  // the middle one at 0
    const double from = i % 2 == 0 ? -kReach : kReach;
    MoveTo(out, i == 0 ? u"G00" : u"G01", from, y);
    if (i == 0) PlungeTo(out, kDepth);
    MoveTo(out, u"G01", -from, y);
  }
}

void WriteDrill(CodeWriter& out) { PlungeTo(out, -0.45); }

void WritePecks(CodeWriter& out) {
  for (int n = 1; n <= 4; ++n) PlungeTo(out, -0.12 * n);
}

void WriteTap(CodeWriter& out) {
  Line(out, u"(TAP MOTION DEMO: CONTROL SYNCHRONIZES SPINDLE)");
  Line(out, u"M03 S400");
  Line(out, u"G01 Z-0.4 F20");
  Line(out, u"M04");
  Line(out, u"G01 Z0.15 F20");
  Line(out, u"M03");
}

// Four holes, two above two.
void WriteHoles(CodeWriter& out, void (*hole)(CodeWriter&)) {
  for (int h = 0; h < 4; ++h) {
    MoveTo(out, u"G00", h % 2 == 0 ? -1.3 : 1.3, h < 2 ? -0.65 : 0.65);
    hole(out);
    Line(out, kUp);
  }
}

struct Example {
  void (*write)(CodeWriter& out);
  DemoCutter cutter;
};
constexpr Example kTable[] = {
    {WriteFace, kMill},
    {[](CodeWriter& out) { Line(out, kProfile); }, kMill},
    {[](CodeWriter& out) { WriteHoles(out, WriteDrill); }, kDrill},
    {[](CodeWriter& out) { WriteHoles(out, WritePecks); }, kDrill},
    {[](CodeWriter& out) { WriteHoles(out, WriteTap); }, kDrill},
};
static_assert(std::size(kTable) == kExamples);

StockEnvelope ExampleStock() {
  const double unit = UnitsMetric() ? kMmPerInch : 1.0;
  StockEnvelope stock;
  stock.shown = true;
  stock.minX = -2 * unit;
  stock.maxX = 2 * unit;
  stock.minY = -1.2 * unit;
  stock.maxY = 1.2 * unit;
  stock.top = 0;
  stock.bottom = -0.5 * unit;
  stock.thickness = 0.5 * unit;
  return stock;
}

}  // namespace

void WriteExample(int operation, CodeWriter& out) {
  Line(out, u"(DEMONSTRATION ONLY)");
  Line(out, u"G20 G90 G17 G94");
  Line(out, kUp);
  if (operation >= 0 && operation < kExamples) kTable[operation].write(out);
  Line(out, kUp);
  Line(out, u"G00 X0 Y0");
  Put(out, u"M30");
}

void ShowExample(int operation) {
  if (operation < 0 || operation >= kExamples) return;
  CodeWriter text;
  text.most = kExampleUnits;
  WriteExample(operation, text);
  if (!ExampleIsShown()) {
    viewBefore = OwnedBy(PathOwner::Builder).view;
    speedBefore = OwnedBy(PathOwner::Builder).play.speedIndex;
  }
  shownOperation = operation;
  shownMetric = UnitsMetric();
  StandDemoCutter(kTable[operation].cutter);
  ShowPathOf(PathOwner::Builder);
  LetGoOfView();
  ExtractPathOf(PathOwner::Builder, text.text, shownMetric);
  SetStockOf(PathOwner::Builder, ExampleStock());
  LookFrom(PathOwner::Builder, kFromYaw, kFromElevation, kFromAfar);
  LoopFromStart(kHalfSpeed);
}

void LeaveExample() {
  if (!ExampleIsShown()) return;
  shownOperation = -1;
  RemoveDemoCutter();
  SetStockOf(PathOwner::Builder, StockEnvelope{});
  ResetPlayback(PathOwner::Builder);
  SetSpeedOf(PathOwner::Builder, speedBefore);
  LookAsBefore(PathOwner::Builder, viewBefore);
  ShowPathOf(EditorOwner());
  RebuildToolpath();
}

void FollowExampleUnits() {
  if (ExampleIsShown() && shownOperation >= 0 && UnitsMetric() != shownMetric) {
    ShowExample(shownOperation);
  }
}

}  // namespace morva
