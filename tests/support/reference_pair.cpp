#include "support/reference_pair.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "codetools/command_words.h"
#include "codetools/line_match.h"

namespace reference {

using morva::CodeOfShownLine;
using morva::CodeToShownWords;
using morva::kNoLine;
using morva::LeavesCommentOpen;
using morva::MatchLines;
using morva::OwnedText;
using morva::ShownWordsOfLine;

namespace {

using std::size_t;
using View = std::u16string_view;

// Among so many replaced lines even a single changed one is looked for at every key.
constexpr size_t kReplacedLooked = 4096;

bool EndsLine(View text, size_t at) {
  if (text[at] == u'\n') return true;
  return text[at] == u'\r' && (at + 1 == text.size() || text[at + 1] != u'\n');
}

bool IsLineStart(View text, size_t at) { return at == 0 || EndsLine(text, at - 1); }

// Behind the line that holds `at`, its line end included.
size_t BehindLine(View text, size_t at) {
  while (at < text.size() && !EndsLine(text, at)) ++at;
  return at < text.size() ? at + 1 : at;
}

size_t BehindLines(View text, size_t at, size_t count) {
  for (; count > 0; --count) at = BehindLine(text, at);
  return at;
}

size_t CountLineEnds(View text) {
  size_t count = 0;
  for (size_t i = 0; i < text.size(); ++i) count += EndsLine(text, i) ? 1 : 0;
  return count;
}

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

// Whole programs are compared here at every key, so that equal stretches go at once.
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

Difference FindDifference(View before, View after, size_t caret) {
  const size_t least = std::min(before.size(), after.size());
  const size_t behind = after.size() - std::min(caret, after.size());
  // What stands behind the caret now stood there before. Only then is it known which of two equal
  // lines was put in or taken out in front of it.
  size_t back = behind <= least ? CommonBack(before, after, behind) : 0;
  if (back < behind) back = 0;
  size_t front =
      CommonFront(before.substr(0, before.size() - back), after.substr(0, after.size() - back));
  back += CommonBack(before.substr(0, before.size() - back), after.substr(0, after.size() - back),
                     least - back - front);
  // No line end is split.
  if (front > 0 && before[front - 1] == u'\r') --front;
  if (back > 0 && before[before.size() - back] == u'\n') --back;
  Difference found;
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
  const size_t last = found.toBefore == before.size() ? 1 : 0;
  found.line = CountLineEnds(before.substr(0, found.from));
  found.linesBefore = CountLineEnds(before.substr(found.from, found.toBefore - found.from)) + last;
  found.linesAfter = CountLineEnds(after.substr(found.from, found.toAfter - found.from)) + last;
  return found;
}

// Whether a comment is open at the start of a line.
bool IsInComment(View code, size_t lineStart) {
  // Behind a line that closes and does not open again none is, whatever stood before it.
  size_t from = lineStart;
  while (from > 0) {
    const size_t close = code.rfind(u')', from - 1);
    if (close == View::npos) {
      from = 0;
      break;
    }
    const size_t next = BehindLine(code, close);
    if (code.substr(close, next - close).find(u'(') == View::npos) {
      from = next;
      break;
    }
    from = close;
    while (!IsLineStart(code, from)) --from;
  }
  return LeavesCommentOpen(code.substr(from, lineStart - from), false);
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

// The lines of the stretch as they stood, from the pair as it is before the change.
void FindOriginals(const WordsPair& pair, size_t wordsAt, size_t codeAt, Stretch& stretch) {
  size_t line = stretch.line;
  const auto standing = [&](size_t to) {
    AddLines(stretch.words, pair.words, wordsAt, to - line);
    AddLines(stretch.code, pair.code, codeAt, to - line);
    wordsAt = BehindLines(pair.words, wordsAt, to - line);
    codeAt = BehindLines(pair.code, codeAt, to - line);
    line = to;
  };
  for (const ReplacedLines& part : stretch.parts) {
    standing(part.line);
    const size_t count = CountLineEnds(part.words);
    AddLines(stretch.words, part.words, 0, count);
    AddLines(stretch.code, part.code, 0, count);
    wordsAt = BehindLines(pair.words, wordsAt, part.count);
    codeAt = BehindLines(pair.code, codeAt, part.count);
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

bool MakeWordsPair(View code, WordsPair& pair) {
  const OwnedText words = CodeToShownWords(code);
  if (!words.units) return false;
  pair.code = code;
  pair.words = words.View();
  pair.replaced.clear();
  return true;
}

CodeChange TakeWords(WordsPair& pair, View words, size_t caret) {
  CodeChange result;
  if (std::ranges::equal(words, pair.words)) return result;
  const Difference change = FindDifference(pair.words, words, caret);
  Stretch stretch;
  TakeTouched(pair, change, stretch);
  const size_t stretchCode = BehindLines(pair.code, 0, stretch.line);
  const size_t stretchWords = BehindLines(pair.words, 0, stretch.line);
  FindOriginals(pair, stretchWords, stretchCode, stretch);
  const size_t at = change.line - stretch.line;
  const size_t codeFrom = BehindLines(pair.code, stretchCode, at);
  const size_t codeTo = BehindLines(pair.code, codeFrom, change.linesBefore);
  Lines now;
  AddLines(now, words, stretchWords,
           stretch.end - stretch.line - change.linesBefore + change.linesAfter);
  Lines oldWords;
  Lines oldCode;
  AddLines(oldWords, pair.words, change.from, change.linesBefore);
  AddLines(oldCode, pair.code, codeFrom, change.linesBefore);
  const std::vector<std::u16string> code =
      CodeOfChange(pair, stretch, now, at, oldWords, oldCode, change.linesAfter,
                   IsInComment(pair.code, codeFrom));
  result.line = change.line;
  result.from = codeFrom;
  result.before = pair.code.substr(codeFrom, codeTo - codeFrom);
  for (size_t i = 0; i < code.size(); ++i) (result.after += code[i]) += now.ends[at + i];
  // The lines of the stretch as they stand now: in front of the change, changed, behind it.
  Lines around;
  AddLines(around, pair.code, stretchCode, at);
  std::vector<View> nowCode = around.text;
  nowCode.insert(nowCode.end(), code.begin(), code.end());
  Lines behind;
  AddLines(behind, pair.code, codeTo, stretch.end - change.line - change.linesBefore);
  nowCode.insert(nowCode.end(), behind.text.begin(), behind.text.end());
  for (ReplacedLines& r : pair.replaced) {
    if (r.line > change.line) r.line += change.linesAfter - change.linesBefore;
  }
  KeepReplaced(pair, stretch, now, nowCode, stretch.line);
  pair.words.replace(change.from, change.toBefore - change.from,
                     words.substr(change.from, change.toAfter - change.from));
  pair.code.replace(codeFrom, codeTo - codeFrom, result.after);
  return result;
}

}  // namespace reference
