#include "codetools/words_view.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include "app/app_state.h"
#include "app/change_guard.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/outlets.h"
#include "app/palette.h"
#include "app/panels.h"
#include "app/router.h"
#include "codetools/colours.h"
#include "codetools/command_words.h"
#include "codetools/editor_help.h"
#include "documents/program_changed.h"
#include "documents/tab_table.h"
#include "platform/control.h"
#include "platform/editor.h"
#include "platform/timer.h"

namespace morva {

namespace {

constexpr char16_t kToWords[] = u"G-code \u2192 Text";
constexpr char16_t kToCode[] = u"Text \u2192 G-code";
constexpr int kRefreshMs = 60;

std::uint64_t shownProgram = 0;  // the serial of the program that the view's text stands for

int CaretLineOf(int id) { return platform::EditorLineOf(id, platform::EditorSelection(id).to); }

// The caret at the start of a line, as near as the text has one.
void PutCaretOnLine(int id, int line) {
  const int last = platform::EditorLineCount(id) - 1;
  const int position = platform::EditorLineStart(id, line < last ? line : last);
  platform::SetEditorSelection(id, {position, position});
  platform::ScrollCaretIntoView(id);
}

bool IsFirstHalf(char16_t c) { return c >= 0xD800 && c <= 0xDBFF; }
bool IsSecondHalf(char16_t c) { return c >= 0xDC00 && c <= 0xDFFF; }

// One undoable edit that leaves `wanted`; only what differs is touched, so that a typed
// character costs no more than itself. False: nothing differed.
bool ReplaceDifference(int id, std::u16string_view wanted) {
  const std::u16string_view text = platform::EditorText(id);
  if (text == wanted) return false;
  const std::size_t least = text.size() < wanted.size() ? text.size() : wanted.size();
  std::size_t front = 0;
  while (front < least && text[front] == wanted[front]) ++front;
  // Neither a line end nor a character of two units is split.
  if (front > 0 && (text[front - 1] == u'\r' || IsFirstHalf(text[front - 1]))) --front;
  std::size_t back = 0;
  while (back < least - front && text[text.size() - 1 - back] == wanted[wanted.size() - 1 - back]) {
    ++back;
  }
  if (back > 0) {
    const char16_t c = text[text.size() - back];
    if (c == u'\n' || IsSecondHalf(c)) --back;
  }
  int lines = 0;
  for (std::size_t i = 0; i < front; ++i) lines += text[i] == u'\n';
  int inside = 0;
  for (std::size_t i = front; i < text.size() - back; ++i) inside += text[i] == u'\n';
  platform::EditorRange range;
  range.from = static_cast<int>(front) - lines;
  range.to = static_cast<int>(text.size() - back) - lines - inside;
  const std::u16string middle(wanted.substr(front, wanted.size() - back - front));
  platform::ReplaceRange(id, range, middle);
  return true;
}

// Where the user's caret and the view's top stood, to go on there in the view made anew: a
// marker that the tagger writes between two typed characters must not move the second one.
struct ViewPlace {
  int line = 0;
  int top = 0;
  std::size_t column = 0;
  std::u16string text;  // of the caret's line
};

ViewPlace PlaceInView() {
  ViewPlace place;
  const int caret = platform::EditorSelection(kIdWordsEditor).to;
  place.line = platform::EditorLineOf(kIdWordsEditor, caret);
  place.top = platform::FirstVisibleLine(kIdWordsEditor);
  const int start = platform::EditorLineStart(kIdWordsEditor, place.line);
  place.column = static_cast<std::size_t>(caret - start);
  place.text = EditorLineText(kIdWordsEditor, place.line);
  return place;
}

// The column of the same place in a line that may have been put into words since: counted from
// the front where that is unchanged, else from the end; 0 where the line is another.
std::size_t SameColumn(const ViewPlace& place, std::u16string_view text) {
  const std::size_t column = std::min(place.column, place.text.size());
  if (text == place.text) return column;
  const std::u16string_view rest = std::u16string_view(place.text).substr(column);
  if (column > 0 && text.ends_with(rest)) return text.size() - rest.size();
  return 0;
}

void ReturnToPlace(const ViewPlace& place, int line) {
  const int last = platform::EditorLineCount(kIdWordsEditor) - 1;
  if (line > last) line = last;
  const int column = static_cast<int>(SameColumn(place, EditorLineText(kIdWordsEditor, line)));
  const int position = platform::EditorLineStart(kIdWordsEditor, line) + column;
  platform::SetEditorSelection(kIdWordsEditor, {position, position});
  platform::ScrollToLine(kIdWordsEditor, std::max(0, place.top + line - place.line));
  platform::ScrollCaretIntoView(kIdWordsEditor);
}

// The code from the view. True: the code changed.
bool PullCode() {
  const OwnedText code = WordsToCode(platform::EditorText(kIdWordsEditor));
  if (!code.units) return false;
  bool changed = false;
  {
    const SuppressChanges suppressed;
    const InsertingText inserting;
    changed = ReplaceDifference(kIdEditor, code.View());
  }
  PutCaretOnLine(kIdEditor, CaretLineOf(kIdWordsEditor));
  return changed;
}

// No form: it is an editor and takes the place of the code editor.
void MakeWordsEditor() {
  platform::EditorSpec spec;
  spec.id = kIdWordsEditor;
  spec.accessibleName = u"Command words";
  spec.text = kWordsText;
  spec.background = kDarkBand;
  spec.hidden = true;
  platform::MakeEditor(spec);
  platform::SetText(kIdCommandWords, kToWords);
}

void PlaceWordsEditor(const platform::Rect& area) {
  platform::SetPlace(kIdWordsEditor, area);
  platform::SetVisible(kIdWordsEditor, true);
}

void HideWordsEditor() { platform::SetVisible(kIdWordsEditor, false); }

bool WordsShown() {
  return app.commandWordsActive && app.surface == kSurfaceCode && !app.compareActive;
}

void ToggleWords(int, int) { SetWordsView(!app.commandWordsActive); }

}  // namespace

WordsAside::WordsAside() : before_(app.commandWordsActive) { app.commandWordsActive = false; }
WordsAside::~WordsAside() { app.commandWordsActive = before_; }

void SyncWordsFromCode() {
  if (app.insertingText || !platform::Exists(kIdWordsEditor)) return;
  const int line = CaretLineOf(kIdEditor);
  const OwnedText words = CodeToWords(platform::EditorText(kIdEditor));
  if (!words.units) return;
  const ViewPlace place = PlaceInView();
  // While the same program is shown the view keeps its history, so that what was done to the
  // code from elsewhere, as renumbering, is undone here too.
  const bool goesOn = app.commandWordsActive && shownProgram == ActiveSerial();
  shownProgram = ActiveSerial();
  const InsertingText inserting;
  platform::HoldEditorRedraw(kIdWordsEditor, true);
  bool changed = true;
  if (goesOn) {
    changed = ReplaceDifference(kIdWordsEditor, words.View());
  } else {
    platform::SetEditorText(kIdWordsEditor, words.View());
  }
  if (changed || line != place.line) ReturnToPlace(place, line);
  platform::HoldEditorRedraw(kIdWordsEditor, false);
}

void SyncCodeFromWords() {
  if (!platform::Exists(kIdWordsEditor)) return;
  PullCode();
}

void WriteInWords(std::u16string_view code) {
  const std::u16string_view text = platform::EditorText(kIdWordsEditor);
  const platform::EditorRange range = platform::EditorSelection(kIdWordsEditor);
  const auto indexOf = [](int position) {
    return static_cast<std::size_t>(position + platform::EditorLineOf(kIdWordsEditor, position));
  };
  const std::size_t from = indexOf(range.from);
  const std::size_t to = indexOf(range.to);
  const char16_t before = from > 0 ? text[from - 1] : u'\0';
  const char16_t behind = to < text.size() ? text[to] : u'\0';
  const std::u16string words = WordsBetween(before, code, behind);
  if (!words.empty()) platform::ReplaceSelection(kIdWordsEditor, words, true);
}

void SetWordsView(bool on) {
  if (on == app.commandWordsActive || !platform::Exists(kIdWordsEditor)) return;
  const int line = CaretLineOf(on ? kIdEditor : kIdWordsEditor);
  bool changed = false;
  if (on) {
    SyncWordsFromCode();
  } else {
    changed = PullCode();
  }
  app.commandWordsActive = on;
  platform::StopTimer(platform::kMainWindow, kTimerCompletion);
  Call(hooks.hideCompletion);
  platform::HideToolTips();
  platform::SetText(kIdCommandWords, on ? kToCode : kToWords);
  RelayPanels();
  if (on) {
    ColourWordsView();
    ShowStatus(
        u"COMMAND WORDS enabled \u2014 the whole project is readable and editable. G/M/N/macro "
        u"words synchronize back to machine code automatically.");
  } else {
    ColourCodeEditor();
    ShowStatus(
        u"G-CODE editor enabled \u2014 type G or M to open command completion; Enter/Tab accepts "
        u"the selected command.");
  }
  // The text is another than the file's, so it is dirty like any other change.
  if (changed) ProgramChanged({.autosave = true, .refreshMs = kRefreshMs});
  const int shown = on ? kIdWordsEditor : kIdEditor;
  platform::SetFocusTo(shown);
  PutCaretOnLine(shown, line);
}

void RegisterWordsView() {
  Panel panel;
  panel.spot = PanelSpot::Editor;
  panel.active = WordsShown;
  panel.make = MakeWordsEditor;
  panel.place = PlaceWordsEditor;
  panel.hide = HideWordsEditor;
  panel.tabStops = [](int* ids, int capacity) {
    if (capacity > 0) ids[0] = kIdWordsEditor;
    return std::min(capacity, 1);
  };
  RegisterPanel(panel);
  RegisterCommand(RouterStage::Click, kIdCommandWords, platform::kNotifyClick, ToggleWords);
  hooks.wordsFromEditor = SyncWordsFromCode;
  hooks.editorFromWords = SyncCodeFromWords;
}

}  // namespace morva
