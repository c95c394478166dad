// The text of a headless editor: CR LF inside, line starts, history, colour runs.
//
// Pure: no window, no events. Positions count a line end as one, text indices as two. Edits
// keep the line starts of what lies before them and move those behind, so that a text of a
// hundred thousand lines can be typed into.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/common/changed_lines.h"
#include "platform/common/line_ends.h"
#include "platform/editor.h"

namespace headless {

// One replaced range: at text index `at`, `removed` stood and `inserted` stands.
struct TextChange {
  std::size_t at = 0;
  std::u16string removed;
  std::u16string inserted;
  bool typing = false;  // may take up the next typed character
};

struct EditorText {
  std::u16string text;                    // line ends are CR LF
  std::vector<std::size_t> starts = {0};  // text index of every line's first unit
  std::vector<std::vector<platform::ColourRun>> runs = {{}};
  std::vector<TextChange> undo;
  std::vector<TextChange> redo;
  std::uint64_t revision = 0;
  platform::LineJournal journal;
  int frozen = 0;  // above 0 changes leave no step
};

using platform::WithCrLf;

int TextLengthInPositions(const EditorText& t);
int LineOfPosition(const EditorText& t, int position);
int LineStartPosition(const EditorText& t, int line);
int LineLengthOf(const EditorText& t, int line);
std::size_t IndexOfPosition(const EditorText& t, int position);
int PositionOfIndex(const EditorText& t, std::size_t index);

// New content, no history.
void SetWholeText(EditorText& t, std::u16string_view text);
enum class HistoryUse { Step, Typing, Empty };
// Replaces positions `from` to `to`, which must lie in the text. The position behind the new
// text is the answer.
int ReplacePositions(EditorText& t, int from, int to, std::u16string_view text, HistoryUse use);
void EmptyHistory(EditorText& t);
// The next typed character starts a step of its own.
void EndTypingRun(EditorText& t);
// One step; false without any. `caret` becomes the position behind what came back.
bool UndoStep(EditorText& t, int& caret);
bool RedoStep(EditorText& t, int& caret);

}  // namespace headless
