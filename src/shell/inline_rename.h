// The feature list under the hand: rename over the row, hot spots of a row, keys.
//
// What is done to a feature lives with the feature operations; this is only how a click or a
// key in the list asks for it.
#pragma once

namespace morva {

// The name box over the selected row; nothing without a selected row or for a locked feature.
void StartInlineRename();
bool IsInlineRenaming();
// The box goes where its row went; a row out of view takes the name as it stands.
void FollowRenamedRow();

void RegisterInlineRename();
void ResetInlineRename();

}  // namespace morva
