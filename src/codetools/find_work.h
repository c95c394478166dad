// What the find pane's keys do to the program; the pane itself is find_pane.
#pragma once

#include <string>

namespace morva {

// Searches on from behind the last match, once round the program.
void NextMatch();
// Counts (`commit` false) or makes (`commit` true, one undoable edit) the queued replacements.
void ApplyRules(bool commit);
// Asks at every occurrence; replaces every occurrence after one question.
void PromptEach();
void DoAll();
// One step back in the program, whichever change it was.
void UndoInCode();

// The fields as they are used: at most 255 units each.
std::u16string FindField();
std::u16string ReplaceField();
void ResetFindWork();

}  // namespace morva
