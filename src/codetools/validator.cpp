#include "codetools/validator.h"

#include <algorithm>

#include "documents/marker_lines.h"
#include "text/codetext.h"

namespace morva {

namespace {

// A word of the scan: its letter in upper case, the digits behind it as a number that stops
// growing at 1,000,000, and whether the fraction holds anything but zeros.
struct Word {
  char16_t letter;
  std::int32_t value;
  bool fraction;
  std::size_t at;  // of the letter
};

// Reads the digits behind the letter at `at`. False: this letter opens no word.
bool ReadWord(std::u16string_view text, std::size_t at, Word& word) {
  std::size_t i = at + 1;
  while (i < text.size() && (text[i] == u' ' || text[i] == u'\t')) ++i;
  if (i >= text.size() || !IsDigit(text[i])) return false;
  std::int32_t value = 0;
  for (; i < text.size() && IsDigit(text[i]); ++i) {
    if (value < 1000000) value = value * 10 + (text[i] - u'0');
  }
  word.fraction = false;
  if (i < text.size() && text[i] == u'.') {
    for (++i; i < text.size() && IsDigit(text[i]); ++i) {
      if (text[i] != u'0') word.fraction = true;
    }
  }
  word.value = value;
  return true;
}

// Hands every word outside comments to `take` until that answers true. Whether it did.
template <typename Take>
bool WalkWords(std::u16string_view text, Take take) {
  std::int32_t parenDepth = 0;
  bool inLineComment = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t c = text[i];
    if (c == 0) return false;
    if (c == u'\n' || c == u'\r') {
      inLineComment = false;
    } else if (inLineComment) {
      continue;
    } else if (c == u')') {
      if (parenDepth != 0) --parenDepth;
    } else if (c == u'(') {
      ++parenDepth;
    } else if (parenDepth != 0) {
      continue;
    } else if (c == u';') {
      inLineComment = true;
    } else {
      Word word;
      word.letter = FoldUpper(c);
      word.at = i;
      if (word.letter < u'A' || word.letter > u'Z') continue;
      if (ReadWord(text, i, word) && take(word)) return true;
    }
  }
  return false;
}

// Everything that the rules ask, gathered in one walk over the text.
struct Facts {
  bool anyO = false;
  bool anyQ = false;
  bool anyF = false;
  bool m30 = false;
  bool g[128] = {};  // whole G numbers below 128
  std::size_t opening = 0;
  std::size_t closing = 0;
  bool percent = false;
};

Facts GatherFacts(std::u16string_view text) {
  Facts facts;
  for (const char16_t c : text) {
    if (c == 0) break;
    if (c == u'(') ++facts.opening;
    if (c == u')') ++facts.closing;
    if (c == u'%') facts.percent = true;
  }
  WalkWords(text, [&facts](const Word& word) {
    switch (word.letter) {
      case u'O':
        facts.anyO = true;
        break;
      case u'Q':
        facts.anyQ = true;
        break;
      case u'F':
        facts.anyF = true;
        break;
      case u'M':
        if (word.value == 30 && !word.fraction) facts.m30 = true;
        break;
      case u'G':
        if (word.value < 128 && !word.fraction) facts.g[word.value] = true;
        break;
      default:
        break;
    }
    return false;
  });
  return facts;
}

struct Report {
  std::u16string text;
  unsigned errors = 0;
  unsigned warnings = 0;
};

void Add(Report& report, std::u16string_view line) {
  report.text += line;
  report.text += u"\r\n";
}

// G87 and G88 are left out of the cycles on purpose.
constexpr int kCycles[] = {81, 82, 83, 84, 85, 86, 89};

bool AnyCycle(const Facts& facts) {
  return std::ranges::any_of(kCycles, [&facts](int cycle) { return facts.g[cycle]; });
}

bool IsWholeG(const Word& word, int value) {
  return word.letter == u'G' && word.value == value && !word.fraction;
}

bool IsCycle(const Word& word) {
  return std::ranges::any_of(kCycles, [&word](int cycle) { return IsWholeG(word, cycle); });
}

bool IsMotion(const Word& word) {
  const bool axis = word.letter >= u'X' && word.letter <= u'Z';
  return axis || (word.letter == u'G' && word.value <= 3 && !word.fraction);
}

// Where the user looks when a rule fails: offsets into the text.

// Blank lines, percent lines and marker lines hold no code.
bool HoldsCode(std::u16string_view line) {
  const std::size_t first = line.find_first_not_of(u" \t");
  return first != line.npos && line[first] != u'%' && !line.starts_with(kMarkerHead);
}

std::size_t Head(std::u16string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find_first_of(u"\r\n", at), text.size());
    if (HoldsCode(text.substr(at, end - at))) return at;
    at = end + 1;
  }
  return 0;
}

std::size_t End(std::u16string_view text) {
  std::size_t last = 0;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find_first_of(u"\r\n", at), text.size());
    if (HoldsCode(text.substr(at, end - at))) last = at;
    at = end + 1;
  }
  return last;
}

std::size_t Top(std::u16string_view) { return 0; }

// The first word for which `wanted` holds, else the program's head.
template <bool (*wanted)(const Word&)>
std::size_t FirstWord(std::u16string_view text) {
  std::size_t at = text.npos;
  WalkWords(text, [&at](const Word& word) {
    if (wanted(word)) at = word.at;
    return at != std::u16string_view::npos;
  });
  return at == text.npos ? Head(text) : at;
}

