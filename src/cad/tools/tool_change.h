// Tools taken in hand and given up: what all of them do when they begin and when they end.
#pragma once

namespace morva {

inline constexpr const char16_t* kSelecting = u"SELECT mode: click geometry on the canvas.";

// Ends the tools; the panel is not redrawn.
// Cleared: tool, method, picks, previews, the edge under the pointer, panel mode, dimension and
// measure mode, the drag of a creation, the size boxes.
// What stays: the revolve pivot and the sides of the next polygon, as their fields do.
// The marks of the multi-selection stay only with `keepMarks`.
void StopTools(bool keepMarks);
// Also ends Pan. If a tool was in hand, the status line says that clicks select now.
void GiveUpTools(bool keepMarks);
// Every tool, pick, preview and panel given up, floating boxes hidden; the focus on the canvas.
void CancelTools();
// The Escape key gives up the tool in hand. False: there is none.
bool EscapeTool();
void EndDrag();  // of a drag creation, without an object
void HideSizeBoxes();

// Pan and the 3D view are given up, before a tool that works on the plan.
void ShowPlan();
// Gives up the tools in hand, picks and marks, but for the revolve pivot, and shows a panel with
// `field` ready to type over.
void OpenToolPanel(int panelMode, int field);
// The panel, the canvas and the keys that show which tool is on.
void ShowToolChange();
// The canvas has the keyboard, when it can be seen.
void FocusCanvas();

// What a method says when it begins.
const char16_t* MethodPrompt(int command);
// The points are given back and the preview ends; the method itself runs on.
void RestartMethod();

}  // namespace morva
