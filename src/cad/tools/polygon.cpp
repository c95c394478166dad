#include "cad/tools/polygon.h"

#include <cmath>

#include "app/command_ids.h"
#include "app/limits.h"
#include "cad/geometry/lines.h"
#include "cad/model/cad_hooks.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"
#include "forms/form.h"
#include "library/outline.h"
#include "platform/window.h"

namespace morva {

namespace {

constexpr double kMostStartAngle = 36000;  // degrees
constexpr const char16_t* kPolygonRefused =
    u"Use 3-64 sides, positive radius, and enough room in the sketch.";

bool IsWholeSides(double value) {
  return value >= kLeastSides && value <= kMaxPolygonSides && value == static_cast<int>(value);
}

// The lines of a polygon; every one keeps to the sketch's limits. False: one does not.
bool PolygonLines(int sides, double radius, double centreX, double centreY, double startAngle,
                  SketchObject* lines) {
  double xs[kMaxPolygonSides];
  double ys[kMaxPolygonSides];
  for (int i = 0; i < sides; ++i) {
    const double angle = startAngle + 360.0 * i / sides;
    xs[i] = centreX + radius * SketchCosine(angle);
    ys[i] = centreY + radius * SketchSine(angle);
  }
  for (int i = 0; i < sides; ++i) {
    const int next = (i + 1) % sides;
    SketchObject& line = lines[i];
    line = SketchObject();
    SetLineEnds(line, xs[i], ys[i], xs[next], ys[next]);
    if (!(line.size > 0) || !WithinSketchLimit(line)) return false;
  }
  return true;
}

}  // namespace

int PolygonSidesField() {
  if (!platform::Exists(kIdCadPolygonSides)) return tools.polygonSides;
  double sides = 0;
  if (!ReadStrictField(kIdCadPolygonSides, sides) || !IsWholeSides(sides)) return 0;
  return static_cast<int>(sides);
}

bool MakePolygon(int sides, double radius, double centreX, double centreY, double startAngle) {
  if (sides < kLeastSides || sides > kMaxPolygonSides) return false;
  if (!(startAngle >= -kMostStartAngle && startAngle <= kMostStartAngle)) return false;
  if (!(std::fabs(centreX) < kSketchLimit && std::fabs(centreY) < kSketchLimit)) return false;
  if (!(radius > 0 && radius < kSketchLimit)) return false;
  if (sketch.objectCount + sides > kMaxItems) return false;
  SketchObject lines[kMaxPolygonSides];
  if (!PolygonLines(sides, radius, centreX, centreY, startAngle, lines)) return false;
  PushSketchUndo();
  ClearMultiSelect();
  const std::int32_t group = NextSketchGroup();
  const int first = sketch.objectCount;
  for (int i = 0; i < sides; ++i) {
    lines[i].group = group;
    AppendSketchObject(lines[i]);
  }
  SetSelected(first);
  RefreshSketchPanels();
  LogSketchOperation(u"Created polygon");
  return true;
}

bool CreatePolygon(int sides, double radius, double centreX, double centreY, double startAngle) {
  if (MakePolygon(sides, radius, centreX, centreY, startAngle)) return true;
  SetSketchStatus(kPolygonRefused);
  return false;
}

void CreatePolygonFromPanel() {
  double radius = 0;
  double x = 0;
  double y = 0;
  double angle = 0;
  const bool read = ReadStrictField(kIdCadPolygonRadius, radius) &&
                    ReadStrictField(kIdCadPolygonX, x) && ReadStrictField(kIdCadPolygonY, y) &&
                    ReadStrictField(kIdCadPolygonAngle, angle);
  // What is no number makes no polygon; a radius of 0 is refused with the same words.
  CreatePolygon(PolygonSidesField(), read ? radius : 0, x, y, angle);
}

}  // namespace morva
