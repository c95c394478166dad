// The code editors: the text model of editor_text.h with selection, scrolling and notifications.

#include "platform/editor.h"

#include <algorithm>
#include <utility>

#include "platform/headless/headless_internal.h"
#include "platform/limits.h"

namespace headless {
namespace {

constexpr int kCellWidth = 9;

EditorState* EditorOf(int id) {
  Item* item = Find(id);
  return item ? item->editor.get() : nullptr;
}

int Clamped(const EditorState& e, int position) {
  return std::clamp(position, 0, TextLengthInPositions(e.text));
}

int LineCountOf(const EditorText& text) { return static_cast<int>(text.starts.size()); }
int LineCount(const EditorState& e) { return LineCountOf(e.text); }

// While one stands the program itself moves carets, not the user.
class ByProgram {
 public:
  ByProgram() { ++count; }
  ~ByProgram() { --count; }
  ByProgram(const ByProgram&) = delete;
  ByProgram& operator=(const ByProgram&) = delete;
  static inline int count = 0;
};

void TellSelection(int id) {
  const platform::Events& events = platform::Listener();
  if (events.selection) events.selection(id, ByProgram::count == 0);
}

void MoveSelection(int id, int anchor, int caret) {
  EditorState* e = EditorOf(id);
  if (!e || (e->anchor == anchor && e->caret == caret)) return;
  e->anchor = anchor;
  e->caret = caret;
  e->column = -1;
  EndTypingRun(e->text);
  TellSelection(id);
}

int LinesInView(int id) {
  const Item* item = Find(id);
  return item ? std::max(1, platform::RectHeight(item->place) / platform::kEditorLineHeight) : 1;
}

void ScrollTo(int id, int line) {
  EditorState* e = EditorOf(id);
  if (!e) return;
  const int last = std::max(0, LineCount(*e) - LinesInView(id));
  const int first = std::clamp(line, 0, last);
  if (first == e->firstLine) return;
  e->firstLine = first;
  SendCommand(id, platform::kNotifyVScroll);
}

// What follows every new text.
void BeginAtFront(int id, EditorState& e) {
  const bool scrolled = e.firstLine != 0;
  e.bands.clear();
  e.marks.clear();
  e.anchor = e.caret = e.firstLine = e.left = 0;
  e.column = -1;
  if (scrolled) SendCommand(id, platform::kNotifyVScroll);
  SendCommand(id, platform::kNotifyEditChange);
  if (EditorOf(id)) TellSelection(id);
}

void KeepPositionsInside(EditorState& e) {
  e.anchor = Clamped(e, e.anchor);
  e.caret = Clamped(e, e.caret);
}

// Where a position lies after `from` to `to` were replaced by a text that ends at `end`.
int Moved(int position, int from, int to, int end) {
  if (position < from || (position == from && to > from)) return position;
  if (position >= to) return position + end - to;
  return std::min(position, end);
}

struct Ends {
  int anchor;
  int caret;
};

struct Ordered {
  int from;
  int to;
};
Ordered SelectionOf(const EditorState& e) {
  return {std::min(e.anchor, e.caret), std::max(e.anchor, e.caret)};
}

// Tells a change: first the selection, where it is no longer `before`, then the text.
void TellChange(int id, const Ends& before) {
  EditorState* e = EditorOf(id);
  if (!e) return;
  const bool moved = e->anchor != before.anchor || e->caret != before.caret;
  if (moved) e->column = -1;
  FillEditor(id);
  if (moved) TellSelection(id);
  SendCommand(id, platform::kNotifyEditChange);
}

// Replaces the selection, caret behind it, and tells it. False: nothing replaced nothing.
bool PutOverSelection(int id, std::u16string_view text, HistoryUse use) {
  EditorState* e = EditorOf(id);
  if (!e) return false;
  const Ends before{e->anchor, e->caret};
  const Ordered s = SelectionOf(*e);
  if (s.from == s.to && text.empty()) {
    if (use == HistoryUse::Empty) EmptyHistory(e->text);
    return false;
  }
  e->anchor = e->caret = ReplacePositions(e->text, s.from, s.to, text, use);
  KeepPositionsInside(*e);
  TellChange(id, before);
  return true;
}

// What a key did is told as a character, 0 for none, and the caret comes into view.
void TellTyped(int id, char16_t character) {
  const platform::Events& events = platform::Listener();
  if (EditorOf(id) && events.typed) events.typed(id, character);
  platform::ScrollCaretIntoView(id);
}

bool Step(int id, bool (*step)(EditorText&, int&)) {
  EditorState* e = EditorOf(id);
  if (!e || e->readOnly) return false;
  const Ends before{e->anchor, e->caret};
  int caret = 0;
  if (!step(e->text, caret)) return false;
  e->anchor = e->caret = caret;
  KeepPositionsInside(*e);
  TellChange(id, before);
  platform::ScrollCaretIntoView(id);
  return true;
}

// Replaces the selection, or what lies beside the caret, by nothing. False: there is nothing.
bool EraseAtCaret(int id, bool forward) {
  EditorState* e = EditorOf(id);
  if (!e || e->readOnly) return false;
  if (e->anchor != e->caret) return PutOverSelection(id, u"", HistoryUse::Step);
  const int other = Clamped(*e, e->caret + (forward ? 1 : -1));
  if (other == e->caret) return false;
  const Ends before{e->anchor, e->caret};
  const int from = std::min(other, e->caret);
  e->anchor = e->caret =
      ReplacePositions(e->text, from, std::max(other, e->caret), u"", HistoryUse::Step);
  TellChange(id, before);
  return true;
}

std::u16string SelectedText(const EditorState& e) {
  const Ordered s = SelectionOf(e);
  const std::size_t at = IndexOfPosition(e.text, s.from);
  return e.text.text.substr(at, IndexOfPosition(e.text, s.to) - at);
}

int PositionInLine(const EditorState& e, int line, int column) {
  const int l = std::clamp(line, 0, LineCount(e) - 1);
  return LineStartPosition(e.text, l) + std::clamp(column, 0, LineLengthOf(e.text, l));
}

int CaretAfterKey(int id, const EditorState& e, const platform::KeyEvent& key) {
  const int line = LineOfPosition(e.text, e.caret);
  const int column = e.column >= 0 ? e.column : e.caret - LineStartPosition(e.text, line);
  switch (key.key) {
    case platform::kKeyLeft:
      if (!key.shift && e.anchor != e.caret) return SelectionOf(e).from;
      return Clamped(e, e.caret - 1);
    case platform::kKeyRight:
      if (!key.shift && e.anchor != e.caret) return SelectionOf(e).to;
      return Clamped(e, e.caret + 1);
    case platform::kKeyUp:
      return line > 0 ? PositionInLine(e, line - 1, column) : e.caret;
    case platform::kKeyDown:
      return line + 1 < LineCount(e) ? PositionInLine(e, line + 1, column) : e.caret;
    case platform::kKeyPageUp:
      return PositionInLine(e, line - LinesInView(id), column);
    case platform::kKeyPageDown:
      return PositionInLine(e, line + LinesInView(id), column);
    case platform::kKeyHome:
      return key.ctrl ? 0 : PositionInLine(e, line, 0);
    case platform::kKeyEnd:
      return key.ctrl ? TextLengthInPositions(e.text)
                      : PositionInLine(e, line, LineLengthOf(e.text, line));
    default:
      return e.caret;
  }
}

}  // namespace

bool TypeCharacter(int id, char16_t character) {
  EditorState* e = EditorOf(id);
  if (e) {
    if (e->readOnly) return false;
    const char16_t typed = character == u'\r' ? u'\n' : character;
    PutOverSelection(id, std::u16string_view(&typed, 1), HistoryUse::Typing);
    TellTyped(id, typed);
    return true;
  }
  Item* item = Find(id);
  if (!item || !IsTextItem(*item) || item->readOnly) return false;
  const int from = std::min(item->edit.anchor, item->edit.caret);
  const int to = std::max(item->edit.anchor, item->edit.caret);
  const std::u16string_view typed(&character, 1);
  const EditRun run = character == u'\n' ? EditRun::None : EditRun::Typing;
  if (ReplaceInEdit(*item, from, to, typed, run)) {
    SendCommand(id, platform::kNotifyEditChange);
  }
  return true;
}

void EraseInEditor(int id, bool forward) {
  if (EraseAtCaret(id, forward)) TellTyped(id, 0);
}

void TellEditingKey(int id) { TellTyped(id, 0); }

void MoveEditorCaret(int id, const platform::KeyEvent& key) {
  EditorState* e = EditorOf(id);
  if (!e) return;
  const bool vertical = key.key == platform::kKeyUp || key.key == platform::kKeyDown;
  const int line = LineOfPosition(e->text, e->caret);
  const int column = e->column >= 0 ? e->column : e->caret - LineStartPosition(e->text, line);
  const int caret = CaretAfterKey(id, *e, key);
  MoveSelection(id, key.shift ? e->anchor : caret, caret);
  e = EditorOf(id);
  if (!e) return;
  e->column = vertical ? column : -1;
  platform::ScrollCaretIntoView(id);
}

void FillEditor(int id) {
  const EditorState* e = EditorOf(id);
  if (e) ScrollTo(id, e->firstLine);
}

void PlaceCaret(int id, int from, int to) {
  EditorState* e = EditorOf(id);
  if (!e) return;
  MoveSelection(id, Clamped(*e, from), Clamped(*e, to));
  e->left = std::max(0, e->left + std::min(0, platform::PointOfPosition(id, e->caret).x));
  platform::ScrollCaretIntoView(id);
}

bool EditorSelect(int id, int from, int to) {
  const EditorState* e = EditorOf(id);
  if (!e || !CanBeUsed(id)) return false;
  platform::SetFocusTo(id);
  PlaceCaret(id, from, to);
  return true;
}

bool EditorSetAll(int id, std::u16string_view text) {
  const EditorState* found = EditorOf(id);
  if (!found || found->readOnly || !CanBeUsed(id)) return false;
  platform::SetFocusTo(id);
  EditorState* e = EditorOf(id);
  if (!e) return true;
  e->anchor = 0;
  e->caret = TextLengthInPositions(e->text);
  if (PutOverSelection(id, text, HistoryUse::Step)) TellTyped(id, 0);
  return true;
}

bool EditorUndo(int id) { return CanBeUsed(id) && Step(id, UndoStep); }

int EditorMark(int id, platform::Colour& band) {
  const EditorState* e = EditorOf(id);
  if (!e) return -1;
  band = e->markBand;
  return e->markedLine;
}

bool EditorBand(int id, int line, platform::Colour& band) {
  const EditorState* e = EditorOf(id);
  if (!e) return false;
  for (const platform::LineBand& each : e->bands) {
    if (each.line != line) continue;
    band = each.band;
    return true;
  }
  return false;
}

std::vector<platform::LineMark> EditorMarks(int id) {
  const EditorState* e = EditorOf(id);
  return e ? e->marks : std::vector<platform::LineMark>();
}

}  // namespace headless

