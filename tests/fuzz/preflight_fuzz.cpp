// The report on any text says what the word finder says word for word, counts what it lists,
// and is the same for the text up to its first NUL.
#include <string>
#include <string_view>

#include "codetools/validator.h"
#include "fuzz/fuzz.h"

namespace {

using namespace morva;
using fuzz::Check;

// The finder's own rules once more, written as a walk over words between comments.
bool Finds(std::u16string_view text, char16_t letter, int value) {
  std::u16string code;  // what lies outside comments; line ends stay
  int depth = 0;
  bool line = false;
  for (const char16_t c : text.substr(0, text.find(u'\0'))) {
    const bool end = c == u'\r' || c == u'\n';
    if (end) line = false;
    const bool inside = depth > 0 || line;
    if (!line && c == u'(') ++depth;
    if (!line && c == u')' && depth > 0) --depth;
    if (!inside && c == u';') line = true;
    // A comment separates as a character that is neither blank nor digit.
    code += inside || c == u'(' || c == u';' ? (end ? c : u'|') : c;
  }
  for (std::size_t at = 0; at < code.size(); ++at) {
    if (code[at] != letter && code[at] != letter + 32) continue;
    const std::size_t digit = code.find_first_not_of(u" \t", at + 1);
    if (digit == code.npos || code[digit] < u'0' || code[digit] > u'9') continue;
    if (value < 0) return true;
    const std::size_t behind = code.find_first_not_of(u"0123456789", digit);
    const std::size_t first = code.find_first_not_of(u'0', digit);
    std::u16string number = code.substr(digit, behind == code.npos ? behind : behind - digit);
    number.erase(
        0, first == code.npos || first > digit + number.size() ? number.size() : first - digit);
    std::string wanted = value == 0 ? "" : std::to_string(value);
    if (number != std::u16string(wanted.begin(), wanted.end())) continue;
    if (behind == code.npos || code[behind] != u'.') return true;
    const std::size_t rest = code.find_first_not_of(u'0', behind + 1);
    if (rest == code.npos || code[rest] < u'1' || code[rest] > u'9') return true;
  }
  return false;
}

int Count(std::u16string_view text, std::u16string_view wanted) {
  int count = 0;
  for (std::size_t at = text.find(wanted); at != text.npos; at = text.find(wanted, at + 1)) ++count;
  return count;
}

void CheckReport(std::u16string_view text, const std::u16string& report) {
  const auto has = [&](std::u16string_view line) { return Count(report, line) == 1; };
  const auto word = [&](char16_t letter, int value) { return FindCodeWord(text, letter, value); };
  bool cycle = false;
  for (const int g : {81, 82, 83, 84, 85, 86, 89}) cycle = cycle || word(u'G', g);
  Check(has(u"ERROR: No O-number") == !word(u'O', -1), "rule 1");
  Check(has(u"ERROR: M30 program end") == !word(u'M', 30), "rule 2");
  Check(has(u"WARNING: G90 ") == !word(u'G', 90), "rule 3");
  Check(has(u"WARNING: G40 ") == !word(u'G', 40), "rule 4");
  Check(has(u"WARNING: G49 ") == !word(u'G', 49), "rule 5");
  Check(has(u"ERROR: Canned cycle") == (cycle && !word(u'G', 80)), "rule 6");
  Check(has(u"WARNING: G83 ") == (word(u'G', 83) && !word(u'Q', -1)), "rule 7");
  Check(has(u"ERROR: G84 ") == (word(u'G', 84) && !word(u'F', -1)), "rule 8");
  Check(has(u"WARNING: Parenthesis") == (Count(text, u"(") != Count(text, u")")), "rule 9");
  Check(has(u"WARNING: % ") == (Count(text, u"%") == 0), "rule 10");
  const std::string counts = "Validation complete: " + std::to_string(Count(report, u"ERROR: ")) +
                             " error(s), " + std::to_string(Count(report, u"WARNING: ")) +
                             " warning(s).\r\n";
  Check(report.ends_with(std::u16string(counts.begin(), counts.end())), "the counts add up");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::u16string whole = fuzz::TextOf(data, size);
  const std::u16string_view text = std::u16string_view(whole).substr(0, whole.find(u'\0'));
  const std::u16string report = PreflightReport(whole);
  Check(report == PreflightReport(text), "the first NUL ends the text");
  CheckReport(text, report);
  for (const char16_t letter : {u'G', u'M', u'O', u'F', u'Q', u'N'}) {
    for (const int value : {-1, 0, 1, 30, 83, 90, 1000, 999999}) {
      Check(FindCodeWord(whole, letter, value) == Finds(whole, letter, value),
            "the finder keeps its rules");
    }
  }
  return 0;
}
