#include "codetools/words_pair.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "codetools/command_words.h"
#include "codetools/line_match.h"

namespace morva {

namespace {

using std::size_t;
using View = std::u16string_view;

// Among so many replaced lines even a single changed one is looked for at every key.
constexpr size_t kReplacedLooked = 4096;

bool IsLineStart(View text, size_t at) { return at == 0 || EndsLine(text, at - 1); }

// Lines apart from their line ends. The last line of a text has none.
struct Lines {
  std::vector<View> text;
  std::vector<View> ends;
};

// `count` lines of `text` from the line start `at` on.
void AddLines(Lines& lines, View text, size_t at, size_t count) {
  for (; count > 0; --count) {
    const size_t next = BehindLine(text, at);
    size_t end = next;
    if (end > at && text[end - 1] == u'\n') {
      --end;
      if (end > at && text[end - 1] == u'\r') --end;
    } else if (end > at && text[end - 1] == u'\r') {
      --end;
    }
    lines.text.push_back(text.substr(at, end - at));
    lines.ends.push_back(text.substr(end, next - end));
    at = next;
  }
}

// The one place where two texts differ, in whole lines of both.
struct Difference {
  size_t from = 0;
  size_t toBefore = 0;
  size_t toAfter = 0;
  size_t line = 0;
  size_t linesBefore = 0;
  size_t linesAfter = 0;
};

// A stretch of whole lines that holds the change and the caret, as it was and as it is. What lies
// around it is the same in both texts.
struct Window {
  size_t line = 0;
  std::u16string before;
  std::u16string after;
  size_t caret = 0;  // in `after`
  bool atStart = false;
  bool atEnd = false;
};
// Which more lines a window needs to tell what the whole texts would.
enum class Lack { Nothing, Front, Back };

// Whole programs are compared where it is not known what changed, so that equal stretches go at
// once.
constexpr size_t kStretch = 4096;

bool SameStretch(View a, View b, size_t at) {
  return std::equal(a.begin() + at, a.begin() + at + kStretch, b.begin() + at);
}

size_t CommonFront(View a, View b) {
  const size_t least = std::min(a.size(), b.size());
  size_t count = 0;
  while (count + kStretch <= least && SameStretch(a, b, count)) count += kStretch;
  while (count < least && a[count] == b[count]) ++count;
  return count;
}

// At most `most` units, which both texts have.
size_t CommonBack(View a, View b, size_t most) {
  a = a.substr(a.size() - most);
  b = b.substr(b.size() - most);
  size_t count = 0;
  while (count + kStretch <= most && SameStretch(a, b, most - count - kStretch)) count += kStretch;
  while (count < most && a[most - 1 - count] == b[most - 1 - count]) ++count;
  return count;
}

Lack FindDifference(const Window& window, Difference& found) {
  const View before = window.before;
  const View after = window.after;
  const size_t least = std::min(before.size(), after.size());
  const size_t behind = after.size() - std::min(window.caret, after.size());
  if (behind > least && !window.atStart) return Lack::Front;
  // What stands behind the caret now stood there before. Only then is it known which of two equal
  // lines was put in or taken out in front of it.
  size_t back = behind <= least ? CommonBack(before, after, behind) : 0;
  const bool told = back == behind;
  if (!told) back = 0;
  size_t front =
      CommonFront(before.substr(0, before.size() - back), after.substr(0, after.size() - back));
  if (!told && front == least && !window.atEnd) return Lack::Back;
  back += CommonBack(before.substr(0, before.size() - back), after.substr(0, after.size() - back),
                     least - back - front);
  // No line end is split.
  if (front > 0 && before[front - 1] == u'\r') --front;
  if (back > 0 && before[before.size() - back] == u'\n') --back;
  found.from = front;
  while (!IsLineStart(before, found.from)) --found.from;
  found.toBefore = before.size() - back;
  found.toAfter = after.size() - back;
  if (!IsLineStart(before, found.toBefore) || !IsLineStart(after, found.toAfter)) {
    const size_t rest = BehindLine(before, found.toBefore) - found.toBefore;
    found.toBefore += rest;
    found.toAfter += rest;
  }
  // Behind the last line end there is one line more, be it empty.
  const size_t last = window.atEnd && found.toBefore == before.size() ? 1 : 0;
  found.line = window.line + CountLineEnds(before.substr(0, found.from));
  found.linesBefore = CountLineEnds(before.substr(found.from, found.toBefore - found.from)) + last;
  found.linesAfter = CountLineEnds(after.substr(found.from, found.toAfter - found.from)) + last;
  return Lack::Nothing;
}

// The window of a change with so many lines more at its front and back, the caret's line in it.
Window WindowOf(const ChunkedLines& words, const WordsChange& change, size_t front, size_t back) {
  const size_t lines = LineCount(words);
  const bool toEnd = change.line + change.before >= lines;
  const size_t after = CountLineEnds(change.after) + (toEnd ? 1 : 0);
  Window window;
  window.line = std::min(change.line, change.caretLine);
  window.line -= std::min(front, window.line);
  size_t end = change.line + change.before;
  if (change.caretLine >= change.line + after) {
    end = std::max(end, change.caretLine - after + change.before + 1);
  }
  end = std::min(end + back, lines);
  // An empty last line has no units: where it begins the text ends.
  if (end + 1 == lines && LinesOf(words, end, 1).empty()) end = lines;
  const std::u16string ahead = LinesOf(words, window.line, change.line - window.line);
  const size_t behind = change.line + change.before;
  window.before = LinesOf(words, window.line, end - window.line);
  window.after = ahead;
  window.after += change.after;
  if (end > behind) window.after += LinesOf(words, behind, end - behind);
  window.caret = BehindLines(window.after, 0, change.caretLine - window.line) + change.caretColumn;
  window.atStart = window.line == 0;
  window.atEnd = end >= lines;
  return window;
}

// Looks at more lines until they tell.
Window FindChange(const ChunkedLines& words, const WordsChange& change, Difference& found) {
  size_t front = 0;
  size_t back = 0;
  for (;;) {
    Window window = WindowOf(words, change, front, back);
    const Lack lack = FindDifference(window, found);
    if (lack == Lack::Nothing) return window;
    size_t& more = lack == Lack::Front ? front : back;
    more = more * 4 + 4;
  }
}

// What stood in a stretch of lines when the words were made from the code.
struct Stretch {
  size_t line = 0;  // the stretch in the lines before the change
  size_t end = 0;
  std::vector<ReplacedLines> parts;  // what is known to be replaced in it
  Lines words;
  Lines code;
};

// Takes the replaced lines that the change touches out of the pair, and widens the stretch to them.
void TakeTouched(WordsPair& pair, const Difference& change, Stretch& stretch) {
  stretch.line = change.line;
  stretch.end = change.line + change.linesBefore;
  const auto touches = [&](const ReplacedLines& r) {
    return r.line <= change.line + change.linesBefore && r.line + r.count >= change.line;
  };
  for (ReplacedLines& r : pair.replaced) {
    if (!touches(r)) continue;
    stretch.line = std::min(stretch.line, r.line);
    stretch.end = std::max(stretch.end, r.line + r.count);
    stretch.parts.push_back(std::move(r));
    r.count = 0;
    r.line = static_cast<size_t>(-1);
  }
  std::erase_if(pair.replaced,
                [](const ReplacedLines& r) { return r.line == static_cast<size_t>(-1); });
}

// The lines of the stretch as they stood; `words` and `code` are those of before the change.
void FindOriginals(View words, View code, Stretch& stretch) {
  size_t line = stretch.line;
  size_t wordsAt = 0;
  size_t codeAt = 0;
  const auto standing = [&](size_t to) {
    AddLines(stretch.words, words, wordsAt, to - line);
    AddLines(stretch.code, code, codeAt, to - line);
    wordsAt = BehindLines(words, wordsAt, to - line);
    codeAt = BehindLines(code, codeAt, to - line);
    line = to;
  };
  for (const ReplacedLines& part : stretch.parts) {
    standing(part.line);
    const size_t count = CountLineEnds(part.words);
    AddLines(stretch.words, part.words, 0, count);
    AddLines(stretch.code, part.code, 0, count);
    wordsAt = BehindLines(words, wordsAt, part.count);
    codeAt = BehindLines(code, codeAt, part.count);
    line = part.line + part.count;
  }
  standing(stretch.end);
}

// Replaced lines anywhere, for what was cut and is put in at another place.
struct Pool {
  std::unordered_map<View, View> codeOf;
  void Add(const Lines& words, const Lines& code) {
    for (size_t i = 0; i < words.text.size(); ++i) codeOf.emplace(words.text[i], code.text[i]);
  }
};

Pool MakePool(const WordsPair& pair, const Stretch& stretch) {
  Pool pool;
  pool.Add(stretch.words, stretch.code);
  for (const ReplacedLines& r : pair.replaced) {
    Lines words;
    Lines code;
    const size_t count = CountLineEnds(r.words);
    AddLines(words, r.words, 0, count);
    AddLines(code, r.code, 0, count);
    pool.Add(words, code);
  }
  return pool;
}

std::u16string CodeOfLine(View words, bool inComment, const Pool& pool) {
  const auto known = pool.codeOf.find(words);
  // In another place the same code may read otherwise: a comment may be open there.
  if (known != pool.codeOf.end() && ShownWordsOfLine(known->second, inComment) == words)
    return std::u16string(known->second);
  return CodeOfShownLine(words, inComment);
}

// The code of the changed lines: of those that stood there, and of those that stood there before
// other changes, as it was; else from their words.
std::vector<std::u16string> CodeOfChange(const WordsPair& pair, const Stretch& stretch,
                                         const Lines& now, size_t at, const Lines& oldWords,
                                         const Lines& oldCode, size_t count, bool inComment) {
  const std::vector<size_t> originals = MatchLines(stretch.words.text, now.text);
  const std::vector<View> changed(now.text.begin() + static_cast<std::ptrdiff_t>(at),
                                  now.text.begin() + static_cast<std::ptrdiff_t>(at + count));
  const std::vector<size_t> standing = MatchLines(oldWords.text, changed);
  size_t replaced = stretch.words.text.size();
  for (const ReplacedLines& r : pair.replaced) replaced += r.code.size() / 8 + 1;
  Pool pool;
  if (count > 1 || replaced <= kReplacedLooked) pool = MakePool(pair, stretch);
  std::vector<std::u16string> code;
  code.reserve(count);
  for (size_t i = 0; i < count; ++i) {
    if (standing[i] != kNoLine) {
      code.emplace_back(oldCode.text[standing[i]]);
    } else if (originals[at + i] != kNoLine) {
      code.emplace_back(stretch.code.text[originals[at + i]]);
    } else {
      code.push_back(CodeOfLine(changed[i], inComment, pool));
    }
    inComment = LeavesCommentOpen(code.back(), inComment);
  }
  return code;
}

// What is still another line than it was, to be known again. Equal lines at the ends are not.
void KeepReplaced(WordsPair& pair, const Stretch& stretch, const Lines& now,
                  const std::vector<View>& nowCode, size_t line) {
  const auto same = [&](size_t was, size_t is) {
    return stretch.words.text[was] == now.text[is] && stretch.code.text[was] == nowCode[is];
  };
  const size_t were = stretch.words.text.size();
  const size_t are = now.text.size();
  const size_t least = std::min(were, are);
  size_t front = 0;
  while (front < least && same(front, front)) ++front;
  size_t back = 0;
  while (back < least - front && same(were - 1 - back, are - 1 - back)) ++back;
  if (front + back == were && front + back == are) return;
  ReplacedLines kept;
  kept.line = line + front;
  kept.count = are - front - back;
  for (size_t i = front; i < were - back; ++i) {
    (kept.words += stretch.words.text[i]) += u'\n';
    (kept.code += stretch.code.text[i]) += u'\n';
  }
  const auto place = std::find_if(pair.replaced.begin(), pair.replaced.end(),
                                  [&](const ReplacedLines& r) { return r.line > kept.line; });
  pair.replaced.insert(place, std::move(kept));
}

}  // namespace

WordsPair MakeWordsPair(View code, View words) {
  WordsPair pair;
  pair.code = InChunks(code);
  FindComments(pair.code);
  pair.words = InChunks(words);
  return pair;
}

CodeChange TakeWords(WordsPair& pair, const WordsChange& given) {
  CodeChange result;
  if (LinesOf(pair.words, given.line, given.before) == given.after) return result;
  Difference change;
  const Window window = FindChange(pair.words, given, change);
  const View put = View(window.after).substr(change.from, change.toAfter - change.from);
  Stretch stretch;
  TakeTouched(pair, change, stretch);
  const size_t count = stretch.end - stretch.line;
  const std::u16string wordsBefore = LinesOf(pair.words, stretch.line, count);
  const std::u16string codeBefore = LinesOf(pair.code, stretch.line, count);
  FindOriginals(wordsBefore, codeBefore, stretch);
  const size_t at = change.line - stretch.line;
  const size_t wordsFrom = BehindLines(wordsBefore, 0, at);
  const size_t wordsTo = BehindLines(wordsBefore, wordsFrom, change.linesBefore);
  const size_t codeFrom = BehindLines(codeBefore, 0, at);
  const size_t codeTo = BehindLines(codeBefore, codeFrom, change.linesBefore);
  std::u16string wordsNow = wordsBefore.substr(0, wordsFrom);
  wordsNow += put;
  wordsNow.append(wordsBefore, wordsTo);
  Lines now;
  AddLines(now, wordsNow, 0, count - change.linesBefore + change.linesAfter);
  Lines oldWords;
  Lines oldCode;
  AddLines(oldWords, wordsBefore, wordsFrom, change.linesBefore);
  AddLines(oldCode, codeBefore, codeFrom, change.linesBefore);
  const std::vector<std::u16string> code =
      CodeOfChange(pair, stretch, now, at, oldWords, oldCode, change.linesAfter,
                   IsInComment(pair.code, change.line));
  result.line = change.line;
  result.before = codeBefore.substr(codeFrom, codeTo - codeFrom);
  for (size_t i = 0; i < code.size(); ++i) (result.after += code[i]) += now.ends[at + i];
  // The lines of the stretch as they stand now: in front of the change, changed, behind it.
  Lines around;
  AddLines(around, codeBefore, 0, at);
  std::vector<View> nowCode = around.text;
  nowCode.insert(nowCode.end(), code.begin(), code.end());
  Lines behind;
  AddLines(behind, codeBefore, codeTo, stretch.end - change.line - change.linesBefore);
  nowCode.insert(nowCode.end(), behind.text.begin(), behind.text.end());
  for (ReplacedLines& r : pair.replaced) {
    if (r.line > change.line) r.line += change.linesAfter - change.linesBefore;
  }
  KeepReplaced(pair, stretch, now, nowCode, stretch.line);
  ReplaceLines(pair.words, change.line, change.linesBefore, put);
  ReplaceLines(pair.code, change.line, change.linesBefore, result.after);
  return result;
}

}  // namespace morva
