// What drawing and editing share: what they tell, parts, marks.
#pragma once

#include "cad/model/sketch.h"

namespace morva {

// The status of an edit that would pass that bound.
void TellSketchLimit();
// Gives an object's part the other value of the object's flag: one undo step and the log line.
// Nothing without such an object.
void TogglePartFlag(ObjectFlag flag, int index, const char16_t* logged);
inline constexpr const char16_t* kVisibilityChanged = u"Visibility changed";
// Marks of what lies under the pointer, which hold indices, given up after objects moved up.
void ForgetIndices();

}  // namespace morva
