// The fields of the CAD workspace: one form of panels, which scrolls.
//
// The panel of the tool in hand stands on top, the selected geometry and the saving of shapes
// below it. A page that is shown is a PanelMode. Numbers that share a panel with others are read
// by a page of their own.
#pragma once

#include "cad/model/tool_state.h"
#include "forms/form.h"
#include "forms/sheet.h"
#include "library/pattern_numbers.h"
#include "library/sketch_object.h"

namespace morva {

// Words that also stand elsewhere.
inline constexpr char16_t kPatternNote[] =
    u"Pattern is editable sketch geometry. Generate uses the pattern cutting settings.";
inline constexpr char16_t kClickGeometry[] = u"Click geometry to measure and resize.";
// The sizes of an object that can be edited.
inline constexpr const char16_t* kDimensionParts[] = {u"Length / width / diameter",
                                                      kSecondSizeWords, u"Circle radius"};

inline constexpr int kFormHeight = 1360;  // pixels, whatever is shown in it

extern const Sheet kCadSheet;
extern const Form kCadForm;
// Above the fields of a pattern: what they cut, a page a kind.
extern const Form kCadPictureForm;

inline bool IsCutField(const FormRow& row) {
  return row.pages == PageBit(kPanelCutData) && row.value >= 0;
}

// Pages that are read, behind every PanelMode. Those of the full pattern forms are shown as well:
// without the quick pattern above them.
enum ReadPage : int {
  kReadQuickCircle = 10,
  kReadQuickGrid,
  kReadCircle,
  kReadGrid,
  kReadDirections,  // of the grid
  // For sketch geometry: their counts are numbers as well, which must be whole.
  kReadSketchCircle,
  kReadSketchGrid,
};
// The page of the form that is up: a PanelMode, or a full pattern form alone.
int CadPage();

// Places in FormValues, by page. Those of the cutting data and of both pattern forms are the
// places in a block's record too (library/pattern_numbers.h).
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
enum PolygonNumber : int { kPolygonSides, kPolygonRadius, kPolygonX, kPolygonY, kPolygonAngle };
enum RevolveNumber : int { kRevolvePivotX, kRevolvePivotY, kRevolveAngle, kRevolveCopies };
// Places of the patterns' lists.
enum PatternChoice : int { kPatternItem, kPatternOrientation };

}  // namespace morva
