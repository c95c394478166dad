#include "simulator/control_block.h"

#include <cmath>
#include <string>

#include "app/limits.h"
#include "simulator/control_number.h"
#include "simulator/control_run.h"
#include "simulator/control_variables.h"
#include "text/codetext.h"

namespace morva {

namespace {

struct Reader {
  ControlRun& run;
  ControlBlock& block;
  const char16_t* p;
  const char16_t* end;  // of the text
  bool drops = false;   // what is left of the line does nothing
};

bool AtLineEnd(const Reader& reader) {
  return reader.p == reader.end || *reader.p == u'\n' || *reader.p == u'\r' || *reader.p == 0;
}

bool AtBlank(const Reader& reader) {
  return reader.p != reader.end && (*reader.p == u' ' || *reader.p == u'\t');
}

void SkipBlanks(Reader& reader) {
  while (reader.p != reader.end && (*reader.p == u' ' || *reader.p == u'\t')) ++reader.p;
}

void SkipLine(Reader& reader) {
  while (!AtLineEnd(reader)) ++reader.p;
}

void SkipComment(Reader& reader) {
  while (!AtLineEnd(reader)) {
    if (*reader.p++ == u')') return;
  }
}

bool TakeKeyword(Reader& reader, std::u16string_view capitals) {
  const char16_t* q = reader.p;
  // Most words asked for do not even begin so.
  const bool begins = q != reader.end && FoldUpper(*q) == capitals.front();
  if (!begins && !AtBlank(reader)) return false;
  for (const char16_t c : capitals) {
    while (q != reader.end && (*q == u' ' || *q == u'\t')) ++q;
    if (q == reader.end || FoldUpper(*q) != c) return false;
    ++q;
  }
  reader.p = q;
  return true;
}

// Where the line ends, so that no expression runs on into the next one.
const char16_t* LineEndOf(const Reader& reader) {
  const char16_t* q = reader.p;
  while (q != reader.end && *q != u'\n' && *q != u'\r' && *q != 0) ++q;
  return q;
}

bool TakeLineValue(Reader& reader, double& value, bool& pointed) {
  const char16_t* const end = LineEndOf(reader);
  return TakeValue(reader.run, reader.p, end, value, pointed, 0);
}

bool HoldsTrue(double value) { return !IsUndefined(value) && value != 0; }

// "[...]" at the place. False: the line is no good, which is told.
bool TakeCondition(Reader& reader, bool& holds) {
  SkipBlanks(reader);
  if (AtLineEnd(reader) || *reader.p != u'[') {
    StopWith(reader.run, Finding::BadExpression);
    return false;
  }
  ++reader.p;
  holds = HoldsTrue(TakeExpression(reader.run, reader.p, LineEndOf(reader), 0));
  return !reader.run.ended;
}

void TakeAssignment(Reader& reader) {
  ++reader.p;
  double number = 0;
  double value = 0;
  bool pointed = false;
  if (!TakeLineValue(reader, number, pointed)) {
    StopWith(reader.run, Finding::BadExpression);
    return;
  }
  SkipBlanks(reader);
  if (AtLineEnd(reader) || *reader.p != u'=') {
    StopWith(reader.run, Finding::BadExpression);
    return;
  }
  ++reader.p;
  // The right side may be a sum without brackets around it: the bracket that ends it is its line.
  const char16_t* const end = LineEndOf(reader);
  value = TakeOpenExpression(reader.run, reader.p, end);
  if (reader.run.ended) return;
  if (number == 3000) {
    reader.block.flow = BlockFlow::Alarm;
    reader.block.target = value;
    return;
  }
  WriteVariable(reader.run, number, value);
}

// DPRNT[TEXT #1[44] ...]: what a program sends to the printer.
void TakePrint(Reader& reader) {
  SkipBlanks(reader);
  if (AtLineEnd(reader) || *reader.p != u'[') return StopWith(reader.run, Finding::BadExpression);
  ++reader.p;
  std::u16string line;
  while (!AtLineEnd(reader) && *reader.p != u']') {
    if (*reader.p != u'#') {
      line += *reader.p == u'*' ? u' ' : *reader.p;
      ++reader.p;
      continue;
    }
    double value = 0;
    double format = 0;
    bool pointed = false;
    if (!TakeLineValue(reader, value, pointed) || AtLineEnd(reader) || *reader.p != u'[') {
      return StopWith(reader.run, Finding::BadExpression);
    }
    ++reader.p;
    if (!TakeLineValue(reader, format, pointed) || AtLineEnd(reader) || *reader.p != u']') {
      return StopWith(reader.run, Finding::BadExpression);
    }
    ++reader.p;
    const int decimals = static_cast<int>(std::fmod(std::fabs(format), 10));
    line += FixedText(IsUndefined(value) ? 0 : value, decimals > 6 ? 6 : decimals);
  }
  if (!AtLineEnd(reader)) ++reader.p;
  std::u16string& printed = reader.run.track->printed;
  if (printed.size() + line.size() < kMaxPrintedUnits) printed += line + u"\n";
}

// Words of more than a letter. False: none stands here.
bool TakeStatement(Reader& reader) {
  ControlBlock& block = reader.block;
  bool pointed = false;
  if (TakeKeyword(reader, u"GOTO")) {
    block.flow = BlockFlow::Goto;
    SkipBlanks(reader);
    if (!TakeLineValue(reader, block.target, pointed)) {
      StopWith(reader.run, Finding::BadExpression);
    }
    return true;
  }
  if (TakeKeyword(reader, u"IF")) {
    bool holds = false;
    if (!TakeCondition(reader, holds)) return true;
    reader.drops = !holds;
    if (holds) {
      SkipBlanks(reader);
      TakeKeyword(reader, u"THEN");
    }
    return true;
  }
  double number = 0;
  if (TakeKeyword(reader, u"WHILE")) {
    block.flow = BlockFlow::While;
    if (!TakeCondition(reader, block.holds)) return true;
    SkipBlanks(reader);
    if (!TakeKeyword(reader, u"DO") || !TakeLineValue(reader, number, pointed)) {
      StopWith(reader.run, Finding::WhileOpen);
      return true;
    }
    block.loop = number >= 1 && number <= kMaxLoops ? static_cast<int>(number) : 0;
    if (block.loop == 0) StopWith(reader.run, Finding::WhileOpen, number);
    return true;
  }
  if (TakeKeyword(reader, u"END")) {
    block.flow = BlockFlow::EndWhile;
    if (TakeLineValue(reader, number, pointed) && number >= 1 && number <= kMaxLoops) {
      block.loop = static_cast<int>(number);
    } else {
      StopWith(reader.run, Finding::WhileOpen, number);
    }
    return true;
  }
  if (TakeKeyword(reader, u"DPRNT")) {
    TakePrint(reader);
    return true;
  }
  return TakeKeyword(reader, u"POPEN") || TakeKeyword(reader, u"PCLOS");
}

void TakeCode(Reader& reader, double value) {
  ControlBlock& block = reader.block;
  if (!(value >= 0 && value < 1000)) return Report(reader.run, Finding::UnknownG, value);
  if (block.gCount == kMaxBlockCodes) return Report(reader.run, Finding::TwoOfAGroup, value);
  const int whole = static_cast<int>(value);
  const bool isWhole = whole == value;
  block.g[block.gCount++] =
      static_cast<std::int16_t>(isWhole ? whole * 10 : std::lround(value * 10));
}

void TakeM(Reader& reader, double value) {
  ControlBlock& block = reader.block;
  if (!(value >= 0 && value < 1000)) return Report(reader.run, Finding::UnknownM, value);
  if (block.mCount == kMaxBlockMs) return Report(reader.run, Finding::TwoM, value);
  block.m[block.mCount++] = static_cast<std::int16_t>(value);
}

// ",C1." and ",R1."
void TakeCorner(Reader& reader) {
  ++reader.p;
  SkipBlanks(reader);
  const char16_t kind = AtLineEnd(reader) ? u' ' : FoldUpper(*reader.p);
  if (kind != u'C' && kind != u'R') return Report(reader.run, Finding::BadWord);
  ++reader.p;
  double size = 0;
  bool pointed = false;
  if (!TakeLineValue(reader, size, pointed)) return Report(reader.run, Finding::BadWord);
  reader.block.cornerKind = kind == u'C' ? 'C' : 'R';
  reader.block.corner = size;
  reader.block.cornerPointed = pointed;
}

// A letter and its number.
void TakeWord(Reader& reader, char16_t letter) {
  const char16_t* const first = reader.p++;
  double value = 0;
  bool pointed = false;
  // Most words are a letter and digits: the line's end is not looked for.
  const bool plain = TakePlainNumber(reader.p, reader.end, value, pointed);
  if (!plain && !TakeValue(reader.run, reader.p, reader.end, value, pointed, 0)) {
    reader.p = first;
    if (TakeStatement(reader)) return;
    ++reader.p;
    if (!reader.run.ended) Report(reader.run, Finding::BadWord);
    return;
  }
  if (IsUndefined(value)) return;
  ControlBlock& block = reader.block;
  switch (letter) {
    case u'G':
      return TakeCode(reader, value);
    case u'M':
      return TakeM(reader, value);
    case u'N':
      block.label = value >= 0 && value < 1e9 ? static_cast<std::int32_t>(value) : -1;
      return;
    default:
      break;
  }
  const int at = letter - u'A';
  block.value[at] = value;
  block.has |= 1u << at;
  if (pointed) block.pointed |= 1u << at;
}

// "/" takes the rest of the line out where the switch is on, behind "/" with a number as well.
void TakeSlash(Reader& reader) {
  ++reader.p;
  if (reader.run.table.blockDelete) return SkipLine(reader);
  if (reader.p != reader.end && IsDigit(*reader.p)) ++reader.p;
}

void TakeCharacter(Reader& reader) {
  const char16_t c = *reader.p;
  const unsigned letter = (c | 32U) - u'a';  // A to Z, whatever their case
  if (letter < 26) return TakeWord(reader, static_cast<char16_t>(u'A' + letter));
  switch (c) {
    case u' ':
    case u'\t':
      ++reader.p;
      return;
    case u'(':
      return SkipComment(reader);
    case u';':
      return SkipLine(reader);
    case u'/':
      return TakeSlash(reader);
    case u'#':
      return TakeAssignment(reader);
    case u',':
      return TakeCorner(reader);
    case u'[': {
      // "[#1 EQ 1] M99 P10": the line counts where the condition holds.
      bool holds = false;
      if (TakeCondition(reader, holds)) reader.drops = !holds;
      return;
    }
    case u'%':
      ++reader.p;
      // The first one opens the text, one behind code closes it.
      if (reader.run.codeSeen) reader.block.flow = BlockFlow::TextEnd;
      return;
    default:
      ++reader.p;
      return Report(reader.run, Finding::BadWord);
  }
}

}  // namespace

void ReadBlock(ControlRun& run, ControlBlock& block) {
  ControlPlace& place = run.place;
  const std::u16string_view text = run.texts[static_cast<std::size_t>(place.text)].text;
  block.line = place.line;
  block.has = block.pointed = 0;
  block.gCount = block.mCount = 0;
  block.label = -1;
  block.cornerKind = 0;
  block.flow = BlockFlow::None;
  Reader reader{run, block, text.data() + place.at, text.data() + text.size()};
  if (reader.p == reader.end || *reader.p == 0) {
    block.flow = BlockFlow::TextEnd;
    return;
  }
  while (!AtLineEnd(reader) && !run.ended) {
    TakeCharacter(reader);
    if (reader.drops) SkipLine(reader);
  }
  SkipLine(reader);
  if (reader.p != reader.end && *reader.p != 0) {
    const bool pair = *reader.p == u'\r' && reader.p + 1 != reader.end && reader.p[1] == u'\n';
    reader.p += pair ? 2 : 1;
  }
  place.at = static_cast<std::size_t>(reader.p - text.data());
  ++place.line;
}

}  // namespace morva
