#include "codetools/command_words.h"

#include <algorithm>
#include <cstdint>

#include "library/code_index.h"
#include "text/codetext.h"

namespace morva {

namespace {

inline constexpr int kCommandRows = kGRows + kMRows;  // the prefixes N and O are no words

// Not the macro table of the code index: its groups have no word of their own.
constexpr CodeRow kMacroWords[] = {
    {u"IF", u"Conditional macro expression"},
    {u"THEN", u"Conditional action"},
    {u"GOTO", u"Branch to sequence number"},
    {u"WHILE", u"Begin macro loop"},
    {u"DO", u"Macro loop level"},
    {u"END", u"End macro loop"},
    {u"EQ", u"Equal to"},
    {u"NE", u"Not equal to"},
    {u"GT", u"Greater than"},
    {u"LT", u"Less than"},
    {u"GE", u"Greater than or equal"},
    {u"LE", u"Less than or equal"},
    {u"SIN", u"Sine"},
    {u"COS", u"Cosine"},
    {u"TAN", u"Tangent"},
    {u"ATAN", u"Arc tangent"},
    {u"FIX", u"Round down"},
    {u"FUP", u"Round up"},
    {u"ROUND", u"Round to nearest"},
};
inline constexpr int kMacroWordCount = sizeof(kMacroWords) / sizeof(kMacroWords[0]);
inline constexpr std::size_t kLongestMacro = 5;
constexpr std::u16string_view kSequence = u"Sequence ";
constexpr std::u16string_view kProgram = u"Program ";
constexpr std::u16string_view kMacroVariable = u"Macro Variable ";

// Both passes ask these at every character, so they are one look into a table.
struct CharTable {
  char16_t upper[kAscii] = {};
  bool letter[kAscii] = {};
  bool touches[kAscii] = {};
  constexpr CharTable() {
    for (char16_t c = 0; c < kAscii; ++c) {
      const bool lower = c >= u'a' && c <= u'z';
      upper[c] = lower ? static_cast<char16_t>(c - u'a' + u'A') : c;
      letter[c] = lower || (c >= u'A' && c <= u'Z');
      touches[c] = letter[c] || (c >= u'0' && c <= u'9') || c == u'#';
    }
  }
};
constexpr CharTable kChars;

inline bool IsLetter(char16_t c) { return c < kAscii && kChars.letter[c]; }
// What may not stand beside a word.
inline bool Touches(char16_t c) { return c < kAscii && kChars.touches[c]; }
inline char16_t Upper(char16_t c) { return c < kAscii ? kChars.upper[c] : c; }

std::size_t DigitsEnd(std::u16string_view text, std::size_t at) {
  while (at < text.size() && IsDigit(text[at])) ++at;
  return at;
}

// Behind the comment that opens at `at`, or the end of the text.
std::size_t CommentEnd(std::u16string_view text, std::size_t at) {
  const std::size_t close = text.find(u')', at);
  return close == std::u16string_view::npos ? text.size() : close + 1;
}

constexpr std::u16string_view kPrint = u"DPRNT";

// Whether a print command stands at `at`, up to its "["; `open` is the place of that.
bool IsPrintAt(std::u16string_view text, std::size_t at, std::size_t& open) {
  if (at > 0 && IsLetter(text[at - 1])) return false;
  if (!SameFolded(text.substr(at, kPrint.size()), kPrint)) return false;
  open = at + kPrint.size();
  while (open < text.size() && (text[open] == u' ' || text[open] == u'\t')) ++open;
  return open < text.size() && text[open] == u'[';
}

// Behind what is text and no code at `at`, outside comments: the rest of the line from ";" on, a
// print command with its brackets. `at` itself where code stands.
std::size_t PlainTextEnd(std::u16string_view text, std::size_t at) {
  std::size_t end = at;
  const bool print = Upper(text[at]) == u'D' && IsPrintAt(text, at, end);
  if (!print && text[at] != u';') return at;
  int depth = 0;
  for (; end < text.size() && text[end] != u'\r' && text[end] != u'\n'; ++end) {
    if (!print) continue;
    if (text[end] == u'[') ++depth;
    if (text[end] == u']' && --depth == 0) return end + 1;
  }
  return end;
}

// Whether a conversion leaves what PlainTextEnd finds alone.
enum class PlainText { IsCode, Stays };

// Behind what no conversion touches at `at`, else `at` itself.
std::size_t UntouchedEnd(std::u16string_view text, std::size_t at, PlainText plain) {
  if (text[at] == u'(') return CommentEnd(text, at);
  return plain == PlainText::Stays ? PlainTextEnd(text, at) : at;
}

// The bounded end of a conversion: what does not fit is cut.
struct Output {
  OwnedText& text;
  std::size_t capacity;

