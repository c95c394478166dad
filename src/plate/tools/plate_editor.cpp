#include "plate/tools/plate_editor.h"

#include <string>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/commands.h"
#include "app/outlets.h"
#include "app/router.h"
#include "forms/form.h"
#include "library/shape_menu.h"
#include "library/shapes.h"
#include "plate/geometry/plate_layout.h"
#include "plate/geometry/plate_picture.h"
#include "plate/model/plate.h"
#include "plate/model/plate_names.h"
#include "plate/tools/plate_edit.h"
#include "plate/tools/plate_forms.h"
#include "plate/tools/plate_saving.h"
#include "platform/control.h"
#include "platform/events.h"
#include "platform/listing.h"
#include "platform/message.h"
#include "platform/window.h"
#include "text/codetext.h"

namespace morva {

namespace {

constexpr int kEditDecimals = 4;
constexpr int kKindCommands = 4;  // of the numbers from kIdPlateCommandFirst on
constexpr int kFeatureFields[] = {kIdPlateKind,    kIdPlateSaved, kIdPlateWidth, kIdPlateHeight,
                                  kIdPlateAngle,   kIdPlateDepth, kIdPlateX,     kIdPlateY,
                                  kIdPlateThrough, kIdPlateApply};
constexpr int kCustomRow = static_cast<int>(FeatureKindRow::Custom);

platform::Rect editorPlace;  // in the workspace

struct TextField {
  int id;
  std::u16string FeatureForm::*text;
};
constexpr TextField kTexts[] = {
    {kIdPlateWidth, &FeatureForm::width}, {kIdPlateHeight, &FeatureForm::height},
    {kIdPlateAngle, &FeatureForm::angle}, {kIdPlateDepth, &FeatureForm::depth},
    {kIdPlateX, &FeatureForm::x},         {kIdPlateY, &FeatureForm::y}};

bool IsLocked() {
  const int k = CurrentFeature();
  return k >= 0 && plate.features[k].locked;
}

// What may be done to the feature now.
void EnableFields() {
  const bool free = !IsLocked();
  for (const int id : kFeatureFields) platform::SetEnabled(id, free);
  platform::SetEnabled(kIdPlateDepth, free && !plateEditor.through);
  platform::SetEnabled(kIdPlateSaved, free && plateEditor.kind == kCustomRow);
}

enum class Renew : bool { All, Untouched };

// What the editor shows, by itself, of the plate as it is.
struct Shown {
  FeatureForm feature;
  std::u16string section, thickness, depth, name;
};
Shown shown;  // when it was shown last

// A text that stands already is left alone, as what is selected in it waits for the next key.
void PutText(int id, const std::u16string& text) {
  if (platform::TextOf(id) != text) platform::SetText(id, text);
}

// A text that is not the one that was shown is the user's.
void ShowText(int id, std::u16string& former, const std::u16string& text, Renew renew) {
  if (renew == Renew::All || platform::TextOf(id) == former) PutText(id, text);
  former = text;
}

void ShowKind(const FeatureForm& form, Renew renew) {
  const int former = static_cast<int>(shown.feature.kind);
  const bool own = plateEditor.kind != former || plateEditor.customShape >= 0;
  shown.feature.kind = form.kind;
  if (renew == Renew::Untouched && own) return;
  plateEditor.kind = static_cast<int>(form.kind);
  plateEditor.customShape = -1;
  platform::SelectRow(kIdPlateKind, plateEditor.kind);
}

void ShowThrough(const FeatureForm& form, Renew renew) {
  const bool own = plateEditor.through != shown.feature.through;
  shown.feature.through = form.through;
  if (renew == Renew::All || !own) plateEditor.through = form.through;
  ShowWords(kIdPlateThrough, plateEditor.through);
}

std::u16string LengthText(double length) { return FixedText(length, kEditDecimals); }

void ShowFeatureFields(int k, Renew renew) {
  const FeatureForm form = ShowFeature(plate, k);
  platform::SetText(kIdPlateHead, u"Edit feature " + IntegerText(k + 1));
  ShowKind(form, renew);
  ShowThrough(form, renew);
  for (const TextField& field : kTexts)
    ShowText(field.id, shown.feature.*field.text, form.*field.text, renew);
  // What is to go through is as deep as the plate is thick.
  if (plateEditor.through) PutText(kIdPlateDepth, LengthText(NumbersOf(plate).thickness));
  EnableFields();
}

void ShowTexts(Renew renew) {
  const PlateNumbers numbers = NumbersOf(plate);
  switch (plateEditor.page) {
    case PlatePage::Feature:
      return ShowFeatureFields(CurrentFeature(), renew);
    case PlatePage::Section:
      platform::SetText(kIdPlateHead, PlateSectionWords(plateEditor.target));
      return ShowText(kIdPlateSection, shown.section, plate.values[plateEditor.target].text, renew);
    case PlatePage::Depth:
      platform::SetText(kIdPlateHead, PlateSectionWords(kDepthSection));
      ShowText(kIdPlateThickness, shown.thickness, LengthText(numbers.thickness), renew);
      return ShowText(kIdPlateCutDepth, shown.depth, LengthText(-numbers.depth), renew);
    case PlatePage::Name:
      platform::SetText(kIdPlateHead, kNameThisPlate);
      return ShowText(kIdPlateName, shown.name, plate.name, renew);
    case PlatePage::Nothing:
      break;
  }
}

void LayEditorOut() {
  if (!platform::Exists(kViewPlate) || RectWidth(editorPlace) <= 0) return;
  PlaceForm(kPlateEditForm, editorPlace);
  platform::Repaint(kViewPlate);
}

int FirstField() {
  switch (plateEditor.page) {
    case PlatePage::Feature:
      return kIdPlateWidth;
    case PlatePage::Section:
      return kIdPlateSection;
    case PlatePage::Depth:
      return kIdPlateThickness;
    case PlatePage::Name:
      return kIdPlateName;
    case PlatePage::Nothing:
      break;
  }
  return kViewPlatePicture;
}

void FocusEditor() {
  const int id = FirstField();
  platform::SetFocusTo(platform::IsEnabled(id) ? id : kIdPlateLock);
  if (platform::IsTextControl(id)) platform::SelectAllText(id);
}

void BringUp(PlatePage page, int target, Keyboard keyboard) {
  plateEditor = {.page = page, .target = target};
  ShowTexts(Renew::All);
  LayEditorOut();
  platform::Repaint(kViewPlatePicture);
  if (keyboard == Keyboard::ToEditor) FocusEditor();
}

bool IsThere(int k) {
  return k >= 0 && k < FeatureCount(NumbersOf(plate)) && !plate.features[k].deleted;
}

void RefuseEdit() {
  platform::ShowBox(kCheckPlateTitle, kCheckPlateWords, platform::BoxButtons::Ok,
                    platform::BoxIcon::Warning);
  FocusEditor();
}

FeatureForm TypedFeature() {
  FeatureForm form;
  form.kind = static_cast<FeatureKindRow>(plateEditor.kind);
  for (const TextField& field : kTexts) form.*field.text = platform::TextOf(field.id);
  form.through = plateEditor.through;
  form.customShape = plateEditor.customShape;
  return form;
}

// What was applied is shown as the plate holds it.
void ApplyFeatureFields() {
  if (!ApplyFeature(CurrentFeature(), TypedFeature())) return RefuseEdit();
  ShowTexts(Renew::All);
  PlateEdited();
}

void ApplyNumbers() {
  const bool section = plateEditor.page == PlatePage::Section;
  const bool applied = section ? ApplySection(plateEditor.target, platform::TextOf(kIdPlateSection))
                               : ApplyDepthSection(platform::TextOf(kIdPlateThickness),
                                                   platform::TextOf(kIdPlateCutDepth));
  if (!applied) return RefuseEdit();
  ClosePlateEditor();
  PlateEdited();
}

// A plate that got no name back behind a restart must not be locked out of its own shape.
bool TakeOwnShape() {
  const int index = LostShapeNamed(platform::TextOf(kIdPlateName));
  if (index < 0) return false;
  const std::u16string name = shapeLibrary.shapes[index].name;
  const bool own = ConfirmedNoFirst(
      kPlateNameTitle,
      u"A saved shape has that name. Is it this plate's own, from before MORVA was started? Yes "
      u"saves the plate in its place from now on; No keeps that shape, and another name is "
      u"needed.");
  if (!own || LostShapeNamed(name) != index) return false;
  TakeLostShape(index);
  return true;
}

void RefuseName() {
  // The question above says it all.
  if (LostShapeNamed(platform::TextOf(kIdPlateName)) < 0) {
    platform::ShowBox(kPlateNameTitle, kNameTaken, platform::BoxButtons::Ok,
                      platform::BoxIcon::Warning);
  }
  FocusEditor();
}

void ApplyName() {
  const bool creating = plateEditor.creating;
  switch (GivePlateName(platform::TextOf(kIdPlateName))) {
    case Naming::Empty:
      return;
    case Naming::Taken:
      if (!TakeOwnShape()) return RefuseName();
      break;
    case Naming::Named:
      break;
  }
  ClosePlateEditor();
  SayOnPlate(u"The plate has its name. Completed edits save automatically.");
  PlateEdited();
  if (creating) SaveNamedPlate();
  platform::SetFocusTo(kViewPlatePicture);
}

void OnApply(int, int) {
  if (IsLocked()) return;
  switch (plateEditor.page) {
    case PlatePage::Feature:
      return ApplyFeatureFields();
    case PlatePage::Section:
    case PlatePage::Depth:
      return ApplyNumbers();
    case PlatePage::Name:
      return ApplyName();
    case PlatePage::Nothing:
      break;
  }
}

void OnClose(int, int) {
  ClosePlateEditor();
  platform::SetFocusTo(kViewPlatePicture);
}

// The chosen shape in its own size and as it stands; the numbers may be changed before Apply.
bool TakeSavedShape(int index) {
  FeatureForm form = TypedFeature();
  if (!ChooseCustomShape(form, index, plate)) {
    SayOnPlate(u"Nothing of this saved shape is cut. Choose another one.");
    return false;
  }
  plateEditor.customShape = index;
  for (const TextField& field : kTexts) platform::SetText(field.id, form.*field.text);
  return true;
}

// False: no shape is saved, nothing of the chosen one is cut, or the user chose none.
bool ChooseSavedShape() {
  if (shapeLibrary.count == 0) {
    SayOnPlate(kNoSavedShape);
    return false;
  }
  const int target = plateEditor.target;
  const int index = PickSavedShape(kIdPlateKind, plateEditor.customShape);
  return index >= 0 && plateEditor.target == target && TakeSavedShape(index);
}

bool HasOwnShape() { return ShowFeature(plate, CurrentFeature()).kind == FeatureKindRow::Custom; }

void TakeKind(int row) {
  if (row == kCustomRow && !ChooseSavedShape() && !HasOwnShape()) {
    platform::SelectRow(kIdPlateKind, plateEditor.kind);
    return;
  }
  plateEditor.kind = row;
  platform::SelectRow(kIdPlateKind, row);
  EnableFields();
}

void OnKind(int, int) { TakeKind(platform::SelectedRow(kIdPlateKind)); }

void OnSaved(int, int) { ChooseSavedShape(); }

void OnThrough(int, int) {
  if (CurrentFeature() < 0 || IsLocked()) return;
  plateEditor.through = !plateEditor.through;
  ShowWords(kIdPlateThrough, plateEditor.through);
  if (plateEditor.through) platform::SetText(kIdPlateDepth, LengthText(NumbersOf(plate).thickness));
  EnableFields();
}

void Toggle(FeatureFlag flag) {
  const int k = CurrentFeature();
  SetFeatureFlag(k, flag, !HasFeatureFlag(plate.features[k], flag));
  EnableFields();
  PlateEdited();
}

void DeleteCurrent() {
  const int k = CurrentFeature();
  if (!MayDeleteFeature(k)) return;
  if (platform::ShowBox(kDeleteFeatureTitle, kDeleteFeatureWords, platform::BoxButtons::YesNo,
                        platform::BoxIcon::Question) != platform::BoxAnswer::Yes) {
    return;
  }
  if (CurrentFeature() != k) return;
  ClosePlateEditor();
  SetFeatureFlag(k, FeatureFlag::Deleted, true);
  PlateEdited();
  platform::SetFocusTo(kIdPlateFeatures);
}

// Keys of the feature under edit. Without one the status line says so.
void OnFeatureKey(int id, int) {
  if (CurrentFeature() < 0) return SayOnPlate(kNoFeature);
  if (id == kIdPlateLock) Toggle(FeatureFlag::Locked);
  if (id == kIdPlateHide) Toggle(FeatureFlag::Hidden);
  if (id == kIdPlateDelete) DeleteCurrent();
}

// The same and the kinds, by number, while the workspace is up.
void OnCommand(int id, int) {
  if (app.surface != kSurfacePlate) return;
  if (CurrentFeature() < 0) return SayOnPlate(kNoFeature);
  const int command = id - kIdPlateCommandFirst;
  constexpr int kKeys[] = {kIdPlateLock, kIdPlateHide, kIdPlateDelete};
  if (command < kKindCommands) {
    if (!IsLocked()) TakeKind(command);
  } else if (command < kKindCommands + 3) {
    OnFeatureKey(kKeys[command - kKindCommands], platform::kNotifyClick);
  } else {
    OnThrough(kIdPlateThrough, platform::kNotifyClick);
  }
}

}  // namespace

int CurrentFeature() {
  return plateEditor.page == PlatePage::Feature ? plateEditor.target - kFirstFeatureTarget : -1;
}

void OpenPlateTarget(int target, Keyboard keyboard) {
  if (plate.unnamed) return;
  if (IsFeatureTarget(target)) {
    if (IsThere(target - kFirstFeatureTarget)) BringUp(PlatePage::Feature, target, keyboard);
  } else if (target == kDepthSection) {
    BringUp(PlatePage::Depth, target, keyboard);
  } else if (target >= 0 && target < kPlateFormValues) {
    BringUp(PlatePage::Section, target, keyboard);
  }
}

void OpenPlateNaming(bool creating) {
  BringUp(PlatePage::Name, -1, Keyboard::ToEditor);
  plateEditor.creating = creating;
  if (PlateLacksName()) SayOnPlate(plate.unnamed ? kCreateNamedPlate : kEnterPlateName);
}

void ClosePlateEditor() { BringUp(PlatePage::Nothing, -1, Keyboard::Stays); }

void ShowPlateEditor() {
  if (CurrentFeature() >= 0 && !IsThere(CurrentFeature())) return ClosePlateEditor();
  ShowTexts(Renew::All);
}

void FollowPlateInEditor() {
  if (CurrentFeature() >= 0 && !IsThere(CurrentFeature())) return ClosePlateEditor();
  ShowTexts(Renew::Untouched);
}

void PlacePlateEditor(const platform::Rect& area) {
  editorPlace = area;
  LayEditorOut();
}

void RegisterPlateEditor() {
  const int click = platform::kNotifyClick;
  RegisterCommand(RouterStage::Builder, kIdPlateApply, click, OnApply);
  RegisterCommand(RouterStage::Builder, kIdPlateClose, click, OnClose);
  RegisterCommand(RouterStage::Builder, kIdPlateSaved, click, OnSaved);
  RegisterCommand(RouterStage::Builder, kIdPlateThrough, click, OnThrough);
  RegisterCommand(RouterStage::Builder, kIdPlateLock, kIdPlateDelete, click, OnFeatureKey);
  RegisterCommand(RouterStage::Builder, kIdPlateCommandFirst, kIdPlateCommandLast, click,
                  OnCommand);
  RegisterCommand(RouterStage::Notified, kIdPlateKind, platform::kNotifyComboSelect, OnKind);
}

void ResetPlateEditor() {
  plateEditor = PlateEditor();
  editorPlace = {};
  shown = {};
}

}  // namespace morva
