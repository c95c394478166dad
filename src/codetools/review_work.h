// The compare review at work: two open programs side by side, read-only.
//
// The stored texts of the tabs are compared, not the live editor; the active one is stored on
// entering and when its code changes behind the review. Entering and leaving change the workspace
// only.
#pragma once

#include "codetools/compare.h"

namespace morva {

// Shows the workspace with the marked programs chosen, and compares the first two of them.
void ReviewEnter();
// Leaves it; nothing where it is not showing.
void ReviewExit();

// The chosen programs of the list become the marks of the tabs.
void ReviewMarkTabs();
// Fills both side lists with the chosen programs and compares the first two.
void ReviewFillSelection();
void ReviewCompare();
// Both panes and the summary from the last comparison, from the top.
void ReviewRender();
void ReviewSwap();
void ReviewToggle(bool CompareOptions::*option);
// To the next change (1) or the previous one (-1), round the ends.
void ReviewStep(int direction);

// A pane was scrolled: the other one follows.
void ReviewLockScroll();
// Every 150 ms: the scroll lock, and tabs, code or the words view that changed beside the review.
void ReviewTick();
void ResetReviewWork();

}  // namespace morva
