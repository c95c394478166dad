// Drawing of the view cube: rings, keys, faces and their lettering.

#include <algorithm>
#include <cmath>

#include "app/palette.h"
#include "library/view_cube.h"
#include "text/series_trig.h"

namespace morva {
namespace {

using platform::Canvas;
using platform::Colour;
using platform::Pen;
using platform::PointF;
using platform::Rect;
using platform::Segment;

constexpr double kSeen = 0.02;  // of the depth; less is a face seen edge on
constexpr double kTickReach = 3;
constexpr int kTicks = 12;
constexpr int kNameStrokes = 96;

// Letters of the faces as strokes over a grid of 4 by 6, y upwards: pairs of digits, a blank
// between strokes. They lie in the plane of their face and turn with it.
struct Letter {
  char letter;
  const char* strokes;
};
constexpr Letter kLetters[] = {
    {'A', "002640 1333"},         {'B', "000636454433032342413000 0333"},
    {'C', "4536160501103041"},    {'E', "46060040 0333"},
    {'F', "460600 0333"},         {'G', "45361605011030414323"},
    {'H', "0006 4046 0343"},      {'I', "2026"},
    {'K', "0006 4602 1340"},      {'L', "060040"},
    {'M', "0006234640"},          {'N', "00064046"},
    {'O', "103041453616050110"},  {'P', "00063645443303"},
    {'R', "00063645443303 2340"}, {'T', "0646 2620"},
};

Pen Line(Colour colour, int width) {
  Pen pen;
  pen.colour = colour;
  pen.width = width;
  pen.smooth = true;
  return pen;
}

// The cube on one paint's canvas.
struct Drawing {
  Canvas& canvas;
  PointF middle;
  CubeAxes axes;
};

// A place on a face, -1 to 1 in its two axes.
PointF OnFace(const Drawing& d, const CubeFace& face, double across, double up) {
  PointF p = d.middle;
  for (int i = 0; i < 3; ++i) {
    const double side = i == face.axis ? face.side : 0;
    const double reach = (side + face.right[i] * across + face.up[i] * up) * kCubeHalf;
    p.x += d.axes.x[i] * reach;
    p.y += d.axes.y[i] * reach;
  }
  return p;
}

Colour Shade(double seen) {
  const auto mix = [seen](unsigned dark, unsigned light) {
    return static_cast<unsigned>(dark + (static_cast<double>(light) - dark) * seen + 0.5);
  };
  return platform::Rgb(mix(platform::RedOf(kCubeFaceSlant), platform::RedOf(kCubeFaceStraight)),
                       mix(platform::GreenOf(kCubeFaceSlant), platform::GreenOf(kCubeFaceStraight)),
                       mix(platform::BlueOf(kCubeFaceSlant), platform::BlueOf(kCubeFaceStraight)));
}

const char* StrokesOf(char letter) {
  for (const Letter& row : kLetters) {
    if (row.letter == letter) return row.strokes;
  }
  return "";
}

// All strokes of a face's name in one batch.
void PaintName(const Drawing& d, const CubeFace& face) {
  int length = 0;
  while (face.name[length] != 0) ++length;
  // A letter is 4 wide and 1.6 apart from the next; short names are not blown up.
  const double wide = length * 5.6 - 1.6;
  const double unit = std::min(1.7 / wide, 0.075);
  Segment strokes[kNameStrokes];
  int count = 0;
  for (int i = 0; i < length; ++i) {
    const double left = -wide / 2 + i * 5.6;
    bool first = true;
    PointF from;
    for (const char* at = StrokesOf(face.name[i]); *at != 0 && count < kNameStrokes;) {
      if (*at == ' ') {
        first = true;
        ++at;
        continue;
      }
      const double across = (left + (at[0] - '0')) * unit;
      const double up = ((at[1] - '0') - 3) * std::max(unit, 0.062);
      const PointF to = OnFace(d, face, across, up);
      if (!first) strokes[count++] = SegmentOf(from, to);
      first = false;
      from = to;
      at += 2;
    }
  }
  PaintSegments(d.canvas, strokes, count, Line(kCubeLetter, 1));
}

// The cell of a face that looks in the direction of `over`, if it has one.
void PaintCell(const Drawing& d, const CubeFace& face, const CubeHit& over) {
  if (over.part != CubePart::Face) return;
  const int direction[3] = {over.x, over.y, over.z};
  if (direction[face.axis] != face.side) return;
  double u = 0;
  double v = 0;
  for (int i = 0; i < 3; ++i) {
    u += direction[i] * face.right[i];
    v += direction[i] * face.up[i];
  }
  const auto low = [](double cell) { return cell < 0 ? -1 : cell > 0 ? 0.52 : -0.52; };
  const auto high = [](double cell) { return cell < 0 ? -0.52 : cell > 0 ? 1 : 0.52; };
  const PointF corners[4] = {OnFace(d, face, low(u), low(v)), OnFace(d, face, high(u), low(v)),
                             OnFace(d, face, high(u), high(v)), OnFace(d, face, low(u), high(v))};
  PaintPolygon(d.canvas, corners, 4, kCubeCell, Line(kCubeCell, 1));
}

void PaintFaces(const Drawing& d, const CubeHit& over) {
  for (int i = 0; i < kCubeFaces; ++i) {
    const CubeFace& face = FaceOfCube(i);
    const double seen = d.axes.depth[face.axis] * face.side;
    if (seen < kSeen) continue;
    const PointF corners[4] = {OnFace(d, face, -1, -1), OnFace(d, face, 1, -1),
                               OnFace(d, face, 1, 1), OnFace(d, face, -1, 1)};
    const Pen edge = Line(kCubeEdge, 1);
    PaintPolygon(d.canvas, corners, 4, Shade(std::min(seen, 1.0)), edge);
    PaintCell(d, face, over);
    const PointF closed[5] = {corners[0], corners[1], corners[2], corners[3], corners[0]};
    PaintPolyline(d.canvas, closed, 5, edge);
    PaintName(d, face);
  }
}

PointF OnRing(PointF middle, double radius, double degrees) {
  return {middle.x + radius * SeriesCosine(degrees * kRadiansPerDegree),
          middle.y - radius * SeriesSine(degrees * kRadiansPerDegree)};
}

// A ring with ticks that turn with its angle.
void PaintRing(const Drawing& d, double radius, double turned, bool lit) {
  const Colour colour = lit ? kBrightAccent : kCubeRing;
  PaintEllipse(d.canvas, d.middle, radius, radius, Line(colour, lit ? 2 : 1));
  Segment ticks[kTicks];
  for (int i = 0; i < kTicks; ++i) {
    const double at = turned + 360.0 * i / kTicks;
    ticks[i] = SegmentOf(OnRing(d.middle, radius - kTickReach, at),
                         OnRing(d.middle, radius + kTickReach, at));
  }
  PaintSegments(d.canvas, ticks, kTicks, Line(colour, 1));
}

struct Arrow {
  CubePart part;
  double x[3], y[3];  // from the middle of the cube
};
constexpr Arrow kArrows[] = {
    {CubePart::YawLeft, {-58, -44, -44}, {-3, -11, 5}},
    {CubePart::YawRight, {58, 44, 44}, {-3, -11, 5}},
    {CubePart::ElevationUp, {0, -10, 10}, {-44, -36, -36}},
    {CubePart::ElevationDown, {0, -10, 10}, {54, 42, 42}},
};

void PaintArrows(const Drawing& d, CubePart over) {
  for (const Arrow& arrow : kArrows) {
    const Colour colour = over == arrow.part ? kBrightAccent : kCubeKey;
    PointF corners[3];
    for (int i = 0; i < 3; ++i) {
      corners[i] = {d.middle.x + arrow.x[i], d.middle.y + arrow.y[i]};
    }
    PaintPolygon(d.canvas, corners, 3, colour, Line(kWindowBackground, 2));
    PaintPolygon(d.canvas, corners, 3, colour, Line(colour, 1));
  }
}

// An arc along the outer ring with a head at its end.
void PaintRoll(const Drawing& d, double from, double to, bool lit) {
  constexpr int kSteps = 8;
  PointF points[kSteps + 1];
  for (int i = 0; i <= kSteps; ++i) {
    points[i] = OnRing(d.middle, kOuterRingRadius, from + (to - from) * i / kSteps);
  }
  const Colour colour = lit ? kBrightAccent : kCubeKey;
  PaintPolyline(d.canvas, points, kSteps + 1, Line(colour, 3));
  const double onwards = to > from ? 8 : -8;
  const PointF head[3] = {OnRing(d.middle, kOuterRingRadius, to + onwards),
                          OnRing(d.middle, kOuterRingRadius - 6, to - onwards * 0.2),
                          OnRing(d.middle, kOuterRingRadius + 6, to - onwards * 0.2)};
  PaintPolygon(d.canvas, head, 3, colour, Line(colour, 1));
}

void PaintHome(const Drawing& d, const Rect& client, bool lit) {
  const double x = client.right - 138;
  const double y = client.top + 18;
  const Colour colour = lit ? kBrightAccent : kCubeKey;
  const PointF house[7] = {{x, y - 9},     {x + 10, y}, {x + 7, y}, {x + 7, y + 8},
                           {x - 7, y + 8}, {x - 7, y},  {x - 10, y}};
  PaintPolygon(d.canvas, house, 7, kPanelBackground, Line(colour, 2));
  const PointF door[3] = {{x, y + 8}, {x, y + 3}, {x, y + 8}};
  PaintPolyline(d.canvas, door, 3, Line(colour, 3));
}

}  // namespace

void PaintCube(Canvas& canvas, const Rect& client, const ViewCube& cube, const ViewAngles& angles) {
  if (!CubeFits(client)) return;
  const Drawing d{canvas, CubeMiddle(client), AxesOfCube(angles)};
  const CubePart over = cube.ring != CubePart::None ? cube.ring : cube.over.part;
  PaintRing(d, kYawRingRadius, angles.yaw, over == CubePart::YawRing);
  PaintRing(d, kOuterRingRadius, cube.outerRolls ? -angles.roll : angles.elevation,
            over == CubePart::OuterRing);
  PaintRoll(d, 47, 68, over == CubePart::RollLeft);
  PaintRoll(d, 37, 24, over == CubePart::RollRight);
  PaintHome(d, client, over == CubePart::Home);
  PaintFaces(d, cube.over);
  PaintArrows(d, over);
}

}  // namespace morva
