// The code editors by id, over the editor widget.

#include "platform/qt/qt_editor.h"

#include <QScrollBar>
#include <QTextBlock>
#include <QTextLayout>
#include <algorithm>

#include "platform/editor.h"

namespace platform {

EditorWidget* EditorOf(int id) {
  const Placed* row = FindPlaced(id);
  return row != nullptr && row->kind == PlacedKind::Editor ? static_cast<EditorWidget*>(row->widget)
                                                           : nullptr;
}

namespace {

QTextBlock LineOf(const EditorWidget* editor, int line) {
  return line >= 0 ? editor->document()->findBlockByNumber(line) : QTextBlock();
}

// Where a position lies after `from` to `to` were replaced by a text that ends at `end`. The
// toolkit alone would carry every caret inside or at the front of the range to its end.
int Moved(int position, int from, int to, int end) {
  if (position < from || (position == from && to > from)) return position;
  if (position >= to) return position + end - to;
  return std::min(position, end);
}

void MakeReadOnly(EditorWidget* editor, bool readOnly) {
  editor->setReadOnly(readOnly);
  // The caret still walks through a text that cannot be changed.
  if (readOnly) {
    editor->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  }
}

}  // namespace

bool MakeEditor(const EditorSpec& spec) {
  QWidget* parent = ParentWidget(spec.parent);
  if (parent == nullptr || FindPlaced(spec.id) != nullptr) return false;
  auto* editor = new EditorWidget(spec, parent);
  if (spec.readOnly) MakeReadOnly(editor, true);
  Placed row;
  row.id = spec.id;
  row.kind = PlacedKind::Editor;
  row.widget = editor;
  return Settle(std::move(row), spec.accessibleName, FontOf(FontRole::Code), spec.hidden);
}

std::u16string_view EditorText(int id) {
  EditorWidget* editor = EditorOf(id);
  return editor != nullptr ? editor->Mirror() : std::u16string_view();
}

std::u16string EditorTextCopy(int id) { return std::u16string(EditorText(id)); }

std::uint64_t EditorRevision(int id) {
  const EditorWidget* editor = EditorOf(id);
  return editor != nullptr ? editor->Revision() : 0;
}

bool EditorChangedLines(int id, std::uint64_t since, ChangedLines& lines) {
  const EditorWidget* editor = EditorOf(id);
  return editor != nullptr && editor->LinesChangedSince(since, lines);
}

void SetEditorText(int id, std::u16string_view text) {
  const ByProgram own;
  if (EditorWidget* editor = EditorOf(id)) editor->SetWhole(text);
}

void LayEditorTextAside(int id, std::uint64_t number) {
  const ByProgram own;
  if (EditorWidget* editor = EditorOf(id)) editor->LayAside(number);
}

bool TakeEditorText(int id, std::uint64_t number, std::u16string_view text) {
  const ByProgram own;
  EditorWidget* editor = EditorOf(id);
  return editor != nullptr && editor->TakeBack(number, text);
}

void DropEditorText(int id, std::uint64_t number) {
  if (EditorWidget* editor = EditorOf(id)) editor->DropAside(number);
}

int EditorLength(int id) {
  const EditorWidget* editor = EditorOf(id);
  return editor != nullptr ? editor->Length() : 0;
}

EditorRange EditorSelection(int id) {
  const EditorWidget* editor = EditorOf(id);
  if (editor == nullptr) return EditorRange{};
  const QTextCursor cursor = editor->textCursor();
  return EditorRange{cursor.selectionStart(), cursor.selectionEnd()};
}

void SetEditorSelection(int id, EditorRange range) {
  const ByProgram own;
  if (EditorWidget* editor = EditorOf(id)) editor->Select(range.from, range.to);
}

void ReplaceSelection(int id, std::u16string_view text, bool undoable) {
  EditorWidget* editor = EditorOf(id);
  if (editor == nullptr) return;
  const ByProgram own;
  QTextCursor cursor = editor->textCursor();
  const int start = cursor.selectionStart();
  const int before = editor->Length() - (cursor.selectionEnd() - start);
  editor->KeepTells();
  editor->Replace(cursor, text);
  if (!undoable) editor->document()->clearUndoRedoStacks();
  const int end = start + editor->Length() - before;
  if (editor->textCursor().position() != end || editor->textCursor().hasSelection()) {
    editor->Select(end, end);
  }
  editor->TellKept();
}

void ReplaceRange(int id, EditorRange range, std::u16string_view text) {
  EditorWidget* editor = EditorOf(id);
  if (editor == nullptr) return;
  const ByProgram own;
  const int length = editor->Length();
  QTextCursor cursor(editor->document());
  cursor.setPosition(std::clamp(range.from, 0, length));
  cursor.setPosition(std::clamp(range.to, 0, length), QTextCursor::KeepAnchor);
  const int from = cursor.selectionStart();
  const int to = cursor.selectionEnd();
  const int anchor = editor->textCursor().anchor();
  const int caret = editor->textCursor().position();
  const int top = editor->verticalScrollBar()->value();
  editor->KeepTells();
  editor->Replace(cursor, text);
  const int end = to + editor->Length() - length;
  const int newAnchor = Moved(anchor, from, to, end);
  const int newCaret = Moved(caret, from, to, end);
  const QTextCursor now = editor->textCursor();
  if (now.anchor() != newAnchor || now.position() != newCaret) editor->Select(newAnchor, newCaret);
  editor->verticalScrollBar()->setValue(top);
  editor->TellKept();
}

bool UndoEditor(int id) {
  EditorWidget* editor = EditorOf(id);
  if (editor == nullptr || editor->isReadOnly() || !CanUndoEditor(id)) return false;
  const ByProgram own;
  editor->undo();
  return true;
}

bool RedoEditor(int id) {
  EditorWidget* editor = EditorOf(id);
  if (editor == nullptr || editor->isReadOnly() || !CanRedoEditor(id)) return false;
  const ByProgram own;
  editor->redo();
  return true;
}

bool CanRedoEditor(int id) {
  const EditorWidget* editor = EditorOf(id);
  return editor != nullptr && editor->document()->isRedoAvailable();
}

bool CanUndoEditor(int id) {
  const EditorWidget* editor = EditorOf(id);
  return editor != nullptr && editor->document()->isUndoAvailable();
}

void SetEditorReadOnly(int id, bool readOnly) {
  EditorWidget* editor = EditorOf(id);
  if (editor != nullptr && editor->isReadOnly() != readOnly) MakeReadOnly(editor, readOnly);
}

int EditorLineCount(int id) {
  const EditorWidget* editor = EditorOf(id);
  return editor != nullptr ? editor->document()->blockCount() : 0;
}

int EditorLineStart(int id, int line) {
  const EditorWidget* editor = EditorOf(id);
  if (editor == nullptr || line < 0) return 0;
  const QTextBlock block = LineOf(editor, line);
  return block.isValid() ? block.position() : editor->Length();
}

int EditorLineLength(int id, int line) {
  const EditorWidget* editor = EditorOf(id);
  if (editor == nullptr) return 0;
  const QTextBlock block = LineOf(editor, line);
  return block.isValid() ? block.length() - 1 : 0;
}

std::u16string EditorLineText(int id, int line) {
  const EditorWidget* editor = EditorOf(id);
  return editor != nullptr ? Text16(LineOf(editor, line).text()) : std::u16string();
}

int EditorLineOf(int id, int position) {
  const EditorWidget* editor = EditorOf(id);
  if (editor == nullptr) return 0;
  const int clamped = std::clamp(position, 0, editor->Length());
  return editor->document()->findBlock(clamped).blockNumber();
}

int FirstVisibleLine(int id) {
  const EditorWidget* editor = EditorOf(id);
  return editor != nullptr ? editor->FirstLine() : 0;
}

int VisibleLineCount(int id) {
  EditorWidget* editor = EditorOf(id);
  if (editor == nullptr) return 0;
  CatchUpSize(editor);
  return std::max(1, editor->viewport()->height() / kEditorLineHeight);
}

void ScrollToLine(int id, int line) {
  EditorWidget* editor = EditorOf(id);
  if (editor == nullptr) return;
  // The scroll bar of a hidden editor would go on to where the last line is the first.
  const int last = EditorLineCount(id) - VisibleLineCount(id);
  const int most = editor->isVisible() ? line : std::max(0, last);
  editor->verticalScrollBar()->setValue(std::min(line, most));
}

void ScrollCaretIntoView(int id) {
  if (EditorWidget* editor = EditorOf(id)) editor->ensureCursorVisible();
}

void ScrollSideways(int id, EditorRange stretch) {
  if (EditorWidget* editor = EditorOf(id)) {
    for (const int position : {stretch.to, stretch.from}) editor->ShowColumnOf(position);
  }
}

int PositionAt(int id, int x, int y) {
  const EditorWidget* editor = EditorOf(id);
  return editor != nullptr ? editor->PositionAtPoint(x, y) : 0;
}

Point PointOfPosition(int id, int position) {
  const EditorWidget* editor = EditorOf(id);
  return editor != nullptr ? editor->PointOf(position) : Point{};
}

void MarkEditorLine(int id, int line, Colour band) {
  if (EditorWidget* editor = EditorOf(id)) editor->Mark(line, band);
}

void SetLineBands(int id, const LineBand* bands, int count) {
  if (EditorWidget* editor = EditorOf(id)) editor->SetBands(bands, count);
}

void SetLineMarks(int id, const LineMark* marks, int count, Colour ground, Colour frame) {
  if (EditorWidget* editor = EditorOf(id)) editor->SetMarks(marks, count, ground, frame);
}

void SetLineRuns(int id, int line, const ColourRun* runs, int count) {
  if (EditorWidget* editor = EditorOf(id)) editor->SetRuns(line, runs, count);
}

int LineRuns(int id, int line, ColourRun* runs, int capacity) {
  const EditorWidget* editor = EditorOf(id);
  if (editor == nullptr) return 0;
  const QTextBlock block = LineOf(editor, line);
  if (!block.isValid()) return 0;
  const QList<QTextLayout::FormatRange> formats = block.layout()->formats();
  const int count = static_cast<int>(formats.size());
  for (int i = 0; i < std::min(count, capacity); ++i) {
    const QTextLayout::FormatRange& range = formats.at(i);
    constexpr Colour kRgb = 0xFFFFFF;
    ColourRun& run = runs[i];
    run = ColourRun{range.start, range.length, range.format.foreground().color().rgb() & kRgb,
                    range.format.fontWeight() >= QFont::Bold};
    run.marked = range.format.hasProperty(QTextFormat::BackgroundBrush);
    if (run.marked) run.ground = range.format.background().color().rgb() & kRgb;
  }
  return count;
}

void ClearLineRuns(int id) {
  if (EditorWidget* editor = EditorOf(id)) editor->ClearRuns();
}

void HoldEditorRedraw(int id, bool hold) {
  if (EditorWidget* editor = EditorOf(id)) editor->Hold(hold);
}

void FreezeEditorUndo(int id, bool freeze) {
  if (EditorWidget* editor = EditorOf(id)) editor->Freeze(freeze);
}

}  // namespace platform
