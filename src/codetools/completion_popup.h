// The completion list over the shown editor. It never has the keyboard: the editor keeps it
// and offers the keys.
#pragma once

namespace morva {

// Opens, filters or closes the list for what stands at the caret.
void CompletionUpdate(bool manual);
// Writes the selected row into the text as one undoable edit.
void CompletionAccept();
void HideCompletion();
// The deferred text refresh is over: an open list keeps to its text and lies on top.
void CompletionAfterRefresh();
// The editor scrolled: the list goes with its line, and closes when that leaves the view.
void FollowCompletionScroll();

void RegisterCompletion();
void ResetCompletion();

}  // namespace morva
