// State of the toolpath view: the named views, zoom, grid settings and the three menus.

#include <algorithm>
#include <iterator>
#include <span>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/commands.h"
#include "app/outlets.h"
#include "app/palette.h"
#include "app/profile_keys.h"
#include "library/units.h"
#include "platform/profile.h"
#include "platform/timer.h"
#include "platform/window.h"
#include "simulator/control_settings.h"
#include "simulator/preview_state.h"
#include "simulator/shown_path.h"
#include "simulator/toolpath.h"
#include "simulator/view.h"
#include "simulator/view_parts.h"
#include "simulator/view_switches.h"
#include "text/codetext.h"

namespace morva {

namespace {

using platform::Colour;

constexpr char16_t kSection[] = u"Simulator";
constexpr double kLeastZoom = 0.05;
constexpr double kMostZoom = 50;
constexpr int kGridColours = static_cast<int>(std::size(kPathGrid));
constexpr int kMostGridScale = 6;
constexpr double kGridCells = 12;   // raw cells along the larger span
constexpr double kNoSpan = 0.0001;  // display units
constexpr double kEmptySpanInch = 4;
constexpr double kEmptySpanMm = 100;

constexpr int kRestMilliseconds = 150;

bool moves = false;
bool settingsRead = false;
bool saveFailureTold = false;

void Refresh() { platform::Repaint(kViewToolpath); }

ViewCube CubeOfThisView() {
  ViewCube cube;
  cube.view = kViewToolpath;
  cube.timer = kTimerView;
  return cube;
}

void ShowAngles(double yaw, double elevation) {
  StopCube(viewCube);
  TakeAngles({yaw, elevation, 0});
  ViewFit();
}

void EndMove() {
  moves = false;
  platform::StopTimer(kViewToolpath, kTimerViewRest);
}

// Menus open below their key; without one, in the corner of the view.
int ShowMenuAt(int key, std::span<const MenuRow> rows) {
  if (platform::IsVisible(key)) {
    const platform::Rect place = platform::PlaceInMainWindow(key);
    return ShowCommandMenu(rows, place.left, place.bottom);
  }
  const platform::Rect place = platform::PlaceInMainWindow(kViewToolpath);
  return ShowCommandMenu(rows, place.left, place.top);
}

// The power of ten at or below `value`, which is above 0.
double PowerOfTen(double value) {
  double power = 1;
  while (power * 10 <= value) power *= 10;
  while (power > value) power /= 10;
  return power;
}

// The first time, the settings get a table of the machine for the user to edit.
void TakeMachinePick() {
  if (!switches.machineMotion) WriteMissingControlSettings();
  SwitchMachineMotion(!switches.machineMotion);
}

// True when the pick changed a setting.
bool TakeGridPick(int id) {
  const ViewState before = view;
  if (id >= kIdGridColourFirst && id <= kIdGridColourLast) {
    view.gridColour = id - kIdGridColourFirst;
  } else if (id == kIdGridAutomatic) {
    view.gridScale = 0;
  } else if (id == kIdGridHalf) {
    view.gridScale = std::max(view.gridScale - 1, -kMostGridScale);
  } else if (id == kIdGridDouble) {
    view.gridScale = std::min(view.gridScale + 1, kMostGridScale);
  }
  return view.gridColour != before.gridColour || view.gridScale != before.gridScale;
}

}  // namespace

ViewCube viewCube = CubeOfThisView();

platform::Rect CubeClient(const platform::Rect& client) {
  const bool narrow = platform::RectWidth(client) < 2 * kCubeWidth &&
                      platform::RectHeight(client) < 2 * kCubeHeight;
  return narrow && ExampleIsShown() ? platform::Rect{} : client;
}

void ViewFit() { ViewFitOf(ShownOwner()); }

void ViewFitOf(PathOwner owner) {
  ViewState& fitted = OwnedBy(owner).view;
  fitted.zoom = 1;
  fitted.panX = 0;
  fitted.panY = 0;
  Refresh();
}

void FrameBounds(const PathBounds& b) {
  constexpr int kEdge = 24;  // pixels that stay free
  ViewFit();
  const platform::Rect client = platform::ClientArea(kViewToolpath);
  const double width = platform::RectWidth(client) - 2 * kEdge;
  const double height = platform::RectHeight(client) - 2 * kEdge;
  if (!(width > 0) || !(height > 0)) return;
  const Projection p = ProjectionFor(client);
  platform::PointF least, most;
  for (int i = 0; i < 8; ++i) {
    const platform::PointF corner =
        Project(p, (i & 1) ? b.maxX : b.minX, (i & 2) ? b.maxY : b.minY, (i & 4) ? b.maxZ : b.minZ);
    least = i == 0 ? corner
                   : platform::PointF{std::min(least.x, corner.x), std::min(least.y, corner.y)};
    most =
        i == 0 ? corner : platform::PointF{std::max(most.x, corner.x), std::max(most.y, corner.y)};
  }
  if (least.x >= client.left + kEdge && most.x <= client.right - kEdge &&
      least.y >= client.top + kEdge && most.y <= client.bottom - kEdge) {
    return;
  }
  const double spanX = std::max(most.x - least.x, 1.0), spanY = std::max(most.y - least.y, 1.0);
  ViewState& shown = ShownPath().view;
  shown.zoom = std::clamp(std::min(width / spanX, height / spanY), kLeastZoom, 1.0);
  shown.panX = (client.left + client.right) / 2.0 - p.originX -
               shown.zoom * ((least.x + most.x) / 2 - p.originX);
  shown.panY = (client.top + client.bottom) / 2.0 - p.originY -
               shown.zoom * ((least.y + most.y) / 2 - p.originY);
  Refresh();
}

void LookFrom(PathOwner owner, double yaw, double elevation, double zoom) {
  ViewState& turned = OwnedBy(owner).view;
  turned.topView = false;
  turned.yawDegrees = yaw;
  turned.elevationDegrees = elevation;
  turned.rollDegrees = 0;
  turned.zoom = std::clamp(zoom, kLeastZoom, kMostZoom);
  turned.panX = 0;
  turned.panY = 0;
  Refresh();
}

void LookAsBefore(PathOwner owner, const ViewState& before) {
  OwnedBy(owner).view = before;
  Refresh();
}

void ZoomBy(double factor) {
  ViewState& shown = ShownPath().view;
  shown.zoom = std::clamp(shown.zoom * factor, kLeastZoom, kMostZoom);
  ViewMoved();
}

void SetViewTop() {
  StopCube(viewCube);
  ViewState& shown = ShownPath().view;
  shown.topView = true;
  shown.rollDegrees = 0;
  ViewFit();
}

ViewAngles ShownAngles() {
  const ViewState& shown = ShownPath().view;
  if (shown.topView) return {0, 90, shown.rollDegrees};
  return {shown.yawDegrees, shown.elevationDegrees, shown.rollDegrees};
}

void TakeAngles(const ViewAngles& angles) {
  ViewState& shown = ShownPath().view;
  shown.topView = false;
  shown.yawDegrees = angles.yaw;
  shown.elevationDegrees = angles.elevation;
  shown.rollDegrees = angles.roll;
}

void ViewMoved() {
  moves = true;
  platform::StartTimer(kViewToolpath, kTimerViewRest, kRestMilliseconds);
  Refresh();
}

bool ViewMoves() { return moves; }

void ViewTimer(int timer) {
  if (timer == kTimerViewRest) {
    EndMove();
    return Refresh();
  }
  if (timer != kTimerView) return;
  const bool runs = viewCube.running;
  ViewAngles angles = ShownAngles();
  TickCube(viewCube, angles);
  if (!runs) return;
  TakeAngles(angles);
  ViewMoved();
}

void SetViewFront() { ShowAngles(0, 0); }

void SetViewRight() { ShowAngles(-90, 0); }

void SetViewIsometric() { ShowAngles(-45, 28); }

double GridSpacing() {
  const PathBounds& b = Bounds();
  double span = std::max(b.maxX - b.minX, b.maxY - b.minY);
  if (span < kNoSpan) span = UnitsMetric() ? kEmptySpanMm : kEmptySpanInch;
  const double raw = span / kGridCells;
  const double power = PowerOfTen(raw);
  const double ratio = raw / power;
  double spacing = power * (ratio <= 2 ? 2 : ratio <= 5 ? 5 : 10);
  for (int i = 0; i < view.gridScale; ++i) spacing *= 2;
  for (int i = 0; i > view.gridScale; --i) spacing /= 2;
  return spacing;
}

void LoadViewSettings() {
  if (settingsRead) return;
  settingsRead = true;
  view.gridOn = ProfileReadInteger(kSection, u"Grid", 1) != 0;
  view.gridColour = ProfileReadInteger(kSection, u"GridColor", 0);
  if (view.gridColour < 0 || view.gridColour >= kGridColours) view.gridColour = 0;
  view.gridScale = ProfileReadInteger(kSection, u"GridScale", 0);
  if (view.gridScale < -kMostGridScale || view.gridScale > kMostGridScale) view.gridScale = 0;
  ShadeByDepth(ProfileReadInteger(kSection, u"ShadeByDepth", 0) != 0);
  ShowMachineMotion(ProfileReadInteger(kSection, u"MachineMotion", 0) == 1);
  PlayByTime(ProfileReadInteger(kSection, u"PlayByTime", 0) == 1);
}

void SaveViewSettings() {
  platform::BeginProfileChange();
  platform::WriteProfile(kSection, u"Grid", view.gridOn ? u"1" : u"0");
  platform::WriteProfile(kSection, u"GridColor", IntegerText(view.gridColour));
  platform::WriteProfile(kSection, u"GridScale", IntegerText(view.gridScale));
  platform::WriteProfile(kSection, u"ShadeByDepth", switches.shadeByDepth ? u"1" : u"0");
  platform::WriteProfile(kSection, u"MachineMotion", switches.machineMotion ? u"1" : u"0");
  platform::WriteProfile(kSection, u"PlayByTime", switches.playByTime ? u"1" : u"0");
  platform::EndProfileChange([](bool saved) {
    if (saved || saveFailureTold) return;
    saveFailureTold = true;
    ShowStatus(
        u"The settings file could not be written. Settings of the view hold for this run only.");
  });
}

Colour GridColour(bool toned) {
  const int row = std::clamp(view.gridColour, 0, kGridColours - 1);
  const Colour colour = kPathGrid[row];
  if (!toned) return colour;
  // Half-way to the background of the window, red 1, green 15, blue 25.
  return platform::Rgb((platform::RedOf(colour) * 50 + 50) / 100,
                       (platform::GreenOf(colour) * 50 + 750) / 100,
                       (platform::BlueOf(colour) * 50 + 1250) / 100);
}

void ShowViewMenu() {
  constexpr MenuRow kRows[] = {{kIdViewTop}, {kIdViewFront}, {kIdViewRight}, {kIdViewIsometric}};
  switch (ShowMenuAt(kIdViewMenu, kRows)) {
    case kIdViewTop:
      return SetViewTop();
    case kIdViewFront:
      return SetViewFront();
    case kIdViewRight:
      return SetViewRight();
    case kIdViewIsometric:
      return SetViewIsometric();
    default:
      return;
  }
}

void ShowGridMenu() {
  LoadViewSettings();
  MenuRow rows[kGridColours + 4];
  for (int i = 0; i < kGridColours; ++i) {
    rows[i] = {.id = kIdGridColourFirst + i, .checked = view.gridColour == i};
  }
  // Behind a line.
  rows[kGridColours + 1] = {.id = kIdGridAutomatic, .checked = view.gridScale == 0};
  rows[kGridColours + 2] = {.id = kIdGridHalf};
  rows[kGridColours + 3] = {.id = kIdGridDouble};
  if (!TakeGridPick(ShowMenuAt(kIdViewGridMenu, rows))) return;
  SaveViewSettings();
  Refresh();
}

void ToggleGrid() {
  LoadViewSettings();
  view.gridOn = !view.gridOn;
  SaveViewSettings();
  platform::Repaint(kViewToolpath);
}

void ShowLayersMenu() {
  LoadViewSettings();
  // An example shows its travel and has nothing around it, whatever the layers say.
  const bool example = ExampleIsShown();
  const MenuRow rows[] = {
      {.id = kIdLayerRapids, .enabled = !example, .on = switches.showRapids},
      {.id = kIdLayerOverlap, .enabled = HasCoverage(), .on = switches.showOverlap},
      {.id = kIdLayerDrawing, .enabled = !example, .on = switches.showDrawingPaths},
      {.id = kIdLayerCutSurface, .enabled = ShownPath().stock.shown, .on = switches.showCutSurface},
      {.id = kIdLayerClean},
      {.id = kIdLayerSkimDepth, .enabled = HasLevels(), .on = switches.skimCurrentDepthOnly},
      {},
      {.id = kIdLayerDepthShade, .enabled = !example, .checked = switches.shadeByDepth},
      {.id = kIdLayerMachine, .enabled = EditorPathIsShown(), .on = switches.machineMotion},
      {.id = kIdLayerPlayByTime,
       .enabled = ShownPath().seconds != nullptr,
       .on = switches.playByTime},
  };
  const int pick = ShowMenuAt(kIdViewLayers, rows);
  TakeLayerPick(pick);
  platform::BeginProfileChange();
  if (pick == kIdLayerMachine) TakeMachinePick();
  if (pick >= kIdLayerDepthShade) SaveViewSettings();
  (void)platform::EndProfileChange();
  Refresh();
}

void ResetView() {
  StopCube(viewCube);
  EndMove();
  for (const OwnedPath& owned : OwnedPaths()) owned.view = ViewState();
  viewCube = CubeOfThisView();
  settingsRead = false;
  saveFailureTold = false;
  ResetViewMouse();
}

}  // namespace morva
