#include "cad/canvas.h"

namespace morva {

CanvasView canvasView;

double CanvasScale(int) { return 1; }
platform::Point ToCanvas(double, double) { return {}; }
void FromCanvas(int, int, double&, double&) {}
double CanvasTolerance(double) { return 0; }
int HitObject(double, double) { return -1; }
int HitEdge(double, double) { return -1; }
void CanvasFit() {}
void CanvasReset() {}
void PaintCanvas(platform::Canvas&) {}
bool CanvasPointer(const platform::PointerEvent&) { return false; }
bool CanvasKey(const platform::KeyEvent&) { return false; }
void CanvasTimer(int) {}
void EnterModelView() {}
void LeaveModelView() {}
void ShowCursorText(double, double) {}
void RegisterCanvas() {}
void ResetCanvas() { canvasView = CanvasView(); }

}  // namespace morva
