// The side panels of the CAD workspace: one form of fields, keys and notes that scrolls.
//
// The panel of the tool in hand stands on top, the selected geometry and the saving of shapes
// below it. A page of the form is a PanelMode.
#pragma once

#include "cad/model/sketch_words.h"
#include "forms/form.h"
#include "forms/sheet.h"

namespace morva {

inline constexpr char16_t kPatternNote[] =
    u"Pattern is editable sketch geometry. Generate uses the pattern cutting settings.";

inline constexpr int kFormHeight = 1360;  // pixels, whatever is shown in it

extern const Sheet kCadSheet;
extern const Form kCadForm;

// Places of the cutting data in FormValues and in a block's record.
enum SketchNumber : int { kSketchDepth, kSketchFeed, kSketchSafeZ };
// Places of the pattern forms' numbers in FormValues.
enum CircleNumber : int {
  kCircleSize,
  kCircleWidth,
  kCircleX,
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
  kGridSize,
  kGridWidth,
  kGridTurn,
  kGridX,
  kGridY,
  kGridColumns,
  kGridRows,
  kGridStepX,
  kGridStepY,
  kGridDepth,
  kGridFeed,
  kGridSafeZ,
};
// Places of their lists in FormValues.
enum PatternChoice : int { kPatternItem, kPatternOrientation };

// `area` in the workspace's pixels, the scroll bar included.
void PlaceCadForm(const platform::Rect& area);
// The panel of this mode on top and the others hidden; scrolled to the start.
void ShowCadPanel(int panelMode);
int ShownCadPanel();
// Ids of the form's controls in the order of the screen; their count.
int CadFormOrder(const int*& ids);
int CadFormTop();  // pixels scrolled away
void ScrollCadForm(int pixels);
void RegisterCadForm();
void ResetCadForm();

}  // namespace morva
