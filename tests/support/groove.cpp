#include "support/groove.h"

#include "documents/builder.h"
#include "library/motion_text.h"
#include "library/units.h"

namespace support::groove {

using namespace morva;  // NOLINT: as a builder of the program is written

namespace {

constexpr Command kCommands[] = {{.id = kInsert,
                                  .words = u"INSERT GROOVE",
                                  .help = u"Write the groove into the program",
                                  .wordsOn = u"UPDATE GROOVE"}};
constexpr const char16_t* kSides[] = {u"Left", u"Right"};
// clang-format off
constexpr FormRow kRows[] = {
    {.kind = RowKind::Choice, .id = kSide, .label = u"Side",
     .help = u"The side of the origin that is cut", .choice = 0, .rows = kSides},
    {.id = kFirst + kWidth, .label = u"Width", .help = u"How far the groove reaches along X",
     .start = u"2.000", .fallback = 1, .follows = Follows::Length, .value = kWidth},
    {.kind = RowKind::Count, .id = kFirst + kHoles, .label = u"Holes",
     .help = u"Whole number of holes to note", .start = u"2", .fallback = 1, .value = kHoles},
    LengthRow(kFirst, kDepth, u"Z depth", u"Z of the groove's floor", u"-0.100", -0.1),
    LengthRow(kFirst, kFeed, u"Feed", u"Feed of the cut, a minute", u"10.00", 10, 2),
    {.kind = RowKind::View, .id = kPicture, .name = u"Groove", .className = u"GroovePicture",
     .least = 120},
    {.kind = RowKind::Keys, .keys = {kInsert}},
};
// clang-format on
constexpr Form kForm{.sheet = &kBuilderSheet,
                     .rows = kRows,
                     .metric = UnitsMetric,
                     .takeUnit = SetUnits,
                     .enter = kInsert};

double Reach(const FormValues& v) {
  return v.choices[0] == 0 ? -v.numbers[kWidth] : v.numbers[kWidth];
}

bool Check(const FormValues& v, Refusal& refusal) {
  return v.numbers[kFeed] > 0 || Refuse(refusal, kFirst + kFeed, u"Enter a positive feed.");
}

void Write(const FormValues& v, CodeWriter& out) {
  Line(out, u"");
  Line(out, u"(GROOVE)");
  Line(out, UnitLine(v.metric));
  Line(out, u"G00 X0.000 Y0.000");
  Put(out, u"G01 Z", v.numbers[kDepth], 3);
  Line(out, u" F", v.numbers[kFeed], 1);
  Put(out, u"G01 X", Reach(v), 3);
  Line(out, u" F", v.numbers[kFeed], 1);
  PutInteger(out, u"(HOLES ", static_cast<int>(v.numbers[kHoles]));
  Line(out, u")");
}

void Draw(const FormValues& v, Picture& picture) {
  AddLine(picture, {0, 0}, {Reach(v), 0}, Ink::Feature);
}

constexpr ModeRow kModeRow{.mode = kMode, .header = u"GROOVE"};

}  // namespace

constexpr Builder kBuilder{.kind = kKindShape,
                           .title = u"Groove",
                           .form = &kForm,
                           .mode = kMode,
                           .row = &kModeRow,
                           .showsPath = true,
                           .wholeNumbers = true,
                           .insertKey = kInsert,
                           .commands = kCommands,
                           .logged = u"Groove inserted.",
                           .check = Check,
                           .write = Write,
                           .draw = Draw};

}  // namespace support::groove
