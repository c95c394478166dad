// What the check says about a line of the program: kinds, strengths, and the list of a run.
//
// The reader of the machine's motion reports while it runs. Each kind has its words, its strength
// and its name in the settings in one table (control_findings.cpp).
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "app/limits.h"

namespace morva {

// How sure it is that something goes wrong, worst first.
enum class Strength : unsigned char {
  Alarm,    // the control stops with an alarm
  Hit,      // the machine goes where it should not, or cuts wrong
  Look,     // worth a look
  Unknown,  // the reader cannot follow
};

// In no order that counts; the table of words has a row for each.
enum class Finding : unsigned char {
  // Words
  BadWord,   // a letter without a number, a character that no word has
  UnknownG,  // a G code that this control has not got
  UnknownM,
  LatheWord,      // a G code of a turning machine
  TwoOfAGroup,    // two G codes of one modal group in a block
  TwoM,           // more than one M code in a block
  WholeNumber,    // a length without a point among lengths with one
  UnitDisagrees,  // G20 in a millimetre program, or G21 in an inch one
  // Arcs
  ArcEndOff,        // the end is not as far from the centre as the start
  ArcNoCentre,      // neither I, J, K nor R
  ArcRadiusSmall,   // R is less than half the way
  ArcFullByRadius,  // R with the end on the start
  // Cycles
  CycleNoDepth,    // the first line of a cycle names no Z
  CycleNoPlane,    // ... no R
  CycleNoPeck,     // G73 or G83 without Q, or a Q that is no peck
  CycleUpward,     // Z above R
  CyclePlaneHigh,  // R above the plane that G98 returns to
  PatternNoCycle,  // G70, G71 or G72 without a cycle in force
  StepWide,        // a pocket's ways are farther apart than the tool is wide
  PocketWords,     // a pocket cycle lacks a word or a word is out of range
  // Feed, spindle, tool
  NoFeed,          // a feed move, and no F stood before it
  WholeFeed,       // an F without a point among lengths with one
  InverseNoFeed,   // G93 and no F in the block
  SpindleOff,      // a cut with the spindle off
  NoSpeed,         // a cut with the spindle on, and S is 0 or was never named
  ToolNotChanged,  // a T that no M06 followed before the cut
  OffsetOther,     // H is not the number of the tool
  NoLength,        // a cut or a rapid down behind a tool change without G43
  LengthNotSet,    // H names a length that nobody has set, and others are
  SpeedHigh,       // S above what the spindle has
  // Positions
  OffsetNotSet,  // a work offset that is all zero in a table that has others
  TravelExceeded,
  HomeThroughPart,  // G90 G28 with an axis word that leads through the part
  HomeInCut,        // G28 or G53 moves X or Y where the tool has just cut
  MachineWithG91,   // G53 while G91 is in force
  ModeLeft,         // a feed that only remained when a cycle ended
  IncrementalLeft,  // G91 still in force at a tool change or at the end
  // Compensation
  CompNoOffset,    // G41 or G42 without D
  CompNoDiameter,  // D names a diameter of zero
  CompAsWear,      // the path was not drawn for the diameter that the library has for D
  CompPlane,       // G41 or G42 outside the XY plane
  CompArcStart,    // it begins or ends in an arc
  CompEntryShort,  // the entry move is shorter than the radius
  CompCorner,      // an inside corner that the tool does not fit
  CompLeftOn,      // the machine goes home or changes the tool with it on
  CompAtEnd,       // the program ends with it on
  CornerUnfit,     // ,C or ,R does not fit its lines
  // Flow
  BeforeStart,     // code before the "%" that opens the text
  BehindEnd,       // code that nothing reaches behind the end
  NoEnd,           // the text ends without M30, M02 or M99
  ProgramMissing,  // M98 or G65 of a program that is not here
  LabelMissing,    // GOTO, M97 or M99 P of a line number that is not here
  LabelDoubled,    // a jump to a number that stands twice
  NumberDoubled,   // an O number that stands twice
  NestingDeep,
  CallsItself,
  WhileOpen,     // WHILE without END, or the other way round
  NoStepsLeft,   // the bound of steps; the rest is not followed
  PathFull,      // the table of points
  NotFollowed,   // a code that is accepted and not followed: G31, G47 ...
  ProgramAlarm,  // #3000
  // Macros
  BadExpression,
  DivisionByZero,
  FunctionRange,  // SQRT of less than 0, ASIN of more than 1 ...
  BadVariable,    // a number that the control has not got, or that is read only
  // Stock
  RapidDown,       // a rapid straight down into stock that the program has not cut yet
  RapidInStock,    // a rapid through stock that stands
  RapidBelowTop,   // a sideways rapid below the stock's top
  CutBelowStock,   // deeper than the stock
  PlungeNoCentre,  // a plunge of a tool that does not cut at its centre
};
inline constexpr int kFindings = static_cast<int>(Finding::PlungeNoCentre) + 1;

struct FoundLine {
  Finding kind = Finding::BadWord;
  std::int32_t line = 0;  // 0-based, of the program text
  double number = 0;      // what the words name: a code, a length, an angle; 0 for none
  bool metric = false;    // unit of a length
  char letter = 0;        // the axis or the letter of the code; 0 for none
};

// Of one run, in the order in which they were found. A kind stands at most kMaxFindingsOfKind
// times; `more` counts what is left out.
struct Findings {
  FoundLine found[kMaxFindings];
  std::int32_t count = 0;
  std::int32_t ofKind[kFindings] = {};
  std::int32_t leftOut[kFindings] = {};      // of a kind; their sum is `more`
  std::int32_t lastLeftOut[kFindings] = {};  // the line of the last one
  std::int32_t more = 0;
};

// A line that has the same kind already is not taken again. Of those that are left out only the
// last line is remembered.
void AddFinding(Findings& into, const FoundLine& added);

// Takes every finding of a kind out again, those that were left out too.
void DropFindings(Findings& from, Finding kind);
// ... that of one line. One that was left out stays counted.
void DropFinding(Findings& from, Finding kind, std::int32_t line);

Strength StrengthOf(Finding kind);
// "Line 12: The end of the arc is 0.0123 in off its circle."; line numbers are 1-based.
std::u16string WordsOf(const FoundLine& found);
// The name of a kind in the settings' section [Check]: its enumerator.
const char16_t* NameOf(Finding kind);

// Indices of `findings.found`, worst first, each strength by line. At most `order.size()`.
int WorstFirst(const Findings& findings, std::span<std::int32_t> order);

}  // namespace morva
