// A pass of replacement rules agrees with a plain reading of its rules: no cascade, marker
// lines unchanged, the count right.
//
// An input is rules, one a line as FIND=REPLACEMENT, an empty line, and the text.
#include <vector>

#include "codetools/find_rules.h"
#include "fuzz/fuzz.h"

namespace {

struct Plain {
  std::u16string text;
  int matches = 0;
};

char16_t Lower(char16_t c) { return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c; }

bool WordUnit(char16_t c) {
  const char16_t low = Lower(c);
  return (low >= u'a' && low <= u'z') || (c >= u'0' && c <= u'9') || c == u'_';
}

bool Equal(std::u16string_view a, std::u16string_view b, bool matchCase) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (a[i] != b[i] && (matchCase || Lower(a[i]) != Lower(b[i]))) return false;
  }
  return true;
}

bool Matches(const std::u16string& text, std::size_t at, const morva::FindRule& rule,
             bool matchCase, bool wholeToken) {
  const std::u16string find = rule.find;
  if (find.empty() || !Equal(std::u16string_view(text).substr(at, find.size()), find, matchCase))
    return false;
  if (!wholeToken) return true;
  const std::u16string framed = u" " + text + u" ";
  return !WordUnit(framed[at]) && !WordUnit(framed[at + find.size() + 1]);
}

bool IsMarkerLine(const std::u16string& text, std::size_t at) {
  const std::size_t first = text.find_first_not_of(u" \t", at);
  return first != std::u16string::npos &&
         Equal(std::u16string_view(text).substr(first, 6), u"(morva", false);
}

Plain Read(const std::u16string& text, const std::vector<morva::FindRule>& rules, bool matchCase,
           bool wholeToken) {
  Plain plain;
  bool lineStart = true;
  bool marker = false;
  for (std::size_t at = 0; at < text.size();) {
    if (lineStart) marker = IsMarkerLine(text, at);
    const morva::FindRule* winner = nullptr;
    for (const morva::FindRule& rule : rules) {
      if (!winner && !marker && Matches(text, at, rule, matchCase, wholeToken)) winner = &rule;
    }
    if (winner) {
      plain.text += winner->replaceWith;
      at += std::u16string_view(winner->find).size();
      ++plain.matches;
      lineStart = false;
    } else {
      lineStart = text[at] == u'\r' || text[at] == u'\n';
      plain.text += text[at++];
    }
  }
  return plain;
}

// The lines that are markers, in order.
std::vector<std::u16string> MarkerLines(const std::u16string& text) {
  std::vector<std::u16string> lines;
  for (std::size_t at = 0; at < text.size();) {
    std::size_t end = text.find_first_of(u"\r\n", at);
    if (end == std::u16string::npos) end = text.size();
    if (IsMarkerLine(text, at) && text.find_first_not_of(u" \t", at) < end)
      lines.push_back(text.substr(at, end - at));
    at = end + 1;
  }
  return lines;
}

void Copy(char16_t (&into)[morva::kFindUnits], std::u16string_view text) {
  const std::size_t count = text.substr(0, morva::kFindUnits - 1).copy(into, morva::kFindUnits - 1);
  into[count] = 0;
}

// Takes the rules off the front of the text.
std::vector<morva::FindRule> TakeRules(std::u16string& text) {
  std::vector<morva::FindRule> rules;
  while (rules.size() < morva::kMaxRules) {
    const std::size_t end = text.find(u'\n');
    if (end == std::u16string::npos) break;
    const std::u16string line = text.substr(0, end);
    text.erase(0, end + 1);
    if (line.empty()) break;
    const std::size_t equals = line.find(u'=');
    morva::FindRule rule;
    Copy(rule.find, std::u16string_view(line).substr(0, equals));
    if (equals != std::u16string::npos)
      Copy(rule.replaceWith, std::u16string_view(line).substr(equals + 1));
    rules.push_back(rule);
  }
  return rules;
}

// A rule that takes line ends away joins lines; then they are not compared.
bool TakesLineEnds(const std::vector<morva::FindRule>& rules) {
  for (const morva::FindRule& rule : rules) {
    if (std::u16string_view(rule.find).find(u'\r') != std::u16string_view::npos) return true;
  }
  return false;
}

// Whether `lines` stand in `all` in their order; replacements may write further ones between.
bool HeldInOrder(const std::vector<std::u16string>& lines, const std::vector<std::u16string>& all) {
  std::size_t found = 0;
  for (const std::u16string& line : all) {
    if (found < lines.size() && line == lines[found]) ++found;
  }
  return found == lines.size();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const bool matchCase = data[0] & 1;
  const bool wholeToken = data[0] & 2;
  std::u16string text = fuzz::TextOf(data + 1, size - 1);
  const std::vector<morva::FindRule> rules = TakeRules(text);
  const morva::RuleRun run =
      morva::RunRules(text, rules.data(), static_cast<int>(rules.size()), matchCase, wholeToken);
  if (run.overLimit) return 0;
  const Plain plain = Read(text, rules, matchCase, wholeToken);
  fuzz::Check(run.matches == plain.matches, "the count is that of the plain reading");
  fuzz::Check(run.text.View() == plain.text, "the text is that of the plain reading");
  if (!TakesLineEnds(rules))
    fuzz::Check(HeldInOrder(MarkerLines(text), MarkerLines(std::u16string(run.text.View()))),
                "marker lines stay");
  return 0;
}
