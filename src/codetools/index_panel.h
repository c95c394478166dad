// The code index: the searched list of words in the left panel, and what it inserts.
//
// The words themselves and every text shown for them come from the library's code index.
#pragma once

#include "app/mode_table.h"

namespace morva {

extern const ModeRow kCodeIndexMode;

// The list anew from category and search, its first row selected.
void RebuildCodeList();
// The selected row's words into the detail pane, its code into the insertion line.
void ShowCodeSelection();
// The selected row's code and one blank at the cursor. Nothing without a selection.
void InsertSelectedCode();
// Whether a key of the panel stands for what the list shows now.
bool IsIndexKeyOn(int id);

void RegisterIndexPanel();
void ResetIndexPanel();

}  // namespace morva
