// The rich code editors: whole text in and out with CR LF, selection, undo, lines, colours.
//
// Two ways to count. A text index counts 16-bit units of the text as EditorText hands it out,
// a line end being CR LF, two units. An editor position counts a line end as one. Every
// function here that takes or gives a position means editor positions.
//
// Changes by the user and by ReplaceSelection send kNotifyEditChange; SetEditorText sends it
// too. The application's guards decide what a notification means.
#pragma once

#include <cstdint>
#include <string_view>

#include "platform/window.h"

namespace platform {

struct EditorSpec {
  int id = 0;
  const char16_t* accessibleName = u"";
  Colour text = 0;
  Colour background = 0;
  int parent = kMainWindow;
  bool hidden = false;
  bool readOnly = false;
};

bool MakeEditor(const EditorSpec& spec);

// The whole text with CR LF line ends. The view stays valid until the editor's next change.
// Asking again without a change costs nothing; after an edit it costs about a copy of the
// text behind the edit at most.
std::u16string_view EditorText(int id);
// Grows by one at every change of the text.
std::uint64_t EditorRevision(int id);
// Replaces everything; LF, CR and CR LF are line ends alike. The undo history starts anew.
void SetEditorText(int id, std::u16string_view text);
int EditorLength(int id);  // in positions

struct EditorRange {
  int from = 0;
  int to = 0;
};
EditorRange EditorSelection(int id);
void SetEditorSelection(int id, EditorRange range);  // clamped; the caret goes to `to`
// Replaces the selection as one undo step; the caret ends behind the text. With `undoable`
// false the history is emptied.
void ReplaceSelection(int id, std::u16string_view text, bool undoable);
// Replaces `from` to `to` as one undo step and leaves selection and scrolling as the edit
// moves them.
void ReplaceRange(int id, EditorRange range, std::u16string_view text);
bool UndoEditor(int id);
bool RedoEditor(int id);
bool CanUndoEditor(int id);
bool CanRedoEditor(int id);
void SetEditorReadOnly(int id, bool readOnly);

int EditorLineCount(int id);  // an empty text has one line
int EditorLineStart(int id, int line);
int EditorLineLength(int id, int line);  // without its line end
int EditorLineOf(int id, int position);
int FirstVisibleLine(int id);
int VisibleLineCount(int id);
void ScrollToLine(int id, int line);  // becomes the first visible one where possible
void ScrollCaretIntoView(int id);
int PositionAt(int id, int x, int y);        // client pixels of the editor
Point PointOfPosition(int id, int position);  // top left of the character cell

// Marks one line with a band behind its text, -1 for none. No undo step, no caret move.
void MarkEditorLine(int id, int line, Colour band);

// Bands behind whole lines, lines ascending, in place of those there were. They belong to line
// numbers and do not move with an edit; SetEditorText takes them away.
struct LineBand {
  int line = 0;
  Colour band = 0;
};
void SetLineBands(int id, const LineBand* bands, int count);

struct ColourRun {
  int from = 0;    // in the line
  int length = 0;
  Colour colour = 0;
  bool bold = false;
};
// Colours of one line, replacing those it had. A layout format: no undo step, no caret move.
void SetLineRuns(int id, int line, const ColourRun* runs, int count);
int LineRuns(int id, int line, ColourRun* runs, int capacity);
void HoldEditorRedraw(int id, bool hold);   // nests
void FreezeEditorUndo(int id, bool freeze);

}  // namespace platform
