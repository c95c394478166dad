// The pointer on the plate's preview: hover, clicks that open editors, drags of labels and of
// features, zoom and pan.
#pragma once

#include "platform/events.h"
#include "platform/geometry.h"

namespace morva {

inline constexpr char16_t kUnlockToMove[] = u"Unlock the feature before moving it.";

bool PlatePointer(const platform::PointerEvent& event);
// A feature or a label follows the pointer.
bool PlateDragRuns();
// Gives the drag up: what was moved stands where it stood. False: there was none.
bool DropPlateDrag();

// The place for a feature near `at`, in the plate's unit: on the line of another feature or of the
// plate's middle where one lies within `reach`, else on the step of the unit.
platform::PointF SnappedPlace(int feature, platform::PointF at, double reach);
double PlateStep();  // of that grid, in the plate's unit

// Keeps the shift of a label, as fractions of the picture's area, where the record has room for it.
void StorePlateLabel(int place, double shiftX, double shiftY);

void ResetPlatePointer();

}  // namespace morva
