#include "plate/canvas/plate_pointer.h"

#include <cmath>
#include <cstdlib>
#include <vector>

#include "app/command_ids.h"
#include "documents/feature_settings.h"
#include "forms/picture.h"
#include "plate/canvas/plate_view.h"
#include "plate/geometry/plate_layout.h"
#include "plate/model/plate.h"
#include "plate/model/plate_record.h"
#include "plate/tools/plate_edit.h"
#include "plate/tools/plate_editor.h"
#include "plate/tools/plate_saving.h"
#include "platform/control.h"
#include "platform/window.h"

namespace morva {

namespace {

using platform::PointerAction;
using platform::PointerButton;
using platform::PointerEvent;
using platform::PointF;

constexpr int kDragFrom = 4;        // pixels; a press that moves farther is a drag
constexpr double kSnapReach = 6;    // pixels to a line that a dragged feature is drawn to
constexpr double kInchStep = 0.05;  // of dragged features
constexpr double kMmStep = 1;
constexpr double kNotch = 1.12;  // zoom of one notch of the wheel

enum class Hold : unsigned char { Nothing, Press, Label, Feature, Pan };

struct Drag {
  Hold hold = Hold::Nothing;
  PointerButton button = PointerButton::None;
  int x = 0;  // of the press; of a pan the last place
  int y = 0;
  int part = kNoPart;
  int label = -1;     // in the picture; once it is dragged, the place that it is stored under
  double shiftX = 0;  // of the label at the press
  double shiftY = 0;
  PointF place;         // of the feature at the press
  PlateFeature former;  // as it was then
};
Drag drag;

int DraggedFeature() { return drag.part - kFirstFeatureTarget; }

void LetGo() {
  const bool held = drag.hold != Hold::Nothing;
  if (drag.hold == Hold::Feature || drag.hold == Hold::Label) HoldPlateSight(false);
  drag = Drag();
  if (held) platform::ReleasePointer();
}

bool Press(const PointerEvent& event) {
  if (event.button == PointerButton::None) return false;
  platform::SetFocusTo(kViewPlatePicture);
  MarkPlateLabel(-1);
  if (drag.hold != Hold::Nothing || plate.unnamed || event.button == PointerButton::Right)
    return event.button != PointerButton::Right;
  drag.button = event.button;
  drag.x = event.x;
  drag.y = event.y;
  drag.hold = Hold::Pan;
  if (event.button == PointerButton::Left) {
    drag.hold = Hold::Press;
    drag.part = PlatePartAt(event.x, event.y);
    drag.label = PlateLabelAt(event.x, event.y);
    if (RectHolds(PlateSectionArea(), event.x, event.y)) drag.part = kDepthSection;
  }
  platform::CapturePointer(kViewPlatePicture);
  return true;
}

void BeginLabel() {
  const PictureLabel& label = DrawnPlate().labels[static_cast<std::size_t>(drag.label)];
  drag.hold = Hold::Label;
  drag.label = label.spec.place;
  drag.shiftX = label.spec.shiftX;
  drag.shiftY = label.spec.shiftY;
  HoldPlateSight(true);
}

void BeginFeature() {
  const int k = DraggedFeature();
  if (plate.features[k].locked) {
    SayOnPlate(kUnlockToMove);
    drag.hold = Hold::Nothing;
    return;
  }
  drag.hold = Hold::Feature;
  drag.former = plate.features[k];
  drag.place = FeaturePlace(NumbersOf(plate), plate.features[k], k);
  HoldPlateSight(true);
  OpenPlateTarget(drag.part, Keyboard::Stays);
}

// What the press took hold of, now that it is a drag.
void BeginDrag() {
  const std::vector<PictureLabel>& labels = DrawnPlate().labels;
  const bool label = drag.label >= 0 && drag.label < static_cast<int>(labels.size()) &&
                     labels[static_cast<std::size_t>(drag.label)].spec.place >= 0;
  if (label) return BeginLabel();
  if (IsFeatureTarget(drag.part)) return BeginFeature();
  drag.hold = Hold::Pan;
}

// The picture may be drawn anew at any time, and with it the indexes of its labels.
void DragLabel(const PointerEvent& event) {
  const platform::Rect area = PlatePictureArea();
  ShiftPlateLabel(PlateLabelOf(drag.label),
                  drag.shiftX + static_cast<double>(event.x - drag.x) / RectWidth(area),
                  drag.shiftY + static_cast<double>(event.y - drag.y) / RectHeight(area));
}

void DragFeature(const PointerEvent& event) {
  const PictureView& view = PlateSight();
  PointF at{drag.place.x + (event.x - drag.x) / view.scaleX,
            drag.place.y - (event.y - drag.y) / view.scaleY};
  if (!event.alt) at = SnappedPlace(DraggedFeature(), at, kSnapReach / view.scaleX);
  MoveFeature(DraggedFeature(), at.x, at.y);
  platform::Repaint(kViewPlatePicture);
}

void Move(const PointerEvent& event) {
  const int dx = event.x - drag.x;
  const int dy = event.y - drag.y;
  if (drag.hold == Hold::Press && (std::abs(dx) > kDragFrom || std::abs(dy) > kDragFrom))
    BeginDrag();
  switch (drag.hold) {
    case Hold::Label:
      return DragLabel(event);
    case Hold::Feature:
      return DragFeature(event);
    case Hold::Pan:
      PanPlate(dx, dy);
      drag.x = event.x;
      drag.y = event.y;
      return;
    default:
      return;
  }
}

void Hover(const PointerEvent& event) {
  if (plate.unnamed) return;
  const int part = PlatePartAt(event.x, event.y);
  const bool label = PlateLabelAt(event.x, event.y) >= 0;
  const bool section = RectHolds(PlateSectionArea(), event.x, event.y);
  MarkPlatePart(part);
  const bool hand = IsFeatureTarget(part) || label || section;
  platform::SetPointerShape(kViewPlatePicture,
                            hand ? platform::PointerShape::Hand : platform::PointerShape::Arrow);
}

// The number boxes of the place take what is typed next, so that a drag ends exactly where wanted.
void EndFeature() {
  const int target = drag.part;
  LetGo();
  PlateEdited();
  OpenPlateTarget(target, Keyboard::ToEditor);
  platform::SetFocusTo(kIdPlateX);
  platform::SelectAllText(kIdPlateX);
}

void EndLabel() {
  const int label = PlateLabelOf(drag.label);
  if (label < 0) return LetGo();
  const LabelSpec spec = DrawnPlate().labels[static_cast<std::size_t>(label)].spec;
  LetGo();
  StorePlateLabel(spec.place, spec.shiftX, spec.shiftY);
}

bool Release(const PointerEvent& event) {
  if (drag.hold == Hold::Nothing || event.button != drag.button) return false;
  if (drag.hold == Hold::Feature) {
    EndFeature();
  } else if (drag.hold == Hold::Label) {
    EndLabel();
  } else {
    const bool click = drag.hold == Hold::Press;
    const int part = drag.part;
    LetGo();
    if (click) OpenPlateTarget(part, Keyboard::ToEditor);
  }
  return true;
}

}  // namespace

bool PlateDragRuns() { return drag.hold == Hold::Feature || drag.hold == Hold::Label; }

bool DropPlateDrag() {
  if (!PlateDragRuns()) return false;
  const bool feature = drag.hold == Hold::Feature;
  if (feature) {
    PutFeature(DraggedFeature(), drag.former);
    PlateEdited();  // an autosave may have stored the place under the pointer
  }
  LetGo();
  if (feature) ShowPlateEditor();
  platform::Repaint(kViewPlatePicture);
  return true;
}

double PlateStep() { return plate.metric ? kMmStep : kInchStep; }

PointF SnappedPlace(int feature, PointF at, double reach) {
  const double step = PlateStep();
  PointF place{std::round(at.x / step) * step, std::round(at.y / step) * step};
  const PlateNumbers numbers = NumbersOf(plate);
  double nearX = reach;
  double nearY = reach;
  const auto offer = [&](PointF line) {
    if (std::fabs(line.x - at.x) < nearX) nearX = std::fabs(line.x - at.x), place.x = line.x;
    if (std::fabs(line.y - at.y) < nearY) nearY = std::fabs(line.y - at.y), place.y = line.y;
  };
  offer({0, 0});
  for (int k = 0; k < FeatureCount(numbers); ++k) {
    if (k == feature || plate.features[k].deleted) continue;
    offer(FeaturePlace(numbers, plate.features[k], k));
  }
  return place;
}

void StorePlateLabel(int place, double shiftX, double shiftY) {
  static FeatureSettings record;
  SetDimensionLabel(place, shiftX, shiftY);
  platform::Repaint(kViewPlatePicture);
  if (SavePlateSettings(record)) return PlateEdited();
  // It must not keep the rest of the plate from being saved.
  SetLabelExpendable(place);
  SayOnPlate(u"Dimension layout could not be saved: plate metadata is full.");
}

bool PlatePointer(const PointerEvent& event) {
  switch (event.action) {
    case PointerAction::Press:
    case PointerAction::DoubleClick:
      return Press(event);
    case PointerAction::Move:
      if (drag.hold == Hold::Nothing) {
        Hover(event);
      } else {
        Move(event);
      }
      return true;
    case PointerAction::Release:
      return Release(event);
    case PointerAction::Wheel:
      ZoomPlate(std::pow(kNotch, event.wheel), event.x, event.y);
      return true;
    case PointerAction::Leave:
      MarkPlatePart(kNoPart);
      return true;
    case PointerAction::Lost:
      if (!DropPlateDrag()) LetGo();
      return true;
  }
  return false;
}

void ResetPlatePointer() { drag = Drag(); }

}  // namespace morva
