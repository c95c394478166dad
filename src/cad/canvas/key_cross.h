// The cross that the keys move over the drawing: where it stands and how far a key takes it.
//
// It stands at a place of the drawing, not of the screen, and the view follows it. A unit that the
// user switches takes it away.
#pragma once

#include "platform/geometry.h"

namespace morva {

// To the next line of the drawn grid, to the tenth one, or to the next of the finer grid that
// clicks snap to: 0.05 inch or 1 mm, and tenths of it where one of these is wider than 40 pixels.
enum class CrossStep { Grid, Far, Fine };

// False: it stands nowhere.
bool KeyCross(double& x, double& y);
// Its pixel. False: it stands nowhere, or the user has shifted the view away from it.
bool KeyCrossPixel(platform::Point& at);
// At the place that was pointed at last, snapped as a click there would be, else in the middle of
// the view.
void BeginKeyCross();
// One that is not in the view begins anew.
void StepKeyCross(int right, int up, CrossStep step);
bool DropKeyCross();  // false: it stood nowhere

// Where the pointer is over the drawing, and that it left.
void RememberPointed(double x, double y);
void ForgetPointed();
void ResetKeyCross();

}  // namespace morva
