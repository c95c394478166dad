#include "plate/canvas/plate_view.h"

#include <algorithm>
#include <vector>

#include "app/command_ids.h"
#include "plate/geometry/plate_layout.h"
#include "plate/geometry/plate_picture.h"
#include "plate/model/plate.h"
#include "plate/tools/plate_editor.h"
#include "platform/window.h"

namespace morva {

namespace {

using platform::Rect;

constexpr int kTitleHeight = 26;  // pixels
constexpr int kHintHeight = 22;
constexpr int kSectionHeight = 84;
constexpr int kLeastForSection = 380;  // of the preview's height
constexpr double kMostZoom = 64;
constexpr double kLeastZoom = 0.5;
constexpr double kHoverGap = 6;  // pixels between a feature and the box about it

// What the picture was drawn from.
struct Drawn {
  bool known = false;
  std::uint32_t changes = 0;
  int target = -1;
  PlateMarks marks;
};

struct Sight {
  double zoom = 1;
  double panX = 0;  // pixels
  double panY = 0;
  bool held = false;
  PictureView view;
};

Picture picture;
Drawn drawn;
Sight sight;
PlateMarks marks;

bool IsCurrent() {
  return drawn.known && drawn.changes == plate.changes && drawn.target == plateEditor.target &&
         drawn.marks.hover == marks.hover && drawn.marks.label == marks.label;
}

PictureView Fitted() {
  PictureView view = FitPicture(picture, PlatePictureArea());
  const double middleX = (view.area.left + view.area.right) / 2.0;
  const double middleY = (view.area.top + view.area.bottom) / 2.0;
  view.originX = middleX + (view.originX - middleX) * sight.zoom + sight.panX;
  view.originY = middleY + (view.originY - middleY) * sight.zoom + sight.panY;
  view.scaleX *= sight.zoom;
  view.scaleY *= sight.zoom;
  return view;
}

// Amber for what is under edit or picked.
void MarkLabels() {
  for (PictureLabel& label : picture.labels) {
    const bool edited = plateEditor.target >= 0 && label.spec.part == plateEditor.target &&
                        !IsFeatureTarget(plateEditor.target);
    const bool picked = marks.label >= 0 && label.spec.place == marks.label;
    if (edited || picked) label.spec.ink = Ink::Selected;
  }
}

// A box about the feature under the pointer.
void MarkHover() {
  if (!IsFeatureTarget(marks.hover) || !(sight.view.scaleX > 0)) return;
  const int k = marks.hover - kFirstFeatureTarget;
  const PlateNumbers numbers = NumbersOf(plate);
  if (k >= FeatureCount(numbers)) return;
  const platform::PointF at = FeaturePlace(numbers, plate.features[k], k);
  const platform::PointF reach = FeatureReach(numbers, plate.features[k], k);
  const double gap = kHoverGap / sight.view.scaleX;
  NextLayer(picture);
  AddBox(picture,
         {.x = at.x, .y = at.y, .width = 2 * (reach.x + gap), .height = 2 * (reach.y + gap)},
         Ink::Dimension, marks.hover);
}

void Draw() {
  DrawPlate(plate, {.selected = CurrentFeature()}, picture);
  MarkLabels();
  if (!sight.held) sight.view = Fitted();
  MarkHover();
  drawn = {true, plate.changes, plateEditor.target, marks};
}

Rect Client() { return platform::ClientArea(kViewPlatePicture); }

}  // namespace

Rect PlatePictureArea() {
  Rect area = Client();
  area.top += kTitleHeight;
  const Rect section = PlateSectionArea();
  area.bottom = RectHeight(section) > 0 ? section.top : area.bottom - kHintHeight;
  return area;
}

Rect PlateSectionArea() {
  Rect area = Client();
  if (RectHeight(area) < kLeastForSection) return {};
  area.bottom -= kHintHeight;
  area.top = area.bottom - kSectionHeight;
  return area;
}

const Picture& DrawnPlate() {
  if (!IsCurrent()) Draw();
  return picture;
}

void PaintPlatePicture(platform::Canvas& canvas) {
  DrawnPlate();
  PaintPicture(canvas, picture, PlateSight());
}

int PlatePartAt(int x, int y) {
  DrawnPlate();
  return PartAt(picture, PlateSight(), x, y);
}

int PlateLabelAt(int x, int y) {
  DrawnPlate();
  return LabelAt(picture, PlateSight(), x, y);
}

int PlateLabelOf(int place) {
  const std::vector<PictureLabel>& labels = DrawnPlate().labels;
  const auto found = std::ranges::find_if(
      labels, [place](const PictureLabel& label) { return label.spec.place == place; });
  return place < 0 || found == labels.end() ? -1 : static_cast<int>(found - labels.begin());
}

void ShiftPlateLabel(int label, double shiftX, double shiftY) {
  MoveLabel(picture, label, shiftX, shiftY);
  platform::Repaint(kViewPlatePicture);
}

const PictureView& PlateSight() {
  DrawnPlate();
  if (!SameRect(PlatePictureArea(), sight.view.area)) sight.view = Fitted();
  return sight.view;
}

void HoldPlateSight(bool hold) {
  if (hold) PlateSight();
  if (!hold) drawn.known = false;
  sight.held = hold;
}

const PlateMarks& MarksOnPlate() { return marks; }

void MarkPlatePart(int part) {
  if (marks.hover == part) return;
  marks.hover = part;
  platform::Repaint(kViewPlatePicture);
}

void MarkPlateLabel(int place) {
  marks.label = place;
  platform::Repaint(kViewPlatePicture);
}

void FitPlate() {
  sight.zoom = 1;
  sight.panX = sight.panY = 0;
  sight.view = Fitted();
  platform::Repaint(kViewPlatePicture);
}

void ZoomPlate(double factor, int x, int y) {
  const double zoom = std::clamp(sight.zoom * factor, kLeastZoom, kMostZoom);
  const double by = zoom / sight.zoom;
  const Rect area = PlatePictureArea();
  const double middleX = (area.left + area.right) / 2.0;
  const double middleY = (area.top + area.bottom) / 2.0;
  sight.panX = (x - middleX) * (1 - by) + sight.panX * by;
  sight.panY = (y - middleY) * (1 - by) + sight.panY * by;
  sight.zoom = zoom;
  DrawnPlate();
  sight.view = Fitted();
  platform::Repaint(kViewPlatePicture);
}

void PanPlate(int dx, int dy) {
  sight.panX += dx;
  sight.panY += dy;
  DrawnPlate();
  sight.view = Fitted();
  platform::Repaint(kViewPlatePicture);
}

void ResetPlateView() {
  drawn = Drawn();
  sight = Sight();
  marks = PlateMarks();
}

}  // namespace morva
