#include "codetools/completion.h"

#include <algorithm>

#include "codetools/editor_help.h"
#include "library/code_index.h"
#include "text/codetext.h"

namespace morva {

namespace {

constexpr std::size_t kCaretLineMost = 1000;  // units of the caret's line that are looked at
constexpr std::size_t kFilterMost = 94;
constexpr std::size_t kFilterLeast = 2;
constexpr std::size_t kCodeColumn = 6;
constexpr int kLeastBelow = 76;
constexpr int kLeastHeight = 28;
constexpr int kMostHeight = 196;
constexpr int kWidth = 394;
constexpr int kEdge = 4;  // pixels of a list that are no row

// G or M and behind it nothing but digits and points.
bool IsCode(std::u16string_view token) {
  if (token.empty() || (token[0] != u'G' && token[0] != u'M')) return false;
  return token.find_first_not_of(u"0123456789.", 1) == std::u16string_view::npos;
}

bool IsFilterUnit(char16_t c) {
  const char16_t folded = FoldUpper(c);
  return c == u' ' || c == u'\t' || (folded >= u'A' && folded <= u'Z');
}

void AddRowsThatBegin(CompletionRows& found, std::u16string_view token) {
  for (std::int32_t i = 0; i < kCodeRows && found.count < kMaxCompletions; ++i) {
    if (codeTable[i].code.substr(0, token.size()) == token) found.rows[found.count++] = i;
  }
}

void AddRowsThatHold(CompletionRows& found, std::u16string_view filter) {
  for (std::int32_t i = 0; i < kCodeRows && found.count < kMaxCompletions; ++i) {
    if (HoldsFolded(codeTable[i].name, filter)) {
      found.rows[found.count++] = i;
    }
  }
}

std::u16string CodeAndName(std::int32_t row) {
  return std::u16string(codeTable[row].code) + u" \u2014 " + std::u16string(codeTable[row].name);
}

}  // namespace

std::u16string_view WordsFilter(std::u16string_view line, int caret) {
  if (caret < 0 || static_cast<std::size_t>(caret) > line.size()) return {};
  const auto end = static_cast<std::size_t>(caret);
  const std::size_t least = end > kFilterMost ? end - kFilterMost : 0;
  std::size_t start = end;
  while (start > least && IsFilterUnit(line[start - 1])) --start;
  while (start < end && (line[start] == u' ' || line[start] == u'\t')) ++start;
  const std::u16string_view filter = line.substr(start, end - start);
  if (filter.size() < kFilterLeast || filter.back() == u' ' || filter.back() == u'\t') return {};
  return filter;
}

CompletionRows FindCompletions(std::u16string_view line, int caret, bool wordsView, bool manual) {
  CompletionRows found;
  const Token token = TokenInLine(line.substr(0, kCaretLineMost), caret);
  found.token = token.text;
  const bool isCode = IsCode(token.text);
  std::u16string_view filter;
  if (wordsView && !isCode) filter = WordsFilter(line, caret);
  if (!manual && !isCode && filter.empty()) return found;
  if (!filter.empty()) {
    found.start = caret - static_cast<int>(filter.size());
    found.end = caret;
    AddRowsThatHold(found, filter);
    return found;
  }
  const bool none = token.text.empty();
  found.start = none ? caret : token.start;
  found.end = none ? caret : token.end;
  AddRowsThatBegin(found, token.text);
  if (!manual && found.count == 1 && codeTable[found.rows[0]].code == token.text) {
    found.count = 0;
    found.settled = true;
  }
  return found;
}

std::u16string CompletionRowText(std::int32_t row, bool selected) {
  std::u16string text(selected ? u">  " : u"   ");
  text += codeTable[row].code;
  const std::size_t code = codeTable[row].code.size();
  text.append(code < kCodeColumn ? kCodeColumn - code + 2 : 2, u' ');
  text += codeTable[row].name;
  return text;
}

std::u16string CompletionStatus(std::int32_t row, bool chosen) {
  return CodeAndName(row) + u"  \u2022  Up/Down choose  \u2022  " +
         (chosen ? u"Enter or Tab inserts" : u"Tab inserts") + u"  \u2022  Esc closes";
}

std::u16string InsertedStatus(std::int32_t row) { return u"Inserted " + CodeAndName(row); }

platform::Rect CompletionPlace(const platform::Rect& editor, platform::Point caret, int lineHeight,
                               int rows) {
  const int top = caret.y + lineHeight;
  const int below = editor.bottom - top;
  const int above = caret.y - editor.top;
  const bool over = below < kLeastBelow && above > below;
  int height = std::clamp(rows * kCompletionPitch + kEdge, kLeastHeight, kMostHeight);
  height = std::max(std::min(height, over ? above : below), kLeastHeight);
  const int width = std::min(kWidth, RectWidth(editor));
  platform::Rect place;
  place.left = std::max(editor.left, std::min(caret.x, editor.right - width));
  place.right = place.left + width;
  place.top = over ? caret.y - height : top;
  place.top = std::max(editor.top, std::min(place.top, editor.bottom - height));
  place.bottom = place.top + height;
  return place;
}

}  // namespace morva
