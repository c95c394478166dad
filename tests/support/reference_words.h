// The command words once more, the slow way: every rule tried in its turn at every character,
// over the whole tables, one character at a time. Nothing here is shared with the program but
// the code table itself.
#pragma once

#include <string>
#include <string_view>

#include "library/code_index.h"

namespace reference {

using Text = std::u16string;
using View = std::u16string_view;

inline char16_t Upper(char16_t c) {
  return c >= 'a' && c <= 'z' ? static_cast<char16_t>(c - 32) : c;
}
inline bool Digit(char16_t c) { return c >= '0' && c <= '9'; }
inline bool Letter(char16_t c) { return Upper(c) >= 'A' && Upper(c) <= 'Z'; }
inline bool Glue(char16_t c) { return Digit(c) || Letter(c) || c == '#'; }
inline Text Uppered(View text) {
  Text upper;
  for (const char16_t c : text) upper += Upper(c);
  return upper;
}

inline constexpr View kMacros[19][2] = {{u"IF", u"Conditional macro expression"},
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
                                        {u"ROUND", u"Round to nearest"}};

struct Words {
  Text of[194];
  Words() {
    for (int i = 0; i < 194; ++i) {
      int same = 0;
      for (int j = 0; j < 194; ++j)
        same += Uppered(morva::codeTable[i].name) == Uppered(morva::codeTable[j].name) ? 1 : 0;
      of[i] = Text(morva::codeTable[i].name);
      if (same > 1) of[i] += u" \u2014 Command " + Text(morva::codeTable[i].code);
    }
  }
};
inline const Words& AllWords() {
  static const Words words;
  return words;
}

inline int RowOf(const Text& code) {
  for (int i = 0; i < 194; ++i) {
    if (morva::codeTable[i].code == code) return i;
  }
  return -1;
}

// A word as it goes out: apart from what stands before it.
inline void Put(Text& out, View word) {
  if (!out.empty() && Glue(out.back())) out += u' ';
  out += word;
}

inline Text CodeToWords(View code) {
  Text out;
  bool comment = false;
  for (std::size_t i = 0; i < code.size();) {
    const char16_t c = code[i];
    if (c == '(') comment = true;
    if (comment) {
      if (c == ')') comment = false;
      out += c;
      ++i;
      continue;
    }
    const bool digitNext = i + 1 < code.size() && Digit(code[i + 1]);
    std::size_t end = i + 1;
    Text word;
    if (Upper(c) == 'G' || Upper(c) == 'M') {
      while (end < code.size() && end < i + 30 && (Digit(code[end]) || code[end] == '.')) ++end;
      const Text token = Uppered(code.substr(i, end - i));
      int row = RowOf(token);
      if (row < 0 && token.size() == 2 && Digit(token[1]))
        row = RowOf(Text{token[0], u'0', token[1]});
      if (row >= 0) word = AllWords().of[row];
    }
    const View numbered = !digitNext        ? View()
                          : Upper(c) == 'O' ? View(u"Program ")
                          : Upper(c) == 'N' ? View(u"Sequence ")
                          : c == '#'        ? View(u"Macro Variable ")
                                            : View();
    if (word.empty() && !numbered.empty()) {
      Put(out, numbered);
      for (++i; i < code.size() && Digit(code[i]); ++i) out += code[i];
      continue;
    }
    if (word.empty() && Letter(c) && (i == 0 || !Letter(code[i - 1]))) {
      end = i;
      while (end < code.size() && Letter(code[end])) ++end;
      for (const auto& macro : kMacros) {
        if (macro[0] == Uppered(code.substr(i, end - i))) word = Text(macro[1]);
      }
    }
    if (word.empty()) {
      out += c;
      ++i;
      continue;
    }
    Put(out, word);
    i = end;
    if (i < code.size() && Glue(code[i])) out += u' ';
  }
  return out;
}

// Whether `word` stands at `i` with free ends; `right` says whether the end behind counts.
inline bool Stands(View text, std::size_t i, View word, bool left, bool right) {
  if (i + word.size() > text.size()) return false;
  for (std::size_t k = 0; k < word.size(); ++k) {
    if (Upper(text[i + k]) != Upper(word[k])) return false;
  }
  if (left && i > 0 && Glue(text[i - 1])) return false;
  return !right || i + word.size() >= text.size() || !Glue(text[i + word.size()]);
}

// "Sequence" and its kind: the digits behind it, empty when it is no word.
inline Text NumberBehind(View text, std::size_t& i, View word, bool left, bool mark) {
  if (!Stands(text, i, word, left, false)) return {};
  std::size_t at = i + word.size();
  while (at < text.size() && text[at] == ' ') ++at;
  if (mark && at < text.size() && text[at] == '#') ++at;
  Text digits;
  while (at < text.size() && Digit(text[at])) digits += text[at++];
  if (!digits.empty()) i = at;
  return digits;
}

inline Text WordsToCode(View words) {
  Text out;
  bool comment = false;
  for (std::size_t i = 0; i < words.size();) {
    if (!comment) {
      std::size_t longest = 0;
      View code;
      for (int row = 0; row < 194; ++row) {
        const Text& word = AllWords().of[row];
        if (word.size() > longest && Stands(words, i, word, true, true)) {
          longest = word.size();
          code = morva::codeTable[row].code;
        }
      }
      const bool command = longest > 0;
      for (const auto& macro : kMacros) {
        if (!command && macro[1].size() > longest && Stands(words, i, macro[1], true, true)) {
          longest = macro[1].size();
          code = macro[0];
        }
      }
      if (longest > 0) {
        out += code;
        i += longest;
        continue;
      }
      static constexpr View kNumbered[3][2] = {
          {u"Sequence", u"N"}, {u"Program", u"O"}, {u"Macro Variable", u"#"}};
      bool taken = false;
      for (const auto& each : kNumbered) {
        const bool variable = each[1] == u"#";
        const Text digits = NumberBehind(words, i, each[0], !variable, variable);
        if (digits.empty()) continue;
        out += each[1];
        out += digits;
        taken = true;
        break;
      }
      if (taken) continue;
    }
    if (words[i] == '(') comment = true;
    if (words[i] == ')') comment = false;
    out += words[i++];
  }
  return out;
}

// Whether `after` is `before` with nothing lost: the same characters in the same order, but
// that blanks may have come in, words may stand in upper case, and a lone digit of a G or M
// word may have gained its zero. All of it outside comments only.
inline bool NothingLost(View before, View after) {
  std::size_t i = 0;
  bool comment = false;
  for (std::size_t j = 0; j < after.size(); ++j) {
    const char16_t c = after[j];
    if (i < before.size() && before[i] == c) {
      if (c == '(') comment = true;
      if (c == ')') comment = false;
      ++i;
      continue;
    }
    if (comment) return false;
    if (i < before.size() && Letter(c) && Upper(before[i]) == c) {
      ++i;
    } else if (c == '0') {
      // Behind the letter, or behind the digit where that is a zero itself.
      const std::size_t digit = j > 0 && after[j - 1] == '0' && i > 0 ? i - 1 : i;
      const std::size_t letter = digit == i ? j - 1 : j - 2;
      const bool lone = digit < before.size() && Digit(before[digit]) &&
                        (digit + 1 == before.size() || !Digit(before[digit + 1]));
      if (!lone || letter >= after.size()) return false;
      if (after[letter] != 'G' && after[letter] != 'M') return false;
    } else if (c != ' ') {
      return false;
    }
  }
  return i == before.size();
}

}  // namespace reference
