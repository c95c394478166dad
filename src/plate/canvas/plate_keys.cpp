#include "plate/canvas/plate_keys.h"

#include <cmath>

#include "app/command_ids.h"
#include "app/router.h"
#include "forms/picture.h"
#include "plate/canvas/plate_pointer.h"
#include "plate/canvas/plate_view.h"
#include "plate/geometry/plate_layout.h"
#include "plate/model/plate.h"
#include "plate/tools/plate_edit.h"
#include "plate/tools/plate_editor.h"
#include "plate/tools/plate_saving.h"
#include "platform/canvas.h"
#include "platform/window.h"
#include "text/codetext.h"

namespace morva {

namespace {

using platform::KeyEvent;
using platform::PointF;

constexpr int kLabelPixels = 8;  // a key's step of a label, of the view
constexpr int kPanPixels = 20;
constexpr int kLargeStep = 10;  // times, with Shift
constexpr double kKeyZoom = 1.25;

// The pixels to the right and down that an arrow means; false for another key.
bool ArrowOf(int key, int& right, int& down) {
  right = (key == platform::kKeyRight ? 1 : 0) - (key == platform::kKeyLeft ? 1 : 0);
  down = (key == platform::kKeyDown ? 1 : 0) - (key == platform::kKeyUp ? 1 : 0);
  return right != 0 || down != 0;
}

// The next feature that is there, or the one before; around at the ends.
void StepFeature(int by) {
  const int count = FeatureCount(NumbersOf(plate));
  int k = CurrentFeature();
  if (k < 0) k = by > 0 ? -1 : count;
  for (int tries = 0; tries < count; ++tries) {
    k = (k + by + count) % count;
    if (plate.features[k].deleted) continue;
    OpenPlateTarget(FeatureTarget(k), Keyboard::Stays);
    return;
  }
}

const PictureLabel* PickedLabel() {
  const int label = PlateLabelOf(MarksOnPlate().label);
  return label < 0 ? nullptr : &DrawnPlate().labels[static_cast<std::size_t>(label)];
}

// The label behind the picked one in the order of the picture; none behind the last.
void PickNextLabel() {
  const int place = MarksOnPlate().label;
  bool passed = place < 0;
  int next = -1;
  for (const PictureLabel& label : DrawnPlate().labels) {
    if (label.spec.place < 0) continue;
    if (passed && next < 0) next = label.spec.place;
    if (label.spec.place == place) passed = true;
  }
  MarkPlateLabel(next);
  SayOnPlate(next < 0 ? u"No label is picked."
                      : u"Arrows move the amber label, Enter edits its number.");
}

void MovePicked(const PictureLabel& label, int right, int down) {
  const platform::Rect area = PlatePictureArea();
  StorePlateLabel(label.spec.place,
                  label.spec.shiftX + static_cast<double>(right * kLabelPixels) / RectWidth(area),
                  label.spec.shiftY + static_cast<double>(down * kLabelPixels) / RectHeight(area));
}

void NudgeFeature(int k, int right, int up, bool large) {
  if (plate.features[k].locked) return SayOnPlate(kUnlockToMove);
  const PointF at = FeaturePlace(NumbersOf(plate), plate.features[k], k);
  const double step = PlateStep() * (large ? kLargeStep : 1);
  if (!MoveFeature(k, at.x + right * step, at.y + up * step)) return;
  ShowPlateEditor();
  PlateEdited();
}

void OnArrow(const KeyEvent& key, int right, int down) {
  const int k = CurrentFeature();
  const PictureLabel* label = PickedLabel();
  if (key.ctrl || (k < 0 && !label)) {
    PanPlate(-right * kPanPixels, -down * kPanPixels);
  } else if (label) {
    MovePicked(*label, right, down);
  } else {
    NudgeFeature(k, right, -down, key.shift);
  }
  platform::Repaint(kViewPlatePicture);
}

void ZoomByKey(double factor) {
  const platform::Rect area = PlatePictureArea();
  ZoomPlate(factor, (area.left + area.right) / 2, (area.top + area.bottom) / 2);
}

void OpenPicked() {
  const PictureLabel* label = PickedLabel();
  const int target = label ? label->spec.part : plateEditor.target;
  OpenPlateTarget(target >= 0 ? target : kDepthSection, Keyboard::ToEditor);
}

bool Escape() {
  if (DropPlateDrag()) return true;
  if (MarksOnPlate().label >= 0) {
    MarkPlateLabel(-1);
  } else if (plateEditor.page != PlatePage::Nothing) {
    ClosePlateEditor();
  } else {
    return false;
  }
  return true;
}

bool OnKey(int key) {
  switch (key) {
    case platform::kKeyPageDown:
      StepFeature(1);
      return true;
    case platform::kKeyPageUp:
      StepFeature(-1);
      return true;
    case 'D':
      PickNextLabel();
      return true;
    case platform::kKeyEnter:
      OpenPicked();
      return true;
    case platform::kKeyDelete:
      RouteCommand(kIdPlateDelete, platform::kNotifyClick);
      return true;
    case platform::kKeyHome:
      FitPlate();
      return true;
    case '+':
    case '=':
      ZoomByKey(kKeyZoom);
      return true;
    case '-':
      ZoomByKey(1 / kKeyZoom);
      return true;
    default:
      return false;
  }
}

}  // namespace

bool PlateViewKey(const KeyEvent& key) {
  if (key.key == platform::kKeyEscape) return Escape();
  if (PlateDragRuns()) return true;  // what is dragged must stay what is picked
  if (plate.unnamed || key.alt) return false;
  int right = 0;
  int down = 0;
  if (ArrowOf(key.key, right, down)) {
    OnArrow(key, right, down);
    return true;
  }
  return !key.ctrl && OnKey(key.key);
}

std::u16string PlateViewWords() {
  if (plate.unnamed) return u"No plate yet";
  const PlateNumbers numbers = NumbersOf(plate);
  std::u16string words = plate.name;
  words += u", " + IntegerText(FeatureCount(numbers)) + u" features";
  const int k = CurrentFeature();
  if (k < 0) return words;
  const PointF at = FeaturePlace(numbers, plate.features[k], k);
  words += u", selected " + FeatureRowWords(plate, k);
  words += u", X " + DimensionText(at.x, plate.metric) + u" Y " + DimensionText(at.y, plate.metric);
  return words;
}

}  // namespace morva
