#include "simulator/control_flow.h"

#include <algorithm>
#include <cmath>

#include "simulator/control_pocket.h"
#include "simulator/control_variables.h"
#include "text/codetext.h"

namespace morva {

namespace {

constexpr std::int32_t kMostJumps = 200000;
constexpr double kMostRepeats = 9999;
constexpr int kHintedCalls = 9;   // calls within calls that a control surely takes
constexpr int kHintedMacros = 4;  // ... of which by G65

ControlText& TextOf(ControlRun& run) { return run.texts[static_cast<std::size_t>(run.place.text)]; }

// A walk along the lines of a text, to look for labels and ENDs.
struct LineWalk {
  std::u16string_view text;
  std::size_t at;
  std::int32_t line;
};

bool EndsLine(char16_t c) { return c == u'\n' || c == u'\r' || c == 0; }

// The first character of the line that counts, past blanks, "/" and its number.
std::size_t CodeOf(const LineWalk& walk) {
  std::size_t p = walk.at;
  const auto blanks = [&] {
    while (p < walk.text.size() && (walk.text[p] == u' ' || walk.text[p] == u'\t')) ++p;
  };
  blanks();
  if (p < walk.text.size() && walk.text[p] == u'/') {
    ++p;
    if (p < walk.text.size() && IsDigit(walk.text[p])) ++p;
    blanks();
  }
  return p;
}

// False: it was the last line.
bool NextLine(LineWalk& walk) {
  while (walk.at < walk.text.size() && !EndsLine(walk.text[walk.at])) ++walk.at;
  if (walk.at >= walk.text.size() || walk.text[walk.at] == 0) return false;
  const bool pair = walk.text[walk.at] == u'\r' && walk.at + 1 < walk.text.size() &&
                    walk.text[walk.at + 1] == u'\n';
  walk.at += pair ? 2 : 1;
  ++walk.line;
  return walk.at < walk.text.size();
}

// The number behind a letter at a place, -1 for none.
std::int32_t NumberAt(std::u16string_view text, std::size_t at, char16_t letter) {
  if (at >= text.size() || FoldUpper(text[at]) != letter) return -1;
  ++at;
  while (at < text.size() && (text[at] == u' ' || text[at] == u'\t')) ++at;
  std::int64_t number = 0;
  int digits = 0;
  for (; at < text.size() && IsDigit(text[at]) && digits < 9; ++at, ++digits) {
    number = number * 10 + (text[at] - u'0');
  }
  return digits == 0 ? -1 : static_cast<std::int32_t>(number);
}

using Labels = std::vector<ControlText::Label>;

bool StandsBefore(const ControlText::Label& a, const ControlText::Label& b) {
  return a.number != b.number ? a.number < b.number : a.at < b.at;
}

// The first line of a number from a place on.
Labels::const_iterator FirstFrom(const Labels& labels, std::int32_t number, std::size_t at) {
  return std::lower_bound(labels.begin(), labels.end(), ControlText::Label{number, 0, at},
                          StandsBefore);
}

void IndexLines(ControlText& text) {
  if (text.indexed) return;
  text.indexed = true;
  LineWalk walk{text.text, 0, 0};
  if (text.text.empty()) return;
  do {
    const std::size_t at = CodeOf(walk);
    const std::int32_t label = NumberAt(text.text, at, u'N');
    if (label >= 0) text.labels.push_back({label, walk.line, walk.at});
    const std::int32_t program = NumberAt(text.text, at, u'O');
    if (program < 0) continue;
    text.programs.push_back({program, walk.line, walk.at});
    text.starts.push_back(walk.at);
  } while (NextLine(walk));
  std::sort(text.labels.begin(), text.labels.end(), StandsBefore);
  std::sort(text.programs.begin(), text.programs.end(), StandsBefore);
}

// A line number in the program that runs: from the place on, then from its top, as the control
// searches. False: there is none.
bool FindLabel(ControlRun& run, double number, ControlPlace& found) {
  ControlText& text = TextOf(run);
  IndexLines(text);
  if (!(number >= 0 && number < 1e9)) return false;
  const auto wanted = static_cast<std::int32_t>(std::lround(number));
  // The run stands behind its line, which may be the last one of its program.
  const std::size_t here = run.place.at > 0 ? run.place.at - 1 : 0;
  const auto next = std::upper_bound(text.starts.begin(), text.starts.end(), here);
  const std::size_t top = next == text.starts.begin() ? 0 : *(next - 1);
  const std::size_t end = next == text.starts.end() ? text.text.size() : *next;
  const auto stands = [&](Labels::const_iterator label) {
    return label != text.labels.end() && label->number == wanted && label->at < end;
  };
  const auto first = FirstFrom(text.labels, wanted, top);
  if (!stands(first)) return false;
  if (stands(first + 1)) Report(run, Finding::LabelDoubled, number);
  const auto ahead = FirstFrom(text.labels, wanted, run.place.at);
  const auto& best = stands(ahead) ? *ahead : *first;
  found = {run.place.text, best.at, best.line};
  return true;
}

// Counts a jump and what it makes run again. False: a bound is reached, and the run ends.
bool CountJump(ControlRun& run, const ControlPlace& to) {
  ++run.jumps;
  ++run.repeats;
  if (to.text == run.place.text && to.at < run.place.at) {
    run.repeatedUnits += static_cast<std::int64_t>(run.place.at - to.at);
  } else {
    run.repeatedUnits += 200;
  }
  if (run.jumps <= kMostJumps && run.repeatedUnits <= kMostRepeatedUnits) return true;
  StopWith(run, Finding::NoStepsLeft);
  return false;
}

// Whether P of M99 leads back over the same code for ever: without variables nothing leads out.
bool LoopsForEver(const ControlRun& run, const ControlPlace& to) {
  const bool back = to.text == 0 && run.place.text == 0 && to.at < run.place.at;
  const bool first = !run.jumped && run.callCount == 1 && run.calls[0].loopCount == 0;
  return back && first && run.texts[0].text.find(u'#') == std::u16string_view::npos;
}

void JumpTo(ControlRun& run, double number) {
  ControlPlace found;
  if (!FindLabel(run, number, found)) return StopWith(run, Finding::LabelMissing, number);
  run.jumped = true;
  if (CountJump(run, found)) run.place = found;
}

double TimesOf(const ControlBlock& block) {
  if (!block.Has('L')) return 1;
  return std::clamp(std::trunc(block.Of('L')), 0.0, kMostRepeats);
}

// Goes to `start`; behind its M99 to where the run stands now.
bool Enter(ControlRun& run, CallKind kind, const ControlPlace& start, double times) {
  if (times < 1) return false;
  // By way of others too.
  const bool itself = std::any_of(run.calls + 1, run.calls + run.callCount, [&](const auto& call) {
    return call.start.text == start.text && call.start.at == start.at;
  });
  if (run.callCount > kMaxCalls) {
    StopWith(run, itself ? Finding::CallsItself : Finding::NestingDeep, run.callCount);
    return false;
  }
  const auto macros = std::count_if(run.calls + 1, run.calls + run.callCount,
                                    [](const auto& call) { return call.kind == CallKind::Macro; });
  const bool deep =
      run.callCount > kHintedCalls || (kind == CallKind::Macro && macros >= kHintedMacros);
  if (deep && !itself) Report(run, Finding::NestingDeep, run.callCount);
  if (!CountJump(run, start)) return false;
  const ControlCall& caller = run.calls[run.callCount - 1];
  ControlCall& call = run.calls[run.callCount];
  call.kind = kind;
  call.back = run.place;
  call.start = start;
  call.repeats = static_cast<std::int32_t>(times) - 1;
  call.loopCount = 0;
  call.locals = kind == CallKind::Macro ? run.callCount : caller.locals;
  // What a text of its own does is told for the line that calls it.
  call.shownLine = caller.shownLine;
  if (start.text != 0 && caller.shownLine < 0) call.shownLine = run.line;
  ++run.callCount;
  run.place = start;
  return true;
}

// Once for a line, however often its number is called.
void NameDoubled(Findings& findings, const ControlText::Label& second) {
  const FoundLine* const begin = findings.found;
  const bool told = std::any_of(begin, begin + findings.count, [&second](const FoundLine& found) {
    return found.kind == Finding::NumberDoubled && found.line == second.line;
  });
  if (!told)
    AddFinding(findings, {Finding::NumberDoubled, second.line, static_cast<double>(second.number)});
}

// The line with O and the number in the program's own text.
bool FindInText(ControlRun& run, std::int32_t number, ControlPlace& found) {
  ControlText& text = run.texts[0];
  IndexLines(text);
  const auto first = FirstFrom(text.programs, number, 0);
  if (first == text.programs.end() || first->number != number) return false;
  found = {0, first->at, first->line};
  const auto second = first + 1;
  if (second != text.programs.end() && second->number == number) {
    NameDoubled(run.track->findings, *second);
  }
  return true;
}

bool FindProgram(ControlRun& run, double wanted, ControlPlace& found) {
  if (!(wanted >= 0 && wanted < 1e6)) return false;
  const auto number = static_cast<std::int32_t>(wanted);
  if (FindInText(run, number, found)) return true;
  for (const ControlProgram& program : run.programs) {
    if (program.number != number) continue;
    found = program.place;
    return program.found;
  }
  if (!run.findProgram || run.programs.size() == kMaxProgramsSought) return false;
  std::u16string_view text;
  const bool stands = run.findProgram(number, text) != 0;
  if (stands) {
    run.texts.push_back({text, number, {}, {}, {}, false});
    found = {static_cast<int>(run.texts.size()) - 1, 0, 0};
  }
  run.programs.push_back({number, stands, found});
  return stands;
}

// False: it is nowhere, which is a finding.
bool SeekProgram(ControlRun& run, double number, ControlPlace& found) {
  if (FindProgram(run, number, found)) return true;
  // Numbers from 9000 on live in the control.
  const bool ofControl = number >= 9000;
  const Findings& findings = run.track->findings;
  const bool told =
      std::any_of(findings.found, findings.found + findings.count, [&](const FoundLine& one) {
        return one.kind == Finding::NotFollowed && one.letter == 'O' && one.number == number;
      });
  if (ofControl && told) return false;
  Report(run, ofControl ? Finding::NotFollowed : Finding::ProgramMissing, number, 'O');
  return false;
}

// Into the program's first block behind its O word.
void EnterProgram(ControlRun& run, const ControlBlock& block, CallKind kind) {
  const double number = block.Has('P') ? block.Of('P') : -1;
  ControlPlace start;
  if (!SeekProgram(run, number, start)) return;
  const bool entered = Enter(run, kind, start, TimesOf(block));
  if (entered) run.entersProgram = true;
}

void StartLocals(ControlRun& run) {
  auto& row = run.variables.locals[run.calls[run.callCount - 1].locals];
  std::fill(std::begin(row), std::end(row), Undefined());
}

// The local variable of an argument letter, 0 for letters that are none.
int LocalOf(char16_t letter) {
  static constexpr int kLocalsOf[26] = {1, 2, 3, 7,  8,  9,  0,  11, 4,  5,  6,  0,  13,
                                        0, 0, 0, 17, 18, 19, 20, 21, 22, 23, 24, 25, 26};
  return kLocalsOf[letter - u'A'];
}

// Reads the words of a G65 once more, in their order: repeated I, J and K fill #7 and up in threes.
void TakeArguments(ControlRun& run, const ControlPlace& blockStart, double (&row)[kLocals]) {
  std::fill(std::begin(row), std::end(row), Undefined());
  const std::u16string_view text = run.texts[static_cast<std::size_t>(blockStart.text)].text;
  const char16_t* p = text.data() + blockStart.at;
  const char16_t* const end = text.data() + text.size();
  int sets[3] = {0, 0, 0};
  while (p != end && !EndsLine(*p) && *p != u';') {
    if (*p == u'(') {
      while (p != end && !EndsLine(*p) && *p != u')') ++p;
      continue;
    }
    const char16_t letter = FoldUpper(*p++);
    if (letter < u'A' || letter > u'Z') continue;
    double value = 0;
    bool pointed = false;
    if (!TakeValue(run, p, end, value, pointed, 0)) continue;
    int local = LocalOf(letter);
    if (letter >= u'I' && letter <= u'K') {
      int& set = sets[letter - u'I'];
      local = 4 + (letter - u'I') + 3 * set++;
    }
    if (local <= 0 || local >= kLocals) continue;
    // Whole lengths count in the control's least step; S, T, M and their like are whole.
    const bool length = std::u16string_view(u"STMDH").find(letter) == std::u16string_view::npos;
    const double least = run.modes.metric ? 0.001 : 0.0001;
    const bool counts = length && !pointed && !run.table.wholeLengths;
    row[local] = counts ? value * least : value;
  }
}

// The place behind the END that belongs to a WHILE within `outer` loops, from the run's place on.
// False: there is none, or one of the loops around it ends first.
bool FindEnd(ControlRun& run, int number, int outer, ControlPlace& found) {
  const ControlLoop* const loops = run.calls[run.callCount - 1].loops;
  LineWalk walk{TextOf(run).text, run.place.at, run.place.line};
  if (walk.at >= walk.text.size()) return false;
  do {
    std::size_t at = CodeOf(walk);
    if (NumberAt(walk.text, at, u'O') >= 0) return false;  // another program
    const std::int32_t label = NumberAt(walk.text, at, u'N');
    if (label >= 0) {
      ++at;
      while (at < walk.text.size() && (IsDigit(walk.text[at]) || walk.text[at] == u' ')) ++at;
    }
    constexpr std::u16string_view kEnd = u"END";
    bool same = at + kEnd.size() < walk.text.size();
    for (std::size_t i = 0; same && i < kEnd.size(); ++i) {
      same = FoldUpper(walk.text[at + i]) == kEnd[i];
    }
    if (!same) continue;
    const std::int32_t ends = NumberAt(walk.text, at + kEnd.size() - 1, u'D');
    if (std::any_of(loops, loops + outer,
                    [ends](const ControlLoop& loop) { return loop.number == ends; })) {
      return false;
    }
    if (ends != number) continue;
    // Behind the last line the text ends on the next one, whether a line end stands there or not.
    const std::int32_t behind = walk.line + 1;
    NextLine(walk);
    found = {run.place.text, walk.at, behind};
    return true;
  } while (NextLine(walk));
  return false;
}

void BeginLoop(ControlRun& run, const ControlBlock& block, const ControlPlace& start) {
  ControlCall& call = run.calls[run.callCount - 1];
  int level = 0;
  while (level < call.loopCount && call.loops[level].number != block.loop) ++level;
  const bool begins = level == call.loopCount;
  ControlPlace behind;
  if ((begins || !block.holds) && !FindEnd(run, block.loop, level, behind)) {
    return StopWith(run, Finding::WhileOpen, block.loop);
  }
  if (!block.holds) {
    call.loopCount = level;
    if (behind.at > run.place.at) {
      ++run.repeats;
      run.repeatedUnits += static_cast<std::int64_t>(behind.at - run.place.at);
    }
    run.place = behind;
    return;
  }
  if (level == kMaxLoops) return StopWith(run, Finding::NestingDeep, block.loop);
  call.loops[level] = {block.loop, start};
  call.loopCount = level + 1;
}

void EndLoop(ControlRun& run, const ControlBlock& block) {
  ControlCall& call = run.calls[run.callCount - 1];
  for (int level = call.loopCount; level > 0; --level) {
    if (call.loops[level - 1].number != block.loop) continue;
    call.loopCount = level;
    const ControlPlace start = call.loops[level - 1].start;
    if (CountJump(run, start)) run.place = start;
    return;
  }
  StopWith(run, Finding::WhileOpen, block.loop);
}

}  // namespace

void CallLabel(ControlRun& run, const ControlBlock& block) {
  const double number = block.Has('P') ? block.Of('P') : -1;
  ControlPlace found;
  if (!FindLabel(run, number, found)) return StopWith(run, Finding::LabelMissing, number);
  Enter(run, CallKind::Label, found, TimesOf(block));
}

void CallProgram(ControlRun& run, const ControlBlock& block) {
  EnterProgram(run, block, CallKind::Program);
}

void CallMacro(ControlRun& run, const ControlBlock& block, const ControlPlace& blockStart) {
  double row[kLocals];
  TakeArguments(run, blockStart, row);
  if (run.ended) return;
  const int before = run.callCount;
  EnterProgram(run, block, CallKind::Macro);
  if (run.callCount == before) return;
  StartLocals(run);
  auto& locals = run.variables.locals[run.calls[run.callCount - 1].locals];
  std::copy(std::begin(row), std::end(row), std::begin(locals));
}

void CallPocket(ControlRun& run, const ControlBlock& block) {
  if (!block.Has('P')) return Report(run, Finding::PocketWords);
  ControlPlace start;
  const bool label = FindLabel(run, block.Of('P'), start);
  if (!label && !SeekProgram(run, block.Of('P'), start)) return;
  if (!BeginPocket(run, block, !label)) return;
  run.entersProgram = Enter(run, CallKind::Pocket, start, 1) && !label;
}

void ReturnFrom(ControlRun& run, const ControlBlock& block) {
  ControlPlace found;
  const bool jumps = block.Has('P');
  const bool loops = jumps && FindLabel(run, block.Of('P'), found) && LoopsForEver(run, found);
  if (jumps && !loops) return JumpTo(run, block.Of('P'));
  if (loops || run.callCount == 1) {
    // The main program begins again, for ever: once is the whole of it.
    run.ended = run.sawEnd = true;
    return;
  }
  ControlCall& call = run.calls[run.callCount - 1];
  const bool pocket = call.kind == CallKind::Pocket;
  const bool again = pocket ? GoToNextDepth(run) : call.repeats > 0;
  if (again) {
    if (!CountJump(run, call.start)) return;
    if (!pocket) --call.repeats;
    call.loopCount = 0;
    run.place = call.start;
    run.entersProgram = pocket ? run.pocket.ofProgram : call.kind != CallKind::Label;
    return;
  }
  run.place = call.back;
  --run.callCount;
}

void FollowStatement(ControlRun& run, const ControlBlock& block, const ControlPlace& blockStart) {
  switch (block.flow) {
    case BlockFlow::None:
      return;
    case BlockFlow::Goto:
      return JumpTo(run, block.target);
    case BlockFlow::While:
      return BeginLoop(run, block, blockStart);
    case BlockFlow::EndWhile:
      return EndLoop(run, block);
    case BlockFlow::Alarm:
      return StopWith(run, Finding::ProgramAlarm, block.target);
    case BlockFlow::TextEnd:
      return EndOfText(run);
  }
}

void EndOfText(ControlRun& run) {
  if (run.callCount == 1) {
    run.ended = true;
    return;
  }
  Report(run, Finding::NoEnd);
  // Of a pocket whose outline does not end one depth is enough to see that.
  if (run.calls[run.callCount - 1].kind == CallKind::Pocket) LeavePocket(run);
  run.place = run.calls[run.callCount - 1].back;
  --run.callCount;
}

}  // namespace morva
