// A drawing's lines as the centerline of the custom strategy.
#pragma once

#include <span>

#include "skim/model/plan.h"

namespace morva {

// The visible lines of the drawing in their order, times `factor`, which takes the drawing's unit
// into the plan's. Work points and axes are passed over. `hidden` has a flag for each object, not 0
// where it is hidden. Null: `line` holds them. Else `line` stays, and the words say why.
const char16_t* TakeCenterline(std::span<const SketchObject> objects, const unsigned char* hidden,
                               double factor, SkimCenterline& line);
// Whether the cutter takes the same ways in the same order, to a millionth of the unit.
bool IsSameCenterline(const SkimCenterline& a, const SkimCenterline& b);

}  // namespace morva
