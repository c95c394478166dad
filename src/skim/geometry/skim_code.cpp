#include "skim/geometry/skim_code.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>

#include "library/outline.h"
#include "skim/geometry/saved_code.h"
#include "skim/model/plan_check.h"
#include "skim/model/plan_measures.h"
#include "skim/model/spiral_counts.h"
#include "text/codetext.h"
#include "text/series_trig.h"

namespace morva {

namespace {

constexpr int kFeedDecimals = 3;
constexpr double kRowSlack = 0.000000001;  // a row that lies this near to the last one is the last
constexpr int kOtherRows = 2;              // the first, and the last one at the stock's edge

// What a plan's code has room for, by lines of the longest numbers.
constexpr std::size_t kHeadUnits = 4096;
constexpr std::size_t kRowUnits = 400;
constexpr std::size_t kPassUnits = 900;
constexpr std::size_t kPointUnits = 120;
constexpr std::size_t kSpiralPassUnits = 2100;
constexpr std::size_t kSegmentUnits = 600;

// Everything that the lines of a pass share.
struct Job {
  const SkimPlan& plan;
  CodeWriter& out;
  std::u16string feed;    // " F" with the cut feed, and the line end
  std::u16string plunge;  // as above, with the plunge feed
  std::u16string safe;    // the line of the rapid to the safe plane
  double z = 0;           // of the pass
};

void PutLength(Job& job, std::u16string_view label, double value) {
  Put(job.out, label, value, kSkimDecimals);
}

void Modes(Job& job) {
  Line(job.out, job.plan.metric ? u"G21" : u"G20");
  Line(job.out, u"G90 G17 G94 G40 G80");
}

void WorkOffset(Job& job) {
  PutInteger(job.out, u"G", job.plan.workOffset);
  Line(job.out, u"");
}

void Above(Job& job, double x, double y) {
  PutLength(job, u"G00 X", x);
  PutLength(job, u" Y", y);
  Line(job.out, u"");
}

void Plunge(Job& job) {
  PutLength(job, u"G01 Z", job.z);
  Put(job.out, job.plunge);
}

// A cut along one axis: "G01 X" or "G01 Y".
void Cut(Job& job, std::u16string_view word, double to) {
  PutLength(job, word, to);
  Put(job.out, job.feed);
}

void CutTo(Job& job, double x, double y) {
  PutLength(job, u"G01 X", x);
  PutLength(job, u" Y", y);
  Put(job.out, job.feed);
}

// Up, over the next start, and down.
void MoveOver(Job& job, double x, double y) {
  Put(job.out, job.safe);
  Above(job, x, y);
  Plunge(job);
}

// The places of rows, from one edge of the stock to the other.
struct Rows {
  double at = 0;
  double last = 0;
  double step = 0;
  int left = 0;  // a guard: the walk ends before
};

Rows RowsOf(const SkimPlan& plan, double first, double last) {
  return {first, last, SkimStep(plan), static_cast<int>(RowEstimate(plan)) + kOtherRows};
}

// False: the row under way is the last one.
bool NextRow(Rows& rows) {
  if (rows.at >= rows.last - kRowSlack || --rows.left <= 0) return false;
  rows.at = std::min(rows.at + rows.step, rows.last);
  return true;
}

// Rows to and fro, joined by cuts.
struct Zigzag {
  std::u16string_view along;   // the word of a row
  std::u16string_view across;  // the word from row to row
  double from = 0;             // where rows begin and end
  double to = 0;
};

void CutZigzag(Job& job, Rows rows, const Zigzag& way) {
  double end = way.to;
  double other = way.from;
  while (true) {
    Cut(job, way.along, end);
    if (!NextRow(rows)) return;
    Cut(job, way.across, rows.at);
    std::swap(end, other);
  }
}

// Rows in one direction, with a way back above the stock.
void CutOneWay(Job& job, double from, double to) {
  Rows rows = RowsOf(job.plan, job.plan.yMin, job.plan.yMax);
  while (true) {
    Cut(job, u"G01 X", to);
    if (!NextRow(rows)) return;
    MoveOver(job, from, rows.at);
  }
}

bool StartsLeftward(const SkimPlan& plan) { return (plan.strategy & 1) != 0; }
bool StartsAtTop(const SkimPlan& plan) { return (plan.strategy & 2) != 0; }

// The way of a pass with rows along X, of strategies that go to and fro.
Zigzag AlongX(const SkimPlan& plan) {
  Zigzag way{u"G01 X", u"G01 Y", SkimEntryX(plan), SkimExitX(plan)};
  if (IsAlternating(plan.strategy) && StartsLeftward(plan)) std::swap(way.from, way.to);
  return way;
}

Zigzag AlongY(const SkimPlan& plan) {
  Zigzag way{u"G01 Y", u"G01 X", SkimEntryY(plan), SkimExitY(plan)};
  if (StartsAtTop(plan)) std::swap(way.from, way.to);
  return way;
}

bool RunsAlongY(const SkimPlan& plan, int pass) {
  return IsAlternating(plan.strategy) && pass % 2 == 0;
}

void CutRaster(Job& job, int pass) {
  const SkimPlan& plan = job.plan;
  if (RunsAlongY(plan, pass)) {
    Line(job.out, u"(Y DIRECTION PASS)");
    CutZigzag(job, RowsOf(plan, plan.xMin, plan.xMax), AlongY(plan));
    return;
  }
  if (IsAlternating(plan.strategy)) Line(job.out, u"(X DIRECTION PASS)");
  CutZigzag(job, RowsOf(plan, plan.yMin, plan.yMax), AlongX(plan));
}

// The outermost circle once around, then inwards by a step a turn.
void CutSpiral(Job& job) {
  const SkimPlan& plan = job.plan;
  const SkimCircle circle = CircleOfSkim(plan);
  const double radius = circle.radius;
  Line(job.out, u"(CIRCULAR AREA: INSCRIBED IN XY BOUNDS - RECTANGLE CORNERS NOT FACED)");
  CutTo(job, circle.x + radius, circle.y);
  const int segments = CircleSegments(radius, plan.metric);
  for (int i = 1; i < segments; ++i) {
    const double a = i * kTwoPi / segments;
    CutTo(job, circle.x + radius * std::cos(a), circle.y + radius * std::sin(a));
  }
  CutTo(job, circle.x + radius, circle.y);
  const double turns = radius / SkimStep(plan);
  const int points = SpiralPoints(radius, SkimStep(plan), plan.metric);
  for (int i = 1; i < points; ++i) {
    const double t = static_cast<double>(i) / points;
    const double a = turns * kTwoPi * t;
    const double r = (1 - t) * radius;
    CutTo(job, circle.x + r * std::cos(a), circle.y + r * std::sin(a));
  }
  CutTo(job, circle.x, circle.y);
}

// Each segment for itself, whether it touches the one before or not.
void CutCenterline(Job& job) {
  Line(job.out, u"(CUSTOM CUTTER CENTERLINE)");
  const SkimCenterline& line = job.plan.centerline;
  for (std::int32_t i = 0; i < line.count; ++i) {
    const SketchObject& segment = line.segments[i];
    if (i > 0) MoveOver(job, segment.x, segment.y);
    double x = 0;
    double y = 0;
    LineEndPoint(segment, x, y);
    CutTo(job, x, y);
  }
}

struct Start {
  double x = 0;
  double y = 0;
};

// Where the cutter goes down in a pass, before it cuts.
Start StartOf(const SkimPlan& plan, int pass) {
  switch (plan.strategy) {
    case kSkimRightToLeft:
      return {SkimExitX(plan), plan.yMin};
    case kSkimLeftToRight:
      return {SkimEntryX(plan), plan.yMin};
    case kSkimSpiral: {
      const SkimCircle circle = CircleOfSkim(plan);
      return {circle.x + circle.radius + plan.entry, circle.y};
    }
    case kSkimCustom:
      return {plan.centerline.segments[0].x, plan.centerline.segments[0].y};
    default:
      if (RunsAlongY(plan, pass)) return {plan.xMin, AlongY(plan).from};
      return {AlongX(plan).from, plan.yMin};
  }
}

void CutPass(Job& job, int pass) {
  switch (job.plan.strategy) {
    case kSkimRightToLeft:
      return CutOneWay(job, SkimExitX(job.plan), SkimEntryX(job.plan));
    case kSkimLeftToRight:
      return CutOneWay(job, SkimEntryX(job.plan), SkimExitX(job.plan));
    case kSkimSpiral:
      return CutSpiral(job);
    case kSkimCustom:
      return CutCenterline(job);
    default:
      return CutRaster(job, pass);
  }
}

void WriteHead(Job& job) {
  const SkimPlan& plan = job.plan;
  Line(job.out, u"");
  Line(job.out, u"(WIZARD: GUIDED SKIM / FACE)");
  Put(job.out, kSkimStrategyHead);
  Put(job.out, SkimStrategyName(plan.strategy));
  Line(job.out, u")");
  Modes(job);
  if (plan.tool == 0) {
    Line(job.out, u"(T0: KEEP CURRENT TOOL AND ACTIVE LENGTH OFFSET)");
    WorkOffset(job);
    Put(job.out, job.safe);
    return;
  }
  PutInteger(job.out, u"T", plan.tool);
  Line(job.out, u" M06");
  WorkOffset(job);
  PutInteger(job.out, u"G00 G43 H", plan.tool);
  PutLength(job, u" Z", SkimSafeZ(plan));
  Line(job.out, u"");
}

// What stands in front of a pass: nothing is taken for granted, because the operator may have used
// the machine during the stop before it.
void WritePassHead(Job& job, int pass) {
  const SkimPlan& plan = job.plan;
  PutInteger(job.out, u"(PASS ", pass);
  PutLength(job, u" TOTAL REMOVED ", SkimRemoved(plan, pass));
  PutLength(job, u" TARGET Z ", job.z);
  Line(job.out, u")");
  Modes(job);
  WorkOffset(job);
  PutInteger(job.out, u"S", static_cast<std::int64_t>(plan.rpm));
  Line(job.out, u" M03");
  Line(job.out, u"M08");
  Put(job.out, job.safe);
  const Start start = StartOf(plan, pass);
  Above(job, start.x, start.y);
  Plunge(job);
}

void WritePassEnd(Job& job, int pass, int passes) {
  const SkimPlan& plan = job.plan;
  Put(job.out, job.safe);
  Above(job, 0, 0);
  Line(job.out, u"M09");
  Line(job.out, u"M05");
  if (pass == passes) return;
  const double next = SkimRemoved(plan, pass + 1);
  PutLength(job, u"(NEXT CUT ", next - SkimRemoved(plan, pass));
  PutLength(job, u" TOTAL ", next);
  PutLength(job, u" Z ", plan.zTop - next);
  Line(job.out, u")");
  Line(job.out, u"M00 (CYCLE START FOR NEXT PASS)");
}

std::u16string FeedWord(double feed) { return u" F" + FixedText(feed, kFeedDecimals) + u"\r\n"; }

std::size_t UnitsOf(const SkimPlan& plan) {
  std::size_t pass =
      (static_cast<std::size_t>(RowEstimate(plan)) + kOtherRows) * kRowUnits + kPassUnits;
  if (plan.strategy == kSkimSpiral) {
    const double radius = CircleOfSkim(plan).radius;
    const int points =
        CircleSegments(radius, plan.metric) + SpiralPoints(radius, SkimStep(plan), plan.metric);
    pass = static_cast<std::size_t>(points) * kPointUnits + kSpiralPassUnits;
  }
  if (plan.strategy == kSkimCustom) {
    pass += static_cast<std::size_t>(plan.centerline.count) * kSegmentUnits;
  }
  return pass * static_cast<std::size_t>(PassCount(plan)) + kHeadUnits;
}

bool Passes(const SkimPlan& plan) {
  const char16_t* message = nullptr;
  return ValidateSkimPlan(plan, message);
}

}  // namespace

std::size_t SkimProgramUnits(const SkimPlan& plan) { return Passes(plan) ? UnitsOf(plan) : 0; }

bool BuildSkimProgram(const SkimPlan& plan, CodeWriter& out) {
  if (!Passes(plan)) return false;
  out.most = out.text.size() + UnitsOf(plan);
  out.text.reserve(out.most);
  Job job{plan, out, FeedWord(plan.feed), FeedWord(plan.plunge),
          u"G00 Z" + FixedText(SkimSafeZ(plan), kSkimDecimals) + u"\r\n"};
  WriteHead(job);
  const int passes = PassCount(plan);
  for (int pass = 1; pass <= passes; ++pass) {
    job.z = plan.zTop - SkimRemoved(plan, pass);
    WritePassHead(job, pass);
    CutPass(job, pass);
    WritePassEnd(job, pass, passes);
  }
  Line(out, u"(END GUIDED SKIM - AT XY ZERO AND SAFE Z)");
  return true;
}

}  // namespace morva
