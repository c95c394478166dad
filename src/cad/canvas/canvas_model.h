// The 3D view of the canvas: a wireframe of the sketch with a visual thickness.
//
// It changes nothing but `thickness`, which is saved with the drawing and never reaches the
// code. Only the view cube answers the pointer here.
#pragma once

#include "platform/canvas.h"
#include "platform/events.h"

namespace morva {

void EnterModelView();  // reads and checks the thickness field
bool ModelPointer(const platform::PointerEvent& event);
void PaintModel(platform::Canvas& canvas);
void CanvasTimer(int timer);  // a step of the 3D view's turning

void RegisterModelView();
void ResetModelView();

}  // namespace morva
