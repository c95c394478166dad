// The smallest builder: a groove along X, five fields and a drop-down list. Made up for tests.
#pragma once

#include "documents/builder.h"
#include "library/units.h"
#include "support/join_late.h"

namespace support::groove {

using namespace morva;  // NOLINT: as a builder of the program is written

// Ids of the list, the picture and the key; a number's id is kFirst and its place.
inline constexpr int kFirst = 41000, kSide = 41010, kPicture = 41011, kInsert = 41012;
// No mode of the program, so that no panel of the program stands in the way.
inline constexpr int kMode = 90;
enum Number : int { kDepth, kFeed, kWidth, kHoles };

inline constexpr Command kCommands[] = {{.id = kInsert,
                                         .words = u"INSERT GROOVE",
                                         .help = u"Write the groove into the program",
                                         .wordsOn = u"UPDATE GROOVE"}};
inline constexpr const char16_t* kSides[] = {u"Left", u"Right"};
// clang-format off
inline constexpr FormRow kRows[] = {
    {.kind = RowKind::Choice, .id = kSide, .label = u"Side",
     .help = u"The side of the origin that is cut", .choice = 0, .rows = kSides},
    {.id = kFirst + kWidth, .label = u"Width", .help = u"How far the groove reaches along X",
     .start = u"2.000", .fallback = 1, .follows = Follows::Length, .value = kWidth,
     .enter = kInsert},
    {.kind = RowKind::Count, .id = kFirst + kHoles, .label = u"Holes",
     .help = u"Whole number of holes to note", .start = u"2", .fallback = 1, .value = kHoles},
    {.id = kFirst + kDepth, .label = u"Z depth", .help = u"Z of the groove's floor",
     .start = u"-0.100", .fallback = -0.1, .follows = Follows::Length, .value = kDepth},
    {.id = kFirst + kFeed, .label = u"Feed", .help = u"Feed of the cut, a minute",
     .start = u"10.00", .fallback = 10, .follows = Follows::Length, .decimals = 2, .value = kFeed},
    {.kind = RowKind::View, .id = kPicture, .name = u"Groove", .className = u"GroovePicture",
     .least = 120},
    {.kind = RowKind::Keys, .keys = {kInsert}},
};
// clang-format on
inline constexpr Form kForm{
    .sheet = &kBuilderSheet, .rows = kRows, .metric = UnitsMetric, .takeUnit = SetUnits};

inline double Reach(const FormValues& v) {
  return v.choices[0] == 0 ? -v.numbers[kWidth] : v.numbers[kWidth];
}
inline bool Check(const FormValues& v, Refusal& refusal) {
  refusal.words = u"Enter a positive feed.";
  refusal.field = kFirst + kFeed;
  return v.numbers[kFeed] > 0;
}
inline void Write(const FormValues& v, CodeWriter& out) {
  Line(out, u"");
  Line(out, u"(GROOVE)");
  Line(out, v.metric ? u"G21 (MM)" : u"G20 (INCH)");
  Line(out, u"G00 X0.000 Y0.000");
  Put(out, u"G01 Z", v.numbers[kDepth], 3);
  Put(out, u" F", v.numbers[kFeed], 1);
  Line(out, u"");
  Put(out, u"G01 X", Reach(v), 3);
  Put(out, u" F", v.numbers[kFeed], 1);
  Line(out, u"");
  PutInteger(out, u"(HOLES ", static_cast<int>(v.numbers[kHoles]));
  Line(out, u")");
}
inline void Draw(const FormValues& v, Picture& picture) {
  AddLine(picture, {0, 0}, {Reach(v), 0}, Ink::Feature);
}
inline constexpr Builder kBuilder{.kind = kKindShape,
                                  .title = u"Groove",
                                  .form = &kForm,
                                  .mode = kMode,
                                  .showsPath = true,
                                  .insertKey = kInsert,
                                  .commands = kCommands,
                                  .logged = u"Groove inserted.",
                                  .check = Check,
                                  .write = Write,
                                  .draw = Draw};

// In tests alone: JoinRooms joins a builder of the program.
inline void Join() { JoinLate<kBuilder>(); }

}  // namespace support::groove
