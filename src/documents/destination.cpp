#include "documents/destination.h"

#include <cstdint>
#include <string>
#include <string_view>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/palette.h"
#include "app/panels.h"
#include "app/wells.h"
#include "documents/feature_blocks.h"
#include "documents/program_tabs.h"
#include "documents/tab_table.h"
#include "forms/form.h"
#include "platform/control.h"
#include "platform/dialog.h"
#include "platform/editor.h"
#include "platform/listing.h"
#include "platform/message.h"
#include "text/codetext.h"

namespace morva {

namespace {

using platform::FontRole;
using platform::Rect;

constexpr Rect kPlace{100, 120, 100 + 540, 120 + 340};

// clang-format off
constexpr FormRow kRows[] = {
    {.kind = RowKind::Choice, .id = kIdDestinationProgram, .label = u"Destination project"},
    {.kind = RowKind::Count, .id = kIdDestinationPosition, .label = u"Operation number",
     .filled = true, .limit = 0, .width = 140},
    {.kind = RowKind::Log, .id = kIdDestinationHelp, .name = u"Where the code goes",
     .height = 128, .above = 3},
    {.kind = RowKind::Keys, .keys = {kIdDestinationInsert, kIdDestinationCancel},
     .shares = {190, 120}, .above = 1},
};
// clang-format on
constexpr FormLook kLook{.edge = 20,
                         .top = 14,
                         .gap = 14,
                         .keyGap = 10,
                         .inset = 1,
                         .fieldHeight = 28,
                         .keyHeight = 32,
                         .labelHeight = 22,
                         .framesChoices = false,
                         .keysAtEnd = true,
                         .labelFont = FontRole::Body,
                         .keyFont = FontRole::Body,
                         .listFont = FontRole::Body,
                         .labelColour = kBrightAccent};

void Changed(int id);
constexpr Form kPickerForm{
    .look = &kLook, .parent = kViewDestination, .rows = kRows, .changed = Changed};

constexpr int kAccepted = 1;
// Row data of "+ New project"; no program has this serial.
constexpr std::uint64_t kNewProject = 0;
constexpr int kNewProjectPositions = 2;  // before and behind the new program's template

struct Picker {
  std::uint64_t source = 0;       // the program that the insert started from
  std::uint64_t destination = 0;  // the chosen one
  int insertPosition = 0;         // operation number, from 1
  int lastPosition = 0;
  bool update = false;  // a block of this kind is under edit in the source
  int ownPosition = 0;  // that block's number
};
Picker picker;

int BlocksIn(std::u16string_view text) {
  ScanProgramText(text);
  return features.count;
}

// Blocks of a program, whether it is on the stage or in the store. The table describes the
// program on the stage again afterwards.
int BlockCount(std::uint64_t serial) {
  const int index = IndexOfSerial(serial);
  const int stored = index >= 0 && index != app.activeTab ? BlocksIn(tabs[index].text) : 0;
  const int staged = BlocksIn(platform::EditorText(kIdEditor));
  return index >= 0 && index == app.activeTab ? staged : stored;
}

// 1 plus the blocks that end before the caret.
int PositionByCaret() {
  const std::u16string_view text = platform::EditorText(kIdEditor);
  ScanProgramText(text);
  const std::int32_t caret = TextIndexOf(text, CaretPosition());
  int position = 1;
  for (int i = 0; i < features.count; ++i) position += features.rows[i].end <= caret ? 1 : 0;
  return position;
}

std::uint64_t ChosenProgram() {
  const int row = platform::SelectedRow(kIdDestinationProgram);
  return static_cast<std::uint64_t>(platform::RowData(kIdDestinationProgram, row));
}

int TypedPosition() { return ParseInteger(platform::TextOf(kIdDestinationPosition), 0); }

void RefreshDestinationInfo(bool fromList) {
  const std::uint64_t chosen = ChosenProgram();
  const bool update = picker.update && chosen == picker.source;
  picker.lastPosition = chosen == kNewProject ? kNewProjectPositions : BlockCount(chosen) + 1;
  if (fromList) {
    platform::SetText(kIdDestinationPosition,
                      IntegerText(update ? picker.ownPosition : picker.lastPosition));
    platform::SetEnabled(kIdDestinationPosition, !update);
  }
  std::u16string help = update ? u"Update code in \u201C" : u"Add code to \u201C";
  const int row = platform::SelectedRow(kIdDestinationProgram);
  help += chosen == kNewProject ? u"New project" : platform::RowText(kIdDestinationProgram, row);
  help += u"\u201D at operation " + IntegerText(TypedPosition());
  help += u"\r\nAvailable positions: 1\u2013" + IntegerText(picker.lastPosition);
  help += u". Later operations move down.";
  if (chosen != picker.source) {
    help += u"\r\nThe source drawing remains in its original project.";
  }
  platform::SetText(kIdDestinationHelp, help);
}

void Accept() {
  RefreshDestinationInfo(false);
  const int position = TypedPosition();
  if (position < 1 || position > picker.lastPosition) {
    platform::ShowBox(u"Insert code", u"Choose an operation position within the displayed range.",
                      platform::BoxButtons::Ok, platform::BoxIcon::None);
    platform::SetFocusTo(kIdDestinationPosition);
    platform::SelectAllText(kIdDestinationPosition);
    return;
  }
  picker.insertPosition = position;
  picker.destination = ChosenProgram();
  platform::EndDialog(kViewDestination, kAccepted);
}

void Changed(int id) { RefreshDestinationInfo(id == kIdDestinationProgram); }

void OnPickerCommand(int id, int notification) {
  FormNotified(id, notification);
  if (id == kIdDestinationInsert && notification == platform::kNotifyClick) {
    Accept();
  } else if (id == kIdDestinationCancel && notification == platform::kNotifyClick) {
    platform::EndDialog(kViewDestination, 0);
  }
}

void PaintPicker(platform::Canvas& canvas) {
  FillArea(canvas, platform::CanvasArea(canvas), kPanelBackground);
  PaintForms(canvas, kViewDestination);
  // The button that Enter presses.
  FrameWell(canvas, platform::PlaceOf(kIdDestinationInsert),
            platform::FocusedId() == kIdDestinationInsert, kAccent);
}

bool MakePicker() {
  platform::DialogSpec dialog;
  dialog.id = kViewDestination;
  dialog.className = u"MorvaDestination";
  dialog.title = u"Insert code into project";
  dialog.place = kPlace;
  dialog.background = kPanelBackground;
  dialog.defaultButton = kIdDestinationInsert;
  dialog.cancelButton = kIdDestinationCancel;
  dialog.command = OnPickerCommand;
  if (!platform::MakeDialog(dialog)) return false;
  PlaceForm(kPickerForm, {0, 0, RectWidth(kPlace), RectHeight(kPlace)});
  return true;
}

void FillPicker() {
  for (int i = 0; i < app.tabCount; ++i) {
    platform::AddRow(kIdDestinationProgram, tabs[i].title,
                     static_cast<std::int64_t>(tabs[i].serial));
  }
  if (app.tabCount < kMaxTabs) {
    platform::AddRow(kIdDestinationProgram, u"+ New project",
                     static_cast<std::int64_t>(kNewProject));
  }
  platform::SelectRow(kIdDestinationProgram, app.activeTab);
  platform::SetText(kIdDestinationPosition, IntegerText(picker.ownPosition));
  platform::SetEnabled(kIdDestinationPosition, !picker.update);
  RefreshDestinationInfo(false);
  platform::SetFocusTo(kIdDestinationProgram);
}

// The chosen program on the stage. False: it could not be opened, or is gone.
bool BringUpDestination() {
  if (picker.destination != kNewProject) return ReturnToTab(picker.destination);
  const int index = OpenTab(u"", u"", u"New project.NC");
  if (index < 0) return false;
  SwitchTab(index);
  return true;
}

// The caret at the start of the line where the chosen block begins; behind the last block, or
// the text, for the position after them.
Destination PlaceCaret() {
  const std::u16string text(platform::EditorText(kIdEditor));
  ScanProgramText(text);
  const bool before = picker.insertPosition <= features.count;
  auto at = static_cast<std::int32_t>(text.size());
  if (before) {
    at = features.rows[picker.insertPosition - 1].start;
  } else if (features.count > 0) {
    at = features.rows[features.count - 1].end;
  }
  int position = MapTextOffset(text, at);
  const int line = platform::EditorLineOf(kIdEditor, position);
  if (before) position = platform::EditorLineStart(kIdEditor, line);
  platform::SetEditorSelection(kIdEditor, {position, position});
  if (app.commandWordsActive && platform::Exists(kIdWordsEditor)) {
    Call(hooks.wordsFromEditor);
    const int start = platform::EditorLineStart(kIdWordsEditor, line);
    platform::SetEditorSelection(kIdWordsEditor, {start, start});
  }
  return before ? Destination::Placed : Destination::Caret;
}

}  // namespace

Destination RunDestinationPicker(int kind) {
  if (platform::Exists(kViewDestination)) return Destination::Cancelled;
  picker = Picker();
  picker.source = ActiveSerial();
  picker.update = editLink.kind == kind && editLink.tab == app.activeTab;
  picker.ownPosition = PositionByCaret();
  if (picker.update && FindFeature(editLink.id) >= 0) {
    picker.ownPosition = FindFeature(editLink.id) + 1;
  }
  EditLink link = editLink;
  if (!MakePicker()) return Destination::Cancelled;
  FillPicker();
  if (platform::RunDialog(kViewDestination) != kAccepted || !BringUpDestination()) {
    return Destination::Cancelled;
  }
  AutoTagBlocks();
  if (picker.update && picker.destination == picker.source) {
    // Another program may have been on the stage meanwhile, which forgets the link.
    link.tab = app.activeTab;
    SetEditLink(link);
    return Destination::Caret;
  }
  DropEditLink();
  return PlaceCaret();
}

void RegisterDestinationPicker() {
  SetDestinationPicker(RunDestinationPicker);
  RegisterForm(kPickerForm);
  Handlers handlers;
  handlers.id = kViewDestination;
  handlers.paint = PaintPicker;
  RegisterHandlers(handlers);
}

}  // namespace morva
