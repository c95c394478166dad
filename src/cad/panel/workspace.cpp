#include "cad/panel/workspace.h"

#include <algorithm>

#include "app/command_ids.h"
#include "app/commands.h"
#include "app/join_table.h"
#include "app/limits.h"
#include "app/palette.h"
#include "app/panels.h"
#include "app/router.h"
#include "app/wells.h"
#include "cad/canvas/canvas_pointer.h"
#include "cad/model/cad_form.h"
#include "cad/model/cad_hooks.h"
#include "cad/model/drawings.h"
#include "cad/model/hint_line.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"
#include "cad/panel/pattern_form.h"
#include "cad/panel/workspace_strip.h"
#include "cad/tools/size_boxes.h"
#include "cad/tools/tool_change.h"
#include "documents/companions.h"
#include "documents/tab_models.h"
#include "documents/tab_table.h"
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

constexpr int kPad = 8;
constexpr int kGap = 4;
constexpr int kKeyHeight = 42;  // the icon stands over the words
constexpr int kGroupGap = 14;   // between groups of keys, a line in its middle
constexpr int kTabHeight = 28;
constexpr int kTabMost = 130;
constexpr int kTabLeast = 96;    // narrower keys of drawings wrap into a second row
constexpr int kLeftWidth = 276;  // the longest line of the recent operations fits
constexpr int kRightWidth = 304;
constexpr int kLineHeight = 22;  // status and hint
constexpr int kHeadHeight = 24;
constexpr int kRecentPercent = 34;   // of the left column's height
constexpr int kPicturePercent = 38;  // of the right column's height, above the fields of a pattern
constexpr int kPictureMost = 300;
constexpr int kRecentRow = 20;

bool made = false;
int shownPanel = kPanelNone;
int shownPage = kPanelNone;
Rect sidePlace;  // of the form, and of the picture above it

void MakeKey(int id, FontRole font = FontRole::Body) { MakeCommandKey(id, kViewCad, font, false); }

void MakeStripKeys() {
  for (int row = 0; row < kCadStripRows; ++row) {
    int count = 0;
    const CadKeySpec* keys = CadStripRow(row, count);
    for (int i = 0; i < count; ++i) MakeKey(keys[i].id, FontRole::Small);
  }
}

void MakeLabel(int id, const char16_t* text, platform::Colour colour,
               FontRole font = FontRole::Small) {
  platform::ControlSpec spec;
  spec.id = id;
  spec.text = text;
  spec.font = font;
  spec.parent = kViewCad;
  platform::MakeControl(spec);
  platform::SetColours(id, {colour, kWindowBackground, true});
}

// No form: the boxes lie over other controls, at places that follow these or the pointer; a form
// has its rows below each other on a ground of their own.
void MakeBox(int id, const char16_t* name, int limit) {
  platform::ControlSpec spec;
  spec.id = id;
  spec.kind = ControlKind::EditLine;
  spec.accessibleName = name;
  spec.parent = kViewCad;
  spec.hidden = true;
  platform::MakeControl(spec);
  platform::SetColours(id, kWellColours);
  platform::SetTextLimit(id, limit);
}

void MakeDrawingTabs() {
  for (int i = 0; i < kMaxDrawings; ++i) MakeKey(kIdDrawingFirst + i);
  MakeKey(kIdDrawingAdd);
  MakeKey(kIdDrawingRename);
  MakeBox(kIdCadDrawingName, u"Drawing name", kDrawingNameUnits - 1);
}

void MakeList(platform::ListSpec list, int head, platform::Colour colour) {
  MakeLabel(head, list.accessibleName, kBrightAccent, FontRole::Emphasis);
  list.parent = kViewCad;
  platform::MakeList(list);
  platform::SetColours(list.id, {colour, kInputBackground, false});
}

// Nor has a form lists like these: the room draws the rows of one, the other is in small print.
void MakeLists() {
  MakeList({.id = kIdCadOperations, .accessibleName = u"Sketch operations"}, kIdCadOperationsHead,
           kMainText);
  MakeList({.id = kIdCadRecent,
            .accessibleName = u"Recent operations",
            .font = FontRole::Small,
            .rowHeight = kRecentRow,
            .ownerDrawn = false},
           kIdCadRecentHead, kDimText);
}

