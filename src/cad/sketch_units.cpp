#include "cad/sketch_units.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string>

#include "app/command_ids.h"
#include "app/join_table.h"
#include "app/limits.h"
#include "app/router.h"
#include "app/stop.h"
#include "cad/draw_tools.h"
#include "cad/sketch.h"
#include "cad/tool_state.h"
#include "cad/workspace.h"
#include "library/units.h"
#include "platform/control.h"
#include "platform/events.h"
#include "platform/window.h"
#include "text/codetext.h"

namespace morva {

namespace {

struct LengthField {
  int id = 0;
  int decimals = 0;
};
LengthField added[kMaxSketchLengthFields];
JoinTable addedFill{u"fields of the sketch's unit switch", kMaxSketchLengthFields};

// The workspace's own fields. Five of the tools keep more decimals; a feed has two.
constexpr LengthField kOwnFields[] = {
    {kIdCadPolygonRadius, 5},
    {kIdCadPolygonX, 5},
    {kIdCadPolygonY, 5},
    {kIdCadPivotX, 5},
    {kIdCadPivotY, 5},
    {kIdCadX, 3},
    {kIdCadY, 3},
    {kIdCadSize, 3},
    {kIdCadSize2, 3},
    {kIdCadAmount, 3},
    {kIdCadDepth, 3},
    {kIdCadFeed, 2},
    {kIdCadSafeZ, 3},
    {kIdCadThicknessValue, 3},
    {kIdCadCircularX, 3},
    {kIdCadCircularY, 3},
    {kIdCadCircularDiameter, 3},
    {kIdCadSpacingX, 3},
    {kIdCadSpacingY, 3},
};

void ConvertField(const LengthField& field, double factor) {
  const std::u16string text = platform::TextOf(field.id);
  if (text.empty()) return;
  platform::SetText(field.id, FixedText(ParseDecimal(text, 0) * factor, field.decimals));
}

bool StaysInLimit(double factor) {
  for (int i = 0; i < sketch.objectCount; ++i) {
    const SketchObject& object = sketch.objects[i];
    for (const double value : {object.x, object.y, object.size, object.size2}) {
      if (!(std::fabs(value * factor) < kSketchLimit)) return false;
    }
  }
  return true;
}

// One undo step for the user's own switch, so that Undo brings back the very numbers.
void OnUnitKey(int id, int /*notification*/) {
  const bool metric = id == kIdCadMm;
  if (metric != sketch.metric) {
    if (!StaysInLimit(metric ? kMmPerInch : kInchPerMm)) {
      SetSketchStatus(u"Units unchanged: millimetres would exceed the sketch coordinate limit.");
      return;
    }
    PushSketchUndo();
  }
  SwitchSketchUnits(metric);
}

}  // namespace

void AddSketchLengthField(int id, int decimals) {
  const auto same = [id](const LengthField& field) { return field.id == id; };
  if (std::any_of(std::begin(kOwnFields), std::end(kOwnFields), same) ||
      std::any_of(added, added + addedFill.count, same)) {
    // Converted twice it would be off by 25.4.
    StopProgram(u"MORVA cannot start. The unit switch of the sketch has field " + IntegerText(id) +
                u" twice.");
  }
  added[NextRow(addedFill)] = {id, decimals};
}

void ShowSketchUnitCaptions() {
  platform::SetText(kIdCadInch, sketch.metric ? u"INCH" : u"INCH *");
  platform::SetText(kIdCadMm, sketch.metric ? u"MM *" : u"MM");
}

void SwitchSketchUnits(bool metric) {
  if (metric != sketch.metric) {
    const double factor = metric ? kMmPerInch : kInchPerMm;
    const std::int32_t panel = tools.panelMode;
    CancelTools();  // points that were picked are numbers of the old unit
    // A panel of numbers stays, for its numbers are converted; one of a tool went with the tool.
    if (panel != kPanelPolygon && panel != kPanelDimension) tools.panelMode = panel;
    RefreshCadPanel();
    tools.pivotX *= factor;
    tools.pivotY *= factor;
    sketch.thickness *= factor;
    for (int i = 0; i < sketch.objectCount; ++i) ScaleLengths(sketch.objects[i], factor);
    sketch.metric = metric;
    for (const LengthField& field : kOwnFields) ConvertField(field, factor);
    for (int i = 0; i < addedFill.count; ++i) ConvertField(added[i], factor);
  }
  ShowSketchUnitCaptions();
  platform::Repaint(kViewCadCanvas);
}

void RegisterSketchUnits() {
  addedFill.count = 0;
  RegisterCommand(RouterStage::Builder, kIdCadInch, kIdCadMm, platform::kNotifyClick, OnUnitKey);
}

}  // namespace morva
