// The caret behind an Undo of code that was put in at a split.
//
// A split replaces the rest of the user code, and an Undo leaves the caret behind the text that it
// gives back: at the end of that code, far from where the work was.
#pragma once

#include <string_view>

#include "platform/editor.h"

namespace morva {

// `range` of the program on the stage, whose text this is, is to be replaced; it begins where the
// user code is parted.
void NoteSplit(std::u16string_view text, platform::EditorRange range);
// When a change has settled: where it took the split back, the caret goes to its place, once.
void ReturnBehindUndo();
void ResetSplitUndo();

}  // namespace morva
