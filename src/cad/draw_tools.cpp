#include "cad/draw_tools.h"

#include "cad/sketch.h"

namespace morva {

void StartMethod(int) {}
void StartDragTool(int) {}
void CancelTools() {}
bool DrawToolActive() { return false; }
bool DrawToolPress(const platform::PointerEvent&) { return false; }
bool DrawToolMove(const platform::PointerEvent&) { return false; }
bool DrawToolRelease(const platform::PointerEvent&) { return false; }
void DrawToolCaptureLost() {}
bool DrawToolKey(const platform::KeyEvent&) { return false; }
bool SizeBoxKey(const platform::KeyEvent&) { return false; }
bool CommitTypedSize(bool) { return false; }
void SnapPoint(double&, double&, int, bool) {}
bool CreatePolygon(int, double, double, double, double) { return false; }
SketchObject ObjectFromDrag(int, double, double, double, double) { return SketchObject(); }
bool ObjectFromPoints(int, const double*, const double*, SketchObject&) { return false; }
void ShowFlyout(int) {}
void RegisterDrawTools() {}
void ResetDrawTools() {}

}  // namespace morva