  void Write(std::u16string_view piece) {
    const std::size_t count = std::min(piece.size(), capacity - text.length);
    std::copy_n(piece.data(), count, text.units.get() + text.length);
    text.length += count;
  }
  void WriteWord(std::u16string_view word) {
    if (text.length > 0 && Touches(text.units[text.length - 1])) Write(u" ");
    Write(word);
  }
};

// The words of all command rows, made once.
struct CommandWords {
  static constexpr int kUnits = 80;
  char16_t text[kCommandRows][kUnits] = {};
  std::u16string_view of[kCommandRows];

  CommandWords() {
    for (int row = 0; row < kCommandRows; ++row) {
      char16_t* word = text[row];
      CopyBounded(word, kUnits, codeTable[row].name);
      if (IsShared(row)) {
        AppendBounded(word, kUnits, u" \u2014 Command ");
        AppendBounded(word, kUnits, codeTable[row].code.data());
      }
      of[row] = word;
    }
  }
  static bool IsShared(int row) {
    for (int other = 0; other < kCommandRows; ++other) {
      if (other != row && SameFolded(codeTable[other].name, codeTable[row].name)) return true;
    }
    return false;
  }
};

const CommandWords& AllCommandWords() {
  static const CommandWords words;
  return words;
}

// From code to words.

// A piece of code that has a word: how much of the code it takes, its word, and the number
// that goes on behind the word. Length 0: no such piece stands here.
struct CodePiece {
  std::size_t length = 0;
  std::u16string_view word;
  std::u16string_view number;
};

CodePiece CommandAt(std::u16string_view code, std::size_t at) {
  std::size_t end = at + 1;
  while (end < code.size() && (IsDigit(code[end]) || code[end] == u'.')) ++end;
  const std::u16string_view token = code.substr(at, end - at);
  int row = FindCodeRow(token);
  if (row < 0 && token.size() == 2 && IsDigit(token[1])) {
    const char16_t padded[] = {token[0], u'0', token[1]};
    row = FindCodeRow({padded, 3});
  }
  if (row < 0) return {};
  return {token.size(), CommandWord(row), {}};
}

CodePiece NumberedAt(std::u16string_view code, std::size_t at, std::u16string_view word) {
  const std::size_t end = DigitsEnd(code, at + 1);
  return {end - at, word, code.substr(at + 1, end - at - 1)};
}

// A whole run of letters; inside a longer one there are no macro words.
CodePiece MacroAt(std::u16string_view code, std::size_t at) {
  if (at > 0 && IsLetter(code[at - 1])) return {};
  std::size_t length = 1;
  while (length <= kLongestMacro && at + length < code.size() && IsLetter(code[at + length]))
    ++length;
  if (length < 2 || length > kLongestMacro) return {};
  const std::u16string_view run = code.substr(at, length);
  for (const CodeRow& macro : kMacroWords) {
    if (SameFolded(macro.code, run)) return {length, macro.name, {}};
  }
  return {};
}

CodePiece PieceAt(std::u16string_view code, std::size_t at) {
  if (!Touches(code[at])) return {};
  const char16_t letter = Upper(code[at]);
  const char16_t next = at + 1 < code.size() ? code[at + 1] : u'\0';
  if (IsDigit(next)) {
    if (letter == u'G' || letter == u'M') return CommandAt(code, at);
    if (letter == u'O') return NumberedAt(code, at, kProgram);
    if (letter == u'N') return NumberedAt(code, at, kSequence);
    if (letter == u'#') return NumberedAt(code, at, kMacroVariable);
  }
  return IsLetter(letter) ? MacroAt(code, at) : CodePiece();
}

void WritePiece(Output& out, const CodePiece& piece, std::u16string_view rest) {
  out.WriteWord(piece.word);
  out.Write(piece.number);
  if (piece.number.empty() && !rest.empty() && Touches(rest[0])) out.Write(u" ");
}

// From words to code.

struct WordEntry {
  std::u16string_view folded;
  std::u16string_view code;
  bool macro = false;
};

// Every command and macro word in upper case and in order, so that the words which agree with
// a text stand side by side and fewer are left with each character.
struct WordIndex {
  static constexpr int kEntries = kCommandRows + kMacroWordCount;
  struct Range {
    std::uint8_t from = 0;
    std::uint8_t to = 0;
  };
  char16_t text[kEntries][CommandWords::kUnits] = {};
  WordEntry entries[kEntries];
  Range byFirst[kAscii];

