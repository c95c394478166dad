#include "cad/workspace_form.h"

#include <algorithm>
#include <string_view>

#include "app/command_ids.h"
#include "app/limits.h"
#include "app/palette.h"
#include "app/panels.h"
#include "app/wells.h"
#include "cad/tool_state.h"
#include "platform/canvas.h"
#include "platform/control.h"
#include "platform/listing.h"
#include "platform/window.h"

namespace morva {

using platform::Canvas;
using platform::ControlKind;
using platform::FontRole;
using platform::Rect;

namespace {

enum class RowKind { Head, Field, Note, Keys, Combo };

struct Key {
  int id = 0;
  const char16_t* text = u"";
  const char16_t* tip = u"";
  const char16_t* name = u"";  // for assistive technology, where the caption says too little
};

// A row of the form. `panel` is the tool panel that it belongs to, kAlways for what always
// stands and kBothPatterns for what either pattern panel shows.
struct Row {
  int panel;
  RowKind kind;
  int id;
  const char16_t* label;
  const char16_t* text = u"";  // initial text of a field, rows of a combo parted by "|"
  int command = 0;             // what Enter does in a field
  Key keys[3] = {};
  const char16_t* name = u"";  // of a field whose label another one bears as well
};

constexpr int kAlways = -1;
constexpr int kBothPatterns = -2;

Row Head(int panel, const char16_t* text) { return Row{panel, RowKind::Head, 0, text}; }
Row Field(int panel, int id, const char16_t* label, const char16_t* text, int command) {
  return Row{panel, RowKind::Field, id, label, text, command};
}
Row Named(int panel, int id, const char16_t* label, const char16_t* text, const char16_t* name) {
  return Row{panel, RowKind::Field, id, label, text, kIdCadCreatePattern, {}, name};
}
// A field across the whole form, for words instead of a number.
Row Wide(int panel, int id, const char16_t* name, const char16_t* text, int command) {
  return Row{panel, RowKind::Field, id, u"", text, command, {}, name};
}
Row Note(int panel, const char16_t* text) { return Row{panel, RowKind::Note, 0, text}; }
Row Keys(int panel, Key a, Key b = {}, Key c = {}) {
  return Row{panel, RowKind::Keys, 0, u"", u"", 0, {a, b, c}};
}
Row Combo(int panel, int id, const char16_t* label, const char16_t* rows) {
  return Row{panel, RowKind::Combo, id, label, rows};
}

// In the order of the screen.
const Row kRows[] = {
    Head(kPanelCircular, u"CIRCULAR PATTERN"),
    Field(kPanelCircular, kIdCadQuantity, u"Quantity", u"6", kIdCadQuickCircular),
    Field(kPanelCircular, kIdCadCircularX, u"Center X", u"0", kIdCadQuickCircular),
    Field(kPanelCircular, kIdCadCircularY, u"Center Y", u"0", kIdCadQuickCircular),
    Field(kPanelCircular, kIdCadCircularDiameter, u"Pattern diameter", u"4", kIdCadQuickCircular),
    Field(kPanelCircular, kIdCadCircularStart, u"Start angle", u"0", kIdCadQuickCircular),
    Field(kPanelCircular, kIdCadCircularRotation, u"Rotation", u"0", kIdCadQuickCircular),
    Combo(kPanelCircular, kIdCadCircularOrientation, u"Orientation",
          u"Orientation: Fixed angle|Radial|Tangential"),
    Keys(kPanelCircular, {kIdCadQuickCircular, u"Apply circular pattern",
                          u"Repeat the selected object around the center"}),

    Head(kPanelRectangular, u"RECTANGULAR PATTERN"),
    Field(kPanelRectangular, kIdCadColumns, u"Columns", u"3", kIdCadQuickGrid),
    Field(kPanelRectangular, kIdCadRows, u"Rows", u"2", kIdCadQuickGrid),
    Field(kPanelRectangular, kIdCadSpacingX, u"X spacing", u"1", kIdCadQuickGrid),
    Field(kPanelRectangular, kIdCadSpacingY, u"Y spacing", u"1", kIdCadQuickGrid),
    Field(kPanelRectangular, kIdCadGridRotation, u"Rotation", u"0", kIdCadQuickGrid),
    Keys(kPanelRectangular, {kIdCadQuickGrid, u"Apply rectangular pattern",
                             u"Repeat the selected object in columns and rows"}),

    Head(kBothPatterns, u"SKETCH PATTERN"),
    Keys(kBothPatterns, {kIdCadPatternSource, u"Source: shape library",
                         u"Repeat a shape of this size, or the selected object"}),
    Combo(kPanelCircular, kIdCadCircShape, u"Pattern item", u""),
    Field(kPanelCircular, kIdCadCircSize, u"Size / length", u"0.500", kIdCadCreatePattern),
    Field(kPanelCircular, kIdCadCircWidth, u"Width", u"0.250", kIdCadCreatePattern),
    Named(kPanelCircular, kIdCadCircX, u"Center X", u"0.000", u"Pattern center X"),
    Named(kPanelCircular, kIdCadCircY, u"Center Y", u"0.000", u"Pattern center Y"),
    Field(kPanelCircular, kIdCadCircDiameter, u"Pattern dia", u"4.000", kIdCadCreatePattern),
    Named(kPanelCircular, kIdCadCircQuantity, u"Quantity", u"6", u"Pattern quantity"),
    Field(kPanelCircular, kIdCadCircStart, u"Start angle \u00B0", u"0", kIdCadCreatePattern),
    Field(kPanelCircular, kIdCadCircRotation, u"Item rotation \u00B0", u"0", kIdCadCreatePattern),
    Combo(kPanelCircular, kIdCadCircOrientation, u"Item orientation", u""),
    Field(kPanelCircular, kIdCadCircDepth, u"Z depth", u"-0.100", kIdCadCreatePattern),
    Field(kPanelCircular, kIdCadCircFeed, u"Feed", u"10.00", kIdCadCreatePattern),
    Field(kPanelCircular, kIdCadCircSafeZ, u"Safe Z", u"0.500", kIdCadCreatePattern),
    Combo(kPanelRectangular, kIdCadRectShape, u"Pattern item", u""),
    Field(kPanelRectangular, kIdCadRectSize, u"Size / length", u"0.500", kIdCadCreatePattern),
    Field(kPanelRectangular, kIdCadRectWidth, u"Width", u"0.250", kIdCadCreatePattern),
    Field(kPanelRectangular, kIdCadRectRotation, u"Item rotation \u00B0", u"0",
          kIdCadCreatePattern),
    Field(kPanelRectangular, kIdCadRectX, u"Start X", u"0.000", kIdCadCreatePattern),
    Field(kPanelRectangular, kIdCadRectY, u"Start Y", u"0.000", kIdCadCreatePattern),
    Field(kPanelRectangular, kIdCadRectColumns, u"Columns X", u"3", kIdCadCreatePattern),
    Field(kPanelRectangular, kIdCadRectRows, u"Rows Y", u"2", kIdCadCreatePattern),
    Named(kPanelRectangular, kIdCadRectSpacingX, u"X spacing", u"1.000", u"Pattern X spacing"),
    Named(kPanelRectangular, kIdCadRectSpacingY, u"Y spacing", u"1.000", u"Pattern Y spacing"),
    Field(kPanelRectangular, kIdCadDirection1, u"Direction 1 \u00B0", u"0", kIdCadCreatePattern),
    Keys(kPanelRectangular,
         {kIdPickDirection1, u"\u2197 Pick edge",
          u"Take the direction of the columns from the drawing", u"Pick edge for direction 1"},
         {kIdReverseDirection1, u"Reverse", u"Turn the direction of the columns round",
          u"Reverse direction 1"}),
    Field(kPanelRectangular, kIdCadDirection2, u"Direction 2 \u00B0", u"90", kIdCadCreatePattern),
    Keys(kPanelRectangular,
         {kIdPickDirection2, u"\u2197 Pick edge",
          u"Take the direction of the rows from the drawing", u"Pick edge for direction 2"},
         {kIdReverseDirection2, u"Reverse", u"Turn the direction of the rows round",
          u"Reverse direction 2"}),
    Field(kPanelRectangular, kIdCadRectDepth, u"Z depth", u"-0.100", kIdCadCreatePattern),
    Field(kPanelRectangular, kIdCadRectFeed, u"Feed", u"10.00", kIdCadCreatePattern),
    Field(kPanelRectangular, kIdCadRectSafeZ, u"Safe Z", u"0.500", kIdCadCreatePattern),
    Keys(kBothPatterns, {kIdCadCreatePattern, u"CREATE SKETCH PATTERN",
                         u"Lay out the pattern as sketch geometry (Enter)"}),
    Note(kBothPatterns,
         u"Pattern is editable sketch geometry. Generate uses the pattern cutting settings."),

    Head(kPanelScale, u"SCALE SELECTED OBJECT"),
    Field(kPanelScale, kIdCadScaleFactor, u"Factor (1 = unchanged)", u"1.25", kIdCadApplyScale),
    Note(kPanelScale,
         u"Scales dimensions about the object's anchor. A line keeps its start point."),
    Keys(kPanelScale, {kIdCadApplyScale, u"Apply scale", u"Scale the selected part"}),

    Head(kPanelCutData, u"SKETCH CUTTING DATA"),
    Field(kPanelCutData, kIdCadDepth, u"Cut Z", u"-0.1", kIdCadGenerate),
    Field(kPanelCutData, kIdCadFeed, u"Cut feed", u"10", kIdCadGenerate),
    Field(kPanelCutData, kIdCadSafeZ, u"Safe Z", u"0.5", kIdCadGenerate),
    Note(kPanelCutData, u"Display hiding does not remove geometry from generated G-code."),

    Head(kPanelPolygon, u"REGULAR POLYGON"),
    Field(kPanelPolygon, kIdCadPolygonSides, u"Sides (3 - 64)", u"6", kIdCadCreatePolygon),
    Field(kPanelPolygon, kIdCadPolygonRadius, u"Circumradius", u"1", kIdCadCreatePolygon),
    Field(kPanelPolygon, kIdCadPolygonX, u"Center X", u"0", kIdCadCreatePolygon),
    Field(kPanelPolygon, kIdCadPolygonY, u"Center Y", u"0", kIdCadCreatePolygon),
    Field(kPanelPolygon, kIdCadPolygonAngle, u"Start angle", u"0", kIdCadCreatePolygon),
    Note(kPanelPolygon, u"Closed line segments. Drag their endpoints to reshape."),
    Keys(kPanelPolygon,
         {kIdCadCreatePolygon, u"Create polygon sides", u"Create the polygon from these numbers"}),

    Head(kPanelRevolve, u"REVOLVE / ROTATE (2D)"),
    Field(kPanelRevolve, kIdCadPivotX, u"Pivot X", u"0", kIdCadApplyRevolve),
    Field(kPanelRevolve, kIdCadPivotY, u"Pivot Y", u"0", kIdCadApplyRevolve),
    Field(kPanelRevolve, kIdCadRevolveAngle, u"Angle / step", u"90", kIdCadApplyRevolve),
    Field(kPanelRevolve, kIdCadRevolveCopies, u"Copies (0 = move)", u"0", kIdCadApplyRevolve),
    Note(kPanelRevolve,
         u"Pick a point, circle center, box corner or work-axis origin. Each copy adds the step "
         u"angle."),
    Keys(kPanelRevolve,
         {kIdCadPickPivot, u"Pick pivot on drawing", u"Click the pivot on the canvas"}),
    Keys(kPanelRevolve,
         {kIdCadApplyRevolve, u"Apply revolve", u"Turn or copy the selected object"}),

    Head(kPanelDimension, u"DIMENSION / MEASURE"),
    Note(kPanelDimension, u"Click geometry to measure and resize."),
    Combo(kPanelDimension, kIdCadDimensionPart, u"Dimension to edit",
          u"Length / width / diameter|Height / slot width|Circle radius"),
    Wide(kPanelDimension, kIdCadDimensionValue, u"Value", u"Click geometry to measure and resize.",
         kIdCadApplyDimension),
    Keys(kPanelDimension, {kIdCadApplyDimension, u"Apply dimension (Enter)",
                           u"Resize the selected object to this value"}),
    Note(kPanelDimension,
         u"Click a dimension label to edit it. Length keeps a line's start fixed; shapes resize "
         u"about their centers. Undo restores the previous size."),

    Head(kPanelThickness, u"WIREFRAME THICKNESS"),
    Field(kPanelThickness, kIdCadThicknessValue, u"Thickness", u"0.5", kIdCadApplyThickness),
    Note(kPanelThickness,
         u"Adds a visual thickness to your sketch. Saved with the CAD feature; machining depths "
         u"and code are unchanged."),
    Keys(kPanelThickness,
         {kIdCadApplyThickness, u"Preview 3D", u"Show the sketch as a wireframe",
          u"Preview 3D with this thickness"},
         {kIdCadReturnTo2D, u"Return to 2D", u"Back to drawing (Esc)"}),

    Head(kAlways, u"Selected Geometry"),
    Field(kAlways, kIdCadX, u"X", u"", kIdCadApply),
    Field(kAlways, kIdCadY, u"Y", u"", kIdCadApply),
    Field(kAlways, kIdCadSize, u"Length / width / dia.", u"", kIdCadApply),
    Field(kAlways, kIdCadSize2, u"Height / slot width", u"", kIdCadApply),
    Field(kAlways, kIdCadAngle, u"Angle", u"", kIdCadApply),
    Keys(kAlways, {kIdCadApply, u"Apply", u"Write these numbers to the selected object (Enter)"},
         {kIdCadDuplicate, u"Duplicate", u"A copy beside the selected object"},
         {kIdCadDelete, u"Delete", u"Delete the selected part (Delete)"}),
    Keys(kAlways, {kIdCadHide, u"Hide / show", u"Hide or show the selected part"},
         {kIdCadLock, u"Lock / unlock", u"Keep the selected part from every edit"}),
    Field(kAlways, kIdCadAmount, u"Trim / extend by", u"0.1", kIdCadExtend),
    Keys(kAlways, {kIdCadExtend, u"Extend", u"Grow the selected object by the amount"},
         {kIdCadTrim, u"Trim", u"Shrink the selected object by the amount"},
         {kIdCadSplit, u"Split", u"Cut the selected line at its midpoint"}),
    Head(kAlways, u"REUSABLE SHAPE"),
    Field(kAlways, kIdCadShapeName, u"Name", u"", kIdCadSaveShape),
    Keys(kAlways, {kIdCadSaveShape, u"Save shape", u"Save this drawing as a reusable shape"},
         {kIdCadClear, u"Clear all", u"Empty this drawing (Undo restores it)"}),
};
constexpr int kRowCount = static_cast<int>(sizeof(kRows) / sizeof(kRows[0]));
// Every row has the id of a label; the two last ones are the lists' heads.
static_assert(kIdCadLabelFirst + kRowCount <= kIdCadLabelLast - 1);

constexpr int kEdge = 8;
constexpr int kRowHeight = 26;
constexpr int kRowGap = 4;
constexpr int kHeadHeight = 24;
constexpr int kHeadAbove = 6;
constexpr int kNoteSlack = 2;  // a label may break a little earlier than its width
constexpr int kBarWidth = 16;
constexpr int kArrow = 16;        // height of a scroll bar's arrow
constexpr int kLineStep = 36;     // pixels a step of the scroll bar
constexpr int kPageOverlap = 60;  // pixels that stay in view over a page
constexpr int kThumbLeast = 28;
constexpr int kFieldShare = 46;  // percent of the width for the field

struct FormState {
  int panel = kPanelNone;
  int top = 0;     // pixels scrolled away
  int width = 0;   // of the sheet
  int height = 0;  // of the visible part
  bool dragging = false;
  int dragFrom = 0;  // pointer and top where the thumb was taken
  int dragTop = 0;
};
FormState form;

int headTops[kRowCount];  // where the heads stand, -1 hidden; lines are drawn above them
int order[kRowCount * 3];
int orderCount = 0;

int LabelOf(int row) { return kIdCadLabelFirst + row; }

bool Shown(const Row& row) {
  const bool pattern = form.panel == kPanelCircular || form.panel == kPanelRectangular;
  return row.panel == kAlways || row.panel == form.panel || (row.panel == kBothPatterns && pattern);
}

void MakeLabel(int row, FontRole font, platform::Colour colour) {
  platform::ControlSpec spec;
  spec.id = LabelOf(row);
  spec.kind = ControlKind::Label;
  spec.text = kRows[row].label;
  spec.font = font;
  spec.parent = kViewCadSheet;
  spec.hidden = true;
  platform::MakeControl(spec);
  platform::SetColours(spec.id, {colour, kPanelBackground, true});
}

void MakeField(const Row& row) {
  platform::ControlSpec spec;
  spec.id = row.id;
  spec.kind = ControlKind::EditLine;
  spec.text = row.text;
  spec.accessibleName = row.name[0] ? row.name : row.label;
  if (!row.label[0]) spec.font = FontRole::Small;
  spec.parent = kViewCadSheet;
  spec.hidden = true;
  platform::MakeControl(spec);
  platform::SetColours(spec.id, {kMainText, kOutputBackground, false});
  platform::SetTextLimit(spec.id,
                         row.id == kIdCadShapeName ? kShapeNameUnits - 1 : kFieldUnits - 1);
}

void MakeCombo(const Row& row) {
  platform::ListSpec spec;
  spec.id = row.id;
  spec.kind = platform::ListKind::Combo;
  spec.accessibleName = row.label;
  spec.font = FontRole::Small;
  spec.ownerDrawn = false;
  spec.parent = kViewCadSheet;
  spec.hidden = true;
  platform::MakeList(spec);
  std::u16string_view rest = row.text;
  while (!rest.empty()) {
    const std::size_t bar = rest.find(u'|');
    platform::AddRow(row.id, rest.substr(0, bar), platform::RowCount(row.id));
    if (bar == std::u16string_view::npos) break;
    rest.remove_prefix(bar + 1);
  }
  if (platform::RowCount(row.id) > 0) platform::SelectRow(row.id, 0);
}

void MakeKeys(const Row& row) {
  for (const Key& key : row.keys) {
    if (key.id == 0) continue;
    platform::ControlSpec spec;
    spec.id = key.id;
    spec.kind = ControlKind::PushButton;
    spec.text = key.text;
    spec.accessibleName = key.name;
    spec.parent = kViewCadSheet;
    spec.hidden = true;
    platform::MakeControl(spec);
    platform::SetToolTip(key.id, key.tip);
  }
}

void HideRow(int index) {
  const Row& row = kRows[index];
  if (row.kind != RowKind::Keys) platform::SetVisible(LabelOf(index), false);
  if (row.id != 0) platform::SetVisible(row.id, false);
  for (const Key& key : row.keys) {
    if (key.id != 0) platform::SetVisible(key.id, false);
  }
}

int PutKeys(const Row& row, int left, int right, int y) {
  int count = 0;
  for (const Key& key : row.keys) count += key.id != 0 ? 1 : 0;
  const int width = (right - left - (count - 1) * kRowGap) / count;
  for (int i = 0; i < count; ++i) {
    const int x = left + i * (width + kRowGap);
    ShowAt(row.keys[i].id, Rect{x, y, i + 1 == count ? right : x + width, y + kRowHeight});
  }
  return y + kRowHeight + kRowGap;
}

// The lines that a note takes, broken at blanks as the label breaks it.
int LinesOf(std::u16string_view text, int width) {
  int lines = 1;
  std::size_t line = 0;
  for (std::size_t word = 0; word < text.size();) {
    const std::size_t end = std::min(text.find(u' ', word), text.size());
    const int reach = platform::TextWidth(FontRole::Small, text.substr(line, end - line));
    if (word > line && reach > width - kNoteSlack) {
      ++lines;
      line = word;
    }
    word = end + 1;
  }
  return lines;
}

// Places one row at y; the y below it.
int PutRow(int index, int y) {
  const Row& row = kRows[index];
  const int left = kEdge;
  const int right = form.width - kEdge;
  switch (row.kind) {
    case RowKind::Head:
      headTops[index] = y;
      y += kHeadAbove;
      ShowAt(LabelOf(index), Rect{left, y, right, y + kHeadHeight});
      return y + kHeadHeight + 2;
    case RowKind::Note: {
      const int lines = LinesOf(row.label, right - left);
      const int height = lines * platform::TextHeight(FontRole::Small) + 2;
      ShowAt(LabelOf(index), Rect{left, y, right, y + height});
      return y + height + kRowGap;
    }
    case RowKind::Keys:
      return PutKeys(row, left, right, y);
    case RowKind::Combo:
      platform::SetVisible(LabelOf(index), false);
      ShowAt(row.id, Rect{left, y, right, y + kRowHeight});
      return y + kRowHeight + kRowGap;
    case RowKind::Field:
      break;
  }
  const bool wide = !row.label[0];
  const int split = wide ? left : right - (right - left) * kFieldShare / 100;
  if (!wide) ShowAt(LabelOf(index), Rect{left, y, split - kRowGap, y + kRowHeight});
  ShowAt(row.id, Rect{split, y, right, y + kRowHeight});
  return y + kRowHeight + kRowGap;
}

void LayOutSheet() {
  int y = 0;
  for (int i = 0; i < kRowCount; ++i) {
    headTops[i] = -1;
    if (Shown(kRows[i])) {
      y = PutRow(i, y);
    } else {
      HideRow(i);
    }
  }
  platform::Repaint(kViewCadSheet);
}

int MostTop() { return std::max(0, kFormHeight - form.height); }

void MoveSheet() {
  platform::SetPlace(kViewCadSheet, Rect{0, -form.top, form.width, kFormHeight - form.top});
  platform::Repaint(kViewCadScroll);
}

void ScrollTo(int top) {
  const int wanted = std::clamp(top, 0, MostTop());
  if (wanted == form.top) return;
  form.top = wanted;
  MoveSheet();
}

int PageStep() { return std::max(kLineStep, form.height - kPageOverlap); }

// The thumb's top and bottom in the scroll bar's pixels.
void FindThumb(int& top, int& bottom) {
  const int track = std::max(1, form.height - 2 * kArrow);
  int length = track;
  if (MostTop() > 0) length = std::max(kThumbLeast, track * form.height / kFormHeight);
  length = std::min(length, track);
  top = kArrow;
  if (MostTop() > 0) top += (track - length) * form.top / MostTop();
  bottom = top + length;
}

void DragThumb(int y) {
  const int track = std::max(1, form.height - 2 * kArrow);
  int top = 0;
  int bottom = 0;
  FindThumb(top, bottom);
  const int room = std::max(1, track - (bottom - top));
  ScrollTo(form.dragTop + (y - form.dragFrom) * MostTop() / room);
}

bool PressScroll(int y) {
  int top = 0;
  int bottom = 0;
  FindThumb(top, bottom);
  if (y < kArrow) {
    ScrollCadForm(-kLineStep);
  } else if (y >= form.height - kArrow) {
    ScrollCadForm(kLineStep);
  } else if (y < top) {
    ScrollCadForm(-PageStep());
  } else if (y >= bottom) {
    ScrollCadForm(PageStep());
  } else {
    form.dragging = true;
    form.dragFrom = y;
    form.dragTop = form.top;
    platform::CapturePointer(kViewCadScroll);
  }
  return true;
}

void PaintArrow(Canvas& canvas, int y, int tip, platform::Colour colour) {
  const double middle = kBarWidth / 2.0;
  const platform::PointF points[] = {
      {middle - 4, y - tip * 2.0}, {middle + 4, y - tip * 2.0}, {middle, y + tip * 2.5}};
  platform::FillPolygon(canvas, points, 3, colour);
}

}  // namespace

void MakeCadForm() {
  orderCount = 0;
  for (int i = 0; i < kRowCount; ++i) {
    const Row& row = kRows[i];
    switch (row.kind) {
      case RowKind::Head:
        MakeLabel(i, FontRole::Emphasis, kBrightAccent);
        break;
      case RowKind::Note:
        MakeLabel(i, FontRole::Small, kDimText);
        break;
      case RowKind::Field:
        MakeLabel(i, FontRole::Small, kMainText);
        MakeField(row);
        order[orderCount++] = row.id;
        break;
      case RowKind::Combo:
        MakeCombo(row);
        order[orderCount++] = row.id;
        break;
      case RowKind::Keys:
        MakeKeys(row);
        for (const Key& key : row.keys) {
          if (key.id != 0) order[orderCount++] = key.id;
        }
        break;
    }
  }
}

void PlaceCadForm(const Rect& area) {
  form.width = RectWidth(area) - kBarWidth;
  form.height = RectHeight(area);
  platform::SetPlace(kViewCadForm, Rect{area.left, area.top, area.right - kBarWidth, area.bottom});
  platform::SetPlace(kViewCadScroll,
                     Rect{area.right - kBarWidth, area.top, area.right, area.bottom});
  form.top = std::min(form.top, MostTop());
  MoveSheet();
  LayOutSheet();
}

void ShowCadPanel(int panelMode) {
  form.panel = panelMode;
  form.top = 0;
  MoveSheet();
  LayOutSheet();
}

int ShownCadPanel() { return form.panel; }

void ShowCadField(int id) {
  const int* ids = nullptr;
  const int count = CadFormOrder(ids);
  if (std::find(ids, ids + count, id) == ids + count || !platform::IsVisible(id)) return;
  const Rect place = platform::PlaceOf(id);
  if (place.top < form.top + kHeadHeight) ScrollTo(place.top - kHeadHeight - kHeadAbove);
  if (place.bottom > form.top + form.height) ScrollTo(place.bottom + kRowGap - form.height);
}

int CadFormTop() { return form.top; }

void ScrollCadForm(int pixels) { ScrollTo(form.top + pixels); }

bool PageCadForm(int id, int pages) {
  for (const Row& row : kRows) {
    bool takes = row.kind == RowKind::Field && row.id == id;
    for (const Key& key : row.keys) takes = takes || (key.id != 0 && key.id == id);
    if (!takes) continue;
    ScrollCadForm(pages * PageStep());
    return true;
  }
  return false;
}

int CadFieldCommand(int id) {
  for (const Row& row : kRows) {
    if (row.id == id) return row.command;
  }
  return 0;
}

int CadFormOrder(const int*& ids) {
  ids = order;
  return orderCount;
}

void ResetCadForm() {
  form = FormState();
  orderCount = 0;
}

void PaintCadForm(Canvas& canvas) {
  platform::FillArea(canvas, platform::CanvasArea(canvas), kPanelBackground);
}

void PaintCadSheet(Canvas& canvas) {
  platform::FillArea(canvas, platform::CanvasArea(canvas), kPanelBackground);
  for (int i = 0; i < kRowCount; ++i) {
    if (headTops[i] <= 0) continue;
    platform::FillArea(canvas, Rect{kEdge, headTops[i], form.width - kEdge, headTops[i] + 1},
                       kPanelLine);
  }
  // The well that has the keyboard shows it.
  const int focused = platform::FocusedId();
  for (const Row& row : kRows) {
    if (row.kind != RowKind::Field && row.kind != RowKind::Combo) continue;
    if (!Shown(row)) continue;
    FrameWell(canvas, platform::PlaceOf(row.id), focused == row.id, kPanelLine);
  }
}

void PaintCadScroll(Canvas& canvas) {
  const Rect area = platform::CanvasArea(canvas);
  platform::FillArea(canvas, area, kDarkBand);
  if (MostTop() == 0) return;
  int top = 0;
  int bottom = 0;
  FindThumb(top, bottom);
  platform::FillArea(canvas, Rect{area.left + 3, top, area.right - 3, bottom},
                     form.dragging ? kAccent : kPanelLine);
  PaintArrow(canvas, kArrow / 2, -1, form.top > 0 ? kMainText : kPanelLine);
  PaintArrow(canvas, form.height - kArrow / 2, 1, form.top < MostTop() ? kMainText : kPanelLine);
}

bool CadFormPointer(const platform::PointerEvent& event) {
  if (event.action != platform::PointerAction::Wheel) return false;
  ScrollCadForm(-std::clamp(event.wheel, -100, 100) * kLineStep);
  return true;
}

bool CadScrollPointer(const platform::PointerEvent& event) {
  switch (event.action) {
    case platform::PointerAction::Press:
    case platform::PointerAction::DoubleClick:
      return event.button == platform::PointerButton::Left && PressScroll(event.y);
    case platform::PointerAction::Move:
      if (!form.dragging) return false;
      if (event.leftDown) {
        DragThumb(event.y);
        return true;
      }
      [[fallthrough]];
    case platform::PointerAction::Release:
    case platform::PointerAction::Lost:
      if (!form.dragging) return false;
      form.dragging = false;
      platform::ReleasePointer();
      platform::Repaint(kViewCadScroll);
      return true;
    case platform::PointerAction::Wheel:
      return CadFormPointer(event);
    default:
      return false;
  }
}

}  // namespace morva
