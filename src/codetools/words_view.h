// The command words view: a second editor in the code editor's place, kept in step both ways.
//
// The code editor stays the truth; the view's text is derived and lives only while shown.
#pragma once

namespace morva {

// Switches between the two editors; nothing when already so.
void SetWordsView(bool on);
// The view anew from the code, and the code from the view; each keeps the caret's line.
void SyncWordsFromCode();
void SyncCodeFromWords();

void RegisterWordsView();

}  // namespace morva
