#include "shell/layout.h"

#include <cstddef>
#include <span>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/commands.h"
#include "app/hooks.h"
#include "app/join_table.h"
#include "app/limits.h"
#include "app/mode_table.h"
#include "app/outlets.h"
#include "app/palette.h"
#include "app/panels.h"
#include "app/surfaces.h"
#include "dnc/transfer.h"
#include "platform/window.h"
#include "shell/strip.h"

namespace morva {

using platform::Rect;

namespace {

constexpr int kGripLeft = 4;  // pixels left of the panel's edge that take hold of it
constexpr int kGripRight = 5;

enum class Edge { None, Panel, Strip };

LayoutAreas areas;
Edge dragged = Edge::None;
int held = 0;  // pixels from the strip's edge down to where the pointer took hold of it
Edge gripShape = Edge::None;  // the edge that the pointer shows to be one that can be dragged

// Which of the placed things are shown, so that only a change touches them.
struct Shown {
  int id = 0;
  bool shown = false;
};
Shown shownTable[kMaxPlacements];
int shownCount = 0;
int orderedFor = -1;  // the surface that Tab follows

// No form: the window shows and hides whatever its plan names.
void Show(int id, bool shown) {
  for (int i = 0; i < shownCount; ++i) {
    if (shownTable[i].id != id) continue;
    if (shownTable[i].shown == shown) return;
    shownTable[i].shown = shown;
    platform::SetVisible(id, shown);
    return;
  }
  if (shownCount >= kMaxPlacements) StopFull(u"controls shown", kMaxPlacements);
  shownTable[shownCount++] = Shown{id, shown};
  platform::SetVisible(id, shown);
}

// What this surface does not know at all.
void HideUnplanned(const LayoutPlan& plan) {
  for (int i = 0; i < shownCount; ++i) {
    bool planned = false;
    for (int k = 0; k < plan.count && !planned; ++k) {
      planned = plan.placements[k].id == shownTable[i].id;
    }
    if (!planned) Show(shownTable[i].id, false);
  }
}

bool InGrip(int x) {
  return x >= app.leftPanelWidth - kGripLeft && x <= app.leftPanelWidth + kGripRight;
}

// The edge under a place of the code surface.
Edge EdgeAt(int x, int y) {
  if (app.surface != kSurfaceCode) return Edge::None;
  const Rect& strip = areas.stripEdge;
  if (x >= strip.left && x < strip.right && y >= strip.top && y < strip.bottom) return Edge::Strip;
  return InGrip(x) && y >= app.topBarHeight ? Edge::Panel : Edge::None;
}

void ShowGripShape(Edge edge) {
  if (edge == gripShape) return;
  gripShape = edge;
  auto shape = platform::PointerShape::Arrow;
  if (edge == Edge::Panel) shape = platform::PointerShape::SizeAcross;
  if (edge == Edge::Strip) shape = platform::PointerShape::SizeUpDown;
  platform::SetPointerShape(platform::kMainWindow, shape);
}

void TakeEdge(Edge edge, int y) {
  dragged = edge;
  held = y - areas.stripEdge.top;
  platform::CapturePointer(platform::kMainWindow);
}

void DragEdge(int x, int y) {
  if (dragged == Edge::Panel) DragSplitter(x);
  if (dragged == Edge::Strip) DragStrip(y - held);
}

Rect Around(const LayoutPlan& plan, const int* ids, int count) {
  Rect all;
  for (int i = 0; i < count; ++i) {
    const Rect place = PlaceIn(plan, ids[i]);
    if (IsEmpty(place)) continue;
    if (IsEmpty(all)) all = place;
    if (place.left < all.left) all.left = place.left;
    if (place.top < all.top) all.top = place.top;
    if (place.right > all.right) all.right = place.right;
    if (place.bottom > all.bottom) all.bottom = place.bottom;
  }
  return all;
}

// The areas that panels may take over, from what the plan put there.
void FindPanelAreas(const LayoutPlan& plan) {
  const int left[] = {kIdFeatureList, kIdFeatureEdit,   kIdFeatureHide,
                      kIdFeatureName, kIdFeatureRename, kIdFeatureHint};
  areas.editor = PlaceIn(plan, kIdEditor);
  areas.leftLower = Around(plan, left, static_cast<int>(sizeof(left) / sizeof(left[0])));
}

Rect AreaOf(PanelSpot spot) {
  switch (spot) {
    case PanelSpot::Editor:
      return areas.editor;
    case PanelSpot::Work:
      return areas.work;
    case PanelSpot::Foot:
      return areas.foot;
    case PanelSpot::LeftLower:
      return areas.leftLower;
    case PanelSpot::OutputHead:
      return areas.outputHead;
    default:
      return areas.panelBody;
  }
}

bool Inside(const Rect& inner, const Rect& outer) {
  return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
         inner.bottom <= outer.bottom;
}

// Whether an active panel covers this place.
bool IsCovered(const Rect& place) {
  for (int i = 0; i < PanelCount(); ++i) {
    const Panel& panel = PanelAt(i);
    if (panel.spot == PanelSpot::RightBody || !IsPanelActive(panel)) continue;
    if (Inside(place, AreaOf(panel.spot))) return true;
  }
  return false;
}

// The work area holds the editor's place: a panel in it hides one that stands there. Of several
// in it the first one stands.
bool IsUnderWorkPanel(const Panel& panel) {
  if (panel.spot == PanelSpot::Editor) return IsPanelAt(PanelSpot::Work);
  if (panel.spot != PanelSpot::Work) return false;
  for (int i = 0; &PanelAt(i) != &panel; ++i) {
    if (PanelAt(i).spot == PanelSpot::Work && IsPanelActive(PanelAt(i))) return true;
  }
  return false;
}

void PlacePanels() {
  for (int i = 0; i < PanelCount(); ++i) {
    const Panel& panel = PanelAt(i);
    const Rect area = AreaOf(panel.spot);
    if (IsPanelActive(panel) && !IsEmpty(area) && !IsUnderWorkPanel(panel)) {
      if (panel.place) panel.place(area);
    } else if (panel.hide) {
      panel.hide();
    }
  }
}

// At most one workspace is shown, in the place of all below the tabs.
void PlaceSurfaces() {
  for (int i = 0; i < SurfaceCount(); ++i) {
    const Surface& surface = SurfaceAt(i);
    if (surface.surface != app.surface) Call(surface.hide);
  }
  const Surface* up = SurfaceUp();
  if (up && up->show) up->show(areas.workspace);
}

}  // namespace

const LayoutAreas& Areas() { return areas; }

platform::Colour GroundUnder(const Rect& place) {
  const Rect& side = areas.rightPanel;
  if (app.surface != kSurfaceCode || side.left >= side.right) return kWindowBackground;
  return place.left >= side.left && place.top >= side.top ? kSidePanel : kWorkArea;
}

namespace {

// Pixels of a key that brings a surface up, 0 where no surface has it.
int SurfaceKeyWidth(int id) {
  constexpr int kCodeWidth = 64;
  if (id == kIdSurfaceCode) return kCodeWidth;
  for (int i = 0; i < SurfaceCount(); ++i) {
    if (SurfaceAt(i).button == id) return SurfaceAt(i).buttonWidth;
  }
  return 0;
}

// In the order of their ids; how many.
std::size_t FindSurfaceKeys(KeyWidth* keys) {
  std::size_t count = 0;
  for (int id = kIdSurfaceCode; id <= kIdSurfaceLast; ++id) {
    const int width = SurfaceKeyWidth(id);
    if (width > 0) keys[count++] = {id, width};
  }
  return count;
}

}  // namespace

void Layout() {
  const Rect client = platform::ClientArea(platform::kMainWindow);
  if (client.right <= 0 || client.bottom <= 0) return;
  HideHelp();  // it lies over a control that may move
  LayoutInput in;
  in.width = client.right;
  in.height = client.bottom;
  in.leftPanelWidth = app.leftPanelWidth;
  in.topBarHeight = app.topBarHeight;
  in.surface = app.surface;
  in.mode = app.mode;
  in.rightPanel = !ModeOf(app.mode).wide;
  KeyWidth surfaceKeys[kIdSurfaceLast - kIdSurfaceCode + 1];
  in.surfaceKeys = std::span(surfaceKeys, FindSurfaceKeys(surfaceKeys));
  in.footPanel = IsPanelAt(PanelSpot::Foot);
  in.headPanel = IsPanelAt(PanelSpot::OutputHead);
  in.tabCount = app.tabCount;
  in.transferRuns = TransferRuns();
  in.viewAway = IsPanelAt(PanelSpot::Work);
  in.heightAboveView = HeightAboveView();
  in.helpBelow = IsHelpBelow();
  const Surface* up = SurfaceUp();
  in.viewBesideSurface = up && up->withView;
  in.stripHeight = StripHeight();
  in.stripClosed = IsStripClosed();
  const LayoutPlan plan = PlanLayout(in);
  app.leftPanelWidth = plan.leftPanelWidth;
  areas = plan.areas;
  NoteStripPlace(areas);
  FindPanelAreas(plan);
  for (int i = 0; i < plan.count; ++i) {
    const Placement& placement = plan.placements[i];
    const bool shown = !IsEmpty(placement.place) && !IsCovered(placement.place);
    if (!IsEmpty(placement.place)) platform::SetPlace(placement.id, placement.place);
    Show(placement.id, shown);
  }
  HideUnplanned(plan);
  PlacePanels();
  if (orderedFor != app.surface) {
    orderedFor = app.surface;
    OrderTabs(plan);
  }
  PlaceSurfaces();
  RefreshKeyStates();
  platform::Repaint(platform::kMainWindow);
}

void DragSplitter(int x) {
  app.leftPanelWidth = x < kLeftPanelLeast ? kLeftPanelLeast : x;
  if (app.leftPanelWidth > kLeftPanelMost) app.leftPanelWidth = kLeftPanelMost;
  Layout();
}

bool MainPointer(const platform::PointerEvent& event) {
  switch (event.action) {
    case platform::PointerAction::Press: {
      if (event.button != platform::PointerButton::Left) return false;
      // The panel's edge has no upper end for a press.
      Edge edge = EdgeAt(event.x, event.y);
      if (edge == Edge::None && InGrip(event.x)) edge = Edge::Panel;
      if (edge == Edge::None) return false;
      TakeEdge(edge, event.y);
      return true;
    }
    case platform::PointerAction::Move:
      if (dragged != Edge::None && !event.leftDown) {
        // The release went to a box that came up meanwhile.
        dragged = Edge::None;
        platform::ReleasePointer();
      }
      if (dragged == Edge::None) {
        ShowGripShape(EdgeAt(event.x, event.y));
        return false;
      }
      DragEdge(event.x, event.y);
      return true;
    case platform::PointerAction::Release:
      if (dragged == Edge::None || event.button != platform::PointerButton::Left) return false;
      dragged = Edge::None;
      platform::ReleasePointer();
      return true;
    case platform::PointerAction::Lost:
      dragged = Edge::None;
      return false;
    case platform::PointerAction::Leave:
      if (dragged == Edge::None) ShowGripShape(Edge::None);
      return false;
    default:
      return false;
  }
}

void ResetLayout() {
  areas = LayoutAreas();
  dragged = Edge::None;
  held = 0;
  gripShape = Edge::None;
  shownCount = 0;
  orderedFor = -1;
}

}  // namespace morva
