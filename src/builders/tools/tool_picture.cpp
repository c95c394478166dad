#include "builders/tools/tool_picture.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "app/limits.h"
#include "builders/tools/turned_solid.h"
#include "text/codetext.h"
#include "text/length_units.h"
#include "text/series_trig.h"

namespace morva {

namespace {

// The holder, inches: a flange below the gauge line, a nose below that, a taper above.
constexpr double kFlangeRadius = 1.25;
constexpr double kFlangeHeight = 0.75;
constexpr double kNoseRadius = 0.875;
constexpr double kTaperRadius = 0.875;
constexpr double kTaperHeight = 0.8;  // the taper is shown up to here
constexpr double kTaperSlope = 7.0 / 24 / 2;

constexpr double kHelix = 0.5773502691896258;  // tangent of 30 degrees
constexpr double kMostTurns = 3;               // of a helix; longer tools show a steeper one
constexpr double kHelixStep = 0.1745;          // radians
constexpr double kGullet = 0.42;               // of the way from edge to edge
constexpr int kBallSections = 8;
constexpr int kThreads = 12;           // of a tap, whatever its pitch
constexpr double kThreadDepth = 0.12;  // of the radius
constexpr double kShank = 0.8;         // of the cutter's radius, where a tap or reamer is thinner
constexpr double kInsert = 0.12;       // of a face mill's diameter

// The rows of ToolTypes.
enum Type { kEndMill, kFaceMill, kDrill, kTap, kBallNose, kChamferMill, kReamer, kCustom };

// The measures in the unit of the picture.
struct Measures {
  int type = kEndMill;
  int flutes = 0;
  double radius = 0;
  double gauge = 0;
  double stickout = 0;
  double unit = 1;  // of an inch
  ToolShape tip = ToolShape::Flat;
};

Measures MeasuresOf(const ToolRecord& tool, bool metric) {
  Measures m;
  m.unit = metric ? kMmPerInch : 1;
  m.type = ToolTypeRow(tool.type);
  m.flutes = tool.flutes;
  m.radius = tool.diameter * m.unit / 2;
  m.gauge = tool.gaugeLength * m.unit;
  m.stickout = tool.stickout * m.unit;
  m.tip = ShapeOfTool(tool.type);
  return m;
}

void AddRing(std::vector<TurnedRing>& rings, double radius, double height) {
  rings.push_back({radius, height});
}

// The tip of a ball, a drill or a chamfer mill, as high as the stickout lets it be. How high the
// full radius begins.
double AddTip(std::vector<TurnedRing>& rings, const Measures& m) {
  const int sections = m.tip == ToolShape::Ball ? kBallSections : 1;
  double top = 0;
  for (int i = 0; i <= sections; ++i) {
    // Equal angles from the pole, so that a ball is round near its tip.
    const double distance = m.radius * std::sin(kHalfPi * i / sections);
    top = std::min(ToolTipHeight(m.tip, m.radius, distance), m.stickout);
    AddRing(rings, distance, top);
  }
  return top;
}

// A lead, threads of equal height, and a thinner shank.
void AddThreads(std::vector<TurnedRing>& rings, const Measures& m) {
  const double length = std::min(m.stickout, 4 * m.radius);
  for (int i = 0; i < kThreads; ++i) {
    const double lead = i < 3 ? 1 - 0.08 * (3 - i) : 1;
    AddRing(rings, m.radius * (lead - kThreadDepth), length * i / kThreads);
    AddRing(rings, m.radius * lead, length * (i + 0.5) / kThreads);
  }
  AddRing(rings, m.radius * kShank, length);
  AddRing(rings, m.radius * kShank, m.stickout);
}

// The body of a face mill, narrower behind its inserts, on an arbor.
void AddFaceMill(std::vector<TurnedRing>& rings, const Measures& m) {
  const double height = std::min(m.stickout, 1.1 * m.radius);
  AddRing(rings, m.radius, 0);
  AddRing(rings, m.radius, 0.45 * height);
  AddRing(rings, 0.78 * m.radius, 0.75 * height);
  AddRing(rings, 0.78 * m.radius, height);
  if (height >= m.stickout) return;
  AddRing(rings, 0.5 * m.radius, height);
  AddRing(rings, 0.5 * m.radius, m.stickout);
}

std::vector<TurnedRing> CutterRings(const Measures& m) {
  std::vector<TurnedRing> rings;
  if (m.type == kTap) {
    AddThreads(rings, m);
  } else if (m.type == kFaceMill) {
    AddFaceMill(rings, m);
  } else if (m.type == kReamer) {
    const double fluted = 0.7 * m.stickout;
    AddRing(rings, 0.9 * m.radius, 0);
    AddRing(rings, m.radius, std::min(0.1 * m.radius, fluted));
    AddRing(rings, m.radius, fluted);
    AddRing(rings, m.radius * kShank, fluted);
    AddRing(rings, m.radius * kShank, m.stickout);
  } else if (m.tip == ToolShape::Flat) {
    AddRing(rings, m.radius, 0);
    AddRing(rings, m.radius, m.stickout);
  } else {
    AddTip(rings, m);
    AddRing(rings, m.radius, m.stickout);
  }
  return rings;
}

std::vector<TurnedRing> HolderRings(const Measures& m) {
  std::vector<TurnedRing> rings;
  const double body = m.gauge - m.stickout;
  const double flange = std::min(kFlangeHeight * m.unit, body);
  // A face mill sits below the nose, another cutter in it.
  const double around = m.type == kFaceMill ? 0 : 1.25 * m.radius;
  const double nose = std::max(kNoseRadius * m.unit, around);
  const double wide = std::max(kFlangeRadius * m.unit, nose);
  if (body > flange) {
    // The nose's edge is broken, so that cutter and holder can be told.
    const double broken = std::min(0.15 * nose, body - flange);
    AddRing(rings, nose - broken, m.stickout);
    AddRing(rings, nose, m.stickout + broken);
    AddRing(rings, nose, m.gauge - flange);
  }
  if (flange > 0) {
    AddRing(rings, wide, m.gauge - flange);
    // The groove of the flange.
    AddRing(rings, wide, m.gauge - 0.65 * flange);
    AddRing(rings, 0.88 * wide, m.gauge - 0.5 * flange);
    AddRing(rings, wide, m.gauge - 0.35 * flange);
    AddRing(rings, wide, m.gauge);
  }
  const double taper = kTaperHeight * m.unit;
  AddRing(rings, kTaperRadius * m.unit, m.gauge);
  AddRing(rings, kTaperRadius * m.unit - kTaperSlope * taper, m.gauge + taper);
  return rings;
}

// How fast flutes turn: radians for each unit of height.
double TwistOf(const Measures& m) {
  if (m.type == kTap || m.type == kReamer || m.type == kFaceMill) return 0;
  return std::min(kHelix / m.radius, kTwoPi * kMostTurns / m.stickout);
}

double FlutedHeight(const Measures& m) {
  if (m.type == kTap) return std::min(m.stickout, 4 * m.radius);
  return m.type == kReamer ? 0.7 * m.stickout : m.stickout;
}

// One flute where it is in front: the gullet as a dark band, and the edge behind it as a line.
struct Flute {
  std::vector<PicturePoint> edge;
  std::vector<PicturePoint> back;  // of the gullet
};

void AddFlute(const Flute& flute, Picture& picture) {
  if (flute.edge.size() < 2) return;
  std::vector<PicturePoint> band = flute.edge;
  band.insert(band.end(), flute.back.rbegin(), flute.back.rend());
  AddFill(picture, band, Ink::ShadeDark);
  AddPath(picture, flute.edge, Ink::Feature);
  AddPath(picture, flute.back, Ink::Outline);
}

void AddEdge(const std::vector<TurnedRing>& rings, const Measures& m, double from,
             Picture& picture) {
  const double twist = TwistOf(m);
  const double top = FlutedHeight(m);
  const double gullet = kGullet * kTwoPi / std::max(m.flutes, 2);
  const int steps = std::max(kBallSections * 2, static_cast<int>(twist * top / kHelixStep));
  Flute flute;
  for (int i = 0; i <= steps; ++i) {
    const double height = top * i / steps;
    const double radius = RadiusAt(rings, height);
    // Between the left and the right limb, whole turns taken off.
    const double angle = std::remainder(from + twist * height, kTwoPi);
    const double behind = std::min(angle + gullet, kHalfPi);
    if (angle + gullet > -kHalfPi && angle < kHalfPi) {
      flute.edge.push_back(OnTurned(radius, height, std::max(angle, -kHalfPi)));
      flute.back.push_back(OnTurned(radius, height, behind));
      continue;
    }
    AddFlute(flute, picture);
    flute = Flute();
  }
  AddFlute(flute, picture);
}

// The inserts of a face mill that are in front, each behind a pocket for its chips.
void AddInserts(const Measures& m, Picture& picture) {
  const double side = kInsert * 2 * m.radius;
  const double top = std::min(1.3 * side, 0.4 * m.stickout);
  const auto patch = [&](double from, double to, double high, Ink ink) {
    const double left = std::max(from, -kHalfPi);
    const double right = std::min(to, kHalfPi);
    if (left >= right) return;
    const PicturePoint corners[] = {OnTurned(m.radius, 0, left), OnTurned(m.radius, 0, right),
                                    OnTurned(m.radius, high, right),
                                    OnTurned(m.radius, high, left)};
    AddFill(picture, corners, ink);
    AddLoop(picture, corners, ink == Ink::ShadeLight ? Ink::Feature : Ink::Outline);
  };
  const double insert = side / m.radius;  // radians
  const double pocket = std::min(2 * insert, 0.8 * kTwoPi / m.flutes - insert);
  for (int i = 0; i < m.flutes; ++i) {
    const double angle = std::remainder(kTwoPi * i / m.flutes + 0.4, kTwoPi);
    if (pocket > 0) patch(angle + insert, angle + insert + pocket, 1.2 * top, Ink::ShadeDark);
    patch(angle, angle + insert, top, Ink::ShadeLight);
  }
}

void AddEdges(const std::vector<TurnedRing>& rings, const Measures& m, Picture& picture) {
  if (m.type == kFaceMill) return AddInserts(m, picture);
  for (int i = 0; i < m.flutes; ++i) AddEdge(rings, m, kTwoPi * i / m.flutes, picture);
}

void AddMeasures(const Measures& m, Picture& picture) {
  const double side = std::max(m.radius, kFlangeRadius * m.unit);
  AddDimension(picture, {.way = DimensionWay::Upright,
                         .x0 = side,
                         .y0 = 0,
                         .x1 = side,
                         .y1 = m.gauge,
                         .row = 1,
                         .outside = true});
  AddDimension(picture, {.way = DimensionWay::Upright,
                         .x0 = -side,
                         .y0 = 0,
                         .x1 = -side,
                         .y1 = m.stickout,
                         .row = -1,
                         .outside = true});
  AddDimension(picture,
               {.way = DimensionWay::Across,
                .x0 = -m.radius,
                .y0 = 0,
                .x1 = m.radius,
                .y1 = 0,
                .row = -1,
                .outside = true},
               {}, u"\u00D8 " + DimensionText(2 * m.radius, picture.metric));
  // The gauge line, from which the length is measured.
  AddLine(picture, {-1.15 * side, m.gauge}, {1.15 * side, m.gauge}, Ink::Construction);
}

// How much of the radius the core of a cutter keeps.
double CoreOf(const Measures& m) {
  return m.flutes <= 2 ? 0.35 : m.flutes == 3 ? 0.5 : m.flutes <= 6 ? 0.6 : 0.78;
}

PicturePoint Round(double radius, double angle) {
  return {radius * std::cos(angle), radius * std::sin(angle)};
}

// The section of a fluted cutter: for each flute a land on the rim and a gullet in front of the
// next edge.
void AddSection(const Measures& m, Picture& picture) {
  const double step = kTwoPi / m.flutes;
  const double core = CoreOf(m) * m.radius;
  std::vector<PicturePoint> corners;
  for (int i = 0; i < m.flutes; ++i) {
    const double edge = step * i + kHalfPi;
    PicturePoint rim = Round(m.radius, edge);
    rim.bulge = std::tan(0.4 * step / 4);
    corners.push_back(rim);
    corners.push_back(Round(m.radius, edge + 0.4 * step));
    corners.push_back(Round((m.radius + core) / 2, edge + 0.6 * step));
    corners.push_back(Round(core, edge + 0.85 * step));
  }
  AddFill(picture, corners, Ink::ShadeMid);
  AddLoop(picture, corners, Ink::Outline);
  // A tap and a reamer cut with their sides only.
  if (m.type == kTap || m.type == kReamer) return;
  const double inner = m.flutes <= 2 ? 0 : 0.12 * m.radius;
  for (int i = 0; i < m.flutes; ++i) {
    const double edge = step * i + kHalfPi;
    AddLine(picture, Round(inner, edge), Round(m.radius, edge), Ink::Feature);
  }
}

// The chisel between the lips of a drill.
void AddChisel(const Measures& m, Picture& picture) {
  AddLine(picture, Round(0.12 * m.radius, kHalfPi / 2), Round(-0.12 * m.radius, kHalfPi / 2),
          Ink::Feature);
}

void AddFaceMillEnd(const Measures& m, Picture& picture) {
  const double side = kInsert * 2 * m.radius;
  AddDisc(picture, {0, 0, m.radius - side / 2, m.radius - side / 2}, Ink::ShadeMid);
  AddCircle(picture, {0, 0}, m.radius - side / 2, Ink::Outline);
  AddCircle(picture, {0, 0}, 0.3 * m.radius, Ink::Outline);
  for (int i = 0; i < m.flutes; ++i) {
    const double angle = kTwoPi * i / m.flutes + kHalfPi;
    const PicturePoint middle = Round(m.radius - side / 2, angle);
    const PictureBox insert{middle.x, middle.y, side, side, angle / kRadiansPerDegree};
    AddFilledBox(picture, insert, Ink::ShadeLight);
    AddBox(picture, insert, Ink::Feature);
  }
}

}  // namespace

bool HasToolPicture(const ToolRecord& tool) {
  return tool.diameter > 0 && tool.gaugeLength > 0 && tool.stickout > 0 &&
         tool.stickout <= tool.gaugeLength && tool.flutes >= 1 && tool.flutes <= kMaxFlutes;
}

void DrawTool(const ToolRecord& tool, bool metric, Picture& picture) {
  if (!HasToolPicture(tool)) return;
  const Measures m = MeasuresOf(tool, metric);
  const std::vector<TurnedRing> cutter = CutterRings(m);
  AddTurned(picture, cutter);
  AddEdges(cutter, m, picture);
  NextLayer(picture);
  AddTurned(picture, HolderRings(m));
  AddMeasures(m, picture);
}

void DrawToolEnd(const ToolRecord& tool, bool metric, Picture& picture) {
  if (!HasToolPicture(tool)) return;
  const Measures m = MeasuresOf(tool, metric);
  if (m.type == kFaceMill) {
    AddFaceMillEnd(m, picture);
  } else {
    AddSection(m, picture);
    if (m.type == kDrill) AddChisel(m, picture);
  }
  AddCircle(picture, {0, 0}, m.radius, Ink::Construction);
  AddDimension(picture, {.way = DimensionWay::Diameter, .radius = m.radius});
  AddLabel(picture, {0, -m.radius},
           IntegerText(m.flutes) + (m.flutes == 1 ? u" FLUTE" : u" FLUTES"),
           {.side = LabelSide::Below});
}

}  // namespace morva
