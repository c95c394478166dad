#include "codetools/completion_popup.h"

#include <cstdint>
#include <string>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/key_rows.h"
#include "app/outlets.h"
#include "app/palette.h"
#include "app/panels.h"
#include "app/router.h"
#include "codetools/codetools_commands.h"
#include "codetools/completion.h"
#include "codetools/editor_help.h"
#include "codetools/words_view.h"
#include "documents/editor_changes.h"
#include "documents/program_changed.h"
#include "documents/tab_table.h"
#include "library/code_index.h"
#include "platform/canvas.h"
#include "platform/control.h"
#include "platform/editor.h"
#include "platform/listing.h"
#include "platform/post.h"
#include "platform/timer.h"
#include "platform/window.h"

namespace morva {

namespace {

using platform::Rect;

constexpr int kTypedMs = 45;
constexpr int kAcceptedMs = 70;
constexpr int kWheelRows = 2;
constexpr int kCodeLeft = 22;
constexpr int kNameLeft = 82;

struct Popup {
  bool shown = false;
  std::int32_t count = 0;
  std::int32_t rows[kMaxCompletions] = {};
  std::int32_t selected = 0;
  int editor = 0;
  int start = 0;  // editor positions that an accepted row replaces
  int end = 0;
  int caret = 0;
  std::uint64_t revision = 0;  // of the text that the rows were found for
  bool manual = false;         // the user asked for the list
  // The user asked for the list, or went through it, and has typed nothing since: Enter takes a
  // row then. Else it breaks the line, or M8 would become M80.
  bool chosen = false;
  // Set by an insertion, cleared by the next typed character: the list does not open on its
  // own text.
  bool justInserted = false;
};
Popup popup;

int CaretOf(int editor) { return platform::EditorSelection(editor).to; }

void PlacePopup() {
  const Rect editor = platform::PlaceOf(popup.editor);
  const platform::Point cell = platform::PointOfPosition(popup.editor, popup.caret);
  const platform::Point caret{editor.left + cell.x, editor.top + cell.y};
  platform::SetPlace(kIdCompletion,
                     CompletionPlace(editor, caret, platform::kEditorLineHeight, popup.count));
}

void ShowPopup() {
  platform::HoldListRedraw(kIdCompletion, true);
  platform::ClearRows(kIdCompletion);
  for (int i = 0; i < popup.count; ++i) {
    platform::AddRow(kIdCompletion, CompletionRowText(popup.rows[i], i == popup.selected),
                     popup.rows[i]);
  }
  platform::HoldListRedraw(kIdCompletion, false);
  PlacePopup();
  popup.shown = true;
  platform::SetVisible(kIdCompletion, true);
  platform::BringToTop(kIdCompletion);
  platform::SelectRow(kIdCompletion, popup.selected);
  ShowStatus(CompletionStatus(popup.rows[popup.selected], popup.chosen));
}

void SelectCompletion(int row) {
  if (row < 0 || row >= popup.count) return;
  platform::SetRowText(kIdCompletion, popup.selected,
                       CompletionRowText(popup.rows[popup.selected], false));
  popup.selected = row;
  platform::SetRowText(kIdCompletion, row, CompletionRowText(popup.rows[row], true));
  platform::SelectRow(kIdCompletion, row);
  ShowStatus(CompletionStatus(popup.rows[row], popup.chosen));
}

// Whether the rows are those of the text and the caret as they stand.
bool IsCurrent() {
  return popup.shown && popup.editor == ShownEditor() &&
         popup.revision == platform::EditorRevision(popup.editor) &&
         popup.caret == CaretOf(popup.editor);
}

// The list for what stands in the editor now: a character typed just before may have its
// refresh still to come, and the tagger may have moved the text. False: it closed.
bool BringUpToDate() {
  if (!IsCurrent()) CompletionUpdate(popup.manual);
  return popup.shown;
}

bool SameRows(const CompletionRows& found) {
  if (!popup.shown || found.count != popup.count) return false;
  for (int i = 0; i < found.count; ++i) {
    if (found.rows[i] != popup.rows[i]) return false;
  }
  return true;
}

// A caret that was moved out of the word closes the list; a change of the text has its own
// refresh on the way.
void CaretMoved() {
  if (!popup.shown || popup.revision != platform::EditorRevision(popup.editor)) return;
  const int caret = CaretOf(popup.editor);
  if (caret < popup.start || caret > popup.end) HideCompletion();
}

bool ChooseWithKeys(int row) {
  popup.chosen = true;
  SelectCompletion(row);
  return true;
}

bool AcceptWithKeys() {
  if (!BringUpToDate()) return false;
  CompletionAccept();
  return true;
}

// The refresh of the character typed just before would open it again.
void CloseForGood() {
  platform::StopTimer(platform::kMainWindow, kTimerCompletion);
  HideCompletion();
}

bool AskForList() {
  CompletionUpdate(true);
  return true;
}

// Enter on a row that nobody chose closes the list and breaks the line.
bool EnterInList() {
  if (!popup.shown) return false;
  if (popup.chosen) return AcceptWithKeys();
  CloseForGood();
  return false;
}

bool LeaveList() {
  if (!popup.shown) return false;
  CloseForGood();
  return true;
}

constexpr ChordPlace kListChords{u"list of completions"};
constexpr KeyRow kKeys[] = {
    {CtrlKey(kEditorChords, platform::kKeySpace), u"List what completes the word", AskForList},
    {PlainKey(kListChords, platform::kKeyDown), u"Choose the row below",
     [] { return popup.shown && ChooseWithKeys(popup.selected + 1); }},
    {PlainKey(kListChords, platform::kKeyUp), u"Choose the row above",
     [] { return popup.shown && ChooseWithKeys(popup.selected - 1); }},
    {PlainKey(kListChords, platform::kKeyEnter), u"Take the row that was chosen", EnterInList},
    {PlainKey(kListChords, platform::kKeyTab), u"Take the row",
     [] { return popup.shown && AcceptWithKeys(); }},
    {PlainKey(kListChords, platform::kKeyEscape), u"Close the list", LeaveList},
};

bool EditorOffersKey(const platform::KeyEvent& key) { return RunKeyRow(kKeys, key); }

// An accepting Enter or Tab ends as a key and never comes here as a character.
void EditorTyped(char16_t character) {
  popup.justInserted = false;
  popup.chosen = false;
  platform::StopTimer(platform::kMainWindow, kTimerCompletion);
  if (character == u'\t' || character == u'\n' || character == u'\r') {
    HideCompletion();
    return;
  }
  platform::StartTimer(platform::kMainWindow, kTimerCompletion, kTypedMs);
  platform::PostToMain(kMessageCompletion, 0, 0);
}

void EditorFocus(bool gained) {
  if (!gained) HideCompletion();
}

// Help for the word that the user brings the caret to. Where the program moves it, what was told
// stays.
void FollowCaret(bool byUser) {
  if (byUser) ShowHoverHelp(TokenAtCaret().text);
  CaretMoved();
  platform::Repaint(kViewGutter);
}

void OnSelect(int, int) { SelectCompletion(platform::SelectedRow(kIdCompletion)); }
void OnDouble(int, int) { CompletionAccept(); }

void OnListClick(int row, int, int) {
  if (!popup.shown) return;
  SelectCompletion(row);
  CompletionAccept();
}

void DrawRow(const platform::DrawState& state, platform::Canvas& canvas) {
  if (state.row < 0 || state.row >= popup.count) return;
  const Rect& area = state.area;
  const bool selected = state.row == popup.selected;
  platform::FillArea(canvas, area, selected ? kCompletionSelected : kPanelBackground);
  // The list has no frame; its edge sets it off from the text.
  platform::FillArea(canvas, {area.left, area.top, area.left + 1, area.bottom}, kAccent);
  const CodeRow& row = codeTable[popup.rows[state.row]];
  const unsigned align = platform::kAlignLeft | platform::kAlignMiddle | platform::kTextEllipsis;
  using platform::FontRole;
  if (selected) {
    platform::PaintText(canvas, {area.left + 7, area.top, area.left + kCodeLeft, area.bottom}, u">",
                        FontRole::Code, kBrightAccent, align);
  }
  platform::PaintText(canvas, {area.left + kCodeLeft, area.top, area.left + kNameLeft, area.bottom},
                      row.code, FontRole::Code, kCompletionText, align);
  platform::PaintText(canvas, {area.left + kNameLeft, area.top, area.right - 4, area.bottom},
                      row.name, FontRole::Small, kCompletionText, align);
}

// No form: the list floats beside the caret and never takes the keyboard.
void MakePopup() {
  platform::ListSpec list;
  list.id = kIdCompletion;
  list.accessibleName = u"Completion";
  list.font = platform::FontRole::Small;
  list.rowHeight = kCompletionPitch;
  list.takesFocus = false;
  list.wheelRows = kWheelRows;
  list.hidden = true;
  platform::MakeList(list);
  platform::SetColours(kIdCompletion, {kCompletionText, kPanelBackground, false});
}

}  // namespace

void HideCompletion() {
  if (!popup.shown) return;
  const bool justInserted = popup.justInserted;
  popup = Popup();
  popup.justInserted = justInserted;
  platform::SetVisible(kIdCompletion, false);
}

void CompletionUpdate(bool manual) {
  if (completionApplying || !platform::Exists(kIdCompletion)) return;
  if (!manual && popup.justInserted) return;
  const int editor = ShownEditor();
  if (!platform::IsVisible(editor) || platform::FocusedId() != editor) return HideCompletion();
  // Several refreshes follow one change; they leave a choice made meanwhile alone.
  if (!manual && IsCurrent()) return;
  const int caret = CaretOf(editor);
  const int line = platform::EditorLineOf(editor, caret);
  const int lineStart = platform::EditorLineStart(editor, line);
  const CompletionRows found = FindCompletions(platform::EditorLineText(editor, line),
                                               caret - lineStart, app.commandWordsActive, manual);
  if (found.count == 0) {
    HideCompletion();
    if (manual) {
      ShowAskedHelp(found.token);
    } else if (found.settled) {
      ShowHoverHelp(found.token);
    }
    return;
  }
  popup.editor = editor;
  popup.caret = caret;
  popup.start = lineStart + found.start;
  popup.end = lineStart + found.end;
  popup.revision = platform::EditorRevision(editor);
  popup.manual = manual;
  // The same rows once more: the text moved below an open list, the choice stays.
  if (!SameRows(found)) {
    popup.selected = 0;
    popup.chosen = false;
  }
  popup.chosen = popup.chosen || manual;
  popup.count = found.count;
  for (int i = 0; i < found.count; ++i) popup.rows[i] = found.rows[i];
  ShowPopup();
}

void CompletionAccept() {
  if (!popup.shown || !BringUpToDate()) return;
  const Popup accepted = popup;
  const std::int32_t row = accepted.rows[accepted.selected];
  const ApplyingCompletion quiet;
  popup.justInserted = true;
  platform::SetEditorSelection(accepted.editor, {accepted.start, accepted.end});
  if (app.commandWordsActive) {
    WriteInWords(codeTable[row].code);
  } else {
    platform::ReplaceSelection(accepted.editor, codeTable[row].code, true);
  }
  HideCompletion();
  platform::SetFocusTo(accepted.editor);
  ProgramChanged({.refreshMs = kAcceptedMs});
  ShowStatus(InsertedStatus(row));
}

void CompletionAfterRefresh() {
  if (popup.shown && BringUpToDate()) platform::BringToTop(kIdCompletion);
}

void FollowCompletionScroll() {
  if (!popup.shown) return;
  const int line = platform::EditorLineOf(popup.editor, popup.caret);
  const int first = platform::FirstVisibleLine(popup.editor);
  if (line < first || line >= first + platform::VisibleLineCount(popup.editor)) {
    HideCompletion();
  } else {
    PlacePopup();
  }
}

void RegisterCompletion() {
  Panel panel;
  panel.spot = PanelSpot::RightBody;
  panel.active = [] { return false; };
  panel.make = MakePopup;
  // Called at every layout: the list goes with the editor.
  panel.hide = FollowCompletionScroll;
  RegisterPanel(panel);
  for (const int id : {kIdEditor, kIdWordsEditor}) {
    Handlers handlers;
    handlers.id = id;
    handlers.key = EditorOffersKey;
    if (id == kIdEditor) handlers.keys = kKeys;  // told once for both editors
    handlers.typed = EditorTyped;
    handlers.selection = FollowCaret;
    handlers.focusChanged = EditorFocus;
    RegisterHandlers(handlers);
  }
  Handlers list;
  list.id = kIdCompletion;
  list.drawItem = DrawRow;
  list.listClick = OnListClick;
  RegisterHandlers(list);
  RegisterCommand(RouterStage::Notified, kIdCompletion, platform::kNotifyListSelect, OnSelect);
  RegisterCommand(RouterStage::Notified, kIdCompletion, platform::kNotifyListDouble, OnDouble);
  hooks.refreshCompletion = [] { CompletionUpdate(false); };
  hooks.hideCompletion = HideCompletion;
}

void ResetCompletion() { popup = Popup(); }

}  // namespace morva
