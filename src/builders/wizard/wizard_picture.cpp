#include "builders/wizard/wizard_picture.h"

#include <cmath>

#include "library/tools.h"
#include "text/codetext.h"
#include "text/length_units.h"

namespace morva {

namespace {

using platform::PointF;

constexpr int kDecimals = 3;
constexpr double kHalfTurn = 180;
constexpr double kThreadStart = 15;   // degrees: the three quarters of a circle that stand for
constexpr double kThreadSweep = 270;  // a thread in a drawing
constexpr double kThreadCore = 0.8;   // of a thread's diameter, for its look

PicturePoint At(PointF p) { return {p.x, p.y}; }

void AddDepth(const WizardValues& values, PointF at, LabelSide side, double clear,
              Picture& picture) {
  AddLabel(picture, At(at), u"Z " + FixedText(values.numbers[kWizardDepth], kDecimals),
           {.side = side, .clear = clear});
}

// Where the tool's edge goes along a straight way.
void AddSwath(PointF from, PointF to, double cutter, Picture& picture) {
  if (!(cutter > 0)) return;
  const double dx = to.x - from.x;
  const double dy = to.y - from.y;
  const double length = std::hypot(dx, dy);
  AddBox(picture,
         {(from.x + to.x) / 2, (from.y + to.y) / 2, length + cutter, cutter, AngleDegrees(dy, dx),
          cutter / 2},
         Ink::Construction);
}

void DrawFace(const WizardValues& values, double cutter, Picture& picture) {
  const double* n = values.numbers;
  const std::vector<PointF> way = WizardWay(values);
  const double width = n[kWizardNinth] - n[kWizardX];
  const double height = n[kWizardTenth] - n[kWizardY];
  if (width > 0 && height > 0) {
    AddBox(picture, {n[kWizardX] + width / 2, n[kWizardY] + height / 2, width, height},
           Ink::Outline);
  }
  for (std::size_t i = 0; i + 1 < way.size(); i += 2) {
    AddSwath(way[i], way[i + 1], cutter, picture);
  }
  std::vector<PicturePoint> corners;
  for (const PointF& p : way) corners.push_back(At(p));
  AddPath(picture, corners, Ink::Feature);
  AddDimension(picture, {.way = DimensionWay::Across,
                         .x0 = n[kWizardX],
                         .y0 = n[kWizardY],
                         .x1 = n[kWizardNinth],
                         .y1 = n[kWizardY],
                         .row = -1,
                         .outside = true});
  if (height > 0) {
    AddDimension(picture, {.way = DimensionWay::Upright,
                           .x0 = n[kWizardNinth],
                           .y0 = n[kWizardY],
                           .x1 = n[kWizardNinth],
                           .y1 = n[kWizardTenth],
                           .row = 1,
                           .outside = true});
  }
  const auto steps = static_cast<int>(way.size() / 2) - 1;
  if (steps > 0) {
    AddDimension(picture, {.way = DimensionWay::Upright,
                           .x0 = way[0].x,
                           .y0 = way[0].y,
                           .x1 = way[0].x,
                           .y1 = way[2].y,
                           .row = -1,
                           .outside = true,
                           .times = steps});
  }
  AddDepth(values, way[0], LabelSide::Right, cutter / 2, picture);
}

void DrawSlot(const WizardValues& values, double cutter, Picture& picture) {
  const std::vector<PointF> way = WizardWay(values);
  AddSwath(way[0], way[1], cutter, picture);
  AddLine(picture, At(way[0]), At(way[1]), Ink::Feature);
  AddDimension(picture, {.way = DimensionWay::Along,
                         .x0 = way[0].x,
                         .y0 = way[0].y,
                         .x1 = way[1].x,
                         .y1 = way[1].y,
                         .row = -1,
                         .outside = true});
  AddLabel(picture, At(way[0]), u"START", {.side = LabelSide::Left, .clear = cutter / 2});
  AddDepth(values, way[1], LabelSide::Right, cutter / 2, picture);
}

// A hole of the tool's diameter; a thread as drawings show it, an open circle around its core.
void AddHole(const WizardValues& values, PointF at, double cutter, Picture& picture) {
  AddCross(picture, At(at), Ink::Feature);
  if (!(cutter > 0)) return;
  const double r = cutter / 2;
  if (values.kind != kWizardTap) {
    AddCircle(picture, At(at), r, Ink::Outline);
    return;
  }
  AddCircle(picture, At(at), r * kThreadCore, Ink::Outline);
  AddArc(picture, {at.x, at.y, r, r, kThreadStart, kThreadSweep}, Ink::Construction);
}

void DrawHoles(const WizardValues& values, double cutter, Picture& picture) {
  const std::vector<PointF> holes = WizardHoles(values);
  if (holes.empty()) return;
  const PointF first = holes.front();
  const PointF last = holes.back();
  if (holes.size() > 1) AddLine(picture, At(first), At(last), Ink::Construction);
  for (const PointF& hole : holes) AddHole(values, hole, cutter, picture);
  if (holes.size() > 1) {
    AddDimension(picture, {.way = DimensionWay::Across,
                           .x0 = first.x,
                           .y0 = first.y,
                           .x1 = holes[1].x,
                           .y1 = first.y,
                           .row = -1,
                           .outside = true,
                           .times = static_cast<int>(holes.size()) - 1});
  }
  if (holes.size() > 2) {
    AddDimension(picture, {.way = DimensionWay::Across,
                           .x0 = first.x,
                           .y0 = first.y,
                           .x1 = last.x,
                           .y1 = first.y,
                           .row = -2,
                           .outside = true});
  }
  if (cutter > 0) {
    AddDimension(picture, {.way = DimensionWay::Diameter,
                           .x0 = first.x,
                           .y0 = first.y,
                           .radius = cutter / 2,
                           .times = static_cast<int>(holes.size()),
                           .leader = kHalfTurn - 45});
  }
  AddDepth(values, last, LabelSide::Above, cutter / 2, picture);
}

}  // namespace

double WizardCutter(const WizardValues& values) {
  const int number = WholeWithin(values.numbers[kWizardTool], 0, kLastWizardTool + 1);
  const int tool = number < 1 || number > kLastWizardTool ? -1 : FindTool(number);
  return tool < 0 ? 0 : toolLibrary.tools[tool].diameter * (values.metric ? kMmPerInch : 1);
}

void DrawWizard(const WizardValues& values, double cutter, Picture& picture) {
  if (values.kind == kWizardFace) {
    DrawFace(values, cutter, picture);
  } else if (values.kind == kWizardSlot) {
    DrawSlot(values, cutter, picture);
  } else {
    DrawHoles(values, cutter, picture);
  }
}

}  // namespace morva
