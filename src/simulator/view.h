// The toolpath view: projection, mouse, grid and drawing.
//
// A parallel projection fitted to the path's bounds. Nothing here changes the program. What is
// said of path and view means those that are shown (shown_path.h).
#pragma once

#include <cstdint>
#include <span>

#include "app/key_rows.h"
#include "platform/canvas.h"
#include "platform/events.h"
#include "simulator/shown_path.h"

namespace morva {

// The projection for a client area, derived from view and bounds; cached.
struct Projection {
  double centreX = 0, centreY = 0, centreZ = 0;
  double ux = 0, uy = 0, uz = 0;  // screen x of a unit along each axis, times the scale
  double vx = 0, vy = 0, vz = 0;  // screen y
  double scale = 1;
  double originX = 0, originY = 0;
};
const Projection& ProjectionFor(const platform::Rect& client);
platform::PointF Project(const Projection& p, double x, double y, double z);

// Zoom 1 and no pan; the angles stay. Of the owner that is shown, or of a given one.
void ViewFit();
void ViewFitOf(PathOwner owner);
// Of the shown path: like ViewFit where that shows all within the bounds, else zoomed out and
// shifted until it does.
void FrameBounds(const PathBounds& bounds);
// An owner's view from a side, in degrees, no roll and no pan.
void LookFrom(PathOwner owner, double yaw, double elevation, double zoom);
// The view that an owner had, kept by the caller.
void LookAsBefore(PathOwner owner, const ViewState& before);
void ZoomBy(double factor);
void SetViewTop();
void SetViewFront();
void SetViewRight();
void SetViewIsometric();
double GridSpacing();     // display units
void LoadViewSettings();  // grid and shading: once, at the first draw
void ToggleGrid();
void SaveViewSettings();  // at each change of them
platform::Colour GridColour(bool toned);

// Nearest path point within 15 pixels of a client point, -1 for none; first wins on a tie.
std::int32_t PickPathPoint(const platform::Rect& client, int x, int y);

void PaintToolpathView(platform::Canvas& canvas);
bool ToolpathPointer(const platform::PointerEvent& event);
bool ToolpathKey(const platform::KeyEvent& key);
std::span<const KeyRow> ToolpathKeys();  // those of them that are no commands
void ShowViewMenu();
void ShowGridMenu();
void ShowLayersMenu();
void ResetView();

}  // namespace morva
