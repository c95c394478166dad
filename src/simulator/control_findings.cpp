#include "simulator/control_findings.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "text/codetext.h"

namespace morva {

namespace {

struct FindingRow {
  const char16_t* name;
  Strength strength;
  const char16_t* words;  // "@" stands for the number, "#" for its unit, "$" for the letter
  int decimals = 0;       // of that number
};

constexpr FindingRow kRows[] = {
    {u"BadWord", Strength::Alarm, u"A letter has no number, or a character is no word."},
    {u"UnknownG", Strength::Alarm, u"The control has no G@.", 1},
    {u"UnknownM", Strength::Look, u"The control may have no M@."},
    {u"LatheWord", Strength::Alarm, u"G@ belongs to a turning machine."},
    {u"TwoOfAGroup", Strength::Alarm, u"G@ and another code of its group stand in one block.", 1},
    {u"TwoM", Strength::Look, u"More than one M code stands in the block."},
    {u"WholeNumber", Strength::Hit, u"A length has no decimal point: the control reads it as @.",
     4},
    {u"UnitDisagrees", Strength::Alarm, u"G@ is the other unit than the program's."},
    {u"ArcEndOff", Strength::Alarm, u"The end of the arc is @ # off its circle.", 4},
    {u"ArcNoCentre", Strength::Alarm, u"The arc has neither I, J, K nor R."},
    {u"ArcRadiusSmall", Strength::Alarm, u"The radius @ is too small for the arc's ends.", 4},
    {u"ArcFullByRadius", Strength::Alarm, u"A whole circle cannot be given by R."},
    {u"CycleNoDepth", Strength::Alarm, u"The cycle begins without Z."},
    {u"CycleNoPlane", Strength::Alarm, u"The cycle begins without R."},
    {u"CycleNoPeck", Strength::Alarm, u"The cycle has no peck that leads down (Q or I)."},
    {u"CycleUpward", Strength::Hit, u"The cycle's Z lies above its R."},
    {u"CyclePlaneHigh", Strength::Hit, u"The cycle's R, @, lies above the plane of G98.", 4},
    {u"PatternNoCycle", Strength::Alarm, u"The hole pattern has no cycle in force."},
    {u"StepWide", Strength::Look,
     u"The step of @ # is wider than the tool: it leaves ground standing.", 4},
    {u"PocketWords", Strength::Alarm, u"The words of the code are missing or out of range."},
    {u"NoFeed", Strength::Alarm, u"A feed move has no F."},
    {u"WholeFeed", Strength::Look,
     u"F has no decimal point: the control reads it as @. See its Setting 77.", 4},
    {u"InverseNoFeed", Strength::Alarm, u"G93 needs an F in each feed block."},
    {u"SpindleOff", Strength::Hit, u"The tool cuts with the spindle off."},
    {u"NoSpeed", Strength::Hit, u"The tool cuts, and the spindle has no speed: S is missing or 0."},
    {u"ToolNotChanged", Strength::Hit, u"T@ was called, and no M06 changed to it."},
    {u"OffsetOther", Strength::Look, u"H@ is not the number of the tool."},
    {u"NoLength", Strength::Hit,
     u"The tool goes down or cuts without its length: G43 is missing or has ended."},
    {u"LengthNotSet", Strength::Look, u"H@ has no length, and other tools have one."},
    {u"SpeedHigh", Strength::Alarm, u"S@ is more than the spindle has."},
    {u"OffsetNotSet", Strength::Look, u"The work offset is not set."},
    {u"TravelExceeded", Strength::Alarm, u"$ leaves the travel of the machine by @ #.", 3},
    {u"HomeThroughPart", Strength::Hit,
     u"G28 goes by the named point first, which in G90 lies at the part."},
    {u"HomeInCut", Strength::Look, u"G28 or G53 moves X or Y while the tool is still down."},
    {u"MachineWithG91", Strength::Look, u"G53 counts from machine zero in G91 too."},
    {u"ModeLeft", Strength::Look, u"The move feeds in G@, which remained when the cycle ended."},
    {u"IncrementalLeft", Strength::Look, u"G91 is still in force."},
    {u"CompNoOffset", Strength::Alarm, u"The block offsets the tool and has no D from 1 to 200."},
    {u"CompNoDiameter", Strength::Look, u"D@ has no diameter: the path is not offset."},
    {u"CompAsWear", Strength::Look,
     u"The entry or the corners are too small for the tool that the library has for D@: D@ is "
     u"taken "
     u"for wear alone, and the path is not offset. If D@ holds the diameter, the control stops."},
    {u"CompPlane", Strength::Alarm, u"Cutter compensation needs the XY plane."},
    {u"CompArcStart", Strength::Alarm, u"Cutter compensation begins or ends in an arc."},
    {u"CompEntryShort", Strength::Alarm, u"The entry is shorter than the tool's radius, @.", 4},
    {u"CompCorner", Strength::Alarm, u"The tool does not fit the inside corner."},
    {u"CompLeftOn", Strength::Look,
     u"Cutter compensation is still on where the machine goes home or changes the tool."},
    {u"CompAtEnd", Strength::Alarm, u"The program ends with cutter compensation on."},
    {u"CornerUnfit", Strength::Alarm, u"The corner of @ does not fit its lines.", 4},
    {u"BeforeStart", Strength::Look,
     u"The control reads from the first % on: it passes over this code."},
    {u"BehindEnd", Strength::Look, u"Nothing reaches the code from here on."},
    {u"NoEnd", Strength::Look, u"The text ends without M30, M02 or M99."},
    {u"ProgramMissing", Strength::Alarm, u"Program O@ is neither in the text nor beside it."},
    {u"LabelMissing", Strength::Alarm, u"Line number N@ is not in this program."},
    {u"LabelDoubled", Strength::Look, u"Line number N@ stands more than once."},
    {u"NumberDoubled", Strength::Look, u"Program number O@ stands more than once."},
    {u"NestingDeep", Strength::Alarm, u"Calls or loops are nested @ deep."},
    {u"CallsItself", Strength::Alarm, u"The program calls itself."},
    {u"WhileOpen", Strength::Alarm, u"WHILE and END do not meet."},
    {u"NoStepsLeft", Strength::Unknown,
     u"The program runs on and on; it is not followed any further."},
    {u"PathFull", Strength::Unknown, u"The path is full; it is shown up to here."},
    {u"NotFollowed", Strength::Unknown, u"$@ is not followed."},
    {u"ProgramAlarm", Strength::Look, u"The program raises its alarm @."},
    {u"BadExpression", Strength::Alarm, u"The expression cannot be read."},
    {u"DivisionByZero", Strength::Alarm, u"The expression divides by zero."},
    {u"FunctionRange", Strength::Alarm, u"A function cannot take @.", 4},
    {u"BadVariable", Strength::Alarm, u"Number @ is none that the control has or lets be set."},
    {u"RapidDown", Strength::Look, u"The tool goes down into the stock by rapid."},
    {u"RapidInStock", Strength::Hit, u"A rapid runs through the stock."},
    {u"RapidBelowTop", Strength::Hit, u"A sideways rapid runs below the stock's top."},
    {u"CutBelowStock", Strength::Look, u"The cut is @ # deeper than the stock.", 4},
    {u"PlungeNoCentre", Strength::Hit, u"The tool does not cut at its centre, and plunges."},
};
static_assert(std::size(kRows) == kFindings);

const FindingRow& RowOf(Finding kind) { return kRows[static_cast<std::size_t>(kind)]; }

// Without zeros behind the point that say nothing.
std::u16string NumberWords(double number, int decimals) {
  std::u16string words = FixedText(number, decimals);
  if (words.find(u'.') == std::u16string::npos) return words;
  while (words.back() == u'0') words.pop_back();
  if (words.back() == u'.') words.pop_back();
  return words;
}

}  // namespace

void AddFinding(Findings& into, const FoundLine& added) {
  const auto row = static_cast<std::size_t>(added.kind);
  std::int32_t& ofKind = into.ofKind[row];
  std::int32_t same = ofKind;
  for (std::int32_t i = into.count; i > 0 && same > 0; --i) {
    const FoundLine& found = into.found[i - 1];
    if (found.kind != added.kind) continue;
    if (found.line == added.line) return;
    --same;
  }
  if (ofKind >= kMaxFindingsOfKind || into.count >= kMaxFindings) {
    if (into.leftOut[row] > 0 && into.lastLeftOut[row] == added.line) return;
    into.lastLeftOut[row] = added.line;
    ++into.leftOut[row];
    ++into.more;
    return;
  }
  ++ofKind;
  into.found[into.count++] = added;
}

void DropFindings(Findings& from, Finding kind) {
  FoundLine* const end = from.found + from.count;
  const auto is = [kind](const FoundLine& found) { return found.kind == kind; };
  from.count = static_cast<std::int32_t>(std::remove_if(from.found, end, is) - from.found);
  const auto row = static_cast<std::size_t>(kind);
  from.ofKind[row] = 0;
  from.more -= std::exchange(from.leftOut[row], 0);
}

void DropFinding(Findings& from, Finding kind, std::int32_t line) {
  FoundLine* const end = from.found + from.count;
  FoundLine* const at = std::find_if(from.found, end, [kind, line](const FoundLine& found) {
    return found.kind == kind && found.line == line;
  });
  if (at == end) return;
  std::copy(at + 1, end, at);
  --from.count;
  --from.ofKind[static_cast<std::size_t>(kind)];
}

Strength StrengthOf(Finding kind) { return RowOf(kind).strength; }
const char16_t* NameOf(Finding kind) { return RowOf(kind).name; }

std::u16string WordsOf(const FoundLine& found) {
  const FindingRow& row = RowOf(found.kind);
  std::u16string words = u"Line " + IntegerText(std::int64_t{found.line} + 1) + u": ";
  for (const char16_t* p = row.words; *p; ++p) {
    if (*p == u'@') {
      words += NumberWords(found.number, row.decimals);
    } else if (*p == u'#') {
      words += found.metric ? u"mm" : u"in";
    } else if (*p == u'$') {
      words += static_cast<char16_t>(found.letter);
    } else {
      words += *p;
    }
  }
  return words;
}

int WorstFirst(const Findings& findings, std::span<std::int32_t> order) {
  const int count = std::min(static_cast<int>(order.size()), static_cast<int>(findings.count));
  for (int i = 0; i < count; ++i) order[static_cast<std::size_t>(i)] = i;
  std::sort(order.begin(), order.begin() + count, [&findings](std::int32_t a, std::int32_t b) {
    const FoundLine& left = findings.found[a];
    const FoundLine& right = findings.found[b];
    const Strength l = StrengthOf(left.kind);
    const Strength r = StrengthOf(right.kind);
    if (l != r) return l < r;
    return left.line != right.line ? left.line < right.line : a < b;
  });
  return count;
}

}  // namespace morva
