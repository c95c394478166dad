// What drawing and editing share: objects added, selected and deleted, parts and their flags.
#pragma once

#include "cad/model/sketch.h"

namespace morva {

// One drawn object: push, append, select, refresh, log. False, nothing changed: 96 objects, or
// beyond the limits.
bool AppendDrawn(const SketchObject& object, const char16_t* logged);
// The object becomes the selection, the marks it and its group; fields, status and canvas
// follow. -1 for none.
void SelectSketchObject(int index);
// The selected part and all marked objects but the locked ones; the last object is selected.
void DeleteGeometry();
// Right and up by the offset that keeps a copy apart from its source: 0.2 inch or 5 mm.
void ShiftByOffset(SketchObject& object);
// The status of an edit that WithinSketchLimit refuses.
void TellSketchLimit();
// Whether so many more objects fit. If not, the status says so.
bool HasSketchRoom(int more);
// Gives an object's part the other value of the object's flag: one undo step and the log line.
// Nothing without such an object.
void TogglePartFlag(ObjectFlag flag, int index, const char16_t* logged);
inline constexpr const char16_t* kVisibilityChanged = u"Visibility changed";
// Marks of what lies under the pointer, which hold indices, given up after objects moved up.
void ForgetIndices();

}  // namespace morva
