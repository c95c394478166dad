// The find pane: Next Match, the queue of replacement rules, PROMPT EACH and DO ALL.
#pragma once

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

void RegisterFindPane();
void ResetFindPane();

}  // namespace morva
