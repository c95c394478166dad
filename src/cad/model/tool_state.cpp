#include "cad/model/tool_state.h"

#include <algorithm>

namespace morva {

ToolState tools;

void ResetToolState() { tools = ToolState(); }

void ClearTools(bool keepMarks) {
  ToolState fresh;
  fresh.patternAlone = tools.patternAlone;
  fresh.pivotX = tools.pivotX;
  fresh.pivotY = tools.pivotY;
  fresh.polygonSides = tools.polygonSides;
  if (keepMarks) std::copy_n(tools.multiSelect, kMaxItems, fresh.multiSelect);
  tools = fresh;
}

void SetPanelMode(std::int32_t mode) { tools.panelMode = mode; }
void SetPatternAlone(bool alone) { tools.patternAlone = alone; }
void SetDragTool(std::int32_t tool) { tools.dragTool = tool; }
void SetGeometryTool(std::int32_t tool) { tools.geometryTool = tool; }
void SetMethod(std::int32_t command) { tools.constructionMethod = command; }

void SetDimensionMode(bool measure) {
  tools.dimensionMode = true;
  tools.measureMode = measure;
}

void SetDimensionPart(std::int32_t part) { tools.dimensionPart = part; }
void SetSizePanelShown(bool shown) { tools.sizePanelShown = shown; }
void SetPolygonSides(std::int32_t sides) { tools.polygonSides = sides; }

void SetPivot(double x, double y) {
  tools.pivotX = x;
  tools.pivotY = y;
}

void SetJoinSource(std::int32_t line) { tools.joinSource = line; }

void PickPoint(int place, double x, double y) {
  tools.pointsX[place] = x;
  tools.pointsY[place] = y;
  tools.constructionClicks = place + 1;
}

void PickTangentTarget(std::int32_t object) {
  tools.tangentTarget = object;
  tools.constructionClicks = 1;
}

void ForgetTangentTarget() { tools.tangentTarget = -1; }

void ForgetPicks() {
  tools.constructionClicks = 0;
  tools.tangentTarget = -1;
  tools.previewValid = false;
}

void SetPreview(bool valid, const SketchObject& object) {
  tools.previewValid = valid;
  tools.previewObject = object;
}

void StartToolDrag(double x, double y) {
  tools.dragStartX = x;
  tools.dragStartY = y;
  tools.dragEndX = x;
  tools.dragEndY = y;
  tools.dragActive = true;
}

void MoveToolDrag(double x, double y) {
  tools.dragEndX = x;
  tools.dragEndY = y;
}

void EndToolDrag() { tools.dragActive = false; }

void SetSnapResult(bool hit, bool atCentre) {
  tools.snapHit = hit;
  tools.snapAtCentre = atCentre;
}

void SetHover(std::int32_t object) { tools.hoverObject = object; }

void ForgetHover() {
  tools.hoverObject = -1;
  tools.previewSegmentCount = 0;
}

void ClearPreviewSegments() { tools.previewSegmentCount = 0; }

void AddPreviewSegment(const PreviewSegment& segment) {
  if (tools.previewSegmentCount >= kMaxPreviewSegments) return;
  tools.previewSegments[tools.previewSegmentCount++] = segment;
}

void SetMark(int index, bool marked) { tools.multiSelect[index] = marked ? 1 : 0; }

void ClearMultiSelect() {
  for (unsigned char& mark : tools.multiSelect) mark = 0;
}

bool DrawToolActive() { return tools.constructionMethod != 0 || tools.dragTool != 0; }

bool AnyToolInHand() {
  return DrawToolActive() || tools.geometryTool != kGeometryNone || tools.dimensionMode;
}

}  // namespace morva
