#include "documents/user_code_split.h"

#include <algorithm>

#include "app/command_ids.h"
#include "documents/block_text.h"
#include "documents/feature_blocks.h"
#include "documents/marker_lines.h"
#include "documents/tab_table.h"
#include "platform/editor.h"
#include "text/codetext.h"

namespace morva {

namespace {

using std::size_t;

std::u16string_view Part(std::u16string_view text, std::int32_t from, std::int32_t to) {
  return text.substr(static_cast<size_t>(from), static_cast<size_t>(std::max(to - from, 0)));
}

bool HoldsText(std::u16string_view text, std::int32_t from, std::int32_t to) {
  return Part(text, from, to).find_first_not_of(u" \t\r\n") != std::u16string_view::npos;
}

bool IsBlankLine(std::u16string_view text) {
  return text.find_first_not_of(u" \t\r\n") == std::u16string_view::npos;
}

// Whether only blanks stand between the caret and its line's end, and the line says something.
bool EndsItsLine(int editor, int caret, int line) {
  const int start = platform::EditorLineStart(editor, line);
  const int length = platform::EditorLineLength(editor, line);
  const std::u16string_view text = platform::EditorText(editor);
  const std::int32_t from = TextIndexOf(text, start);
  const std::u16string_view words = Part(text, from, from + length);
  return !IsBlankLine(words) && IsBlankLine(words.substr(static_cast<size_t>(caret - start)));
}

void AppendMark(std::u16string& text, std::u16string_view mark, std::u16string_view rest) {
  text += mark;
  text += rest;
  text += u')';
}

bool EndStands(std::u16string_view text, std::int32_t id) {
  std::u16string mark;
  AppendMark(mark, kEndMark, IntegerText(id));
  return HoldsFolded(text, mark);
}

}  // namespace

CaretPlace CodeCaret(std::u16string_view text) {
  // Both editors have the same lines.
  const int editor = ShownEditor();
  const int caret = platform::EditorSelection(editor).to;
  const int line = platform::EditorLineOf(editor, caret);
  CaretPlace place;
  const int start = platform::EditorLineStart(kIdEditor, line);
  place.caret = TextIndexOf(text, editor == kIdEditor ? caret : start);
  place.line = TextIndexOf(text, start);
  if (!EndsItsLine(editor, caret, line)) return place;
  const size_t end = LineEndFrom(text, static_cast<size_t>(place.line));
  place.line = static_cast<std::int32_t>(PastLineEnd(text, end));
  return place;
}

SplitPlace FindSplit(std::u16string_view text, const CaretPlace& caret) {
  SplitPlace place;
  const int around = FeatureAround(caret.caret);
  std::int32_t from = 0;
  std::int32_t to = 0;
  if (around < 0) return place;
  const FeatureRecord& row = features.rows[around];
  if (row.settings.kind != kKindUserCode || row.needsMarkers) return place;
  if (!UserCodeSpan(text, row, from, to)) return place;
  place.row = around;
  place.at = caret.line;
  place.end = to;
  place.before = HoldsText(text, from, std::min(caret.line, to));
  place.behind = HoldsText(text, std::max(caret.line, from), to);
  return place;
}

std::int32_t SplitIndex(const SplitPlace& place) {
  const FeatureRecord& row = features.rows[place.row];
  if (!place.before) return row.start;
  return place.behind ? place.at : row.end;
}

std::int32_t RestId(std::u16string_view text, std::int32_t newId) {
  std::int32_t id = std::max(newId, features.nextId - 1) + 1;
  while (EndStands(text, id)) ++id;
  return id;
}

std::u16string SplitText(std::u16string_view text, const SplitPlace& place,
                         std::u16string_view block, std::int32_t restId) {
  const FeatureRecord& row = features.rows[place.row];
  const std::u16string rest = IntegerText(restId);
  std::u16string parted;
  AppendMark(parted, kEndMark, IntegerText(row.id));
  parted += u"\r\n";
  parted += block;
  parted += u"\r\n";
  AppendMark(parted, kTextMark, rest);
  parted += u"\r\n";
  AppendMark(parted, kNameMark, row.name[0] ? row.name : KindWords(kKindUserCode));
  parted += u"\r\n";
  parted += Part(text, place.at, place.end);
  AppendMark(parted, kEndMark, rest);
  return parted;
}

}  // namespace morva