void MakeSizeBoxes() {
  MakeLabel(kIdCadSizeCaption, kLengthWords, kBrightAccent);
  MakeBox(kIdCadSizeBox1, u"Size", kFieldUnits - 1);
  MakeBox(kIdCadSizeBox2, u"Second size", kFieldUnits - 1);
  MakeKey(kIdCadCreateTyped);
  HideSizeBoxes();
}

void OrderTabs() {
  int ids[kMaxTabStops];
  int count = 0;
  const auto put = [&ids, &count](int id) {
    if (count >= kMaxTabStops) StopFull(u"tab stops", kMaxTabStops);
    ids[count++] = id;
  };
  for (int row = 0; row < kCadStripRows; ++row) {
    int keys = 0;
    const CadKeySpec* specs = CadStripRow(row, keys);
    for (int i = 0; i < keys; ++i) put(specs[i].id);
  }
  put(kIdCadOperations);
  put(kIdCadRecent);
  for (int i = kIdDrawingFirst; i <= kIdDrawingLast; ++i) put(i);
  put(kIdDrawingAdd);
  put(kIdDrawingRename);
  put(kIdCadDrawingName);
  put(kViewCadCanvas);
  put(kIdCadSizeBox1);
  put(kIdCadSizeBox2);
  put(kIdCadCreateTyped);
  count += FormOrder(kCadPictureForm, ids + count, kMaxTabStops - count);
  count += FormOrder(kCadForm, ids + count, kMaxTabStops - count);
  platform::SetTabOrder(ids, count);
}

// False: no window could be made.
bool MakeWorkspace() {
  platform::ViewSpec view;
  view.id = kViewCad;
  view.className = u"MorvaCustomShapeWnd";
  view.accessibleName = u"CAD workspace";
  view.background = kWindowBackground;
  if (!platform::MakeView(view)) return false;
  made = true;
  MakeStripKeys();
  MakeLists();
  MakeDrawingTabs();
  view.parent = kViewCad;
  view.id = kViewCadCanvas;
  view.className = u"MorvaCustomShapeCanvas";
  view.accessibleName = u"Drawing";
  view.takesFocus = true;
  platform::MakeView(view);
  MakeForm(kCadForm);
  MakeForm(kCadPictureForm);
  FillPatternLists();
  MakeLabel(kIdCadStatus, u"", kMainText);
  MakeLabel(kIdCadHint, kCadHint, kDimText);
  MakeSizeBoxes();
  OrderTabs();
  return true;
}

int PlaceStrip(int width) {
  int y = kGap;
  for (int row = 0; row < kCadStripRows; ++row) {
    int count = 0;
    const CadKeySpec* keys = CadStripRow(row, count);
    int x = kPad;
    for (int i = 0; i < count; ++i) {
      if (keys[i].apart) x += kGroupGap - kGap;
      // The units stand at the right edge, apart from the tools.
      if (keys[i].id == kIdCadInch) x = width - kPad - keys[i].width - kGap - keys[i + 1].width;
      platform::SetPlace(keys[i].id, Rect{x, y, x + keys[i].width, y + kKeyHeight});
      x += keys[i].width + kGap;
    }
    y += kKeyHeight + kGap;
  }
  return y;
}

int DrawingCount() {
  const ProgramTab* tab = ActiveTab();
  if (!tab || !tab->cadStore) return 1;
  return std::clamp(static_cast<int>(tab->cadStore->count), 1, kMaxDrawings);
}

int ActiveDrawing() {
  const ProgramTab* tab = ActiveTab();
  if (!tab || !tab->cadStore) return 0;
  return std::clamp(static_cast<int>(tab->cadStore->active), 0, kMaxDrawings - 1);
}

