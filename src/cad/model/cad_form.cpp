#include "cad/model/cad_form.h"

#include <iterator>

#include "app/command_ids.h"
#include "app/limits.h"
#include "cad/model/sketch.h"
#include "documents/program_changed.h"
#include "library/item_places.h"
#include "library/motion_text.h"
#include "library/units.h"
#include "platform/window.h"

namespace morva {

namespace {

constexpr unsigned Page(PanelMode mode) { return PageBit(mode); }
constexpr unsigned kCircular = Page(kPanelCircular);
constexpr unsigned kRectangular = Page(kPanelRectangular);
constexpr unsigned kPatterns = kCircular | kRectangular;
constexpr unsigned kQuickCircle = kCircular | PageBit(kReadQuickCircle);
constexpr unsigned kQuickGrid = kRectangular | PageBit(kReadQuickGrid);
constexpr unsigned kSketchCircle = kCircular | PageBit(kReadSketchCircle);
constexpr unsigned kSketchGrid = kRectangular | PageBit(kReadSketchGrid);
constexpr unsigned kCircle = kSketchCircle | PageBit(kReadCircle);
constexpr unsigned kGrid = kSketchGrid | PageBit(kReadGrid);
constexpr unsigned kPatternForms = kCircle | kGrid;
constexpr unsigned kDirections = kRectangular | PageBit(kReadDirections);
constexpr Follows kLength = Follows::Length;

constexpr const char16_t* kQuickOrientations[] = {u"Orientation: Fixed angle", kOrientationWords[1],
                                                  kOrientationWords[2]};

constexpr FormRow Head(unsigned pages, const char16_t* words) {
  return {.kind = RowKind::Head, .label = words, .pages = pages};
}
constexpr FormRow Note(unsigned pages, const char16_t* words) {
  return {.kind = RowKind::Note, .label = words, .pages = pages};
}
constexpr FormRow Keys(unsigned pages, int first, int second = 0, int third = 0) {
  return {.kind = RowKind::Keys, .pages = pages, .keys = {first, second, third}};
}

// Below what scrolls, so that they are in sight from every field.
constexpr FormRow FixedKeys(unsigned pages, int key) {
  return {.kind = RowKind::Keys, .pages = pages, .keys = {key}, .fixed = true};
}
// A panel has the fields of two patterns; each part says which keys take its fields.
constexpr char16_t kQuickNote[] =
    u"Apply repeats the selected object by these fields. INSERT and CREATE take those of SKETCH "
    u"PATTERN, further down.";
constexpr char16_t kFullNote[] =
    u"The picture, INSERT and CREATE take the fields below, none from above.";
constexpr char16_t kItemSizeHelp[] = u"Of a built-in item; a saved shape keeps its own sizes";

// In the order of the screen. The selected geometry has no places in FormValues: a field of it
// without a number counts as what the object has.
// clang-format off
constexpr FormRow kRows[] = {
    Head(kCircle, u"CIRCULAR PATTERN"),
    Note(kCircular, kQuickNote),
    {.kind = RowKind::Count, .id = kIdCadQuantity, .label = u"Quantity", .start = u"6",
     .fallback = 6, .value = kQuickQuantity, .pages = kQuickCircle, .enter = kIdCadQuickCircular},
    {.id = kIdCadCircularX, .label = u"Center X", .start = u"0", .follows = kLength,
     .value = kQuickX, .pages = kQuickCircle, .enter = kIdCadQuickCircular},
    {.id = kIdCadCircularY, .label = u"Center Y", .start = u"0", .follows = kLength,
     .value = kQuickY, .pages = kQuickCircle, .enter = kIdCadQuickCircular},
    {.id = kIdCadCircularDiameter, .label = u"Pattern diameter", .start = u"4",
     .fallback = {4, 100}, .follows = kLength, .value = kQuickDiameter, .pages = kQuickCircle,
     .enter = kIdCadQuickCircular},
    {.id = kIdCadCircularStart, .label = u"Start angle", .start = u"0", .value = kQuickStart,
     .pages = kQuickCircle, .enter = kIdCadQuickCircular},
    {.id = kIdCadCircularRotation, .label = u"Rotation", .start = u"0", .value = kQuickTurn,
     .pages = kQuickCircle, .enter = kIdCadQuickCircular},
    {.kind = RowKind::Choice, .id = kIdCadCircularOrientation, .name = u"Quick orientation",
     .choice = kPatternOrientation, .pages = kQuickCircle, .rows = kQuickOrientations},
    Keys(kCircular, kIdCadQuickCircular),

    Head(kGrid, u"RECTANGULAR PATTERN"),
    Note(kRectangular, kQuickNote),
    {.kind = RowKind::Count, .id = kIdCadColumns, .label = u"Columns", .start = u"3", .fallback = 3,
     .value = kQuickColumns, .pages = kQuickGrid, .enter = kIdCadQuickGrid},
    {.kind = RowKind::Count, .id = kIdCadRows, .label = u"Rows", .start = u"2", .fallback = 2,
     .value = kQuickRows, .pages = kQuickGrid, .enter = kIdCadQuickGrid},
    {.id = kIdCadSpacingX, .label = u"X spacing", .start = u"1", .fallback = {1, kMmPerInch},
     .follows = kLength, .value = kQuickStepX, .pages = kQuickGrid, .enter = kIdCadQuickGrid},
    {.id = kIdCadSpacingY, .label = u"Y spacing", .start = u"1", .fallback = {1, kMmPerInch},
     .follows = kLength, .value = kQuickStepY, .pages = kQuickGrid, .enter = kIdCadQuickGrid},
    {.id = kIdCadGridRotation, .label = u"Rotation", .start = u"0", .value = kQuickGridTurn,
     .pages = kQuickGrid, .enter = kIdCadQuickGrid},
    Keys(kRectangular, kIdCadQuickGrid),

    Head(kPatterns, u"SKETCH PATTERN"),
    Note(kPatterns, kFullNote),
    Keys(kPatternForms, kIdCadPatternSource),
    {.kind = RowKind::Choice, .id = kIdCircularItem, .label = u"Item",
     .choice = kPatternItem, .pages = kCircle, .rows = kItemWords},
    {.id = kIdCadCircSize, .label = u"Size / length", .help = kItemSizeHelp, .start = u"0.500", .fallback = 0.5,
     .follows = kLength, .value = kCircularSize, .pages = kCircle, .enter = kIdCadCreatePattern},
    {.id = kIdCadCircWidth, .label = u"Width", .help = kItemSizeHelp, .start = u"0.250", .fallback = 0.25,
     .follows = kLength, .value = kCircularWidth, .pages = kCircle, .enter = kIdCadCreatePattern},
    {.id = kIdCadCircX, .label = u"Center X", .name = u"Pattern center X", .namePages = kCircular, .start = u"0.000",
     .follows = kLength, .value = kCircularX, .pages = kCircle, .enter = kIdCadCreatePattern},
    {.id = kIdCadCircY, .label = u"Center Y", .name = u"Pattern center Y", .namePages = kCircular, .start = u"0.000",
     .follows = kLength, .value = kCircularY, .pages = kCircle, .enter = kIdCadCreatePattern},
    {.id = kIdCadCircDiameter, .label = u"Pattern dia", .start = u"4.000", .fallback = 4,
     .follows = kLength, .value = kCircularDiameter, .pages = kCircle,
     .enter = kIdCadCreatePattern},
    {.id = kIdCadCircQuantity, .label = u"Quantity", .name = u"Pattern quantity", .start = u"6",
     .fallback = 6, .value = kCircularQuantity, .pages = kSketchCircle, .enter = kIdCadCreatePattern},
    {.kind = RowKind::Count, .id = kIdCadCircQuantity, .label = u"Quantity", .start = u"6",
     .fallback = 6, .value = kCircularQuantity, .pages = PageBit(kReadCircle), .enter = kIdCadCreatePattern},
    {.id = kIdCadCircStart, .label = u"Start angle \u00B0", .start = u"0", .value = kCircularStart,
     .pages = kCircle, .enter = kIdCadCreatePattern},
    {.id = kIdCadCircRotation, .label = u"Item rotation \u00B0", .start = u"0",
     .value = kCircularTurn, .pages = kCircle, .enter = kIdCadCreatePattern},
    {.kind = RowKind::Choice, .id = kIdCircularOrientation, .label = u"Orientation",
     .choice = kPatternOrientation, .pages = kCircle, .rows = kOrientationWords, .chosen = 1},
    {.id = kIdCadCircDepth, .label = u"Z depth", .start = u"-0.100", .fallback = -0.1,
     .follows = kLength, .value = kCircularDepth, .pages = kCircle, .enter = kIdCadCreatePattern},
    {.id = kIdCadCircFeed, .label = u"Feed", .start = u"10.00", .fallback = 10, .follows = kLength,
     .decimals = 2, .value = kCircularFeed, .pages = kCircle, .enter = kIdCadCreatePattern},
    {.id = kIdCadCircSafeZ, .label = u"Safe Z", .start = u"0.500", .fallback = 0.5,
     .follows = kLength, .value = kCircularSafeZ, .pages = kCircle, .enter = kIdCadCreatePattern},
    {.kind = RowKind::Choice, .id = kIdRectItem, .label = u"Item",
     .choice = kPatternItem, .pages = kGrid, .rows = kItemWords},
    {.id = kIdCadRectSize, .label = u"Size / length", .help = kItemSizeHelp, .start = u"0.500", .fallback = 0.5,
     .follows = kLength, .value = kGridSize, .pages = kGrid, .enter = kIdCadCreatePattern},
    {.id = kIdCadRectWidth, .label = u"Width", .help = kItemSizeHelp, .start = u"0.250", .fallback = 0.25,
     .follows = kLength, .value = kGridWidth, .pages = kGrid, .enter = kIdCadCreatePattern},
    {.id = kIdCadRectRotation, .label = u"Item rotation \u00B0", .start = u"0", .value = kGridTurn,
     .pages = kGrid, .enter = kIdCadCreatePattern},
    {.id = kIdCadRectX, .label = u"Start X", .start = u"0.000", .follows = kLength, .value = kGridX,
     .pages = kGrid, .enter = kIdCadCreatePattern},
    {.id = kIdCadRectY, .label = u"Start Y", .start = u"0.000", .follows = kLength, .value = kGridY,
     .pages = kGrid, .enter = kIdCadCreatePattern},
    {.id = kIdCadRectColumns, .label = u"Columns X", .start = u"3", .fallback = 1,
     .value = kGridColumns, .pages = kSketchGrid, .enter = kIdCadCreatePattern},
    {.kind = RowKind::Count, .id = kIdCadRectColumns, .label = u"Columns X", .start = u"3", .fallback = 1,
     .value = kGridColumns, .pages = PageBit(kReadGrid), .enter = kIdCadCreatePattern},
    {.id = kIdCadRectRows, .label = u"Rows Y", .start = u"2", .fallback = 1, .value = kGridRows,
     .pages = kSketchGrid, .enter = kIdCadCreatePattern},
    {.kind = RowKind::Count, .id = kIdCadRectRows, .label = u"Rows Y", .start = u"2", .fallback = 1, .value = kGridRows,
     .pages = PageBit(kReadGrid), .enter = kIdCadCreatePattern},
    {.id = kIdCadRectSpacingX, .label = u"X spacing", .name = u"Pattern X spacing", .namePages = kRectangular,
     .start = u"1.000", .fallback = 1, .follows = kLength, .value = kGridStepX,
     .pages = kGrid, .enter = kIdCadCreatePattern},
    {.id = kIdCadRectSpacingY, .label = u"Y spacing", .name = u"Pattern Y spacing", .namePages = kRectangular,
     .start = u"1.000", .fallback = 1, .follows = kLength, .value = kGridStepY,
     .pages = kGrid, .enter = kIdCadCreatePattern},
    {.id = kIdCadDirection1, .label = u"Direction 1 \u00B0", .start = u"0",
     .value = kGridDirectionX, .pages = kDirections, .enter = kIdCadCreatePattern,
     .optional = true},
    Keys(kRectangular, kIdPickDirection1, kIdReverseDirection1),
    {.id = kIdCadDirection2, .label = u"Direction 2 \u00B0", .start = u"90", .fallback = 90,
     .value = kGridDirectionY, .pages = kDirections, .enter = kIdCadCreatePattern,
     .optional = true},
    Keys(kRectangular, kIdPickDirection2, kIdReverseDirection2),
    {.id = kIdCadRectDepth, .label = u"Z depth", .start = u"-0.100", .fallback = -0.1,
     .follows = kLength, .value = kGridDepth, .pages = kGrid, .enter = kIdCadCreatePattern},
    {.id = kIdCadRectFeed, .label = u"Feed", .start = u"10.00", .fallback = 10, .follows = kLength,
     .decimals = 2, .value = kGridFeed, .pages = kGrid, .enter = kIdCadCreatePattern},
    {.id = kIdCadRectSafeZ, .label = u"Safe Z", .start = u"0.500", .fallback = 0.5,
     .follows = kLength, .value = kGridSafeZ, .pages = kGrid, .enter = kIdCadCreatePattern},
    Note(kPatternForms, kPatternNote),
    FixedKeys(kCircle, kIdCircularInsert),
    FixedKeys(kGrid, kIdRectInsert),
    FixedKeys(kPatternForms, kIdCadCreatePattern),

    Head(Page(kPanelScale), u"SCALE SELECTED OBJECT"),
    {.id = kIdCadScaleFactor, .label = u"Factor (1 = unchanged)", .start = u"1.25",
     .pages = Page(kPanelScale), .enter = kIdCadApplyScale},
    Note(Page(kPanelScale),
     u"Scales dimensions about the object's anchor. A line keeps its start point."),
    Keys(Page(kPanelScale), kIdCadApplyScale),

    Head(Page(kPanelCutData), u"SKETCH CUTTING DATA"),
    // Another depth than a new drawing starts with, in either unit.
    {.id = kIdCadDepth, .label = u"Cut Z", .start = u"-0.1", .fallback = -2.5, .follows = kLength,
     .value = kSketchDepth, .pages = Page(kPanelCutData), .enter = kIdCadGenerate,
     .optional = true},
    {.id = kIdCadFeed, .label = u"Cut feed", .start = u"10", .fallback = {10, 250},
     .follows = kLength, .decimals = 2, .value = kSketchFeed, .pages = Page(kPanelCutData),
     .enter = kIdCadGenerate, .optional = true},
    {.id = kIdCadSafeZ, .label = u"Safe Z", .start = u"0.5", .fallback = {0.5, 12.7},
     .follows = kLength, .value = kSketchSafeZ, .pages = Page(kPanelCutData),
     .enter = kIdCadGenerate, .optional = true},
    Note(Page(kPanelCutData), u"Display hiding does not remove geometry from generated G-code."),

    Head(Page(kPanelPolygon), u"REGULAR POLYGON"),
    {.id = kIdCadPolygonSides, .label = u"Sides (3 - 64)", .start = u"6",
     .value = kPolygonSides, .pages = Page(kPanelPolygon), .enter = kIdCadCreatePolygon},
    {.id = kIdCadPolygonRadius, .label = u"Circumradius", .start = u"1", .follows = kLength,
     .decimals = 5, .value = kPolygonRadius, .pages = Page(kPanelPolygon),
     .enter = kIdCadCreatePolygon},
    {.id = kIdCadPolygonX, .label = u"Center X", .start = u"0", .follows = kLength, .decimals = 5,
     .value = kPolygonX, .pages = Page(kPanelPolygon), .enter = kIdCadCreatePolygon},
    {.id = kIdCadPolygonY, .label = u"Center Y", .start = u"0", .follows = kLength, .decimals = 5,
     .value = kPolygonY, .pages = Page(kPanelPolygon), .enter = kIdCadCreatePolygon},
    {.id = kIdCadPolygonAngle, .label = u"Start angle", .start = u"0", .value = kPolygonAngle,
     .pages = Page(kPanelPolygon), .enter = kIdCadCreatePolygon},
    Note(Page(kPanelPolygon), u"Closed line segments. Drag their endpoints to reshape."),
    Keys(Page(kPanelPolygon), kIdCadCreatePolygon),

    Head(Page(kPanelRevolve), u"REVOLVE / ROTATE (2D)"),
    {.id = kIdCadPivotX, .label = u"Pivot X", .start = u"0", .follows = kLength, .decimals = 5,
     .value = kRevolvePivotX, .pages = Page(kPanelRevolve), .enter = kIdCadApplyRevolve},
    {.id = kIdCadPivotY, .label = u"Pivot Y", .start = u"0", .follows = kLength, .decimals = 5,
     .value = kRevolvePivotY, .pages = Page(kPanelRevolve), .enter = kIdCadApplyRevolve},
    {.id = kIdCadRevolveAngle, .label = u"Angle / step", .start = u"90",
     .value = kRevolveAngle, .pages = Page(kPanelRevolve), .enter = kIdCadApplyRevolve},
    {.id = kIdCadRevolveCopies, .label = u"Copies (0 = move)", .start = u"0",
     .value = kRevolveCopies, .pages = Page(kPanelRevolve), .enter = kIdCadApplyRevolve},
    Note(Page(kPanelRevolve),
     u"Pick a point, circle center, box corner or work-axis origin. Each copy adds the step "
     u"angle."),
    Keys(Page(kPanelRevolve), kIdCadPickPivot),
    Keys(Page(kPanelRevolve), kIdCadApplyRevolve),

    Head(Page(kPanelDimension), u"DIMENSION / MEASURE"),
    Note(Page(kPanelDimension), kClickGeometry),
    {.kind = RowKind::Choice, .id = kIdCadDimensionPart, .label = u"Dimension to edit",
     .pages = Page(kPanelDimension), .rows = kDimensionParts},
    // Wide, because it holds words until something is picked.
    {.kind = RowKind::Words, .id = kIdCadDimensionValue, .name = u"Value",
     .start = kClickGeometry, .pages = Page(kPanelDimension),
     .enter = kIdCadApplyDimension, .wide = true},
    Keys(Page(kPanelDimension), kIdCadApplyDimension),
    Note(Page(kPanelDimension),
     u"Click a dimension label to edit it. Length keeps a line's start fixed; shapes resize "
     u"about their centers. Undo restores the previous size."),

    Head(Page(kPanelThickness), u"WIREFRAME THICKNESS"),
    {.id = kIdCadThicknessValue, .label = u"Thickness", .start = u"0.5", .fallback = {0.5, 12.7},
     .follows = kLength, .pages = Page(kPanelThickness), .enter = kIdCadApplyThickness},
    Note(Page(kPanelThickness),
     u"Adds a visual thickness to your sketch. Saved with the CAD feature; machining depths "
     u"and code are unchanged."),
    Keys(Page(kPanelThickness), kIdCadApplyThickness, kIdCadReturnTo2D),

    Head(kEveryPage, u"Selected Geometry"),
    {.id = kIdCadX, .label = u"X", .filled = true, .follows = kLength, .enter = kIdCadApply},
    {.id = kIdCadY, .label = u"Y", .filled = true, .follows = kLength, .enter = kIdCadApply},
    {.id = kIdCadSize, .label = u"Length / width / dia.", .filled = true, .follows = kLength, .enter = kIdCadApply},
    {.id = kIdCadSize2, .label = kDimensionParts[1], .filled = true, .follows = kLength, .enter = kIdCadApply},
    {.id = kIdCadAngle, .label = u"Angle", .filled = true, .decimals = 4, .enter = kIdCadApply},
    Keys(kEveryPage, kIdCadApply, kIdCadDuplicate, kIdCadDelete),
    Keys(kEveryPage, kIdCadHide, kIdCadLock),
    {.id = kIdCadAmount, .label = u"Trim / extend by", .start = u"0.1", .fallback = {0.1, 2},
     .follows = kLength, .enter = kIdCadExtend},
    Keys(kEveryPage, kIdCadExtend, kIdCadTrim, kIdCadSplit),
    Head(kEveryPage, u"REUSABLE SHAPE"),
    {.kind = RowKind::Words, .id = kIdCadShapeName, .label = u"Name", .enter = kIdCadSaveShape,
     .limit = kShapeNameUnits - 1},
    Keys(kEveryPage, kIdCadSaveShape, kIdCadClear),
};
// clang-format on
// Every row has the id of a label.
static_assert(kIdCadLabelFirst + static_cast<int>(std::size(kRows)) <= kIdCadLabelLast + 1);

// What the user types as cutting data belongs to the drawing, as its geometry does.
void OnTyped(int id) {
  for (const int view : {kViewCircularPicture, kViewRectPicture}) {
    if (platform::IsVisible(view)) platform::Repaint(view);
  }
  if (IsCutField(kRows[RowOfControl(kCadForm, id)])) ProgramChanged({.autosave = true});
}

constexpr FormRow kPictures[] = {
    {.kind = RowKind::View,
     .id = kViewCircularPicture,
     .name = u"Pattern preview",
     .className = u"MorvaPatternPreview",
     .pages = kCircular,
     .least = 1},
    {.kind = RowKind::View,
     .id = kViewRectPicture,
     .name = u"Pattern preview",
     .className = u"MorvaRectPatternPreview",
     .pages = kRectangular,
     .least = 1},
};

}  // namespace

int CadPage() {
  if (!tools.patternAlone) return tools.panelMode;
  if (tools.panelMode == kPanelCircular) return kReadCircle;
  return tools.panelMode == kPanelRectangular ? int{kReadGrid} : tools.panelMode;
}

constexpr Form kCadPictureForm{.parent = kViewCad,
                               .rows = kPictures,
                               .page = [] { return static_cast<int>(tools.panelMode); },
                               .metric = SketchIsMetric};

constexpr Sheet kCadSheet{
    .frame = {kViewCadForm, u"MorvaCadForm", u"Tool settings"},
    .paper = {kViewCadSheet, u"MorvaCadSheet", u"Settings"},
    .bar = {kViewCadScroll, u"MorvaCadScroll", u"Scroll the tool settings"},
    .parent = kViewCad,
    .height = kFormHeight,
};

constexpr Form kCadForm{
    .sheet = &kCadSheet,
    .rows = kRows,
    .page = CadPage,
    .metric = SketchIsMetric,
    .changed = OnTyped,
    .firstLabel = kIdCadLabelFirst,
};

}  // namespace morva
