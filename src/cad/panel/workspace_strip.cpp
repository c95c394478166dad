#include "cad/panel/workspace_strip.h"

#include "app/command_ids.h"
#include "cad/geometry/canvas_view.h"
#include "cad/model/sketch.h"
#include "cad/model/tool_state.h"

namespace morva {

namespace {

constexpr CadKeySpec kFirst[] = {
    {kIdCadSelect, 60},  {kIdCadLine, 50},          {kIdCadRectangle, 84}, {kIdCadCircle, 60},
    {kIdCadSlot, 48},    {kIdCadCircularPanel, 74}, {kIdCadGridPanel, 86}, {kIdCadCopy, 54},
    {kIdCadCut, 46},     {kIdCadPaste, 56},         {kIdCadScale, 56},     {kIdCadUndo, 54},
    {kIdCadCutData, 76}, {kIdCadGenerate, 90},      {kIdCadInch, 66},      {kIdCadMm, 56},
};

constexpr CadKeySpec kSecond[] = {
    {kIdCadSnap, 78},   {kIdCadPolygon, 76},   {kIdCadRevolve, 74},  {kIdCadJoin, 48},
    {kIdCadTrimAt, 66}, {kIdCadTangent, 76},   {kIdCadWorkAxis, 84}, {kIdCadPoint, 54},
    {kIdCadCancel, 64}, {kIdCadDimension, 92}, {kIdCadPan, 48},      {kIdCadFit, 42},
    {kIdCadGrid, 50},   {kIdCadThickness, 92},
};

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
