#include "plate/panel/plate_workspace.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include "app/command_ids.h"
#include "app/commands.h"
#include "app/hooks.h"
#include "app/join_table.h"
#include "app/limits.h"
#include "app/palette.h"
#include "app/panels.h"
#include "app/wells.h"
#include "documents/companions.h"
#include "documents/tab_table.h"
#include "forms/form.h"
#include "forms/sheet.h"
#include "library/units.h"
#include "plate/canvas/plate_keys.h"
#include "plate/canvas/plate_paint.h"
#include "plate/canvas/plate_pointer.h"
#include "plate/canvas/plate_view.h"
#include "plate/model/plate.h"
#include "plate/panel/plate_live.h"
#include "plate/panel/plate_tabs.h"
#include "plate/tools/plate_editor.h"
#include "plate/tools/plate_fields.h"
#include "plate/tools/plate_forms.h"
#include "plate/tools/plate_list.h"
#include "platform/canvas.h"
#include "platform/control.h"
#include "platform/window.h"

namespace morva {

using platform::Canvas;
using platform::FontRole;
using platform::Rect;

namespace {

constexpr int kPad = 8;  // pixels, as all below
constexpr int kGap = 4;
constexpr int kKeyHeight = 30;
constexpr int kTabHeight = 28;
constexpr int kTabMost = 130;
constexpr int kPlusWidth = 30;
constexpr int kFormWidth = 292;
constexpr int kEditorWidth = 292;
constexpr int kLineHeight = 22;  // status and hint

struct StripKey {
  int id;
  int width;
};
constexpr StripKey kStrip[] = {{kIdPlateCreate, 110},
                               {kIdPlateNaming, 220},
                               {kIdPlateReset, 110},
                               {kIdPlateFit, 52},
                               {kIdPlateUnit, 70}};

constexpr char16_t kHelpLine[] =
    u"Count X \u00D7 Count Y controls grid quantity. For Circular layout, total count = Count X "
    u"\u00D7 Count Y and Pattern Dia is used.";

bool made = false;
bool stale = false;              // fields, list and keys lag behind the plate
int shownPage = 0;               // of the plate's form
int shownTarget = -1;            // that the list of features marks
std::uint32_t shownChanges = 0;  // of the plate, that the editor follows

void MakeKey(int id) { MakeCommandKey(id, kViewPlate, FontRole::Body, false); }

// No form: the lines stand below all columns.
void MakeLine(int id, const char16_t* text, const char16_t* name, platform::Colour colour) {
  platform::ControlSpec spec;
  spec.id = id;
  spec.text = text;
  spec.accessibleName = name;
  spec.font = FontRole::Small;
  spec.parent = kViewPlate;
  platform::MakeControl(spec);
  platform::SetColours(id, {colour, kWindowBackground, true});
}

void OrderTabs() {
  int ids[kMaxTabStops];
  int count = 0;
  const auto put = [&ids, &count](int id) {
    if (count >= kMaxTabStops) StopFull(u"tab stops", kMaxTabStops);
    ids[count++] = id;
  };
  for (const StripKey& key : kStrip) put(key.id);
  count += FormOrder(kPlateForm, ids + count, kMaxTabStops - count);
  for (int id = kIdPlateTabFirst; id <= kIdPlateTabAdd; ++id) put(id);
  put(kViewPlatePicture);
  count += FormOrder(kPlateEditForm, ids + count, kMaxTabStops - count);
  platform::SetTabOrder(ids, count);
}

// False: no window could be made.
bool MakeWorkspace() {
  platform::ViewSpec view;
  view.id = kViewPlate;
  view.className = u"MorvaPlateWnd";
  view.accessibleName = u"Plate workspace";
  view.background = kWindowBackground;
  if (!platform::MakeView(view)) return false;
  made = true;
  for (const StripKey& key : kStrip) MakeKey(key.id);
  for (int id = kIdPlateTabFirst; id <= kIdPlateTabAdd; ++id) MakeKey(id);
  view.parent = kViewPlate;
  view.id = kViewPlatePicture;
  view.className = u"MorvaPlatePreview";
  view.accessibleName = u"Plate preview";
  view.takesFocus = true;
  platform::MakeView(view);
  MakeForm(kPlateForm);
  MakeForm(kPlateEditForm);
  MakeLine(kIdPlateStatus, u"", u"Plate status", kMainText);
  MakeLine(kIdPlateHint, kHelpLine, u"", kDimText);
  OrderTabs();
  return true;
}

// The unit stands at the right edge, apart from the other keys.
int PlaceStrip(int width) {
  int x = kPad;
  for (const StripKey& key : kStrip) {
    if (key.id == kIdPlateUnit) x = width - kPad - key.width;
    platform::SetPlace(key.id, Rect{x, kGap, x + key.width, kGap + kKeyHeight});
    x += key.width + kGap;
  }
  return kGap + kKeyHeight + kGap;
}

void PlaceTabs(int left, int right, int y) {
  const ProgramTab* tab = ActiveTab();
  const int count = tab && tab->plateStore
                        ? std::clamp(static_cast<int>(tab->plateStore->count), 1, int{kMaxPlates})
                        : 1;
  const int width = std::min(kTabMost, (right - left - kPlusWidth) / count - kGap);
  int x = left;
  for (int i = 0; i < count; ++i) {
    platform::SetPlace(kIdPlateTabFirst + i, Rect{x, y, x + width, y + kTabHeight});
    x += width + kGap;
  }
  platform::SetPlace(kIdPlateTabAdd, Rect{x, y, x + kPlusWidth, y + kTabHeight});
}

void PlaceWorkspace(const Rect& area) {
  platform::SetPlace(kViewPlate, area);
  const int width = RectWidth(area);
  const int height = RectHeight(area);
  const int top = PlaceStrip(width) + kGap;
  const int bottom = height - 2 * kLineHeight - kGap;
  const int left = kPad + kFormWidth + kPad;
  const int right = width - kPad - kEditorWidth - kPad;
  PlaceForm(kPlateForm, Rect{kPad, top, kPad + kFormWidth, bottom});
  shownPage = PageOf(kPlateForm);
  PlaceTabs(left, right, top);
  platform::SetPlace(kViewPlatePicture,
                     Rect{left + 1, top + kTabHeight + kGap + 1, right - 1, bottom - 1});
  PlacePlateEditor(Rect{right + kPad, top, width - kPad, bottom});
  platform::SetPlace(kIdPlateStatus,
                     Rect{kPad, bottom + 2, width - kPad, bottom + 2 + kLineHeight});
  platform::SetPlace(kIdPlateHint, Rect{kPad, bottom + 2 + kLineHeight, width - kPad, height - 2});
}

void PaintWorkspace(Canvas& canvas) {
  platform::FillArea(canvas, platform::CanvasArea(canvas), kWindowBackground);
  PaintForms(canvas, kViewPlate);
  FrameWell(canvas, platform::PlaceOf(kViewPlatePicture),
            platform::FocusedId() == kViewPlatePicture);
}

// The plate may change outside of the events of this window, as by a save.
void PlateChanged() {
  stale = true;
  if (!made) return;
  platform::SetText(kIdPlateStatus, plate.status);
  platform::Repaint(kViewPlatePicture);
}

void ShowName() {
  // No form: the key says the plate's name.
  platform::SetText(kIdPlateNaming, plate.unnamed || !plate.name[0]
                                        ? std::u16string(WordsOf(kIdPlateNaming))
                                        : std::u16string(plate.name));
  platform::SetEnabled(kIdPlateCreate, plate.unnamed);
}

}  // namespace

void ShowPlateWorkspace(const Rect& area) {
  if (!made) {
    if (!MakeWorkspace()) return;
    PlaceWorkspace(area);
    LoadPlateOfProgram();
  }
  FollowUnitOnPlate();
  RefreshPlateTabs();
  PlaceWorkspace(area);
  platform::SetVisible(kViewPlate, true);
  stale = true;
  RefreshPlateWorkspace();
  platform::Repaint(kViewPlate);
}

void HidePlateWorkspace() {
  if (made) platform::SetVisible(kViewPlate, false);
}

void RefreshPlateWorkspace() {
  if (!made || PlateDragRuns() || (!stale && shownTarget == plateEditor.target)) return;
  stale = false;
  if (shownChanges != plate.changes) FollowPlateInEditor();
  shownChanges = plate.changes;
  shownTarget = plateEditor.target;
  ShowPlateFields();
  ShowPlateList();
  ShowName();
  platform::SetText(kIdPlateStatus, plate.status);
  if (PageOf(kPlateForm) != shownPage) Call(hooks.layout);
}

void ShowPlateHint() { platform::SetText(kIdPlateHint, kHelpLine); }

void RegisterPlateWorkspace() {
  SetPlateListener(PlateChanged);
  Handlers ground;
  ground.id = kViewPlate;
  ground.paint = PaintWorkspace;
  RegisterHandlers(ground);
  Handlers preview;
  preview.id = kViewPlatePicture;
  preview.paint = PaintPlate;
  preview.pointer = PlatePointer;
  preview.keys = PlateViewKeys();  // the surface asks for them
  preview.value = [](platform::ViewValue& value) { value.words = PlateViewWords(); };
  RegisterHandlers(preview);
  RegisterForm(kPlateForm);
  RegisterForm(kPlateEditForm);
  RegisterSheet<kPlateSheet>();
}

void ResetPlateWorkspace() {
  made = false;
  stale = false;
  ResetForm(kPlateForm);
  ResetForm(kPlateEditForm);
}

}  // namespace morva
