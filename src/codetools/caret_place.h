// Where the caret is: its line and column below the editor, and its line in the gutter.
#pragma once

namespace morva {

// Of the editor that is shown. Nothing is drawn anew while the line stays the same.
void ShowCaretPlace();
// The line of the caret in the editor that is shown, from 0.
int CaretLine();

void ResetCaretPlace();

}  // namespace morva
