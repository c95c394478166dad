#include "cad/panel/workspace_strip.h"

#include "app/command_ids.h"
#include "cad/geometry/canvas_view.h"
#include "cad/model/sketch.h"
#include "cad/model/tool_state.h"

namespace morva {

namespace {

// clang-format off
// A group begins behind a gap: drawing, patterns, edits and output, then the units.
constexpr CadKeySpec kFirst[] = {
    {kIdCadSelect, 54},
    {kIdCadLine, 52, true},          {kIdCadRectangle, 74}, {kIdCadCircle, 54}, {kIdCadSlot, 52},
    {kIdCadCircularPanel, 62, true}, {kIdCadGridPanel, 76},
    {kIdCadCopy, 52, true},          {kIdCadCut, 52},       {kIdCadPaste, 52},  {kIdCadScale, 52},
    {kIdCadUndo, 52},
    {kIdCadCutData, 68, true},       {kIdCadGenerate, 74},
    {kIdCadInch, 66, true},          {kIdCadMm, 56},
};

// What is drawn along, edits, construction, what stops, the view.
constexpr CadKeySpec kSecond[] = {
    {kIdCadSnap, 72},
    {kIdCadPolygon, 62, true},
    {kIdCadRevolve, 62, true},   {kIdCadJoin, 52},    {kIdCadTrimAt, 56}, {kIdCadTangent, 62},
    {kIdCadWorkAxis, 74, true},  {kIdCadPoint, 52},
    {kIdCadCancel, 58, true},
    {kIdCadDimension, 80, true}, {kIdCadPan, 52},     {kIdCadFit, 52},    {kIdCadGrid, 52},
    {kIdCadThickness, 86},
};
// clang-format on

}  // namespace

const CadKeySpec* CadStripRow(int row, int& count) {
  if (row == 0) {
    count = static_cast<int>(sizeof(kFirst) / sizeof(kFirst[0]));
    return kFirst;
  }
  count = static_cast<int>(sizeof(kSecond) / sizeof(kSecond[0]));
  return kSecond;
}

bool CadKeyIsOn(int id) {
  const int method = tools.constructionMethod;
  switch (id) {
    case kIdCadSelect:
      return method == 0 && tools.dragTool == 0 && tools.geometryTool == kGeometryNone &&
             !tools.dimensionMode && !canvasView.modelView;
    case kIdCadLine:
      return method == kIdMethodLine || method == kIdMethodLineTangent || tools.dragTool == 1;
    case kIdCadRectangle:
      return (method >= kIdMethodRectangle && method <= kIdMethodRectangleThree) ||
             tools.dragTool == 2;
    case kIdCadCircle:
      return (method >= kIdMethodCircleRadius && method <= kIdMethodCircleOnCircle) ||
             tools.dragTool == 3;
    case kIdCadSlot:
      return method == kIdMethodSlotPoints || tools.dragTool == 4;
    case kIdCadPoint:
      return tools.dragTool == 5;
    case kIdCadWorkAxis:
      return tools.dragTool == 6;
    case kIdCadPolygon:
      return method == kIdMethodPolygon;
    case kIdCadCircularPanel:
      return tools.panelMode == kPanelCircular;
    case kIdCadGridPanel:
      return tools.panelMode == kPanelRectangular;
    case kIdCadScale:
      return tools.panelMode == kPanelScale;
    case kIdCadCutData:
      return tools.panelMode == kPanelCutData;
    case kIdCadRevolve:
      return tools.panelMode == kPanelRevolve;
    case kIdCadJoin:
      return tools.geometryTool == kGeometryJoin;
    case kIdCadTrimAt:
      return tools.geometryTool == kGeometryTrim;
    case kIdCadTangent:
      return tools.geometryTool == kGeometryTangent;
    case kIdCadPickPivot:
      return tools.geometryTool == kGeometryPivot;
    case kIdPickDirection1:
      return tools.geometryTool == kGeometryDirection1;
    case kIdPickDirection2:
      return tools.geometryTool == kGeometryDirection2;
    case kIdCadDimension:
      return tools.dimensionMode;
    case kIdCadPan:
      return canvasView.panTool;
    case kIdCadGrid:
      return sketch.gridOn;
    case kIdCadSnap:
      return sketch.snapOn;
    case kIdCadInch:
      return !sketch.metric;
    case kIdCadMm:
      return sketch.metric;
    case kIdCadThickness:
      return canvasView.modelView;
    default:
      return false;
  }
}

}  // namespace morva
