// Renumbering any text: numbers rise by ten, nothing but numbers and leading blanks changes,
// every line ends in CR LF, and the second run changes nothing.
#include <string>
#include <string_view>
#include <vector>

#include "codetools/renumber.h"
#include "fuzz/fuzz.h"

namespace {

using namespace morva;
using fuzz::Check;

// LF CR is two line ends; a last line without an end is a line where anything stands on it.
std::vector<std::u16string> LinesOf(std::u16string_view text) {
  std::vector<std::u16string> lines;
  std::u16string line;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != u'\r' && text[i] != u'\n') {
      line += text[i];
      continue;
    }
    if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') ++i;
    lines.push_back(line);
    line.clear();
  }
  if (!line.empty()) lines.push_back(line);
  return lines;
}

std::size_t Behind(std::u16string_view line, std::u16string_view set, std::size_t from) {
  const std::size_t at = line.find_first_not_of(set, from);
  return at == line.npos ? line.size() : at;
}

void CheckLine(std::u16string_view before, std::u16string_view after, long& number) {
  const std::size_t first = Behind(before, u" \t", 0);
  if (first == before.size() || std::u16string_view(u"%(Oo").find(before[first]) != before.npos) {
    Check(after == before, "a line without a number stays as it is");
    return;
  }
  std::size_t rest = first;
  if (before[first] == u'N' || before[first] == u'n') {
    rest = Behind(before, u" \t", Behind(before, u"0123456789", first + 1));
  }
  const std::string digits = std::to_string(number);
  number += 10;
  std::u16string wanted = u"N" + std::u16string(digits.begin(), digits.end()) + u" ";
  wanted += before.substr(rest);
  Check(after == wanted, "only number and leading blanks change");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::u16string text = fuzz::TextOf(data, size);
  const std::u16string once = RenumberedText(text);
  const std::vector<std::u16string> before = LinesOf(text);
  const std::vector<std::u16string> after = LinesOf(once);
  Check(before.size() == after.size(), "no line comes or goes");
  Check(once.empty() || once.ends_with(u"\r\n"), "the last line has its end");
  long number = 10;
  for (std::size_t i = 0; i < before.size(); ++i) CheckLine(before[i], after[i], number);
  Check(RenumberedText(once) == once, "the second run changes nothing");
  return 0;
}
