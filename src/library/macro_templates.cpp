#include "library/macro_templates.h"

#include <cstdint>
#include <iterator>
#include <string_view>

#include "app/limits.h"
#include "documents/new_program.h"
#include "text/code_writer.h"
#include "text/codetext.h"

namespace morva {

namespace {

using Texts = std::span<const std::u16string, kMacroFields>;

constexpr int kPointDecimals = 3;

enum Kind { kNewProgram, kProgramStart, kToolChange, kDrillRow, kPeckRow, kTapRow, kProgramEnd };

// clang-format off
constexpr MacroTemplate kTemplates[] = {
    {u"New program template", {{u"Template", u"%  O10000 (NEW PROGRAM)"}}},
    {u"Program Start Block",
     {{u"Program #", u"1000"}, {u"Program name", u"NEW JOB"}, {u"Work offset", u"G54"},
      {u"Units", u"G20"}, {u"Safe Z", u"0.500"}, {u"Start tool", u"1"}}},
    {u"Tool Change Block",
     {{u"Tool #", u"1"}, {u"RPM", u"2500"}, {u"H offset", u"1"}, {u"Safe Z", u"0.500"},
      {u"Coolant", u"M08"}, {u"Comment", u"1/2 END MILL"}}},
    {u"Drill Row G81",
     {{u"X start", u"0.000"}, {u"Y", u"0.000"}, {u"Hole count", u"4"}, {u"X spacing", u"1.000"},
      {u"Z depth", u"-0.500"}, {u"Feed", u"10.0"}}},
    {u"Peck Row G83",
     {{u"X start", u"0.000"}, {u"Y", u"0.000"}, {u"Hole count", u"4"}, {u"X spacing", u"1.000"},
      {u"Z depth", u"-0.750"}, {u"Peck Q", u"0.100"}}},
    {u"Tap Row G84",
     {{u"X start", u"0.000"}, {u"Y", u"0.000"}, {u"Hole count", u"4"}, {u"X spacing", u"1.000"},
      {u"Z depth", u"-0.500"}, {u"Feed", u"25.0"}}},
    {u"Safe Program End",
     {{u"Safe Z", u"0.500"}, {u"Coolant off", u"M09"}, {u"Spindle stop", u"M05"},
      {u"Return home", u"G53 G00 Z0"}, {u"End code", u"M30"}, {u"Comment", u"END PROGRAM"}}},
};
// clang-format on
static_assert(std::size(kTemplates) == kMacroTemplates);

// A line of three pieces.
void Line3(CodeWriter& out, std::u16string_view before, std::u16string_view text,
           std::u16string_view behind = u"") {
  Put(out, before);
  Put(out, text);
  Line(out, behind);
}

void WriteNewProgram(bool metric, CodeWriter& out) {
  Line(out, u"%");
  Line(out, u"O10000 (NEW PROGRAM) ");
  Line(out, u"(HAAS VF3 - VERIFY OFFSETS, TOOLING, WORKHOLDING)");
  Line(out, u"");
  Put(out, NewProgramLines(metric));
}

void WriteProgramStart(Texts texts, CodeWriter& out) {
  Line(out, u"%");
  Put(out, u"O");
  Put(out, texts[0]);
  Line3(out, u" (", texts[1], u")");
  Line(out, u"G90 G17 G40 G49 G80");
  Line(out, texts[3]);
  Line(out, texts[2]);
  Line3(out, u"(START TOOL T", texts[5], u")");
  Line3(out, u"G00 Z", texts[4]);
}

void WriteToolChange(Texts texts, CodeWriter& out) {
  Line3(out, u"(TOOL: ", texts[5], u")");
  Line3(out, u"T", texts[0], u" M06");
  Line3(out, u"S", texts[1], u" M03");
  Put(out, u"G00 G43 H");
  Put(out, texts[2]);
  Line3(out, u" Z", texts[3]);
  Line(out, texts[4]);
}

// How a row of holes is called, its cycle, and what stands behind the retract plane in front of
// the last field.
struct RowKind {
  std::u16string_view name;
  std::u16string_view cycle;
  std::u16string_view word;
  std::u16string_view behind;
};
constexpr RowKind kRows[] = {{u"DRILL", u"G81", u" R0.100 F", u""},
                             {u"PECK", u"G83", u" R0.100 Q", u" F10.0"},
                             {u"TAP", u"G84", u" R0.100 F", u""}};

double NumberOf(const std::u16string& text, double fallback) {
  return ParseDecimal(std::u16string_view(text).substr(0, kFieldUnits - 1), fallback);
}

void WriteRow(const RowKind& row, Texts texts, CodeWriter& out) {
  const double x = NumberOf(texts[0], 0);
  const double y = NumberOf(texts[1], 0);
  const std::int32_t holes =
      ParseInteger(std::u16string_view(texts[2]).substr(0, kFieldUnits - 1), 0);
  const double spacing = NumberOf(texts[3], 1);
  Line3(out, u"(ONE-CLICK ", row.name, u" ROW)");
  const auto place = [&out, y](std::u16string_view word, double at) {
    Put(out, word, at, kPointDecimals);
    Put(out, u" Y", y, kPointDecimals);
    Line(out, u"");
  };
  place(u"G00 X", x);
  Put(out, row.cycle);
  Put(out, u" Z");
  Put(out, texts[4]);
  Line3(out, row.word, texts[5], row.behind);
  for (std::int32_t i = 1; i < holes && !out.full; ++i) place(u"X", x + i * spacing);
  Line(out, u"G80");
}

void WriteProgramEnd(Texts texts, CodeWriter& out) {
  Line3(out, u"(", texts[5], u")");
  Line3(out, u"G00 Z", texts[0]);
  for (std::size_t i = 1; i <= 4; ++i) Line(out, texts[i]);
  Line(out, u"%");
}

}  // namespace

std::span<const MacroTemplate> MacroTemplates() { return kTemplates; }

bool IsHoleRow(int kind) { return kind >= kDrillRow && kind <= kTapRow; }

void WriteMacro(int kind, Texts texts, bool metric, CodeWriter& out) {
  switch (kind) {
    case kNewProgram:
      return WriteNewProgram(metric, out);
    case kProgramStart:
      return WriteProgramStart(texts, out);
    case kToolChange:
      return WriteToolChange(texts, out);
    case kDrillRow:
    case kPeckRow:
    case kTapRow:
      return WriteRow(kRows[kind - kDrillRow], texts, out);
    case kProgramEnd:
      return WriteProgramEnd(texts, out);
    default:
      return;
  }
}

}  // namespace morva
