#include "codetools/plain_line.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "text/codetext.h"

namespace morva {

namespace {

constexpr std::u16string_view kStatements[] = {u"IF",  u"THEN",  u"GOTO",  u"WHILE", u"DO",
                                               u"END", u"DPRNT", u"POPEN", u"PCLOS", u"EQ",
                                               u"NE",  u"GT",    u"LT",    u"GE",    u"LE"};

bool IsLetter(char16_t c) { return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z'); }

bool IsStatement(std::u16string_view letters) {
  return std::ranges::any_of(kStatements, [letters](std::u16string_view statement) {
    return SameFolded(statement, letters);
  });
}

bool IsPassedOver(char16_t c) {
  constexpr std::u16string_view kOthers = u" \t+-.,/%";
  return IsDigit(c) || kOthers.find(c) != kOthers.npos;
}

// Behind the letter at `at`: a sign and blanks may stand before its number.
bool HasNumber(std::u16string_view line, std::size_t at) {
  while (at < line.size() && !IsDigit(line[at]) && !IsLetter(line[at]) && line[at] != u'(') ++at;
  return at < line.size() && IsDigit(line[at]);
}

}  // namespace

bool IsPlainText(std::u16string_view line) {
  if (line.find_first_of(u"#[]") != line.npos) return false;
  for (std::size_t i = 0; i < line.size();) {
    const char16_t c = line[i];
    if (c == u';') return false;
    if (c == u'(') {
      const std::size_t end = line.find(u')', i);
      if (end == line.npos) return false;
      i = end + 1;
    } else if (IsLetter(c)) {
      std::size_t end = i;
      while (end < line.size() && IsLetter(line[end])) ++end;
      const bool one = end == i + 1;
      if (one ? !HasNumber(line, end) : !IsStatement(line.substr(i, end - i))) return true;
      i = end;
    } else if (IsPassedOver(c)) {
      ++i;
    } else {
      return true;
    }
  }
  return false;
}

}  // namespace morva
