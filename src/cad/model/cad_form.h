// The fields of the CAD workspace: one form of panels, which scrolls.
//
// The panel of the tool in hand stands on top, the selected geometry and the saving of shapes
// below it. A page that is shown is a PanelMode. Numbers that share a panel with others are read
// by a page of their own.
#pragma once

#include "cad/model/tool_state.h"
#include "forms/form.h"
#include "forms/sheet.h"

namespace morva {

// Words that also stand elsewhere.
inline constexpr char16_t kPatternNote[] =
    u"Pattern is editable sketch geometry. Generate uses the pattern cutting settings.";
inline constexpr char16_t kClickGeometry[] = u"Click geometry to measure and resize.";
// The sizes of an object that can be edited.
inline constexpr const char16_t* kDimensionParts[] = {u"Length / width / diameter",
                                                      u"Height / slot width", u"Circle radius"};

inline constexpr int kFormHeight = 1360;  // pixels, whatever is shown in it

extern const Sheet kCadSheet;
extern const Form kCadForm;

inline bool IsCutField(const FormRow& row) {
  return row.pages == PageBit(kPanelCutData) && row.value >= 0;
}

// Pages that are read and never shown, behind every PanelMode.
enum ReadPage : int {
  kReadQuickCircle = 10,
  kReadQuickGrid,
  kReadCircle,
  kReadGrid,
  kReadDirections,  // of the grid
};

// Places in FormValues, by page. Those of the cutting data and of both pattern forms are the
// places in a block's record too.
enum SketchNumber : int { kSketchDepth, kSketchFeed, kSketchSafeZ };
enum QuickCircleNumber : int {
  kQuickX,
  kQuickY,
  kQuickDiameter,
  kQuickStart,
  kQuickTurn,
  kQuickQuantity
};
enum QuickGridNumber : int { kQuickColumns, kQuickRows, kQuickStepX, kQuickStepY, kQuickGridTurn };
enum PatternNumber : int { kPatternSize, kPatternWidth };  // of both pattern forms
enum CircleNumber : int {
  kCircleX = kPatternWidth + 1,
  kCircleY,
  kCircleDiameter,
  kCircleQuantity,
  kCircleStart,
  kCircleTurn,
  kCircleDepth,
  kCircleFeed,
  kCircleSafeZ,
};
enum GridNumber : int {
  kGridTurn = kPatternWidth + 1,
  kGridX,
  kGridY,
  kGridColumns,
  kGridRows,
  kGridStepX,
  kGridStepY,
  kGridDepth,
  kGridFeed,
  kGridSafeZ,
  kGridDirectionX,
  kGridDirectionY,
};
enum PolygonNumber : int { kPolygonSides, kPolygonRadius, kPolygonX, kPolygonY, kPolygonAngle };
enum RevolveNumber : int { kRevolvePivotX, kRevolvePivotY, kRevolveAngle, kRevolveCopies };
// Places of the patterns' lists.
enum PatternChoice : int { kPatternItem, kPatternOrientation };

}  // namespace morva
