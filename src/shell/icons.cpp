// Icons as short drawings on a grid of 24 units, x to the right and y down.
//
//   l x y x y ...   open line            c x y x y ...   closed outline
//   f x y x y ...   filled polygon       o x y rx ry     ellipse
//   d x y r         filled disc
//
// Coordinates have at most one decimal; two units at each edge stay free for the pen.
#include "shell/icons.h"

#include <algorithm>

namespace morva {

namespace {

constexpr const char* kDrawings[kIconCount] = {
    // 0 mark: an end mill on its path
    "c 9 2 15 2 15 7 9 7 c 7.5 7 16.5 7 16.5 18 7.5 18 l 7.5 12.5 16.5 8.5 l 7.5 16.5 16.5 12.5 "
    "l 2 21.5 22 21.5",
    // 1 play
    "f 7 4 20 12 7 20",
    // 2 pause
    "f 6 4 10 4 10 20 6 20 f 14 4 18 4 18 20 14 20",
    // 3 rewind
    "f 11.5 5 11.5 19 2.5 12 f 21 5 21 19 12 12",
    // 4 fast forward
    "f 12.5 5 12.5 19 21.5 12 f 3 5 3 19 12 12",
    // 5 stop
    "f 5 5 19 5 19 19 5 19",
    // 6 refresh
    "l 20 12 19.3 15.3 17.2 18.1 14.1 19.7 10.6 19.9 7.4 18.6 5 16.2 4 12.9 4.3 9.6 6.1 6.6 8.9 "
    "4.7 12.4 4 15.7 4.9 19 7.8 l 19.5 3.5 19.5 8.2 14.8 8.2",
    // 7 find
    "o 10.5 10.5 6.5 6.5 l 15.5 15.5 21 21",
    // 8 compare
    "c 3 4 10 4 10 20 3 20 c 14 4 21 4 21 20 14 20 l 5.5 8.5 7.5 8.5 l 5.5 12.5 7.5 12.5 l 16.5 "
    "8.5 18.5 8.5 l 16.5 15.5 18.5 15.5",
    // 9 home
    "l 2.5 12 12 3 21.5 12 l 5 10 5 20.5 10 20.5 10 14.5 14 14.5 14 20.5 19 20.5 19 10",
    // 10 CAD: compasses over an arc
    "d 12 4 1.8 l 11 6 5 20.5 l 13 6 19 20.5 l 4 15.5 7 17.3 12 18.2 17 17.3 20 15.5",
    // 11 plate with four holes
    "c 3 4.5 21 4.5 21 19.5 3 19.5 o 7 8.5 1.6 1.6 o 17 8.5 1.6 1.6 o 7 15.5 1.6 1.6 o 17 15.5 1.6 "
    "1.6",
    // 12 machining wizard: a cutter over a pocket
    "l 9.5 2.5 9.5 13.5 14.5 13.5 14.5 2.5 l 9.5 12.5 14.5 8 "
    "c 2.5 11 6 11 6 17.5 18 17.5 18 11 21.5 11 21.5 21.5 2.5 21.5",
    // 13 shapes and slots
    "c 3 3 11 3 11 11 3 11 o 17 7 4 4 l 7 14.5 17 14.5 18.8 15.4 19.8 17.1 19.8 18.4 18.8 20.1 17 "
    "21 7 21 5.2 20.1 4.2 18.4 4.2 17.1 5.2 15.4 7 14.5",
    // 14 tool library: two cutters in their holders
    "c 4 3 10 3 9 8 5 8 l 5.5 8 5.5 19 8.5 19 8.5 8 l 5.5 13 8.5 10.5 l 5.5 17 8.5 14.5 c 14 3 20 "
    "3 "
    "19 8 15 8 l 15.5 8 15.5 17.5 17 20.5 18.5 17.5 18.5 8",
    // 15 macro library
    "l 8.5 3.5 6 3.5 5 4.8 5 9.5 3 12 5 14.5 5 19.2 6 20.5 8.5 20.5 l 15.5 3.5 18 3.5 19 4.8 19 "
    "9.5 21 12 19 14.5 19 19.2 18 20.5 15.5 20.5 l 10 10 14.5 10 l 9.5 14 14 14 l 11.3 8 10.3 16 l "
    "13.7 8 12.7 16",
    // 16 code index
    "l 9 5.5 21 5.5 l 9 12 21 12 l 9 18.5 21 18.5 d 4.5 5.5 1.7 d 4.5 12 1.7 d 4.5 18.5 1.7",
    // 17 simulator: a block seen from above its corner
    "c 12 2.5 20.5 7 20.5 17 12 21.5 3.5 17 3.5 7 l 3.5 7 12 11.5 20.5 7 l 12 11.5 12 21.5",
    // 18 serial connector
    "c 2.5 7 21.5 7 19 17 5 17 d 7.5 10.5 1.2 d 10.5 10.5 1.2 d 13.5 10.5 1.2 d 16.5 10.5 1.2 d 9 "
    "14 1.2 d 12 14 1.2 d 15 14 1.2",
    // 19 new
    "l 12 4 12 20 l 4 12 20 12",
    // 20 edit
    "c 4 20 5.2 15 16 4.2 19.8 8 9 18.8 l 13.2 7 17 10.8",
    // 21 eye
    "c 2 12 4.5 8.6 8 6.4 12 5.6 16 6.4 19.5 8.6 22 12 19.5 15.4 16 17.6 12 18.4 8 17.6 4.5 15.4 d "
    "12 12 3.2",
    // 22 lock
    "c 5 10.5 19 10.5 19 21 5 21 l 8 10.5 8 7 9.2 4.5 12 3.4 14.8 4.5 16 7 16 10.5 d 12 15.5 1.6",
    // 23 delete
    "l 3.5 6 20.5 6 l 9 6 9 3 15 3 15 6 l 5.5 6 6.5 21 17.5 21 18.5 6 l 10 10 10 17 l 14 10 14 17",
    // 24 go to start: an arrow to a stop
    "l 4 4 4 20 l 21 12 8.5 12 l 13.5 6.5 8 12 13.5 17.5",
    // 25 previous operation
    "f 5 5 7.5 5 7.5 19 5 19 f 19.5 5 19.5 19 9 12",
    // 26 next operation
    "f 19 5 16.5 5 16.5 19 19 19 f 4.5 5 4.5 19 15 12",
    // 27 go to end
    "l 20 4 20 20 l 3 12 15.5 12 l 10.5 6.5 16 12 10.5 17.5",
    // 28 fit
    "l 3.5 8.5 3.5 3.5 8.5 3.5 l 15.5 3.5 20.5 3.5 20.5 8.5 l 20.5 15.5 20.5 20.5 15.5 20.5 l 8.5 "
    "20.5 3.5 20.5 3.5 15.5 c 8.5 8.5 15.5 8.5 15.5 15.5 8.5 15.5",
    // 29 pan
    "l 12 3 12 21 l 3 12 21 12 l 9 5.8 12 2.8 15 5.8 l 9 18.2 12 21.2 15 18.2 l 5.8 9 2.8 12 5.8 "
    "15 "
    "l 18.2 9 21.2 12 18.2 15",
    // 30 dimensions
    "l 4 4 4 20 l 20 4 20 20 l 4.5 12 19.5 12 f 4.5 12 8.5 9.5 8.5 14.5 f 19.5 12 15.5 9.5 15.5 "
    "14.5",
    // 31 measure: a rule
    "c 2.5 15.5 15.5 2.5 21.5 8.5 8.5 21.5 l 6 12 8.5 14.5 l 9 9 12.5 12.5 l 12 6 14.5 8.5",
    // 32 grid
    "c 3.5 3.5 20.5 3.5 20.5 20.5 3.5 20.5 l 9.2 3.5 9.2 20.5 l 14.8 3.5 14.8 20.5 l 3.5 9.2 20.5 "
    "9.2 l 3.5 14.8 20.5 14.8",
    // 33 grid settings
    "l 20.5 10 20.5 3.5 3.5 3.5 3.5 20.5 10 20.5 l 9.2 3.5 9.2 20.5 l 3.5 9.2 20.5 9.2 l 14.8 3.5 "
    "14.8 9 l 3.5 14.8 9 14.8 f 12.5 14.5 22 14.5 17.2 20.5",
    // 34 layers
    "c 12 3 21.5 8 12 13 2.5 8 l 2.5 12 12 17 21.5 12 l 2.5 16 12 21 21.5 16",
    // 35 open
    "l 3 19.5 3 4.5 9 4.5 11 7 19 7 19 10 c 3 19.5 6.5 10 22 10 18.8 19.5",
    // 36 save
    "c 3.5 3.5 17 3.5 20.5 7 20.5 20.5 3.5 20.5 l 7.5 3.5 7.5 9 15.5 9 15.5 3.5 l 7 20.5 7 14 17 "
    "14 "
    "17 20.5",
    // 37 include
    "c 3.5 3.5 20.5 3.5 20.5 20.5 3.5 20.5 l 7.5 12.2 11 15.8 17 8.2",
    // 38 send
    "l 12 16 12 3.5 l 6.5 9 12 3.5 17.5 9 l 3.5 15 3.5 20.5 20.5 20.5 20.5 15",
    // 39 receive
    "l 12 3.5 12 16 l 6.5 10.5 12 16 17.5 10.5 l 3.5 15 3.5 20.5 20.5 20.5 20.5 15",
    // 40 check
    "c 12 2.5 20 5.5 20 12 16.8 18 12 21.5 7.2 18 4 12 4 5.5 l 8 11.8 11 14.8 16.2 8.8",
    // 41 orbit
    "o 12 12 9.5 3.8 o 12 12 3.8 9.5 d 12 12 1.6",
    // 42 face: to and fro over a plate
    "c 2.5 3.5 21.5 3.5 21.5 20.5 2.5 20.5 l 5 7.5 19 7.5 19 12 5 12 5 16.5 17 16.5",
    // 43 profile: a cutter's way along a slot
    "l 6.5 7 17.5 7 20.3 8.3 22 12 20.3 15.7 17.5 17 6.5 17 3.7 15.7 2 12 3.7 8.3 6.5 7 "
    "l 6.5 12 16 12 l 13.3 9.5 16.3 12 13.3 14.5",
    // 44 drill: its point in a hole
    "l 9 2.5 9 12 12 15 15 12 15 2.5 l 9 8.5 15 4.5 l 9 12 15 8 l 2.5 12 6 12 6 21 18 21 18 12 "
    "21.5 12",
    // 45 peck: a deep hole in steps
    "l 2.5 5 8 5 8 21.5 16 21.5 16 5 21.5 5 l 12 2.5 12 8.5 l 9.8 6.5 12 9 14.2 6.5 l 12 11 12 "
    "13.5 l 9.8 11.5 12 14 14.2 11.5 l 12 15.5 12 18.5 l 9.8 16.5 12 19 14.2 16.5",
    // 46 tap: a thread in its hole
    "l 2.5 12 6 12 6 21 18 21 18 12 21.5 12 l 9 2.5 9 18 15 18 15 2.5 l 8 7 16 4.5 l 8 10.5 16 8 "
    "l 8 14 16 11.5 l 8 17.5 16 15",
    // 47 select: a pointer
    "c 6 3 19 12.5 12.8 13.6 16 20 13.2 21.3 10 14.8 6 19",
    // 48 line between two points
    "l 5.5 18.5 18.5 5.5 d 4.5 19.5 2.2 d 19.5 4.5 2.2",
    // 49 rectangle
    "c 3 6 21 6 21 18 3 18",
    // 50 circle and its center
    "o 12 12 9 9 d 12 12 1.6",
    // 51 slot
    "l 8 7 16 7 19.5 8.5 21 12 19.5 15.5 16 17 8 17 4.5 15.5 3 12 4.5 8.5 8 7",
    // 52 circular pattern
    "o 12 4.8 2.2 2.2 o 18.3 8.4 2.2 2.2 o 18.3 15.6 2.2 2.2 o 12 19.2 2.2 2.2 o 5.7 15.6 2.2 2.2 "
    "o 5.7 8.4 2.2 2.2 d 12 12 1.4",
    // 53 rectangular pattern
    "c 3 3 9 3 9 9 3 9 c 15 3 21 3 21 9 15 9 c 3 15 9 15 9 21 3 21 c 15 15 21 15 21 21 15 21",
    // 54 copy: a sheet over another
    "c 8 8 20.5 8 20.5 20.5 8 20.5 l 15.5 8 15.5 3.5 3.5 3.5 3.5 15.5 8 15.5",
    // 55 cut: scissors
    "o 6.2 18 2.9 2.9 o 17.8 18 2.9 2.9 l 8 15.8 17 3 l 16 15.8 7 3",
    // 56 paste: a board with its clip
    "l 8.5 4.5 4.5 4.5 4.5 21 19.5 21 19.5 4.5 15.5 4.5 c 8.5 2.5 15.5 2.5 15.5 6.5 8.5 6.5 l 8.5 "
    "11.5 15.5 11.5 l 8.5 16 15.5 16",
    // 57 scale: a square grows
    "c 3.5 12.5 11.5 12.5 11.5 20.5 3.5 20.5 l 3.5 8.5 3.5 3.5 20.5 3.5 20.5 20.5 15.5 20.5 l 12 "
    "12 17 7 l 12.8 7 17 7 17 11.2",
    // 58 undo
    "l 8.5 4 4 8.5 8.5 13 l 4 8.5 14 8.5 18 10.2 19.8 13.8 18.2 17.4 14.5 19 8 19",
    // 59 cut data: how deep
    "l 2.5 8 8 8 8 20.5 16 20.5 16 8 21.5 8 l 12 2.5 12 16.5 l 9 13.5 12 16.8 15 13.5",
    // 60 generate: lines of code from a drawing
    "l 13.5 5 21 5 l 13.5 10 21 10 l 13.5 15 21 15 l 13.5 20 21 20 l 2.5 12.5 9.5 12.5 l 6 8.5 10 "
    "12.5 6 16.5",
    // 61 snap: a magnet
    "l 4 3.5 4 12 5.8 17 9.5 20 14.5 20 18.2 17 20 12 20 3.5 15.5 3.5 15.5 12 14.2 14.8 12 16 9.8 "
    "14.8 8.5 12 8.5 3.5 4 3.5 l 4 8 8.5 8 l 15.5 8 20 8",
    // 62 polygon
    "c 7.5 4.2 16.5 4.2 21 12 16.5 19.8 7.5 19.8 3 12",
    // 63 revolve: around a pivot
    "l 4.5 15 4.6 10 7.3 6 12 4.5 16.7 6 19 9.5 l 20.5 4.5 19.2 10 13.8 8.5 d 12 13.5 1.8",
    // 64 join: two lines meet
    "l 3 20 10.8 8 l 21 20 13.2 8 o 12 5.5 2.6 2.6",
    // 65 trim at: what lies behind an edge goes
    "l 11 3 11 21 l 2.5 12 11 12 l 14.5 9 20.5 15 l 20.5 9 14.5 15",
    // 66 tangent
    "o 11 14.5 6.5 6.5 l 2.5 8 21.5 8 d 11 8 1.8",
    // 67 work axis: dashes and dots
    "l 3 21 8 16 d 10.3 13.7 1.3 l 12.6 11.4 15.8 8.2 d 18 6 1.3 l 20 4 21 3",
    // 68 point
    "l 12 2.5 12 8 l 12 16 12 21.5 l 2.5 12 8 12 l 16 12 21.5 12 d 12 12 2.2",
    // 69 cancel
    "o 12 12 9.3 9.3 l 8.5 8.5 15.5 15.5 l 15.5 8.5 8.5 15.5",
    // 70 preview 3D: the edges of a block
    "c 3 9 14 9 14 20.5 3 20.5 l 3 9 9.5 3.5 20.5 3.5 20.5 15 14 20.5 l 14 9 20.5 3.5",
};

constexpr int kPartPoints = 24;

bool ReadUnits(const char*& at, double& value) {
  while (*at == ' ') ++at;
  if (*at < '0' || *at > '9') return false;
  value = 0;
  while (*at >= '0' && *at <= '9') value = value * 10 + (*at++ - '0');
  if (*at == '.') {
    ++at;
    value += (*at++ - '0') / 10.0;
  }
  return true;
}

void DrawPart(platform::Canvas& canvas, char kind, const double* units, int count, double left,
              double top, double scale, const platform::Pen& pen) {
  const auto x = [&](double u) { return left + u * scale; };
  const auto y = [&](double u) { return top + u * scale; };
  if (kind == 'o' && count == 4) {
    PaintEllipse(canvas, {x(units[0]), y(units[1])}, units[2] * scale, units[3] * scale, pen);
    return;
  }
  if (kind == 'd' && count == 3) {
    FillEllipse(canvas, {x(units[0]), y(units[1])}, units[2] * scale, units[2] * scale, pen.colour);
    return;
  }
  platform::PointF points[kPartPoints + 1];
  int n = 0;
  for (int i = 0; i + 1 < count && n < kPartPoints; i += 2) {
    points[n++] = {x(units[i]), y(units[i + 1])};
  }
  if (kind == 'f') {
    platform::Pen edge = pen;
    edge.width = 1;
    PaintPolygon(canvas, points, n, pen.colour, edge);
    return;
  }
  if (kind == 'c') points[n++] = points[0];
  PaintPolyline(canvas, points, n, pen);
}

}  // namespace

const char* IconDrawing(int icon) { return icon >= 0 && icon < kIconCount ? kDrawings[icon] : ""; }

void DrawIcon(platform::Canvas& canvas, int icon, int centreX, int centreY, int size,
              platform::Colour colour) {
  const double scale = size / 24.0;
  const double left = centreX - size / 2.0;
  const double top = centreY - size / 2.0;
  platform::Pen pen;
  pen.colour = colour;
  pen.width = std::max(1, (size + 10) / 16);
  pen.smooth = true;
  const char* at = IconDrawing(icon);
  while (*at != 0) {
    while (*at == ' ') ++at;
    if (*at == 0) break;
    const char kind = *at++;
    double units[2 * kPartPoints];
    int count = 0;
    double value = 0;
    while (count < 2 * kPartPoints && ReadUnits(at, value)) units[count++] = value;
    DrawPart(canvas, kind, units, count, left, top, scale, pen);
  }
}

}  // namespace morva
