// Drawing of the toolpath view: grid, stock, paths, dimensions, measure and read-outs.
//
// A pure function of the records; the order is the order of the functions at the end.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/limits.h"
#include "app/palette.h"
#include "library/units.h"
#include "platform/canvas.h"
#include "platform/window.h"
#include "simulator/depth_shade.h"
#include "simulator/machine_motion.h"
#include "simulator/path_notes.h"
#include "simulator/place_pick.h"
#include "simulator/playback.h"
#include "simulator/preview_context.h"
#include "simulator/preview_paint.h"
#include "simulator/preview_state.h"
#include "simulator/shown_path.h"
#include "simulator/surface_paint.h"
#include "simulator/thin_path.h"
#include "simulator/tool_model.h"
#include "simulator/toolpath.h"
#include "simulator/view.h"
#include "simulator/view_parts.h"
#include "simulator/view_switches.h"
#include "simulator/view_words.h"
#include "text/codetext.h"

namespace morva {
namespace {

using platform::Canvas;
using platform::Colour;
using platform::FontRole;
using platform::Pen;
using platform::PointF;
using platform::Rect;
using platform::Segment;

constexpr int kRapidWidth = 1;
constexpr int kStockWidth = 2;
constexpr int kHeadReach = 4;  // pixels each way of the middle, 9 in all
constexpr int kPickReach = 3;
constexpr int kEdge = 10;  // pixels between read-outs and the view's edge
// The top right corner belongs to the view cube; read-outs break into lines beside it.
constexpr int kCornerWidth = kCubeWidth;
constexpr int kCornerHeight = kCubeHeight;
constexpr int kLeastReadOut = 120;  // pixels; a view too narrow for both gives up the corner

Segment contextSegments[kMaxControlPoints];
Segment gridSegments[2 * kMaxGridLines];
Segment shadedSegments[kMaxControlPoints];  // of one batch, by their shade

Pen PenOf(Colour colour, int width) {
  Pen pen;
  pen.colour = colour;
  pen.width = width;
  pen.smooth = true;
  return pen;
}

// A level or upright line on the middles of pixels, where one of a pixel's width is sharp.
Segment OnPixels(Segment s) {
  constexpr float kStraight = 0.01F;
  if (std::fabs(s.x0 - s.x1) < kStraight) s.x0 = s.x1 = std::floor(s.x0 + 0.5F);
  if (std::fabs(s.y0 - s.y1) < kStraight) s.y0 = s.y1 = std::floor(s.y0 + 0.5F);
  return s;
}

// The nearest whole pixel; places far outside stay far outside, and so does what is no number.
int Pixel(double coordinate) {
  constexpr double kFar = 1e6;
  if (!(coordinate > -kFar)) return static_cast<int>(-kFar);
  return static_cast<int>(std::floor(std::min(coordinate, kFar) + 0.5));
}

void FillAround(Canvas& canvas, PointF middle, int reach, Colour colour) {
  const int x = Pixel(middle.x);
  const int y = Pixel(middle.y);
  FillArea(canvas, {x - reach, y - reach, x + reach + 1, y + reach + 1}, colour);
}

// Where a text of the small font stands whose middle lies at the point.
Rect PlateAround(PointF at, std::u16string_view text) {
  const int height = platform::TextHeight(FontRole::Small);
  const int width = platform::TextWidth(FontRole::Small, text) + 2;
  const int left = Pixel(at.x) - width / 2;
  const int top = Pixel(at.y) - height / 2;
  return {left, top, left + width, top + height};
}

// Text on a plate of the background, so that no line runs through it.
void TextOn(Canvas& canvas, const Rect& plate, std::u16string_view text, Colour colour,
            unsigned align) {
  FillArea(canvas, plate, kPathGround);
  PaintText(canvas, plate, text, FontRole::Small, colour, align | platform::kAlignTop);
}

struct GridSteps {
  double first = 0;  // number of the first line, in spacings from zero
  int count = 0;
};

// The multiples of `spacing` from `low` to `high`.
GridSteps StepsBetween(double low, double high, double spacing) {
  GridSteps steps;
  steps.first = std::ceil(low / spacing);
  const double count = std::floor(high / spacing) - steps.first + 1;
  steps.count = static_cast<int>(std::clamp(count, 0.0, double{kMaxGridLines}));
  return steps;
}

// "Plain" is the program workspace as it opens: the grid steps back behind the program.
bool PlainWorkspace() { return app.surface == kSurfaceCode && app.mode == kModeHome; }

void PaintGrid(Canvas& canvas, const Projection& p) {
  if (!view.gridOn || ExampleIsShown()) return;
  const PathBounds& b = Bounds();
  const double spacing = GridSpacing();
  const double left = b.minX - spacing, right = b.maxX + spacing;
  const double low = b.minY - spacing, high = b.maxY + spacing;
  int count = 0;
  const GridSteps across = StepsBetween(left, right, spacing);
  for (int i = 0; i < across.count; ++i) {
    const double x = (across.first + i) * spacing;
    gridSegments[count++] = OnPixels(SegmentOf(Project(p, x, low, 0), Project(p, x, high, 0)));
  }
  const GridSteps up = StepsBetween(low, high, spacing);
  for (int i = 0; i < up.count; ++i) {
    const double y = (up.first + i) * spacing;
    gridSegments[count++] = OnPixels(SegmentOf(Project(p, left, y, 0), Project(p, right, y, 0)));
  }
  PaintSegments(canvas, gridSegments, count, PenOf(GridColour(PlainWorkspace()), 1));
}

// Where the words of the stock stand: above its highest corner on the screen, in two lines where
// one has no room beside the cube, or below the lowest where an example plays. Not over the view's
// sides.
struct StockPlate {
  Rect plate;
  bool twoLines = false;
};

StockPlate PlateOfStock(const Rect& client, std::u16string_view name, std::u16string_view sizes,
                        PointF highest, PointF lowest) {
  const bool below = ExampleIsShown();
  StockPlate words{
      PlateAround(below ? lowest : highest, std::u16string(name).append(u"  ").append(sizes))};
  const int height = RectHeight(words.plate);
  const int lift = (height / 2 + 4) * (below ? -1 : 1);
  const bool besideCube =
      words.plate.top - lift < client.top + kCornerHeight && CubeFits(CubeClient(client));
  const int right = client.right - (besideCube ? kCornerWidth : 0) - 2;
  words.twoLines = !below && besideCube && RectWidth(words.plate) > right - client.left - 2;
  Rect& plate = words.plate;
  if (words.twoLines) {
    const Rect first = PlateAround(highest, name);
    const Rect second = PlateAround(highest, sizes);
    plate.left = std::min(first.left, second.left);
    plate.right = std::max(first.right, second.right);
    plate.top -= height;
  }
  const int most = right - RectWidth(plate);
  const int shift = std::max(client.left + 2, std::min(plate.left, most)) - plate.left;
  plate = {plate.left + shift, plate.top - lift, plate.right + shift, plate.bottom - lift};
  return words;
}

using Corners = PointF[8];

// Those join that differ in one bit of their number.
void CornersOf(const Projection& p, const StockEnvelope& s, Corners& corners) {
  for (int i = 0; i < 8; ++i) {
    corners[i] = Project(p, (i & 1) ? s.maxX : s.minX, (i & 2) ? s.maxY : s.minY,
                         (i & 4) ? s.top : s.bottom);
  }
}

void PaintStockEdges(Canvas& canvas, const Projection& p, const StockEnvelope& s, const Pen& pen) {
  Corners corners;
  CornersOf(p, s, corners);
  Segment edges[12];
  int count = 0;
  for (int i = 0; i < 8; ++i) {
    for (int bit = 1; bit < 8; bit <<= 1) {
      if (!(i & bit)) edges[count++] = SegmentOf(corners[i], corners[i | bit]);
    }
  }
  PaintSegments(canvas, edges, count, pen);
}

const char16_t* StockWords() {
  const bool own = PreviewIsShown() && previewState.stockWords[0];
  return own ? previewState.stockWords : u"STOCK ENVELOPE";
}

void PaintStock(Canvas& canvas, const Projection& p) {
  const StockEnvelope& s = ShownPath().stock;
  if (s.shown) PaintStockEdges(canvas, p, s, PenOf(kPathStock, kStockWidth));
}

// Above the tool, which would cover them.
void PaintStockWords(Canvas& canvas, const Projection& p) {
  const StockEnvelope& s = ShownPath().stock;
  if (!s.shown) return;
  char16_t sizes[kReadOutUnits] = {};
  AppendLabelNumber(sizes, kReadOutUnits, u"", s.maxX - s.minX, 4);
  AppendLabelNumber(sizes, kReadOutUnits, u" x ", s.maxY - s.minY, 4);
  AppendLabelNumber(sizes, kReadOutUnits, u" x ", s.top - s.bottom, 4);
  AppendBounded(sizes, kReadOutUnits, UnitsMetric() ? u" mm" : u" in");
  Corners corners;
  CornersOf(p, s, corners);
  const auto [highest, lowest] = std::minmax_element(
      corners, corners + 8, [](const PointF& a, const PointF& c) { return a.y < c.y; });
  const std::u16string name = StockWords();
  const StockPlate words = PlateOfStock(CanvasArea(canvas), name, sizes, *highest, *lowest);
  if (!words.twoLines) {
    TextOn(canvas, words.plate, name + u"  " + sizes, kPathStock, platform::kAlignCentre);
    return;
  }
  Rect line = words.plate;
  line.bottom = line.top + RectHeight(line) / 2;
  TextOn(canvas, line, name, kPathStock, platform::kAlignCentre);
  line = {line.left, line.bottom, line.right, words.plate.bottom};
  TextOn(canvas, line, sizes, kPathStock, platform::kAlignCentre);
}

// What stands around the path, its feeds alone.
void PaintContext(Canvas& canvas, const Projection& p) {
  if (!switches.showDrawingPaths) return;
  const bool preview = PreviewIsShown();
  const Pen pen = PenOf(preview ? kPathContext : kPathGhost, kRapidWidth);
  const StockEnvelope& stock = ContextOfPreview().stock;
  if (preview && stock.shown) PaintStockEdges(canvas, p, stock, pen);
  const MotionPath& context = ShownPath().context;
  if (context.count < 2) return;
  int count = 0;
  const MotionPoint* const points = context.points;
  PointF from = Project(p, points[0].x, points[0].y, points[0].z);
  for (std::int32_t i = 1; i < context.count; ++i) {
    const PointF to = Project(p, points[i].x, points[i].y, points[i].z);
    if (!points[i].rapid && !points[i].jump) contextSegments[count++] = SegmentOf(from, to);
    from = to;
  }
  if (ViewMoves()) {
    count = ThinSegments(contextSegments, nullptr, count, CanvasArea(canvas), kOtherWork);
  }
  PaintSegments(canvas, contextSegments, count, pen);
}

// A batch for each shade, what lies nearer to the eye above the rest.
void PaintShadedFeeds(Canvas& canvas, const PathSegments& visible) {
  int ends[kDepthShades + 1] = {};
  for (int i = 0; i < visible.feedCount; ++i) ++ends[visible.shades[i] + 1];
  for (int k = 0; k < kDepthShades; ++k) ends[k + 1] += ends[k];
  int next[kDepthShades];
  std::copy(ends, ends + kDepthShades, next);
  for (int i = 0; i < visible.feedCount; ++i) {
    shadedSegments[next[visible.shades[i]]++] = visible.feeds[i];
  }
  const bool fromBelow = ShownAngles().elevation < 0;
  for (int k = 0; k < kDepthShades; ++k) {
    const int shade = fromBelow ? kDepthShades - 1 - k : k;
    const int count = ends[shade + 1] - ends[shade];
    if (count == 0) continue;
    const int below = fromBelow ? kDepthShades - 1 - shade : shade;
    const Colour colour =
        visible.dense > 0 ? ToneOfShade(below, visible.dense) : ColourOfShade(shade);
    PaintSegments(canvas, shadedSegments + ends[shade], count, PenOf(colour, kFeedWidth));
  }
}

// Rapids first, so that cuts lie on top of them.
void PaintPath(Canvas& canvas, const Rect& client) {
  const PathSegments visible = VisibleSegments(client);
  if (visible.rapidCount > 0) {
    PaintSegments(canvas, visible.rapids, visible.rapidCount, PenOf(kPathRapid, kRapidWidth));
  }
  if (visible.shades) {
    PaintShadedFeeds(canvas, visible);
  } else if (visible.feedCount > 0) {
    PaintSegments(canvas, visible.feeds, visible.feedCount, PenOf(kPathFeed, kFeedWidth));
  }
}

// The tool, the mark of the head, and the piece of segment that leads to it while playing.
void PaintHead(Canvas& canvas, const Projection& p, const Rect& client) {
  const MotionPath& shown = ShownPath().path;
  const Playback& play = ShownPath().play;
  const std::int32_t head = std::clamp(play.playHead, 0, shown.count);
  if (head < 1) return;
  const PointF* points = ProjectedPoints(client);
  PointF at = points[head - 1];
  if (head < shown.count && !shown.points[head].jump) {
    const MotionPoint& next = shown.points[head];
    const PointF from = at;
    at.x += (points[head].x - from.x) * play.segmentFraction;
    at.y += (points[head].y - from.y) * play.segmentFraction;
    if (play.playing && (RapidsAreShown() || !next.rapid)) {
      const Segment partial = SegmentOf(from, at);
      const Colour cut =
          ShadesAreShown()
              ? ColourOfShade(ShadeBetween(DepthsOf(shown), shown.points[head - 1].z, next.z))
              : kPathFeed;
      PaintSegments(canvas, &partial, 1,
                    next.rapid ? PenOf(kPathRapid, kRapidWidth) : PenOf(cut, kFeedWidth));
    }
  }
  PaintToolModel(canvas, p);
  FillAround(canvas, at, kHeadReach, kPathHead);
}

// Moves a plate the shortest way out of another one that it covers.
void MoveOff(Rect& plate, const Rect& other) {
  const int left = plate.right - other.left;
  const int right = other.right - plate.left;
  const int up = plate.bottom - other.top;
  const int down = other.bottom - plate.top;
  const int least = std::min({left, right, up, down});
  if (least <= 0) return;
  const int x = least == left ? -left : least == right ? right : 0;
  const int y = x != 0 ? 0 : least == up ? -up : down;
  plate = {plate.left + x, plate.top + y, plate.right + x, plate.bottom + y};
}

// Three edges of the bounding box that meet in its lowest corner. The spans stand on top of
// all three lines, and beside each other where the edges are short.
void PaintDimensions(Canvas& canvas, const Projection& p) {
  if (!switches.showExtents || ShownPath().path.count == 0) return;
  const PathBounds& b = Bounds();
  const PointF corner = Project(p, b.minX, b.minY, b.minZ);
  const PointF ends[3] = {Project(p, b.maxX, b.minY, b.minZ), Project(p, b.minX, b.maxY, b.minZ),
                          Project(p, b.minX, b.minY, b.maxZ)};
  const double spans[3] = {b.maxX - b.minX, b.maxY - b.minY, b.maxZ - b.minZ};
  Pen pen = PenOf(kPathDimension, 1);
  pen.smooth = true;
  for (const PointF& end : ends) PaintLine(canvas, corner, end, pen);
  Rect plates[3];
  for (int i = 0; i < 3; ++i) {
    char16_t text[kReadOutUnits];
    FormatFixed(spans[i], 4, text, kReadOutUnits);
    Rect& plate = plates[i];
    plate = PlateAround({(corner.x + ends[i].x) / 2, (corner.y + ends[i].y) / 2}, text);
    // Off the one it may meet the other, so the earlier ones are asked twice.
    for (int k = 0; k < 2 * i; ++k) MoveOff(plate, plates[k % i]);
    TextOn(canvas, plate, text, kPathDimension, platform::kAlignCentre);
  }
}

void PaintMeasure(Canvas& canvas, const Rect& client) {
  const PointF* points = ProjectedPoints(client);
  const MeasurePicks& picks = ShownPath().picks;
  if (ValidPick(picks.a) && ValidPick(picks.b)) {
    Pen pen = PenOf(kPathMeasure, 1);
    pen.smooth = true;
    PaintLine(canvas, points[picks.a], points[picks.b], pen);
  }
  if (ValidPick(picks.a)) FillAround(canvas, points[picks.a], kPickReach, kPathMeasure);
  if (ValidPick(picks.b)) FillAround(canvas, points[picks.b], kPickReach, kPathMeasure);
}

// The width that a line of a read-out has when its top lies at `top`.
int ReadOutRoom(const Rect& client, int top) {
  const int all = RectWidth(client) - 2 * kEdge;
  const int beside = RectWidth(client) - kEdge - kCornerWidth;
  return top < client.top + kCornerHeight && beside >= kLeastReadOut ? beside : all;
}

// A read-out in lines. Its parts stand two blanks or more apart, or a dot, a slash or a dash
// between blanks, and are never cut: a number that ends in dots would be worse than none.
struct ReadOutLines {
  std::u16string_view lines[kMaxReadOutLines];
  int count = 0;
};

// Where the part that covers `from` ends.
std::size_t PartEnd(std::u16string_view text, std::size_t from) {
  return std::min({text.find(u"  ", from), text.find(u" \u00B7 ", from),
                   text.find(u" \u2014 ", from), text.size()});
}

// Where the part behind the one that ends at `end` begins, npos for none.
std::size_t NextPart(std::u16string_view text, std::size_t end) {
  return text.find_first_not_of(u" \u00B7\u2014/", end);
}

ReadOutLines BreakReadOut(std::u16string_view text, const Rect& client, int top) {
  const int height = platform::TextHeight(FontRole::Small);
  ReadOutLines broken;
  while (!text.empty() && broken.count < kMaxReadOutLines) {
    const int room = ReadOutRoom(client, top + broken.count * height);
    std::size_t taken = PartEnd(text, 0);
    while (taken < text.size()) {
      const std::size_t part = NextPart(text, taken);
      if (part == text.npos) break;
      const std::size_t next = PartEnd(text, part);
      if (platform::TextWidth(FontRole::Small, text.substr(0, next)) > room) break;
      taken = next;
    }
    broken.lines[broken.count++] = text.substr(0, taken);
    const std::size_t rest = NextPart(text, taken);
    text = rest == text.npos ? std::u16string_view() : text.substr(rest);
  }
  return broken;
}

void PaintReadOut(Canvas& canvas, const Rect& client, int top, const ReadOutLines& broken,
                  Colour colour) {
  const int left = client.left + kEdge;
  const int height = platform::TextHeight(FontRole::Small);
  for (int i = 0; i < broken.count; ++i, top += height) {
    const int width = platform::TextWidth(FontRole::Small, broken.lines[i]) + 2;
    TextOn(canvas, {left, top, left + width, top + height}, broken.lines[i], colour,
           platform::kAlignLeft);
  }
}

// Grid and warnings.
std::u16string BottomWords(const std::u16string& warnings) {
  if (ExampleIsShown()) return warnings;
  if (!view.gridOn) return warnings.empty() ? warnings : u"Grid off" + warnings;
  char16_t grid[kReadOutUnits] = {};
  AppendLabelNumber(grid, kReadOutUnits, u"XY grid Z0  /  spacing ", GridSpacing(), 4);
  AppendBounded(grid, kReadOutUnits, UnitsMetric() ? u" mm" : u" in");
  return grid + warnings;
}

// A read-out at the foot of the view; the y of its top.
int PaintFoot(Canvas& canvas, const Rect& client, int bottom, std::u16string_view text,
              Colour colour) {
  const ReadOutLines lines = BreakReadOut(text, client, client.top + kCornerHeight);
  const int top = bottom - lines.count * platform::TextHeight(FontRole::Small);
  PaintReadOut(canvas, client, top, lines, colour);
  return top;
}

// The shades from the deepest cut to the highest, with the heights of both; the y of its top.
int PaintDepths(Canvas& canvas, const Rect& client, int bottom) {
  constexpr int kSwatch = 6;  // pixels wide
  constexpr int kBeside = 6;  // pixels between words and shades
  if (!ShadesAreShown()) return bottom;
  const CutDepths depths = DepthsOf(ShownPath().path);
  if (!depths.known) return bottom;
  const int top = bottom - platform::TextHeight(FontRole::Small);
  const auto write = [&](int left, double z, bool last) {
    char16_t words[kReadOutUnits] = {};
    AppendLabelNumber(words, kReadOutUnits, u"Z ", z, 4);
    if (last) AppendBounded(words, kReadOutUnits, UnitsMetric() ? u" mm" : u" in");
    const int right = left + platform::TextWidth(FontRole::Small, words) + 2;
    TextOn(canvas, {left, top, right, bottom}, words, kPathQuietText, platform::kAlignLeft);
    return right;
  };
  int x = write(client.left + kEdge, depths.low, false) + kBeside;
  for (int shade = 0; shade < kDepthShades; ++shade, x += kSwatch) {
    FillArea(canvas, {x, top + 2, x + kSwatch, bottom - 2}, ColourOfShade(shade));
  }
  write(x + kBeside, depths.high, true);
  return top;
}

// A read-out below others at the top; the y of its foot.
int PaintHeadLine(Canvas& canvas, const Rect& client, int top, std::u16string_view text,
                  Colour colour) {
  const ReadOutLines lines = BreakReadOut(text, client, top);
  PaintReadOut(canvas, client, top, lines, colour);
  return top + lines.count * platform::TextHeight(FontRole::Small);
}

// The pick, the marker's words and the extents at the top, where the corner leaves room; the rest
// at the foot, where a fitted path leaves the most.
void PaintReadOuts(Canvas& canvas, const Rect& client) {
  constexpr int kBetween = 4;
  char16_t text[kReadOutUnits];
  int top = client.top + kEdge;
  const std::u16string_view pick = PlacePickHelp();
  if (!pick.empty()) top = PaintHeadLine(canvas, client, top, pick, kPathText);
  const std::u16string cross = PickCrossWords();
  if (!cross.empty()) top = PaintHeadLine(canvas, client, top, cross, kPathText);
  if (!pick.empty()) top += kBetween;
  const std::u16string_view marker = MarkerWords();
  if (!marker.empty()) top = PaintHeadLine(canvas, client, top, marker, kPathMarker) + kBetween;
  if (switches.showExtents && ExtentsText(text)) {
    PaintHeadLine(canvas, client, top, text, kPathDimension);
  }
  int bottom = client.bottom - kEdge;
  const std::u16string warnings = WarningWords();
  const std::u16string words = BottomWords(warnings);
  if (!words.empty()) {
    const Colour colour = warnings.empty() ? kPathQuietText : kPathDimension;
    bottom = PaintFoot(canvas, client, bottom, words, colour) - kBetween;
  }
  const std::u16string machine = MachineWords();
  if (!machine.empty()) {
    bottom = PaintFoot(canvas, client, bottom, machine, kPathText) - kBetween;
  }
  bottom = PaintDepths(canvas, client, bottom);
  const std::u16string_view caption = SurfaceCaption();
  if (!caption.empty()) {
    bottom = PaintFoot(canvas, client, bottom, caption, kPathQuietText) - kBetween;
  }
  const std::u16string ground = CoverageWords();
  if (!ground.empty()) {
    bottom = PaintFoot(canvas, client, bottom, ground, kPathQuietText) - kBetween;
  }
  if (MeasureText(text)) PaintFoot(canvas, client, bottom, text, kPathText);
}

}  // namespace

void PaintToolpathView(Canvas& canvas) {
  LoadViewSettings();
  const Rect client = CanvasArea(canvas);
  FillArea(canvas, client, kPathGround);
  const Projection& p = ProjectionFor(client);
  PaintGrid(canvas, p);
  PaintCoverage(canvas, p);
  // Below the path, which it must not hide.
  PaintCube(canvas, CubeClient(client), viewCube, ShownAngles());
  PaintStock(canvas, p);
  PaintCutSurface(canvas, p);
  PaintContext(canvas, p);
  PaintPath(canvas, client);
  PaintHead(canvas, p, client);
  PaintStockWords(canvas, p);
  PaintDimensions(canvas, p);
  PaintMeasure(canvas, client);
  PaintPreviewMarks(canvas, p);
  PaintReadOuts(canvas, client);
  if (platform::FocusedId() == kViewToolpath) FrameArea(canvas, client, PenOf(kBrightAccent, 1));
}

}  // namespace morva