// Up to eight keys of drawings, in two rows where one would make them unreadable. The y below.
int PlaceDrawingTabs(int left, int right, int y) {
  constexpr int kPlus = 30;
  constexpr int kRename = 72;
  constexpr int kName = 150;
  const int count = DrawingCount();
  const int room = right - left - kPlus - kRename - 3 * kGap;
  const int rows = room / count - kGap < kTabLeast ? 2 : 1;
  const int inRow = (count + rows - 1) / rows;
  const int width = std::min(kTabMost, room / inRow - kGap);
  const int pitch = width + kGap;
  // The name box stands behind the keys. Where it does not fit, it covers the active tab and as
  // many of its neighbours in the row as it needs.
  const int active = ActiveDrawing();
  const int row = active / inRow;
  const int last = std::min(count, (row + 1) * inRow);
  const bool instead =
      left + (count - (rows - 1) * inRow) * pitch + kPlus + kRename + 2 * kGap + kName > right ||
      row < rows - 1;
  const int taken = instead ? std::min(last - row * inRow, (kName + kGap + pitch - 1) / pitch) : 0;
  const int first = std::min(active, last - taken);
  const bool naming = platform::IsVisible(kIdCadDrawingName);
  int x = left;
  for (int i = 0; i < kMaxDrawings; ++i) {
    const int id = kIdDrawingFirst + i;
    platform::SetVisible(id, i < count && !(naming && i >= first && i < first + taken));
    if (i >= count) continue;
    if (i == inRow) {
      x = left;
      y += kTabHeight + kGap;
    }
    platform::SetPlace(id, Rect{x, y, x + width, y + kTabHeight});
    x += width + kGap;
  }
  platform::SetPlace(kIdDrawingAdd, Rect{x, y, x + kPlus, y + kTabHeight});
  x += kPlus + kGap;
  platform::SetPlace(kIdDrawingRename, Rect{x, y, x + kRename, y + kTabHeight});
  x = instead ? left + (first - row * inRow) * pitch + 1 : x + kRename + kGap;
  const int end = instead ? x + taken * pitch - kGap - 2 : x + kName;
  const int top = instead ? y - (rows - 1 - row) * (kTabHeight + kGap) : y;
  platform::SetPlace(kIdCadDrawingName, Rect{x, top + 1, end, top + kTabHeight - 1});
  return y + kTabHeight;
}

void PlaceLists(int top, int bottom) {
  const int left = kPad;
  const int right = left + kLeftWidth;
  const int recent = (bottom - top) * kRecentPercent / 100;
  platform::SetPlace(kIdCadOperationsHead, Rect{left, top, right, top + kHeadHeight});
  const int split = bottom - recent;
  platform::SetPlace(kIdCadOperations,
                     Rect{left + 1, top + kHeadHeight + 2, right - 1, split - kPad});
  platform::SetPlace(kIdCadRecentHead, Rect{left, split, right, split + kHeadHeight});
  platform::SetPlace(kIdCadRecent, Rect{left + 1, split + kHeadHeight + 2, right - 1, bottom - 1});
}

// What a pattern cuts stays in sight above its fields, which scroll.
void PlaceSide() {
  Rect fields = sidePlace;
  if (tools.panelMode == kPanelCircular || tools.panelMode == kPanelRectangular) {
    const int height = std::min(RectHeight(sidePlace) * kPicturePercent / 100, kPictureMost);
    fields.top += height + kPad;
    PlaceForm(kCadPictureForm,
              Rect{sidePlace.left + 1, sidePlace.top + 1, sidePlace.right - 1, fields.top - kPad});
  } else {
    HideForm(kCadPictureForm);
  }
  PlaceForm(kCadForm, fields);
}

void PlaceWorkspace(const Rect& area) {
  platform::SetPlace(kViewCad, area);
  const int width = RectWidth(area);
  const int height = RectHeight(area);
  const int top = PlaceStrip(width) + kGap;
  const int bottom = height - 2 * kLineHeight - kGap;
  PlaceLists(top, bottom);
  const int left = kPad + kLeftWidth + kPad;
  const int right = width - kPad - kRightWidth - kPad;
  const int tabs = PlaceDrawingTabs(left, right, top);
  platform::SetPlace(kViewCadCanvas, Rect{left, tabs + kGap, right, bottom});
  sidePlace = Rect{right + kPad, top, width - kPad, bottom};
  PlaceSide();
  platform::SetPlace(kIdCadStatus, Rect{kPad, bottom + 2, width - kPad, bottom + 2 + kLineHeight});
  platform::SetPlace(kIdCadHint, Rect{kPad, bottom + 2 + kLineHeight, width - kPad, height - 2});
  PlaceSizeBoxes();
}

