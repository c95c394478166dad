// What the files of the canvas share; not for other rooms.
#pragma once

#include "cad/canvas.h"
#include "library/outline.h"
#include "platform/canvas.h"
#include "platform/events.h"
#include "platform/geometry.h"

namespace morva {

// An object's outline and its bounds, computed anew when the object is another than last time.
struct OutlineOf {
  SketchObject object;  // what the points were computed from
  int count = -1;       // -1: nothing kept yet
  double xs[kOutlinePoints] = {};
  double ys[kOutlinePoints] = {};
  double minX = 0, minY = 0, maxX = 0, maxY = 0;
};
// Of object `index` of the live sketch, which must exist.
const OutlineOf& OutlineAt(int index);

struct Bounds {
  double minX = 0, minY = 0, maxX = 0, maxY = 0;  // drawing units
};
// Around the outlines of the objects that `taken` takes; false, with nothing changed, where
// there is none.
bool BoundsOf(bool (*taken)(int index), Bounds& bounds);

platform::Rect CanvasClient();

// The transform for one client area, taken once for many points.
struct CanvasTransform {
  double scale = 1;
  int halfWidth = 0;
  int halfHeight = 0;
};
CanvasTransform TransformFor(const platform::Rect& client);
platform::Point PlaceIn(const CanvasTransform& t, double x, double y);
// With fractions, so that curves stay round; within a pixel of PlaceIn.
platform::PointF ExactPlaceIn(const CanvasTransform& t, double x, double y);

void ZoomAt(int px, int py, int notches);

// A tool is in hand and the pointer inside.
bool CrosshairShown();
// Where the last search snapped to, drawing units. False: nowhere.
bool SnapPlace(double& x, double& y);
// Any tool that works on the plan; the 3D view ends with it.
bool AnyToolInHand();

// The command of a key that the surface answers wherever the keyboard is but in a field, Escape
// and F8 among them; 0 for none.
int SketchShortcut(const platform::KeyEvent& key);

bool ModelPointer(const platform::PointerEvent& event);
void PaintModel(platform::Canvas& canvas);
void RegisterModelView();
void ResetModelView();

}  // namespace morva
