#include "shell/inline_rename.h"

#include <cstdint>
#include <string>

#include "app/change_guard.h"
#include "app/command_ids.h"
#include "app/limits.h"
#include "app/outlets.h"
#include "app/palette.h"
#include "app/panels.h"
#include "app/router.h"
#include "app/wells.h"
#include "codetools/find_work.h"
#include "documents/document_commands.h"
#include "documents/feature_blocks.h"
#include "documents/feature_operations.h"
#include "documents/program_changed.h"
#include "documents/tab_table.h"
#include "platform/control.h"
#include "platform/editor.h"
#include "platform/listing.h"

namespace morva {

namespace {

constexpr int kHotSpot = 34;  // pixels of the lock at a row's right end, and of the eye before it

struct Rename {
  bool open = false;
  std::int32_t id = 0;
  std::uint64_t serial = 0;  // the program that the row belongs to
  std::u16string before;     // as the box showed it first
};
Rename box;

// What a row's place stands for under the pointer.
enum class Spot { Name, Eye, Lock };
Spot lastSpot = Spot::Name;  // of the last click, for the second one of a double click

bool IsLocked(std::int32_t id) {
  const ProgramTab* tab = ActiveTab();
  return tab && IdListHolds(tab->lockedIds, id);
}

// The row that the name belongs to: rows come and go in a refresh, and playback moves the
// selection. Of two copies the selected one.
int RowOfBox() {
  const int selected = platform::SelectedRow(kIdFeatureList);
  if (selected >= 0 && platform::RowData(kIdFeatureList, selected) == box.id) return selected;
  const int count = platform::RowCount(kIdFeatureList);
  for (int row = 0; row < count; ++row) {
    if (platform::RowData(kIdFeatureList, row) == box.id) return row;
  }
  return -1;
}

// Over the name part of the row; the two icons stay in sight. False: the row is not wholly in
// view.
bool PlaceBox(int row) {
  if (row < 0 || !platform::IsVisible(kIdFeatureList)) return false;
  const platform::Rect at = platform::RowPlace(kIdFeatureList, row);
  if (platform::RectHeight(at) <= 0 || platform::RectWidth(at) <= 2 * kHotSpot) return false;
  const platform::Rect list = platform::PlaceInMainWindow(kIdFeatureList);
  if (at.top < 0 || list.top + at.bottom > list.bottom) return false;
  platform::SetPlace(kIdInlineName, {list.left + at.left, list.top + at.top,
                                     list.left + at.right - 2 * kHotSpot, list.top + at.bottom});
  return true;
}

// The selection may have moved on, as in playback; the name goes to the row it was begun for.
RenameAnswer RenameBegun(std::int32_t id, std::u16string_view name) {
  const std::int32_t selected = SelectedFeatureId();
  if (selected != id) SelectFeatureRow(id);
  RenameAnswer answer = RenameAnswer::Refused;
  if (SelectedFeatureId() == id) answer = RenameFeature(name);
  if (selected != id) SelectFeatureRow(selected);
  return answer;
}

// A name that was not touched is no edit: a click on a row alone leaves no undo step.
void FinishRename(bool commit, bool focusBack) {
  if (!box.open) return;
  const Rename done = box;
  box = Rename();
  const std::u16string name = platform::TextOf(kIdInlineName).substr(0, kFeatureNameUnits - 1);
  platform::SetVisible(kIdInlineName, false);
  if (focusBack) platform::SetFocusTo(kIdFeatureList);
  if (!commit || name == done.before || ActiveSerial() != done.serial) return;
  switch (RenameBegun(done.id, name)) {
    case RenameAnswer::Done:
    case RenameAnswer::NoRoom:
      return;
    case RenameAnswer::OneLine:
      return ShowStatus(kOneLineWords);
    case RenameAnswer::Refused:
      ShowStatus(u"Name must be 1\u201380 characters without parentheses.");
  }
}

bool BoxKey(const platform::KeyEvent& key) {
  if (key.ctrl || key.alt) return false;
  if (key.key != platform::kKeyEnter && key.key != platform::kKeyEscape) return false;
  FinishRename(key.key == platform::kKeyEnter, true);
  return true;
}

void BoxFocus(bool gained) {
  if (!gained) FinishRename(true, false);
}

// The question before a delete promises Undo, and the focus stays where it was asked.
void UndoFeature(int, int) {
  const std::uint64_t before = platform::EditorRevision(kIdEditor);
  {
    const InsertingText own;
    UndoInCode();
  }
  if (platform::EditorRevision(kIdEditor) == before) return;
  // The delete has drawn the path without the block.
  ProgramChanged({.autosave = true, .refreshMs = kChangeRefreshMs, .rebuildPath = true});
  platform::Repaint(kViewGutter);
}

bool FeatureKey(const platform::KeyEvent& key) { return RouteChord(kFeatureChords, key); }

bool ListKey(const platform::KeyEvent& key) {
  lastSpot = Spot::Name;
  return FeatureKey(key) || RouteChord(kFeatureListChords, key);
}

void Toggle(Spot spot) {
  if (spot == Spot::Lock) ToggleFeatureLock();
  if (spot == Spot::Eye) ToggleFeatureHide();
}

void ListClick(int row, int x, int) {
  if (row < 0 || row != platform::SelectedRow(kIdFeatureList)) return;
  const int right = platform::RowPlace(kIdFeatureList, row).right;
  lastSpot = Spot::Name;
  if (x >= right - 2 * kHotSpot) lastSpot = Spot::Eye;
  if (x >= right - kHotSpot) lastSpot = Spot::Lock;
  if (lastSpot == Spot::Name) return StartInlineRename();
  Toggle(lastSpot);
}

// No form: the box lies over a row of the feature list while a name is typed.
void MakeBox() {
  platform::ControlSpec spec;
  spec.id = kIdInlineName;
  spec.kind = platform::ControlKind::EditLine;
  spec.accessibleName = u"New feature name";
  spec.hidden = true;
  platform::MakeControl(spec);
  platform::SetTextLimit(kIdInlineName, kGivenNameUnits);
  platform::SetColours(kIdInlineName, kWellColours);
}

// On the name the first click of the two began a rename, and together they ask for the builder.
// On an icon they are two clicks.
void ListDouble(int, int) {
  if (lastSpot != Spot::Name) return Toggle(lastSpot);
  FinishRename(false, true);
  EditFeature();
}

void ListScrolled(int, int) { FollowRenamedRow(); }

}  // namespace

// Also comes with every layout.
void FollowRenamedRow() {
  if (!box.open) return;
  const bool focused = platform::FocusedId() == kIdInlineName;
  const bool same = ActiveSerial() == box.serial;
  if (!same || !PlaceBox(RowOfBox())) FinishRename(same, focused);
}

void StartInlineRename() {
  FinishRename(true, false);
  const std::int32_t id = SelectedFeatureId();
  if (id == 0 || IsLocked(id)) return;
  const int row = platform::SelectedRow(kIdFeatureList);
  platform::SelectRow(kIdFeatureList, row);  // wholly into view
  if (!PlaceBox(row)) return;
  // The captions show the name of the selected block, or its kind's words.
  UpdateFeatureCaptions();
  platform::SetText(kIdInlineName, platform::TextOf(kIdFeatureName).substr(0, kGivenNameUnits));
  box.open = true;
  box.id = id;
  box.serial = ActiveSerial();
  box.before = platform::TextOf(kIdInlineName);
  platform::SetVisible(kIdInlineName, true);
  platform::BringToTop(kIdInlineName);
  platform::SetFocusTo(kIdInlineName);
  platform::SelectAllText(kIdInlineName);
}

bool IsInlineRenaming() { return box.open; }

void RegisterInlineRename() {
  // No panel of its own place: made with the others and told of every layout.
  Panel panel;
  panel.active = [] { return false; };
  panel.make = MakeBox;
  panel.hide = FollowRenamedRow;
  RegisterPanel(panel);
  Handlers list;
  list.id = kIdFeatureList;
  list.key = ListKey;
  list.listClick = ListClick;
  RegisterHandlers(list);
  for (const int id : {kIdFeatureEdit, kIdFeatureNew, kIdFeatureInclude, kIdFeatureDelete}) {
    Handlers button;
    button.id = id;
    button.key = FeatureKey;
    RegisterHandlers(button);
  }
  Handlers name;
  name.id = kIdInlineName;
  name.key = BoxKey;
  name.focusChanged = BoxFocus;
  RegisterHandlers(name);
  RegisterCommand(RouterStage::FeatureEdit, kIdInlineName, platform::kNotifyClick,
                  [](int, int) { StartInlineRename(); });
  RegisterCommand(RouterStage::FeatureKeys, kIdFeatureUndo, platform::kNotifyClick, UndoFeature);
  RegisterCommand(RouterStage::FeatureEdit, kIdFeatureList, platform::kNotifyListDouble,
                  ListDouble);
  RegisterCommand(RouterStage::Notified, kIdFeatureList, platform::kNotifyVScroll, ListScrolled);
}

void ResetInlineRename() {
  box = Rename();
  lastSpot = Spot::Name;
}

}  // namespace morva