// The first parenthesis without its other one.
std::size_t OddParenthesis(std::u16string_view text) {
  std::size_t outer = 0;  // the opening one that none inside of it explains
  std::size_t depth = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == u'(' && depth++ == 0) outer = i;
    if (text[i] != u')') continue;
    if (depth == 0) return i;
    --depth;
  }
  return outer;
}

struct Rule {
  bool error;  // else a warning
  const char16_t* words;
  bool (*fails)(const Facts& facts);
  std::size_t (*place)(std::u16string_view text);
};

// In the order of the report.
constexpr Rule kRules[] = {
    {true, u"ERROR: No O-number found (example O1000).",
     [](const Facts& facts) { return !facts.anyO; }, Head},
    {true, u"ERROR: M30 program end not found.", [](const Facts& facts) { return !facts.m30; },
     End},
    {false, u"WARNING: G90 absolute mode not found.",
     [](const Facts& facts) { return !facts.g[90]; }, FirstWord<IsMotion>},
    {false, u"WARNING: G40 cutter compensation cancel not found.",
     [](const Facts& facts) { return !facts.g[40]; }, FirstWord<IsMotion>},
    {false, u"WARNING: G49 tool length cancel not found near startup/end.",
     [](const Facts& facts) { return !facts.g[49]; }, FirstWord<IsMotion>},
    {true, u"ERROR: Canned cycle present but G80 cancel was not found.",
     [](const Facts& facts) { return AnyCycle(facts) && !facts.g[80]; }, FirstWord<IsCycle>},
    {false, u"WARNING: G83 is present but no Q peck address was found.",
     [](const Facts& facts) { return facts.g[83] && !facts.anyQ; },
     FirstWord<[](const Word& word) { return IsWholeG(word, 83); }>},
    {true, u"ERROR: G84 tapping is present but no feed F address was found.",
     [](const Facts& facts) { return facts.g[84] && !facts.anyF; },
     FirstWord<[](const Word& word) { return IsWholeG(word, 84); }>},
    {false, u"WARNING: Parenthesis comments appear unbalanced.",
     [](const Facts& facts) { return facts.opening != facts.closing; }, OddParenthesis},
    {false, u"WARNING: % delimiters not found; RS-232 transfer wrapper can add them automatically.",
     [](const Facts& facts) { return !facts.percent; }, Top},
};

void RunRules(const Facts& facts, Report& report) {
  for (const Rule& rule : kRules) {
    if (!rule.fails(facts)) continue;
    ++(rule.error ? report.errors : report.warnings);
    Add(report, rule.words);
  }
}

const Rule* RuleOf(std::u16string_view line) {
  for (const Rule& rule : kRules) {
    if (line == rule.words) return &rule;
  }
  return nullptr;
}

// The program's line, from 0, that a line of the machine check names behind its kind:
// "ERROR: Line 12: ..."; -1 for another line.
int NamedLine(std::u16string_view line, std::u16string_view kind) {
  constexpr std::u16string_view kNames = u"Line ";
  if (!line.starts_with(kind) || !line.substr(kind.size()).starts_with(kNames)) return -1;
  const std::u16string_view number = line.substr(kind.size() + kNames.size());
  const std::size_t end = number.find(u':');
  if (end == 0 || end == number.npos) return -1;
  return ParseInteger(number.substr(0, end), 0) - 1;
}

constexpr std::u16string_view kErrorHead = u"ERROR: ";
constexpr std::u16string_view kWarningHead = u"WARNING: ";

}  // namespace

bool FindCodeWord(std::u16string_view text, char16_t letter, std::int32_t value) {
  return WalkWords(text, [letter, value](const Word& word) {
    if (word.letter != letter) return false;
    return value < 0 || (word.value == value && !word.fraction);
  });
}

std::int32_t LastUnitsCode(std::u16string_view text) {
  std::int32_t last = 0;
  WalkWords(text, [&last](const Word& word) {
    const bool units = word.letter == u'G' && (word.value == 20 || word.value == 21);
    if (units && !word.fraction) last = word.value;
    return false;
  });
  return last;
}

std::u16string PreflightReport(std::u16string_view text) {
  Report report;
  Add(report, u"VALIDATION \u2014 classic Haas preflight");
  RunRules(GatherFacts(text), report);
  Add(report, kPreflightNotes);
  Add(report, u"Validation complete: " + IntegerText(report.errors) + u" error(s), " +
                  IntegerText(report.warnings) + u" warning(s).");
  return report.text;
}

ReportKind KindOfReportLine(std::u16string_view line) {
  if (NamedLine(line, kErrorHead) >= 0) return ReportKind::Error;
  if (NamedLine(line, kWarningHead) >= 0) return ReportKind::Warning;
  const Rule* rule = RuleOf(line);
  if (!rule) return ReportKind::Plain;
  return rule->error ? ReportKind::Error : ReportKind::Warning;
}

int PlaceOfReportLine(std::u16string_view line, std::u16string_view text) {
  const int named = std::max(NamedLine(line, kErrorHead), NamedLine(line, kWarningHead));
  if (named >= 0) return std::min(named, static_cast<int>(std::ranges::count(text, u'\n')));
  const Rule* rule = RuleOf(line);
  if (!rule) return -1;
  const std::u16string_view before = text.substr(0, rule->place(text));
  return static_cast<int>(std::ranges::count(before, u'\n'));
}

}  // namespace morva
