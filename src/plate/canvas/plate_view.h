// What stands on the plate's preview: the picture, made anew when the plate changes, and how far it
// is zoomed and moved.
#pragma once

#include "forms/picture.h"
#include "platform/canvas.h"
#include "platform/geometry.h"

namespace morva {

// What the user points at or has picked by the keyboard.
struct PlateMarks {
  int hover = kNoPart;  // part under the pointer
  int label = -1;       // place number of the label that the keyboard moves, -1 for none
};

// Pixels of the preview that the picture takes; the rest is for title, section and hint.
platform::Rect PlatePictureArea();
// Pixels of the section below it, empty where the preview is too low for one.
platform::Rect PlateSectionArea();

// The picture as the plate stands.
const Picture& DrawnPlate();
void PaintPlatePicture(platform::Canvas& canvas);
// The part and the label at a pixel of the preview, kNoPart and -1 for none.
int PlatePartAt(int x, int y);
int PlateLabelAt(int x, int y);
// The index in the picture of the label that is stored under this place, -1 for none.
int PlateLabelOf(int place);
// The shift of a label while it is dragged; the plate keeps what it has.
void ShiftPlateLabel(int label, double shiftX, double shiftY);
// How it lies on the preview.
const PictureView& PlateSight();
// While something is dragged the picture stays where it is, whatever its bounds are.
void HoldPlateSight(bool hold);

const PlateMarks& MarksOnPlate();
void MarkPlatePart(int part);
void MarkPlateLabel(int place);

void FitPlate();
// By a factor about a pixel of the preview, which stays where it is.
void ZoomPlate(double factor, int x, int y);
void PanPlate(int dx, int dy);
// Another plate came up, at its usual size.
void ResetPlateView();

}  // namespace morva
