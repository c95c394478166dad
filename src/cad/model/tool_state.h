// What the CAD tools hold between two events: the tool, its picks, its previews.
//
// One record. StopTools (tool_change.h) and the loading of a drawing clear it. The live sketch
// itself stands in sketch.h.
#pragma once

#include <cstdint>

#include "app/limits.h"
#include "library/sketch_object.h"

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

struct ToolState {
  std::int32_t dragTool = 0;  // 0 select; 1 to 6: type plus 1
  std::int32_t geometryTool = kGeometryNone;
  std::int32_t panelMode = kPanelNone;
  bool patternAlone = false;  // a pattern's panel shows its full form without the quick one
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

// Everybody reads the record; only the functions here, of tool_state.cpp, write it.
void ResetToolState();
// Every tool given up. The pivot and the sides of a polygon stay. The marks stay only with
// `keepMarks`.
void ClearTools(bool keepMarks);

void SetPanelMode(std::int32_t mode);
void SetPatternAlone(bool alone);  // stays when tools are given up
void SetDragTool(std::int32_t tool);
void SetGeometryTool(std::int32_t tool);
void SetMethod(std::int32_t command);
void SetDimensionMode(bool measure);  // on; StopTools ends it
void SetDimensionPart(std::int32_t part);
void SetSizePanelShown(bool shown);
void SetPolygonSides(std::int32_t sides);
void SetPivot(double x, double y);
void SetJoinSource(std::int32_t line);

// A point picked for the method in hand, number `place` from 0; further ones are forgotten.
void PickPoint(int place, double x, double y);
// The object that a tangent method starts from counts as the first pick.
void PickTangentTarget(std::int32_t object);
void ForgetTangentTarget();
void ForgetPicks();  // the points, the tangent target and the preview
void SetPreview(bool valid, const SketchObject& object);

void StartToolDrag(double x, double y);
void MoveToolDrag(double x, double y);
void EndToolDrag();
void SetSnapResult(bool hit, bool atCentre);

// The edge under the pointer, -1 for none.
void SetHover(std::int32_t object);
void ForgetHover();  // and what a trim would remove
void ClearPreviewSegments();
void AddPreviewSegment(const PreviewSegment& segment);  // a full table drops it

void SetMark(int index, bool marked);
void ClearMultiSelect();

// A construction method or a drag tool is in hand: a left press belongs to it.
bool DrawToolActive();
// Any tool that works on the plan; the 3D view ends with it.
bool AnyToolInHand();

}  // namespace morva
