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

void Pan(int right, int down) { PanPlate(-right * kPanPixels, -down * kPanPixels); }

void Move(int right, int down, bool large) {
  const int k = CurrentFeature();
  if (const PictureLabel* label = PickedLabel()) {
    MovePicked(*label, right, down);
  } else if (k >= 0) {
    NudgeFeature(k, right, -down, large);
  } else {
    Pan(right, down);
  }
}

enum class Arrow { Move, MoveFar, Pan };
// Arrows to the right and down.
template <Arrow arrow, int right, int down>
bool ByArrow() {
  if (arrow == Arrow::Pan) {
    Pan(right, down);
  } else {
    Move(right, down, arrow == Arrow::MoveFar);
  }
  platform::Repaint(kViewPlatePicture);
  return true;
}

void ZoomByKey(double factor) {
  const platform::Rect area = PlatePictureArea();
  ZoomPlate(factor, (area.left + area.right) / 2, (area.top + area.bottom) / 2);
}

bool ZoomIn() {
  ZoomByKey(kKeyZoom);
  return true;
}

bool ZoomOut() {
  ZoomByKey(1 / kKeyZoom);
  return true;
}

bool Fit() {
  FitPlate();
  return true;
}

template <int by>
bool Step() {
  StepFeature(by);
  return true;
}

bool PickLabel() {
  PickNextLabel();
  return true;
}

bool DeletePicked() {
  RouteCommand(kIdPlateDelete, platform::kNotifyClick);
  return true;
}

bool OpenPicked() {
  const PictureLabel* label = PickedLabel();
  const int target = label ? label->spec.part : plateEditor.target;
  OpenPlateTarget(target >= 0 ? target : kDepthSection, Keyboard::ToEditor);
  return true;
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

constexpr ChordPlace kPlateChords{u"picture of the plate"};
// clang-format off
constexpr KeyRow kKeys[] = {
    {PlainKey(kPlateChords, platform::kKeyLeft), u"Move what is picked to the left", ByArrow<Arrow::Move, -1, 0>},
    {PlainKey(kPlateChords, platform::kKeyRight), u"Move what is picked to the right", ByArrow<Arrow::Move, 1, 0>},
    {PlainKey(kPlateChords, platform::kKeyUp), u"Move what is picked up", ByArrow<Arrow::Move, 0, -1>},
    {PlainKey(kPlateChords, platform::kKeyDown), u"Move what is picked down", ByArrow<Arrow::Move, 0, 1>},
    {ShiftKey(kPlateChords, platform::kKeyLeft), u"Move it far to the left", ByArrow<Arrow::MoveFar, -1, 0>},
    {ShiftKey(kPlateChords, platform::kKeyRight), u"Move it far to the right", ByArrow<Arrow::MoveFar, 1, 0>},
    {ShiftKey(kPlateChords, platform::kKeyUp), u"Move it far up", ByArrow<Arrow::MoveFar, 0, -1>},
    {ShiftKey(kPlateChords, platform::kKeyDown), u"Move it far down", ByArrow<Arrow::MoveFar, 0, 1>},
    {CtrlKey(kPlateChords, platform::kKeyLeft), u"Look further left", ByArrow<Arrow::Pan, -1, 0>},
    {CtrlKey(kPlateChords, platform::kKeyRight), u"Look further right", ByArrow<Arrow::Pan, 1, 0>},
    {CtrlKey(kPlateChords, platform::kKeyUp), u"Look further up", ByArrow<Arrow::Pan, 0, -1>},
    {CtrlKey(kPlateChords, platform::kKeyDown), u"Look further down", ByArrow<Arrow::Pan, 0, 1>},
    {PlainKey(kPlateChords, platform::kKeyPageDown), u"Pick the next feature", Step<1>},
    {PlainKey(kPlateChords, platform::kKeyPageUp), u"Pick the feature before", Step<-1>},
    {PlainKey(kPlateChords, 'D'), u"Pick the next label", PickLabel},
    {PlainKey(kPlateChords, platform::kKeyEnter), u"Edit what is picked", OpenPicked},
    {PlainKey(kPlateChords, platform::kKeyDelete), u"Delete the picked feature", DeletePicked},
    {PlainKey(kPlateChords, platform::kKeyHome), u"Show the whole plate", Fit},
    {PlainKey(kPlateChords, '+'), u"Zoom in", ZoomIn},
    {PlainKey(kPlateChords, '='), u"", ZoomIn},  // plus without Shift
    {PlainKey(kPlateChords, '-'), u"Zoom out", ZoomOut},
    {PlainKey(kPlateChords, platform::kKeyEscape), u"Give up a drag, a pick or an editor", Escape},
};
// clang-format on

// Shift and Ctrl mean something with arrows alone, and Ctrl before Shift.
KeyEvent Meant(const KeyEvent& key) {
  KeyEvent meant{key.key};
  if (key.key == platform::kKeyEscape) return meant;
  const bool arrow = key.key == platform::kKeyLeft || key.key == platform::kKeyRight ||
                     key.key == platform::kKeyUp || key.key == platform::kKeyDown;
  meant.ctrl = key.ctrl;
  meant.shift = key.shift && arrow && !key.ctrl;
  return meant;
}

}  // namespace

std::span<const KeyRow> PlateViewKeys() { return kKeys; }

bool PlateViewKey(const KeyEvent& key) {
  if (key.key != platform::kKeyEscape) {
    if (PlateDragRuns()) return true;  // what is dragged must stay what is picked
    if (plate.unnamed || key.alt) return false;
  }
  return RunKeyRow(kKeys, Meant(key));
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
