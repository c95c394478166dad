// The panels "SCALE SELECTED OBJECT" and "REVOLVE / ROTATE (2D)".
#pragma once

namespace morva {

// The pivot of Revolve, in drawing units, and its two fields.
void SetRevolvePivot(double x, double y);
void RegisterScaleRevolve();

}  // namespace morva