void PaintGroupLines(Canvas& canvas) {
  for (int row = 0; row < kCadStripRows; ++row) {
    int count = 0;
    const CadKeySpec* keys = CadStripRow(row, count);
    for (int i = 0; i < count; ++i) {
      // The units stand far from the tools.
      if (!keys[i].apart || keys[i].id == kIdCadInch) continue;
      const Rect key = platform::PlaceOf(keys[i].id);
      const int x = key.left - kGroupGap / 2;
      FillArea(canvas, Rect{x, key.top + kGap, x + 1, key.bottom - kGap}, kPanelLine);
    }
  }
}

void PaintWorkspace(Canvas& canvas) {
  platform::FillArea(canvas, platform::CanvasArea(canvas), kWindowBackground);
  PaintForms(canvas, kViewCad);
  PaintGroupLines(canvas);
  const int focused = platform::FocusedId();
  for (const int id : {kIdCadOperations, kIdCadRecent, kViewCadCanvas, kIdCadDrawingName}) {
    if (!platform::IsVisible(id)) continue;
    FrameWell(canvas, platform::PlaceOf(id), focused == id);
  }
}

void RefreshPanel() {
  if (!made || shownPage == CadPage()) return;
  shownPanel = tools.panelMode;
  shownPage = CadPage();
  ScrollSheetToTop(kCadSheet);
  PlaceSide();
  platform::Repaint(kViewCad);
}

void RefreshTools() {
  if (!made) return;
  RefreshKeyStates();
  RefreshCadKeys();
  RefreshPanel();
  RefreshHintLine();
}

// Cutting depth, feed and Safe Z.
void OpenCutData(int, int) { OpenToolPanel(kPanelCutData, kIdCadDepth); }

// A wheel turn over the size boxes zooms the canvas below them.
bool WorkspacePointer(const platform::PointerEvent& event) {
  const Rect canvas = platform::PlaceOf(kViewCadCanvas);
  if (event.action != platform::PointerAction::Wheel ||
      !platform::RectHolds(canvas, event.x, event.y)) {
    return false;
  }
  platform::PointerEvent wheel = event;
  wheel.x -= canvas.left;
  wheel.y -= canvas.top;
  return CanvasPointer(wheel);
}

}  // namespace

bool CadWindowExists() { return made; }

int ShownCadPanel() { return shownPanel; }

void RefreshCadKeys() {
  if (!made) return;
  RefreshPatternForm();
}

void ShowCadWorkspace(const Rect& area) {
  if (!made) {
    if (!MakeWorkspace()) return;
    PlaceWorkspace(area);
    LoadSketchForProgram();
    SetSketchStatus(kNothingSelected);
  }
  FollowUnit();
  RefreshDrawingTabs();
  PlaceWorkspace(area);
  platform::SetVisible(kViewCad, true);
  RefreshCadTools();
  platform::Repaint(kViewCad);
}

void HideCadWorkspace() {
  if (made) platform::SetVisible(kViewCad, false);
}

void RegisterWorkspace() {
  cadHooks.refreshCadPanel = RefreshPanel;
  cadHooks.refreshCadTools = RefreshTools;
  RegisterCommand(RouterStage::Builder, kIdCadCutData, platform::kNotifyClick, OpenCutData);
  Handlers handlers;
  handlers.id = kViewCad;
  handlers.paint = PaintWorkspace;
  handlers.pointer = WorkspacePointer;
  RegisterHandlers(handlers);
  RegisterForm(kCadForm);
  RegisterForm(kCadPictureForm);
  RegisterSheet<kCadSheet>();
}

void ResetWorkspace() {
  made = false;
  shownPanel = kPanelNone;
  shownPage = kPanelNone;
  sidePlace = Rect();
  ResetForm(kCadForm);
  ResetForm(kCadPictureForm);
}

}  // namespace morva
