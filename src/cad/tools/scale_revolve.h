// The panels "SCALE SELECTED OBJECT" and "REVOLVE / ROTATE (2D)".
#pragma once

namespace morva {

// The selected part about the selected object's anchor; reads the panel's factor.
void ScaleGeometry();
// Turns the selected object alone about tools.pivotX and pivotY; copies 0 moves it, else copy k
// is turned by k times the angle, in degrees. False: refused, the status says why.
bool Revolve(double angle, int copies);
// The pivot of Revolve, in drawing units, and its two fields.
void SetRevolvePivot(double x, double y);
void RegisterScaleRevolve();

}  // namespace morva
