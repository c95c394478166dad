// The small box that goes to a line by its number.
#pragma once

namespace morva {

// Asks for a line of the editor that is shown, and puts the caret at its front, in the middle of
// the editor. Words in the box say what is wrong with a number.
void GoToLine();

void RegisterGoToLine();

}  // namespace morva
