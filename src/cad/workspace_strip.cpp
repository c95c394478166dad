#include "cad/workspace_strip.h"

#include "app/command_ids.h"
#include "cad/canvas.h"
#include "cad/sketch.h"
#include "cad/tool_state.h"

namespace morva {

namespace {

constexpr CadKeySpec kFirst[] = {
    {kIdCadSelect, u"Select", u"Select, move and reshape geometry", 60},
    {kIdCadLine, u"Line", u"Line by two points (Down: more ways)", 50},
    {kIdCadRectangle, u"Rectangle", u"Rectangle by two corners (Down: more ways)", 84},
    {kIdCadCircle, u"Circle", u"Circle by center and radius (Down: more ways)", 60},
    {kIdCadSlot, u"Slot", u"Slot by its centerline (Down: more ways)", 48},
    {kIdCadCircularPanel, u"Circular", u"Circular pattern of the selected object", 74},
    {kIdCadGridPanel, u"Grid array", u"Rectangular pattern of the selected object", 86},
    {kIdCadCopy, u"Copy", u"Copy the selected part (Ctrl+C)", 54},
    {kIdCadCut, u"Cut", u"Cut the selected part (Ctrl+X)", 46},
    {kIdCadPaste, u"Paste", u"Paste beside the original (Ctrl+V)", 56},
    {kIdCadScale, u"Scale", u"Scale dimensions around the selected object's anchor.", 56},
    {kIdCadUndo, u"Undo", u"Undo the last change (Ctrl+Z)", 54},
    {kIdCadCutData, u"Cut data", u"Cutting depth, feed and Safe Z", 76},
    {kIdCadGenerate, u"Generate", u"Generate or update the current sketch in the active program.",
     90},
    {kIdCadInch, u"INCH *", u"Drawing units: inch", 66},
    {kIdCadMm, u"MM", u"Drawing units: millimeter", 56},
};

constexpr CadKeySpec kSecond[] = {
    {kIdCadSnap, u"Snap ON", u"Snap to geometry and grid (F8; hold Alt to bypass)", 78},
    {kIdCadPolygon, u"Polygon", u"Regular polygon of closed lines", 76},
    {kIdCadRevolve, u"Revolve", u"Turn or copy the selected object around a pivot", 74},
    {kIdCadJoin, u"Join", u"Let the selected line and another meet", 48},
    {kIdCadTrimAt, u"Trim at", u"Remove the section under the pointer", 66},
    {kIdCadTangent, u"Tangent", u"Let the selected line touch a circle", 76},
    {kIdCadWorkAxis, u"Work axis", u"Construction axis; never cut", 84},
    {kIdCadPoint, u"Point", u"Construction point; never cut", 54},
    {kIdCadCancel, u"Cancel", u"Give up the tool in hand (Esc)", 64},
    {kIdCadDimension, u"Dimension", u"Change sizes by their labels (Down: measure)", 92},
    {kIdCadPan, u"Pan", u"Left button moves the drawing; the middle one always does", 48},
    {kIdCadFit, u"Fit", u"Show the whole drawing", 42},
    {kIdCadGrid, u"Grid", u"Grid on or off", 50},
    {kIdCadThickness, u"Preview 3D", u"Wireframe with a thickness", 92},
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
