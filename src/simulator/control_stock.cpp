#include "simulator/control_stock.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "simulator/control_check.h"
#include "text/codetext.h"

namespace morva {

namespace {

constexpr int kCells = 256;
constexpr int kSamples = kCells + 1;
constexpr std::int64_t kMostWork = 12000000;  // a tenth of a second
constexpr double kSame = 1e-6;                // display units
constexpr double kFarAway = 1e6;              // display units; no machine is so large
constexpr float kNoStock = std::numeric_limits<float>::lowest();

// Inches.
constexpr double kStands = 0.01;      // stock that a rapid must not meet stands higher than this
constexpr double kSlack = 0.003;      // a cut reaches so much farther than its tool
constexpr double kUnknownReach = 2;   // so far may a tool have cut that nobody described
constexpr double kClearAgain = 0.25;  // so far from where was cleared it is cleared once more
constexpr double kWithin = 0.02;      // from the stock's rim, and into it from the top
constexpr double kHoleBelow = 0.5;    // a hole may go so much below the stock, its tip besides
constexpr double kSideBelow = 0.25;   // ... a cut sideways
constexpr double kInner = 0.9;        // of a tool's radius: what surely meets the stock

// Null where nobody described the tool.
const StockTool* ToolOf(const KnownStock& known, std::int32_t number) {
  const StockTool* const end = known.tools + known.toolCount;
  const StockTool* const tool = std::find_if(
      known.tools, end, [number](const StockTool& row) { return row.number == number; });
  return tool != end && tool->radius > 0 ? tool : nullptr;
}
// Of the tool in the spindle; looked up once a change.
const StockTool* ToolOf(const ControlRun& run) {
  StockCheck& stock = *run.stock;
  if (stock.toolNumber != run.tool) {
    stock.toolNumber = run.tool;
    stock.tool = ToolOf(*stock.known, run.tool);
  }
  return stock.tool;
}

// A straight way as seen from above.
struct Way {
  const Vec3& from;
  const Vec3& to;
  double x, y;  // its direction, of length 1 where it leads sideways
  double length;
};

Way WayOf(const Vec3& from, const Vec3& to) {
  const double x = to.of[0] - from.of[0];
  const double y = to.of[1] - from.of[1];
  const double length = std::hypot(x, y);
  if (length <= kSame) return {from, to, 0, 0, 0};
  return {from, to, x / length, y / length, length};
}

double HeightAt(const Way& way, double along) {
  if (way.length == 0) return way.to.of[2];
  return way.from.of[2] + (way.to.of[2] - way.from.of[2]) * along / way.length;
}

struct Interval {
  double first = std::numeric_limits<double>::max();
  double last = std::numeric_limits<double>::lowest();
  void Take(double value) {
    first = std::min(first, value);
    last = std::max(last, value);
  }
};

// Where the ground within a radius of the way meets the line of this Y.
Interval MeetRow(const Way& way, double radius, double y) {
  Interval meets;
  for (const Vec3* end : {&way.from, &way.to}) {
    const double off = y - end->of[1];
    if (std::fabs(off) > radius) continue;
    const double half = std::sqrt(radius * radius - off * off);
    meets.Take(end->of[0] - half);
    meets.Take(end->of[0] + half);
  }
  for (const double side : {-radius, radius}) {
    const double dx = -way.y * side;
    const double dy = way.x * side;
    const double y0 = way.from.of[1] + dy;
    const double y1 = way.to.of[1] + dy;
    if ((y < y0) == (y < y1)) continue;
    const double part = (y - y0) / (y1 - y0);
    meets.Take(way.from.of[0] + dx + (way.to.of[0] - way.from.of[0]) * part);
  }
  return meets;
}

int FirstSample(double place, double least, double step) {
  return static_cast<int>(std::clamp(std::ceil((place - least) / step), 0.0, double{kSamples}));
}
int LastSample(double place, double least, double step) {
  return static_cast<int>(std::clamp(std::floor((place - least) / step), -1.0, double{kCells}));
}

// Calls with each sample within a radius of the way: its height, how far along the way it lies, and
// how far beside. Ends where the call gives false.
template <typename Take>
void EachSample(StockCheck& stock, const Way& way, double radius, Take take) {
  const StockEnvelope& box = stock.known->box;
  const double least = std::min(way.from.of[1], way.to.of[1]) - radius;
  const double most = std::max(way.from.of[1], way.to.of[1]) + radius;
  const int lastRow = LastSample(most, box.minY, stock.stepY);
  for (int j = FirstSample(least, box.minY, stock.stepY); j <= lastRow; ++j) {
    const double y = box.minY + j * stock.stepY;
    const Interval meets = MeetRow(way, radius, y);
    const int last = LastSample(meets.last, box.minX, stock.stepX);
    const int first = FirstSample(meets.first, box.minX, stock.stepX);
    stock.workLeft -= 1 + std::max(last - first, 0);
    if (stock.workLeft < 0) return;
    for (int i = first; i <= last; ++i) {
      const double dx = box.minX + i * stock.stepX - way.from.of[0];
      const double dy = y - way.from.of[1];
      const double along = dx * way.x + dy * way.y;
      const double beside =
          way.length > 0 ? std::fabs(dx * way.y - dy * way.x) : std::hypot(dx, dy);
      float& height = stock.heights[static_cast<std::size_t>(j * kSamples + i)];
      if (!take(height, along, beside)) return;
    }
  }
}

bool IsWithin(const StockEnvelope& box, double x, double y, double inset) {
  const double halfX = (box.maxX - box.minX) / 2 - inset;
  const double halfY = (box.maxY - box.minY) / 2 - inset;
  const double dx = x - (box.minX + box.maxX) / 2;
  const double dy = y - (box.minY + box.maxY) / 2;
  if (!(halfX > 0 && halfY > 0)) return false;
  if (!box.rounded) return std::fabs(dx) <= halfX && std::fabs(dy) <= halfY;
  return dx * dx / (halfX * halfX) + dy * dy / (halfY * halfY) <= 1;
}

bool ComesNear(const StockEnvelope& box, const Way& way, double reach) {
  const auto between = [&](int axis, double least, double most) {
    const double a = way.from.of[axis];
    const double b = way.to.of[axis];
    return std::max(a, b) >= least - reach && std::min(a, b) <= most + reach;
  };
  return between(0, box.minX, box.maxX) && between(1, box.minY, box.maxY);
}

// What a tool takes away on its way: at each place down to the lowest that it gets while it is over
// it.
void Cut(StockCheck& stock, const Way& way, const StockTool& tool, double radius) {
  const bool down = way.to.of[2] < way.from.of[2];
  EachSample(stock, way, radius, [&](float& height, double along, double beside) {
    const double half = std::sqrt(std::max(radius * radius - beside * beside, 0.0));
    const double at = down ? std::min(along + half, way.length) : std::max(along - half, 0.0);
    const double low = std::min(way.from.of[2], way.to.of[2]);
    const double z = way.length > 0 ? HeightAt(way, std::clamp(at, 0.0, way.length)) : low;
    const double tip =
        tool.shape == ToolShape::Flat ? 0 : ToolTipHeight(tool.shape, tool.radius, beside);
    height = std::min(height, static_cast<float>(z + tip));
    return true;
  });
}

// A tool that nobody described may have cleared everything about it. Short ways that follow each
// other are cleared once.
void ClearAbout(StockCheck& stock, const Way& way, double reach, double again) {
  const auto isClear = [&](const Vec3& place) {
    return stock.cleared &&
           std::hypot(place.of[0] - stock.clearedX, place.of[1] - stock.clearedY) <= again;
  };
  if (isClear(way.from) && isClear(way.to)) return;
  stock.cleared = true;
  stock.clearedX = way.to.of[0];
  stock.clearedY = way.to.of[1];
  EachSample(stock, way, reach, [](float& height, double, double) {
    height = kNoStock;
    return true;
  });
}

void TakeAway(StockCheck& stock, const Way& way, const StockTool* tool, double perInch) {
  const double radius = tool ? tool->radius + kSlack * perInch : kUnknownReach * perInch;
  if (!ComesNear(stock.known->box, way, radius)) return;
  if (tool) return Cut(stock, way, *tool, radius);
  const double again = kClearAgain * perInch;
  ClearAbout(stock, way, radius + again, again);
}

// Brings the heights up to the path's last point. Most programs never ask for them.
void TakeAwaySoFar(ControlRun& run) {
  StockCheck& stock = *run.stock;
  const MotionPath& path = run.track->path;
  const StockTool* tool = nullptr;
  std::int32_t number = -1;
  for (stock.stamped = std::max(stock.stamped, 1); stock.stamped < path.count; ++stock.stamped) {
    const MotionPoint& end = path.points[stock.stamped];
    const MotionPoint& begin = path.points[stock.stamped - 1];
    if (end.rapid || end.jump || std::min(begin.z, end.z) >= stock.known->box.top) continue;
    if (end.tool != number) {
      number = end.tool;
      tool = ToolOf(*stock.known, number);
    }
    const Vec3 from{{begin.x, begin.y, begin.z}};
    const Vec3 to{{end.x, end.y, end.z}};
    TakeAway(stock, WayOf(from, to), tool, run.perInch);
  }
}

bool MeetsStock(StockCheck& stock, const Way& way, const StockTool& tool, double radius,
                double stands) {
  bool meets = false;
  EachSample(stock, way, radius, [&](const float& height, double along, double beside) {
    const double on = std::clamp(along, 0.0, way.length);
    const double away = std::hypot(beside, along - on);
    const double tip =
        tool.shape == ToolShape::Flat ? 0 : ToolTipHeight(tool.shape, tool.radius, away);
    meets = height > HeightAt(way, on) + tip + stands;
    return !meets;
  });
  return meets && stock.workLeft >= 0;
}

// Whether the way's own line runs below what stands on all sides of it.
bool RunsBelow(StockCheck& stock, const Way& way, double stands) {
  const StockEnvelope& box = stock.known->box;
  const double step = std::min(stock.stepX, stock.stepY);
  // The part of a long way that can lie over the box.
  const double middle = ((box.minX + box.maxX) / 2 - way.from.of[0]) * way.x +
                        ((box.minY + box.maxY) / 2 - way.from.of[1]) * way.y;
  const double half = std::hypot(box.maxX - box.minX, box.maxY - box.minY) / 2;
  const double first = std::clamp(middle - half, 0.0, way.length);
  const double last = std::clamp(middle + half, 0.0, way.length);
  const double pieces = std::ceil((last - first) / step);
  if ((stock.workLeft -= std::llround(pieces)) < 0) return false;
  for (double i = 0; i <= pieces; ++i) {
    const double along = std::min(first + i * step, last);
    const double x = way.from.of[0] + way.x * along;
    const double y = way.from.of[1] + way.y * along;
    if (!IsWithin(box, x, y, step)) continue;
    const auto column = static_cast<std::size_t>((x - box.minX) / stock.stepX);
    const auto row = static_cast<std::size_t>((y - box.minY) / stock.stepY);
    const float* const lower = &stock.heights[row * kSamples + column];
    const float* const upper = lower + kSamples;
    const float least = std::min({lower[0], lower[1], upper[0], upper[1]});
    if (least > HeightAt(way, along) + stands) return true;
  }
  return false;
}

// How far down the cuts so far have opened the stock at a place.
double OpenedTo(const ControlRun& run, double x, double y) {
  const KnownStock& known = *run.stock->known;
  const MotionPath& path = run.track->path;
  double opened = known.box.top;
  const StockTool* tool = nullptr;
  std::int32_t number = -1;
  if ((run.stock->workLeft -= path.count) < 0) return std::numeric_limits<double>::lowest();
  for (std::int32_t i = 1; i < path.count; ++i) {
    const MotionPoint& end = path.points[i];
    if (end.rapid || end.jump) continue;
    const MotionPoint& begin = path.points[i - 1];
    if (end.tool != number) {
      number = end.tool;
      tool = ToolOf(known, number);
    }
    const double reach = tool ? tool->radius + kSlack * run.perInch : kUnknownReach * run.perInch;
    const Vec3 from{{begin.x, begin.y, begin.z}};
    const Vec3 to{{end.x, end.y, end.z}};
    const Way way = WayOf(from, to);
    const double along = std::clamp((x - begin.x) * way.x + (y - begin.y) * way.y, 0.0, way.length);
    const double away = std::hypot(x - begin.x - way.x * along, y - begin.y - way.y * along);
    if (away > reach) continue;
    if (!tool) return std::numeric_limits<double>::lowest();
    opened = std::min(opened, std::min(begin.z, end.z));
  }
  return opened;
}

// Whether what is seen here is the stock, in its own place.
bool Sees(const ControlRun& run) {
  const StockCheck& stock = *run.stock;
  const std::int32_t* const found = run.track->findings.ofKind;
  const bool followed = found[static_cast<std::size_t>(Finding::NotFollowed)] == 0 &&
                        found[static_cast<std::size_t>(Finding::ProgramMissing)] == 0 &&
                        found[static_cast<std::size_t>(Finding::PocketWords)] == 0;
  if (stock.lost || !followed) return false;
  for (int axis = 0; axis < 3; ++axis) {
    if (run.frame.g92.of[axis] != 0 || run.table.work[kLocalZeroRow][axis] != 0) return false;
  }
  return stock.workRow == run.modes.workRow;
}

// Before the program has cut anything the stock stands whole, but for what an earlier one opened.
void NoteRapidDown(ControlRun& run, const Way& way) {
  const StockEnvelope& box = run.stock->known->box;
  const StockTool* const tool = ToolOf(run);
  // A thread or a fit needs its hole: it was there before. What nobody described may be such a
  // tool.
  if (!tool || tool->cut == ToolCut::Hole) return;
  const bool in = IsWithin(box, way.to.of[0], way.to.of[1], 0);
  if (in && way.to.of[2] < box.top - kStands * run.perInch) ReportOnce(run, Finding::RapidDown);
}

void NoteRapid(ControlRun& run, const Way& way) {
  StockCheck& stock = *run.stock;
  // A boring bar is narrower than its hole, so that it can go off the wall.
  if (run.modes.motion == 76 || run.modes.motion == 77) return;
  // Straight up a tool comes out as it went in; every retract would ask for the heights.
  if (way.length == 0 && way.to.of[2] > way.from.of[2]) return;
  const double stands = kStands * run.perInch;
  if (way.length == 0 && !stock.cut) return NoteRapidDown(run, way);
  if (std::min(way.from.of[2], way.to.of[2]) >= stock.known->box.top - stands) return;
  if (const StockTool* const tool = ToolOf(run)) {
    const double radius = tool->radius * kInner;
    if (!ComesNear(stock.known->box, way, radius)) return;
    TakeAwaySoFar(run);
    if (MeetsStock(stock, way, *tool, radius, stands)) ReportOnce(run, Finding::RapidInStock);
  } else if (way.length > 0 && ComesNear(stock.known->box, way, 0)) {
    TakeAwaySoFar(run);
    if (RunsBelow(stock, way, stands)) ReportOnce(run, Finding::RapidBelowTop);
  }
}

void NoteDepth(ControlRun& run, const Way& way, const StockTool* tool) {
  const StockEnvelope& box = run.stock->known->box;
  if (!box.depthSaid || !IsWithin(box, way.to.of[0], way.to.of[1], kWithin * run.perInch)) return;
  const double tip = tool ? ToolTipHeight(tool->shape, tool->radius, tool->radius) : 0;
  const double spare = (way.length > 0 ? kSideBelow : kHoleBelow) * run.perInch + tip;
  const double below = box.bottom - way.to.of[2];
  if (below > spare) ReportOnce(run, Finding::CutBelowStock, below / run.unit);
}

void NotePlunge(ControlRun& run, const Way& way, const StockTool& tool) {
  const StockEnvelope& box = run.stock->known->box;
  const double deep = kWithin * run.perInch;
  const double x = way.to.of[0];
  const double y = way.to.of[1];
  if (tool.cut == ToolCut::Centre || !IsWithin(box, x, y, deep)) return;
  // Holes of another program may be there; one that makes its own may have left one out.
  if (tool.cut == ToolCut::Hole && !run.stock->drilled) return;
  if (way.to.of[2] >= box.top - deep) return;
  if (way.to.of[2] < OpenedTo(run, x, y) - deep) ReportOnce(run, Finding::PlungeNoCentre);
}

void NoteCutWay(ControlRun& run, const Way& way) {
  StockCheck& stock = *run.stock;
  const StockEnvelope& box = stock.known->box;
  if (std::min(way.from.of[2], way.to.of[2]) >= box.top) return;
  const StockTool* const tool = ToolOf(run);
  const bool down = way.length == 0 && way.to.of[2] < way.from.of[2];
  if (tool && down && !run.ground.between) NotePlunge(run, way, *tool);
  NoteDepth(run, way, tool);
  const bool inStock = IsWithin(box, way.to.of[0], way.to.of[1], 0);
  stock.cut = stock.cut || inStock;
  if (down && inStock && tool && tool->cut == ToolCut::Centre) stock.drilled = true;
}

}  // namespace

bool SeesStock(const ControlRun& run) { return run.stock && Sees(run); }

ToolCut CutOfTool(std::u16string_view type) {
  if (HoldsFolded(type, u"FACE") || HoldsFolded(type, u"SHELL")) return ToolCut::Rim;
  const bool tap = HoldsFolded(type, u"TAP") && !HoldsFolded(type, u"TAPER");
  const bool bores = HoldsFolded(type, u"BORING") || HoldsFolded(type, u"BORE");
  const bool follows = tap || bores || HoldsFolded(type, u"REAM") || HoldsFolded(type, u"THREAD");
  return follows ? ToolCut::Hole : ToolCut::Centre;
}

void BeginStock(ControlRun& run, const KnownStock& known) {
  const StockEnvelope& box = known.box;
  if (!box.shown || !(box.maxX > box.minX && box.maxY > box.minY && box.top > box.bottom)) return;
  run.stock = std::make_unique<StockCheck>();
  StockCheck& stock = *run.stock;
  stock.known = &known;
  stock.workLeft = kMostWork;
  stock.stepX = (box.maxX - box.minX) / kCells;
  stock.stepY = (box.maxY - box.minY) / kCells;
  stock.heights = std::make_unique<float[]>(std::size_t{kSamples} * kSamples);
  for (std::size_t j = 0; j < kSamples; ++j) {
    for (std::size_t i = 0; i < kSamples; ++i) {
      const double x = box.minX + static_cast<double>(i) * stock.stepX;
      const double y = box.minY + static_cast<double>(j) * stock.stepY;
      const bool stands = IsWithin(box, x, y, 0);
      stock.heights[j * kSamples + i] = stands ? static_cast<float>(box.top) : kNoStock;
    }
  }
}

void NoteStockZero(ControlRun& run) {
  StockCheck& stock = *run.stock;
  stock.workRow = run.modes.workRow;
  stock.lost = stock.known->workRow >= 0 && stock.known->workRow != stock.workRow;
}

void NoteStockWay(ControlRun& run, const Vec3& from, const Vec3& to, bool rapid) {
  StockCheck& stock = *run.stock;
  if (!Sees(run)) {
    // What is cut unseen may open any way.
    if (!rapid) stock.lost = true;
    if (!rapid && stock.workRow != run.modes.workRow) stock.otherRow = true;
    return;
  }
  for (const Vec3* place : {&from, &to}) {
    for (const double number : place->of) {
      if (!(std::fabs(number) < kFarAway)) stock.lost = true;
    }
  }
  if (stock.lost) return;
  const Way way = WayOf(from, to);
  // Between two strokes of a pocket a machine may take another way.
  if (rapid && run.ground.between) return;
  if (rapid) return NoteRapid(run, way);
  // A bar that cuts upwards opens more below than its way tells.
  if (run.modes.motion == 77) stock.lost = true;
  NoteCutWay(run, way);
}

void NoteStockEnd(ControlRun& run) {
  if (!run.stock || !run.stock->otherRow) return;
  for (const Finding kind : {Finding::RapidDown, Finding::RapidInStock, Finding::RapidBelowTop,
                             Finding::CutBelowStock, Finding::PlungeNoCentre}) {
    DropFindings(run.track->findings, kind);
  }
}

}  // namespace morva