namespace platform {

using headless::EditorOf;
using headless::EditorState;
using headless::HistoryUse;

bool MakeEditor(const EditorSpec& spec) {
  headless::Item* item =
      headless::NewItem(spec.id, headless::Kind::Editor, spec.parent, spec.hidden);
  if (!item) return false;
  item->name = spec.accessibleName;
  item->font = FontRole::Code;
  item->colours = {spec.text, spec.background, false};
  item->editor = std::make_unique<EditorState>();
  item->editor->readOnly = spec.readOnly;
  return true;
}

std::u16string_view EditorText(int id) {
  const EditorState* e = EditorOf(id);
  return e ? std::u16string_view(e->text.text) : std::u16string_view();
}

std::uint64_t EditorRevision(int id) {
  const EditorState* e = EditorOf(id);
  return e ? e->text.revision : 0;
}

bool EditorChangedLines(int id, std::uint64_t since, ChangedLines& lines) {
  const EditorState* e = EditorOf(id);
  return e && LinesSince(e->text.journal, since, e->text.revision, lines);
}

void SetEditorText(int id, std::u16string_view text) {
  EditorState* e = EditorOf(id);
  if (!e) return;
  const headless::ByProgram own;
  headless::SetWholeText(e->text, text);
  headless::BeginAtFront(id, *e);
}

void LayEditorTextAside(int id, std::uint64_t number) {
  EditorState* e = EditorOf(id);
  if (!e) return;
  DropEditorText(id, number);
  EmptyHistory(e->text);
  headless::EditorText empty;
  empty.revision = e->text.revision;
  empty.frozen = e->text.frozen;
  e->aside.push_back({number, std::exchange(e->text, std::move(empty))});
  e->anchor = e->caret = 0;
  int lines = 0;
  for (const headless::AsideText& each : e->aside) lines += headless::LineCountOf(each.text);
  while (lines > kMaxLinesAside) {
    lines -= headless::LineCountOf(e->aside.front().text);
    e->aside.erase(e->aside.begin());
  }
}

bool TakeEditorText(int id, std::uint64_t number, std::u16string_view text) {
  EditorState* e = EditorOf(id);
  if (!e) return false;
  const auto found = std::ranges::find(e->aside, number, &headless::AsideText::number);
  if (found == e->aside.end()) return false;
  if (found->text.text != text) {
    e->aside.erase(found);
    return false;
  }
  const headless::ByProgram own;
  headless::EditorText back = std::move(found->text);
  e->aside.erase(found);
  back.revision = e->text.revision + 1;
  back.frozen = e->text.frozen;
  back.journal = {};
  e->text = std::move(back);
  headless::BeginAtFront(id, *e);
  return true;
}

void DropEditorText(int id, std::uint64_t number) {
  EditorState* e = EditorOf(id);
  if (!e) return;
  std::erase_if(e->aside, [number](const headless::AsideText& each) {
    return number == 0 || each.number == number;
  });
}

int EditorLength(int id) {
  const EditorState* e = EditorOf(id);
  return e ? headless::TextLengthInPositions(e->text) : 0;
}

EditorRange EditorSelection(int id) {
  const EditorState* e = EditorOf(id);
  if (!e) return {};
  const headless::Ordered s = headless::SelectionOf(*e);
  return {s.from, s.to};
}

void SetEditorSelection(int id, EditorRange range) {
  const headless::ByProgram own;
  headless::PlaceCaret(id, range.from, range.to);
}

void ReplaceSelection(int id, std::u16string_view text, bool undoable) {
  const headless::ByProgram own;
  headless::PutOverSelection(id, text, undoable ? HistoryUse::Step : HistoryUse::Empty);
}

void ReplaceRange(int id, EditorRange range, std::u16string_view text) {
  EditorState* e = EditorOf(id);
  if (!e) return;
  const int a = headless::Clamped(*e, range.from);
  const int b = headless::Clamped(*e, range.to);
  const int from = std::min(a, b);
  const int to = std::max(a, b);
  if (from == to && text.empty()) return;
  const headless::ByProgram own;
  const headless::Ends before{e->anchor, e->caret};
  const int end = headless::ReplacePositions(e->text, from, to, text, HistoryUse::Step);
  e->anchor = headless::Moved(e->anchor, from, to, end);
  e->caret = headless::Moved(e->caret, from, to, end);
  headless::KeepPositionsInside(*e);
  headless::TellChange(id, before);
}

bool UndoEditor(int id) {
  const headless::ByProgram own;
  return headless::Step(id, headless::UndoStep);
}

bool RedoEditor(int id) {
  const headless::ByProgram own;
  return headless::Step(id, headless::RedoStep);
}

bool CanRedoEditor(int id) {
  const EditorState* e = EditorOf(id);
  return e && !e->text.redo.empty();
}

bool CanUndoEditor(int id) {
  const EditorState* e = EditorOf(id);
  return e && !e->text.undo.empty();
}

void SetEditorReadOnly(int id, bool readOnly) {
  if (EditorState* e = EditorOf(id)) e->readOnly = readOnly;
}

int EditorLineCount(int id) {
  const EditorState* e = EditorOf(id);
  return e ? headless::LineCount(*e) : 0;
}

int EditorLineStart(int id, int line) {
  const EditorState* e = EditorOf(id);
  if (!e || line < 0) return 0;
  if (line >= headless::LineCount(*e)) return headless::TextLengthInPositions(e->text);
  return headless::LineStartPosition(e->text, line);
}

int EditorLineLength(int id, int line) {
  const EditorState* e = EditorOf(id);
  if (!e || line < 0 || line >= headless::LineCount(*e)) return 0;
  return headless::LineLengthOf(e->text, line);
}

std::u16string EditorLineText(int id, int line) {
  const EditorState* e = EditorOf(id);
  if (!e || line < 0 || line >= headless::LineCount(*e)) return {};
  const int start = headless::LineStartPosition(e->text, line);
  const std::size_t at = headless::IndexOfPosition(e->text, start);
  return e->text.text.substr(at, static_cast<std::size_t>(headless::LineLengthOf(e->text, line)));
}

int EditorLineOf(int id, int position) {
  const EditorState* e = EditorOf(id);
  return e ? headless::LineOfPosition(e->text, headless::Clamped(*e, position)) : 0;
}

int FirstVisibleLine(int id) {
  const EditorState* e = EditorOf(id);
  return e ? e->firstLine : 0;
}

int VisibleLineCount(int id) { return EditorOf(id) ? headless::LinesInView(id) : 0; }

void ScrollToLine(int id, int line) { headless::ScrollTo(id, line); }

void ScrollCaretIntoView(int id) {
  const EditorState* e = EditorOf(id);
  if (!e) return;
  const int line = headless::LineOfPosition(e->text, e->caret);
  const int lines = headless::LinesInView(id);
  if (line < e->firstLine) {
    headless::ScrollTo(id, line);
  } else if (line >= e->firstLine + lines) {
    headless::ScrollTo(id, line - lines + 1);
  }
}

void ScrollSideways(int id, EditorRange stretch) {
  EditorState* e = EditorOf(id);
  if (!e) return;
  const int width = RectWidth(PlaceOf(id));
  if (width <= 0) return;
  for (const int position : {stretch.to, stretch.from}) {
    const int x = PointOfPosition(id, position).x;
    if (x < 0) e->left += x;
    if (x + headless::kCellWidth > width) e->left += x + headless::kCellWidth - width;
  }
}

int PositionAt(int id, int x, int y) {
  const EditorState* e = EditorOf(id);
  if (!e) return 0;
  const int line = e->firstLine + std::max(0, y) / kEditorLineHeight;
  const int column = (std::max(0, x) + e->left + headless::kCellWidth / 2) / headless::kCellWidth;
  return headless::PositionInLine(*e, line, column);
}

Point PointOfPosition(int id, int position) {
  const EditorState* e = EditorOf(id);
  if (!e) return {};
  const int at = headless::Clamped(*e, position);
  const int line = headless::LineOfPosition(e->text, at);
  const int column = at - headless::LineStartPosition(e->text, line);
  return {column * headless::kCellWidth - e->left, (line - e->firstLine) * kEditorLineHeight};
}

void MarkEditorLine(int id, int line, Colour band) {
  EditorState* e = EditorOf(id);
  if (!e) return;
  e->markedLine = line;
  e->markBand = band;
}

void SetLineBands(int id, const LineBand* bands, int count) {
  if (EditorState* e = EditorOf(id)) e->bands.assign(bands, bands + std::max(0, count));
}

void SetLineMarks(int id, const LineMark* marks, int count, Colour, Colour) {
  if (EditorState* e = EditorOf(id)) e->marks.assign(marks, marks + std::max(0, count));
}

void SetLineRuns(int id, int line, const ColourRun* runs, int count) {
  EditorState* e = EditorOf(id);
  if (!e || line < 0 || line >= headless::LineCount(*e)) return;
  e->text.runs[static_cast<std::size_t>(line)].assign(runs, runs + std::max(0, count));
}

void ClearLineRuns(int id) {
  if (EditorState* e = EditorOf(id)) {
    for (auto& runs : e->text.runs) runs.clear();
  }
}

int LineRuns(int id, int line, ColourRun* runs, int capacity) {
  const EditorState* e = EditorOf(id);
  if (!e || line < 0 || line >= headless::LineCount(*e)) return 0;
  const auto& kept = e->text.runs[static_cast<std::size_t>(line)];
  const int count = std::min(capacity, static_cast<int>(kept.size()));
  for (int i = 0; i < count; ++i) runs[i] = kept[static_cast<std::size_t>(i)];
  return static_cast<int>(kept.size());
}

void HoldEditorRedraw(int id, bool hold) {
  if (EditorState* e = EditorOf(id)) e->redrawHolds += hold ? 1 : -1;
}

void FreezeEditorUndo(int id, bool freeze) {
  EditorState* e = EditorOf(id);
  if (e) e->text.frozen = std::max(0, e->text.frozen + (freeze ? 1 : -1));
}

}  // namespace platform

