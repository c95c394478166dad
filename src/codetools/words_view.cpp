#include "codetools/words_view.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "app/app_state.h"
#include "app/change_guard.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/limits.h"
#include "app/outlets.h"
#include "app/palette.h"
#include "app/panels.h"
#include "app/router.h"
#include "codetools/colours.h"
#include "codetools/command_words.h"
#include "codetools/editor_help.h"
#include "codetools/plain_line.h"
#include "codetools/words_pair.h"
#include "documents/save_words.h"
#include "documents/tab_table.h"
#include "platform/control.h"
#include "platform/editor.h"
#include "platform/timer.h"
#include "text/codetext.h"

namespace morva {

namespace {

constexpr int kLinesOneByOne = 256;
constexpr char16_t kToWords[] = u"G-code \u2192 Text";
constexpr char16_t kToCode[] = u"Text \u2192 G-code";

// What the view stands for.
struct Shown {
  std::uint64_t program = 0;  // the serial of the program; 0: none
  WordsPair pair;
  std::uint64_t codeRevision = 0;   // of the code editor, as the pair has its text
  std::uint64_t wordsRevision = 0;  // of the view, likewise
  // The pairs from before the code was changed from elsewhere, oldest first: an undo in the view
  // comes back to their words, and with them to their code.
  std::vector<WordsPair> earlier;
};
Shown shown;

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

// One undoable edit that puts `wanted` in the place of `present`, which stands at `position`; only
// what differs is touched, so that a typed character costs no more than itself. False: nothing
// differed.
bool ReplaceDifference(int id, int position, std::u16string_view present,
                       std::u16string_view wanted) {
  if (present == wanted) return false;
  const std::size_t least = std::min(present.size(), wanted.size());
  std::size_t front = 0;
  while (front < least && present[front] == wanted[front]) ++front;
  // Neither a line end nor a character of two units is split.
  if (front > 0 && (present[front - 1] == u'\r' || IsFirstHalf(present[front - 1]))) --front;
  std::size_t back = 0;
  while (back < least - front &&
         present[present.size() - 1 - back] == wanted[wanted.size() - 1 - back]) {
    ++back;
  }
  if (back > 0) {
    const char16_t c = present[present.size() - back];
    if (c == u'\n' || IsSecondHalf(c)) --back;
  }
  const auto endsIn = [&](std::size_t from, std::size_t to) {
    int ends = 0;
    for (std::size_t i = from; i < to; ++i) ends += present[i] == u'\n';
    return ends;
  };
  const std::size_t behind = present.size() - back;
  platform::EditorRange range;
  range.from = position + static_cast<int>(front) - endsIn(0, front);
  range.to = range.from + static_cast<int>(behind - front) - endsIn(front, behind);
  const std::u16string middle(wanted.substr(front, wanted.size() - back - front));
  platform::ReplaceRange(id, range, middle);
  return true;
}

bool ReplaceText(int id, std::u16string_view wanted) {
  return ReplaceDifference(id, 0, std::u16string(platform::EditorText(id)), wanted);
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
  place.text = platform::EditorLineText(kIdWordsEditor, place.line);
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
  const int column =
      static_cast<int>(SameColumn(place, platform::EditorLineText(kIdWordsEditor, line)));
  const int position = platform::EditorLineStart(kIdWordsEditor, line) + column;
  platform::SetEditorSelection(kIdWordsEditor, {position, position});
  platform::ScrollToLine(kIdWordsEditor, std::max(0, place.top + line - place.line));
  platform::ScrollCaretIntoView(kIdWordsEditor);
}

// A program that comes onto the stage stands as it was left; its code does already. What was put
// elsewhere since comes into view.
void ComeBack(int line) {
  const ProgramTab* const tab = ActiveTab();
  if (!tab) return;
  const int start = platform::EditorLineStart(kIdWordsEditor, line);
  const int units = static_cast<int>(platform::EditorLineText(kIdWordsEditor, line).size());
  const int caret = start + std::min(tab->wordsColumn, units);
  platform::SetEditorSelection(kIdWordsEditor, {caret, caret});
  platform::ScrollToLine(kIdWordsEditor, tab->firstLine);
  if (platform::EditorLineOf(kIdEditor, tab->selection.to) != line) {
    platform::ScrollCaretIntoView(kIdWordsEditor);
  }
}

std::size_t Units(const WordsPair& pair) {
  std::size_t units = pair.code.units + pair.words.units;
  for (const ReplacedLines& r : pair.replaced) units += r.code.size() + r.words.size();
  return units;
}

void DropEarlier(std::u16string_view words) {
  std::erase_if(shown.earlier, [&](const WordsPair& p) { return SameText(p.words, words); });
}

// The pair as it is now becomes an earlier one. The oldest go where there are too many.
void KeepEarlier() {
  DropEarlier(Joined(shown.pair.words));
  shown.earlier.push_back(std::move(shown.pair));
  std::size_t units = 0;
  for (const WordsPair& pair : shown.earlier) units += Units(pair);
  while (units > static_cast<std::size_t>(kMaxEarlierWordsUnits)) {
    units -= Units(shown.earlier.front());
    shown.earlier.erase(shown.earlier.begin());
  }
}

// The text of lines of the view, line ends included.
std::u16string WordsLines(const platform::ChangedLines& lines) {
  const int end = lines.line + lines.after;
  const bool toEnd = end >= platform::EditorLineCount(kIdWordsEditor);
  std::u16string text;
  // Line by line it costs them alone, as a whole the text.
  if (lines.after > kLinesOneByOne) {
    const std::u16string_view whole = platform::EditorText(kIdWordsEditor);
    const auto indexOf = [](int line) {
      return static_cast<std::size_t>(platform::EditorLineStart(kIdWordsEditor, line) + line);
    };
    const std::size_t from = indexOf(lines.line);
    return std::u16string(whole.substr(from, (toEnd ? whole.size() : indexOf(end)) - from));
  }
  for (int line = lines.line; line < end; ++line) {
    text += platform::EditorLineText(kIdWordsEditor, line);
    if (!toEnd || line + 1 < end) text += u"\r\n";
  }
  return text;
}

// What the view has that the pair does not have yet. Where the editor does not know, it is all.
platform::ChangedLines LinesToTake() {
  platform::ChangedLines lines;
  if (platform::EditorChangedLines(kIdWordsEditor, shown.wordsRevision, lines)) return lines;
  return {0, static_cast<int>(LineCount(shown.pair.words)),
          platform::EditorLineCount(kIdWordsEditor)};
}

// The earlier pair that has the words of the view; most often their lengths tell that none has.
std::vector<WordsPair>::iterator EarlierOfView() {
  const auto units = static_cast<std::size_t>(platform::EditorLength(kIdWordsEditor) +
                                              platform::EditorLineCount(kIdWordsEditor) - 1);
  return std::ranges::find_if(shown.earlier, [&](const WordsPair& p) {
    return p.words.units == units && SameText(p.words, platform::EditorText(kIdWordsEditor));
  });
}

// The code of the view's words goes into the code editor, which holds that of the pair.
void PutCode(const platform::ChangedLines& lines, std::u16string_view words) {
  const SuppressChanges suppressed;
  const InsertingText inserting;
  const auto earlier = EarlierOfView();
  if (earlier != shown.earlier.end()) {
    std::swap(shown.pair, *earlier);
    ReplaceText(kIdEditor, Joined(shown.pair.code));
  } else {
    const int caret = platform::EditorSelection(kIdWordsEditor).to;
    const int line = platform::EditorLineOf(kIdWordsEditor, caret);
    WordsChange taken;
    taken.line = static_cast<std::size_t>(lines.line);
    taken.before = static_cast<std::size_t>(lines.before);
    taken.after = words;
    taken.caretLine = static_cast<std::size_t>(line);
    taken.caretColumn =
        static_cast<std::size_t>(caret - platform::EditorLineStart(kIdWordsEditor, line));
    const CodeChange change = TakeWords(shown.pair, taken);
    const int at = platform::EditorLineStart(kIdEditor, static_cast<int>(change.line));
    ReplaceDifference(kIdEditor, at, change.before, change.after);
  }
  shown.codeRevision = platform::EditorRevision(kIdEditor);
}

// Whether the pair has the code that stands in the code editor.
bool HasStandingCode() {
  const std::uint64_t revision = platform::EditorRevision(kIdEditor);
  if (shown.codeRevision == revision) return true;
  if (!SameText(shown.pair.code, platform::EditorText(kIdEditor))) return false;
  shown.codeRevision = revision;
  return true;
}

// No form: it is an editor and takes the place of the code editor.
void MakeWordsEditor() {
  platform::EditorSpec spec;
  spec.id = kIdWordsEditor;
  spec.accessibleName = u"Command words";
  spec.text = kWordsText;
  spec.background = kDarkBand;
  spec.caretLine = kCaretLineBand;
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

// The view anew from the code. False: there is no memory for the words, and nothing changed.
bool ShowWords() {
  const int line = CaretLineOf(kIdEditor);
  // While the same program is shown the view keeps its history, so that what was done to the
  // code from elsewhere, as renumbering, is undone here too.
  const bool goesOn = app.commandWordsActive && shown.program == ActiveSerial();
  const bool comesBack = app.commandWordsActive && !goesOn;
  const std::u16string code(platform::EditorText(kIdEditor));
  const OwnedText words = CodeToShownWords(code);
  if (!words.units) return false;
  const ViewPlace place = PlaceInView();
  const InsertingText inserting;
  platform::HoldEditorRedraw(kIdWordsEditor, true);
  bool changed = true;
  if (goesOn) {
    changed = ReplaceText(kIdWordsEditor, words.View());
    if (changed) KeepEarlier();
    DropEarlier(words.View());
  } else {
    platform::SetEditorText(kIdWordsEditor, words.View());
    shown.earlier.clear();
  }
  // The lines that were changed in the view are known as long as nothing else has changed.
  if (!goesOn || changed || !SameText(shown.pair.code, code)) {
    shown.pair = MakeWordsPair(code, words.View());
  }
  shown.program = ActiveSerial();
  shown.codeRevision = platform::EditorRevision(kIdEditor);
  shown.wordsRevision = platform::EditorRevision(kIdWordsEditor);
  if (comesBack) {
    ComeBack(line);
  } else if (changed || line != place.line) {
    ReturnToPlace(place, line);
  }
  platform::HoldEditorRedraw(kIdWordsEditor, false);
  return true;
}

// One editor in the other's place; the keyboard stays.
void SwapEditors(bool words) {
  app.commandWordsActive = words;
  platform::StopTimer(platform::kMainWindow, kTimerCompletion);
  Call(hooks.hideCompletion);
  platform::HideToolTips();
  platform::SetText(kIdCommandWords, words ? kToCode : kToWords);
  RelayPanels();
  words ? ColourWordsView() : ColourCodeEditor();
}

void TellNoMemory() {
  constexpr const char16_t* kWords =
      u"The memory does not suffice for the command words of this program. Its G-code is shown.";
  AppendOutput(kWords);
  ShowStatus(kWords);
}

// What was typed in the view and is none of its words went into the program as it is.
void TellPlainLines() {
  int first = -1;
  int count = 0;
  for (const ReplacedLines& lines : shown.pair.replaced) {
    for (std::size_t i = 0; i < lines.count; ++i) {
      const int line = static_cast<int>(lines.line + i);
      if (!IsPlainText(platform::EditorLineText(kIdEditor, line))) continue;
      if (first < 0) first = line;
      ++count;
    }
  }
  if (count == 0) return;
  std::u16string words = u"Line " + IntegerText(first + 1) +
                         u" stands in the program as it was typed, and no control reads it: " +
                         platform::EditorLineText(kIdEditor, first);
  if (count > 1) words += u" (and " + IntegerText(count - 1) + u" more such lines)";
  AppendOutput(words);
}

void ToggleWords(int, int) { SetWordsView(!app.commandWordsActive); }

}  // namespace

WordsAside::WordsAside() : before_(app.commandWordsActive) { app.commandWordsActive = false; }
WordsAside::~WordsAside() { app.commandWordsActive = before_; }

void SyncWordsFromCode() {
  if (app.insertingText || !platform::Exists(kIdWordsEditor) || ShowWords()) return;
  if (!app.commandWordsActive) return;
  // What stands there is not this code, and would not come back into it.
  const bool hadKeyboard = platform::FocusedId() == kIdWordsEditor;
  const int line = CaretLineOf(kIdEditor);
  shown = Shown();
  SwapEditors(false);
  TellNoMemory();
  if (!hadKeyboard) return;
  platform::SetFocusTo(kIdEditor);
  PutCaretOnLine(kIdEditor, line);
}

void SyncCodeFromWords() {
  if (!app.commandWordsActive || !platform::Exists(kIdWordsEditor)) return;
  // The words of another program are none of this one's.
  if (shown.program != ActiveSerial()) return;
  const platform::ChangedLines lines = LinesToTake();
  const std::u16string words = WordsLines(lines);
  if (LinesOf(shown.pair.words, static_cast<std::size_t>(lines.line),
              static_cast<std::size_t>(lines.before)) != words) {
    // The code is the truth, also where it was changed and nobody told.
    if (!HasStandingCode()) return SyncWordsFromCode();
    PutCode(lines, words);
  }
  shown.wordsRevision = platform::EditorRevision(kIdWordsEditor);
  PutCaretOnLine(kIdEditor, CaretLineOf(kIdWordsEditor));
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
  if (!on) {
    SyncCodeFromWords();
    TellPlainLines();
    shown = Shown();
  } else if (!app.insertingText && !ShowWords()) {
    TellNoMemory();
    return;
  }
  SwapEditors(on);
  if (on) {
    ShowStatus(
        u"COMMAND WORDS enabled \u2014 the whole project is readable and editable. G/M/N/macro "
        u"words synchronize back to machine code automatically.");
  } else {
    ShowStatus(
        u"G-CODE editor enabled \u2014 type G or M to open command completion; Enter/Tab accepts "
        u"the selected command.");
  }
  const int shown = on ? kIdWordsEditor : kIdEditor;
  platform::SetFocusTo(shown);
  PutCaretOnLine(shown, line);
  TellHoldOfShown();  // that nothing is saved comes before which editor is up
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