  static_assert(kEntries < 256, "a place in a range is one byte");

  WordIndex() {
    for (int i = 0; i < kCommandRows; ++i) Set(i, CommandWord(i), codeTable[i].code, false);
    for (int i = 0; i < kMacroWordCount; ++i)
      Set(kCommandRows + i, kMacroWords[i].name, kMacroWords[i].code, true);
    std::sort(entries, entries + kEntries,
              [](const WordEntry& a, const WordEntry& b) { return a.folded < b.folded; });
    for (int i = kEntries - 1; i >= 0; --i) {
      Range& range = byFirst[entries[i].folded[0]];
      if (range.to == 0) range.to = static_cast<std::uint8_t>(i + 1);
      range.from = static_cast<std::uint8_t>(i);
    }
  }
  void Set(int place, std::u16string_view word, std::u16string_view code, bool macro) {
    CopyBounded(text[place], CommandWords::kUnits, word);
    for (char16_t& c : text[place]) c = Upper(c);
    entries[place] = {text[place], code, macro};
  }
};

const WordIndex& AllWords() {
  static const WordIndex index;
  return index;
}

// A word that stands in the text: how much of it, and the code it stands for.
struct WordPiece {
  std::size_t length = 0;
  std::u16string_view code;
  std::u16string_view number;
};

// The longest command word, else the longest macro word.
WordPiece WordAt(const WordIndex& index, std::u16string_view words, std::size_t at) {
  const char16_t first = Upper(words[at]);
  if (first >= kAscii) return {};
  int from = index.byFirst[first].from;
  int to = index.byFirst[first].to;
  WordPiece command;
  WordPiece macro;
  for (std::size_t length = 1; from < to; ++length) {
    const char16_t next = at + length < words.size() ? Upper(words[at + length]) : u'\0';
    // A word that ends here is the first of those left.
    const WordEntry& shortest = index.entries[from];
    if (shortest.folded.size() == length) {
      if (!Touches(next)) (shortest.macro ? macro : command) = {length, shortest.code, {}};
      ++from;
    }
    if (next == 0) break;
    while (from < to && index.entries[from].folded[length] != next) ++from;
    while (from < to && index.entries[to - 1].folded[length] != next) --to;
  }
  return command.length > 0 ? command : macro;
}

bool StandsAt(std::u16string_view words, std::size_t at, std::u16string_view wanted) {
  return SameFolded(words.substr(at, wanted.size()), wanted);
}

// One of the words that a number follows; the blank at its end need not be there.
WordPiece NumberedWordAt(std::u16string_view words, std::size_t at, std::u16string_view wanted,
                         std::u16string_view code) {
  wanted.remove_suffix(1);
  if (!StandsAt(words, at, wanted)) return {};
  std::size_t from = at + wanted.size();
  while (from < words.size() && words[from] == u' ') ++from;
  if (code == u"#" && from < words.size() && words[from] == u'#') ++from;
  const std::size_t to = DigitsEnd(words, from);
  if (to == from) return {};
  return {to - at, code, words.substr(from, to - from)};
}

WordPiece WordPieceAt(const WordIndex& index, std::u16string_view words, std::size_t at) {
  WordPiece piece;
  if (at == 0 || !Touches(words[at - 1])) {
    piece = WordAt(index, words, at);
    const char16_t first = Upper(words[at]);
    if (piece.length == 0 && first == u'S') piece = NumberedWordAt(words, at, kSequence, u"N");
    if (piece.length == 0 && first == u'P') piece = NumberedWordAt(words, at, kProgram, u"O");
  }
  // A macro variable may touch what stands before it, as "#100" may.
  if (piece.length == 0 && Upper(words[at]) == u'M')
    piece = NumberedWordAt(words, at, kMacroVariable, u"#");
  return piece;
}

std::size_t RoomForWords(std::size_t code) {
  return std::max<std::size_t>(16384, 18 * code + 8192);
}
std::size_t RoomForCode(std::size_t words) { return std::max<std::size_t>(16384, words + 8192); }

// The words of `code`, of which the part in front of `from` stands as it is.
void PutWords(Output out, std::u16string_view code, std::size_t from, PlainText plain) {
  std::size_t copied = 0;  // what lies behind it is still to be copied
  for (std::size_t at = from; at < code.size();) {
    const std::size_t untouched = UntouchedEnd(code, at, plain);
    if (untouched > at) {
      at = untouched;
      continue;
    }
    const CodePiece piece = PieceAt(code, at);
    if (piece.length == 0) {
      ++at;
      continue;
    }
    out.Write(code.substr(copied, at - copied));
    at += piece.length;
    copied = at;
    WritePiece(out, piece, code.substr(at));
  }
  out.Write(code.substr(copied));
}

// The code of `words`, of which the part in front of `from` stands as it is.
void PutCode(Output out, std::u16string_view words, std::size_t from, PlainText plain) {
  const WordIndex& index = AllWords();
  std::size_t copied = 0;
  for (std::size_t at = from; at < words.size();) {
    const std::size_t untouched = UntouchedEnd(words, at, plain);
    if (untouched > at) {
      at = untouched;
      continue;
    }
    const WordPiece piece = WordPieceAt(index, words, at);
    if (piece.length == 0) {
      ++at;
      continue;
    }
    out.Write(words.substr(copied, at - copied));
    out.Write(piece.code);
    out.Write(piece.number);
    at += piece.length;
    copied = at;
  }
  out.Write(words.substr(copied));
}

}  // namespace

std::u16string_view CommandWord(int row) {
  if (row < 0 || row >= kCommandRows) return {};
  return AllCommandWords().of[row];
}

int CommandWordsIn(std::u16string_view line, bool& inComment, WordSpan* spans, int capacity) {
  const WordIndex& index = AllWords();
  int count = 0;
  for (std::size_t at = 0; at < line.size() && count < capacity;) {
    if (line[at] == u'(') inComment = true;
    if (inComment) {
      const std::size_t close = line.find(u')', at);
      if (close == std::u16string_view::npos) break;
      inComment = false;
      at = close + 1;
      continue;
    }
    WordPiece piece;
    if (at == 0 || !Touches(line[at - 1])) piece = WordAt(index, line, at);
    if (piece.length == 0) {
      ++at;
      continue;
    }
    // A macro word has no row in the code table.
    if (FindCodeRow(piece.code) >= 0) {
      spans[count++] = {static_cast<int>(at), static_cast<int>(piece.length),
                        piece.code[0] == u'G'};
    }
    at += piece.length;
  }
  return count;
}

OwnedText CodeToWords(std::u16string_view code) {
  OwnedText words;
  const std::size_t capacity = RoomForWords(code.size());
  if (Allocate(words, capacity)) PutWords({words, capacity}, code, 0, PlainText::IsCode);
  return words;
}

std::u16string WordsBetween(char16_t before, std::u16string_view code, char16_t behind) {
  // A unit on either side that touches a word and makes no other one with the code.
  const std::size_t front = Touches(before) ? 1 : 0;
  const std::size_t back = Touches(behind) ? 1 : 0;
  std::u16string piece(front, u'1');
  piece += code;
  piece.append(back, u'#');
  const OwnedText words = CodeToWords(piece);
  if (!words.units) return {};
  return std::u16string(words.View().substr(front, words.length - front - back));
}

OwnedText WordsToCode(std::u16string_view words) {
  OwnedText code;
  const std::size_t capacity = RoomForCode(words.size());
  if (Allocate(code, capacity)) PutCode({code, capacity}, words, 0, PlainText::IsCode);
  return code;
}

OwnedText CodeToShownWords(std::u16string_view code) {
  OwnedText words;
  const std::size_t capacity = RoomForWords(code.size());
  if (Allocate(words, capacity)) PutWords({words, capacity}, code, 0, PlainText::Stays);
  return words;
}

std::u16string ShownWordsOfLine(std::u16string_view code, bool inComment) {
  OwnedText words;
  const std::size_t capacity = RoomForWords(code.size());
  if (!Allocate(words, capacity)) return std::u16string(code);
  PutWords({words, capacity}, code, inComment ? CommentEnd(code, 0) : 0, PlainText::Stays);
  return std::u16string(words.View());
}

std::u16string CodeOfShownLine(std::u16string_view words, bool inComment) {
  OwnedText code;
  const std::size_t capacity = RoomForCode(words.size());
  if (!Allocate(code, capacity)) return std::u16string(words);
  PutCode({code, capacity}, words, inComment ? CommentEnd(words, 0) : 0, PlainText::Stays);
  return std::u16string(code.View());
}

bool LeavesCommentOpen(std::u16string_view code, bool inComment) {
  for (std::size_t at = 0; at < code.size();) {
    inComment = inComment || code[at] == u'(';
    if (inComment) {
      const std::size_t close = code.find(u')', at);
      if (close == std::u16string_view::npos) return true;
      inComment = false;
      at = close + 1;
      continue;
    }
    at = std::max(at + 1, PlainTextEnd(code, at));
  }
  return inComment;
}

}  // namespace morva