namespace headless {

// The clipboard actions of an editor; edits and logs have theirs in control.cpp.
bool RunEditorAction(int id, platform::EditAction action) {
  using platform::EditAction;
  EditorState* e = EditorOf(id);
  if (!e) return false;
  const Ordered s = SelectionOf(*e);
  switch (action) {
    case EditAction::Undo:
      Step(id, UndoStep);
      break;
    case EditAction::Redo:
      Step(id, RedoStep);
      break;
    case EditAction::SelectAll:
      MoveSelection(id, 0, TextLengthInPositions(e->text));
      break;
    case EditAction::Copy:
      if (s.from != s.to) Clipboard() = SelectedText(*e);
      break;
    case EditAction::Cut:
      if (e->readOnly || s.from == s.to) break;
      Clipboard() = SelectedText(*e);
      EraseAtCaret(id, true);
      platform::ScrollCaretIntoView(id);
      break;
    case EditAction::Paste:
      if (e->readOnly || Clipboard().empty()) break;
      PutOverSelection(id, Clipboard(), HistoryUse::Step);
      platform::ScrollCaretIntoView(id);
      break;
    case EditAction::Delete:
      EraseAtCaret(id, true);
      break;
  }
  return true;
}

}  // namespace headless

namespace platform {

void RunEditAction(int id, EditAction action) {
  if (!headless::RunEditorAction(id, action)) headless::EditKeyAction(id, action);
}

}  // namespace platform
