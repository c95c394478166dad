#include "documents/program_places.h"

#include <algorithm>

#include "documents/marker_lines.h"
#include "text/codetext.h"

namespace morva {

namespace {

using std::size_t;

constexpr size_t kShownUnits = 28;  // of a line of code in the words
constexpr int kEnds[] = {30, 2, 99};

bool IsBlank(char16_t c) { return c == u' ' || c == u'\t'; }
bool IsLetter(char16_t c) { return FoldUpper(c) >= u'A' && FoldUpper(c) <= u'Z'; }

// One line without its comments.
struct CodeLine {
  std::u16string code;
  int number = 0;  // from 1
};

CodeLine WithoutComments(std::u16string_view line, int number) {
  CodeLine stripped{{}, number};
  bool comment = false;
  for (const char16_t c : line) {
    if (!comment && c == u';') break;
    if (c == u'(') comment = true;
    if (!comment) stripped.code += c;
    if (c == u')') comment = false;
  }
  while (!stripped.code.empty() && IsBlank(stripped.code.back())) stripped.code.pop_back();
  const size_t first = stripped.code.find_first_not_of(u" \t");
  stripped.code.erase(0, std::min(first, stripped.code.size()));
  return stripped;
}

// The word from its letter to the next letter or blank; blanks behind the letter belong to it.
std::u16string_view WordAt(std::u16string_view code, size_t at) {
  size_t end = at + 1;
  while (end < code.size() && IsBlank(code[end])) ++end;
  while (end < code.size() && !IsLetter(code[end]) && !IsBlank(code[end])) ++end;
  return code.substr(at, end - at);
}

size_t NextLetter(std::u16string_view code, size_t from) {
  while (from < code.size() && !IsLetter(code[from])) ++from;
  return from;
}

// The first word that is no line number.
std::u16string_view FirstWord(std::u16string_view code) {
  for (size_t at = NextLetter(code, 0); at < code.size(); at = NextLetter(code, at + 1)) {
    if (FoldUpper(code[at]) != u'N') return WordAt(code, at);
  }
  return code;
}

bool IsProgramNumber(std::u16string_view word) {
  return word.size() > 1 && FoldUpper(word[0]) == u'O' && IsDigit(word.back());
}

// The word that ends a program on this line; empty for none.
std::u16string_view EndWord(std::u16string_view code) {
  if (code.starts_with(u'/')) return {};
  for (size_t at = NextLetter(code, 0); at < code.size(); at = NextLetter(code, at + 1)) {
    if (FoldUpper(code[at]) != u'M') continue;
    const std::u16string_view word = WordAt(code, at);
    const double value = ParseDecimal(word.substr(1), -1);
    for (const int end : kEnds) {
      if (value == end) return word;
    }
  }
  return {};
}

std::u16string Shown(const CodeLine& line) {
  std::u16string words = u"line " + IntegerText(line.number) + u" (";
  const bool cut = line.code.size() > kShownUnits;
  words += line.code.substr(0, cut ? kShownUnits - 1 : kShownUnits);
  return words + (cut ? u"\u2026)" : u")");
}

// What the lines up to a place leave behind.
struct Walk {
  CodeLine before;         // the last line of code before the place, number 0 for none
  CodeLine behind;         // the first one from the place on
  std::u16string program;  // the O number in force
  std::u16string head;     // the first word of the head
  bool headKnown = false;  // an O number, or the code of a program that has none
  bool headBefore = false;
  std::u16string end;      // of the program that the place lies in
  bool restarted = false;  // that program stands behind the end of another one
  bool closed = false;     // by "%"
};

void TakeBefore(Walk& walk, const CodeLine& line) {
  const std::u16string_view word = FirstWord(line.code);
  if (IsProgramNumber(word)) {
    walk.restarted = walk.restarted || !walk.end.empty();
    walk.end.clear();
    walk.program = word;
  }
  const std::u16string_view end = EndWord(line.code);
  if (walk.end.empty()) walk.end = end;
  walk.before = line;
}

void TakeHead(Walk& walk, const CodeLine& line, bool before) {
  const std::u16string_view word = FirstWord(line.code);
  const bool numbered = IsProgramNumber(word);
  if (!walk.headKnown && (numbered || walk.head.empty())) {
    walk.head = word;
    walk.headBefore = before;
  }
  // An O number behind the end is that of a subprogram.
  walk.headKnown = walk.headKnown || numbered || !EndWord(line.code).empty();
}

void TakeLine(Walk& walk, const CodeLine& line, bool before) {
  if (line.code.empty()) return;
  if (line.code[0] == u'%') {
    walk.closed = walk.closed || (before && walk.before.number > 0);
    return;
  }
  TakeHead(walk, line, before);
  if (before) {
    TakeBefore(walk, line);
  } else if (walk.behind.number == 0) {
    walk.behind = line;
  }
}

Walk WalkTo(std::u16string_view text, size_t index) {
  Walk walk;
  int number = 1;
  for (size_t at = 0; at < text.size(); ++number) {
    const size_t end = LineEndFrom(text, at);
    const bool before = at < index;
    // Behind the place only the head is still looked for.
    if (before || walk.behind.number == 0 || !walk.headKnown) {
      TakeLine(walk, WithoutComments(text.substr(at, end - at), number), before);
    }
    at = PastLineEnd(text, end);
  }
  return walk;
}

std::u16string WordsOf(const Walk& walk, const PlaceAround& place) {
  if (place.beforeHead) return u"Before the program's head (" + walk.head + u")";
  if (walk.closed) return u"Behind the closing %: never read";
  if (place.behindEnd) return u"Behind " + place.end + u": never run";
  if (walk.before.number == 0) return u"In a program without code";
  std::u16string words = u"Behind ";
  if (walk.restarted) words = u"In " + walk.program + u", behind ";
  words += Shown(walk.before);
  if (walk.behind.number == 0) return words + u", at the end";
  return words + u", before " + Shown(walk.behind);
}

// The first line of each kind within inserted text.
struct Cuts {
  int percent = 0;  // number of the line, from 1; 0: none
  int program = 0;
  std::u16string name;  // of that program
  int end = 0;
  std::u16string word;  // that ends it
};

// `behindCode`: other code stands before the line.
void TakeCut(Cuts& cuts, const CodeLine& line, bool behindCode) {
  if (line.code[0] == u'%') {
    if (cuts.percent == 0 && behindCode) cuts.percent = line.number;
    return;
  }
  const std::u16string_view word = FirstWord(line.code);
  if (cuts.program == 0 && behindCode && IsProgramNumber(word)) {
    cuts.program = line.number;
    cuts.name = word;
  }
  const std::u16string_view end = EndWord(line.code);
  if (cuts.end == 0 && !end.empty()) {
    cuts.end = line.number;
    cuts.word = end;
  }
}

std::u16string WordsOf(const Cuts& cuts, int lastCode) {
  std::u16string words;
  const auto add = [&words](int line, std::u16string_view what, std::u16string_view meaning) {
    if (!words.empty()) words += u"\r\n";
    words += u"Line " + IntegerText(line) + u": the inserted ";
    words += what;
    words += meaning;
  };
  if (cuts.percent != 0 && lastCode > cuts.percent) {
    add(cuts.percent, u"%", u" stands between code. A control reads from one % to the next.");
  }
  if (cuts.program != 0) {
    add(cuts.program, cuts.name, u" stands behind code. It begins another program.");
  }
  if (cuts.end != 0 && lastCode > cuts.end) {
    add(cuts.end, cuts.word, u" ends the program. The code behind it is not run.");
  }
  return words;
}

}  // namespace

std::u16string CutsByInserted(std::u16string_view text, std::int32_t from, std::int32_t to) {
  Cuts cuts;
  int lastCode = 0;
  int number = 1;
  for (size_t at = 0; at < text.size(); ++number) {
    const size_t end = LineEndFrom(text, at);
    const CodeLine line = WithoutComments(text.substr(at, end - at), number);
    const bool inserted =
        at < static_cast<size_t>(std::max(to, 0)) && end > static_cast<size_t>(std::max(from, 0));
    at = PastLineEnd(text, end);
    if (line.code.empty()) continue;
    if (inserted) TakeCut(cuts, line, lastCode > 0);
    if (line.code[0] != u'%') lastCode = number;
  }
  return WordsOf(cuts, lastCode);
}

PlaceAround LookAround(std::u16string_view text, std::int32_t index) {
  const Walk walk = WalkTo(text, static_cast<size_t>(std::max(index, 0)));
  PlaceAround place;
  place.beforeHead = !walk.head.empty() && !walk.headBefore;
  place.behindEnd = walk.closed || !walk.end.empty();
  place.end = walk.end;
  if (walk.closed) place.end = u"the closing %";
  place.words = WordsOf(walk, place);
  return place;
}

UnreadLines LinesNeverRead(std::u16string_view text) {
  UnreadLines unread;
  bool code = false;
  bool closed = false;
  int number = 1;
  for (size_t at = 0; at < text.size(); ++number) {
    const size_t end = LineEndFrom(text, at);
    const CodeLine line = WithoutComments(text.substr(at, end - at), number);
    at = PastLineEnd(text, end);
    if (line.code.empty()) continue;
    if (line.code[0] == u'%') {
      closed = closed || code;
    } else if (closed) {
      if (unread.count++ == 0) unread.first = number;
    } else {
      code = true;
    }
  }
  return unread;
}

}  // namespace morva
