// The editors of the plate workspace: which one is up, what it shows and what its keys do.
//
// One is up at a time, below the list of features. What is typed into it counts with Apply alone.
#pragma once

#include "plate/tools/plate_state.h"
#include "platform/geometry.h"

namespace morva {

// The feature under edit, -1 for none.
int CurrentFeature();

enum class Keyboard : unsigned char { Stays, ToEditor };
// Brings up the editor of a section or feature. Nothing for a deleted feature, one that the layout
// has not, and for a plate without a name.
void OpenPlateTarget(int target, Keyboard keyboard);
// Brings the name box up, with the keyboard.
void OpenPlateNaming(bool creating);
// The editor goes without taking what was typed.
void ClosePlateEditor();
// The editor's texts anew from the plate; what was typed is lost.
void ShowPlateEditor();
// The plate changed beside the editor: texts that the user has not touched are shown anew, and the
// editor of a feature that is gone goes.
void FollowPlateInEditor();
// In pixels of the workspace; the editor lies there from now on.
void PlacePlateEditor(const platform::Rect& area);

void RegisterPlateEditor();
void ResetPlateEditor();

}  // namespace morva
