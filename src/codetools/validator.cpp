#include "codetools/validator.h"

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/outlets.h"
#include "documents/tab_table.h"
#include "platform/editor.h"
#include "platform/window.h"
#include "text/codetext.h"

namespace morva {

namespace {

// A word of the scan: its letter in upper case, the digits behind it as a number that stops
// growing at 1,000,000, and whether the fraction holds anything but zeros.
struct Word {
  char16_t letter;
  std::int32_t value;
  bool fraction;
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

std::u16string validated;  // the program whose report stands last in the log, until it is marked

struct Report {
  std::u16string text;
  unsigned errors = 0;
  unsigned warnings = 0;
};

void Add(Report& report, std::u16string_view line) {
  report.text += line;
  report.text += u"\r\n";
}

void Error(Report& report, bool fails, std::u16string_view line) {
  if (!fails) return;
  ++report.errors;
  Add(report, line);
}

void Warning(Report& report, bool fails, std::u16string_view line) {
  if (!fails) return;
  ++report.warnings;
  Add(report, line);
}

// G87 and G88 are left out of the cycles on purpose.
bool AnyCycle(const Facts& facts) {
  for (const int cycle : {81, 82, 83, 84, 85, 86, 89}) {
    if (facts.g[cycle]) return true;
  }
  return false;
}

void RunRules(const Facts& facts, Report& report) {
  Error(report, !facts.anyO, u"ERROR: No O-number found (example O1000).");
  Error(report, !facts.m30, u"ERROR: M30 program end not found.");
  Warning(report, !facts.g[90], u"WARNING: G90 absolute mode not found.");
  Warning(report, !facts.g[40], u"WARNING: G40 cutter compensation cancel not found.");
  Warning(report, !facts.g[49], u"WARNING: G49 tool length cancel not found near startup/end.");
  Error(report, AnyCycle(facts) && !facts.g[80],
        u"ERROR: Canned cycle present but G80 cancel was not found.");
  Warning(report, facts.g[83] && !facts.anyQ,
          u"WARNING: G83 is present but no Q peck address was found.");
  Error(report, facts.g[84] && !facts.anyF,
        u"ERROR: G84 tapping is present but no feed F address was found.");
  Warning(report, facts.opening != facts.closing,
          u"WARNING: Parenthesis comments appear unbalanced.");
  Warning(report, !facts.percent,
          u"WARNING: % delimiters not found; RS-232 transfer wrapper can add them automatically.");
}

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
  Add(report,
      u"NOTE: This validator cannot know your work offset, tool length, workholding, stock, "
      u"spindle option, or machine condition.");
  Add(report, u"Run unfamiliar code in Haas Graphics mode and use safe proving practices.");
  Add(report, u"Validation complete: " + IntegerText(report.errors) + u" error(s), " +
                  IntegerText(report.warnings) + u" warning(s).");
  return report.text;
}

void ValidateProgram() {
  if (!platform::Exists(kIdEditor)) return;
  ClearOutput();
  std::u16string report = PreflightReport(platform::EditorText(kIdEditor));
  // The outlet adds the last line end itself.
  report.resize(report.size() - 2);
  AppendOutput(report);
  Call(hooks.openOutput);
  const ProgramTab* tab = ActiveTab();
  validated = tab ? NameOfTab(app.activeTab) : std::u16string();
}

void MarkReport() {
  if (validated.empty()) return;
  AppendOutput(u"The validation above is that of " + validated + u".");
  validated.clear();
}

void ResetValidator() { validated.clear(); }

}  // namespace morva
