// The rich code editors: whole text in and out with CR LF, selection, undo, lines, colours.
//
// Two ways to count. A text index counts 16-bit units of the text as EditorText hands it out,
// a line end being CR LF, two units. An editor position counts a line end as one. Every
// function here that takes or gives a position means editor positions.
//
// Every change of the text sends kNotifyEditChange, also SetEditorText. The application's guards
// decide what a notification means. A key that changes the text is told in this order:
// Events::key, Events::selection where the caret or selection is another one, kNotifyEditChange,
// Events::typed. Whoever hears of a change finds the new text and the final selection.
//
// A run of typed characters within a line is one undo step; a paste and a replacement are each
// one of their own. A character with Alt is not written.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/window.h"

namespace platform {

inline constexpr int kEditorLineHeight = 20;  // pixels, also the gutter's pitch
inline constexpr int kEditorTop = 4;          // pixels above the first line, as in the gutter

struct EditorSpec {
  int id = 0;
  const char16_t* accessibleName = u"";
  Colour text = 0;
  Colour background = 0;
  int parent = kMainWindow;
  bool hidden = false;
  bool readOnly = false;
  Colour caretLine = 0;  // of the band behind the caret's line, below all others; 0: none
};

bool MakeEditor(const EditorSpec& spec);

// The whole text with CR LF line ends. The view stays valid until the editor's next change.
// Asking again without a change costs nothing; after an edit it costs about a copy of the
// text behind the edit at most.
std::u16string_view EditorText(int id);
// Grows by one at every change of the text.
std::uint64_t EditorRevision(int id);
// What changed, in whole lines: from `line` on `after` lines stand in the place of `before`. All
// others are as they were. That may be more lines than did change.
struct ChangedLines {
  int line = 0;
  int before = 0;
  int after = 0;
};
// The change from the text of a revision to the one that stands, all between counted as one. False:
// the editor does not know as far back, or got a text as a whole since.
bool EditorChangedLines(int id, std::uint64_t since, ChangedLines& lines);
// Replaces everything; LF, CR and CR LF are line ends alike, and U+FFFD stands for NUL, U+2028,
// U+2029, U+FDD0 and U+FDD1. The undo history starts anew, caret and view are at the front.
// Sends kNotifyEditChange, then Events::selection, also for the same text.
void SetEditorText(int id, std::u16string_view text);
// Lays what the editor shows aside under a number above 0, colours and all, at no cost of the
// text's length. Then SetEditorText or TakeEditorText must follow at once: until then the editor is
// empty, and nothing is told. Of what lies aside that which lay there longest goes when all of it
// has more than kMaxLinesAside lines.
void LayEditorTextAside(int id, std::uint64_t number);
// As SetEditorText with this text, by what lies aside under the number. False: nothing does, or
// another text, which is gone then; the editor is as it was.
bool TakeEditorText(int id, std::uint64_t number, std::u16string_view text);
void DropEditorText(int id, std::uint64_t number);  // 0: all that lies aside

int EditorLength(int id);  // in positions

struct EditorRange {
  int from = 0;
  int to = 0;
};
EditorRange EditorSelection(int id);  // `from` is not behind `to`
// Clamped; the caret goes to `to` and comes into view.
void SetEditorSelection(int id, EditorRange range);
// Replaces the selection as one undo step; the caret ends behind the text. With `undoable`
// false the history is emptied. Where nothing replaces nothing, nothing is told.
void ReplaceSelection(int id, std::u16string_view text, bool undoable);
// Replaces `from` to `to` as one undo step and leaves selection and scrolling as the edit
// moves them.
void ReplaceRange(int id, EditorRange range, std::u16string_view text);
// One step; the caret ends behind what came back, in view. False: there is none, or the editor
// is read-only.
bool UndoEditor(int id);
bool RedoEditor(int id);
bool CanUndoEditor(int id);
bool CanRedoEditor(int id);
void SetEditorReadOnly(int id, bool readOnly);

int EditorLineCount(int id);  // an empty text has one line
int EditorLineStart(int id, int line);
int EditorLineLength(int id, int line);  // without its line end
int EditorLineOf(int id, int position);
// The units of a line without its line end, empty for no such line. It costs the line alone, where
// EditorText may cost the text.
std::u16string EditorLineText(int id, int line);
int FirstVisibleLine(int id);
int VisibleLineCount(int id);  // whole lines of kEditorLineHeight; also of a hidden editor
// Becomes the first visible one where possible: the last line stays at the lower edge. Scrolling
// sends kNotifyVScroll, whoever scrolls.
void ScrollToLine(int id, int line);
void ScrollCaretIntoView(int id);
// Sideways alone: the end of the stretch comes into view, then its front. The caret stays; placing
// it shows it again.
void ScrollSideways(int id, EditorRange stretch);
// Client pixels of the editor. Beside a line its end, below the text a place in the last line.
int PositionAt(int id, int x, int y);
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

// Stretches of lines with a ground and a frame, lines ascending, in place of those there were. They
// lie over the bands and under the text, and stay with their line numbers as bands do.
struct LineMark {
  int line = 0;
  int from = 0;  // in the line
  int length = 0;
};
void SetLineMarks(int id, const LineMark* marks, int count, Colour ground, Colour frame);

struct ColourRun {
  int from = 0;  // in the line
  int length = 0;
  Colour colour = 0;
  bool bold = false;
  bool marked = false;  // on a ground of its own
  Colour ground = 0;
};
// Colours of one line, replacing those it had. A layout format: no undo step, no caret move. An
// edit keeps the colours of other lines; those of the lines it touches are to be set again.
void SetLineRuns(int id, int line, const ColourRun* runs, int count);
int LineRuns(int id, int line, ColourRun* runs, int capacity);
// Takes the colours of all lines away; where there are none it costs nothing.
void ClearLineRuns(int id);
void HoldEditorRedraw(int id, bool hold);  // nests
// While it is frozen a replacement empties the history and leaves no step; nests.
void FreezeEditorUndo(int id, bool freeze);

}  // namespace platform
