// The snap search: origin, object points, edges, intersections, grid, in this order.
#pragma once

#include "platform/events.h"

namespace morva {

// Moves a position to the best target nearby and sets tools.snapHit and snapAtCentre. Nothing
// with snap off or `bypass` (Alt) held. `excludeObject` and its group are no targets; -1 for
// none. With Trim active the position stays where it is.
void SnapPoint(double& x, double& y, int excludeObject, bool bypass);
// The drawing position of an event after the snap search, with no object left out.
void SnappedPosition(const platform::PointerEvent& event, double& x, double& y);

double SnapGridStep();  // drawing units

void ResetSnap();  // forgets what the search keeps of each object

}  // namespace morva
