// What the CAD tools hold between two events: the tool, its picks, its previews.
//
// One record; StopTools (draw_parts.h) clears it, and the loading of a drawing does. The live
// sketch itself stands in sketch.h.
#pragma once

#include <cstdint>

#include "cad/sketch.h"

namespace morva {

enum GeometryTool : std::int32_t {
  kGeometryNone = 0,
  kGeometryJoin = 1,
  kGeometryTrim = 2,
  kGeometryTangent = 3,
  kGeometryPivot = 4,
  kGeometryDirection1 = 5,
  kGeometryDirection2 = 6,
};

enum PanelMode : std::int32_t {
  kPanelNone = 0,
  kPanelCircular = 1,
  kPanelRectangular = 2,
  kPanelScale = 3,
  kPanelCutData = 4,
  kPanelPolygon = 5,
  kPanelRevolve = 6,
  kPanelDimension = 7,
  kPanelThickness = 9,
};

struct PreviewSegment {
  double x0 = 0, y0 = 0, x1 = 0, y1 = 0;  // drawing units
};
inline constexpr int kMaxPreviewSegments = 200;

struct ToolState {
  std::int32_t dragTool = 0;  // 0 select; 1 to 6: type plus 1
  std::int32_t geometryTool = kGeometryNone;
  std::int32_t panelMode = kPanelNone;
  std::int32_t constructionMethod = 0;  // command number, 0 for none
  std::int32_t constructionClicks = 0;  // 0 to 3
  double pointsX[3] = {};
  double pointsY[3] = {};
  bool previewValid = false;
  SketchObject previewObject;
  std::int32_t tangentTarget = -1;
  std::int32_t polygonSides = 6;
  bool sizePanelShown = false;
  bool dragActive = false;  // a drag creation is under way
  double dragStartX = 0, dragStartY = 0;
  double dragEndX = 0, dragEndY = 0;
  bool snapHit = false;
  bool snapAtCentre = false;

  bool dimensionMode = false;
  bool measureMode = false;
  std::int32_t dimensionPart = 0;  // 0 length, width, diameter; 1 height, slot width; 2 radius

  unsigned char multiSelect[kMaxItems] = {};
  std::int32_t joinSource = -1;                         // the line that Join and Tangent work on
  std::int32_t hoverObject = -1;                        // highlighted edge, -1 for none
  PreviewSegment previewSegments[kMaxPreviewSegments];  // what a trim would remove
  std::int32_t previewSegmentCount = 0;
  double pivotX = 0, pivotY = 0;  // of Revolve, drawing units
};
extern ToolState tools;

void ClearMultiSelect();
bool IsMultiSelected(int index);
int MultiSelectCount();

}  // namespace morva
