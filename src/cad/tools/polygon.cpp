#include "cad/tools/polygon.h"

#include <cmath>

#include "app/command_ids.h"
#include "app/limits.h"
#include "cad/geometry/lines.h"
#include "cad/model/cad_form.h"
#include "cad/model/cad_hooks.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"
#include "library/outline.h"
#include "platform/window.h"

namespace morva {

namespace {

constexpr double kMostStartAngle = 36000;  // degrees
constexpr const char16_t* kPolygonRefused =
    u"Use 3-64 sides, positive radius, and enough room in the sketch.";

// 0 for a number of sides that no polygon has.
int SidesOf(double value) {
  const bool whole =
      value >= kLeastSides && value <= kMaxPolygonSides && value == static_cast<int>(value);
  return whole ? static_cast<int>(value) : 0;
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
  return ReadStrictField(kIdCadPolygonSides, sides) ? SidesOf(sides) : 0;
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
  FormValues values;
  // What is no number makes no polygon; no sides are refused with the same words.
  const bool read = ReadForm(kCadForm, kPanelPolygon, Reading::Strict, values);
  const double* n = values.numbers;
  CreatePolygon(read ? SidesOf(n[kPolygonSides]) : 0, n[kPolygonRadius], n[kPolygonX], n[kPolygonY],
                n[kPolygonAngle]);
}

}  // namespace morva
