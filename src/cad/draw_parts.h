// What the files of the draw tools share; not for other rooms.
#pragma once

#include "library/sketch_object.h"
#include "platform/events.h"

namespace morva {

// Push, append, select, refresh, log. False, nothing changed: 96 objects, or beyond the limits.
bool AppendDrawn(const SketchObject& object, const char16_t* logged);
// Tools, picks and measure state as at start, boxes hidden; the panel is not redrawn. The revolve
// pivot and the sides of the next polygon stay, as their fields do, and, when asked, the marks of
// the multi-selection.
void StopTools(bool keepMarks);
// Pan too, and the status line tells of selecting where a tool was in hand.
void GiveUpTools(bool keepMarks);
// Pan and the 3D view are given up, before a tool that works on the plan.
void ShowPlan();
// The panel, the canvas and the keys that show which tool is on.
void ShowToolChange();
// The canvas has the keyboard, when it can be seen.
void FocusCanvas();

// A click and a move of a running method, in canvas pixels.
void ConstructionClick(const platform::PointerEvent& event);
void ConstructionMove(const platform::PointerEvent& event);
// What a method says when it begins.
const char16_t* MethodPrompt(int command);
// The points are given back and the preview ends; the method itself runs on.
void RestartMethod();

// Sides of the next polygon from the panel's field: 3 to 64, 0 when it holds something else.
int PolygonSidesField();
// CreatePolygon without a word.
bool MakePolygon(int sides, double radius, double centreX, double centreY, double startAngle);
inline constexpr int kLeastSides = 3;
inline constexpr const char16_t* kPolygonRefused =
    u"Use 3-64 sides, positive radius, and enough room in the sketch.";
void CreatePolygonFromPanel();

// The floating number boxes. Their caption by the method; their numbers from the preview; shown
// beside a canvas pixel; hidden.
void CaptionSizeBoxes();
void FillSizeBoxes();
void OpenSizeBoxes(int canvasX, int canvasY);
// Anew for a canvas of another size; nothing while they are hidden.
void PlaceSizeBoxes();
void FocusSizeBoxes();
void HideSizeBoxes();

// Rest of the pointer on a tool key. Where the pointer is, every 150 ms; 0 for nothing of ours.
void FlyoutPointerOver(int under);
void StopFlyoutRest();
// A tool key was pressed, by the pointer or the keyboard: the one under the pointer opens nothing
// until the pointer has left it.
void KeepFlyoutShut();
void RegisterFlyouts();
void ResetFlyouts();

}  // namespace morva
